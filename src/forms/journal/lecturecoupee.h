// A label or designation beside a choice: as wide as the form leaves it, the end in "..." and the whole text
// in a tool tip when it does not fit.
#pragma once

#include "ui/editeurs.h"

namespace fenlor {

class LectureCoupee : public Lecture {
  Q_OBJECT
 public:
  explicit LectureCoupee(QWidget* parent = nullptr);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* evenement) override;
  bool event(QEvent* evenement) override;
};

}  // namespace fenlor
