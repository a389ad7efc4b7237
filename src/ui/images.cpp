#include "ui/images.h"

#include <QFile>

static void InitRessources() { Q_INIT_RESOURCE(icones); }

namespace fenlor {

namespace {

QString Chemin(const char* nom) {
  static const bool pret = (InitRessources(), true);
  (void)pret;
  return QStringLiteral(":/icones/%1.svg").arg(QLatin1String(nom));
}

}  // namespace

bool ImageExiste(const char* nom) { return QFile::exists(Chemin(nom)); }
QIcon Image(const char* nom) {
  const QString chemin = Chemin(nom);
  return QFile::exists(chemin) ? QIcon(chemin) : QIcon();
}

}  // namespace fenlor
