#include "ui/findesliens.h"

#include <QApplication>
#include <QWidget>

namespace fenlor {

FinDesLiens::~FinDesLiens() {
  QObject::disconnect(qApp, nullptr, &m_fenetre, nullptr);
  for (QObject* dedans : m_fenetre.findChildren<QObject*>()) {
    QObject::disconnect(qApp, nullptr, dedans, nullptr);
    QObject::disconnect(dedans, nullptr, &m_fenetre, nullptr);
    // Between two fields; the toolkit's own links that must hold hear `destroyed`, which is not blocked.
    dedans->blockSignals(true);
  }
}

}  // namespace fenlor
