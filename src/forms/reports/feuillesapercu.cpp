#include "forms/reports/feuillesapercu.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <iterator>

#include "ui/couleurs.h"
#include "ui/roleaccessible.h"

namespace fenlor {

namespace {

constexpr qreal zooms[] = {0.5, 0.75, 1, 1.25, 1.5, 2, 3, 4};
constexpr qreal pouce = 25.4;  ///< millimetres
constexpr int cran = 120;      ///< of the wheel
constexpr qreal ecart = 0.01;  ///< between two sizes that differ

}  // namespace

FeuillesApercu::FeuillesApercu(QWidget* parent) : QAbstractScrollArea(parent) {
  setObjectName(QStringLiteral("feuilles"));
  DonneRole(*this, QAccessible::Document);
  setAccessibleName(QStringLiteral("Pages de l'état"));
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(NoFrame);
  viewport()->setBackgroundRole(QPalette::Mid);
  viewport()->setAutoFillBackground(true);
  m_rendu.setSingleShot(true);
  connect(&m_rendu, &QTimer::timeout, this, &FeuillesApercu::RendPages);
  for (QScrollBar* barre : {horizontalScrollBar(), verticalScrollBar()})
    connect(barre, &QScrollBar::valueChanged, viewport(), qOverload<>(&QWidget::update));
}

void FeuillesApercu::Pose(PagesDessinees* vue) {
  m_vue = vue;
  m_page = std::clamp(m_page, u32{1}, DernierePremiere());
  Renouvelle();
}

u32 FeuillesApercu::DernierePremiere() const {
  return NombrePages() > m_montrees ? NombrePages() - m_montrees + 1 : 1;
}

void FeuillesApercu::VaPage(u32 page) {
  page = std::clamp(page, u32{1}, DernierePremiere());
  if (page == m_page) return;
  m_page = page;
  verticalScrollBar()->setValue(0);
  Renouvelle();
}

void FeuillesApercu::Montre(u32 pages) {
  if (EstAgrandi() || pages == m_montrees) return;
  m_montrees = pages;
  m_page = std::clamp(m_page, u32{1}, DernierePremiere());
  Renouvelle();
}

QSizeF FeuillesApercu::Papier() const {
  const QSizeF mm = (m_vue ? m_vue->Feuille() : FeuilleParDefaut()).fullRect(QPageLayout::Millimeter).size();
  return {mm.width() * logicalDpiX() / pouce, mm.height() * logicalDpiY() / pouce};
}

qreal FeuillesApercu::Echelle() const {
  if (EstAgrandi()) return m_zoom;
  const QSizeF papier = Papier();
  const qreal n = m_montrees;
  const qreal large = (viewport()->width() - (n + 1) * Marge()) / (n * papier.width());
  const qreal haut = (viewport()->height() - 2.0 * Marge()) / papier.height();
  return std::max(0.02, std::min(large, haut));
}

QSize FeuillesApercu::Feuille() const { return (Papier() * Echelle()).toSize(); }

QRect FeuillesApercu::Place(u32 page) const {
  const QSize feuille = Feuille(), vue = viewport()->size();
  const int rang = static_cast<int>(page - m_page), n = static_cast<int>(m_montrees), marge = Marge();
  const int largeur = n * feuille.width() + (n + 1) * marge, hauteur = feuille.height() + 2 * marge;
  const int x = largeur < vue.width() ? (vue.width() - largeur) / 2 : -horizontalScrollBar()->value();
  const int y = hauteur < vue.height() ? (vue.height() - hauteur) / 2 : -verticalScrollBar()->value();
  return {QPoint(x + marge + rang * (feuille.width() + marge), y + marge), feuille};
}

bool FeuillesApercu::PeutAgrandir() const { return Echelle() < *std::rbegin(zooms) - ecart; }

void FeuillesApercu::Agrandit() {
  const qreal echelle = Echelle();
  const auto* zoom =
      std::find_if(std::begin(zooms), std::end(zooms), [&](qreal z) { return z > echelle + ecart; });
  if (zoom != std::end(zooms)) PoseZoom(*zoom);
}

void FeuillesApercu::Reduit() {
  if (!EstAgrandi()) return;
  const auto zoom =
      std::find_if(std::rbegin(zooms), std::rend(zooms), [&](qreal z) { return z < m_zoom - ecart; });
  const qreal actuel = m_zoom;
  m_zoom = 0;
  const qreal entiere = Echelle();
  m_zoom = actuel;
  PoseZoom(zoom != std::rend(zooms) && *zoom > entiere + ecart ? *zoom : 0);
}

void FeuillesApercu::Ajuste() { PoseZoom(0); }

void FeuillesApercu::PoseZoom(qreal zoom) {
  if (zoom == m_zoom) return;
  const auto milieu = [](const QScrollBar& barre, qreal ancienne, qreal nouvelle) {
    const qreal demi = barre.pageStep() / 2.0;
    return static_cast<int>((barre.value() + demi) * nouvelle / ancienne - demi);
  };
  const qreal ancienne = Echelle();
  if (!EstAgrandi() && zoom > 0) m_montreesEntieres = m_montrees;
  m_zoom = zoom;
  m_montrees = zoom > 0 ? 1 : m_montreesEntieres;
  m_page = std::clamp(m_page, u32{1}, DernierePremiere());
  const int x = milieu(*horizontalScrollBar(), ancienne, Echelle());
  const int y = milieu(*verticalScrollBar(), ancienne, Echelle());
  Renouvelle();
  horizontalScrollBar()->setValue(x);
  verticalScrollBar()->setValue(y);
}

void FeuillesApercu::Dispose() {
  const QSize feuille = EstAgrandi() ? Feuille() + QSize(2 * Marge(), 2 * Marge()) : QSize();
  const auto regle = [](QScrollBar& barre, int etendue, int vue) {
    barre.setRange(0, std::max(0, etendue - vue));
    barre.setPageStep(vue);
    barre.setSingleStep(std::max(1, vue / 20));
  };
  regle(*horizontalScrollBar(), feuille.width(), viewport()->width());
  regle(*verticalScrollBar(), feuille.height(), viewport()->height());
}

void FeuillesApercu::Renouvelle() {
  Dispose();
  m_rendu.start(0);
  viewport()->update();
  Q_EMIT Change();
}

/// Not while painting: a page that cannot be read is told in a box.
void FeuillesApercu::RendPages() {
  std::map<u32, QImage> images;
  const QSize taille = Feuille() * devicePixelRatioF();
  for (u32 page = m_page; m_vue && page < m_page + m_montrees && page <= NombrePages(); ++page) {
    if (const auto ancienne = m_images.find(page);
        ancienne != m_images.end() && ancienne->second.size() == taille) {
      images[page] = ancienne->second;
      continue;
    }
    QImage image(taille, QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatioF());
    image.fill(BlancPapier());
    QPainter peintre(&image);
    peintre.setRenderHint(QPainter::TextAntialiasing);
    const qreal parPouce = logicalDpiX() * Echelle();
    const QMarginsF marges = m_vue->Feuille().margins(QPageLayout::Millimeter);
    peintre.translate(marges.left() * parPouce / pouce, marges.top() * parPouce / pouce);
    m_vue->DessinePage(peintre, parPouce, page);
    images[page] = image;
  }
  m_images = std::move(images);
  viewport()->update();
}

void FeuillesApercu::paintEvent(QPaintEvent*) {
  QPainter peintre(viewport());
  for (u32 page = m_page; page < m_page + m_montrees && page <= NombrePages(); ++page) {
    const QRect place = Place(page);
    peintre.fillRect(place.translated(3, 3), palette().color(QPalette::Shadow));
    const auto image = m_images.find(page);
    peintre.fillRect(place, BlancPapier());
    // One of the size before is stretched until the new one is there.
    if (image != m_images.end()) peintre.drawImage(place, image->second);
  }
}

void FeuillesApercu::resizeEvent(QResizeEvent*) { Renouvelle(); }

void FeuillesApercu::changeEvent(QEvent* evenement) {
  QAbstractScrollArea::changeEvent(evenement);
  if (evenement->type() == QEvent::FontChange) Renouvelle();
}

/// A screenful up or down; beyond the edge of an enlarged page lies the next one.
bool FeuillesApercu::Defile(int pas) {
  QScrollBar& barre = *verticalScrollBar();
  if (!EstAgrandi() || barre.value() == (pas < 0 ? barre.minimum() : barre.maximum())) return false;
  barre.setValue(barre.value() + pas);
  return true;
}

/// Its own zoom comes before that of the texts.
bool FeuillesApercu::event(QEvent* evenement) {
  if (evenement->type() == QEvent::ShortcutOverride) {
    const auto& touche = static_cast<QKeyEvent&>(*evenement);
    const int cle = touche.key();
    if (touche.modifiers() & Qt::ControlModifier &&
        (cle == Qt::Key_Plus || cle == Qt::Key_Equal || cle == Qt::Key_Minus || cle == Qt::Key_0))
      evenement->accept();
  }
  return QAbstractScrollArea::event(evenement);
}

void FeuillesApercu::keyPressEvent(QKeyEvent* evenement) {
  const bool ctrl = evenement->modifiers() & Qt::ControlModifier;
  const int ecran = verticalScrollBar()->pageStep() * 9 / 10;
  switch (evenement->key()) {
    case Qt::Key_PageDown:
      if (!Defile(ecran)) VaPage(m_page + 1);
      return;
    case Qt::Key_PageUp:
      if (Defile(-ecran) || m_page == 1) return;
      VaPage(m_page - 1);
      verticalScrollBar()->setValue(verticalScrollBar()->maximum());
      return;
    case Qt::Key_Home:
      return VaPage(1);
    case Qt::Key_End:
      return VaPage(DernierePremiere());
    case Qt::Key_Down:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Left:
      if (EstAgrandi()) return QAbstractScrollArea::keyPressEvent(evenement);
      return VaPage(evenement->key() == Qt::Key_Down || evenement->key() == Qt::Key_Right ? m_page + 1
                                                                                          : m_page - 1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return Agrandit();
    case Qt::Key_Minus:
      return Reduit();
    case Qt::Key_0:
      if (ctrl) return Ajuste();
      [[fallthrough]];
    default:
      evenement->ignore();
  }
}

void FeuillesApercu::wheelEvent(QWheelEvent* evenement) {
  evenement->accept();
  const bool ctrl = evenement->modifiers() & Qt::ControlModifier;
  if (EstAgrandi() && !ctrl) {
    const QScrollBar& barre = *verticalScrollBar();
    const int sens = evenement->angleDelta().y();
    const bool bord = sens < 0 ? barre.value() == barre.maximum() : barre.value() == barre.minimum();
    if (!bord || sens == 0) return QAbstractScrollArea::wheelEvent(evenement);
  }
  m_molette += evenement->angleDelta().y();
  const int crans = m_molette / cran;
  if (crans == 0) return;
  m_molette %= cran;
  if (ctrl) return crans > 0 ? Agrandit() : Reduit();
  if (crans < 0) return VaPage(m_page + 1);
  if (m_page > 1) VaPage(m_page - 1);
}

QSize FeuillesApercu::sizeHint() const { return fontMetrics().height() * QSize(60, 70); }

}  // namespace fenlor
