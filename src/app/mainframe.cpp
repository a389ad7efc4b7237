#include "app/mainframe.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "app/aide.h"
#include "app/barreetat.h"
#include "app/barreicones.h"
#include "app/calculatrice.h"
#include "app/gestioncommandes.h"
#include "app/mdichildframe.h"
#include "app/pageaccueil.h"
#include "app/raccourcis.h"
#include "app/textes.h"
#include "core/cles.h"
#include "core/textes.h"
#include "forms/journal/ecritureview.h"
#include "forms/session/comboexercices.h"
#include "journal/suspens.h"
#include "session/lancement.h"
#include "ui/dialogueqt.h"
#include "ui/images.h"
#include "ui/modales.h"
#include "ui/positionfenetre.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

/// In the order in which the windows of the last session come back.
constexpr std::array<u32, 10> ordreOuverture = {
    FenPlanComptable, FenTresorerie, FenComptesRecettes, FenComptesDepenses,    FenRubriques,
    FenLibelles,      FenRecettes,   FenDepenses,        FenOperationsDiverses, FenImmobilisations};

}  // namespace

CMainFrame::CMainFrame(CFenlorApp& app, DialogueQt& dialogue)
    : m_app(app),
      m_dialogue(dialogue),
      m_contexte{app, *this, m_preferences},
      m_garde(new GardeModale(this)) {
  Suit(app);
  setObjectName(u"MainFrame"_s);
  setWindowIcon(Image("fenlor"));
  AppliquePreferences(m_preferences, m_app);
  m_commandes = new Commandes(*this);
  const auto action = [this](unsigned numero) { return m_commandes->Action(numero); };

  m_centre = new QStackedWidget(this);
  m_accueil = new PageAccueil(
      m_contexte, action, [this](const Destination& destination) { VaVers(destination); }, m_centre);
  m_zone = new QMdiArea(m_centre);
  m_zone->setObjectName(u"Zone"_s);
  m_zone->setActivationOrder(QMdiArea::ActivationHistoryOrder);
  m_zone->setTabsClosable(true);
  m_zone->setTabsMovable(true);
  m_zone->setDocumentMode(true);
  m_centre->addWidget(m_accueil);
  m_centre->addWidget(m_zone);
  auto* milieu = new QWidget(this);
  auto* pile = new QVBoxLayout(milieu);
  pile->setContentsMargins(0, 0, 0, 0);
  pile->setSpacing(0);
  pile->addWidget(m_centre, 1);
  m_offre = new BarreOffre(milieu);
  pile->addWidget(m_offre);
  setCentralWidget(milieu);
  connect(m_zone, &QMdiArea::subWindowActivated, this, [this] {
    ActualisePage();
    m_commandes->ActualiseEtats();
  });

  m_commandes->FaitMenus(*menuBar());
  FaitBarreOutils();
  m_icones = new CBarreIcones(m_contexte, action, this);
  addToolBar(Qt::LeftToolBarArea, m_icones);
  m_icones->Charge();
  m_etat = new CBarreEtat(m_contexte, this);
  setStatusBar(m_etat);
  m_dialogue.PoseCadre(this);
  SuitReprises(m_app);
  m_reprises.Passe(m_app);
  MontreExercice();
}

CMainFrame::~CMainFrame() {
  m_app.Magasin.QVRetientUnites(false);
  m_dialogue.PoseCadre(nullptr);
  // Views refer to members of this class, and their end is noted here; closed ones may
  // still wait for theirs.
  qDeleteAll(m_zone->findChildren<CMDIChildFrame*>());
}

void CMainFrame::FaitBarreOutils() {
  m_outils = addToolBar(u"Barre d'outils"_s);
  m_outils->setObjectName(u"BarreOutils"_s);
  const int cote = style()->pixelMetric(QStyle::PM_SmallIconSize);
  m_outils->setIconSize({cote, cote});
  const auto ajoute = [this](std::initializer_list<unsigned> numeros) {
    for (const unsigned numero : numeros)
      numero ? m_outils->addAction(m_commandes->Action(numero)) : (void)m_outils->addSeparator();
  };
  ajoute({CmdNouvelExercice, CmdOuvrirExercice, CmdProprietes, 0});
  auto* libelle = new QLabel(u" E&xercice : "_s, m_outils);
  m_combo = new CComboExercices(m_outils);
  libelle->setBuddy(m_combo);
  m_combo->SurSelection([this](const std::string& nom) {
    m_exerciceChoisi = nom;
    m_commandes->Execute(CmdComboExercices);
  });
  m_outils->addWidget(libelle);
  m_outils->addWidget(m_combo);
  ajoute(
      {0, CmdAjouter, CmdModifier, CmdSupprimer, 0, CmdOptions, CmdPreferences, CmdCalculatrice, 0, CmdAide});
}

QWidget* CMainFrame::BarreDe(unsigned numero) const {
  if (numero == CmdBarreOutils) return m_outils;
  if (numero == CmdBarreIcones) return m_icones;
  return numero == CmdBarreEtat ? m_etat : nullptr;
}

void CMainFrame::PoseFabrique(u32 bit, std::function<Vue*(ContexteUi&)> fabrique) {
  m_fabriques[bit] = std::move(fabrique);
}

void CMainFrame::OuvreUnique(u32 bit) {
  if (const auto ouverte = m_ouvertes.find(bit); ouverte != m_ouvertes.end()) {
    // A maximised window stays so: the area maximises whichever is activated beside one.
    m_zone->setActiveSubWindow(ouverte->second);
    return;
  }
  const auto fabrique = m_fabriques.find(bit);
  if (fabrique == m_fabriques.end()) return;
  Vue* vue = fabrique->second(m_contexte);
  for (const Commande& commande : TableCommandes())
    if (commande.bit == bit) vue->setWindowIcon(Image(commande.image));
  auto* cadre = new CMDIChildFrame(vue);
  m_ouvertes[bit] = cadre;
  connect(cadre, &QObject::destroyed, this, [this, bit] {
    m_ouvertes.erase(bit);
    m_commandes->ActualiseEtats();
  });
  Installe(cadre);
}

void CMainFrame::Ouvre(Vue* vue) { Installe(new CMDIChildFrame(vue)); }

void CMainFrame::Installe(CMDIChildFrame* cadre) {
  const QMdiSubWindow* active = m_zone->activeSubWindow();
  const bool agrandie = active && active->isMaximized();
  m_zone->addSubWindow(cadre);
  m_centre->setCurrentWidget(m_zone);
  connect(cadre, &QObject::destroyed, this, [this] { ActualisePage(); });
  connect(&cadre->Contenu(), &Vue::MenuDemande, this, &CMainFrame::MenuDeLaVue, Qt::QueuedConnection);
  connect(&cadre->Contenu(), &Vue::EtatChange, m_commandes, &Commandes::ActualiseEtats);
  cadre->Contenu().Charge();
  cadre->Montre(agrandie);
  m_commandes->ActualiseEtats();
}

void CMainFrame::MenuDeLaVue(const QPoint& point, const std::vector<unsigned>& numeros) {
  if (Derriere()) return;
  QMenu menu(this);
  m_commandes->ActualiseEtats();
  for (const unsigned numero : numeros) {
    if (QAction* action = numero ? m_commandes->Action(numero) : nullptr)
      menu.addAction(action);
    else if (numero == 0)
      menu.addSeparator();
  }
  if (!menu.isEmpty()) menu.exec(point);
}

bool CMainFrame::Derriere() const { return Occupe() || m_garde->Derriere(*this); }

Vue* CMainFrame::VueDe(u32 bit) const {
  const auto ouverte = m_ouvertes.find(bit);
  return ouverte == m_ouvertes.end() ? nullptr : &ouverte->second->Contenu();
}

Vue* CMainFrame::VueActive() const {
  auto* cadre = qobject_cast<CMDIChildFrame*>(m_zone->activeSubWindow());
  return cadre ? &cadre->Contenu() : nullptr;
}

void CMainFrame::ActualisePage() {
  if (m_zone->subWindowList().isEmpty()) {
    m_accueil->Actualise();
    m_centre->setCurrentWidget(m_accueil);
  } else {
    m_centre->setCurrentWidget(m_zone);
  }
}

void CMainFrame::MontreAuDemarrage() {
  const QSize place = screen()->availableSize();
  // Room for the frame and title that the desktop puts around it.
  const int ligne = fontMetrics().height();
  resize((place - QSize(ligne, 3 * ligne)).boundedTo(QSize(1180, 780)));
  const bool agrandie = RestaurePosition(*this, m_app, Texte(SecFenlor));
  RestaureBarres(*this, m_app);
  AppliqueRaccourcis();
  MontreOnglets(Parametres::IsOui(m_app.Reglages.LitIni(Texte(SecFenlor), Texte(CleOnglets))));
  agrandie ? showMaximized() : show();
}

void CMainFrame::AppliqueRaccourcis() {
  const auto table = LitRaccourcis(m_app);
  for (const Commande& commande : TableCommandes()) {
    QAction* action = m_commandes->Action(commande.numero);
    if (!action) continue;
    const auto touche = table.find(commande.numero);
    action->setShortcut(touche == table.end() ? QKeySequence() : touche->second);
  }
}

bool CMainFrame::CalculatriceOuverte() const { return m_calculatrice && m_calculatrice->isVisible(); }

void CMainFrame::FermeCalculatrice() {
  if (m_calculatrice) m_calculatrice->close();
}

void CMainFrame::BasculeCalculatrice() {
  if (CalculatriceOuverte()) {
    FermeCalculatrice();
    return;
  }
  m_calculatrice = new CDialogCalculatrice(m_contexte, this);
  connect(m_calculatrice, &QDialog::finished, this, [this] { m_commandes->ActualiseEtats(); });
  m_calculatrice->show();
  SuitModale(*m_calculatrice);
}

bool CMainFrame::Touche(const QKeySequence& touche) {
  const QAction* calculatrice = m_commandes->Action(CmdCalculatrice);
  if (touche.isEmpty() || !calculatrice || calculatrice->shortcut() != touche) return false;
  BasculeCalculatrice();
  return true;
}

void CMainFrame::VientDevant() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
  if (QWidget* modale = QApplication::activeModalWidget()) {
    modale->raise();
    modale->activateWindow();
  }
}

bool CMainFrame::Occupe() const { return m_dialogue.Occupe(); }

void CMainFrame::Actualisees(bool dessin) {
  if (dessin) {
    m_etat->ActualisePreferences();
    m_icones->Charge();
    update();
  }
  ActualisePage();
  m_commandes->ActualiseEtats();
  m_reprises.Regarde(*this);
}

void CMainFrame::FermeToutes() {
  // A form may ask for it, whose work needs the files; it stands over the main window, not over a view.
  const QScopedValueRollback permise(m_garde->Permise, true);
  for (QMdiSubWindow* fenetre : m_zone->subWindowList()) {
    // Gone when this returns: whoever asks is about to work on the files.
    if (fenetre->close()) delete fenetre;
  }
  ActualisePage();
}

void CMainFrame::Sauve() {
  if (m_app.NomExercice.empty()) return;
  u32 masque = 0;
  for (const auto& [bit, cadre] : m_ouvertes) masque |= bit;
  const std::string texte = std::to_string(masque), section = Texte(SecFenlor),
                    cle = Texte(CleFenetresOuvertes);
  if (m_app.Reglages.LitIni(section, cle) != texte) m_app.Reglages.EcritIni(section, cle, texte);
}

void CMainFrame::Restaure() {
  if (m_app.NomExercice.empty()) return;
  const auto masque =
      static_cast<u32>(TexteVersLong(m_app.Reglages.LitIni(Texte(SecFenlor), Texte(CleFenetresOuvertes))));
  for (const u32 bit : ordreOuverture)
    if (masque & bit) OuvreUnique(bit);
}

void CMainFrame::MontreExercice() {
  const std::string produit = Texte(TitreApplication);
  setWindowTitle(m_app.NomExercice.empty()
                     ? Q(produit)
                     : TexteQ(FormatTitreExercice, {produit, Texte(MotExercice), m_app.NomExercice}));
  m_combo->Remplit(m_app);
  m_etat->MontreExercice();
  ActualisePage();
  m_commandes->ActualiseEtats();
  ActualisePage();
  DitAvertissements(m_app);
  ProposeReprise();
}

/// Where a figure of the start page leads to.
void CMainFrame::VaVers(const Destination& destination) {
  if (destination.commande != 0) m_commandes->Execute(destination.commande);
  if (destination.fenetre == 0) return;
  OuvreUnique(destination.fenetre);
  if (destination.mois == 0) return;
  if (auto* vue = qobject_cast<CEcritureView*>(VueActive())) vue->MontreMois(destination.mois);
}

/// An entry that was being typed when the program ended, once for each opening of its exercice.
void CMainFrame::ProposeReprise() {
  if (std::exchange(m_exerciceOffert, m_app.PathExercice) == m_app.PathExercice) return;
  m_offre->Retire();
  const std::optional<SaisieSuspendue> saisie = LitSuspens(m_app);
  if (!saisie) return;
  const auto reprend = [this, saisie = *saisie] {
    const u32 bit = saisie.ecriture.journal == JournalRecettes   ? FenRecettes
                    : saisie.ecriture.journal == JournalDepenses ? FenDepenses
                                                                 : FenOperationsDiverses;
    OuvreUnique(bit);
    if (auto* vue = qobject_cast<CEcritureView*>(VueActive())) vue->Reprend(saisie);
  };
  m_offre->Offre({Q(DecritSuspens(*saisie)),
                  {{u"Repren&dre"_s, reprend}, {u"A&bandonner"_s, [this] { OublieSuspens(m_app); }}}});
}

bool CMainFrame::EnOnglets() const { return m_zone->viewMode() == QMdiArea::TabbedView; }

void CMainFrame::MontreOnglets(bool onglets) {
  if (onglets == EnOnglets()) return;
  m_zone->setViewMode(onglets ? QMdiArea::TabbedView : QMdiArea::SubWindowView);
  if (CabinetOuvert(m_app))
    m_app.Reglages.EcritIni(Texte(SecFenlor), Texte(CleOnglets), Texte(onglets ? MotOui : MotNon));
  m_commandes->ActualiseEtats();
}

void CMainFrame::Zoome(int sens) {
  if (!ChangeZoom(m_app, sens)) return;
  AppliquePreferences(m_preferences, m_app);
  Note(ReglagePreferences);
}

void CMainFrame::Offre(const Proposition& proposition) { m_offre->Offre(proposition); }

void CMainFrame::Aide(const QString& page) {
  if (!m_aide) m_aide = new CFenetreAide(m_contexte, this);
  m_aide->Montre(page);
}

void CMainFrame::MontrePageAide(const QString& fichier) {
  if (!m_aide) m_aide = new CFenetreAide(m_contexte, this);
  m_aide->MontreFichier(fichier);
}

void CMainFrame::closeEvent(QCloseEvent* evenement) {
  if (Derriere() || (m_fermeture && !m_fermeture())) {
    evenement->ignore();
    return;
  }
  SauveBarres(*this, m_app);
  if (m_app.Reglages.IsSauverFenetres()) Sauve();
  SauvePosition(*this, m_app, Texte(SecFenlor));
  m_zone->closeAllSubWindows();
  for (const QMdiSubWindow* fenetre : m_zone->subWindowList())
    if (fenetre->isVisible()) {
      evenement->ignore();
      return;
    }
  QMainWindow::closeEvent(evenement);
}

void CMainFrame::changeEvent(QEvent* evenement) {
  QMainWindow::changeEvent(evenement);
  // The desktop went dark or light.
  if (evenement->type() == QEvent::ApplicationPaletteChange && m_etat && !m_preferences.Palette.EnCours()) {
    AppliquePreferences(m_preferences, m_app);
    Note(ReglagePreferences);
  }
}

}  // namespace fenlor
