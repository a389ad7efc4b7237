// Simple entries: their lines, there and back, and what is refused.
#include <cstring>
#include <limits>

#include "store/livres.h"

namespace fenlor::test {
namespace {

TEST(EcritureSimple, UnFrancSansContrepartieEnEuroGardeSesLignes) {
  Livres livres;
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 0, 0, 0);
  rec.SaisieEuro = 0;
  rec.MontantFranc = rec.RepartitionFranc = 0.03;
  const u32 mouvement = livres->AddEcrSimple(livres.Exercice(), rec);
  EXPECT_EQ(Decrit(livres.Lignes(mouvement)),
            (std::vector<std::string>{"7060000000 C 0.00/0.03", "5121000000 D 0.00/0.03"}));
  // The side is that of the other currency where the master is nothing.
  rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 0, 0, 0);
  rec.MontantFranc = rec.RepartitionFranc = -0.03;
  const u32 avoir = livres->AddEcrSimple(livres.Exercice(), rec);
  EXPECT_EQ(Decrit(livres.Lignes(avoir)),
            (std::vector<std::string>{"7060000000 D 0.00/0.03", "5121000000 C 0.00/0.03"}));
}

TEST(EcritureSimple, UnRefusNeChangeRien) {
  const struct {
    const char* nom;
    void (*abime)(EcrSimple&);
    int code;
    const char* dit = "";
  } tous[] = {
      {"compte absent", [](EcrSimple& e) { PoseTexte(e.Compte, "6999000000"); }, ErrCompteAbsent,
       "6999000000"},
      {"trésorerie absente", [](EcrSimple& e) { PoseTexte(e.CompteTresorerie, "5999000000"); },
       ErrCompteAbsent, "5999000000"},
      {"taxe sans compte", [](EcrSimple& e) { PoseTexte(e.CompteTaxe, ""); }, ErrCompteAbsent, "compte"},
      {"perso absent", [](EcrSimple& e) { PoseTexte(e.ComptePerso, "1089000000"); }, ErrCompteAbsent,
       "1089000000"},
      {"vide",
       [](EcrSimple& e) {
         e.MontantFranc = e.MontantEuro = e.RepartitionFranc = e.RepartitionEuro = 0,
         e.TaxeFranc = e.TaxeEuro = 0.004;
       },
       ErrEcritureVide},
      {"sans total", [](EcrSimple& e) { e.MontantFranc = e.MontantEuro = 0; }, ErrEcritureVide},
      {"journal des OD", [](EcrSimple& e) { e.Journal = JournalOD; }, ErrValeur},
      {"trop grand", [](EcrSimple& e) { e.MontantEuro = 1e14; }, ErrValeur},
      {"pas un nombre", [](EcrSimple& e) { e.TaxeFranc = std::numeric_limits<f64>::quiet_NaN(); }, ErrValeur},
      {"signes contraires", [](EcrSimple& e) { e.MontantFranc = -e.MontantFranc; }, ErrValeur},
      {"numéro pris", [](EcrSimple& e) { e.Mouvement = 1; }, ErrValeur}};
  Livres livres;
  const EcrSimple bonne = EcritureSimple(JournalDepenses, Mars15, "6061000000", 200, 119.6, 19.6);
  EcrSimple rec = bonne;
  const u32 premier = livres->AddEcrSimple(livres.Exercice(), rec);
  const std::vector<std::string> avant = Decrit(livres.Lignes(premier));
  const Plan planAvant = livres.Compte("6061000000");
  for (const auto& cas : tous) {
    SCOPED_TRACE(cas.nom);
    for (const bool change : {false, true}) {
      EcrSimple mauvaise = bonne;
      cas.abime(mauvaise);
      if (change && mauvaise.Mouvement) continue;
      livres.erreurs.clear();
      EXPECT_FALSE(change ? livres->UpdateEcrSimple(livres.Exercice(), premier, mauvaise)
                          : livres->AddEcrSimple(livres.Exercice(), mauvaise) != 0);
      EXPECT_EQ(livres->QVFileErrorCode(), cas.code);
      ASSERT_EQ(livres.erreurs.size(), 1u);
      EXPECT_NE(livres.erreurs[0].find(cas.dit), std::string::npos) << livres.erreurs[0];
    }
    EXPECT_EQ(Decrit(livres.Lignes(premier)), avant);
    const Plan planApres = livres.Compte("6061000000");
    EXPECT_EQ(std::memcmp(&planAvant, &planApres, sizeof(Plan)), 0);
    EXPECT_EQ(livres->QVNumberOfKey(75), 4u);
    EXPECT_EQ(livres->GetFreeMouvementsID(livres.Exercice(), 1), 2u);
  }
}

}  // namespace
}  // namespace fenlor::test
