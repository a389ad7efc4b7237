#include "forms/journal/ecritureview.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "core/valeurs.h"
#include "forms/journal/dialogmonth.h"
#include "forms/journal/ecrcombo.h"
#include "forms/journal/ecrlist.h"
#include "forms/journal/ecrtotal.h"
#include "forms/journal/month.h"
#include "forms/journal/textes.h"
#include "reports/textes.h"
#include "session/periodes.h"
#include "store/texte1252.h"
#include "ui/curseurattente.h"
#include "ui/cznlistview.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr u32 bits[] = {FenRecettes, FenDepenses, FenOperationsDiverses};

/// The text of a journal in a run of three.
const TexteFixe& De(const TexteFixe (&textes)[3], i16 journal) { return textes[journal - JournalRecettes]; }

u16 ModeDe(const std::string& mot) {
  const auto memes = [&mot](u16 mode) {
    return Q(mot).compare(TexteQ(MotModeListe[mode - 1]), Qt::CaseInsensitive) == 0;
  };
  return memes(ListeToutes) ? ListeToutes : memes(ListeValidees) ? ListeValidees : ListeBrouillard;
}

}  // namespace

CEcritureView::CEcritureView(ContexteUi& contexte, i16 journal)
    : Vue(contexte, Texte(De(TitreJournal, journal)), bits[journal - JournalRecettes]),
      m_document{journal},
      m_exercice(contexte.App.NomExercice),
      m_criteres(CriteresParDefaut(contexte.App)),
      m_entete(new QLabel(this)),
      m_legende(new QLabel(this)),
      m_libelleCompte(new QLabel(u"Tré&sorerie :"_s, this)),
      m_combo(new CEcrCombo(this)),
      m_mois(new CMonth(this)),
      m_liste(new CEcrList(contexte, this)),
      m_bande(new BandeTotaux(*m_liste, this)) {
  m_entete->setObjectName(u"entete"_s);
  m_legende->setObjectName(u"legende"_s);
  m_combo->setObjectName(u"compte"_s);
  m_mois->setObjectName(u"mois"_s);
  m_liste->setObjectName(u"liste"_s);
  m_bande->setObjectName(u"totaux"_s);
  m_libelleCompte->setBuddy(m_combo);
  m_combo->setAccessibleName(u"Compte de trésorerie"_s);
  m_liste->setAccessibleName(Q(Titre()));
  m_libelleCompte->setVisible(!EstOD());
  m_combo->setVisible(!EstOD());
  setFocusProxy(m_liste);
  setAutoFillBackground(true);
  Dispose();
  DeclareCommandes();

  m_liste->PoseLecture([this](u32 mouvement, EntreeJournal& entree) {
    return LitEntreeJournal(App(), mouvement, Comptable(), Filtre(), entree);
  });
  m_liste->SurActivation([this] { Modifie(); });
  m_liste->SurActivationAilleurs([this] { Ajoute(); });
  m_liste->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(m_liste, &QWidget::customContextMenuRequested, this, [this](const QPoint& point) {
    Q_EMIT MenuDemande(m_liste->viewport()->mapToGlobal(point), MenuContextuel());
  });
  connect(m_liste, &CEcrList::SelectionChangee, this, &CEcritureView::SelectionChange);
  connect(m_liste, &CEcrList::ColonnesDeplacees, m_bande, &BandeTotaux::Place);
  connect(m_mois, &CMonth::MoisChange, this, &CEcritureView::ChangeMois);
  connect(m_combo, &QComboBox::activated, this, [this] {
    SauveEtat();
    RefreshJournal();
    m_liste->setFocus();
  });
  for (const auto& [touche, pas] : {std::pair(u"Ctrl+PgUp"_s, -1), std::pair(u"Ctrl+PgDown"_s, 1)}) {
    auto* raccourci = new QShortcut(QKeySequence(touche), this);
    raccourci->setContext(Qt::WidgetWithChildrenShortcut);
    connect(raccourci, &QShortcut::activated, this,
            [this, pas = pas] { m_mois->Choisit(m_mois->Courant() + pas); });
  }
}

CEcritureView::~CEcritureView() { SauveEtat(); }

bool CEcritureView::PeutFermer() {
  SauveEtat();
  return true;
}

void CEcritureView::Dispose() {
  auto* entete = new QHBoxLayout;
  entete->addWidget(m_entete);
  entete->addSpacing(24);
  entete->addWidget(m_libelleCompte);
  entete->addWidget(m_combo);
  entete->addStretch(1);
  auto* mois = new QHBoxLayout;
  mois->setSpacing(12);
  mois->addWidget(m_mois, 0, Qt::AlignBottom);
  m_legende->setContentsMargins(0, 6, 8, 0);
  mois->addWidget(m_legende, 1, Qt::AlignVCenter);
  auto* tout = new QVBoxLayout(this);
  tout->setContentsMargins(0, 0, 0, 0);
  tout->setSpacing(0);
  entete->setContentsMargins(8, 6, 8, 4);
  tout->addLayout(entete);
  tout->addLayout(mois);
  tout->addWidget(m_liste, 1);
  tout->addWidget(m_bande);
  setTabOrder(m_liste, m_mois);
  setTabOrder(m_mois, m_combo);
}

void CEcritureView::MontreDessin() {
  const Preferences& dessin = Contexte().Dessin;
  QPalette couleurs = QApplication::palette();
  couleurs.setColor(QPalette::WindowText, Lisible(couleurs.color(QPalette::WindowText), dessin.CouleurFond));
  couleurs.setColor(QPalette::Window, dessin.CouleurFond);
  setPalette(couleurs);
  QFont titre = dessin.PoliceTextes;
  titre.setBold(true);
  m_entete->setFont(titre);
  m_legende->setFont(dessin.PoliceTextes);
  m_libelleCompte->setFont(dessin.PoliceTextes);
  m_combo->setFont(dessin.PoliceTextes);
  m_mois->PoseDessin(dessin.PoliceMois, dessin.CouleurImpaire, dessin.CouleurBordure);
  m_bande->PoseDessin(dessin.PoliceTextes);
  m_liste->ActualisePreferences();
}

std::string CEcritureView::Filtre() const { return EstOD() ? std::string() : m_combo->Filtre(); }

DemandeListe CEcritureView::Demande() const {
  DemandeListe demande;
  demande.journal = m_document.Journal;
  demande.mois = m_mois->PremierJour();
  demande.filtre = Filtre();
  demande.mode = m_mode;
  demande.criteres = m_criteres;
  return demande;
}

/// Keys go to the list from the start, not to the account that narrows it.
void CEcritureView::showEvent(QShowEvent* evenement) {
  Vue::showEvent(evenement);
  if (!evenement->spontaneous()) m_liste->setFocus(Qt::OtherFocusReason);
}

void CEcritureView::Charge() {
  Vue::Charge();
  MontreDessin();
  m_mois->PoseMois(MoisExercice(App()));
  if (!EstOD()) m_combo->Remplit(App());
  LitEtat();
  RestaureRangement(*this, *m_liste);
  m_charge = true;
  RefreshJournal();
}

void CEcritureView::AppliqueDessin() {
  MontreDessin();
  RefreshJournal();
}

void CEcritureView::RefreshJournal() {
  if (!m_charge || App().PathExercice.empty()) return;
  const CurseurAttente attente;
  if (!EstOD()) m_combo->Remplit(App());
  m_mois->PoseMois(MoisExercice(App()));
  MoisJournal mois;
  if (m_mois->Courant() >= 0) App().Dit(ListeMois(App(), Demande(), mois));
  m_totaux = mois.totaux;
  MontreEntete();
  m_liste->Recharge(mois.entrees, MonnaiesAffichees(App()), Comptable(), m_totaux, !Filtre().empty());
  MontreVide();
  MontreSelection();
}

void CEcritureView::MontreSelection() {
  m_etat.reset();
  App().Dit(TotauxEntrees(App(), Demande(), Choisis(), m_totauxChoisis));
  m_bande->Montre(m_totaux, m_totauxChoisis);
  Q_EMIT EtatChange();
}

void CEcritureView::MontreEntete() {
  setWindowTitle(TexteQ(De(FormatTitreJournal, m_document.Journal), {Texte(MotModeListe[m_mode - 1u])}));
  const Date mois = m_mois->PremierJour();
  const std::string nom = NomMois(Mois(mois));
  m_entete->setText(TexteQ(FormatEnteteJournal, {Texte(De(NomDuJournal, m_document.Journal))}) + u' ' +
                    Q(nom));
  m_legende->setText(TexteQ(EstPartielle(m_criteres) ? FormatMoisPartiel : FormatMoisJournal,
                            {nom, std::to_string(Annee(mois))}));
}

void CEcritureView::MontreVide() {
  const bool sansTresorerie = !EstOD() && m_combo->CompteParDefaut().empty();
  QString texte = TexteQ(EstPartielle(m_criteres) ? VideCriteres
                         : m_mode == ListeToutes  ? VideMois
                                                  : VideMode[m_mode - 1u]);
  if (sansTresorerie)
    texte = TexteQ(VideTresorerie);
  else if (!App().Reglages.IsFige())
    texte += u'\n' + TexteQ(VideAjouter);
  m_liste->PoseTexteVide(texte);
}

void CEcritureView::MontreEcriture(u32 mouvement, Date date) {
  m_liste->OteFiltre();
  const auto& cellules = m_mois->Cellules();
  const auto cellule = std::find_if(cellules.begin(), cellules.end(), [date](const CMonth::Cellule& c) {
    return date >= c.premier && date <= c.dernier;
  });
  if (cellule != cellules.end()) m_mois->Montre(static_cast<int>(cellule - cellules.begin()));
  const auto listee = [&] {
    bool oui = false;
    return App().Dit(EstListee(App(), Demande(), mouvement, oui)) && oui;
  };
  if (!listee()) {
    m_mode = ListeToutes;
    m_criteres = CriteresParDefaut(App());
  }
  if (!EstOD() && !listee()) m_combo->Choisit(Texte(MotTousComptes));
  RefreshJournal();
  SelectEcrItem(FindEcrItem(mouvement));
}

// -- State of the window

void CEcritureView::LitEtat() {
  const std::string etat =
      App().Reglages.LitIniExercice(m_exercice, Texte(De(CleJournal, m_document.Journal)));
  if (!EstOD()) m_combo->Choisit(ChampTexte(0, etat, ','));
  m_mois->Montre(etat.empty() ? MoisDuJour() : TexteVersEntier(ChampTexte(1, etat, ',')));
  m_mode = ModeDe(ChampTexte(2, etat, ','));
  m_journalComptable = TexteVersEntier(ChampTexte(3, etat, ',')) == 0;
}

/// The month of today in a window that was never left in another; the first one of another exercice.
int CEcritureView::MoisDuJour() const {
  const Date jour = m_contexte.App.Magasin.Today();
  const auto& cellules = m_mois->Cellules();
  const auto trouve = std::find_if(cellules.begin(), cellules.end(), [jour](const CMonth::Cellule& c) {
    return jour >= c.premier && jour <= c.dernier;
  });
  return trouve == cellules.end() ? 0 : static_cast<int>(trouve - cellules.begin());
}

void CEcritureView::SauveEtat() {
  const bool ouvert = !App().Magasin.PathCabinet().empty() && !m_exercice.empty();
  if (!m_charge || !ouvert || App().NomExercice != m_exercice) return;
  const std::string mois = std::to_string(std::max(m_mois->Courant(), 0));
  const std::string mode = Texte(MotModeListe[m_mode - 1u]), cle = Texte(De(CleJournal, m_document.Journal));
  const std::string etat = EstOD() ? TexteFormat(FormatVueJournalOD, {"", mois, mode})
                                   : TexteFormat(FormatVueJournal, {m_combo->TexteChoisi(), mois, mode,
                                                                    m_journalComptable ? "0" : "1"});
  if (App().Reglages.LitIniExercice(m_exercice, cle) != etat)
    App().Reglages.EcritIniExercice(m_exercice, cle, etat);
  SauveRangement(*this, *m_liste);
}

void CEcritureView::ChangeMois() { RefreshJournal(); }

void CEcritureView::ChangeMode(u16 mode) {
  m_mode = mode;
  RefreshJournal();
}

void CEcritureView::BasculeComptable() {
  m_journalComptable = !m_journalComptable;
  RefreshJournal();
}

// -- Rows and selection

int CEcritureView::GetEcrCount() const { return m_liste->Modele().NbLignes(); }
int CEcritureView::GetEcrSel() const { return m_liste->LigneChoisie(); }
u32 CEcritureView::GetEcrId(int ligne) const { return m_liste->Mouvement(ligne); }
void CEcritureView::SelectPrev() { m_liste->LignePrecedente(); }
void CEcritureView::SelectNext() { m_liste->LigneSuivante(); }
int CEcritureView::FindEcrItem(u32 mouvement) const { return m_liste->Modele().LigneDe(mouvement); }
void CEcritureView::SelectEcrItem(int ligne) { m_liste->SelectionneLigne(ligne); }

std::vector<u32> CEcritureView::MouvementsDe(const std::vector<int>& lignes) const {
  std::vector<u32> mouvements;
  for (const int ligne : lignes)
    if (const u32 mouvement = GetEcrId(ligne)) mouvements.push_back(mouvement);
  return mouvements;
}

std::vector<u32> CEcritureView::Choisis() const { return MouvementsDe(m_liste->LignesChoisies()); }

void CEcritureView::Additionne(TotauxListe& totaux, int signe, const std::vector<u32>& mouvements) {
  TotauxListe autres;
  App().Dit(TotauxEntrees(App(), Demande(), mouvements, autres));
  const auto ajoute = [signe](f64& somme, f64 terme) { somme = Arrondi2(somme + signe * terme); };
  ajoute(totaux.debitFranc, autres.debitFranc);
  ajoute(totaux.creditFranc, autres.creditFranc);
  ajoute(totaux.debitEuro, autres.debitEuro);
  ajoute(totaux.creditEuro, autres.creditEuro);
}

/// Reads what changed or what is selected, whichever is less: each step of a long selection is as quick
/// as the first.
void CEcritureView::SelectionChange(const std::vector<int>& ajoutees, const std::vector<int>& retirees) {
  m_etat.reset();
  if (m_suspendue) return;
  if (m_liste->NbChoisies() <= static_cast<int>(ajoutees.size() + retirees.size())) {
    App().Dit(TotauxEntrees(App(), Demande(), Choisis(), m_totauxChoisis));
  } else {
    Additionne(m_totauxChoisis, 1, MouvementsDe(ajoutees));
    Additionne(m_totauxChoisis, -1, MouvementsDe(retirees));
  }
  m_bande->Montre(m_totaux, m_totauxChoisis);
  Q_EMIT EtatChange();
}

}  // namespace fenlor
