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

TEST(Champs, OffsetsOfTheDataFiles) {
  const struct {
    const char *rec, *champ;
    unsigned offset, taille;
    TypeChamp type;
  } cas[] = {
      {"Plan", "Rubrique", 103, 4, TypeChamp::Texte},
      {"Plan", "CompteTVA", 111, 11, TypeChamp::Compte},
      {"Plan", "RappDebitEuro", 242, 8, TypeChamp::Montant},
      {"Rubrique", "Formule", 89, 128, TypeChamp::Texte},
      {"Line", "LienA", 122, 4, TypeChamp::Entier32},
      {"Line", "LienPoste", 120, 2, TypeChamp::EntierU16},
      {"Line", "DateRemise", 461, 4, TypeChamp::DateC},
      {"Line", "Sens", 265, 4, TypeChamp::EntierU32},
      {"Banque", "Sens", 118, 2, TypeChamp::Entier16},
      {"Immobilisation", "ModeDuree", 145, 1, TypeChamp::EntierU8},
      {"DepenseLiee", "Tiers", 26, 9, TypeChamp::Texte},
  };
  for (const auto& c : cas) {
    const Champ* trouve = nullptr;
    for (const Champ& champ : ChampsDe(c.rec)) {
      if (std::string(champ.nom) == c.champ) trouve = &champ;
    }
    ASSERT_NE(trouve, nullptr) << c.champ;
    EXPECT_TRUE(trouve->offset == c.offset && trouve->taille == c.taille && trouve->type == c.type)
        << c.champ;
  }
}

}  // namespace
}  // namespace fenlor
