#include "forms/graphiques/widgetgraphique.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

#include "core/valeurs.h"
#include "graphiques/axe.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

/// To a screen reader it is a chart, which has a name and a description.
QAccessibleInterface* Accessible(const QString&, QObject* objet) {
  auto* graphique = qobject_cast<WidgetGraphique*>(objet);
  return graphique ? new QAccessibleWidget(graphique, QAccessible::Chart) : nullptr;
}

}  // namespace

WidgetGraphique::WidgetGraphique(QWidget* parent) : QWidget(parent) {
  [[maybe_unused]] static const bool installee = (QAccessible::installFactory(Accessible), true);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void WidgetGraphique::Pose(const SerieGraphique& serie, GenreGraphique genre) {
  m_serie = serie;
  m_genre = genre;
  m_perime = true;
  if (m_choisi >= static_cast<int>(m_serie.points.size())) m_choisi = -1;
  const QString titre = Q(CompacteTexte(serie.titre));
  setAccessibleName(titre.isEmpty() ? u"Graphique"_s : u"Graphique :"_s + u' ' + titre);
  QStringList valeurs;
  for (int i = 0; i < static_cast<int>(m_serie.points.size()); ++i) valeurs += TexteDuPoint(i);
  setAccessibleDescription(valeurs.join(u"; "_s));
  update();
}

void WidgetGraphique::PoseHauteurTitre(f64 hauteur) {
  m_hauteurTitre = hauteur;
  m_perime = true;
  update();
}

void WidgetGraphique::Choisit(int point) {
  if (point == m_choisi || point >= static_cast<int>(m_serie.points.size())) return;
  m_choisi = point;
  update();
}

QString WidgetGraphique::TexteDuPoint(int point) const {
  if (point < 0 || point >= static_cast<int>(m_serie.points.size())) return {};
  const PointGraphique& p = m_serie.points[static_cast<std::size_t>(point)];
  const QString valeur = Q(TexteValeur(p.valeur, m_serie.euro));
  return p.libelle.empty() ? valeur : Q(p.libelle) + u" : "_s + valeur;
}

QImage WidgetGraphique::Image(qreal echelle) const {
  return ImageGraphique(m_serie, m_genre, size(), echelle, font());
}

QSize WidgetGraphique::sizeHint() const { return fontMetrics().height() * QSize(45, 30); }
QSize WidgetGraphique::minimumSizeHint() const { return fontMetrics().height() * QSize(12, 8); }

const DessinGraphique& WidgetGraphique::Dessin() const {
  if (!m_perime) return m_dessin;
  const PlaceGraphique place = PlaceEcran(width(), height(), QFontInfo(font()).pixelSize(),
                                          m_serie.titre.empty() ? 0 : m_hauteurTitre);
  m_dessin = DessineGraphique(m_serie, m_genre, place, MesureQt(font()));
  m_perime = false;
  return m_dessin;
}

void WidgetGraphique::paintEvent(QPaintEvent*) {
  QStylePainter peintre(this);
  PeintGraphique(peintre, Dessin(), MesureQt(font()), ThemeDe(palette()), m_choisi);
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  peintre.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}

void WidgetGraphique::resizeEvent(QResizeEvent*) { m_perime = true; }

void WidgetGraphique::changeEvent(QEvent* evenement) {
  QWidget::changeEvent(evenement);
  if (evenement->type() != QEvent::FontChange && evenement->type() != QEvent::PaletteChange) return;
  m_perime = true;
  update();
}

void WidgetGraphique::Designe(int point, const QPoint& global) {
  if (point != m_choisi) {
    Choisit(point);
    Q_EMIT PointChoisi(point);
  }
  const QString texte = TexteDuPoint(point);
  if (texte.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(global, texte, this);
}

QPoint WidgetGraphique::PlaceDe(int point) const {
  for (auto forme = Dessin().formes.rbegin(); forme != Dessin().formes.rend(); ++forme) {
    if (forme->point != point || forme->points.empty()) continue;
    PointForme milieu;
    for (const PointForme& p : forme->points) milieu = milieu + p;
    const f64 nombre = static_cast<f64>(forme->points.size());
    return QPointF(milieu.x / nombre, milieu.y / nombre).toPoint();
  }
  for (const DessinGraphique::Zone& zone : Dessin().zones)
    if (zone.point == point)
      return QPointF((zone.cadre.gauche + zone.cadre.droite) / 2, (zone.cadre.haut + zone.cadre.bas) / 2)
          .toPoint();
  return rect().center();
}

void WidgetGraphique::mouseMoveEvent(QMouseEvent* evenement) {
  const QPointF place = evenement->position();
  Designe(PointSous(Dessin(), {place.x(), place.y()}), evenement->globalPosition().toPoint());
}

void WidgetGraphique::mousePressEvent(QMouseEvent* evenement) {
  setFocus(Qt::MouseFocusReason);
  mouseMoveEvent(evenement);
}

void WidgetGraphique::leaveEvent(QEvent*) {
  if (!hasFocus()) Choisit(-1);
}

void WidgetGraphique::keyPressEvent(QKeyEvent* evenement) {
  const int nombre = static_cast<int>(m_serie.points.size());
  int point = m_choisi;
  switch (evenement->key()) {
    case Qt::Key_Right:
    case Qt::Key_Down:
      point = std::min(m_choisi + 1, nombre - 1);
      break;
    case Qt::Key_Left:
    case Qt::Key_Up:
      point = std::max(m_choisi - 1, 0);
      break;
    case Qt::Key_Home:
      point = 0;
      break;
    case Qt::Key_End:
      point = nombre - 1;
      break;
    default:
      return QWidget::keyPressEvent(evenement);
  }
  Designe(point, mapToGlobal(PlaceDe(point)));
}

void WidgetGraphique::focusInEvent(QFocusEvent*) { update(); }
void WidgetGraphique::focusOutEvent(QFocusEvent*) { update(); }

}  // namespace fenlor
