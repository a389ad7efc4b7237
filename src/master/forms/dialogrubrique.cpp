#include "master/forms/dialogrubrique.h"

#include <QKeyEvent>
#include <QPushButton>
#include <algorithm>

#include "core/valeurs.h"
#include "master/forms/rubriqueview.h"
#include "master/forms/textes.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int TailleCode = 3, TailleDesignation = 80, TailleLigne = 5, TailleFormule = 127;
constexpr int TailleMontant = 16, LargeurDesignation = 56, LargeurFormule = 56;

}  // namespace

CDialogRubrique::CDialogRubrique(ContexteUi& contexte, CRubriqueView* vue, Position position, QWidget* parent)
    : CZNDialog(contexte, {}, "DialogRubrique", parent),
      m_vue(vue),
      m_derniere(position),
      m_montant(contexte.App.Reglages),
      m_comptes(contexte) {
  m_lu = position == 0 || LitFicheRubrique(contexte.App, position, m_fiche);
  m_codeLu = m_fiche.code;
  m_montant.PoseNegatif(true);
  m_code.PoseMajuscules(true);
  m_depense.setText(u"&Dépense"_s);
  m_resultat.setText(u"Résu&ltat"_s);
  m_taxe.setText(u"&Taxe"_s);
  m_recette.setText(u"&Recette"_s);
  Formulaire formulaire{Zone()};
  formulaire.Champ(u"Code :"_s, m_code, "code")
      .Limite(TailleCode)
      .SurChangement([this] { MontreTitre(); })
      .SurDepart([this] { QuitteCode(); })
      .Champ(u"Désignation :"_s, m_designation, "designation")
      .Limite(TailleDesignation)
      .Largeur(LargeurDesignation)
      .Champ(u"Ligne :"_s, m_ligne, "ligne")
      .Limite(TailleLigne)
      .Champ(u"Type :"_s, m_recette, "recette")
      .ACote(m_depense, "depense")
      .ACote(m_resultat, "resultat")
      .ACote(m_taxe, "taxe");
  formulaire.Groupe(u"Calcul"_s)
      .Case(m_automatique, u"Automatique :"_s, "automatique")
      .ACote(m_formule, "formule")
      .Limite(TailleFormule)
      .Largeur(LargeurFormule)
      .SurDepart([this] {
        LitCalcul();
        m_formule.Pose(m_fiche.formule);
      })
      .Case(m_manuel, u"Manuel :"_s, "manuel")
      .ACote(m_montant, "montant")
      .Limite(TailleMontant)
      .SurChangement([this] { PoseDecimales(); })
      .SurDepart([this] { LitCalcul(); })
      .FinGroupe();
  m_comptes.Suit<CompteAssocie>({{"Compte", 24, [](const CompteAssocie& c) { return c.court; }},
                                 {"Désignation"_w, 76, [](const CompteAssocie& c) { return c.designation; }}},
                                m_associes);
  formulaire.Groupe(u"Comptes associés"_s).Seul(m_comptes, "comptes", true).FinGroupe();

  m_formule.setAccessibleName(u"Formule"_s);
  m_montant.setAccessibleName(u"Montant"_s);
  for (QRadioButton* bouton : {&m_automatique, &m_manuel}) {
    bouton->installEventFilter(this);
    bouton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    bouton->setMinimumWidth(std::max(m_automatique.sizeHint().width(), m_manuel.sizeHint().width()));
  }
  int type = 0;
  for (QRadioButton* bouton : {&m_recette, &m_depense, &m_resultat, &m_taxe})
    m_types.addButton(bouton, type++);
  m_calculs.addButton(&m_automatique);
  m_calculs.addButton(&m_manuel);
  connect(&m_automatique, &QRadioButton::clicked, this, [this] { ChoisitCalcul(false); });
  connect(&m_manuel, &QRadioButton::clicked, this, [this] { ChoisitCalcul(true); });

  Boutons(Ajout() ? Mode::Ajout : Mode::Modification, true);
  Presente();
}

int CDialogRubrique::exec() { return m_lu ? CZNDialog::exec() : static_cast<int>(Rejected); }

void CDialogRubrique::Presente() {
  m_code.Pose(m_fiche.code);
  m_designation.Pose(m_fiche.designation);
  m_ligne.Pose(m_fiche.ligne);
  const int type = std::clamp<int>(m_fiche.type, 0, m_types.id(&m_taxe));
  m_types.button(type)->setChecked(true);
  (m_fiche.manuel ? m_manuel : m_automatique).setChecked(true);
  MontreCalcul();
  MontreTitre();
  MontreComptes();
  const auto permet = [this](const QString& nom, int pas) {
    if (auto* bouton = findChild<QPushButton*>(nom))
      bouton->setEnabled(!Ajout() && m_vue && m_vue->Voisin(pas) != 0);
  };
  permet(u"precedent"_s, -1);
  permet(u"suivant"_s, 1);
  FigeSiCloture();
}

void CDialogRubrique::MontreTitre() {
  setWindowTitle(Ajout() ? TexteQ(TitreAjoutRubrique)
                         : TexteQ(TitreRubrique, {NormaliseRubrique(m_code.Valeur())}).trimmed());
}

void CDialogRubrique::MontreComptes() {
  m_associes = Ajout() ? std::vector<CompteAssocie>{} : ComptesAssocies(App(), m_fiche.code);
  m_comptes.Relit(-1);
  m_comptes.setEnabled(!m_associes.empty());
}

void CDialogRubrique::MontreCalcul() {
  const bool manuel = m_manuel.isChecked();
  m_formule.setEnabled(!manuel);
  m_montant.setEnabled(manuel);
  m_formule.Pose(manuel ? std::string() : m_fiche.formule);
  MontreMontant();
}

void CDialogRubrique::MontreMontant() {
  m_montant.clear();
  if (!m_manuel.isChecked()) return;
  m_montant.PoseDecimales(Arrondi(m_fiche.montant, 0) == Arrondi2(m_fiche.montant) ? 0 : 2);
  m_montant.Pose(m_fiche.montant);
}

void CDialogRubrique::PoseDecimales() {
  const f64 montant = m_montant.Valeur();
  m_montant.PoseDecimales(Arrondi(montant, 0) == montant ? 0 : 2);
}

/// Takes what is typed into the heading in hand, so that it outlives a change of the radio buttons.
void CDialogRubrique::LitCalcul() {
  if (m_formule.isEnabled()) m_fiche.formule = NormeTexte(m_formule.Valeur());
  if (m_montant.isEnabled() && m_montant.Refus() == 0 && m_montant.Valeur() != Arrondi2(m_fiche.montant))
    m_fiche.montant = m_montant.Valeur();
}

void CDialogRubrique::ChoisitCalcul(bool manuel) {
  LitCalcul();
  MontreCalcul();
  // The arrows walk from one choice to the other: the next one goes back.
  if (!m_fleche) CZNDialog::Focalise(manuel ? static_cast<QWidget&>(m_montant) : m_formule);
}

bool CDialogRubrique::eventFilter(QObject* objet, QEvent* evenement) {
  if (evenement->type() == QEvent::MouseButtonPress || evenement->type() == QEvent::Shortcut)
    m_fleche = false;
  if (evenement->type() == QEvent::KeyPress) {
    const int touche = static_cast<QKeyEvent*>(evenement)->key();
    m_fleche =
        touche == Qt::Key_Up || touche == Qt::Key_Down || touche == Qt::Key_Left || touche == Qt::Key_Right;
  }
  return CZNDialog::eventFilter(objet, evenement);
}

void CDialogRubrique::QuitteCode() {
  if (m_code.isReadOnly() || m_code.Valeur() == m_codeLu) return;
  FicheRubrique fiche = m_fiche;
  fiche.code = m_code.Valeur();
  if (!ControleCodeRubrique(App(), fiche)) CZNDialog::Focalise(m_code);
}

FicheRubrique CDialogRubrique::Saisie() {
  LitCalcul();
  FicheRubrique fiche = m_fiche;
  fiche.code = m_code.Valeur();
  fiche.designation = m_designation.Valeur();
  fiche.ligne = m_ligne.Valeur();
  fiche.type = static_cast<i16>(std::max(0, m_types.checkedId()));
  fiche.manuel = m_manuel.isChecked();
  return fiche;
}

bool CDialogRubrique::Enregistre() {
  FicheRubrique fiche = Saisie();
  if (const ResultatMaster resultat = EnregistreRubrique(App(), fiche); !resultat) {
    if (*resultat.champ) CZNDialog::Focalise(resultat.champ);
    return false;
  }
  m_derniere = fiche.position;
  m_aChange = true;
  if (!Ajout()) {
    m_fiche = fiche;
    m_codeLu = fiche.code;
    if (m_vue) m_vue->Remplace(fiche.position);
  }
  return true;
}

void CDialogRubrique::Vide() {
  FicheRubrique suivante;
  suivante.type = static_cast<i16>(m_types.checkedId());
  suivante.manuel = m_manuel.isChecked();
  suivante.montant = m_fiche.montant;
  m_fiche = suivante;
  Presente();
}

void CDialogRubrique::Voisin(int pas) {
  const Position position = m_vue ? m_vue->Voisin(pas) : 0;
  FicheRubrique fiche;
  if (position == 0 || !LitFicheRubrique(App(), position, fiche)) return;
  m_vue->VaVers(pas);
  m_fiche = fiche;
  m_codeLu = fiche.code;
  m_derniere = position;
  Presente();
}

}  // namespace fenlor
