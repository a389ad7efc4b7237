#include "forms/master/dialogrubrique.h"

#include <algorithm>

#include "core/valeurs.h"
#include "forms/master/textes.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogRubrique::CDialogRubrique(ContexteUi& contexte, SuiteFiches* vue, Position position, QWidget* parent)
    : FormulaireFiche(contexte, "DialogRubrique", vue, position, parent),
      m_recette(u"&Recette"_s),
      m_depense(u"&Dépense"_s),
      m_resultat(u"Résu&ltat"_s),
      m_taxe(u"&Taxe"_s),
      m_montant(contexte.App.Reglages),
      m_comptes(contexte) {
  constexpr int large = 56;
  m_comptes.Suit<CompteAssocie>({{"Compte", 24, [](const CompteAssocie& c) { return c.court; }},
                                 {"Désignation"_w, 76, [](const CompteAssocie& c) { return c.designation; }}},
                                m_associes);
  Champs()
      .Champ(u"&Code :"_s, m_code, "code")
      .SurChangement([this] { MontreTitre(); })
      .SurDepart(Controle(m_code, &Fiche::code, ControleCodeRubrique))
      .Champ(u"Dési&gnation :"_s, m_designation, "designation")
      .Largeur(large)
      .Champ(u"L&igne :"_s, m_ligne, "ligne")
      .Champ(u"Type :"_s, m_recette, "recette")
      .ACote(m_depense, "depense")
      .ACote(m_resultat, "resultat")
      .ACote(m_taxe, "taxe")
      .Groupe(u"Calcul"_s)
      .Case(m_automatique, u"&Automatique :"_s, "automatique")
      .ACote(m_formule, "formule")
      .Largeur(large)
      .SurDepart([this] {
        LitCalcul();
        m_formule.Pose(EnMain().formule);
      })
      .Case(m_manuel, u"&Manuel :"_s, "manuel")
      .ACote(m_montant, "montant")
      .SurChangement([this] { PoseDecimales(m_montant.Valeur()); })
      .SurDepart([this] { LitCalcul(); })
      .FinGroupe()
      .Groupe(u"Comptes associés"_s)
      .Seul(m_comptes, "comptes", true)
      .FinGroupe();
  m_formule.setAccessibleName(u"Formule"_s);
  m_montant.setAccessibleName(u"Montant"_s);
  for (QRadioButton* bouton : {&m_recette, &m_depense, &m_resultat, &m_taxe}) m_types.addButton(bouton);
  for (QRadioButton* bouton : {&m_automatique, &m_manuel}) {
    bouton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    bouton->setMinimumWidth(std::max(m_automatique.sizeHint().width(), m_manuel.sizeHint().width()));
    // Later: an arrow key gives the focus to the button it has chosen, and the amount is left only then.
    connect(
        bouton, &QRadioButton::clicked, this, [this] { ChoisitCalcul(m_manuel.isChecked()); },
        Qt::QueuedConnection);
  }
  Ouvre();
}

void CDialogRubrique::Montre() {
  MontreChamps();
  m_automatique.setChecked(!EnMain().manuel);
  MontreCalcul();
  MontreComptes();
}

QString CDialogRubrique::Titre() const {
  return Ajout() ? TexteQ(TitreAjoutRubrique)
                 : TexteQ(TitreRubrique, {NormaliseRubrique(m_code.Valeur())}).trimmed();
}

void CDialogRubrique::MontreComptes() {
  m_associes = Ajout() ? std::vector<CompteAssocie>{} : ComptesAssocies(App(), EnMain().code);
  m_comptes.Relit(-1);
  m_comptes.setEnabled(!m_associes.empty());
}

void CDialogRubrique::MontreCalcul() {
  const bool manuel = m_manuel.isChecked();
  m_formule.setEnabled(!manuel);
  m_montant.setEnabled(manuel);
  m_formule.Pose(manuel ? std::string() : EnMain().formule);
  m_montant.clear();
  if (!manuel) return;
  PoseDecimales(Arrondi2(EnMain().montant));
  m_montant.Pose(EnMain().montant);
}

void CDialogRubrique::PoseDecimales(f64 montant) {
  m_montant.PoseDecimales(Arrondi(montant, 0) == montant ? 0 : 2);
}

void CDialogRubrique::LitCalcul() {
  for (const char* nom : {"formule", "montant"}) LitChamp(nom, &EnMain());
  EnMain().formule = CompacteTexte(EnMain().formule);
}

void CDialogRubrique::ChoisitCalcul(bool manuel) {
  if (!manuel && m_montant.Refus() != 0) return m_manuel.setChecked(true);
  LitCalcul();
  MontreCalcul();
  CZNDialog::Focalise(manuel ? static_cast<QWidget&>(m_montant) : m_formule);
}

FicheRubrique CDialogRubrique::Saisie() {
  LitCalcul();
  return FormulaireFiche::Saisie();
}

FicheRubrique CDialogRubrique::Nouvelle() {
  FicheRubrique suivante = FormulaireFiche::Saisie();
  suivante.position = 0;
  for (std::string* texte : {&suivante.code, &suivante.designation, &suivante.ligne, &suivante.formule})
    texte->clear();
  return suivante;
}

}  // namespace fenlor
