#include "forms/master/champscompte.h"

#include <QAbstractItemView>
#include <QStyle>

#include "core/valeurs.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LargeurListe = 57, LargeurMontant = 14, LargeurTaux = 6;
constexpr f64 Tout = 100;

/// A heading may be longer than any form is wide: the open list and a tool tip show it whole.
void BorneLargeur(EditeurChoix& liste) {
  liste.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  liste.setMinimumContentsLength(1);
  QObject::connect(&liste, &QComboBox::currentTextChanged, &liste, &QWidget::setToolTip);
}

void ElargitListe(EditeurChoix& liste) {
  const int barre = liste.style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 8;
  liste.view()->setMinimumWidth(liste.view()->sizeHintForColumn(0) + barre);
}

}  // namespace

void PermetChamp(QWidget& champ, bool permis) {
  champ.setEnabled(permis);
  if (!champ.parentWidget()) return;
  for (QLabel* libelle : champ.parentWidget()->findChildren<QLabel*>())
    if (libelle->buddy() == &champ) libelle->setEnabled(permis);
}

void FigeChamp(QLineEdit& champ, bool fige) {
  PermetChamp(champ, !fige);
  champ.setEnabled(true);
  champ.setReadOnly(fige);
}

void SoldesAffiches::Declare(Formulaire& formulaire, std::initializer_list<Figure> figures) {
  formulaire.Groupe(u"Soldes"_s);
  for (const Figure& figure : figures) {
    auto* valeur = new Lecture;
    valeur->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    valeur->setContentsMargins(0, 0, valeur->fontMetrics().height(), 0);
    const QString libelle = QString::fromUtf8(figure.libelle);
    (m_figures.size() % 2 == 0 ? formulaire.Champ(libelle, *valeur, figure.nom)
                               : formulaire.Suite(libelle, *valeur, figure.nom))
        .Largeur(LargeurMontant);
    m_figures.emplace_back(figure, valeur);
  }
  formulaire.FinGroupe();
}

std::string SoldesAffiches::Format(f64 valeur, bool signe) const {
  const Parametres& reglages = m_app.Reglages;
  const auto format = signe ? &FormatSoldeSaisie : &FormatSaisie;
  return format(valeur, 2, reglages.ZeroDansBoite(), reglages.SeparateurDecimal());
}

void SoldesAffiches::Montre(const Plan& compte) {
  const bool euro = m_app.Reglages.IsEuro();
  const SoldesCompte soldes = SoldesDe(compte, euro), autres = SoldesDe(compte, !euro);
  for (const auto& [figure, champ] : m_figures) {
    champ->Pose(Format(soldes.*figure.montant, figure.signe));
    const f64 autre = autres.*figure.montant;
    champ->setToolTip(Q(euro ? FormatSoldeFranc(autre) : FormatSoldeEuro(autre)));
  }
}

void SoldesAffiches::Pose(f64 SoldesCompte::*montant, f64 valeur) {
  for (const auto& [figure, champ] : m_figures) {
    if (figure.montant != montant) continue;
    champ->Pose(Format(valeur, figure.signe));
    champ->setToolTip({});
  }
}

ChampsAffectation::ChampsAffectation(CFenlorApp& app) : m_app(app), m_assujetti(app.Reglages.IsTVA()) {}

void ChampsAffectation::DeclareRubrique(Formulaire& formulaire) {
  for (EditeurChoix* liste : {&m_rubrique, &m_tva}) BorneLargeur(*liste);
  formulaire.Champ(u"Rubrique :"_s, m_rubrique, "rubrique").Largeur(LargeurListe);
}

void ChampsAffectation::Declare(Formulaire& formulaire) {
  DeclareRubrique(formulaire);
  if (m_assujetti) formulaire.Champ(u"T.V.A.:"_s, m_tva, "tva").Largeur(LargeurListe);
}

void ChampsAffectation::Montre(const FicheCompte& fiche) {
  m_rubrique.clear();
  m_rubrique.Ajoute("(aucune)");
  for (const ChoixRubrique& choix : RubriquesDuType(m_app, fiche.type))
    m_rubrique.Ajoute(choix.texte, choix.code);
  ElargitListe(m_rubrique);
  m_rubrique.Choisit(NormaliseRubrique(fiche.rubrique));
  if (!m_assujetti) return;
  m_tva.clear();
  m_tva.Ajoute("(aucun)");
  for (const ChoixTVA& choix : ChoixComptesTVA(m_app)) m_tva.Ajoute(choix.texte, choix.compte);
  m_tva.Choisit(fiche.compteTVA);
}

void ChampsAffectation::Vide() {
  m_rubrique.setCurrentIndex(-1);
  m_tva.setCurrentIndex(-1);
}

ChampsRepartition::ChampsRepartition(CFenlorApp& app) : m_app(app), m_professionnelle(app.Reglages) {}

void ChampsRepartition::Declare(Formulaire& formulaire) {
  formulaire.Groupe(u"Répartition"_s)
      .Champ(u"Professionnelle :"_s, m_professionnelle, "professionnelle")
      .SurChangement([this] { MontrePersonnelle(); })
      .ACote(*new QLabel(u"%"_s))
      .Suite(u"Personnelle :"_s, m_personnelle, "personnelle")
      .Largeur(LargeurTaux)
      .ACote(*new QLabel(u"%"_s))
      .FinGroupe();
  m_personnelle.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void ChampsRepartition::Montre(const FicheCompte& fiche, bool permis) {
  m_professionnelle.Pose(permis ? fiche.partPro : Tout);
  m_personnelle.Pose({});
  MontrePersonnelle();
  PermetChamp(m_professionnelle, permis);
  PermetChamp(m_personnelle, permis);
}

void ChampsRepartition::MontrePersonnelle() {
  const f64 pro = m_professionnelle.Valeur();
  if (pro > Tout) return;
  const std::string reste = FormatMontant(Tout - pro, 2, m_app.Reglages.SeparateurDecimal());
  m_personnelle.Pose(reste.empty() ? "0" : reste);
}

ChampsTresorerie::ChampsTresorerie(CFenlorApp& app)
    : m_app(app), m_debit(app.Reglages), m_credit(app.Reglages), m_soldes(app) {}

void ChampsTresorerie::Declare(Formulaire& formulaire) {
  formulaire.Champ(u"Compte &bancaire :"_s, m_banque, "banque")
      .Champ(u"Solde &initial débit :"_s, m_debit, "debit")
      .SurChangement([this] { ChangeInitial(m_debit, m_credit, -1); })
      .Suite(u"Crédit :"_s, m_credit, "credit")
      .SurChangement([this] { ChangeInitial(m_credit, m_debit, 1); });
}

void ChampsTresorerie::DeclareSoldes(Formulaire& formulaire) {
  m_soldes.Declare(formulaire, {{"Débit :", "totalDebit", &SoldesCompte::debit, false},
                                {"Crédit :", "totalCredit", &SoldesCompte::credit, false},
                                {"Solde :", "solde", &SoldesCompte::solde},
                                {"Solde réel :", "soldeReel", &SoldesCompte::reel},
                                {"Solde rapproché :", "soldeRapproche", &SoldesCompte::rapproche}});
}

void ChampsTresorerie::Montre(const FicheCompte& fiche, const Plan& compte) {
  m_banque.setChecked(fiche.banque);
  const auto pose = [](EditeurMontant& champ, f64 montant) {
    montant == 0 ? champ.clear() : champ.Pose(montant);
  };
  pose(m_debit, fiche.debitInitial);
  pose(m_credit, fiche.creditInitial);
  m_solde = SoldesDe(compte, m_app.Reglages.IsEuro()).solde;
  m_soldes.Montre(compte);
}

void ChampsTresorerie::Permet(bool permis) {
  for (QWidget* champ :
       {static_cast<QWidget*>(&m_banque), static_cast<QWidget*>(&m_debit), static_cast<QWidget*>(&m_credit)})
    PermetChamp(*champ, permis);
}

void ChampsTresorerie::ChangeInitial(const EditeurMontant& saisi, EditeurMontant& autre, int signe) {
  autre.clear();
  m_soldes.Pose(&SoldesCompte::reel, m_solde + signe * saisi.Valeur());
}

}  // namespace fenlor
