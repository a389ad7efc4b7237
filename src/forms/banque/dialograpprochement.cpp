#include "forms/banque/dialograpprochement.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QShortcut>
#include <string_view>

#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "forms/banque/dialogreleve.h"
#include "forms/banque/textes.h"
#include "forms/journal/dialogecriture.h"
#include "journal/controles.h"
#include "store/cumuls.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;
using namespace std::string_view_literals;

namespace {

constexpr int LargeurNature = 26, LargeurListe = 52;  // characters

/// A list and what belongs to it, side by side under a title.
QWidget* Volet(QWidget& zone, const QString& titre, CZNListCtrl& liste, const char* nom,
               const std::function<void(Formulaire&)>& declare) {
  auto* volet = new QGroupBox(titre, &zone);
  auto* rangee = new QHBoxLayout(volet);
  liste.setObjectName(QLatin1String(nom));
  liste.setAccessibleName(titre);
  liste.setMinimumWidth(LargeurListe * liste.fontMetrics().averageCharWidth());
  rangee->addWidget(&liste, 1);
  rangee->addWidget(ColonneDeChamps(*volet, declare));
  return volet;
}

void ADroite(Lecture& lecture) {
  lecture.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  lecture.setMinimumWidth(TailleMontant * lecture.fontMetrics().horizontalAdvance(u'0'));
}

template <class Action>
void Touche(QWidget& liste, const QKeySequence& touche, Action action) {
  auto* raccourci = new QShortcut(touche, &liste, nullptr, nullptr, Qt::WidgetShortcut);
  QObject::connect(raccourci, &QShortcut::activated, &liste, action);
}

}  // namespace

bool CDialogRapprochement::PeutOuvrir(ContexteUi& contexte) {
  return contexte.App.Dit(contexte.App.ControleEcriture());
}

CDialogRapprochement::CDialogRapprochement(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreRapprochement), "DialogRapprochement", parent),
      m_banques(contexte.App, contexte.App.PathExercice),
      m_journal(contexte.App, contexte.App.PathExercice),
      m_plan(contexte.App, contexte.App.PathExercice),
      m_franc(u"Franc"_s),
      m_euro(u"Euro"_s),
      m_listeOperations(contexte),
      m_listeLignes(contexte),
      m_debit(contexte.App.Reglages),
      m_credit(contexte.App.Reglages),
      m_soldeReleve(contexte.App.Reglages) {
  m_banques.OpenFile() && m_journal.OpenFile() && m_plan.OpenFile();
  m_soldeReleve.PoseNegatif(true);
  (App().Reglages.IsEuro() ? m_euro : m_franc).setChecked(true);
  DeclareListes();
  Declare();
  DeclareTouches();
  Boutons(Mode::Ajout);
  AjouteAide();
  m_compte.Charge(App());
  ChangeCompte();
  OublieSaisie();
  CZNDialog::Focalise(m_du);
}

CDialogRapprochement::~CDialogRapprochement() = default;

// ------------------------------------------------------------------ The fields

void CDialogRapprochement::Declare() {
  auto* pile = new QVBoxLayout(&Zone());
  pile->addWidget(ColonneDeChamps(Zone(), [this](Formulaire& f) {
    f.Champ(u"Com&pte :"_s, m_compte, "compte")
        .SurChangement([this] { ChangeCompte(); })
        .ACote(m_franc, "franc")
        .ACote(m_euro, "euro");
  }));
  connect(&m_euro, &QRadioButton::toggled, this, [this] { ChangeMonnaie(); });
  pile->addWidget(Volet(Zone(), u"Opérations à rapprocher"_s, m_listeOperations, "operations",
                        [this](Formulaire& f) { DeclareOperations(f); }),
                  1);
  pile->addWidget(Volet(Zone(), u"Ecritures à rapprocher"_s, m_listeLignes, "lignes",
                        [this](Formulaire& f) { DeclareLignes(f); }),
                  1);
  pile->addWidget(DeclareSoldes());
}

void CDialogRapprochement::DeclareOperations(Formulaire& formulaire) {
  formulaire.Champ(u"&Date :"_s, m_date, "date")
      .Limite(10)
      .Champ(u"Date de &valeur :"_s, m_dateValeur, "dateValeur")
      .Limite(10)
      .Champ(u"Dé&bit :"_s, m_debit, "debit")
      .Limite(TailleMontant)
      .SurDepart([this] {
        QuitteMontant(m_debit, m_credit);
        if (m_credit.hasFocus() && m_debit.Valeur() != 0) CZNDialog::Focalise(m_nature);
      })
      .Champ(u"C&rédit :"_s, m_credit, "credit")
      .Limite(TailleMontant)
      .SurDepart([this] { QuitteMontant(m_credit, m_debit); })
      .Champ(u"&Nature opération :"_s, m_nature, "libelle")
      .Limite(80)
      .Largeur(LargeurNature)
      .Rangee({&Bouton(m_modifier, "modifier", &CDialogRapprochement::ModifieOperation),
               &Bouton(m_supprimer, "supprimer", &CDialogRapprochement::SupprimeOperationChoisie)})
      .Rangee({&Bouton(m_creer, "creer", &CDialogRapprochement::CreeEcriture)})
      .Rangee({&Bouton(m_importer, "importer", &CDialogRapprochement::ImporteReleve)})
      .Pousse();
  m_modifier.setText(u"&Modifier"_s);
  m_supprimer.setText(u"&Supprimer"_s);
  m_creer.setText(u"&Créer l'écriture..."_s);
  m_importer.setText(u"&Importer un relevé..."_s);
  m_importer.setToolTip(u"Ajouter les opérations d'un fichier de la banque"_s);
  m_creer.setToolTip(u"Saisir l'écriture que l'opération demande, et l'en rapprocher (Inser)"_s);
}

void CDialogRapprochement::DeclareLignes(Formulaire& formulaire) {
  formulaire.Champ(u"D&u :"_s, m_du, "du")
      .Limite(10)
      .SurDepart([this] { ChangePeriode(); })
      .Champ(u"Au :"_s, m_au, "au")
      .Limite(10)
      .SurDepart([this] { ChangePeriode(); })
      .Champ(u"Libellé :"_s, m_libelle, "libelleLigne")
      .Largeur(LargeurNature)
      .Champ(u"Cumul :"_s, m_cumul, "cumul")
      .Champ(u"Nature opération :"_s, m_natureChoisie, "natureChoisie")
      .Largeur(LargeurNature)
      .Rangee({&Bouton(m_manuel, "manuel", &CDialogRapprochement::Manuel),
               &Bouton(m_automatique, "automatique", &CDialogRapprochement::Automatique)})
      .Case(m_confirmation, u"&Confirmation"_s, "confirmation")
      .Pousse();
  m_manuel.setText(u"&Manuel"_s);
  m_manuel.setToolTip(u"Rapprocher l'opération des écritures choisies (Entrée dans leur liste)"_s);
  m_automatique.setText(u"&Automatique"_s);
  m_confirmation.setToolTip(u"Demander à chaque rapprochement automatique (F8)"_s);
  m_confirmation.setChecked(true);
  ADroite(m_cumul);
}

QWidget* CDialogRapprochement::DeclareSoldes() {
  for (Lecture* solde : {&m_soldeLivres, &m_difference}) ADroite(*solde);
  return ColonneDeChamps(Zone(), [this](Formulaire& f) {
    f.Champ(u"So&lde du relevé :"_s, m_soldeReleve, "soldeReleve")
        .Limite(TailleMontant)
        .SurChangement([this] { SuitSolde(); })
        .SurDepart([this] { NoteSolde(); })
        .Astuce(u"Tel que la banque l'imprime ; avec un moins s'il est débiteur"_s)
        .Suite(u"Solde rapproché des livres :"_s, m_soldeLivres, "soldeLivres")
        .Suite(u"Différence :"_s, m_difference, "difference");
  });
}

QPushButton& CDialogRapprochement::Bouton(QPushButton& bouton, const char* nom,
                                          void (CDialogRapprochement::*action)()) {
  bouton.setObjectName(QLatin1String(nom));
  bouton.setAutoDefault(false);
  connect(&bouton, &QPushButton::clicked, this, action);
  return bouton;
}

void CDialogRapprochement::DeclareListes() {
  constexpr int quart = 25;
  const auto montant = [this](bool credit) {
    return [this, credit](const OperationLue& o) {
      return (o.rec.Sens != 0) == credit ? Montant(o.Montant(Euro())) : std::string();
    };
  };
  m_listeOperations.Definit<OperationLue>(
      {{"Date", quart, [](const OperationLue& o) { return StrDate(o.rec.Date); }},
       {"Date de valeur", quart, [](const OperationLue& o) { return StrDate(o.rec.DateValeur); }},
       {"Débit"_w, quart, montant(false), Cote::Droite},
       {"Crédit"_w, quart, montant(true), Cote::Droite}},
      [this](TableListe::Donnee position, OperationLue& operation) {
        return !LitOperation(App(), static_cast<Position>(position), operation);
      });
  const auto cote = [this](bool credit) {
    return [this, credit](const LigneVue& l) {
      const f64 valeur = Euro() ? l.rec.MontantEuro : l.rec.MontantFranc;
      return (l.rec.Sens != 0) == credit ? Montant(valeur) : std::string();
    };
  };
  m_listeLignes.Definit<LigneVue>(
      {{"Date", quart, [](const LigneVue& l) { return StrDate(l.rec.DateLigne); }},
       {"Compte", quart, [](const LigneVue& l) { return l.comptes; }},
       {"Débit"_w, quart, cote(false), Cote::Droite},
       {"Crédit"_w, quart, cote(true), Cote::Droite}},
      [this](TableListe::Donnee position, LigneVue& ligne) {
        if (!m_journal.ReadRec(static_cast<Position>(position))) return false;
        ligne.rec = *m_journal.Rec;
        ligne.comptes = Contrepartie(App(), ligne.rec);
        return true;
      });
  m_listeLignes.setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_listeOperations.PoseTexteVide(u"Aucune opération à rapprocher"_s);
  m_listeLignes.PoseTexteVide(u"Aucune écriture à rapprocher dans cette période"_s);
  connect(&m_listeOperations, &TableListe::SelectionChangee, this, [this] { SuitOperation(); });
  connect(&m_listeLignes, &TableListe::SelectionChangee, this, [this] { SuitLignes(); });
  connect(m_listeLignes.selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this] { SuitLignes(); });
}

void CDialogRapprochement::DeclareTouches() {
  m_listeOperations.SurActivation([this] { ModifieOperation(); });
  m_listeLignes.SurActivation([this] { Manuel(); });
  Touche(m_listeOperations, QKeySequence::Delete, [this] { SupprimeOperationChoisie(); });
  for (CZNListCtrl* liste : {&m_listeOperations, &m_listeLignes})
    Touche(*liste, Qt::Key_Insert, [this] { CreeEcriture(); });
  connect(new QShortcut(Qt::Key_F6, this), &QShortcut::activated, this,
          [this] { CZNDialog::Focalise(m_listeOperations.hasFocus() ? m_listeLignes : m_listeOperations); });
  connect(new QShortcut(Qt::Key_F8, this), &QShortcut::activated, &m_confirmation, &QCheckBox::toggle);
  Touche(m_listeLignes, Qt::ALT | Qt::Key_Up, [this] { m_listeOperations.LignePrecedente(); });
  Touche(m_listeLignes, Qt::ALT | Qt::Key_Down, [this] { m_listeOperations.LigneSuivante(); });
}

// --------------------------------------------------------- What the form shows

std::string CDialogRapprochement::Montant(f64 montant) const {
  const std::string texte = MontantEnTexte(montant, Euro());
  return texte.empty() ? Euro() ? "0,00 €"_w : "0,00 F" : texte;
}

void CDialogRapprochement::ChangeCompte() {
  if (!m_compteCharge.empty() && !AbandonneSaisie()) {
    m_compte.Choisit(m_compteCharge);
    return;
  }
  m_compteCharge = Compte();
  m_derniere = 0;
  const PropositionRapprochement p = ProposeRapprochement(App(), LitOperations(App(), Compte()));
  for (EditeurDate* champ : {&m_date, &m_dateValeur, &m_du, &m_au}) champ->PoseReference(p.operation);
  m_du.Pose(p.du);
  m_au.Pose(p.au);
  m_date.Pose(p.operation);
  Recharge();
  if (OperationChoisie() == 0 && m_listeOperations.Modele().NbLignes() > 0)
    m_listeOperations.SelectionneLigne(0);
  m_listeLignes.clearSelection();
  m_listeLignes.scrollToTop();
}

void CDialogRapprochement::ChangePeriode() {
  for (EditeurDate* champ : {&m_du, &m_au})
    if (!champ->EstDate()) {
      Refuse(ErrDateIncorrecte, *champ);
      return;
    }
  if (m_du.Valeur() > m_au.Valeur()) m_au.Pose(m_du.Valeur());
  ChargeLignes();
  m_listeLignes.clearSelection();
}

void CDialogRapprochement::ChangeMonnaie() {
  for (CZNListCtrl* liste : {&m_listeOperations, &m_listeLignes}) liste->Redessine();
  SuitLignes();
  MontreSoldes();
}

/// An amount stands on one side.
void CDialogRapprochement::QuitteMontant(EditeurMontant& quitte, EditeurMontant& autre) {
  if (quitte.Porte()) autre.clear();
}

void CDialogRapprochement::Recharge() {
  ChargeOperations();
  ChargeLignes();
  MontreSoldes();
}

void CDialogRapprochement::ChargeOperations(Position choisie) {
  std::vector<LigneListe> lignes;
  for (const OperationLue& operation : LitOperations(App(), Compte()))
    if (operation.position != m_enModification) lignes.push_back({operation.position, 1});
  m_listeOperations.Recharge([&] { m_listeOperations.Modele().Remplit(std::move(lignes)); });
  if (choisie != 0) {
    m_listeOperations.clearSelection();
    m_listeOperations.SelectionneLigne(m_listeOperations.Modele().LigneDe(choisie));
  }
  SuitOperation();
}

void CDialogRapprochement::ChargeLignes() {
  m_lignes = LignesARapprocher(App(), Periode());
  std::vector<LigneListe> lignes;
  lignes.reserve(m_lignes.size());
  for (const LigneARapprocher& ligne : m_lignes) lignes.push_back({ligne.position, 1});
  m_listeLignes.Recharge([&] { m_listeLignes.Modele().Remplit(std::move(lignes)); });
  SuitLignes();
}

void CDialogRapprochement::MontreSoldes() {
  m_solde = LitSoldeReleve(App(), Compte());
  const SoldesRapprochement soldes = LitSoldes(App(), Compte(), Euro());
  m_soldeReleve.clear();
  if (soldes.releve) m_soldeReleve.Pose(*soldes.releve);
  m_soldeLivres.Pose(Montant(soldes.livres));
  SuitSolde();
}

/// The difference follows what is typed.
void CDialogRapprochement::SuitSolde() {
  SoldesRapprochement soldes = LitSoldes(App(), Compte(), Euro());
  const bool connu = !m_soldeReleve.EstVide() && m_soldeReleve.Refus() == 0;
  soldes.releve = m_soldeReleve.Valeur();
  m_difference.Pose(connu ? Montant(soldes.Difference()) : std::string());
}

void CDialogRapprochement::NoteSolde() {
  if (m_soldeReleve.Refus() != 0 || Compte().empty()) return;
  std::optional<SoldeReleve> solde;
  if (!m_soldeReleve.EstVide()) solde = {m_soldeReleve.Valeur(), Euro(), m_au.Valeur()};
  const SoldesRapprochement connus = LitSoldes(App(), Compte(), Euro());
  const auto centimes = [](f64 montant) { return Centimes(montant); };
  const bool change = solde.has_value() != connus.releve.has_value() ||
                      (solde && centimes(solde->montant) != centimes(*connus.releve));
  if (change) Refuse(EcritSoldeReleve(App(), Compte(), solde));
}

void CDialogRapprochement::SuitOperation() {
  OperationLue operation;
  const bool choisie = OperationChoisie() != 0 && !LitOperation(App(), OperationChoisie(), operation);
  m_natureChoisie.Pose(choisie ? LitTexte(operation.rec.Libelle) : std::string());
}

/// Selected rows are on one side; "Cumul :" is their sum.
void CDialogRapprochement::SuitLignes() {
  if (m_choisit) return;
  const int courante = m_listeLignes.RangDe(m_listeLignes.currentIndex().row());
  std::vector<int> choisies = m_listeLignes.RangsChoisis();
  const bool focus = std::find(choisies.begin(), choisies.end(), courante) != choisies.end();
  if (const std::vector<int> gardees = MemeSens(m_lignes, choisies, focus ? courante : -1);
      gardees != choisies) {
    m_choisit = true;
    m_listeLignes.clearSelection();
    m_listeLignes.SelectionneRang(courante);
    m_choisit = false;
    choisies = gardees;
  }
  m_cumul.Pose(Montant(DeCentimes(CumulLignes(m_lignes, choisies, Euro()))));
  const bool ligne = courante >= 0 && courante < static_cast<int>(m_lignes.size());
  const bool lue = ligne && m_journal.ReadRec(m_lignes[static_cast<std::size_t>(courante)].position);
  m_libelle.Pose(lue ? LibelleLigne(*m_journal.Rec) : std::string());
}

// ------------------------------------------------------------ Typed operations

bool CDialogRapprochement::Modifie() const {
  return m_enModification != 0 || m_debit.Porte() || m_credit.Porte() || !EstVide(m_nature.Valeur());
}

bool CDialogRapprochement::Enregistre() {
  FicheOperation fiche;
  fiche.position = m_enModification;
  fiche.compte = Compte();
  fiche.date = m_date.Valeur();
  fiche.dateValeur = m_dateValeur.Valeur();
  if (!m_date.EstVide() && !m_date.EstDate()) return Refuse(ErrDateIncorrecte, m_date);
  if (!m_dateValeur.EstVide() && !m_dateValeur.EstDate()) return Refuse(ErrDateIncorrecte, m_dateValeur);
  fiche.libelle = m_nature.Valeur();
  fiche.sens = m_debit.EstVide();
  fiche.montant = (fiche.sens ? m_credit : m_debit).Valeur();
  fiche.euro = Euro();
  if (!Refuse(EnregistreOperation(App(), fiche))) return false;
  m_derniere = fiche.position;
  m_enModification = 0;
  return true;
}

void CDialogRapprochement::Vide() {
  if (m_date.Valeur() != 0)
    for (EditeurDate* champ : {&m_date, &m_dateValeur}) champ->PoseReference(m_date.Valeur());
  for (QLineEdit* champ :
       std::initializer_list<QLineEdit*>{&m_date, &m_dateValeur, &m_debit, &m_credit, &m_nature})
    champ->clear();
  m_enModification = 0;
  ChargeOperations(m_derniere);
}

void CDialogRapprochement::accept() {
  const Position avant = std::exchange(m_derniere, 0);
  CZNDialog::accept();
  if (m_derniere != 0)
    CZNDialog::Focalise(m_date);
  else
    m_derniere = avant;
}

/// What is typed may go: there is nothing, or the user says so.
bool CDialogRapprochement::AbandonneSaisie() {
  if (!Modifie()) return true;
  if (App().Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionAbandonneOperation)) return false;
  Vide();
  return true;
}

bool CDialogRapprochement::OperationVoulue(OperationLue& operation) {
  if (OperationChoisie() == 0) return Refuse(ErrSansOperationChoisie, m_listeOperations);
  return Refuse(LitOperation(App(), OperationChoisie(), operation));
}

/// Into the fields, and out of the list; the file keeps it until it is saved again.
void CDialogRapprochement::ModifieOperation() {
  OperationLue operation;
  if (!OperationVoulue(operation) || !AbandonneSaisie()) return;
  const Banque& rec = operation.rec;
  m_enModification = operation.position;
  m_date.Pose(rec.Date);
  m_dateValeur.Pose(rec.DateValeur);
  m_debit.clear();
  m_credit.clear();
  (rec.Sens != 0 ? m_credit : m_debit).Pose(operation.Montant(Euro()));
  m_nature.Pose(LitTexte(rec.Libelle));
  ChargeOperations();
  CZNDialog::Focalise(m_date);
}

void CDialogRapprochement::SupprimeOperationChoisie() {
  OperationLue operation;
  if (!OperationVoulue(operation)) return;
  if (Refuse(SupprimeOperation(App(), operation.position, Euro()))) Recharge();
}

void CDialogRapprochement::ImporteReleve() {
  if (!AbandonneSaisie()) return;
  std::string compte = Compte();
  if (!ImporteFichierReleve(Contexte(), compte, this)) return;
  m_compte.Choisit(compte);
  ChangeCompte();
  CZNDialog::Focalise(m_du);
}

void CDialogRapprochement::CreeEcriture() {
  OperationLue operation;
  if (!OperationVoulue(operation)) return;
  SaisieEcriture proposition;
  if (!Refuse(ProposeEcriture(App(), operation.position, proposition))) return;
  OuvertureEcriture ouverture;
  ouverture.journal = proposition.journal;
  ouverture.date = proposition.date;
  ouverture.tresorerie = proposition.tresorerie;
  ouverture.proposition = &proposition;
  ouverture.sauve = [&](const SaisieEcriture& saisie, EcritureFaite& faite) {
    return EnregistreEcritureDe(App(), operation.position, saisie, faite);
  };
  CDialogEcriture(Contexte(), ouverture, this).Execute();
  Recharge();
}

// -------------------------------------------------------------------- Matching

void CDialogRapprochement::Manuel() {
  std::vector<Position> lignes;
  for (const int rang : m_listeLignes.RangsChoisis())
    lignes.push_back(m_lignes[static_cast<std::size_t>(rang)].position);
  const int premiere = m_listeLignes.LigneChoisie();
  if (!Refuse(RapprocheManuel(App(), OperationChoisie(), lignes, Euro()))) return;
  Recharge();
  // The next line has the focus, and nothing is selected.
  const int ligne = std::min(premiere, m_listeLignes.Modele().NbLignes() - 1);
  m_listeLignes.selectionModel()->setCurrentIndex(m_listeLignes.Modele().index(ligne, 0),
                                                  QItemSelectionModel::NoUpdate);
  m_listeLignes.clearSelection();
  Contexte().Cadre.Actualise();
}

void CDialogRapprochement::Automatique() {
  if (!QuitteChamps()) return;
  BilanRapprochement bilan;
  const bool fait =
      Refuse(RapprocheAutomatique(App(), {Periode(), m_confirmation.isChecked(), Euro()}, bilan));
  Recharge();
  m_listeLignes.clearSelection();
  Contexte().Cadre.Actualise();
  if (!fait) return;
  App().MessageId(BoutonsOk | IconeInformation, InfoRapprochements,
                  {std::to_string(bilan.rapproches), std::to_string(bilan.operations)});
  CZNDialog::Focalise(m_listeOperations);
}

// ------------------------------------------------------------ Keys and the end

void CDialogRapprochement::Pointe(const Refus& refus) {
  if (refus.champ == "montant"sv)
    CZNDialog::Focalise(m_debit.EstVide() && !m_credit.EstVide() ? m_credit : m_debit);
  else
    CZNDialog::Pointe(refus);
}

/// Enter saves an operation from its own fields alone; elsewhere it goes on to the next field.
void CDialogRapprochement::keyPressEvent(QKeyEvent* evenement) {
  const bool entree = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  const QWidget* champ = focusWidget();
  const bool autre = champ == &m_compte || champ == &m_du || champ == &m_au || champ == &m_soldeReleve ||
                     champ == &m_confirmation || champ == &m_franc || champ == &m_euro ||
                     champ == &m_listeOperations || champ == &m_listeLignes;
  if (!entree || !autre) return CZNDialog::keyPressEvent(evenement);
  evenement->accept();
  focusNextChild();
}

void CDialogRapprochement::done(int resultat) {
  NoteSolde();
  CZNDialog::done(resultat);
}

}  // namespace fenlor
