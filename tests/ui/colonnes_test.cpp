#include "ui/colonnes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <numeric>

#include "store/texte1252.h"

namespace fenlor::test {

namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Colonnes, Description) {
  struct Cas {
    std::string texte;
    std::vector<std::tuple<QString, Qt::AlignmentFlag, int>> attendu;
  };
  const Cas cas[] = {
      {"Code|L|80|Solde|R|100", {{u"Code"_s, Qt::AlignLeft, 80}, {u"Solde"_s, Qt::AlignRight, 100}}},
      {"Code|L|80|", {{u"Code"_s, Qt::AlignLeft, 80}}},
      {"Code|L|80||R|40|Solde|R|100", {{u"Code"_s, Qt::AlignLeft, 80}}},
      {"Rub|X|40|Mois|C|30", {{u"Rub"_s, Qt::AlignLeft, 40}, {u"Mois"_s, Qt::AlignHCenter, 30}}},
      {"Désignation des é|L|300"_w, {{u"Désignation des é"_s, Qt::AlignLeft, 300}}},
      {"Code", {{u"Code"_s, Qt::AlignLeft, 0}}},
      {"Code|L|abc", {{u"Code"_s, Qt::AlignLeft, 0}}},
      {"", {}},
      {"|L|80", {}},
  };
  for (const Cas& c : cas) {
    const std::vector<Colonne> lues = LitColonnes(c.texte);
    ASSERT_EQ(lues.size(), c.attendu.size()) << c.texte;
    for (std::size_t i = 0; i < lues.size(); ++i) {
      const auto& [titre, alignement, largeur] = c.attendu[i];
      EXPECT_EQ(lues[i].titre, titre);
      EXPECT_EQ(lues[i].alignement, Qt::Alignment(alignement)) << c.texte;
      EXPECT_EQ(lues[i].largeur, largeur) << c.texte;
    }
  }
}

TEST(Colonnes, PercentagesFillTheClientWidth) {
  const auto colonnes = LitColonnes("Compte|L|20|Libelle|L|40|Paiement|R|20|Montant|R|20");
  for (int largeur = 0; largeur < 1500; ++largeur) {
    const std::vector<int> largeurs = LargeursPourcent(colonnes, largeur);
    ASSERT_EQ(std::accumulate(largeurs.begin(), largeurs.end(), 0), largeur);
    ASSERT_EQ(largeurs[1], static_cast<int>(40 * 0.01 * largeur));
  }
  EXPECT_EQ(LargeursPourcent(LitColonnes("A|L|33|B|L|33|C|L|33"), 100), (std::vector<int>{33, 33, 34}));
  EXPECT_EQ(LargeursPourcent(LitColonnes("A|L|90|B|L|90"), 100), (std::vector<int>{90, 10}));
  EXPECT_EQ(LargeursPourcent(LitColonnes("A|L|130|B|L|20"), 100), (std::vector<int>{130, 0}));
  EXPECT_TRUE(LargeursPourcent({}, 100).empty());
}

/// Takes characters off the end one at a time, as the rule says.
QString Raccourcit(QString texte, int largeur, int marge, const QFontMetrics& mesure) {
  if (mesure.horizontalAdvance(texte) + marge <= largeur) return texte;
  const int suite = mesure.horizontalAdvance(u"..."_s);
  while (!texte.isEmpty() && mesure.horizontalAdvance(texte) + suite + marge > largeur) texte.chop(1);
  return texte + u"..."_s;
}

TEST(Colonnes, ClipTextKeepsWhatFits) {
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

TEST(Colonnes, ClipTextCutsNoCharacterInHalf) {
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
