// What is kept of units, in a file of a few hundred bytes, against a naive list of texts.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "outils/cabinetdetest.h"
#include "outils/systemefautif.h"
#include "store/annulation.h"
#include "store/qvapi.h"

namespace fenlor {
namespace {

constexpr u64 Place = 600;

struct RetenuesTest : test::DisqueDeTest, ::testing::Test {
  RetenuesTest() { retenues.dossier = dossier.Chemin(); }
  void Garde(const std::string& nom, const std::string& texte) {
    retenues.Commence(texte.size() + 200);
    retenues.Ajoute(UniteRetenue::TexteRetenu{FichierTextes, "f", "avant " + nom, texte});
    retenues.Acheve(nom);
  }
  std::string Nom(bool refaire) { return retenues.Nom(refaire) ? *retenues.Nom(refaire) : std::string(); }

  test::DossierTemporaire dossier;
  Retenues retenues{Disque, Place};
};

TEST_F(RetenuesTest, LesPlusAnciennesCedentLaPlaceParLeurNom) {
  struct Une {
    std::string nom, texte;
    bool perdue = false;
  };
  std::vector<Une> faites, defaites;
  std::mt19937 hasard(20261122);
  const auto entre = [&](unsigned a, unsigned b) { return std::uniform_int_distribution(a, b)(hasard); };
  unsigned perdues = 0, lues = 0;
  for (unsigned n = 0; n < 4000; ++n) {
    const bool refaire = entre(0, 1) != 0;
    if (entre(0, 1) != 0) {
      const Une une{std::to_string(n), std::string(entre(1, 300), static_cast<char>('a' + n % 26))};
      Garde(une.nom, une.texte);
      defaites.clear();
      faites.push_back(une);
    } else if (retenues.Nom(refaire) && !retenues.Perte(refaire)) {
      auto &de = refaire ? defaites : faites, &vers = refaire ? faites : defaites;
      retenues.Bascule(refaire);
      vers.push_back(de.back());
      de.pop_back();
    }
    for (const bool sens : {false, true}) {
      const auto& pile = sens ? defaites : faites;
      ASSERT_EQ(pile.empty() ? "" : pile.back().nom, Nom(sens)) << n;
      UniteRetenue unite;
      const int code = retenues.Lit(sens, unite);
      if (pile.empty() || code == ErrRetourAncien) {
        ASSERT_EQ(code, pile.empty() ? ErrRetour : ErrRetourAncien);
        perdues += code == ErrRetourAncien;
        if (!pile.empty()) faites = {faites.back()};  // nothing stands below it
        continue;
      }
      ASSERT_EQ(0, code);
      ++lues;
      EXPECT_EQ(sens ? unite.texte->avant : unite.texte->apres, pile.back().texte);
      EXPECT_EQ(sens ? unite.texte->apres : unite.texte->avant, "avant " + pile.back().nom);
    }
  }
  EXPECT_GT(perdues, 100u);
  EXPECT_GT(lues, 1000u);
  EXPECT_TRUE(std::filesystem::is_empty(dossier.Chemin())) << "the file has no name";
}

TEST_F(RetenuesTest, CeQuiNePeutEtreGardeLeDit) {
  Garde("une", "1");
  Garde("enorme", std::string(Place, 'x'));
  EXPECT_EQ(ErrRetourGrand, retenues.Perte(false));
  EXPECT_EQ("enorme", Nom(false));
  Garde("deux", "2");
  EXPECT_EQ(0, retenues.Perte(false));
  Disque.Programme(1, ENOSPC, SystemeFautif::Ecriture);
  Garde("sans place", "3");
  EXPECT_EQ(ENOSPC, retenues.Perte(false));
  UniteRetenue unite;
  EXPECT_EQ(ENOSPC, retenues.Lit(false, unite));
  retenues.Oublie();
  Disque.Programme(1, EROFS, SystemeFautif::Ouvertures);
  Garde("sans fichier", "4");
  EXPECT_EQ(EROFS, retenues.Perte(false));
  Garde("cinq", "5");
  Disque.Programme(1, EIO, SystemeFautif::Lectures);
  EXPECT_EQ(EIO, retenues.Lit(false, unite));
  EXPECT_EQ(0, retenues.Lit(false, unite)) << "a disk that did not answer may answer later";
}

}  // namespace
}  // namespace fenlor
