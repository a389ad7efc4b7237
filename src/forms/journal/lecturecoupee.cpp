#include "forms/journal/lecturecoupee.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/textecoupe.h"

namespace fenlor {

namespace {

constexpr int LargeurVoulue = 20;  ///< characters

}  // namespace

LectureCoupee::LectureCoupee(QWidget* parent) : Lecture(parent) {
  setTextInteractionFlags(Qt::NoTextInteraction);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize LectureCoupee::sizeHint() const {
  return {LargeurVoulue * fontMetrics().averageCharWidth(), Lecture::sizeHint().height()};
}

QSize LectureCoupee::minimumSizeHint() const { return sizeHint(); }

void LectureCoupee::paintEvent(QPaintEvent*) {
  QPainter peintre(this);
  style()->drawItemText(&peintre, contentsRect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                        palette(), isEnabled(), ClipText(text(), contentsRect().width(), 0, fontMetrics()),
                        foregroundRole());
}

bool LectureCoupee::event(QEvent* evenement) {
  if (evenement->type() != QEvent::ToolTip) return Lecture::event(evenement);
  const bool coupee = fontMetrics().horizontalAdvance(text()) > contentsRect().width();
  QToolTip::showText(static_cast<QHelpEvent*>(evenement)->globalPos(), coupee ? text() : QString(), this);
  return true;
}

}  // namespace fenlor
