#include "forms/reports/dialogperiode.h"

#include <QStandardItemModel>

#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "forms/banque/dialogremise.h"
#include "forms/master/frappecompte.h"
#include "forms/reports/textes.h"
#include "store/texte1252.h"
#include "ui/listetapee.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr i16 TypesDesGroupes[] = {Recette, Depense, Tresorerie, Tva, Autre};  ///< by bit of the mask

}  // namespace

DemandeEtat DemandeDe(const QString& issue) {
  const std::pair<QLatin1String, DemandeEtat> demandes[] = {{"apercu"_L1, DemandeEtat::Apercu},
                                                            {"imprimante"_L1, DemandeEtat::Impression},
                                                            {"pdf"_L1, DemandeEtat::Pdf}};
  for (const auto& [nom, demande] : demandes)
    if (issue == nom) return demande;
  return DemandeEtat::SelonPreference;
}

CDialogPeriode::CDialogPeriode(ContexteUi& contexte, FormeCriteres forme, const QString& titre,
                               unsigned comptes, CriteresEtat& criteres, QWidget* parent)
    : CZNDialog(contexte, titre, "DialogPeriode", parent),
      m_forme(forme),
      m_criteres(criteres),
      m_periode(App()) {
  Formulaire formulaire{Zone()};
  if (AvecCompte()) DeclareCompte(formulaire);
  if (forme == FormeCriteres::GenreEtPeriode) DeclareGenre(formulaire);
  if (AvecPeriode()) m_periode.Declare(formulaire);
  if (AvecAffichage()) DeclareAffichage(formulaire);
  if (forme == FormeCriteres::GenreEtPeriode) DeclareCentralisation(formulaire);
  if (AvecMouvements())
    formulaire.Case(m_mouvementes, u"Comptes mouvementés seulement"_s, "mouvementes").FinGroupe();
  formulaire.Pousse();
  if (AvecCompte()) {
    RemplitComptes(comptes);
    const bool tous = comptes & MasqueAutres;
    m_tous.setVisible(tous);
    m_tous.setChecked(tous);
    BasculeTous();
  }
  if (AvecPeriode()) m_periode.Ouvre();
  Boutons(Mode::Simple);
  AjouteIssuesEtat();
  if (AvecCompte()) (m_code.isEnabled() ? static_cast<QWidget&>(m_code) : m_tous).setFocus();
}

CDialogPeriode::~CDialogPeriode() = default;

bool CDialogPeriode::AvecCompte() const {
  return m_forme == FormeCriteres::CompteEtPeriode || m_forme == FormeCriteres::Compte;
}

bool CDialogPeriode::AvecAffichage() const {
  return AvecCompte() || m_forme == FormeCriteres::PeriodeEtAffichage;
}

void CDialogPeriode::DeclareCompte(Formulaire& formulaire) {
  formulaire.Groupe(u"Compte"_s)
      .Champ(u"Co&de :"_s, m_code, "code")
      .Limite(8)
      .SurChangement([this] { ChercheCode(); })
      .SurDepart([this] { QuitteCode(); })
      .ACote(m_tous, "tous")
      .SurChangement([this] {
        BasculeTous();
        if (m_code.isEnabled()) Focalise(m_code);
      })
      .Champ(u"&Compte :"_s, m_compte, "compte")
      .SurChangement([this] { ChoisitCompte(); })
      .FinGroupe();
  m_tous.setText(u"&Tous"_s);
  new ListeTapee(
      m_code, m_code, [this](const QString& tape) { return Propose(De1252(tape)); },
      [this](int rang) {
        const std::string& numero = m_proposes.at(static_cast<std::size_t>(rang));
        for (std::size_t i = 0; i < m_comptes.size(); ++i)
          if (m_comptes[i].compte == numero) m_compte.setCurrentIndex(static_cast<int>(i));
        ChoisitCompte();
      });
  m_compte.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  m_compte.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_compte.setMinimumContentsLength(40);
}

void CDialogPeriode::DeclareGenre(Formulaire& formulaire) {
  formulaire.Champ(u"&Genre :"_s, m_genre, "genre").SurChangement([this] { ChangeGenre(); }).FinGroupe();
  for (int genre = EtatRecettes; genre <= EtatToutes; ++genre)
    m_genre.Ajoute(Texte(MotGenre[static_cast<unsigned>(genre)]));
  m_genre.setCurrentIndex(EtatToutes);
}

void CDialogPeriode::DeclareCentralisation(Formulaire& formulaire) {
  formulaire.Groupe(u"Options de centralisation des recettes"_s, "centralisation")
      .Case(m_centralisation[Detaillee], u"&Détaillée"_s, "detaillee")
      .Case(m_centralisation[ParJour], u"&Centralisation par jour"_s, "parJour")
      .Case(m_centralisation[ParSemaine], u"Centra&lisation par semaine"_s, "parSemaine")
      .Case(m_centralisation[ParMois], u"Cen&tralisation par mois"_s, "parMois")
      .FinGroupe();
  m_centralisation[Detaillee].setChecked(true);
}

void CDialogPeriode::DeclareAffichage(Formulaire& formulaire) {
  formulaire.Groupe(u"Affichage"_s).Case(m_affichage[0], u"Crédit / Dé&bit"_s, "creditDebit");
  m_affichage[1].setText(u"Montant"_s);
  formulaire.ACote(m_affichage[1], "montant").FinGroupe();
  if (m_forme == FormeCriteres::CompteEtPeriode)
    formulaire.Case(m_progressif, u"Solde pro&gressif"_s, "progressif");
  m_affichage[m_criteres.affichage == AffichageMontant ? 1 : 0].setChecked(true);
}

void CDialogPeriode::RemplitComptes(unsigned comptes) {
  const std::vector<CompteOffert> offerts = ComptesParNumero(App());
  auto& modele = *qobject_cast<QStandardItemModel*>(m_compte.model());
  for (unsigned bit = 0; bit < std::size(TypesDesGroupes); ++bit) {
    if (!(comptes & (1u << bit))) continue;
    m_compte.Ajoute(Texte(MotGroupeComptes[bit]));
    m_comptes.emplace_back();
    QStandardItem& titre = *modele.item(m_compte.count() - 1);
    titre.setEnabled(false);
    QFont police = titre.font();
    police.setBold(true);
    titre.setFont(police);
    for (const CompteOffert& compte : offerts) {
      if (compte.type != TypesDesGroupes[bit]) continue;
      m_compte.Ajoute(TexteFormat(FormatCompteChoisi, {compte.court, compte.designation}));
      m_comptes.push_back(compte);
      m_offerts.push_back(compte);
    }
  }
  m_compte.setCurrentIndex(-1);
}

const CompteOffert* CDialogPeriode::Choisi() const {
  const int rang = m_compte.currentIndex();
  return rang < 0 || m_comptes[static_cast<std::size_t>(rang)].compte.empty()
             ? nullptr
             : &m_comptes[static_cast<std::size_t>(rang)];
}

void CDialogPeriode::ChercheCode() {
  const std::string cherche = CompacteTexte(m_code.Valeur());
  int rang = -1;
  for (std::size_t i = 0; rang < 0 && !cherche.empty() && i < m_comptes.size(); ++i)
    if (!m_comptes[i].compte.empty() && CompareSansCasse(m_comptes[i].code, cherche) == 0)
      rang = static_cast<int>(i);
  m_compte.setCurrentIndex(rang);
}

QStringList CDialogPeriode::Propose(const std::string& tape) {
  m_proposes.clear();
  const auto proposes = ComptesProposes(m_offerts, tape);
  for (const CompteOffert* compte : proposes) m_proposes.push_back(compte->compte);
  return TextesProposes(proposes);
}

void CDialogPeriode::QuitteCode() {
  // A blank field may be that of an account of the list which has no code.
  if (EstVide(m_code.Valeur())) return;
  if (const CompteOffert* choisi = Choisi(); choisi && choisi->code == m_code.Valeur()) return;
  ChercheCode();
  if (const CompteOffert* compte = Choisi()) m_code.Pose(compte->code);
}

void CDialogPeriode::ChoisitCompte() {
  const CompteOffert* compte = Choisi();
  m_code.Pose(compte ? compte->code : std::string());
}

void CDialogPeriode::BasculeTous() {
  const bool tous = m_tous.isChecked();
  if (tous) {
    m_code.clear();
    m_compte.setCurrentIndex(-1);
  }
  m_code.setEnabled(!tous);
  m_compte.setEnabled(!tous);
}

void CDialogPeriode::ChangeGenre() {
  const int genre = m_genre.currentIndex();
  for (QRadioButton& bouton : m_centralisation) bouton.setEnabled(genre != EtatDepenses && genre != EtatOD);
}

bool CDialogPeriode::Enregistre() {
  CriteresEtat criteres = m_criteres;
  if (AvecCompte()) {
    const CompteOffert* compte = Choisi();
    if (!m_tous.isChecked() && !compte) return Refuse(ErrCompteObligatoire, m_code);
    criteres.compte = m_tous.isChecked() ? "*" : compte->compte;
    criteres.soldeProgressif = m_progressif.isChecked();
  }
  if (AvecPeriode()) {
    // Dates in the wrong order are taken as they stand; what is no date is none.
    QWidget* fautif = m_periode.Fautif();
    if (fautif && !(m_periode.Du() && m_periode.Au())) return Refuse(ErrDateIncorrecte, *fautif);
    m_periode.Retient();
    criteres.du = m_periode.Du();
    criteres.au = m_periode.Au();
  }
  if (AvecAffichage())
    criteres.affichage = m_affichage[0].isChecked() ? AffichageCreditDebit : AffichageMontant;
  criteres.mouvementes = AvecMouvements() && m_mouvementes.isChecked();
  if (m_forme == FormeCriteres::GenreEtPeriode) {
    criteres.genre = m_genre.currentIndex();
    criteres.centralisation = Detaillee;
    for (int choix = Detaillee; choix <= ParMois; ++choix) {
      const QRadioButton& bouton = m_centralisation[static_cast<std::size_t>(choix)];
      if (bouton.isEnabled() && bouton.isChecked()) criteres.centralisation = choix;
    }
  }
  m_criteres = criteres;
  return true;
}

bool DemandeurForme::Demande(FormeCriteres forme, const std::string& titre, unsigned comptes,
                             CriteresEtat& criteres) {
  CDialogPeriode periode(m_contexte, forme, Q(titre), comptes, criteres);
  return Execute(periode);
}

bool DemandeurForme::DemandeRemise(const std::string& fichier, CriteresRemise& criteres) {
  CDialogRemise remise(m_contexte, fichier, criteres);
  return Execute(remise);
}

bool DemandeurForme::Execute(CZNDialog& forme) {
  const bool accepte = forme.Execute();
  m_issue = DemandeDe(forme.Issue());
  return accepte;
}

}  // namespace fenlor
