#include "store/cumuls.h"

#include <array>
#include <cstring>
#include <limits>
#include <map>

#include "store/livres.h"

namespace fenlor::test {
namespace {

constexpr Date Mars15 = FaitDate(15, 3, 2003);

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

/// Five entries that each count differently.
void RemplitJournal(Livres& livres) {
  const std::string ex = livres.Exercice();
  EcrSimple recette = EcritureSimple(JournalRecettes, Mars15, "7060000000", 100, 60, 0);
  recette.Remise = recette.Pointee = 1;
  livres->AddEcrSimple(ex, recette);
  EcrSimple rapprochee = EcritureSimple(JournalRecettes, Mars15, "7060000000", 50, 50, 0);
  rapprochee.Rapprochee = rapprochee.Validee = 1;
  livres->AddEcrSimple(ex, rapprochee);
  EcrSimple caisse = EcritureSimple(JournalDepenses, Mars15, "6061000000", 119.6, 119.6, 19.6, "5300000000");
  caisse.Validee = 1;
  livres->AddEcrSimple(ex, caisse);
  livres->AddLines(ex, LigneOD(9, Mars15, "5122000000", false, 30));
  Line validee = LigneOD(9, Mars15, "5121000000", true, 30);
  validee.Validee = 1;
  livres->AddLines(ex, validee);
  livres->AddLines(ex, LigneOD(10, Mars15, "5800000000", true, 1));
}

TEST(CalculCompta, RefaitLesTotauxDepuisLesLignes) {
  Livres livres;
  RemplitJournal(livres);
  // Counted by hand from the six entries: credit, debit, reconciled credit and debit, share, tax; in Euro.
  const std::map<std::string, std::array<f64, 6>> comptes = {
      {"7060000000", {110, 0, 0, 0, 40, 0}},  {"1080000000", {40, 0, 0, 0, 0, 0}},
      {"5121000000", {30, 150, 0, 50, 0, 0}}, {"6061000000", {0, 100, 0, 0, 0, -19.6}},
      {"4456000000", {0, 19.6, 0, 0, 0, 0}},  {"5300000000", {119.6, 0, 0, 0, 0, 0}},
      {"5122000000", {0, 30, 0, 0, 0, 0}},    {"5800000000", {1, 0, 0, 0, 0, 0}},
  };
  const std::array<f64, 6> rien{};
  const auto comme = [&](const Plan& p) {
    const auto attendu = comptes.find(LitTexte(p.Compte));
    const std::array<f64, 6> compte{p.CreditEuro,    p.DebitEuro, p.RappCreditEuro,
                                    p.RappDebitEuro, p.PersoEuro, p.TVAEuro};
    EXPECT_EQ(compte, attendu == comptes.end() ? rien : attendu->second) << p.Compte;
  };
  std::vector<Plan> justes;
  for (const CompteEssai& c : ComptesEssai()) comme(justes.emplace_back(livres.Compte(c.numero)));
  EXPECT_EQ(+livres.Compte("7060000000").PersoFranc, 262.39);
  EXPECT_EQ(+livres.Compte("6061000000").TVAFranc, -128.57);
  for (Plan plan : justes) {
    const Position position = livres->ReadPlan(plan, 0);
    for (std::size_t o = offsetof(Plan, PersoFranc); o < offsetof(Plan, Reserve250); o += 8) {
      const f64 faux = 1.0 / static_cast<f64>(o);
      std::memcpy(reinterpret_cast<u8*>(&plan) + o, &faux, 8);
    }
    ASSERT_TRUE(livres->QVWriteRec(FichierComptes, position, &plan));
  }
  livres.evenements.clear();
  Statistiques s{};
  ASSERT_TRUE(livres->QVCalculCompta("2003", s));
  for (const Plan& juste : justes) {
    const Plan plan = livres.Compte(LitTexte(juste.Compte));
    EXPECT_EQ(std::memcmp(&plan, &juste, sizeof plan), 0) << juste.Compte;
  }
  std::vector<std::string> textes;
  for (const Livres::Evenement& e : livres.evenements) {
    if (e.numero == EvDebut || e.numero == EvTexte) textes.push_back(e.texte);
  }
  EXPECT_EQ(textes,
            (std::vector<std::string>{"Calcul des cumuls", "Mise à zéro du fichier PLAN\n\nen cours..."_w,
                                      "Recalcul des cumuls\n\nen cours..."}));
  EXPECT_EQ(livres.evenements.back().numero, EvFin);
  // A second run finds nothing to write.
  const u64 synchros = livres->NbSynchros();
  ASSERT_TRUE(livres->QVCalculCompta("2003", s));
  EXPECT_EQ(livres->NbSynchros(), synchros);
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
