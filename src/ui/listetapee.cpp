#include "ui/listetapee.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr int rangeesVues = 8, pageDeRangees = 7;

}  // namespace

ListeTapee::ListeTapee(QWidget& champ, QLineEdit& editeur, Propose propose, Choisit choisit)
    : QObject(&champ), m_champ(champ), m_propose(std::move(propose)), m_choisit(std::move(choisit)) {
  champ.installEventFilter(this);
  connect(&editeur, &QLineEdit::textEdited, this, [this](const QString& tape) {
    Montre(tape.trimmed().isEmpty() ? QStringList() : m_propose(tape));
  });
}

ListeTapee::~ListeTapee() { delete m_liste; }

bool ListeTapee::Visible() const { return m_liste && m_liste->isVisible(); }

void ListeTapee::Montre(const QStringList& rangees) {
  if (rangees.isEmpty() || !m_champ.hasFocus()) {
    if (m_liste) m_liste->hide();
    return;
  }
  if (!m_liste) {
    // A tool tip's window: above the form, and the keyboard stays where it is.
    m_liste = new QListWidget(m_champ.window());
    m_liste->setWindowFlags(Qt::ToolTip);
    m_liste->setAttribute(Qt::WA_ShowWithoutActivating);
    m_liste->setFocusPolicy(Qt::NoFocus);
    m_liste->setObjectName(QStringLiteral("propositions"));
    m_liste->setAccessibleName(TexteQ(NomPropositions));
    m_liste->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_liste, &QListWidget::itemClicked, this, [this](QListWidgetItem* rangee) {
      Va(m_liste->row(rangee));
      m_liste->hide();
    });
  }
  m_liste->clear();
  m_liste->setFont(m_champ.font());
  m_liste->addItems(rangees);
  m_liste->setCurrentRow(-1);
  const int cadre = 2 * m_liste->frameWidth();
  const int barre = m_liste->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  const QRect ecran = m_champ.screen()->availableGeometry();
  const int largeur =
      std::clamp(m_liste->sizeHintForColumn(0) + cadre + barre + 4, m_champ.width(), ecran.width());
  const int hauteur =
      std::min(static_cast<int>(rangees.size()), rangeesVues) * m_liste->sizeHintForRow(0) + cadre;
  QPoint place = m_champ.mapToGlobal(QPoint(0, m_champ.height()));
  if (place.y() + hauteur > ecran.bottom()) place.ry() -= m_champ.height() + hauteur;
  place.setX(std::clamp(place.x(), ecran.left(), std::max(ecran.left(), ecran.right() - largeur)));
  m_liste->setGeometry(QRect(place, QSize(largeur, hauteur)));
  m_liste->show();
}

void ListeTapee::Va(int rang) {
  m_liste->setCurrentRow(rang);
  m_choisit(rang);
}

bool ListeTapee::eventFilter(QObject* objet, QEvent* evenement) {
  const auto type = evenement->type();
  if (type == QEvent::FocusOut || type == QEvent::Hide || type == QEvent::EnabledChange) {
    if (m_liste) m_liste->hide();
    return QObject::eventFilter(objet, evenement);
  }
  if ((type != QEvent::KeyPress && type != QEvent::ShortcutOverride) || !Visible())
    return QObject::eventFilter(objet, evenement);
  auto* touche = static_cast<QKeyEvent*>(evenement);
  if (touche->modifiers() & ~Qt::KeypadModifier) return false;
  int pas = 0;
  switch (touche->key()) {
    case Qt::Key_Down:
      pas = 1;
      break;
    case Qt::Key_Up:
      pas = -1;
      break;
    case Qt::Key_PageDown:
      pas = pageDeRangees;
      break;
    case Qt::Key_PageUp:
      pas = -pageDeRangees;
      break;
    case Qt::Key_Escape:
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
      if (type == QEvent::KeyPress) m_liste->hide();
      return false;
    default:
      return false;
  }
  evenement->accept();
  if (type == QEvent::ShortcutOverride) return true;
  if (pas == 0)
    m_liste->hide();
  else
    Va(std::clamp(m_liste->currentRow() + pas, 0, m_liste->count() - 1));
  return true;
}

}  // namespace fenlor
