#include "ui/traductions.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QLibraryInfo>
#include <string_view>

using namespace std::string_view_literals;
using namespace Qt::Literals::StringLiterals;

static void InitRessources() { Q_INIT_RESOURCE(complement); }

namespace fenlor {

namespace {

/// The texts of printing by the toolkit's own.
QJsonObject LitImpression() {
  InitRessources();
  QFile fichier(u":/traductions/impression.json"_s);
  return fichier.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(fichier.readAll()).object()
                                           : QJsonObject();
}

bool DeLImpression(std::string_view contexte) {
  for (const std::string_view debut : {"QPrint", "QUnixPrint", "QPageSetup", "QCups", "QCUPS"})
    if (contexte.starts_with(debut)) return true;
  return false;
}

}  // namespace

QString Traductions::Complement::translate(const char* contexte, const char* texte, const char*, int) const {
  if (contexte && texte && DeLImpression(contexte))
    if (const QString francais = m_impression[QString::fromUtf8(texte)].toString(); !francais.isEmpty())
      return francais;
  // One key, one name: what is written on it, as the help says.
  if (contexte && texte && contexte == "QShortcut"sv && texte == "Return"sv) return QStringLiteral("Entrée");
  return {};
}

Traductions::Complement::Complement() : m_impression(LitImpression()) {}

Traductions::Traductions() {
  if (m_systeme.load(QStringLiteral(":/traductions/qtbase_fr.qm")) ||
      m_systeme.load(QStringLiteral("qtbase_fr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&m_systeme);
  QCoreApplication::installTranslator(&m_complement);
}

Traductions::~Traductions() {
  QCoreApplication::removeTranslator(&m_complement);
  QCoreApplication::removeTranslator(&m_systeme);
}

}  // namespace fenlor
