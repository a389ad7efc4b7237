#include "app/barreicones.h"

#include <QActionGroup>
#include <QByteArray>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>
#include <QToolButton>
#include <algorithm>
#include <charconv>
#include <optional>

#include "app/commandes.h"
#include "app/personnaliser.h"
#include "app/textes.h"
#include "core/textes.h"
#include "session/textes.h"
#include "ui/images.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int versionEtat = 1;  ///< of the kept places

struct MotDeStyle {
  Qt::ToolButtonStyle style;
  TexteFixe mot;
};
constexpr MotDeStyle styles[] = {{Qt::ToolButtonTextUnderIcon, MotTexteDessous},
                                 {Qt::ToolButtonTextBesideIcon, MotTexteACote},
                                 {Qt::ToolButtonIconOnly, MotTexteSans}};

/// Numbers between commas; nothing when one of them is none.
std::optional<std::vector<unsigned>> LitListe(const std::string& texte) {
  std::vector<unsigned> liste;
  const char* p = texte.data();
  const char* const fin = p + texte.size();
  while (true) {
    while (p != fin && *p == ' ') ++p;
    unsigned numero = 0;
    const auto [suite, erreur] = std::from_chars(p, fin, numero);
    if (erreur != std::errc()) return std::nullopt;
    liste.push_back(numero);
    p = suite;
    while (p != fin && *p == ' ') ++p;
    if (p == fin) return liste;
    if (*p++ != ',') return std::nullopt;
  }
}

/// Each command once, no separator at an end or beside another.
std::vector<unsigned> Nettoie(const std::vector<unsigned>& liste) {
  std::vector<unsigned> propre;
  for (const unsigned numero : liste) {
    if (numero == 0 ? propre.empty() || propre.back() == 0
                    : std::ranges::find(propre, numero) != propre.end())
      continue;
    propre.push_back(numero);
  }
  if (!propre.empty() && propre.back() == 0) propre.pop_back();
  return propre;
}

bool TailleConnue(int taille) { return std::ranges::find(taillesIcones, taille) != taillesIcones.end(); }

/// A checksum behind it: the toolkit does not see all damage of a state.
QByteArray AvecSomme(QByteArray etat) {
  const quint16 somme = qChecksum(etat);
  return etat.append(static_cast<char>(somme & 0xFF)).append(static_cast<char>(somme >> 8));
}

std::string SectionBarre() { return TexteFormat(FormatSecBarreOutils, {"0"}); }

}  // namespace

ContenuBarre ContenuParDefaut() {
  return {{1012, 1013, 1014, 0, 1016, 1041, CmdSauvegarder, 0, CmdOptions, CmdCalculatrice, CmdAide}};
}

ContenuBarre LitContenuBarre(CFenlorApp& app) {
  ContenuBarre contenu = ContenuParDefaut();
  if (!CabinetOuvert(app)) return contenu;
  const std::string section = SectionBarre();
  if (const auto liste = LitListe(app.Reglages.LitIni(section, Texte(CleCommandesBarre))))
    contenu.Commandes = Nettoie(*liste);
  const auto taille = LitListe(app.Reglages.LitIni(section, Texte(CleTailleIcones)));
  if (taille && taille->size() == 1 && TailleConnue(static_cast<int>(taille->front())))
    contenu.Taille = static_cast<int>(taille->front());
  const std::string textes = app.Reglages.LitIni(section, Texte(CleTextesIcones));
  for (const MotDeStyle& style : styles)
    if (textes == Texte(style.mot)) contenu.Textes = style.style;
  return contenu;
}

bool EcritContenuBarre(CFenlorApp& app, const ContenuBarre& contenu) {
  if (!CabinetOuvert(app)) return true;
  std::string liste;
  for (const unsigned numero : Nettoie(contenu.Commandes))
    liste += (liste.empty() ? "" : ",") + std::to_string(numero);
  // An empty bar is written as one separator: a blank value means the default.
  if (liste.empty()) liste = "0";
  std::string textes;
  for (const MotDeStyle& style : styles)
    if (contenu.Textes == style.style) textes = Texte(style.mot);
  const std::string section = SectionBarre();
  return app.Magasin.Reglages().Ecrit({{section, Texte(CleCommandesBarre), liste},
                                       {section, Texte(CleTailleIcones), std::to_string(contenu.Taille)},
                                       {section, Texte(CleTextesIcones), textes}});
}

CBarreIcones::CBarreIcones(ContexteUi& contexte, FournitAction action, QWidget* parent)
    : QToolBar(u"Barre d'icônes"_s, parent), m_contexte(contexte), m_action(std::move(action)) {
  setObjectName(u"BarreIcones"_s);
  setMovable(true);
  setFloatable(true);
  setAllowedAreas(Qt::AllToolBarAreas);
  connect(this, &QToolBar::orientationChanged, this, &CBarreIcones::Aligne);
  Pose(ContenuParDefaut());
}

void CBarreIcones::Charge() { Pose(LitContenuBarre(m_contexte.App)); }

bool CBarreIcones::Enregistre() {
  return EcritContenuBarre(m_contexte.App, m_contenu) || DitEchecReglages(m_contexte.App);
}

void CBarreIcones::Pose(ContenuBarre contenu) {
  m_contenu = std::move(contenu);
  m_contenu.Commandes = Nettoie(m_contenu.Commandes);
  clear();
  setIconSize({m_contenu.Taille, m_contenu.Taille});
  setToolButtonStyle(m_contenu.Textes);
  bool separateur = false;
  for (const unsigned numero : m_contenu.Commandes) {
    QAction* action = numero ? m_action(numero) : nullptr;
    if (!action) {
      separateur = separateur || (numero == 0 && !actions().isEmpty());
      continue;
    }
    if (separateur) addSeparator();
    separateur = false;
    const Commande& commande = *TrouveCommande(numero);
    action->setIconText(*commande.legende ? QString::fromUtf8(commande.legende) : NomCommande(commande));
    addAction(action);
  }
  Aligne();
}

void CBarreIcones::Aligne() {
  int largeur = 0;
  const auto boutons = findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
  const auto deCommande = [this](const QToolButton* bouton) { return bouton->defaultAction() != nullptr; };
  for (QToolButton* bouton : boutons)
    if (orientation() == Qt::Vertical && deCommande(bouton))
      largeur = std::max(largeur, bouton->sizeHint().width());
  for (QToolButton* bouton : boutons)
    if (deCommande(bouton)) bouton->setMinimumWidth(largeur);
}

void CBarreIcones::changeEvent(QEvent* evenement) {
  QToolBar::changeEvent(evenement);
  if (evenement->type() == QEvent::FontChange || evenement->type() == QEvent::StyleChange) Aligne();
}

void CBarreIcones::Personnalise() {
  CDialogPersonnaliser dialogue(m_contexte, m_contenu, m_action, window());
  if (!dialogue.Execute()) return;
  Pose(dialogue.Contenu());
  Enregistre();
}

void CBarreIcones::contextMenuEvent(QContextMenuEvent* evenement) {
  auto* menu = new QMenu(this);
  menu->setObjectName(u"menuBarreIcones"_s);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(Image("personnaliser"), u"&Personnaliser..."_s, this, &CBarreIcones::Personnalise);
  const auto choix = [&](QActionGroup* groupe, const QString& texte, bool coche, auto change) {
    QAction* action = groupe->addAction(texte);
    action->setCheckable(true);
    action->setChecked(coche);
    connect(action, &QAction::triggered, this, [this, change] {
      ContenuBarre contenu = m_contenu;
      change(contenu);
      Pose(std::move(contenu));
      Enregistre();
    });
    menu->addAction(action);
  };
  menu->addSection(u"Images"_s);
  auto* tailles = new QActionGroup(menu);
  for (std::size_t i = 0; i < taillesIcones.size(); ++i)
    choix(tailles, QString::fromUtf8(nomsTailles[i]), m_contenu.Taille == taillesIcones[i],
          [taille = taillesIcones[i]](ContenuBarre& c) { c.Taille = taille; });
  menu->addSection(u"Textes"_s);
  auto* textes = new QActionGroup(menu);
  for (const NomTextes& nom : nomsTextes)
    choix(textes, QString::fromUtf8(nom.texte), m_contenu.Textes == nom.style,
          [style = nom.style](ContenuBarre& c) { c.Textes = style; });
  menu->addSeparator();
  if (QAction* cache = m_action(CmdBarreIcones))
    menu->addAction(u"&Cacher cette barre"_s, cache, &QAction::trigger);
  menu->popup(evenement->globalPos());
  evenement->accept();
}

void SauveBarres(const QMainWindow& fenetre, CFenlorApp& app) {
  if (!CabinetOuvert(app)) return;
  const QByteArray etat = AvecSomme(fenetre.saveState(versionEtat));
  std::vector<Profil::Changement> changements{{Texte(SecBarreOutils), Texte(CleEtatBarres),
                                               etat.toBase64(QByteArray::OmitTrailingEquals).toStdString()}};
  if (const auto* barre = fenetre.findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly))
    changements.push_back(
        {Texte(SecBarreOutils), Texte(CleBarreEtat), Texte(barre->isHidden() ? MotNon : MotOui)});
  app.Magasin.Reglages().Ecrit(changements);
}

bool RestaureBarres(QMainWindow& fenetre, CFenlorApp& app) {
  if (!CabinetOuvert(app)) return false;
  const std::string section = Texte(SecBarreOutils);
  const std::string visible = app.Reglages.LitIni(section, Texte(CleBarreEtat));
  if (auto* barre = fenetre.findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly);
      barre && !visible.empty())
    barre->setVisible(Parametres::IsOui(visible));

  const auto lu = QByteArray::fromBase64Encoding(
      QByteArray::fromStdString(app.Reglages.LitIni(section, Texte(CleEtatBarres))),
      QByteArray::AbortOnBase64DecodingErrors);
  if (!lu || lu.decoded.size() <= 2) return false;
  const QByteArray etat = lu.decoded.chopped(2);
  if (lu.decoded != AvecSomme(etat) || !fenetre.restoreState(etat, versionEtat)) return false;
  for (QToolBar* barre : fenetre.findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
    if (barre->isFloating() && !QGuiApplication::screenAt(barre->frameGeometry().center()))
      fenetre.addToolBar(Qt::TopToolBarArea, barre);
  return true;
}

}  // namespace fenlor
