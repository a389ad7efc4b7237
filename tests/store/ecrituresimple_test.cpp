// Simple entries: their lines, there and back, and what is refused.
#include <cstring>
#include <limits>

#include "store/livres.h"

namespace fenlor::test {
namespace {

constexpr Date Mars15 = FaitDate(15, 3, 2003);

TEST(EcritureSimple, SEcritEtSeRelit) {
  const struct {
    const char* nom;
    i16 journal;
    f64 montant, repartition, taxe;
    const char* lignes;
  } tous[] = {
      {"recette", JournalRecettes, 100, 100, 0, "7060000000 C 100.00/655.96, 5121000000 D 100.00/655.96"},
      {"depense", JournalDepenses, 100, 100, 0, "6061000000 D 100.00/655.96, 5121000000 C 100.00/655.96"},
      {"dépense partagée", JournalDepenses, 200, 119.6, 19.6,
       "6061000000 D 100.00/655.95, 4456000000 D 19.60/128.57, 1080000000 D 80.40/527.39, "
       "5121000000 C 200.00/1311.91"},
      {"tout personnel", JournalDepenses, 50, 0, 0, "1080000000 D 50.00/327.98, 5121000000 C 50.00/327.98"},
      {"tout taxe", JournalDepenses, 19.6, 19.6, 19.6,
       "4456000000 D 19.60/128.57, 5121000000 C 19.60/128.57"},
      {"avoir", JournalRecettes, -30, -18, 0,
       "7060000000 D 18.00/118.07, 1080000000 D 12.00/78.72, 5121000000 C 30.00/196.79"},
      {"part au delà du total", JournalDepenses, 10, 12, 0,
       "6061000000 D 12.00/78.71, 1080000000 C 2.00/13.11, 5121000000 C 10.00/65.60"},
      {"un centime", JournalRecettes, 0.01, 0.01, 0, "7060000000 C 0.01/0.07, 5121000000 D 0.01/0.07"},
  };
  for (const auto& cas : tous) {
    SCOPED_TRACE(cas.nom);
    Livres livres;
    const char* compte = cas.journal == JournalRecettes ? "7060000000" : "6061000000";
    EcrSimple rec = EcritureSimple(cas.journal, Mars15, compte, cas.montant, cas.repartition, cas.taxe);
    rec.ModePaiement = PaiementAutre;
    rec.Remise = rec.Validee = 1;
    rec.LienId = 77;
    rec.LienA = -5;
    rec.LienB = 0x10002;
    rec.LienPoste = 3;
    rec.LienApplication = 4;
    rec.Reserve134 = 9;
    PoseTexte(rec.Tiers, "EDF");
    PoseTexte(rec.Piece, "F12");
    const u32 mouvement = livres->AddEcrSimple(livres.Exercice(), rec);
    ASSERT_EQ(mouvement, 1u) << livres->QVErreurTexte(livres->QVFileErrorCode());
    std::string lignes;
    for (const std::string& l : Decrit(livres.Lignes(mouvement))) lignes += (lignes.empty() ? "" : ", ") + l;
    EXPECT_EQ(lignes, cas.lignes);

    if (cas.montant != cas.repartition) PoseTexte(rec.ComptePerso, "1080000000");
    EcrSimple relue;
    std::memset(&relue, 0xAA, sizeof relue);
    ASSERT_EQ(livres->ReadEcrSimple(livres.Exercice(), mouvement, relue), mouvement);
    EXPECT_EQ(std::memcmp(&relue, &rec, sizeof rec), 0);
    EXPECT_TRUE(livres->QVVerifie(FichierJournal).anomalies.empty());
  }
}

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
