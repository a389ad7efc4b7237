#include "assets/amortissements.h"

#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <random>

#include "assets/annuites.h"
#include "core/btfiles.h"
#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

constexpr u32 NumeroBien = 7;

Immobilisation Bien(const char* achat, f64 franc, u8 type, f64 duree, f64 taux, f64 euro = 0) {
  Immobilisation immo{};
  immo.Numero = NumeroBien;
  immo.DateAchat = GetDate(achat);
  immo.ValeurAmortissableFranc = franc;
  immo.ValeurAmortissableEuro = euro;
  immo.TypeAmortissement = type;
  immo.Duree = duree;
  immo.TauxAnnuel = taux;
  return immo;
}

/// Every call, as a person writes it: "2003/2005 1588.89", a corrected year with its real amount behind
/// a colon. The Euro series is kept aside.
class Releve : public CCalculAmortissements {
 public:
  using CCalculAmortissements::CCalculAmortissements;
  bool OnAnnuite(u32 annee, u32 demandee, f64 tF, f64 tE, f64 rF, f64) override {
    std::string ligne = std::to_string(annee) + '/' + std::to_string(demandee) + ' ' + Cents(tF);
    if (rF != tF) ligne += ':' + Cents(rF);
    Lignes.push_back(ligne);
    Franc.push_back(tF);
    Euro.push_back(tE);
    return true;
  }
  static std::string Cents(f64 montant) {
    const std::string texte = FormatMontant(montant, 2, '.');
    return texte.empty() ? "0.00" : texte;
  }
  std::vector<std::string> Lignes;
  std::vector<f64> Franc, Euro;
};

class Amortissements : public CabinetDeTest {
 protected:
  void SetUp() override { ASSERT_TRUE(CreeExercice("2005")); }

  std::vector<std::string> Annees(const Immobilisation& immo, Date date, std::string* cumul = nullptr) {
    Releve calcul(App(), &immo);
    f64 franc = -1, euro = -1;
    EXPECT_TRUE(calcul.CalculAmortissements(date, franc, euro));
    if (cumul != nullptr) *cumul = Releve::Cents(franc);
    return calcul.Lignes;
  }
  void Corrige(u32 annee, f64 franc, f64 euro = 0) {
    Amortissement reel{};
    reel.Numero = NumeroBien;
    reel.Annee = annee;
    reel.ReelFranc = franc;
    reel.ReelEuro = euro;
    ASSERT_TRUE(Magasin().WriteAmortissements(reel));
  }
};

TEST_F(Amortissements, UnLineaire) {
  const Immobilisation immo = Bien("15/03/2003", 10000, Lineaire, 5, 20);
  std::string cumul;
  EXPECT_THAT(Annees(immo, GetDate("31/12/2005"), &cumul),
              ElementsAre("2003/2005 1588.89", "2004/2005 2000.00", "2005/2005 2000.00"));
  EXPECT_EQ(cumul, "5588.89");
  EXPECT_EQ(Annees(immo, 0).back(), "2005/2005 2000.00") << "the end of the exercice";
  const auto longue = Annees(immo, GetDate("31/12/2010"), &cumul);
  EXPECT_THAT(std::vector(longue.begin() + 4, longue.end()),
              ElementsAre("2007/2010 2000.00", "2008/2010 411.11", "2009/2010 0.00", "2010/2010 0.00"));
  EXPECT_EQ(cumul, "10000.00");
}

TEST_F(Amortissements, LesBords) {
  constexpr f64 rien = std::numeric_limits<f64>::quiet_NaN();
  const struct {
    const char *cas, *achat, *fin;
    f64 valeur;
    u8 type;
    f64 duree, taux;
    const char* annees;
  } cas[] = {
      {"7/12, then the rest", "12/06/2003", "31/12/2004", 1200, Exceptionnel, 1, 100, "700.00 500.00"},
      {"bought on 31/12: one day", "31/12/2004", "31/12/2004", 2000, Lineaire, 1, 100, "5.56"},
      {"asked for later years too", "31/12/2003", "31/12/2004", 2000, Lineaire, 1, 100, "5.56 1994.44"},
      {"an earlier year", "01/07/2004", "31/12/2002", 3600, Lineaire, 10, 10, "180.00"},
      {"earlier in the same year", "01/07/2004", "01/06/2004", 3600, Lineaire, 10, 10, "30.00"},
      {"no value", "01/01/2003", "31/12/2004", 0, Degressif, 1, 0, "0.00 0.00"},
      {"an infinite share", "01/07/2003", "31/12/2004", 1200, Degressif, 1, 0, "600.00 600.00"},
      {"then 0 / 0", "01/01/2003", "31/12/2004", 1200, Degressif, 1, 0, "1200.00 0.00"},
      {"an infinite one, over less than no months", "20/08/2002", "30/06/2002", 1200, Degressif, 0, 20,
       "1200.00"},
      {"6.66 years are 6", "01/01/2003", "31/12/2003", 6000, Degressif, 6.66, 0, "1000.00"},
      {"beyond all bounds", "01/01/2003", "31/12/2003", 1000, Lineaire, 1, 1e308, "1000.00"},
      {"no number", "01/01/2003", "31/12/2003", 1000, Degressif, rien, 10, "1000.00"},
  };
  for (const auto& c : cas) {
    std::string annees;
    for (const std::string& ligne : Annees(Bien(c.achat, c.valeur, c.type, c.duree, c.taux), GetDate(c.fin)))
      annees += (annees.empty() ? "" : " ") + ligne.substr(ligne.find(' ') + 1);
    EXPECT_EQ(annees, c.annees) << c.cas;
  }
}

template <class Calcul>
void Lance(Calcul& calcul, Date date) {
  f64 franc = 0, euro = 0;
  calcul.CalculAmortissements(date, franc, euro);
}

TEST_F(Amortissements, LesSixUsages) {
  const Immobilisation immo = Bien("01/07/2002", 655.96, Lineaire, 4, 25, 100);
  Corrige(2003, 1.15, 50);
  // Franc 82.00, 163.99 (1.15), 163.99, 163.99; Euro 12.5, 25 (50), 25, 12.5
  const Date date = GetDate("31/12/2004");

  CCalculListAmortissements liste(App(), &immo);
  Lance(liste, 0);
  std::vector<std::string> lignes;
  for (const auto& l : liste.Lignes) lignes.push_back(l.annee + '|' + l.theorique + '|' + l.reel);
  EXPECT_THAT(lignes, ElementsAre("2002|12,50 €|12,50 €"_w, "2003|25,00 €|50,00 €"_w,
                                  "2004|25,00 €|25,00 €"_w, "2005|12,50 €|12,50 €"_w));

  CCalculLineAmortissements colonnes(App(), &immo, 2008);
  Lance(colonnes, GetDate("31/12/2007"));
  std::vector<f64> euros;
  for (const auto& c : colonnes.Colonnes) euros.push_back(c.euro);
  EXPECT_THAT(euros, ElementsAre(0, 0, 0, 12.5, 25, 50)) << "2008 at the right, 2003 at the left";
  EXPECT_EQ(colonnes.Colonnes[5].franc, 1.15);

  CCalcul2035Amortissements etat2035(App(), &immo);
  Lance(etat2035, date);
  EXPECT_DOUBLE_EQ(etat2035.AnnuiteFranc, 163.99);
  EXPECT_DOUBLE_EQ(etat2035.CumulFranc, 82 + 163.99 + 163.99) << "the theoretical column";
  EXPECT_DOUBLE_EQ(etat2035.CumulEuro, 62.5);

  CCalculEtatAmortissements etat(App(), &immo);
  Lance(etat, date);
  EXPECT_DOUBLE_EQ(etat.AnterieurFranc, 82 + 1.15) << "the real column";
  EXPECT_DOUBLE_EQ(etat.AnnuiteFranc, 163.99);
  EXPECT_DOUBLE_EQ(etat.AnterieurEuro, 62.5);

  CCalculPrintAmortissements imprime(App(), &immo);
  Lance(imprime, date);
  EXPECT_THAT(imprime.Entiers, ElementsAre(2002, 8200, 1250, 2003, 114, 5000, 2004, 16399, 2500));

  CCalculPrintPMV pmv(App(), &immo);
  Lance(pmv, date);
  EXPECT_DOUBLE_EQ(pmv.CumulEuro, etat2035.CumulEuro);

  // Bought after the year asked for: the first year is the list's alone.
  CCalcul2035Amortissements aucun(App(), &immo);
  CCalculEtatAmortissements aucunEtat(App(), &immo);
  Lance(aucun, GetDate("31/12/2001"));
  Lance(aucunEtat, GetDate("31/12/2001"));
  EXPECT_EQ(aucun.CumulFranc + aucun.AnnuiteFranc + aucunEtat.AnnuiteEuro + aucunEtat.AnterieurEuro, 0);
}

/// Theoretical and real amounts of one currency, year by year.
struct AnneesALaMain {
  std::vector<f64> theoriques, reels;
};

/// The schedule as an accountant does it by hand, day by day of a year of 360.
AnneesALaMain ALaMain(const Immobilisation& immo, f64 valeur, const std::map<u32, f64>& corrections,
                      Date fin) {
  std::vector<f64> theoriques, reels;
  f64 cumul = 0;
  for (u32 annee = Annee(immo.DateAchat); annee <= Annee(fin); ++annee) {
    int jours = 0, mois = 0;
    for (u32 m = 1; m <= 12; ++m) {
      int dansLeMois = 0;
      for (u32 j = 1; j <= 30; ++j) {
        const bool apres = annee > Annee(immo.DateAchat) || m > Mois(immo.DateAchat) ||
                           (m == Mois(immo.DateAchat) && j >= std::min(Jour(immo.DateAchat), 30u));
        const bool avant =
            annee < Annee(fin) || m < Mois(fin) || (m == Mois(fin) && j <= std::min(Jour(fin), 30u));
        dansLeMois += apres && avant;
      }
      jours += dansLeMois;
      mois += dansLeMois > 0;
    }
    const f64 reste = valeur - cumul;
    f64 annuite = valeur * immo.TauxAnnuel * 0.01;
    if (immo.TypeAmortissement == Degressif) {
      const int restantes = static_cast<int>(immo.Duree) - static_cast<int>(reels.size());
      annuite = std::max(reste * immo.TauxAnnuel * 0.01, restantes > 0 ? reste / restantes : 0);
      if (restantes == 0) annuite = 1e9;
    }
    annuite = immo.TypeAmortissement == Lineaire ? annuite * jours / 360 : annuite * mois / 12;
    annuite = std::min(std::floor(annuite * 100 + 0.5) / 100, reste);
    theoriques.push_back(annuite);
    reels.push_back(corrections.contains(annee) ? corrections.at(annee) : annuite);
    cumul += reels.back();
  }
  return {theoriques, reels};
}

TEST_F(Amortissements, DesBiensAuHasardCommeALaMain) {
  struct Reels : CCalculAmortissements {
    using CCalculAmortissements::CCalculAmortissements;
    bool OnAnnuite(u32, u32, f64 tF, f64 tE, f64 rF, f64 rE) override {
      franc.theoriques.push_back(tF);
      franc.reels.push_back(rF);
      euro.theoriques.push_back(tE);
      euro.reels.push_back(rE);
      return true;
    }
    AnneesALaMain franc, euro;
  };
  std::mt19937 hasard(2035);
  const auto tire = [&](u32 de, u32 a) { return std::uniform_int_distribution<u32>(de, a)(hasard); };
  for (u32 n = 0; n < 600; ++n) {
    const u8 type = static_cast<u8>(tire(0, 2));
    TauxDegressif ligne{1, 1, 100};
    Immobilisation immo = Bien("01/01/2000", tire(100, 5000000) / 100.0, type, 1, 100);
    immo.ValeurAmortissableEuro = QVAPI::ConvertFrancToEuro(6.55957, immo.ValeurAmortissableFranc);
    immo.Numero = n + 1;
    immo.DateAchat = FaitDate(tire(1, 31), tire(1, 12), tire(1990, 2003));
    if (type == Degressif) Magasin().ReadTauxDegressif(immo.DateAchat, tire(1, 10), ligne);
    if (type == Lineaire) ligne.TauxAnnuel = Arrondi2(100 / (ligne.Duree = tire(10, 100) / 10.0));
    immo.Duree = ligne.Duree;
    immo.TauxAnnuel = ligne.TauxAnnuel;
    const auto apresLAchat = [&] {
      const u32 achat = Annee(immo.DateAchat);
      const Date date = FaitDate(tire(1, 28), tire(1, 12), achat + tire(0, 25));
      return date < immo.DateAchat ? FaitDate(31, 12, achat) : date;
    };
    const Date fin = n % 2 ? apresLAchat() : FaitDate(31, 12, Annee(immo.DateAchat) + tire(0, 25));
    if (n % 3 == 0) immo.DateCession = apresLAchat();
    std::map<u32, f64> francs, euros;
    for (u32 k = n % 4; k > 0; --k) {
      Amortissement reel{};
      reel.Numero = immo.Numero;
      reel.Annee = Annee(immo.DateAchat) + tire(0, 6);
      euros[reel.Annee] = reel.ReelEuro = tire(0, 20000) / 100.0;
      francs[reel.Annee] = reel.ReelFranc = QVAPI::ConvertEuroToFranc(6.55957, reel.ReelEuro);
      ASSERT_TRUE(Magasin().WriteAmortissements(reel));
    }
    Reels calcul(App(), &immo);
    f64 franc = 0, euro = 0;
    calcul.CalculAmortissements(fin, franc, euro);
    const Date limite = immo.DateCession != 0 ? std::min<Date>(fin, +immo.DateCession) : fin;
    const auto pareils = [&](const AnneesALaMain& annees, f64 valeur, const std::map<u32, f64>& corrections,
                             f64 cumul) {
      const auto [theoriques, reels] = ALaMain(immo, valeur, corrections, limite);
      EXPECT_THAT(annees.theoriques, ::testing::Pointwise(::testing::DoubleNear(0.0001), theoriques)) << n;
      EXPECT_THAT(annees.reels, ::testing::Pointwise(::testing::DoubleNear(0.0001), reels)) << n;
      EXPECT_NEAR(cumul, std::accumulate(reels.begin(), reels.end(), 0.0), 0.0001) << n;
    };
    pareils(calcul.franc, immo.ValeurAmortissableFranc, francs, franc);
    pareils(calcul.euro, immo.ValeurAmortissableEuro, euros, euro);
  }
}

}  // namespace
}  // namespace fenlor::test
