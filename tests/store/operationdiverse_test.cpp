// Entries made of free lines, and single lines that change.
#include "store/livres.h"

namespace fenlor::test {
namespace {

constexpr Date Mars15 = FaitDate(15, 3, 2003);

TEST(OperationDiverse, OperationDiverse) {
  Livres livres;
  const std::string ex = livres.Exercice();
  const u32 mouvement = livres->GetFreeMouvementsID(ex, 3);
  ASSERT_EQ(mouvement, 1u);
  Line debit = LigneOD(mouvement, Mars15, "5122000000", false, 25, "Vers la banque 2");
  debit.Rang = 40;
  debit.TypeCompte = 4;
  debit.Rapprochee = 1;
  ASSERT_NE(livres->AddLines(ex, debit), 0u);
  ASSERT_NE(livres->AddLines(ex, LigneOD(mouvement, Mars15, "5121000000", false, -25)), 0u);
  EXPECT_EQ(Decrit(livres.Lignes(mouvement)),
            (std::vector<std::string>{"5122000000 D 25.00/163.99", "5121000000 C 25.00/163.99"}));
  const Line premiere = livres.Lignes(mouvement)[0];
  EXPECT_EQ(+premiere.Role, RoleLibre);
  EXPECT_EQ(+premiere.TypeCompte, Tresorerie);
  EXPECT_EQ(LitTexte(premiere.Designation), "Vers la banque 2");
  EXPECT_EQ(+livres.Compte("5122000000").RappDebitEuro, 25);
  EXPECT_TRUE(livres->IsRappLineInMouvements(mouvement));
  EXPECT_EQ(livres->GetMouvementsLinesCount(mouvement), 2u);

  EXPECT_EQ(livres->AddLines(ex, LigneOD(mouvement, Mars15, "5121000000", true, 0)), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrEcritureVide);
  EXPECT_EQ(livres->AddLines(ex, LigneOD(mouvement, Mars15, "5199000000", true, 1)), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrCompteAbsent);
  EXPECT_EQ(livres->AddLines(ex, LigneOD(0, Mars15, "5121000000", true, 1)), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrValeur);
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
