// The forecast beside books in which every day was lived: walked, and confirmed on the day. FENLOR_GRAINES
// says how many.
#include "auto/previsions.h"

#include <cstdlib>
#include <random>

#include "auto/echeances.h"
#include "auto/ecrituresauto.h"
#include "journal/cabinetmedical.h"
#include "master/comptes.h"

namespace fenlor {
namespace {

using test::Long;

class LesPrevisions : public test::CabinetMedical {
 protected:
  void SetUp() override { Installe(); }

  unsigned Tire(unsigned sous) { return static_cast<unsigned>(m_hasard() % sous); }
  EcrituresAuto Modele() {
    EcrituresAuto m{};
    m.Genre = Tire(2) ? JournalDepenses : JournalRecettes;
    PoseTexte(m.Compte, Long(m.Genre == JournalDepenses ? "6132" : "706"));
    PoseTexte(m.Tresorerie, Long(Tire(3) ? "512" : "531"));
    PoseTexte(m.Libelle, "Modele");
    m.Date = FaitDate(1 + Tire(28), 1 + Tire(12), Tire(4) ? 2003 : 2002);
    m.SaisieEuro = Tire(8) != 0;
    m.MontantEuro = m.RepartitionEuro = 1 + Tire(50000) / 100.0;
    m.MontantFranc = m.RepartitionFranc = 6.55957 * m.MontantEuro;
    m.NbPaiements = Tire(6) ? 1 + Tire(9) : 999;
    m.NbRestants = Tire(3) ? +m.NbPaiements : Tire(m.NbPaiements + 1);
    m.Periodicite = static_cast<i16>(Tire(10));
    m.DerniereEcheance = Tire(3) ? 0 : FaitDate(1 + Tire(28), 1 + Tire(3), 2003);
    m.Annoncer = Tire(2);
    return m;
  }
  /// The day's walk, and what it announces confirmed.
  void Vit(Date jour) {
    Magasin().FixeAujourdhui(jour);
    BilanEcheances bilan;
    ASSERT_FALSE(CalculeEcheances(App(), bilan));
    std::vector<std::size_t> rangs(bilan.annoncees.size());
    for (std::size_t i = 0; i < rangs.size(); ++i) rangs[i] = i;
    ASSERT_FALSE(ConfirmeEcheances(App(), bilan.annoncees, rangs, bilan));
    m_ecritures += bilan.faites.size();
  }
  /// As the forecast has it: what came in, what went out, what is there.
  LignePrevision Compte(const std::string& compte) {
    const SoldesCompte soldes = SoldesDe(LitCompte(compte), true);
    return {0, compte, {}, soldes.debit, soldes.credit, -soldes.reel};
  }

  std::mt19937 m_hasard;
  std::size_t m_ecritures = 0;
};

TEST_F(LesPrevisions, SontCeQuiArrive) {
  const char* demandees = std::getenv("FENLOR_GRAINES");
  const unsigned graines = demandees ? static_cast<unsigned>(std::atoi(demandees)) : 1;
  for (unsigned graine = 1; graine <= graines; ++graine) {
    SCOPED_TRACE(graine);
    m_hasard.seed(graine);
    Date jour = FaitDate(15, 3 + Tire(6), 2003);
    Magasin().FixeAujourdhui(jour);
    {
      CEcrituresAuto autos(App());
      while (autos.First()) ASSERT_TRUE(autos.Delete(1));
      for (unsigned n = 0; n < 12; ++n) {
        autos.Rec = Modele();
        ASSERT_TRUE(autos.Write());
      }
    }
    Previsions previsions;
    ASSERT_FALSE(CalculePrevisions(App(), previsions));
    ASSERT_TRUE(previsions.euro);
    std::vector<LignePrevision>::const_iterator prevue = previsions.lignes.begin();
    std::map<std::string, LignePrevision> avant;
    for (const std::string& compte : {Long("512"), Long("531")}) avant[compte] = Compte(compte);
    const Date fin = FaitDate(31, 12, 2003);
    for (; jour <= fin; jour = NextDate(jour)) {
      ASSERT_NO_FATAL_FAILURE(Vit(jour));
      if (Jour(jour) != GetNbJours(jour)) continue;
      f64 somme = 0;
      for (const Date mois = prevue->mois; prevue != previsions.lignes.end() && prevue->mois == mois;
           ++prevue) {
        ASSERT_EQ(Mois(mois), Mois(jour));
        if (prevue->compte.empty()) {
          somme = prevue->solde;
          continue;
        }
        const LignePrevision apres = Compte(prevue->compte), &ancien = avant[prevue->compte];
        EXPECT_NEAR(prevue->recettes, apres.recettes - ancien.recettes, 0.001) << StrDate(jour);
        EXPECT_NEAR(prevue->depenses, apres.depenses - ancien.depenses, 0.001) << StrDate(jour);
        EXPECT_NEAR(prevue->solde, apres.solde, 0.001) << StrDate(jour);
        somme -= prevue->solde;
        avant[prevue->compte] = apres;
      }
      EXPECT_NEAR(somme, 0, 0.001) << StrDate(jour);
    }
    EXPECT_TRUE(prevue == previsions.lignes.end());
  }
  EXPECT_GT(m_ecritures, 20 * graines);
}

TEST_F(LesPrevisions, RangeesEtExerciceClos) {
  const CalendrierAuto c{FaitDate(20, 11, 2003), FaitDate(1, 1, 2003), FaitDate(31, 12, 2003),
                         FaitDate(18, 2, 2002)};
  EcrituresAuto m = Modele();
  m.Genre = JournalDepenses;
  m.Date = FaitDate(10, 10, 2003);
  m.SaisieEuro = 1;
  m.MontantEuro = 10;
  m.Periodicite = 6;
  m.NbPaiements = m.NbRestants = 12;
  m.Annoncer = m.DerniereEcheance = 0;
  PoseTexte(m.Tresorerie, "B");
  const auto texte = [&](const std::vector<EcrituresAuto>& modeles, std::vector<TresoreriePrevue> comptes) {
    std::string rangees;
    for (const LignePrevision& l : Prevoit(modeles, c, true, std::move(comptes)))
      rangees += std::to_string(Mois(l.mois)) + l.code + ":" + std::to_string(std::lround(l.recettes)) + "," +
                 std::to_string(std::lround(l.depenses)) + "," + std::to_string(std::lround(l.solde)) + " ";
    return rangees;
  };
  EXPECT_EQ(texte({m}, {{"A", "a", 0}, {"B", "b", 50}}), "11b:0,20,30 12b:0,10,20 ") << "October was due";
  EXPECT_EQ(texte({m}, {{"A", "a", 5}, {"B", "b", 0}}),
            "11:0,20,-15 11a:0,0,5 11b:0,20,-20 12:0,10,-25 12a:0,0,5 12b:0,10,-30 ");
  EXPECT_EQ(texte({m}, {{"A", "a", 0}}), "11:0,0,0 12:0,0,0 ") << "an account that is gone";
  Regle("2003", "Cloture", "30/04/2003");
  Previsions previsions;
  EXPECT_EQ(CalculePrevisions(App(), previsions).numero, 3056u);
}

}  // namespace
}  // namespace fenlor
