// What the benchmarks with windows share.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "mesures.h"
#include "ui/fenetres.h"

namespace fenlor::bench {

/// No main window; the windows follow the store by themselves.
class SansCadre : public Fenetres {
 public:
  void FermeToutes() override {}
  void Sauve() override {}
  void Restaure() override {}
  void MontreExercice() override {}
  void Aide(const QString&) override {}
  bool Touche(const QKeySequence&) override { return false; }
  QWidget* Cadre() override { return nullptr; }
};

/// Lets the events pass until the rows have been painted.
class Peinture : public QObject {
 public:
  explicit Peinture(QWidget& zone) : m_zone(zone) { zone.installEventFilter(this); }
  ~Peinture() override { m_zone.removeEventFilter(this); }
  void Attend() {
    for (int i = 0; i < 1000 && !m_peinte; ++i) QApplication::processEvents(QEventLoop::AllEvents, 10);
    if (!m_peinte) Echec("nothing was painted");
  }

 protected:
  bool eventFilter(QObject*, QEvent* evenement) override {
    // Once the painting itself is over, which this call comes before.
    if (evenement->type() == QEvent::Paint)
      QMetaObject::invokeMethod(
          this, [this] { m_peinte = true; }, Qt::QueuedConnection);
    return false;
  }

 private:
  QWidget& m_zone;
  bool m_peinte = false;
};

/// Without a screen, and without a word of what the platform lacks for that.
inline void SansEcran() {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

}  // namespace fenlor::bench
