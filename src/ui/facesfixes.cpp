#include "ui/facesfixes.h"

#include <QFontDatabase>

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

QString FaceFixe() {
  for (const QString& face : {u"DejaVu Sans Mono"_s, u"Liberation Mono"_s, u"Noto Sans Mono"_s})
    if (QFontDatabase::hasFamily(face)) return face;
  return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

/// A face whose figures are all as wide.
static QString Proportionnelle() {
  for (const QString& face : {u"Liberation Sans"_s, u"Arimo"_s, u"Noto Sans"_s, u"DejaVu Sans"_s})
    if (QFontDatabase::hasFamily(face)) return face;
  return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

QString FaceImprimee(const QString& face) {
  const QString nom = face.trimmed();
  if (nom == QLatin1String(FaceProportionnelle)) return Proportionnelle();
  const bool courier = nom.isEmpty() || nom.compare(u"Courier"_s, Qt::CaseInsensitive) == 0;
  return courier || !QFontDatabase::hasFamily(nom) ? FaceFixe() : nom;
}

}  // namespace fenlor
