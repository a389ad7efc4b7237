#include "forms/journal/dialogvalidation.h"

#include "core/erreurssaisie.h"
#include "forms/journal/textes.h"
#include "journal/textes.h"
#include "session/textes.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

CDialogValidation::CDialogValidation(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreValidation), "DialogValidation", parent),
      m_montants(App().Reglages),
      m_periode(App(), FinSemaine::Exercice) {
  Formulaire formulaire{Zone()};
  DeclareJournal(formulaire);
  DeclareEcritures(formulaire);
  m_montants.Declare(formulaire, u"Tous les mont&ants"_s);
  m_periode.Declare(formulaire);
  m_valider.setChecked(true);
  if (App().Reglages.IsModeDebug()) DeclareDebug(formulaire);
  formulaire.Pousse();
  for (QCheckBox* tout : {&m_tousJournaux, &m_toutes}) tout->setChecked(true);
  m_montants.Pose(true, App().Reglages.IsEuro());
  Permet();
  m_periode.Ouvre();
  Boutons(Mode::Simple);
}

CDialogValidation::~CDialogValidation() = default;

void CDialogValidation::DeclareJournal(Formulaire& formulaire) {
  formulaire.Groupe(u"Journal"_s)
      .Case(m_tousJournaux, u"&Tous les journaux"_s, "tousJournaux")
      .SurChangement([this] { Permet(); })
      .Champ(u"Jo&urnal : "_s, m_journal, "journal")
      .FinGroupe();
  for (const TexteFixe& mot : MotJournal) m_journal.Ajoute(Texte(mot));
}

void CDialogValidation::DeclareEcritures(Formulaire& formulaire) {
  m_remises.setText(u"&Remises"_s);
  m_rapprochees.setText(u"Rappro&chées"_s);
  formulaire.Groupe(u"Ecritures"_s)
      .Case(m_toutes, u"Toutes &les écritures"_s, "toutes")
      .SurChangement([this] { Permet(); })
      .Case(m_pointees, u"Po&intées"_s, "pointees")
      .ACote(m_remises, "remises")
      .ACote(m_rapprochees, "rapprochees")
      .FinGroupe();
}

void CDialogValidation::DeclareDebug(Formulaire& formulaire) {
  m_devalider.setText(u"Dévalider"_s);
  m_delier.setText(u"Délier"_s);
  formulaire.Groupe(u"< Mode Debug >"_s, "debug")
      .Case(m_valider, u"Valider"_s, "valider")
      .ACote(m_devalider, "devalider")
      .ACote(m_delier, "delier")
      .FinGroupe();
}

void CDialogValidation::Permet() {
  m_journal.setEnabled(!m_tousJournaux.isChecked());
  for (QCheckBox* marque : {&m_pointees, &m_remises, &m_rapprochees})
    marque->setEnabled(!m_toutes.isChecked());
}

DemandeValidation CDialogValidation::Lit() const {
  DemandeValidation demande;
  demande.journal =
      m_tousJournaux.isChecked() ? i16{0} : static_cast<i16>(JournalRecettes + m_journal.currentIndex());
  demande.toutes = m_toutes.isChecked();
  demande.pointees = m_pointees.isChecked();
  demande.remises = m_remises.isChecked();
  demande.rapprochees = m_rapprochees.isChecked();
  demande.tousMontants = m_montants.Tous();
  demande.montantMin = m_montants.Min();
  demande.montantMax = m_montants.Max();
  demande.euro = m_montants.Euro();
  demande.du = m_periode.Du();
  demande.au = m_periode.Au();
  if (m_devalider.isChecked()) demande.action = ActionBrouillard::Devalider;
  if (m_delier.isChecked()) demande.action = ActionBrouillard::Delier;
  return demande;
}

bool CDialogValidation::Enregistre() {
  if (QWidget* fautif = m_periode.Fautif()) return Refuse(ErrDateIncorrecte, *fautif);
  BilanLot bilan;
  return Refuse(TraiteBrouillard(App(), Lit(), bilan));
}

}  // namespace fenlor
