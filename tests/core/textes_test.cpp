#include "core/textes.h"

#include <gtest/gtest.h>

#include "core/dialogue.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

TEST(Textes, TableDesErreurs) {
  for (unsigned numero = 3000; numero <= 3121; ++numero) {
    const bool trou = numero == 3048 || numero == 3114;
    EXPECT_EQ(TexteExiste(numero), !trou) << numero;
    EXPECT_EQ(Texte(numero).empty(), trou) << numero;
  }
  EXPECT_EQ(Texte(3104), "La date est incorrecte.");
  EXPECT_EQ(Texte(3016), "L'écriture \"%s\" est validée !\nLa suppression est impossible."_w);
  EXPECT_EQ(Texte(3121), "Erreur (%d) à l'execution de QVUpdate.exe"_w);
  EXPECT_FALSE(TexteExiste(0));
}

TEST(Textes, Formats) {
  EXPECT_EQ(RemplitFormat("%s: %d/%ld/%u 100%%", {"a", "1", "2", "3"}), "a: 1/2/3 100%");
  EXPECT_EQ(RemplitFormat("%s-%s", {"%s"}), "%s-");  // arguments are not formats; missing ones are empty
  EXPECT_EQ(RemplitFormat("50% de %x%", {"a"}), "50% de %x%");
  EXPECT_EQ(RemplitFormat("rien", {"a"}), "rien");
  EXPECT_EQ(TexteErreur(3107, {"19,60"}), "Le compte de T.V.A. à 19,60% est introuvable !"_w);
  EXPECT_EQ(TexteErreur(ErrMagasin, {"Disque plein"}), "Disque plein");
}

TEST(Textes, ErreurInconnue) {
  const std::string inconnue = "Erreur non répertoriée (identificateur inconnu : 3048)"_w;
  EXPECT_EQ(TexteErreur(3048, {}), inconnue);
  EXPECT_EQ(TexteErreur(MotOui, {}), "Erreur non répertoriée (identificateur inconnu : 5339)"_w);
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
