#include "ui/voyant.h"

#include <QPainter>

#include "ui/couleurs.h"

namespace fenlor {

namespace {

constexpr int periode = 500;  ///< ms

}  // namespace

Voyant::Voyant(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  m_horloge.setInterval(periode);
  connect(&m_horloge, &QTimer::timeout, this, [this] {
    m_eclat = !m_eclat;
    update();
  });
}

void Voyant::Pose(Etat etat) {
  m_etat = etat;
  m_eclat = true;
  etat == Etat::Alarme ? m_horloge.start() : m_horloge.stop();
  update();
}

QSize Voyant::sizeHint() const { return QSize(fontMetrics().height(), fontMetrics().height()); }

void Voyant::paintEvent(QPaintEvent*) {
  QPainter peintre(this);
  peintre.setRenderHint(QPainter::Antialiasing);
  const qreal cote = fontMetrics().ascent() * 0.8;
  const bool brille = m_etat == Etat::Allume || (m_etat == Etat::Alarme && m_eclat);
  peintre.setPen(QPen(Attenue(palette().color(QPalette::WindowText), palette().color(QPalette::Window)), 1));
  peintre.setBrush(brille ? Lampe() : palette().color(QPalette::Midlight));
  peintre.drawEllipse(QRectF((width() - cote) / 2, (height() - cote) / 2, cote, cote));
}

}  // namespace fenlor
