#include "core/textes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

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
}

/// Every number of a message in the sources, wherever it stands, is one that can be shown.
TEST(Textes, ToutNumeroEmployeAUnTexte) {
  const std::regex commentaire("//.*"), numero("\\b(3[0-4][0-9]{2})\\b"),
      nomme("\\b(?:Err|Question|Info)\\w+ = (\\d+)");
  const auto sources = std::filesystem::path(__FILE__).parent_path() / "../../src";
  std::set<unsigned> employes;
  for (const auto& entree : std::filesystem::recursive_directory_iterator(sources)) {
    const std::string extension = entree.path().extension();
    if (extension != ".cpp" && extension != ".h") continue;
    std::ifstream fichier(entree.path());
    for (std::string ligne; std::getline(fichier, ligne);) {
      ligne = std::regex_replace(ligne, commentaire, "");
      for (const std::regex& forme : {numero, nomme})
        for (std::sregex_iterator i(ligne.begin(), ligne.end(), forme), fin; i != fin; ++i)
          employes.insert(static_cast<unsigned>(std::stoul((*i)[1])));
    }
  }
  EXPECT_GT(employes.size(), 150u);
  employes.erase(employes.begin(), employes.lower_bound(3000));  // the store has codes of its own
  for (const unsigned n : employes)
    EXPECT_EQ(TexteErreur(n, {}).find(Texte(FormatErreurInconnue).substr(0, 20)), std::string::npos) << n;
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
