#include "assets/plusvalues.h"

#include "core/btfiles.h"
#include "outils/cabinetdetest.h"
#include "store/dates.h"

namespace fenlor::test {
namespace {

Immobilisation Cede(const char* achat, const char* cession, f64 valeur, f64 prix, f64 valeurEuro,
                    f64 prixEuro) {
  Immobilisation immo{};
  immo.DateAchat = GetDate(achat);
  immo.DateCession = GetDate(cession);
  immo.ValeurAmortissableFranc = valeur;
  immo.PrixCessionFranc = prix;
  immo.ValeurAmortissableEuro = valeurEuro;
  immo.PrixCessionEuro = prixEuro;
  return immo;
}

TEST(PlusValue, ChaqueBranche) {
  const struct {
    const char *cas, *cession;
    f64 valeur, prix, cumul, court, longTerme;  ///< Franc; a tenth of it in Euro
  } cas[] = {
      {"a day short of two years", "09/04/2005", 1000, 1500, 400, 900, 0},
      {"two years to the day", "10/04/2005", 1000, 1500, 400, 400, 500},
      {"no value", "10/04/2005", 0, 1500, 0, 0, 1500},
      {"no value, early", "10/04/2004", 0, 1500, 0, 1500, 0},
      {"negative value", "10/04/2005", -10, 1500, 400, 1910, 0},
      {"below the depreciation", "10/04/2005", 1000, 900, 400, 300, 0},
      {"scrapped", "10/04/2005", 1000, 0, 400, -600, 0},
  };
  const auto immo = [](const auto& c) {
    return Cede("10/04/2003", c.cession, c.valeur, c.prix, c.valeur / 10, c.prix / 10);
  };
  for (const auto& c : cas) {
    const PlusValue pv = CalculPlusValue(immo(c), {c.cumul, c.cumul / 10});
    EXPECT_DOUBLE_EQ(pv.court.franc, c.court) << c.cas;
    EXPECT_DOUBLE_EQ(pv.aLongTerme.franc, c.longTerme) << c.cas;
    EXPECT_DOUBLE_EQ(pv.court.euro, c.court / 10) << c.cas;
    EXPECT_DOUBLE_EQ(pv.aLongTerme.euro, c.longTerme / 10) << c.cas;
  }
  Immobilisation autre = immo(cas[1]);
  autre.PrixCessionEuro = 90;
  EXPECT_DOUBLE_EQ(CalculPlusValue(autre, {400, 40}).aLongTerme.euro, -10) << "the Franc figures decide";
  const PlusValue pv = CalculPlusValue(autre, {400, 40}, PartageEuro::ParLuiMeme);
  EXPECT_DOUBLE_EQ(pv.court.euro, 30);
  EXPECT_EQ(pv.aLongTerme.euro, 0);
  EXPECT_DOUBLE_EQ(pv.aLongTerme.franc, 500);
}

class Sommes : public CabinetDeTest {
 protected:
  void Ajoute(Immobilisation immo) {
    immo.Numero = ++m_numero;
    immo.TauxAnnuel = 20;
    immo.Duree = 5;
    ASSERT_TRUE(Magasin().WriteImmobilisations(immo));
  }

 private:
  u32 m_numero = 0;
};

TEST_F(Sommes, DeToutesLesImmobilisations) {
  ASSERT_TRUE(CreeExercice("2005"));
  const auto bien = [&](const char* achat, const char* cession, f64 euro, f64 prix) {
    Ajoute(Cede(achat, cession, euro * 10, prix * 10, euro, prix));
  };
  bien("01/01/2004", "", 1000, 0);               // 200 a year
  bien("01/01/2001", "30/06/2005", 1000, 300);   // 100 this year, 900 in all: +200, short
  bien("01/01/2001", "31/12/2004", 1000, 5000);  // before the exercice
  bien("01/01/2001", "01/01/2006", 1000, 5000);  // after it: 200
  bien("01/01/2001", "01/01/2005", 1000, 1500);  // one day: 0.56; 800.56 short, 500 long
  bien("01/07/2006", "", 1000, 0);               // bought later
  Amortissement reel{};
  reel.Numero = 1;
  reel.Annee = 2005;
  reel.ReelEuro = 999;
  ASSERT_TRUE(Magasin().WriteAmortissements(reel));

  SommesImmobilisations s;
  ASSERT_TRUE(CalculSommesImmobilisations(App(), s));
  EXPECT_NEAR(s.amortissements.euro, 200 + 100 + 200 + 0.56, 1e-9) << "the theoretical column";
  EXPECT_NEAR(s.valeurs.euro, 6000, 1e-9);
  EXPECT_NEAR(s.valeurs.franc, 60000, 1e-9);
  EXPECT_NEAR(s.court.euro, 200 + 800.56, 1e-9);
  EXPECT_NEAR(s.aLongTerme.euro, 500, 1e-9);
  EXPECT_NEAR(s.PlusValues().euro, 1000.56, 1e-9);
  EXPECT_EQ(s.MoinsValues().euro, 0);
  EXPECT_EQ(Boite.Place, 6u) << "a step for each asset";

  bien("01/01/2005", "31/12/2005", 9000, 0);  // 7200 lost
  ASSERT_TRUE(CalculSommesImmobilisations(App(), s));
  EXPECT_EQ(s.PlusValues().euro, 0);
  EXPECT_NEAR(s.MoinsValues().euro, 7200 - 1000.56, 1e-9);
  Boite.NbArrets = 0;
  Boite.ArretApres = 0;
  ASSERT_TRUE(CalculSommesImmobilisations(App(), s));
  EXPECT_NEAR(s.valeurs.euro, 1000, 1e-9) << "stopped after the first";
}

}  // namespace
}  // namespace fenlor::test
