#include "forms/auto/dialogautoecriture.h"

#include <QApplication>
#include <QBoxLayout>
#include <QIntValidator>
#include <string_view>

#include "core/valeurs.h"
#include "forms/master/champscompte.h"
#include "forms/master/dialogplan.h"
#include "journal/controles.h"
#include "store/texte1252.h"
#include "ui/radios.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;
using namespace std::string_view_literals;

namespace {
constexpr int ChiffresNombre = 3, DernierePeriodicite = 9, LargeurDate = 14;
}

CDialogAutoEcriture::CDialogAutoEcriture(ContexteUi& contexte, SuiteFiches* suite, Position position,
                                         QWidget* parent)
    : FormulaireFiche(contexte, "DialogAutoEcriture", suite, position, parent),
      m_compte(
          contexte.App, [this] { return ComptesParCode(App(), TypeCompte()); },
          [this] { return CDialogPlan::Nouveau(Contexte(), TypeCompte(), this); }),
      m_montants(
          contexte.App,
          [this](Plan& plan) {
            return m_compte.Choisi() && LitCompte(App(), m_compte.Choisi()->compte, plan);
          },
          [this] { return m_monnaie.Euro(); }),
      m_annoncer(u"Annoncer avant"_s),
      m_monnaie(contexte.App) {
  m_genre.Ajoute("RECETTE", std::to_string(JournalRecettes));
  m_genre.Ajoute("DEPENSE", std::to_string(JournalDepenses));
  for (int code = 1; code <= DernierePeriodicite; ++code)
    m_periodicite.Ajoute(GetPeriodiciteString(code), std::to_string(code));
  m_nombre.setValidator(new QIntValidator(0, static_cast<int>(PaiementsMax), &m_nombre));
  m_avancement.setAccessibleName(u"Paiements faits"_s);
  UnDes({&m_automatique, &m_annoncer});
  Declare();
  m_tresorerie.Charge(App());
  m_libelle.Charge(App());
  m_ajoutLibelles = new AjoutLibelles(Contexte(), m_libelle, *this);
  m_compte.SurChoix([this] { CompteChange(); });
  m_compte.SurCode([this] { CZNDialog::Focalise(m_libelle); });
  Ouvre();
}

CDialogAutoEcriture::~CDialogAutoEcriture() = default;

void CDialogAutoEcriture::done(int resultat) {
  m_ajoutLibelles->Ecrit();
  FormulaireFiche::done(resultat);
}

void CDialogAutoEcriture::Declare() {
  auto* gauche = new QVBoxLayout;
  auto* droite = new QVBoxLayout;
  auto* colonnes = new QHBoxLayout(&Zone());
  colonnes->addLayout(gauche, 1);
  colonnes->addLayout(droite);
  gauche->addWidget(ColonneDeChamps(Zone(), [this](Formulaire& f) {
    f.Champ(u"Genre :"_s, m_genre, "genre")
        .SurChangement([this] { GenreChange(); })
        .Champ(u"Date :"_s, m_date, "date")
        .Largeur(LargeurDate)
        .SurDepart([this] {
          if (m_date.EstVide()) m_date.Pose(App().Magasin.Today());
          m_monnaie.QuitteDate(m_date.Valeur());
        });
    m_tresorerie.DeclareCompte(f, u"Trésorerie :"_s);
    m_compte.Declare(f);
    f.Champ(u"Libellé :"_s, m_libelle, "libelle");
    m_tresorerie.DeclarePaiement(f);
  }));
  gauche->addStretch(1);
  droite->addWidget(m_montants.Colonne(Zone(), App().Reglages.IsTVA()));
  droite->addWidget(ColonneDeChamps(Zone(), [this](Formulaire& f) {
    DeclareTransactions(f);
    m_monnaie.Declare(f);
  }));
  droite->addStretch(1);
}

void CDialogAutoEcriture::DeclareTransactions(Formulaire& formulaire) {
  formulaire.Groupe(u"Transactions"_s)
      .Champ(u"Périodicité :"_s, m_periodicite, "periodicite")
      .SurChangement([this] { PeriodiciteChange(); })
      .Champ(u"Nombre :"_s, m_nombre, "nombre")
      .Limite(ChiffresNombre)
      .SurDepart([this] { QuitteNombre(); })
      .ACote(m_avancement, "avancement")
      .Case(m_automatique, u"Automatique"_s, "automatique")
      .ACote(m_annoncer, "annoncer")
      .FinGroupe();
}

QString CDialogAutoEcriture::Titre() const { return u"Ecriture automatique"_s; }

i16 CDialogAutoEcriture::Genre() const {
  return m_genre.currentIndex() == 1 ? i16{JournalDepenses} : i16{JournalRecettes};
}

i16 CDialogAutoEcriture::TypeCompte() const {
  return Genre() == JournalRecettes ? i16{Recette} : i16{Depense};
}

void CDialogAutoEcriture::Montre() {
  const FicheAuto& fiche = EnMain();
  m_genre.Choisit(std::to_string(fiche.genre));
  m_compte.Recharge();
  m_compte.Choisit(QVAPI::GetLongCompte(fiche.compte));
  MontreChamps();
  m_automatique.setChecked(!fiche.annoncer);
  m_libelle.Pose(fiche.libelle);
  m_tresorerie.Pose(QVAPI::GetLongCompte(fiche.tresorerie), fiche.paiement);
  m_monnaie.Pose(fiche.euro);
  m_monnaie.QuitteDate(fiche.date);
  if (Ajout())
    m_montants.Vide();
  else
    m_montants.Pose(fiche.montants);
  m_montants.Permet(true, Genre() == JournalDepenses);
  m_periodicite.Choisit(std::to_string(fiche.periodicite));
  MontreNombre(fiche);
}

void CDialogAutoEcriture::GenreChange() {
  m_compte.Recharge();
  m_compte.Vide();
  CompteChange();
  m_montants.Permet(true, Genre() == JournalDepenses);
}

void CDialogAutoEcriture::CompteChange() {
  m_montants.Calcule();
  if (const CompteOffert* compte = m_compte.Choisi(); compte && !m_compte.EnFrappe())
    m_libelle.Propose(compte->designation);
}

void CDialogAutoEcriture::PeriodiciteChange() {
  ChangePeriodicite(EnMain(), static_cast<i16>(m_periodicite.currentIndex() + 1));
  MontreNombre(EnMain());
}

void CDialogAutoEcriture::QuitteNombre() {
  EnMain().nombre = NombreTape(EnMain(), m_nombre.text().toUInt());
  MontreNombre(EnMain());
}

void CDialogAutoEcriture::MontreNombre(const FicheAuto& fiche) {
  m_nombre.Pose(std::to_string(fiche.nombre));
  m_avancement.Pose(AvancementAuto(fiche));
  PermetChamp(m_nombre, fiche.periodicite != 1);
}

FicheAuto CDialogAutoEcriture::Saisie() {
  FicheAuto fiche = FormulaireFiche::Saisie();
  fiche.genre = Genre();
  const CompteOffert *compte = m_compte.Choisi(), *tresorerie = m_tresorerie.Choisi();
  fiche.compte = compte ? compte->compte : std::string();
  fiche.tresorerie = tresorerie ? tresorerie->compte : std::string();
  fiche.paiement = m_tresorerie.Marque();
  fiche.libelle = m_libelle.Valeur();
  fiche.montants = m_montants.Valeur();
  fiche.euro = m_monnaie.Euro();
  fiche.nombre = NombreTape(fiche, m_nombre.text().toUInt());
  return fiche;
}

/// The next one is of the same kind and on the same account as the one before.
FicheAuto CDialogAutoEcriture::Nouvelle() {
  FicheAuto fiche = NouvelleAuto(App());
  fiche.genre = Genre();
  return fiche;
}

void CDialogAutoEcriture::Pointe(const Refus& refus) {
  if (refus.champ == "compte"sv && m_compte.CodeInconnu()) return CZNDialog::Focalise(m_compte.Code());
  if (refus.champ == "monnaie"sv) return CZNDialog::Focalise(m_monnaie.Bouton(true));
  FormulaireFiche::Pointe(refus);
}

}  // namespace fenlor
