#include "store/champs.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "store/definitions.h"

namespace fenlor {
namespace {

TEST(Champs, EveryByteOfEveryRecordHasItsRow) {
  const std::map<std::string, std::size_t> tailles = {
      {"Plan", 300},           {"Rubrique", 383},     {"Banque", 170},        {"Mouvement", 148},
      {"EcrSimple", 382},      {"EcrStandard", 249},  {"LineTresor", 165},    {"Line", 505},
      {"Immobilisation", 233}, {"Amortissement", 74}, {"EcrituresAuto", 204}, {"TauxDegressif", 24},
      {"RecetteLiee", 160},    {"DepenseLiee", 160},  {"Statistiques", 84},
  };
  for (const auto& [nom, taille] : tailles) {
    std::size_t place = 0;
    std::map<std::string, int> vus;
    for (const Champ& c : ChampsDe(nom)) {
      EXPECT_EQ(c.offset, place) << nom << "." << c.nom;
      EXPECT_EQ(++vus[c.nom], 1) << nom << "." << c.nom;
      EXPECT_EQ(std::string(c.nom).starts_with("Reserve"), c.type == TypeChamp::Reserve)
          << nom << "." << c.nom;
      EXPECT_EQ(
          std::string(c.nom).find("Date") != std::string::npos || std::string(c.nom) == "DerniereEcheance",
          c.type == TypeChamp::DateC)
          << nom << "." << c.nom;
      place += c.taille;
    }
    EXPECT_EQ(place, taille) << nom;
  }
  EXPECT_TRUE(ChampsDe("Inconnu").empty());
}

TEST(Champs, EveryIndexedFileHasItsFields) {
  for (const DefinitionFichier& d : Definitions()) {
    ASSERT_FALSE(Champs(d.numero).empty()) << d.nom;
    const Champ& dernier = Champs(d.numero).back();
    EXPECT_EQ(dernier.offset + dernier.taille, d.taille) << d.nom;
  }
  EXPECT_TRUE(Champs(1).empty());
}

}  // namespace
}  // namespace fenlor
