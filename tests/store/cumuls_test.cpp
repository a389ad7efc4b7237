#include "store/cumuls.h"

#include <limits>

#include "store/livres.h"

namespace fenlor::test {
namespace {

TEST(Cumuls, CentimesEntiers) {
  struct Cas {
    f64 montant;
    i64 centimes;
  };
  for (const Cas& cas :
       {Cas{0, 0}, Cas{-0.0, 0}, Cas{0.004, 0}, Cas{0.005, 1}, Cas{1.15, 115}, Cas{-1.15, -115},
        Cas{4.35, 435}, Cas{1e9 + 0.29, 100000000029}, Cas{2e13, 2000000000000000}, Cas{2.1e13, 0},
        Cas{std::numeric_limits<f64>::quiet_NaN(), 0}, Cas{-std::numeric_limits<f64>::infinity(), 0}}) {
    EXPECT_EQ(Centimes(cas.montant), cas.centimes) << cas.montant;
  }
  // Every total in whole cents comes back as itself.
  for (i64 c = -2000000000000000; c <= 2000000000000000; c += 1234567890123)
    EXPECT_EQ(Centimes(DeCentimes(c)), c);
  EXPECT_FALSE(std::signbit(DeCentimes(Centimes(-0.0))));
}

TEST(Cumuls, UnTotalHorsLimiteEstRefuse) {
  Plan plan{};
  plan.Type = Recette;
  plan.CreditEuro = 1.9e13;
  Cumuls cumuls;
  cumuls.Ajoute(CumulCredit, 0, Centimes(2e12));
  EXPECT_FALSE(AjouteCumuls(plan, cumuls));
  EXPECT_TRUE(PoseCumuls(plan, cumuls));
  EXPECT_EQ(+plan.CreditEuro, 2e12);

  Livres livres;
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 1, 1, 0);
  rec.MontantEuro = rec.RepartitionEuro = 2e13;
  ASSERT_NE(livres->AddEcrSimple(livres.Exercice(), rec), 0u);
  rec.Mouvement = 0;
  EXPECT_EQ(livres->AddEcrSimple(livres.Exercice(), rec), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrValeur);
  EXPECT_EQ(+livres.Compte("7060000000").CreditEuro, 2e13);
  EXPECT_EQ(livres->QVNumberOfKey(75), 2u);
}

/// Two receipts, the first with a personal share.
void RemplitJournal(Livres& livres) {
  for (const auto& [montant, part] : {std::pair{100, 60}, {50, 50}}) {
    EcrSimple recette = EcritureSimple(JournalRecettes, Mars15, "7060000000", montant, part, 0);
    livres->AddEcrSimple(livres.Exercice(), recette);
  }
}

TEST(CalculCompta, ArreteNeChangeRien) {
  Livres livres;
  RemplitJournal(livres);
  Plan plan = livres.Compte("7060000000");
  const Position position = livres->ReadPlan(plan, 0);
  plan.CreditEuro = 1;
  livres->QVWriteRec(FichierComptes, position, &plan);
  Statistiques s{};
  livres.reponse = 3;
  EXPECT_FALSE(livres->QVCalculCompta("2003", s));
  livres.reponse = 0;
  EXPECT_EQ(livres.evenements.back().numero, EvFin);
  EXPECT_TRUE(livres.erreurs.empty());
  EXPECT_EQ(+s.NbRecettes, 0u);
  EXPECT_EQ(+livres.Compte("7060000000").CreditEuro, 1);

  livres.evenements.clear();
  ASSERT_TRUE(livres->QVCalculCompta("2003", s));
  std::vector<std::string> textes;
  for (const Livres::Evenement& e : livres.evenements)
    if (e.numero == EvDebut || e.numero == EvTexte) textes.push_back(e.texte);
  EXPECT_EQ(textes,
            (std::vector<std::string>{"Calcul des cumuls", "Mise à zéro du fichier PLAN\n\nen cours..."_w,
                                      "Recalcul des cumuls\n\nen cours..."}));
  EXPECT_EQ(livres.evenements[livres.evenements.size() - 2].valeur, 5u) << "the last line";
  const u64 synchros = livres->NbSynchros();
  ASSERT_TRUE(livres->QVCalculCompta("2003", s));
  EXPECT_EQ(livres->NbSynchros(), synchros) << "a second run finds nothing to write";
}

TEST(CalculCompta, UnMontantIllisibleEstNomme) {
  Livres livres;
  RemplitJournal(livres);
  Line ligne{};
  ASSERT_TRUE(livres->ReadLines("", 2, ligne));
  ligne.MontantEuro = std::numeric_limits<f64>::quiet_NaN();
  ASSERT_TRUE(livres->QVWriteRec(FichierJournal, 2, &ligne));
  Statistiques s{};
  EXPECT_FALSE(livres->QVCalculCompta("2003", s));
  EXPECT_EQ(livres->QVFileErrorCode(), ErrEndommage);
  ASSERT_EQ(livres.erreurs.size(), 1u);
  EXPECT_NE(livres.erreurs[0].find("enregistrement 2 "), std::string::npos);
}

TEST(CalculCompta, LignesDUnCompteDisparu) {
  Livres livres;
  RemplitJournal(livres);
  Plan plan = livres.Compte("7060000000");
  ASSERT_TRUE(livres->DeletePlan(livres->ReadPlan(plan, 0)));
  Statistiques s{};
  ASSERT_TRUE(livres->QVCalculCompta("2003", s));
  EXPECT_EQ(+s.NbRecettes, 2u);
  EXPECT_EQ(+livres.Compte("5121000000").DebitEuro, 150);
  // Its entries can still be marked and removed; back in the chart, it gets its totals again.
  EXPECT_TRUE(livres->RemoveMouvements(livres.Exercice(), 1));
  livres.AjouteCompte("7060000000", Recette, 0);
  ASSERT_TRUE(livres->QVCalculCompta("2003", s));
  EXPECT_EQ(+livres.Compte("7060000000").CreditEuro, 50);
}

}  // namespace
}  // namespace fenlor::test
