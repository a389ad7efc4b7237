#include "app/lienparent.h"

#include <QLocalSocket>

#include "session/lancement.h"

namespace fenlor {

QString NomPriseParent(u64 parent) { return QStringLiteral("orvelia-parent-%1").arg(parent); }

bool PrevientParent(u64 parent, unsigned wparam, unsigned lparam) {
  constexpr int patience = 1000;  // ms
  if (parent == 0) return false;
  QLocalSocket prise;
  prise.connectToServer(NomPriseParent(parent), QIODevice::WriteOnly);
  if (!prise.waitForConnected(patience)) return false;
  prise.write(QByteArray::fromStdString(MessageParent(wparam, lparam) + "\n"));
  const bool parti = prise.bytesToWrite() == 0 || prise.waitForBytesWritten(patience);
  prise.disconnectFromServer();
  return parti;
}

}  // namespace fenlor
