#include "forms/master/dialogfraiskm.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <algorithm>

#include "core/valeurs.h"
#include "forms/master/textes.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr f64 KmMax = 999999, TauxMin = 0.001, PremierTauxMax = 999.999, TauxMax = 99999.999;
constexpr f64 PasBorne = 100;
constexpr int DecimalesTaux = 3;

QLabel* Mot(const QString& texte) { return new QLabel(texte); }

}  // namespace

CDialogFraisKm::CDialogFraisKm(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreFraisKm), "DialogFraisKm", parent),
      m_ancien(App().Reglages, 0, KmMax, 1, 0),
      m_dernier(App().Reglages, 0, KmMax, 1, 0),
      m_kms(App().Reglages, 0, KmMax, 1, 0),
      m_inf(App().Reglages, 0, KmMax, PasBorne, 0),
      m_sup(App().Reglages, 0, KmMax, PasBorne, 0),
      m_fixe(App().Reglages),
      m_taux{EditeurPas(App().Reglages, TauxMin, PremierTauxMax, TauxMin, DecimalesTaux),
             EditeurPas(App().Reglages, TauxMin, TauxMax, TauxMin, DecimalesTaux),
             EditeurPas(App().Reglages, TauxMin, TauxMax, TauxMin, DecimalesTaux)} {
  Formulaire formulaire{Zone()};
  DeclareDistance(formulaire);
  DeclareBareme(formulaire);
  formulaire.Champ(u"Remboursement :"_s, m_montant, "remboursement").Largeur(16).Pousse();
  Boutons(Mode::Ajout);
  m_supprimer = &AjouteBouton(u"&Supprimer"_s, "supprimer");
  connect(m_supprimer, &QPushButton::clicked, this, [this] { Supprime(); });
  Montre(LitFraisKm(App()));
  ChangeMode();
  FigeSiCloture();
}

CDialogFraisKm::~CDialogFraisKm() = default;

void CDialogFraisKm::DeclareDistance(Formulaire& formulaire) {
  const auto releve = [&](const QString& libelle, EditeurPas& champ, const char* nom) {
    formulaire.Champ(libelle, champ, nom)
        .Limite(6)
        .SurChangement([this] { ChangeReleves(); })
        .SurDepart([this] { ChangeReleves(); })
        .ACote(*Mot(u"kms"_s));
  };
  formulaire.Groupe(u"Distance parcourue"_s)
      .Case(m_compteur, u"&Compteur"_s, "compteur")
      .SurChangement([this] { ChangeMode(); });
  releve(u"Ancien  relevé :"_s, m_ancien, "ancien");
  releve(u"Dernier relevé :"_s, m_dernier, "dernier");
  formulaire.Case(m_distance, u"&Distance"_s, "distance")
      .SurChangement([this] { ChangeMode(); })
      .Champ(u"d  ="_s, m_kms, "kms")
      .Limite(6)
      .SurChangement([this] { MontreMontant(); })
      .ACote(*Mot(u"km"_s))
      .FinGroupe();
}

void CDialogFraisKm::DeclareBareme(Formulaire& formulaire) {
  auto* zone = new QWidget;
  auto* grille = new QGridLayout(zone);
  grille->setContentsMargins(0, 0, 0, 0);
  formulaire.Groupe(u"Barème"_s)
      .Champ(u"Bornes inf. :"_s, m_inf, "borneInf")
      .Limite(6)
      .SurChangement([this] { MontreLibelles(); })
      .ACote(*Mot(u"km"_s))
      .Suite(u"sup. :"_s, m_sup, "borneSup")
      .Limite(6)
      .SurChangement([this] { MontreLibelles(); })
      .ACote(*Mot(u"km"_s))
      .Seul(*zone, "bareme")
      .FinGroupe();
  constexpr int colonneD = 2, colonneTaux = 3, colonneFin = 4;
  const auto nomme = [](QWidget& champ, const QString& nom, const QString& accessible) {
    champ.setObjectName(nom);
    champ.setAccessibleName(accessible);
  };
  for (int i = 0; i < 3; ++i) {
    EditeurPas& taux = m_taux[static_cast<std::size_t>(i)];
    QLabel& libelle = m_libelles[static_cast<std::size_t>(i)];
    libelle.setBuddy(i == 1 ? static_cast<QWidget*>(&m_fixe) : &taux);
    libelle.setObjectName(u"libelle%1"_s.arg(i + 1));
    nomme(taux, u"taux%1"_s.arg(i + 1), u"Taux de la tranche %1"_s.arg(i + 1));
    grille->addWidget(&libelle, i, 0);
    if (i == 1) grille->addWidget(&m_fixe, i, 1);
    auto* avant = Mot(i == 1 ? u"+  (  d  x"_s : u"d  x"_s);
    avant->setBuddy(&taux);
    grille->addWidget(avant, i, colonneD, Qt::AlignRight | Qt::AlignVCenter);
    grille->addWidget(&taux, i, colonneTaux);
    grille->addWidget(Mot(i == 1 ? u")"_s : QString()), i, colonneFin);
  }
  grille->setColumnStretch(colonneFin, 1);
  nomme(m_fixe, u"fixe"_s, u"Part fixe de la tranche 2"_s);
  const int chiffre = m_fixe.fontMetrics().horizontalAdvance(u'0');
  for (EditeurMontant* champ :
       std::initializer_list<EditeurMontant*>{&m_fixe, &m_taux[0], &m_taux[1], &m_taux[2]}) {
    champ->PoseLimite(9);
    champ->setFixedWidth(12 * chiffre);
  }
  QWidget::setTabOrder(&m_sup, &m_taux[0]);
  QWidget::setTabOrder(&m_taux[0], &m_fixe);
  QWidget::setTabOrder(&m_fixe, &m_taux[1]);
  QWidget::setTabOrder(&m_taux[1], &m_taux[2]);
  connect(&m_taux[0], &QLineEdit::textEdited, this, [this] { MontreMontant(); });
}

FicheFraisKm CDialogFraisKm::Lit() {
  // The figure alone, whatever blanks or marks stand in a text that is being typed.
  const auto texte = [separateur = App().Reglages.SeparateurDecimal()](const EditeurMontant& champ) {
    std::string lu = champ.Lu();
    std::replace(lu.begin(), lu.end(), '.', separateur);
    return lu;
  };
  FicheFraisKm fiche;
  fiche.enregistre = m_enregistre;
  fiche.compteur = m_compteur.isChecked();
  for (const auto& [champ, membre] : m_textes) fiche.*membre = texte(*champ);
  for (std::size_t i = 0; i < m_taux.size(); ++i) fiche.taux[i] = texte(m_taux[i]);
  return fiche;
}

void CDialogFraisKm::Montre(const FicheFraisKm& fiche) {
  m_enregistre = fiche.enregistre;
  (fiche.compteur ? m_compteur : m_distance).setChecked(true);
  for (const auto& [champ, membre] : m_textes) champ->setText(Q(fiche.*membre));
  for (std::size_t i = 0; i < m_taux.size(); ++i)
    m_taux[i].setText(EstVide(fiche.taux[i]) ? QString() : Q(FormatTauxKm(App(), fiche.taux[i], i)));
  m_supprimer->setEnabled(m_enregistre && !App().Reglages.IsFige());
  MontreLibelles();
  MontreMontant();
}

void CDialogFraisKm::ChangeMode() {
  const bool compteur = m_compteur.isChecked();
  m_ancien.setEnabled(compteur);
  m_dernier.setEnabled(compteur);
  m_kms.setEnabled(!compteur);
  Focalise(compteur ? m_dernier : m_kms);
}

void CDialogFraisKm::ChangeReleves() {
  FicheFraisKm fiche = Lit();
  const QWidget* tape = focusWidget();
  ChangeReleve(App(), fiche);
  // A last reading that is being typed is not whole yet.
  if (tape != &m_dernier) m_dernier.setText(Q(fiche.dernier));
  m_kms.setText(Q(fiche.kms));
  MontreMontant();
}

void CDialogFraisKm::MontreLibelles() {
  const auto libelles = LibellesTauxKm(App(), Lit());
  for (std::size_t i = 0; i < m_libelles.size(); ++i) m_libelles[i].setText(Q(libelles[i]));
}

void CDialogFraisKm::MontreMontant() {
  const f64 montant = CalculFraisKm(App(), Lit());
  m_montant.Pose(App().Reglages.IsEuro() ? FormatEuro(montant) : FormatFranc(montant));
  m_montant.setToolTip(Q(FraisKmAutreMonnaie(App(), montant)));
}

void CDialogFraisKm::accept() {
  m_sauve = false;
  CZNDialog::accept();
  if (m_sauve) ChangeMode();
}

bool CDialogFraisKm::Enregistre() {
  FicheFraisKm fiche = Lit();
  bool supprimees = false;
  if (const Refus refus = EnregistreFraisKm(App(), fiche, supprimees)) return Refuse(refus);
  Montre(fiche);
  return m_sauve = true;
}

void CDialogFraisKm::Supprime() {
  FicheFraisKm fiche = Lit();
  if (!Refuse(SupprimeFraisKm(App(), fiche))) return;
  Montre(fiche);
  OublieSaisie();
  ChangeMode();
}

}  // namespace fenlor
