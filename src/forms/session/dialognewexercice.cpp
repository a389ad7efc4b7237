#include "forms/session/dialognewexercice.h"

#include <algorithm>
#include <string_view>

#include "session/textes.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

CDialogNewExercice::CDialogNewExercice(ContexteUi& contexte, std::string& destination, QWidget* parent,
                                       const std::string& nomImpose)
    : CZNDialog(contexte, u"Nouvel exercice"_s, "DialogNewExercice", parent),
      m_destination(destination),
      m_nomImpose(nomImpose),
      m_formulaire(NouvelExercice(App())) {
  if (!m_nomImpose.empty()) {
    m_formulaire.annuel = true;
    ChangeAnnee(m_formulaire, m_nomImpose);
  }
  Construit();
  Montre();
  QLineEdit& premier = m_formulaire.annuel ? static_cast<QLineEdit&>(m_annee) : m_debut;
  if (premier.isEnabled()) Focalise(premier);
}

void CDialogNewExercice::Construit() {
  auto* reste = new QWidget;  // keeps year and dates at the left, in line
  reste->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  Formulaire(Zone())
      .Groupe(u"Période de l'exercice"_s)
      .Case(m_annuel, u"&Exercice :"_s, "annuel")
      .SurChangement([this] { Applique([](FormulaireExercice& f) { ChoisitAnnuel(f); }); })
      .ACote(m_annee, "annee")
      .Limite(4)
      .SurChangement([this] {
        const std::string annee = m_annee.Valeur();
        // While it is being typed, "2" or "20" is no year to take the options from.
        Applique(
            [&](FormulaireExercice& f) { annee.size() < 4 ? void(f.annee = annee) : ChangeAnnee(f, annee); });
      })
      .ACote(*reste)
      .Case(m_periode, u"&Période :"_s, "periode")
      .SurChangement([this] { Applique([](FormulaireExercice& f) { ChoisitPeriode(f); }); })
      .Suite(u"&du :"_s, m_debut, "debut")
      .Limite(10)
      .SurDepart([this] { QuitteDate(m_debut); })
      .Suite(u"&au :"_s, m_fin, "fin")
      .Limite(10)
      .SurDepart([this] { QuitteDate(m_fin); })
      .FinGroupe()
      .Groupe(u"Options"_s)
      .Case(m_tva, u"Assujetti à la &T.V.A. :"_s, "tva")
      .Case(m_euro, u"&Comptabilité en EURO :"_s, "euro")
      .Case(m_double, u"Afficher les Deux &Monnaies : "_s, "double")
      .FinGroupe();
  m_annee.setAccessibleName(u"Année de l'exercice"_s);
  for (QRadioButton* choix : {&m_annuel, &m_periode}) {
    choix->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    choix->setMinimumWidth(std::max(m_annuel.sizeHint().width(), m_periode.sizeHint().width()));
  }
  Boutons(Mode::Simple);
}

void CDialogNewExercice::LitCases() {
  m_formulaire.tva = m_tva.isChecked();
  m_formulaire.euro = m_euro.isChecked();
  m_formulaire.afficherDouble = m_double.isChecked();
}

template <class Regle>
void CDialogNewExercice::Applique(Regle regle) {
  LitCases();
  regle(m_formulaire);
  if (!m_nomImpose.empty()) m_formulaire.annee = m_nomImpose;
  Montre();
}

void CDialogNewExercice::Montre() {
  const FormulaireExercice& f = m_formulaire;
  const bool impose = !m_nomImpose.empty();
  m_annuel.setChecked(f.annuel);
  m_periode.setChecked(!f.annuel);
  if (m_annee.Valeur() != f.annee) m_annee.Pose(f.annee);
  m_annee.setEnabled(f.annuel && !impose);
  if (m_debut.Valeur() != f.debut) m_debut.Pose(f.debut);
  if (m_fin.Valeur() != f.fin) m_fin.Pose(f.fin);
  m_debut.PoseReference(f.debut);
  m_fin.PoseReference(f.debut);
  m_debut.setEnabled(!f.annuel);
  m_fin.setEnabled(!f.annuel);
  m_tva.setChecked(f.tva);
  m_euro.setChecked(f.euro);
  m_euro.setEnabled(f.euroActif);
  m_double.setChecked(f.afficherDouble);
  m_double.setVisible(f.doubleActif);
}

void CDialogNewExercice::QuitteDate(EditeurDate& editeur) {
  const Date date = editeur.Valeur();
  const bool debut = &editeur == &m_debut;
  // A date that was only passed through moves nothing; what is no date stays as it
  // was typed, to be refused on OK.
  if (date == (debut ? m_formulaire.debut : m_formulaire.fin)) return;
  Applique([&](FormulaireExercice& f) { debut ? QuitteDebut(f, date) : QuitteFin(f, date); });
}

bool CDialogNewExercice::Enregistre() {
  LitCases();
  // A year of less than four digits moved nothing while it was typed.
  const std::string annee = m_annee.Valeur();
  const bool chiffres = annee.find_first_not_of("0123456789") == std::string::npos;
  if (m_formulaire.annuel && m_nomImpose.empty() && chiffres && annee.size() < 4)
    ChangeAnnee(m_formulaire, annee);
  m_formulaire.debutSaisi = m_debut.EstDate() ? std::string() : De1252(m_debut.text());
  m_formulaire.finSaisie = m_fin.EstDate() ? std::string() : De1252(m_fin.text());
  Contexte().Cadre.FermeToutes();
  const Refus refus = CreeExercice(App(), m_formulaire);
  const bool cree = Refuse(refus);
  Contexte().Cadre.MontreExercice();
  // ErrRepertoireExercice: it was created, its directory cannot be used. The form has nothing to add.
  if (!cree && refus.numero != ErrRepertoireExercice) return false;
  m_destination = App().NomExercice;
  return true;
}

void CDialogNewExercice::Pointe(const Refus& refus) {
  const std::string_view champ = refus.champ;
  QWidget* editeur = nullptr;
  if (champ == "annee") editeur = &m_annee;
  if (champ == "debut") editeur = &m_debut;
  if (champ == "fin") editeur = &m_fin;
  if (champ == "euro") editeur = &m_euro;
  if (!editeur) return;
  // The field behind the radio button that is not chosen is disabled.
  if (!editeur->isEnabled()) editeur = m_formulaire.annuel ? static_cast<QWidget*>(&m_annee) : &m_debut;
  if (editeur->isEnabled()) Focalise(*editeur);
}

}  // namespace fenlor
