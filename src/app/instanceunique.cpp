#include "app/instanceunique.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>

namespace fenlor {

namespace {

constexpr int patience = 2000;  // ms
constexpr char demande[] = "montre\n";
constexpr char reponse[] = "ok\n";

}  // namespace

InstanceUnique::InstanceUnique(const QString& cabinet) {
  const QFileInfo info(cabinet);
  const QString reel = info.canonicalFilePath();
  const QByteArray chemin = (reel.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : reel).toUtf8();
  QString dossier = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (dossier.isEmpty()) dossier = QDir::tempPath();
  const auto empreinte = QCryptographicHash::hash(chemin, QCryptographicHash::Sha1).toHex().left(16);
  m_nom = QDir(dossier).filePath(QStringLiteral("fenlor-") + QString::fromLatin1(empreinte));
}

bool InstanceUnique::AppelleAutre() const {
  QLocalSocket prise;
  prise.connectToServer(m_nom);
  if (!prise.waitForConnected(patience)) return false;
  prise.write(demande);
  // One that hangs does not keep the user from his books: the lock will tell.
  return prise.waitForReadyRead(patience) && prise.readLine() == reponse;
}

bool InstanceUnique::Ecoute(std::function<void()> appel) {
  m_appel = std::move(appel);
  m_serveur.setSocketOptions(QLocalServer::UserAccessOption);
  QLocalServer::removeServer(m_nom);
  if (!m_serveur.listen(m_nom)) return false;
  QObject::connect(&m_serveur, &QLocalServer::newConnection, &m_serveur, [this] {
    while (QLocalSocket* prise = m_serveur.nextPendingConnection()) {
      QObject::connect(prise, &QLocalSocket::disconnected, prise, &QObject::deleteLater);
      const auto lit = [this, prise] {
        if (!prise->canReadLine() || prise->readLine() != demande) return;
        prise->write(reponse);
        prise->flush();
        m_appel();
      };
      QObject::connect(prise, &QLocalSocket::readyRead, prise, lit);
      lit();
    }
  });
  return true;
}

}  // namespace fenlor
