#include "core/mouvements.h"

#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

class MouvementsTest : public CabinetDeTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CreeExercice("2003"));
    od.Rec.Mouvement = Magasin().GetFreeMouvementsID(App().PathExercice, JournalOD);
    od.Rec.Journal = JournalOD;
    od.Rec.Genre = GenreOD;
    od.Rec.Date = FaitDate(9, 3, 2003);
    od.Rec.Ligne = 1;
    PoseTexte(od.Rec.Libelle, "Régularisation"_w);
    ASSERT_NE(od.AddLine(od.FaitLigne(LitCompte("512"), -10, true)), 0u);
  }
  COpDiverses od{App()};
};

TEST_F(MouvementsTest, LigneDEcartEnFranc) {
  EXPECT_TRUE(od.AddEcart(0, false));
  EXPECT_EQ(Lignes(od.Rec.Mouvement).size(), 1u);
  ASSERT_TRUE(od.AddEcart(10, false));
  const Line ecart = Lignes(od.Rec.Mouvement).at(1);
  EXPECT_STREQ(ecart.Compte, "6580000000");
  EXPECT_EQ(+ecart.Sens, 0u);
  EXPECT_EQ(+ecart.MontantFranc, 10);
  EXPECT_EQ(+ecart.MontantEuro, 1.52);
}

TEST_F(MouvementsTest, EcartSansCompte) {
  for (const char* compte : {"", "758999", "999999"}) {
    ASSERT_TRUE(Magasin().SetCompteEcartCredit(compte));
    EXPECT_FALSE(od.AddEcart(-1, true)) << compte;
    EXPECT_EQ(Lignes(od.Rec.Mouvement).size(), 1u);
  }
}

}  // namespace
}  // namespace fenlor::test
