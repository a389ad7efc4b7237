// The texts of all floors, read as sources: the numbers are what a user quotes, and what tells two texts
// apart.
#include <gtest/gtest.h>

#include <map>

#include "core/dialogue.h"
#include "core/erreurssaisie.h"
#include "outils/textessources.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

TEST(Textes, UnNumeroEstCeluiDUnSeulTexte) {
  std::map<unsigned, std::string> vus;
  for (const test::TexteSource& texte : test::TextesDesSources())
    EXPECT_TRUE(vus.emplace(texte.numero, texte.fichier).second)
        << texte.numero << ": " << texte.fichier << ", " << vus[texte.numero];
  EXPECT_GT(vus.size(), 500u);
}

TEST(Textes, Formats) {
  EXPECT_EQ(RemplitFormat("%s: %d/%ld/%u 100%%", {"a", "1", "2", "3"}), "a: 1/2/3 100%");
  EXPECT_EQ(RemplitFormat("%s-%s", {"%s"}), "%s-");  // arguments are not formats; missing ones are empty
  EXPECT_EQ(RemplitFormat("50% de %x%", {"a"}), "50% de %x%");
  EXPECT_EQ(RemplitFormat("rien", {"a"}), "rien");
  EXPECT_EQ(TexteFormat(ErrCompteTvaIntrouvable, {"19,60"}),
            "Le compte de T.V.A. à 19,60% est introuvable !"_w);
}

TEST(Progress, Pourcent) {
  EXPECT_EQ(PourcentProgress(1, 3), 33u);
  EXPECT_EQ(PourcentProgress(999, 1000), 99u);
  EXPECT_EQ(PourcentProgress(7, 5), 100u);
  EXPECT_EQ(PourcentProgress(7, 0), 0u);
  EXPECT_EQ(PourcentProgress(4'000'000'000u, 4'000'000'000u), 100u);
}

}  // namespace
}  // namespace fenlor
