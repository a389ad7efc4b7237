
#include "outils/cabinetdetest.h"
#include "store/ouverture.h"
#include "store/profil.h"

namespace fenlor::test {
namespace {

class Comptes : public CabinetDeTest {};

TEST_F(Comptes, FormeLongueEtFormeCourte) {
  const struct {
    const char* texte;
    const char* longue;
    const char* courte;
  } cas[] = {{"512", "5120000000", "512"},
             {" 5 1\t2 ", "5120000000", "512"},
             {"530", "5300000000", "53"},
             {"6061é", "6061É00000", "6061É"},
             {"123456789012", "1234567890", "123456789"},
             {"0", "0000000000", "0"},
             {"", "", ""},
             {"  ", "", ""}};
  for (const auto& c : cas) {
    const std::string longue = QVAPI::GetLongCompte(*DepuisUtf8(c.texte));
    EXPECT_EQ(VersUtf8(longue), c.longue) << c.texte;
    EXPECT_EQ(QVAPI::GetLongCompte(longue), longue);
    const std::string courte = Magasin().GetShortCompte(longue);
    EXPECT_EQ(VersUtf8(courte), c.courte) << c.texte;
    EXPECT_EQ(Magasin().GetShortCompte(courte), courte);
  }
}

TEST_F(Comptes, ZerosSignificatifs) {
  const auto regle = [&](const char* zeros, const char* nombre) {
    ASSERT_TRUE(Magasin().Reglages().Ecrit({{"Préférences"_w, "Zéros Significatifs"_w, zeros},
                                            {"Préférences"_w, "Nombre de chiffres", nombre}}));
  };
  const struct {
    const char *zeros, *nombre, *longue, *courte;
  } cas[] = {{"oui", "3", "5300000000", "530"},  {"Oui", "3", "5120000000", "512"},
             {"Oui", "4", "5120000000", "5120"}, {"Oui", "", "5300000000", "53"},
             {"Oui", "abc", "0000000000", "0"},  {"Oui", "99", "5300000000", "5300000000"},
             {"Non", "3", "5300000000", "53"}};
  for (const auto& c : cas) {
    regle(c.zeros, c.nombre);
    const std::string courte = Magasin().GetShortCompte(c.longue);
    EXPECT_EQ(courte, c.courte) << c.zeros << ' ' << c.nombre;
    EXPECT_EQ(Magasin().GetShortCompte(courte), courte);
  }
}

TEST_F(Comptes, ComptesParticuliers) {
  EXPECT_EQ(Magasin().GetComptePerso(), "");
  EXPECT_TRUE(Magasin().SetComptePerso("108") && Magasin().SetCompteVireFrom("582"));
  EXPECT_TRUE(Magasin().SetCompteVireTo("581") && Magasin().SetCompteEcartCredit("758"));
  EXPECT_TRUE(Magasin().SetCompteEcartDebit("658"));
  Profil reglages(Magasin().SystemeFichiers(), Magasin().QVGetFilename(10099, 0));
  EXPECT_EQ(reglages.Lit("COMPTES", "Prelevement"), "1080000000");
  EXPECT_EQ(reglages.Lit("COMPTES", "Virement Dépense"_w), "5820000000");
  EXPECT_EQ(reglages.Lit("COMPTES", "Virement Recette"), "5810000000");
  EXPECT_EQ(reglages.Lit("COMPTES", "Ecart Credit"), "7580000000");
  EXPECT_EQ(reglages.Lit("COMPTES", "Ecart Debit"), "6580000000");
  // A number that was typed into the file by hand comes out in the stored form.
  ASSERT_TRUE(reglages.Ecrit("COMPTES", "Prelevement", "455 1"));
  EXPECT_EQ(Magasin().GetComptePerso(), "4551000000");
  EXPECT_TRUE(Magasin().SetComptePerso(""));
  EXPECT_EQ(Magasin().GetComptePerso(), "");
}

TEST_F(Comptes, AnomaliesBeyondTheFirstHundredAreCounted) {
  ASSERT_TRUE(CreeExercice("2003"));
  for (int n = 100; n < 250; ++n) ASSERT_TRUE(PoseCompte("9" + std::to_string(n), 4));
  const Ouverture fichier(Magasin(), FichierComptes);
  for (std::string cle; Magasin().QVFirstKey(69, cle);) ASSERT_TRUE(Magasin().QVDelKey(69, cle));
  const EtatFichier etat = Magasin().QVVerifie(FichierComptes);
  ASSERT_EQ(etat.anomalies.size(), 101u);
  // One for each record, one for the key.
  EXPECT_THAT(etat.anomalies.back(), HasSubstr(" " + std::to_string(etat.vivants + 1 - 100) + " autre(s)"));
}

TEST_F(Comptes, TauxEnVigueur) {
  using Lignes = std::vector<std::string>;
  const Date mars = FaitDate(15, 3, 2003);
  const struct {
    Lignes lignes;
    Date date;
    f64 taux;
  } cas[] = {
      {{}, mars, 6.55957},
      {{"01/01/1999|6,5"}, mars, 6.5},
      {{"01/01/1999|6.5"}, FaitDate(31, 12, 1998), 6.5},
      {{"01/01/2003|7", "15/03/2003|8", "16/03/2003|9", "01/01/1999|6,5"}, mars, 8},
      {{"01/01/2003|7", "01/01/1999|6,5"}, FaitDate(1, 1, 1990), 6.5},
      {{"01/01/1999|6,5", "01/01/1999|6,6"}, mars, 6.6},
      {{"n'importe quoi", "01/01/1999|", "31/02/2001|7", "01/01/2000|-3", "01/01/2000|abc"}, mars, 6.55957},
  };
  for (const auto& c : cas) {
    ASSERT_TRUE(Magasin().Reglages().Ecrit("TAUX EURO", "", std::nullopt));
    for (std::size_t i = 0; i < c.lignes.size(); ++i)
      ASSERT_TRUE(Magasin().Reglages().Ecrit("TAUX EURO", std::to_string(i + 1), c.lignes[i]));
    EXPECT_EQ(Magasin().GetTauxEuro(c.date), c.taux) << (c.lignes.empty() ? "" : c.lignes[0]);
  }
}

TEST_F(Comptes, Conversions) {
  EXPECT_EQ(QVAPI::ConvertFrancToEuro(6.55957, 100), 15.24);
  EXPECT_EQ(QVAPI::ConvertEuroToFranc(6.55957, 15.24), 99.97);
  EXPECT_EQ(QVAPI::ConvertFrancToEuro(6.55957, 0.01), 0.0);
  EXPECT_EQ(QVAPI::ConvertEuroToFranc(6.55957, -120), -787.15);
  // A half goes upward on both sides of zero.
  EXPECT_EQ(QVAPI::ConvertFrancToEuro(8, 0.04), 0.01);
  EXPECT_EQ(QVAPI::ConvertFrancToEuro(8, -0.04), 0.0);
}

}  // namespace
}  // namespace fenlor::test
