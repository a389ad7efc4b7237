// A lamp: off, lit, or blinking as an alarm.
#pragma once

#include <QTimer>
#include <QWidget>

#include "ui/findesliens.h"

namespace fenlor {

/// What it shows is also said by a word beside it; it takes no focus.
class Voyant : public QWidget {
  Q_OBJECT
 public:
  enum class Etat { Eteint, Allume, Alarme };
  explicit Voyant(QWidget* parent = nullptr);
  void Pose(Etat etat);
  Etat Pose() const { return m_etat; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* evenement) override;

 private:
  Etat m_etat = Etat::Eteint;
  bool m_eclat = true;  ///< of an alarm: the half of the time when it shines
  QTimer m_horloge;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
