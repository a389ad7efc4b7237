#include "ui/textecoupe.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace fenlor::test {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Takes characters off the end one at a time, as the rule says.
QString Raccourcit(QString texte, int largeur, int marge, const QFontMetrics& mesure) {
  if (mesure.horizontalAdvance(texte) + marge <= largeur) return texte;
  const int suite = mesure.horizontalAdvance(u"..."_s);
  while (!texte.isEmpty() && mesure.horizontalAdvance(texte) + suite + marge > largeur) texte.chop(1);
  return texte + u"..."_s;
}

TEST(TexteCoupe, ClipTextKeepsWhatFits) {
  const QFontMetrics mesure(QApplication::font());
  for (const QString& texte :
       {u"Honoraires perçus à l'étranger"_s, u"AVAVAVAVAV To. Ty. Wä"_s, u"i"_s, QString(), u"12 345,67"_s}) {
    const int exact = mesure.horizontalAdvance(texte);
    EXPECT_EQ(ClipText(texte, exact + 12, 12, mesure), texte);
    for (int largeur = -5; largeur < exact + 20; ++largeur)
      ASSERT_EQ(ClipText(texte, largeur, 12, mesure), Raccourcit(texte, largeur, 12, mesure)) << largeur;
  }
  EXPECT_EQ(ClipText(u"Libellé"_s, 3, 4, mesure), u"..."_s);
}

TEST(TexteCoupe, ClipTextCutsNoCharacterInHalf) {
  const QFontMetrics mesure(QApplication::font());
  const QString accent = QString(u'e') + QChar(0x301);
  const QString paire = QString::fromUcs4(U"\U0001F600");
  for (const QString& signe : {accent, paire}) {
    const QString texte = signe.repeated(8);
    for (int largeur = 0; largeur < mesure.horizontalAdvance(texte); ++largeur) {
      const QString coupe = ClipText(texte, largeur, 0, mesure);
      ASSERT_TRUE(coupe.endsWith(u"..."_s));
      ASSERT_EQ((coupe.size() - 3) % 2, 0) << largeur;
    }
  }
}

}  // namespace

}  // namespace fenlor::test
