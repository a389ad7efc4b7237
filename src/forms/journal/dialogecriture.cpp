#include "forms/journal/dialogecriture.h"

#include <QApplication>
#include <QBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <string_view>
#include <utility>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "forms/journal/textes.h"
#include "forms/master/champscompte.h"
#include "forms/master/dialogplan.h"
#include "journal/controles.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;
using namespace std::string_view_literals;

namespace {

QString Titre(i16 journal, bool ajout) {
  return TexteQ(TitreEcriture, {Texte(journal == JournalRecettes ? TitreRecette : TitreDepense),
                                Texte(ajout ? MotAjout : MotModification)});
}

}  // namespace

CDialogEcriture::CDialogEcriture(ContexteUi& contexte, const OuvertureEcriture& ouverture, QWidget* parent)
    : FormulaireEcriture(contexte, Titre(ouverture.journal, ouverture.mouvement == 0), "DialogEcriture",
                         ouverture, parent),
      m_plan(contexte.App, contexte.App.PathExercice),
      m_lines(contexte.App, contexte.App.PathExercice),
      m_compte(
          contexte.App, [this] { return Comptes(); }, [this] { return NouveauCompte(); }),
      m_montants(
          contexte.App, [this](Plan& plan) { return LitCompteChoisi(plan); },
          [this] { return m_monnaie.Euro(); }) {
  m_lue = m_plan.OpenFile() && m_lines.OpenFile();
  Declare();
  m_libelle.Charge(App());
  m_ajoutLibelles = new AjoutLibelles(Contexte(), m_libelle, *this);
  PoseBoutons();
  FigeSiCloture();
  if (!m_lue) return;
  if (Ajout()) {
    Commence();
    m_tresorerie->Vide(m_ouverture.tresorerie);
    if (m_ouverture.proposition) Propose(*m_ouverture.proposition);
    Actualise();
  } else {
    m_lue = Charge(m_ouverture.mouvement);
  }
}

CDialogEcriture::~CDialogEcriture() = default;

void CDialogEcriture::showEvent(QShowEvent* evenement) {
  FormulaireEcriture::showEvent(evenement);
  // Whatever else stays readable, a button that does nothing looks so.
  QPalette gris;
  gris.setColor(QPalette::Disabled, QPalette::ButtonText,
                palette().color(QPalette::Disabled, QPalette::ButtonText));
  for (QPushButton* bouton : Zone().findChildren<QPushButton*>()) bouton->setPalette(gris);
}

// ------------------------------------------------------------------ The fields

void CDialogEcriture::Declare() {
  // Two columns; the tab order goes from left to right and back, as the fields are declared.
  auto* gauche = new QVBoxLayout;
  auto* droite = new QVBoxLayout;
  auto* colonnes = new QHBoxLayout;
  colonnes->addLayout(gauche, 1);
  colonnes->addLayout(droite);
  auto* pile = new QVBoxLayout(&Zone());
  pile->addWidget(ColonneDeChamps(Zone(), [this](Formulaire& f) { m_jour.Declare(f, u"Date :"_s, "jour"); }));
  pile->addLayout(colonnes, 1);

  gauche->addWidget(ColonneDeChamps(Zone(), [this](Formulaire& f) {
    m_compte.Declare(f);
    f.Champ(u"Libellé :"_s, m_libelle, "libelle").Seul(m_offre, "offre");
  }));
  droite->addWidget(m_montants.Colonne(Zone()));
  m_tresorerie = new ZoneTresorerie(
      Contexte(),
      [this] {
        return ZoneTresorerie::Ecriture{m_jour.Valeur(), m_montants.Ttc(), m_monnaie.Euro()};
      },
      &Zone());
  gauche->addWidget(m_tresorerie, 1);
  droite->addWidget(ColonneDeChamps(Zone(), [this](Formulaire& f) { DeclareEtat(f); }), 1);

  QPalette gris = m_offre.palette();
  gris.setColor(QPalette::WindowText,
                Lisible(gris.color(QPalette::PlaceholderText), gris.color(QPalette::Window)));
  m_offre.setPalette(gris);
  m_libelle.SurChangement([this] { MontreOffre(); });
  for (const Qt::Key touche : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(QKeySequence(Qt::CTRL | touche), this), &QShortcut::activated, this,
            &CDialogEcriture::PrendOffre);
  m_compte.SurChoix([this] { CompteChange(); });
  m_compte.SurCode([this] { CZNDialog::Focalise(m_libelle); });
  m_tresorerie->SurChangement([this] { TresorerieChange(); });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* de, QWidget* vers) {
    if (de == &m_jour && vers) m_monnaie.QuitteDate(m_jour.Valeur());
  });
}

void CDialogEcriture::DeclareEtat(Formulaire& formulaire) {
  m_monnaie.Declare(formulaire);
  formulaire.Groupe(u"Etat"_s)
      .Champ(u"Pointée :"_s, m_pointee, "pointee")
      .Suite(u"Remise :"_s, m_remise, "remise")
      .Champ(u"Rapprochée :"_s, m_rapprochee, "rapprochee")
      .Suite(u"Validée :"_s, m_marqueValidee, "validee")
      .FinGroupe()
      .Pousse();
  PermetChamp(m_remise, m_ouverture.journal == JournalRecettes);
}

void CDialogEcriture::PoseBoutons() {
  const bool voisins = ADesVoisins();
  const Mode mode = m_ouverture.sauve ? Mode::Simple : Ajout() ? Mode::Ajout : Mode::Modification;
  Boutons(mode, voisins);
  if (!voisins) AjouteAide();
  auto* deverrouille = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_U), this);
  connect(deverrouille, &QShortcut::activated, this, &CDialogEcriture::Deverrouille);
}

std::vector<CompteOffert> CDialogEcriture::Comptes() {
  const i16 type = m_ouverture.journal == JournalRecettes ? Recette : Depense;
  std::vector<CompteOffert> comptes = ComptesParCode(App(), type);
  if (m_compteDehors.empty() || CompteDeNumero(comptes, m_compteDehors)) return comptes;
  const std::vector<CompteOffert> tous = ComptesParNumero(App());
  if (const CompteOffert* compte = CompteDeNumero(tous, m_compteDehors)) comptes.push_back(*compte);
  return comptes;
}

bool CDialogEcriture::NouveauCompte() {
  return CDialogPlan::Nouveau(Contexte(),
                              m_ouverture.journal == JournalRecettes ? i16{Recette} : i16{Depense}, this);
}

bool CDialogEcriture::LitCompteChoisi(Plan& plan) {
  const CompteOffert* compte = m_compte.Choisi();
  if (!compte || !m_plan.ReadRec(compte->position)) return false;
  plan = *m_plan.Rec;
  return true;
}

// ------------------------------------------------------------- Showing an entry

bool CDialogEcriture::Charge(u32 mouvement) {
  EcritureLue ecriture;
  if (!App().Dit(LitEcriture(App(), mouvement, ecriture))) return false;
  const SaisieEcriture& saisie = ecriture.saisie;
  m_monnaie.Pose(saisie.euro);
  if (saisie.validee || ecriture.liee || m_cloture)
    m_monnaie.QuitteDate(saisie.date);
  else if (m_monnaie.Ouvre(saisie.date) && !App().Dit(LitEcriture(App(), mouvement, ecriture, true)))
    return false;
  NoteVoisins(false);
  Montre(ecriture);
  return true;
}

void CDialogEcriture::Montre(const EcritureLue& ecriture) {
  const SaisieEcriture& saisie = ecriture.saisie;
  m_mouvement = saisie.mouvement;
  m_ligne = saisie.ligne;
  m_validee = saisie.validee;
  m_liee = ecriture.liee;
  m_delie = false;
  m_jour.Pose(saisie.date);
  MontreCompte(saisie.compte);
  m_libelle.Pose(saisie.libelle);
  m_montants.Pose(saisie.montants);
  m_tresorerie->Pose(ecriture);
  MontreMarques(ecriture.marques);
  Actualise();
}

/// An entry on the personal account keeps it, though the journal does not offer it.
void CDialogEcriture::MontreCompte(const std::string& compte) {
  const std::string dehors = compte == App().Magasin.GetComptePerso() ? compte : std::string{};
  if (std::exchange(m_compteDehors, dehors) != dehors) m_compte.Recharge();
  m_compte.Choisit(compte);
  m_libelle.ProposeDernier(DernierLibelle(App(), m_ouverture.journal, compte));
}

void CDialogEcriture::MontreMarques(const MarquesEcriture& marques) {
  m_pointee.setChecked(marques.pointee);
  m_rapprochee.setChecked(marques.rapprochee);
  m_remise.setChecked(m_ouverture.journal == JournalRecettes && marques.remise);
  m_marqueValidee.setChecked(marques.validee);
}

void CDialogEcriture::Actualise() {
  const bool permis = !Fige(), recettes = m_ouverture.journal == JournalRecettes;
  const bool montants = permis && (m_mouvement != 0 || m_compte.Choisi());
  PermetChamp(m_jour, permis);
  m_compte.Permet(permis);
  PermetChamp(m_libelle, permis);
  m_montants.Permet(montants, montants && !recettes);
  m_tresorerie->Permet(permis);
  m_monnaie.Permet(permis);

  Zone().setPalette(permis ? QPalette() : PaletteLecture());
  if (auto* ok = findChild<QPushButton*>(u"ok"_s, Qt::FindDirectChildrenOnly)) ok->setEnabled(permis);
  MontreVoisins();
}

/// What the caller knows of a new entry; the account, from which the shares follow, is left to choose.
void CDialogEcriture::Propose(const SaisieEcriture& saisie) {
  m_monnaie.Pose(saisie.euro);
  m_libelle.Pose(saisie.libelle);
  m_montants.PoseTtc(saisie.montants.ttc);
  EcritureLue ecriture;
  ecriture.saisie = saisie;
  m_tresorerie->Pose(ecriture);
  CZNDialog::Focalise(m_compte.Code());
}

void CDialogEcriture::Reprend(const SaisieSuspendue& reprise) {
  const SaisieEcriture& saisie = reprise.ecriture;
  m_jour.Pose(saisie.date);
  m_monnaie.Pose(saisie.euro);
  MontreCompte(saisie.compte);
  if (!reprise.code.empty()) m_compte.Code().setText(Q(reprise.code));
  m_libelle.Pose(saisie.libelle);
  m_montants.Pose(saisie.montants);
  EcritureLue ecriture;
  ecriture.saisie = saisie;
  for (const LigneTresorSaisie& ligne : saisie.tresoreries) ecriture.lignes.push_back({ligne, {}, {}});
  m_tresorerie->Pose(ecriture);
  m_tresorerie->Retape(reprise);
  m_montants.Retape({reprise.ttc, reprise.professionnelle});
  m_reprise = true;
  Actualise();
}

std::optional<SaisieSuspendue> CDialogEcriture::Suspendue() const {
  const auto ligne = m_tresorerie->LigneOuverte();
  if (Fige() || (!ligne && !Modifie())) return std::nullopt;
  SaisieSuspendue suspendue;
  suspendue.ligneOuverte = ligne.has_value();
  if (ligne) suspendue.ligne = *ligne;
  suspendue.tresorerie = m_tresorerie->CodeInconnu();
  suspendue.ecriture = Saisie();
  suspendue.ecriture.date = m_jour.Valeur();
  if (m_compte.CodeInconnu()) suspendue.code = m_compte.CodeTape();
  const ChampsMontants::Frappe frappe = m_montants.Illisible();
  suspendue.ttc = frappe.ttc;
  suspendue.professionnelle = frappe.professionnelle;
  return suspendue;
}

// ---------------------------------------------------------------- While typing

void CDialogEcriture::CompteChange() {
  m_montants.Calcule();
  const CompteOffert* compte = m_compte.Choisi();
  if (!m_compte.EnFrappe()) {
    m_libelle.ProposeDernier(compte ? DernierLibelle(App(), m_ouverture.journal, compte->compte)
                                    : std::string{});
    if (compte) m_libelle.Propose(compte->designation);
    m_libelle.PoseConnus(compte ? LibellesConnus(App(), m_ouverture.journal, compte->compte)
                                : std::vector<LibelleConnu>());
    MontreOffre();
  }
  Actualise();
}

void CDialogEcriture::MontreOffre() {
  m_offerte.reset();
  const LibelleConnu* connu = Ajout() && !Fige() ? m_libelle.Connu() : nullptr;
  EcritureLue lue;
  if (connu && !LitEcriture(App(), connu->mouvement, lue, m_monnaie.Euro()) &&
      lue.saisie.euro == m_monnaie.Euro() && lue.saisie.genre == GenreSimple)
    m_offerte = lue;
  if (!m_offerte) {
    m_montants.OffreTtc({});
    return m_offre.clear();
  }
  const SaisieEcriture& saisie = m_offerte->saisie;
  Plan compte;
  const bool connue = LitCompte(App(), saisie.tresorerie, compte);
  const std::string montant =
      saisie.euro ? FormatEuro(saisie.montants.ttc) : FormatFranc(saisie.montants.ttc);
  m_montants.OffreTtc(Q(montant));
  m_offre.setText(TexteQ(FormatOffre, {montant, connue ? LitTexte(compte.Code) : std::string{}}));
}

void CDialogEcriture::PrendOffre() {
  if (!m_offerte || Fige()) return;
  EcritureLue ecriture;
  ecriture.saisie = m_offerte->saisie;
  m_montants.PoseTtc(ecriture.saisie.montants.ttc);
  m_tresorerie->Pose(ecriture);
  m_offerte.reset();
  m_montants.OffreTtc({});
  m_offre.clear();
  Actualise();
}

/// Lines that come to more than T.T.C. raise it.
void CDialogEcriture::TresorerieChange() {
  const f64 ttc = m_montants.Ttc(), total = m_tresorerie->Lignes().Total();
  const bool depasse = ttc == 0 ? total != 0 : ttc > 0 ? total > ttc : total < ttc;
  if (m_tresorerie->Genre() == GenreStandard && depasse) m_montants.PoseTtc(total);
  Actualise();
}

/// Alt+U: a validated entry becomes a draft again, a linked one can be changed.
void CDialogEcriture::Deverrouille() {
  if (Ajout() || !(m_validee || m_liee)) return;
  if (m_cloture) {
    App().Dit(App().ControleEcriture());
    return;
  }
  if (m_validee && App().Dit(ValideEcriture(App(), m_mouvement, false))) {
    m_validee = false;
    m_marqueValidee.setChecked(false);
    m_change = true;
  }
  if (m_liee && App().MessageId(BoutonsOuiNon | IconeQuestion, QuestionEditerLiee) == RepOui) {
    m_liee = false;
    m_delie = true;
  }
  Actualise();
  if (!Fige()) CZNDialog::Focalise(m_jour);
}

// ---------------------------------------------------------------------- Saving

SaisieEcriture CDialogEcriture::Saisie() const {
  SaisieEcriture saisie;
  saisie.journal = m_ouverture.journal;
  saisie.genre = m_tresorerie->Genre();
  saisie.mouvement = m_mouvement;
  saisie.ligne = m_ligne;
  saisie.date = m_jour.Saisie();
  const CompteOffert* compte = m_compte.Choisi();
  if (compte) saisie.compte = compte->compte;
  saisie.libelle = m_libelle.Valeur();
  saisie.euro = m_monnaie.Euro();
  saisie.montants = m_montants.Valeur();
  saisie.tresorerie = m_tresorerie->Tresorerie();
  saisie.paiement = m_tresorerie->Paiement();
  for (const LigneTresorLue& ligne : m_tresorerie->Lignes().lignes) saisie.tresoreries.push_back(ligne);
  saisie.validee = m_validee;
  saisie.delier = m_delie;
  return saisie;
}

bool CDialogEcriture::Enregistre() {
  if (Fige()) return true;
  EcritureFaite faite;
  const SaisieEcriture saisie = Saisie();
  if (!Refuse(m_ouverture.sauve ? m_ouverture.sauve(saisie, faite)
                                : EnregistreEcriture(App(), saisie, faite)))
    return false;
  m_delie = false;
  m_tresorerie->OublieModifications();
  m_reprise = false;
  NoteFaite(faite);
  return true;
}

void CDialogEcriture::Pointe(const Refus& refus) {
  if (refus.rang >= 0) m_tresorerie->ChoisitLigne(refus.rang);
  if (refus.champ == "compte"sv && m_compte.CodeInconnu()) CZNDialog::Focalise(m_compte.Code());
}

void CDialogEcriture::Vide() {
  m_jour.Pose(m_jour.Valeur());
  m_compte.Vide();
  m_libelle.ProposeDernier({});
  m_libelle.PoseConnus({});
  m_libelle.Pose({});
  MontreOffre();
  m_montants.Vide();
  m_tresorerie->Vide();
  MontreMarques({});
  Actualise();
}

bool CDialogEcriture::Modifie() const {
  return m_reprise || CZNDialog::Modifie() || m_tresorerie->Modifiee() || m_delie;
}

void CDialogEcriture::done(int resultat) {
  m_ajoutLibelles->Ecrit();
  FormulaireEcriture::done(resultat);
}

}  // namespace fenlor
