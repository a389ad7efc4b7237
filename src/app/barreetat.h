// The status bar: what a command does, the exercice that is open, the time.
#pragma once

#include <QDateTime>
#include <QStatusBar>
#include <QTimer>

#include "ui/fenetres.h"
#include "ui/findesliens.h"

class QLabel;

namespace fenlor {

class CBarreEtat : public QStatusBar {
  Q_OBJECT
 public:
  explicit CBarreEtat(ContexteUi& contexte, QWidget* parent = nullptr);

  /// Name, currency and state of the open exercice; nothing without one.
  void MontreExercice();
  /// Takes the list font of the preferences.
  void ActualisePreferences();
  /// Sets the clock; the timer calls it at the change of each minute.
  void MontreHeure(const QDateTime& maintenant);

 private:
  void Programme();
  ContexteUi& m_contexte;
  QLabel* m_exercice;
  QLabel* m_monnaie;
  QWidget* m_cloture;
  QLabel* m_imageCloture;
  QLabel* m_texteCloture;
  QLabel* m_heure;
  QTimer m_minute;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
