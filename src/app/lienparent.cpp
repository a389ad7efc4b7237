#include "app/lienparent.h"

#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>

#include "session/lancement.h"

namespace fenlor {

QString NomPriseParent(u64 parent) {
  const QString dossier = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const QString nom = QStringLiteral("orvelia-parent-%1").arg(parent);
  return QFileInfo(dossier).isDir() ? QDir(dossier).filePath(nom) : nom;
}

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
