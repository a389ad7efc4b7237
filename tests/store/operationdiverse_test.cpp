// Entries made of free lines, and single lines that change.
#include "store/livres.h"

namespace fenlor::test {
namespace {

TEST(OperationDiverse, UneLigneSeule) {
  Livres livres;
  const std::string ex = livres.Exercice();
  ASSERT_NE(livres->AddLines(ex, LigneOD(1, Mars15, "5121000000", true, 25)), 0u);
  EXPECT_FALSE(livres->IsRappLineInMouvements(1));
  Line rapprochee = LigneOD(1, Mars15, "5122000000", false, 25);
  rapprochee.Rapprochee = 1;
  ASSERT_NE(livres->AddLines(ex, rapprochee), 0u);
  EXPECT_TRUE(livres->IsRappLineInMouvements(1));
  const struct {
    u32 mouvement;
    const char* compte;
    f64 euro;
    int code;
  } refus[] = {{1, "5121000000", 0, ErrEcritureVide},
               {1, "5199000000", 1, ErrCompteAbsent},
               {0, "5121000000", 1, ErrValeur}};
  for (const auto& r : refus) {
    EXPECT_EQ(livres->AddLines(ex, LigneOD(r.mouvement, Mars15, r.compte, true, r.euro)), 0u);
    EXPECT_EQ(livres->QVFileErrorCode(), r.code);
  }
}

TEST(OperationDiverse, ChangerUneLigneRepriseSesEffets) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrSimple rec = EcritureSimple(JournalDepenses, Mars15, "6061000000", 200, 119.6, 19.6);
  const u32 mouvement = livres->AddEcrSimple(ex, rec);
  const std::vector<Position> positions = livres->LignesMouvement(ex, mouvement);
  Line perso{};
  ASSERT_TRUE(livres->ReadLines(ex, positions[2], perso));
  perso.MontantEuro = -0.4;
  perso.MontantFranc = -2.62;
  PoseTexte(perso.Compte, "5800000000");
  perso.Date = FaitDate(2, 4, 2003);
  ASSERT_TRUE(livres->UpdateLines(ex, positions[2], perso));
  EXPECT_EQ(+livres.Compte("6061000000").PersoEuro, 0.4);
  EXPECT_EQ(+livres.Compte("1080000000").DebitEuro, 0);
  EXPECT_EQ(+livres.Compte("5800000000").CreditEuro, 0.4);
  Line relue{};
  ASSERT_TRUE(livres->ReadLines(ex, positions[2], relue));
  EXPECT_EQ(+relue.Sens, 1u);
  EXPECT_EQ(+relue.MontantEuro, 0.4);
  EXPECT_EQ(+relue.TypeCompte, Autre);
  EXPECT_TRUE(livres->QVVerifie(FichierJournal).anomalies.empty());
  PoseTexte(relue.Compte, "5999000000");
  EXPECT_FALSE(livres->UpdateLines(ex, positions[2], relue));
  EXPECT_EQ(livres->QVFileErrorCode(), ErrCompteAbsent);
}

}  // namespace
}  // namespace fenlor::test
