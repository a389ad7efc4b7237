#include "app/singe.h"

#include <QAbstractButton>
#include <QAbstractPrintDialog>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPageSetupDialog>
#include <QTextEdit>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <sstream>

#include "app/gestioncommandes.h"
#include "app/mainframe.h"
#include "session/textes.h"
#include "ui/texteqt.h"

namespace fenlor::test {

namespace {

constexpr int filePleine = 60;  ///< acts that wait: the program is slower than the monkey
constexpr int longueurRafale = 7;

/// Keys of forms and lists, the frequent ones more than once. '/' is none: no path leaves the folder.
constexpr std::array touches = {
    Qt::Key_Return, Qt::Key_Return, Qt::Key_Return, Qt::Key_Enter,     Qt::Key_Escape, Qt::Key_Escape,
    Qt::Key_Tab,    Qt::Key_Tab,    Qt::Key_Tab,    Qt::Key_Tab,       Qt::Key_Up,     Qt::Key_Down,
    Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,  Qt::Key_PageDown,  Qt::Key_PageUp, Qt::Key_Home,
    Qt::Key_End,    Qt::Key_Space,  Qt::Key_Space,  Qt::Key_Insert,    Qt::Key_Insert, Qt::Key_F2,
    Qt::Key_F2,     Qt::Key_Delete, Qt::Key_Menu,   Qt::Key_Backspace, Qt::Key_F1,     Qt::Key_F5,
    Qt::Key_F6,     Qt::Key_F8,     Qt::Key_F9,     Qt::Key_F12,       Qt::Key_Backtab};
constexpr char caracteres[] = "0123456789012345678901234567890123456789,,..-+*()eaznot ";
constexpr char accords[] = "AACCDFFJLMNOPRTVWWWXZ";  ///< with Ctrl

std::vector<QWidget*> Fenetres() {
  std::vector<QWidget*> fenetres;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->isVisible() && w->windowHandle()) fenetres.push_back(w);
  std::sort(fenetres.begin(), fenetres.end(), [](QWidget* a, QWidget* b) {
    return std::pair(a->objectName(), QString::fromLatin1(a->metaObject()->className())) <
           std::pair(b->objectName(), QString::fromLatin1(b->metaObject()->className()));
  });
  return fenetres;
}

QWidget* EnAvant() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* modale = QApplication::activeModalWidget()) return modale;
  return QApplication::activeWindow();
}

QString TexteDe(int touche, Qt::KeyboardModifiers avec) {
  if (avec & (Qt::ControlModifier | Qt::AltModifier)) return {};
  switch (touche) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return QStringLiteral("\r");
    case Qt::Key_Tab:
      return QStringLiteral("\t");
    default:
      return touche < 0x7F ? QString(QChar(touche)).toLower() : QString();
  }
}

}  // namespace

Singe::Singe(u_int64_t graine, const std::string& journal) : m_hasard(graine) {
  if (!journal.empty()) m_journal.open(journal);
  qApp->installEventFilter(this);
}

Singe::~Singe() = default;

void Singe::Rejoue(const std::string& journal) {
  m_joue = true;
  std::ifstream fichier(journal);
  for (std::string ligne; std::getline(fichier, ligne);) {
    std::istringstream mots(ligne);
    std::vector<Geste> ensemble;
    for (Geste g; mots >> g.genre >> g.a >> g.b >> g.c >> g.d;) ensemble.push_back(g);
    if (!ensemble.empty()) m_rejoue.push_back(std::move(ensemble));
  }
}

void Singe::Commence(std::function<bool()> fini, std::function<void()> quitte) {
  m_fini = std::move(fini);
  m_quitte = std::move(quitte);
  Pas();
}

bool Singe::eventFilter(QObject* objet, QEvent* evenement) {
  auto* dialogue = evenement->type() == QEvent::Show ? qobject_cast<QDialog*>(objet) : nullptr;
  if (!dialogue) return false;
  const std::string nom = dialogue->objectName().toStdString();
  if (std::find(m_vues.begin(), m_vues.end(), nom) == m_vues.end()) m_vues.push_back(nom);
  // Nothing is printed, and no file is written where it pleases.
  if (qobject_cast<QFileDialog*>(dialogue) || qobject_cast<QAbstractPrintDialog*>(dialogue) ||
      qobject_cast<QPageSetupDialog*>(dialogue))
    QMetaObject::invokeMethod(dialogue, &QDialog::reject, Qt::QueuedConnection);
  // The adjustment leaves the totals to the recalculation, by its rule: they would differ from the lines.
  const auto* texte = dialogue->findChild<QTextEdit*>(QStringLiteral("texte"));
  if (texte && texte->toPlainText() == TexteQ(QuestionAjustementEuro))
    QMetaObject::invokeMethod(dialogue, &QDialog::reject, Qt::QueuedConnection);
  return false;
}

void Singe::Pas() {
  if (m_fini() || Epuise()) {
    QTimer::singleShot(1, this, [this] { Replie(); });
    return;
  }
  QTimer::singleShot(m_joue ? 2 : Au(4), this, [this] { Pas(); });
  if (m_attente < filePleine) Agit();
}

/// Escape, as long as something is open; what was typed is given up.
void Singe::Replie() {
  QWidget* popup = QApplication::activePopupWidget();
  auto* modale = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (!popup && !modale && m_attente == 0) return m_quitte();
  // Before: a form may ask, and wait for the answer, inside its own rejection.
  QTimer::singleShot(1, this, [this] { Replie(); });
  if (popup) {
    popup->close();
  } else if (modale) {
    auto* non = modale->findChild<QAbstractButton*>(QStringLiteral("bouton%1").arg(RepNon));
    non ? non->click() : modale->reject();
  }
}

void Singe::Agit() {
  std::vector<Geste> ensemble;
  if (m_joue) {
    ensemble = m_rejoue[m_rang++];
  } else {
    ensemble.push_back(Choisit());
    // A burst: typed before the first key was looked at.
    if (Au(4) == 0)
      for (int n = 1 + Au(longueurRafale); n > 0; --n) ensemble.push_back(Au(5) ? Touche() : Choisit());
  }
  for (const Geste& g : ensemble) {
    if (m_journal.is_open())
      m_journal << g.genre << ' ' << g.a << ' ' << g.b << ' ' << g.c << ' ' << g.d << ' ';
    Pose(g);
  }
  if (m_journal.is_open()) m_journal << std::endl;
  m_gestes += ensemble.size();
}

Geste Singe::Choisit() {
  switch (Au(40)) {
    case 0:
      return {'d', 300 + Au(1300), 200 + Au(900), 0, 0};
    case 1:
      return {'f', Au(8), 0, 0, 0};
    case 2:
      return {'x', 0, 0, 0, 0};
    case 3:
    case 4:
    case 5: {
      const auto table = TableCommandes();
      return {'m',
              static_cast<int>(table[static_cast<std::size_t>(Au(static_cast<int>(table.size())))].numero), 0,
              0, 0};
    }
    default:
      return Au(3) ? Touche() : Clic();
  }
}

Geste Singe::Touche() {
  const auto une = [this](const char* choix) {
    return static_cast<unsigned char>(choix[Au(int(std::strlen(choix)))]);
  };
  switch (Au(10)) {
    case 0:
      return {'t', une(accords), int(Qt::ControlModifier), 0, 0};
    case 1:
      return {'t', 'A' + Au(26), int(Qt::AltModifier), 0, 0};
    case 2:
    case 3:
    case 4:
    case 5:
      return {'t', std::toupper(une(caracteres)), 0, 0, 0};
    default:
      return {'t', touches[static_cast<std::size_t>(Au(int(touches.size())))],
              Au(12) ? 0 : int(Au(2) ? Qt::ShiftModifier : Qt::ControlModifier), 0, 0};
  }
}

/// On a widget, more often than beside; in the window in front, more often than behind it.
Geste Singe::Clic() {
  const std::vector<QWidget*> fenetres = Fenetres();
  if (fenetres.empty()) return Touche();
  QWidget* fenetre = EnAvant();
  auto rang = std::find(fenetres.begin(), fenetres.end(), fenetre);
  if (rang == fenetres.end() || Au(6) == 0) rang = fenetres.begin() + Au(int(fenetres.size()));
  fenetre = *rang;
  QPoint point(Au(std::max(1, fenetre->width())), Au(std::max(1, fenetre->height())));
  if (Au(3)) {
    QList<QWidget*> dedans = fenetre->findChildren<QWidget*>();
    dedans.removeIf([](const QWidget* w) { return !w->isVisible() || w->isWindow() || w->size().isEmpty(); });
    if (!dedans.isEmpty()) {
      QWidget* cible = dedans[Au(int(dedans.size()))];
      point = cible->mapTo(fenetre, QPoint(Au(cible->width()), Au(cible->height())));
    }
  }
  const int bouton = Au(5) == 0 ? 2 : Au(6) == 0 ? 4 : 1;
  return {'c', static_cast<int>(rang - fenetres.begin()), point.x(), point.y(), bouton};
}

void Singe::Pose(const Geste& g) {
  if (g.genre == 't') return PoseTouche(g);
  if (g.genre == 'c') return PoseClic(g);
  if (g.genre == 'f' || g.genre == 'x') return PoseFermeture(g);
  PlusTard([this, g] {
    CMainFrame* cadre = m_cadre ? m_cadre() : nullptr;
    if (!cadre) return;
    if (g.genre == 'd') return cadre->resize(g.a, g.b);
    QAction* action = cadre->Table().Action(static_cast<unsigned>(g.a));
    if (action && action->isEnabled()) action->trigger();
  });
}

void Singe::PlusTard(const std::function<void()>& geste) {
  ++m_attente;
  const auto agit = [this, geste] {
    --m_attente;
    geste();
  };
  QMetaObject::invokeMethod(this, agit, Qt::QueuedConnection);
}

/// For the window that has the keyboard now, whatever opens before the key is looked at.
void Singe::PoseTouche(const Geste& g) {
  QPointer<QWindow> fenetre = QGuiApplication::focusWindow();
  if (!fenetre) return;
  PlusTard([g, fenetre] {
    const auto avec = Qt::KeyboardModifiers(g.b);
    const QString texte = TexteDe(g.a, avec);
    if (fenetre) qt_handleKeyEvent(fenetre, QEvent::KeyPress, g.a, avec, texte);
    if (fenetre) qt_handleKeyEvent(fenetre, QEvent::KeyRelease, g.a, avec, texte);
  });
}

void Singe::PoseClic(const Geste& g) {
  const std::vector<QWidget*> fenetres = Fenetres();
  if (g.a >= int(fenetres.size())) return;
  QPointer<QWindow> fenetre = fenetres[static_cast<std::size_t>(g.a)]->windowHandle();
  PlusTard([g, fenetre] {
    static int heure = 0;
    const auto bouton = g.d == 2 ? Qt::RightButton : Qt::LeftButton;
    const QPointF ici(g.b, g.c);
    heure += 1000;  // apart, so that two clicks are no double click
    for (int n = g.d == 4 ? 2 : 1; n > 0; --n, heure += 20) {
      const auto envoie = [&](QEvent::Type type, Qt::MouseButtons etat) {
        if (fenetre)
          qt_handleMouseEvent(fenetre, ici, fenetre->mapToGlobal(ici.toPoint()), etat, bouton, type, {},
                              heure);
      };
      envoie(QEvent::MouseButtonPress, bouton);
      envoie(QEvent::MouseButtonRelease, Qt::NoButton);
    }
  });
}

/// What the system's menu, or another program, would close.
void Singe::PoseFermeture(const Geste& g) {
  PlusTard([this, g] {
    CMainFrame* cadre = m_cadre ? m_cadre() : nullptr;
    if (g.genre == 'x') {
      if (QWidget* devant = EnAvant(); devant && devant != cadre) devant->close();
    } else if (cadre) {
      const auto fenetres = cadre->Zone().subWindowList();
      if (g.a < fenetres.size()) fenetres[g.a]->close();
    }
  });
}

}  // namespace fenlor::test
