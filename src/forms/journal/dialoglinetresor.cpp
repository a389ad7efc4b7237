#include "forms/journal/dialoglinetresor.h"

#include <QBoxLayout>
#include <QPushButton>

#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "forms/journal/textes.h"
#include "forms/master/champscompte.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

f64 LignesTresor::Total() const {
  f64 total = 0;
  for (const LigneTresorLue& ligne : lignes) total += ligne.montant;
  return MontantDeChamp(total);
}

CDialogLineTresor::CDialogLineTresor(ContexteUi& contexte, LignesTresor& lignes, const Ouverture& ouverture,
                                     QWidget* parent)
    : CZNDialog(contexte,
                TexteQ(TitreEcriture, {Texte(TitreLigneTresorerie),
                                       Texte(ouverture.modification ? MotModification : MotAjout)}),
                "DialogLineTresor", parent),
      m_lignes(lignes),
      m_ouverture(ouverture),
      m_montant(contexte.App.Reglages) {
  m_tresorerie.Charge(App());
  m_montant.PoseNegatif(true);
  Declare();
  // Narrower than its title otherwise.
  setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + 24 * fontMetrics().averageCharWidth());
  const auto rang = static_cast<std::size_t>(m_lignes.choisie);
  if (m_ouverture.modification && rang < m_lignes.lignes.size())
    Montre(m_lignes.lignes[rang]);
  else
    Propose();
  CZNDialog::Focalise(m_montant);
  if (!m_ouverture.lecture && !App().Reglages.IsFige()) return;
  if (!FigeSiCloture()) LectureSeule();
  PermetChamp(m_montant, false);
  m_tresorerie.Permet(false);
}

void CDialogLineTresor::Declare() {
  Formulaire formulaire{Zone()};
  m_tresorerie.Declare(formulaire);
  formulaire.Champ(u"Montant : "_s, m_montant, "montant").Limite(TailleMontant);
  auto* marques = new QWidget(&Zone());
  formulaire.Seul(*marques, "marques");
  Formulaire ticks{*marques};
  marques->layout()->setContentsMargins(0, 0, 0, 0);
  m_marques.Declare(ticks);
  formulaire.Pousse();
  AstuceAutreMonnaie(m_montant, App(), m_ouverture.euro);
  Boutons(m_ouverture.modification ? Mode::Modification : Mode::Ajout);
  AjouteAide();
}

/// A new line: what the others leave of the entry's amount.
void CDialogLineTresor::Propose() {
  m_tresorerie.Pose(m_ouverture.tresorerie, PaiementCheque);
  const f64 reste = MontantDeChamp(m_ouverture.ttc - m_lignes.Total());
  const bool couvert = m_ouverture.ttc == 0 || (m_ouverture.ttc < 0 ? reste > 0 : reste < 0);
  // Of both currencies in the form of Euro; the sign goes as soon as the field is left.
  m_montant.setText(Q(couvert ? std::string{} : FormatEuro(reste)));
}

void CDialogLineTresor::Montre(const LigneTresorLue& ligne) {
  m_tresorerie.Pose(ligne.compte, ligne.paiement);
  m_montant.Pose(ligne.montant);
  m_marques.Pose(ligne.marques);
}

void CDialogLineTresor::showEvent(QShowEvent* evenement) {
  CZNDialog::showEvent(evenement);
  // After the base noted what stood there: all of it was typed.
  if (m_ouverture.reprise && !m_vue) {
    const LigneSuspendue& reprise = *m_ouverture.reprise;
    m_tresorerie.Pose(reprise.saisie.compte, reprise.saisie.paiement);
    if (!reprise.code.empty()) m_tresorerie.RetapeInconnu(reprise.code);
    m_montant.setText(Q(reprise.debit));
  }
  m_vue = true;
}

std::optional<LigneSuspendue> CDialogLineTresor::Suspendue() const {
  if (m_ouverture.lecture || !Modifie()) return std::nullopt;
  LigneSuspendue ligne;
  if (m_ouverture.modification) ligne.rang = static_cast<u32>(m_lignes.choisie + 1);
  if (const CompteOffert* compte = m_tresorerie.Choisi()) ligne.saisie.compte = compte->compte;
  ligne.saisie.paiement = m_tresorerie.Marque();
  ligne.code = m_tresorerie.Inconnu();
  ligne.debit = De1252(m_montant.text());
  return ligne;
}

bool CDialogLineTresor::Enregistre() {
  const f64 montant = MontantDeChamp(m_montant.Valeur());
  if (montant == 0) return Refuse(ErrMontantNul, m_montant);
  const CompteOffert* compte = m_tresorerie.Choisi();
  if (!compte) return Refuse(ErrCompteIncorrect, m_tresorerie.Code());
  LigneTresorLue ligne;
  if (m_ouverture.modification) ligne = m_lignes.lignes[static_cast<std::size_t>(m_lignes.choisie)];
  ligne.compte = compte->compte;
  ligne.montant = montant;
  ligne.paiement = m_tresorerie.Paiement();
  if (m_ouverture.modification)
    m_lignes.lignes[static_cast<std::size_t>(m_lignes.choisie)] = ligne;
  else
    m_lignes.lignes.push_back(ligne);
  m_change = true;
  if (m_ouverture.change) m_ouverture.change();
  return true;
}

void CDialogLineTresor::Vide() {
  m_videe = true;
  Propose();
}

void CDialogLineTresor::accept() {
  m_videe = false;
  CZNDialog::accept();
  if (m_videe) CZNDialog::Focalise(m_montant);
}

}  // namespace fenlor
