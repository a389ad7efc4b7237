#include "ui/modeleliste.h"

#include <gtest/gtest.h>

#include "store/texte1252.h"

namespace fenlor::test {

namespace {

using namespace Qt::Literals::StringLiterals;
using Donnee = ModeleListe::Donnee;

std::vector<Donnee> Ordre(const ModeleListe& modele) {
  std::vector<Donnee> ordre;
  for (int i = 0; i < modele.NbLignes(); ++i) ordre.push_back(modele.DonneeDe(i));
  return ordre;
}

TEST(LignesDeListe, SortIsStableAndKeepsTheLastRow) {
  ModeleListe modele;
  modele.PoseColonnes(LitColonnes("Code|L|80|Nom|L|80"));
  modele.Remplit({31, 12, 32, 11, 30, 99});
  const ModeleListe::Comparaison parDizaine = [](Donnee a, Donnee b, int colonne) {
    return colonne == 0 ? int(a / 10) - int(b / 10) : 0;
  };
  modele.Trie(1, parDizaine);
  EXPECT_EQ(Ordre(modele), (std::vector<Donnee>{31, 12, 32, 11, 30, 99}));
  modele.DerniereFixe(true);
  modele.Change(5, "", 5);
  const QPersistentModelIndex suivi(modele.index(3, 1));
  modele.Trie(0, parDizaine);
  EXPECT_EQ(Ordre(modele), (std::vector<Donnee>{12, 11, 31, 32, 30, 5}));
  EXPECT_EQ(suivi.row(), 1);
  EXPECT_EQ(modele.NbLectures(), 0u);
  modele.DerniereFixe(false);
  modele.Trie(0, parDizaine);
  EXPECT_EQ(Ordre(modele), (std::vector<Donnee>{5, 12, 11, 31, 32, 30}));
  modele.Vide();
  modele.DerniereFixe(true);
  modele.Trie(0, parDizaine);
  EXPECT_EQ(modele.NbLignes(), 0);
}

TEST(LignesDeListe, RowsWithTextsOfTheirOwn) {
  ModeleListe modele;
  modele.PoseColonnes(LitColonnes("Compte|L|20|Montant|R|20"));
  EXPECT_EQ(modele.Ajoute("  7066|Honoraires   perçus|de trop"_w, 7), 0);
  EXPECT_EQ(modele.Ajoute("6061", 8), 1);
  EXPECT_EQ(modele.Champ(0, 1), u"Honoraires perçus"_s);
  EXPECT_EQ(modele.Champ(1, 1), QString());
  EXPECT_EQ(modele.Champ(9, 0), QString());
  modele.Change(0, "7067", 9);
  EXPECT_EQ(modele.Champ(0, 0), u"7067"_s);
  modele.Supprime(0);
  EXPECT_EQ(modele.Champ(0, 0), u"6061"_s);
  EXPECT_EQ(modele.LigneDe(8), 0);
  EXPECT_EQ(modele.LigneDe(9), -1);
}

TEST(LignesDeListe, RowsInsertedInTheMiddle) {
  ModeleListe modele;
  modele.PoseColonnes(LitColonnes("Compte|L|20"));
  modele.PoseTextes([](Donnee donnee) { return "lu " + std::to_string(donnee); });
  modele.Remplit({1, 2, 0});
  EXPECT_EQ(modele.Champ(1, 0), u"lu 2"_s);
  const QPersistentModelIndex deux(modele.index(1, 0));
  modele.Insere(1, "propre", 9);
  EXPECT_EQ(modele.Champ(1, 0), u"propre"_s);
  EXPECT_EQ(modele.Champ(2, 0), u"lu 2"_s) << "rows below are not those painted before";
  EXPECT_EQ(deux.row(), 2);
  modele.Insere(-1, "premier", 10);
  modele.Insere(99, "dernier", 11);
  EXPECT_EQ(Ordre(modele), (std::vector<Donnee>{10, 1, 9, 2, 0, 11}));
}

TEST(LignesDeListe, ForgottenTextsAreFetchedAgain) {
  std::string texte = "avant";
  ModeleListe modele;
  modele.PoseColonnes(LitColonnes("Code|L|80"));
  modele.PoseTextes([&](Donnee) { return texte; });
  modele.Remplit({1, 2});
  EXPECT_EQ(modele.Champ(0, 0), u"avant"_s);
  texte = "depuis";
  EXPECT_EQ(modele.Champ(0, 0), u"avant"_s);
  modele.Oublie();
  EXPECT_EQ(modele.Champ(0, 0), u"depuis"_s);
  EXPECT_EQ(modele.NbLectures(), 2u);
}

}  // namespace

}  // namespace fenlor::test
