#include "forms/assets/dialogacquisition.h"

#include <QPushButton>
#include <algorithm>
#include <string_view>

#include "assets/amortissements.h"
#include "assets/cessions.h"
#include "core/valeurs.h"
#include "forms/assets/dialogcession.h"
#include "forms/assets/textes.h"
#include "master/optionstva.h"
#include "store/texte1252.h"
#include "ui/champsfiche.h"
#include "ui/radios.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;
using namespace std::string_view_literals;

namespace {

constexpr f64 pasDuree = 0.5, pasTaux = 0.1, tauxTvaMax = 100;
constexpr int largeurNombre = 12, largeurTaux = 10;

}  // namespace

CDialogAcquisition::CDialogAcquisition(ContexteUi& contexte, FicheImmobilisation fiche, QWidget* parent)
    : CZNDialog(contexte,
                fiche.EstNouvelle() ? TexteQ(TitreAcquisition)
                                    : TexteQ(TitreModificationAcquisition, {fiche.designation}),
                "DialogAcquisition", parent),
      m_fiche(std::move(fiche)),
      m_amortissement(App(), m_fiche.dateAchat, static_cast<u8>(m_fiche.type), static_cast<u8>(m_fiche.mode),
                      m_fiche.duree, m_fiche.taux),
      m_prix(App().Reglages),
      m_valeur(App().Reglages),
      m_tauxTva(new EditeurMontant(App().Reglages)),
      m_parDuree(u"Durée d'&utilisation"_s),
      m_parTaux(u"Taux &annuel"_s),
      m_lineaire(u"&Linéaire"_s),
      m_degressif(u"&Dégressif"_s),
      m_exceptionnel(u"&Exceptionnel"_s),
      m_duree(App().Reglages, DureeMin, DureeMax, pasDuree, 2),
      m_taux(App().Reglages, TauxMin, TauxMax, pasTaux, 2),
      m_monnaie(App()) {
  Declare();
  PoseBoutons();
  Montre();
}

CDialogAcquisition::~CDialogAcquisition() = default;

void CDialogAcquisition::Declare() {
  Formulaire formulaire{Zone(), &FicheImmobilisation::Table};
  formulaire.Champ(u"Désignation :"_s, m_designation, "designation")
      .Champ(u"Date :"_s, m_date, "dateAchat")
      .Limite(10)
      .SurChangement([this] { ChangeDate(); })
      .SurDepart([this] {
        ChangeDate();
        m_monnaie.QuitteDate(m_date.Valeur());
      });
  DeclareValeur(formulaire);
  DeclareAmortissement(formulaire);
  m_monnaie.Declare(formulaire);
  formulaire.Pousse();
  m_monnaie.SurChangement([this] { MontreMontants(); });
}

void CDialogAcquisition::DeclareValeur(Formulaire& formulaire) {
  m_tauxTvas.setEditable(true);
  m_tauxTvas.setInsertPolicy(QComboBox::NoInsert);
  m_tauxTva->PoseUnite(" %");
  m_tauxTva->PoseBornes(0, tauxTvaMax);
  m_tauxTvas.setLineEdit(m_tauxTva);
  m_tauxTvas.setCompleter(nullptr);  // what is typed stays so
  for (const LigneTva& compte : LitComptesTva(App()))
    m_tauxTvas.addItem(Q(TexteTaux(App(), compte.taux)), static_cast<int>(compte.position));
  m_tauxTvas.addItem(TexteQ(MotAucuneTva), 0);
  formulaire.Groupe(u"Valeur"_s)
      .Champ(u"Prix d'achat T.T.C. :"_s, m_prix, "prix")
      .SurChangement([this] { ChangeMontants(); })
      .Champ(u"T.V.A. déductible :"_s, m_tauxTvas, "tauxTva")
      .Largeur(largeurTaux)
      .ACote(m_tva, "tva")
      .Champ(u"Prix d'achat H.T. :"_s, m_horsTaxe, "horsTaxe")
      .Champ(u"Valeur amortissable :"_s, m_valeur, "valeur")
      .FinGroupe();
  const auto change = [this] {
    if (m_tauxTva->Refus() == 0) ChangeMontants();
  };
  connect(m_tauxTva, &QLineEdit::textEdited, this, change);
  connect(&m_tauxTvas, &QComboBox::activated, this, change);
}

void CDialogAcquisition::DeclareAmortissement(Formulaire& formulaire) {
  m_duree.PoseUnite(" ans");
  m_taux.PoseUnite(" %");
  formulaire.Groupe(u"Amortissement"_s)
      .Case(m_parDuree, m_parDuree.text(), "parduree")
      .ACote(m_duree, "duree")
      .Largeur(largeurNombre)
      .SurChangement([this] {
        m_amortissement.ChangeDuree(m_duree.Valeur());
        m_taux.Pose(m_amortissement.Taux());
      })
      .SurDepart([this] { QuitteEntree(m_duree, m_amortissement.Duree()); })
      .ACote(m_durees, "durees")
      .Largeur(largeurNombre)
      .Case(m_parTaux, m_parTaux.text(), "partaux")
      .ACote(m_taux, "taux")
      .Largeur(largeurNombre)
      .SurChangement([this] {
        m_amortissement.ChangeTaux(m_taux.Valeur());
        m_duree.Pose(m_amortissement.Duree());
      })
      .SurDepart([this] { QuitteEntree(m_taux, m_amortissement.Taux()); })
      .ACote(m_lesTaux, "lestaux")
      .Largeur(largeurNombre)
      .Case(m_lineaire, m_lineaire.text(), "lineaire")
      .ACote(m_degressif, "degressif")
      .ACote(m_exceptionnel, "exceptionnel")
      .FinGroupe();
  const int radio = std::max(m_parDuree.sizeHint().width(), m_parTaux.sizeHint().width());
  UnDes({&m_parDuree, &m_parTaux});
  UnDes({&m_lineaire, &m_degressif, &m_exceptionnel});
  for (QRadioButton* mode : {&m_parDuree, &m_parTaux}) {
    mode->setMinimumWidth(radio);
    connect(mode, &QRadioButton::clicked, this, [this] {
      m_amortissement.ChangeMode(m_parTaux.isChecked() ? ParTaux : ParDuree);
      MontreAmortissement();
    });
  }
  for (QRadioButton* type : {&m_lineaire, &m_degressif, &m_exceptionnel})
    connect(type, &QRadioButton::clicked, this, [this] { ChangeType(); });
  for (QComboBox* liste : {&m_durees, &m_lesTaux})
    connect(liste, &QComboBox::activated, this, [this](int rang) {
      m_amortissement.ChoisitRangee(rang);
      MontreAmortissement();
    });
  for (QWidget* champ : std::initializer_list<QWidget*>{&m_duree, &m_durees})
    champ->setAccessibleName(u"Durée d'utilisation"_s);
  for (QWidget* champ : std::initializer_list<QWidget*>{&m_taux, &m_lesTaux})
    champ->setAccessibleName(u"Taux annuel"_s);
}

void CDialogAcquisition::PoseBoutons() {
  Boutons(Mode::Modification);
  AjouteAide();
  QPushButton& cession = AjouteBouton(u"&Cession"_s, "cession");
  QPushButton& rebut = AjouteBouton(u"&Rebut"_s, "rebut");
  connect(&cession, &QPushButton::clicked, this, [this] { Finit<CDialogCession>(ControleCession); });
  connect(&rebut, &QPushButton::clicked, this, [this] { Finit<CDialogRebut>(ControleRebut); });
}

void CDialogAcquisition::Montre() {
  m_date.PoseReference(App().Magasin.Today());
  MontreChamps(Zone(), FicheImmobilisation::Table, &m_fiche);
  m_tauxTva->Pose(m_fiche.tauxTva);
  m_monnaie.Pose(m_fiche.monnaie != 0);
  m_monnaie.QuitteDate(m_fiche.dateAchat);
  MontreMontants();
  MontreAmortissement();
  if (!FigeSiCloture()) return;
  for (const char* nom : {"cession", "rebut"}) findChild<QPushButton*>(QLatin1String(nom))->setEnabled(false);
}

void CDialogAcquisition::MontreMontants() {
  const auto montant = m_monnaie.Euro() ? FormatEuro : FormatFranc;
  m_tva.Pose(montant(m_fiche.tva));
  m_horsTaxe.Pose(montant(Arrondi2(m_prix.Valeur() - m_fiche.tva)));
}

void CDialogAcquisition::ChangeMontants() {
  const MontantsAchat montants = CalculMontantsAchat(m_prix.Valeur(), m_tauxTva->Valeur());
  m_fiche.tva = montants.tva;
  m_valeur.Pose(montants.horsTaxe);
  MontreMontants();
}

void CDialogAcquisition::ChangeDate() {
  if (!m_date.EstDate()) return;
  m_amortissement.ChangeDate(m_date.Valeur());
  MontreAmortissement();
}

void CDialogAcquisition::ChangeType() {
  m_amortissement.ChangeType(m_lineaire.isChecked()    ? Lineaire
                             : m_degressif.isChecked() ? Degressif
                                                       : Exceptionnel);
  MontreAmortissement();
}

void CDialogAcquisition::MontreAmortissement() {
  const bool listes = m_amortissement.EnListes();
  const bool duree = m_amortissement.DureeActive(), taux = m_amortissement.TauxActif();
  const auto liste = [&](QComboBox& champ, int rang, bool actif, std::string (*texte)(const CFenlorApp&, f64),
                         f64 TauxDegressif::*colonne) {
    champ.clear();
    for (const TauxDegressif& rangee : m_amortissement.Table())
      champ.addItem(Q(texte(App(), rangee.*colonne)));
    champ.setCurrentIndex(rang);
    champ.setVisible(listes);
    champ.setEnabled(actif);
  };
  liste(m_durees, m_amortissement.RangDuree(), duree, TexteDuree, &TauxDegressif::Duree);
  liste(m_lesTaux, m_amortissement.RangTaux(), taux, TexteTaux, &TauxDegressif::TauxAnnuel);
  const auto entree = [&](EditeurPas& champ, bool actif, f64 valeur) {
    champ.setVisible(!listes);
    champ.setEnabled(actif);
    if (!listes) champ.Pose(valeur);
  };
  entree(m_duree, duree, m_amortissement.Duree());
  entree(m_taux, taux, m_amortissement.Taux());
  m_parDuree.setEnabled(m_amortissement.ModesActifs());
  m_parTaux.setEnabled(m_amortissement.ModesActifs());
}

void CDialogAcquisition::QuitteEntree(EditeurPas& entree, f64 valeur) {
  if (!m_amortissement.EnListes()) entree.Pose(valeur);
}

FicheImmobilisation CDialogAcquisition::Saisie() {
  FicheImmobilisation fiche = m_fiche;
  LitChamps(Zone(), FicheImmobilisation::Table, &fiche);
  // A rate that shows the same is the same, however many decimals the asset has.
  if (m_tauxTva->Refus() == 0 && m_tauxTva->Valeur() != Arrondi2(fiche.tauxTva))
    fiche.tauxTva = m_tauxTva->Valeur();
  fiche.type = m_amortissement.Type();
  fiche.mode = m_amortissement.Mode();
  fiche.duree = m_amortissement.Duree();
  fiche.taux = m_amortissement.Taux();
  fiche.monnaie = m_monnaie.Euro() ? 1 : 0;
  return fiche;
}

bool CDialogAcquisition::Enregistre() {
  FicheImmobilisation fiche = Saisie();
  if (!Refuse(EnregistreFiche(App(), fiche))) return false;
  m_fiche = fiche;
  return true;
}

/// The list that stands where the entry would.
void CDialogAcquisition::Pointe(const Refus& refus) {
  if (m_amortissement.EnListes() && refus.champ == "duree"sv) return Focalise(m_durees);
  if (m_amortissement.EnListes() && refus.champ == "taux"sv) return Focalise(m_lesTaux);
  CZNDialog::Pointe(refus);
}

template <class Forme>
void CDialogAcquisition::Finit(Refus (*controle)(const Immobilisation&)) {
  if (!QuitteChamps() || !Refuse(controle(m_fiche.rec))) return;
  Immobilisation immo = m_fiche.rec;
  PoseTexte(immo.Designation, m_designation.Valeur());
  immo.DateAchat = m_date.Valeur();
  Forme forme(Contexte(), immo, {}, this);
  if (!forme.Execute()) return;
  m_fiche.rec = immo;
  accept();
}

}  // namespace fenlor
