#include <cstring>
#include <functional>
#include <limits>

#include "store/livres.h"

namespace fenlor {
namespace {

constexpr Date Mars15 = FaitDate(15, 3, 2003);

/// "compte C euro/franc" for each line, in order of `Rang`.
std::vector<std::string> Decrit(const std::vector<Line>& lignes) {
  std::vector<std::string> textes;
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    const Line& l = lignes[i];
    EXPECT_EQ(+l.Rang, i);
    char texte[80];
    std::snprintf(texte, sizeof texte, "%s %c %.2f/%.2f", LitTexte(l.Compte).c_str(), l.Sens ? 'C' : 'D',
                  l.MontantEuro, l.MontantFranc);
    textes.emplace_back(texte);
  }
  return textes;
}

LineTresor Tresor(const char* compte, f64 euro, i16 mode = PaiementCheque) {
  LineTresor t{};
  PoseTexte(t.Compte, compte);
  t.MontantEuro = euro;
  t.MontantFranc = std::floor(euro * 6.55957 * 100 + 0.5) / 100;
  t.ModePaiement = mode;
  return t;
}

EcrStandard EcritureStandard(QVAPI& magasin, i16 journal, Date date, const char* compte, f64 montant,
                             f64 repartition, f64 taxe, const std::vector<LineTresor>& tresor) {
  const EcrSimple simple = EcritureSimple(journal, date, compte, montant, repartition, taxe);
  EcrStandard rec{};
  std::memcpy(&rec, &simple, offsetof(EcrSimple, CompteTresorerie));
  rec.Genre = GenreStandard;
  std::memcpy(&rec.MontantFranc, &simple.MontantFranc, 16);
  std::memcpy(rec.Compte, &simple.Compte, offsetof(EcrSimple, ModePaiement) - offsetof(EcrSimple, Compte));
  for (u32 i = 0; i < tresor.size(); ++i) EXPECT_TRUE(magasin.SetEcrLineTresor(i, rec, tresor[i]));
  return rec;
}

struct CasLignes {
  const char* nom;
  i16 journal;
  f64 montant, repartition, taxe;
  std::vector<std::string> lignes;
};

class LignesEcriture : public testing::TestWithParam<CasLignes> {};

TEST_P(LignesEcriture, SimpleSEcritEtSeRelit) {
  const CasLignes& cas = GetParam();
  Livres livres;
  const char* compte = cas.journal == JournalRecettes ? "7060000000" : "6061000000";
  EcrSimple rec = EcritureSimple(cas.journal, Mars15, compte, cas.montant, cas.repartition, cas.taxe);
  rec.ModePaiement = PaiementAutre;
  rec.Remise = 1;
  rec.Validee = 1;
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
  EXPECT_EQ(Decrit(livres.Lignes(mouvement)), cas.lignes);

  if (cas.montant != cas.repartition) PoseTexte(rec.ComptePerso, "1080000000");
  EcrSimple relue;
  std::memset(&relue, 0xAA, sizeof relue);
  ASSERT_EQ(livres->ReadEcrSimple(livres.Exercice(), mouvement, relue), mouvement);
  EXPECT_EQ(std::memcmp(&relue, &rec, sizeof rec), 0);
  EXPECT_TRUE(livres->QVVerifie(FichierJournal).anomalies.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Cas, LignesEcriture,
    testing::Values(
        CasLignes{"recette",
                  JournalRecettes,
                  100,
                  100,
                  0,
                  {"7060000000 C 100.00/655.96", "5121000000 D 100.00/655.96"}},
        CasLignes{"depense",
                  JournalDepenses,
                  100,
                  100,
                  0,
                  {"6061000000 D 100.00/655.96", "5121000000 C 100.00/655.96"}},
        CasLignes{"depensePartagee",
                  JournalDepenses,
                  200,
                  119.6,
                  19.6,
                  {"6061000000 D 100.00/655.95", "4456000000 D 19.60/128.57", "1080000000 D 80.40/527.39",
                   "5121000000 C 200.00/1311.91"}},
        CasLignes{"toutPersonnel",
                  JournalDepenses,
                  50,
                  0,
                  0,
                  {"1080000000 D 50.00/327.98", "5121000000 C 50.00/327.98"}},
        CasLignes{"toutTaxe",
                  JournalDepenses,
                  19.6,
                  19.6,
                  19.6,
                  {"4456000000 D 19.60/128.57", "5121000000 C 19.60/128.57"}},
        CasLignes{"avoir",
                  JournalRecettes,
                  -30,
                  -18,
                  0,
                  {"7060000000 D 18.00/118.07", "1080000000 D 12.00/78.72", "5121000000 C 30.00/196.79"}},
        CasLignes{"partAuDelaDuTotal",
                  JournalDepenses,
                  10,
                  12,
                  0,
                  {"6061000000 D 12.00/78.71", "1080000000 C 2.00/13.11", "5121000000 C 10.00/65.60"}},
        CasLignes{"unCentime",
                  JournalRecettes,
                  0.01,
                  0.01,
                  0,
                  {"7060000000 C 0.01/0.07", "5121000000 D 0.01/0.07"}}),
    [](const auto& info) { return info.param.nom; });

TEST(Ecritures, UnFrancSansContrepartieEnEuroGardeSesLignes) {
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

TEST(Ecritures, ToutesLesLignesPortentLEnTete) {
  Livres livres;
  EcrSimple rec = EcritureSimple(JournalDepenses, Mars15, "6061000000", 200, 119.6, 19.6);
  rec.Pointee = 1;
  rec.Rapprochee = 1;
  rec.Ligne = 12;
  for (const Line& l : livres.Lignes(livres->AddEcrSimple(livres.Exercice(), rec))) {
    EXPECT_EQ(+l.Journal, JournalDepenses);
    EXPECT_EQ(+l.Genre, GenreSimple);
    EXPECT_EQ(+l.Ligne, 12u);
    EXPECT_EQ(+l.Date, Mars15);
    EXPECT_EQ(+l.DateLigne, Mars15);
    EXPECT_EQ(+l.Pointee, 1u);
    EXPECT_EQ(+l.SaisieEuro, 1u);
    EXPECT_EQ(+l.Rapprochee, l.Role == RoleTresorerie ? 1u : 0u);
    EXPECT_EQ(LitTexte(l.Designation), "Compte " + LitTexte(l.Compte));
    EXPECT_EQ(LitTexte(l.ComptePrincipal), "6061000000");
    EXPECT_EQ(+l.TypeCompte, +livres.Compte(LitTexte(l.Compte)).Type);
  }
}

TEST(Ecritures, StandardGardeSesLignesDeTresorerie) {
  Livres livres;
  EcrStandard rec = EcritureStandard(*livres, JournalRecettes, Mars15, "7060000000", 100, 60, 0,
                                     {Tresor("5121000000", 70, PaiementAutre), Tresor("5300000000", 40),
                                      Tresor("5300000000", 0), Tresor("5122000000", -10)});
  const u32 mouvement = livres->AddEcrStandard(livres.Exercice(), rec);
  ASSERT_NE(mouvement, 0u);
  EXPECT_EQ(Decrit(livres.Lignes(mouvement)),
            (std::vector<std::string>{"7060000000 C 60.00/393.57", "1080000000 C 40.00/262.39",
                                      "5121000000 D 70.00/459.17", "5300000000 D 40.00/262.38",
                                      "5122000000 C 10.00/65.60"}));
  EcrStandard relue{};
  ASSERT_EQ(livres->ReadEcrStandard(livres.Exercice(), mouvement, relue), mouvement);
  EXPECT_NE(+relue.LignesTresorerie, +rec.LignesTresorerie);
  ASSERT_EQ(+relue.NbLignesTresorerie, 3u);
  EXPECT_EQ(+relue.MontantEuro, 100);
  EXPECT_EQ(+relue.RepartitionEuro, 60);
  EXPECT_EQ(LitTexte(relue.ComptePerso), "1080000000");
  LineTresor t{};
  ASSERT_TRUE(livres->GetEcrLineTresor(0, relue, t));
  EXPECT_EQ(+t.ModePaiement, PaiementAutre);
  ASSERT_TRUE(livres->GetEcrLineTresor(2, relue, t));
  EXPECT_EQ(+t.MontantEuro, -10);
  EXPECT_FALSE(livres->GetEcrLineTresor(3, relue, t));
  livres->LibereLignes(relue);
  EXPECT_FALSE(livres->GetEcrLineTresor(0, relue, t));
  EXPECT_TRUE(livres->GetEcrLineTresor(0, rec, t));

  EcrSimple simple{};
  EXPECT_EQ(livres->ReadEcrSimple(livres.Exercice(), mouvement, simple), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrEcritureAbsente);
}

TEST(Ecritures, LeTableauDeTresorerieRepartDeZero) {
  Livres livres;
  EcrStandard rec{};
  EXPECT_FALSE(livres->SetEcrLineTresor(1, rec, Tresor("5300000000", 1)));
  EXPECT_TRUE(livres->SetEcrLineTresor(0, rec, Tresor("5300000000", 1)));
  EXPECT_TRUE(livres->SetEcrLineTresor(1, rec, Tresor("5300000000", 2)));
  EXPECT_TRUE(livres->SetEcrLineTresor(0, rec, Tresor("5300000000", 3)));
  EXPECT_EQ(+rec.NbLignesTresorerie, 2u);
  rec.NbLignesTresorerie = 0;
  EXPECT_TRUE(livres->SetEcrLineTresor(0, rec, Tresor("5300000000", 4)));
  LineTresor t{};
  EXPECT_TRUE(livres->GetEcrLineTresor(0, rec, t));
  EXPECT_EQ(+t.MontantEuro, 4);
  EXPECT_FALSE(livres->GetEcrLineTresor(1, rec, t));
}

TEST(Ecritures, ChangerGardeLesMarquesDesLignesQuiRestent) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrStandard rec = EcritureStandard(*livres, JournalDepenses, Mars15, "6061000000", 100, 100, 0,
                                     {Tresor("5121000000", 60), Tresor("5121000000", 40)});
  const u32 mouvement = livres->AddEcrStandard(ex, rec);
  const std::vector<Position> positions = livres->LignesMouvement(ex, mouvement);
  Banque operation{};
  PoseTexte(operation.Compte, "5121000000");
  PoseTexte(operation.Libelle, "Relevé 4"_w);
  operation.Date = Mars15;
  operation.MontantEuro = 40;
  operation.Sens = 0;
  ASSERT_TRUE(livres->RappLines(ex, positions[2], operation));
  Line ligne{};
  ASSERT_TRUE(livres->ReadLines(ex, positions[1], ligne));
  ligne.Remise = 1;
  ligne.DateRemise = Mars15;
  ASSERT_TRUE(livres->UpdateLines(ex, positions[1], ligne));
  ASSERT_TRUE(livres->ReverseMarkMouvements(ex, mouvement));

  // Another first account between them: the second of the same account is new.
  EcrStandard changee =
      EcritureStandard(*livres, JournalDepenses, Mars15, "6251000000", 90, 90, 0,
                       {Tresor("5300000000", 20), Tresor("5121000000", 30), Tresor("5121000000", 35),
                        Tresor("5121000000", 15), Tresor("5122000000", -10)});
  ASSERT_TRUE(livres->UpdateEcrStandard(ex, mouvement, changee));
  const std::vector<Line> lignes = livres.Lignes(mouvement);
  ASSERT_EQ(lignes.size(), 6u);
  const auto marques = [&](std::size_t i) {
    const Line& l = lignes[i];
    return std::string(l.Pointee ? "P" : "-") + (l.Remise ? "B" : "-") + (l.Rapprochee ? "R" : "-");
  };
  EXPECT_EQ(marques(0), "P--");
  EXPECT_EQ(marques(1), "P--");
  EXPECT_EQ(marques(2), "PB-");
  EXPECT_EQ(marques(3), "P-R");
  EXPECT_EQ(marques(4), "P--");
  EXPECT_EQ(+lignes[2].DateRemise, Mars15);
  EXPECT_EQ(LitTexte(lignes[3].RappLibelle), "Relevé 4"_w);
  EXPECT_EQ(+lignes[3].RappEuro, 40);
  EXPECT_EQ(+lignes[5].Sens, 0u);
  // Reconciled totals follow the line's amount, not the operation's.
  EXPECT_EQ(+livres.Compte("5121000000").RappCreditEuro, 35);

  // Down to a simple entry on the account that was reconciled second.
  EcrSimple simple = EcritureSimple(JournalDepenses, Mars15, "6251000000", 90, 90, 0);
  ASSERT_TRUE(livres->UpdateEcrSimple(ex, mouvement, simple));
  EXPECT_EQ(livres.Lignes(mouvement).size(), 2u);
  EXPECT_EQ(+livres.Compte("5121000000").RappCreditEuro, 0);
  EXPECT_EQ(+livres.Compte("5121000000").CreditEuro, 90);
  EXPECT_EQ(+livres.Compte("5122000000").DebitEuro, 0);
  EXPECT_EQ(livres->QVNumberOfRec(FichierJournal), 6u);
  EXPECT_TRUE(livres->QVVerifie(FichierJournal).anomalies.empty());
}

TEST(Ecritures, CumulsDesComptes) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrSimple depense = EcritureSimple(JournalDepenses, Mars15, "6061000000", 200, 119.6, 19.6);
  EcrSimple recette = EcritureSimple(JournalRecettes, Mars15, "7060000000", 110, 60, 10);
  const u32 d = livres->AddEcrSimple(ex, depense);
  const u32 r = livres->AddEcrSimple(ex, recette);
  const Plan p6 = livres.Compte("6061000000"), p7 = livres.Compte("7060000000");
  EXPECT_EQ(+p6.DebitEuro, 100);
  EXPECT_EQ(+p6.PersoEuro, -80.4);
  EXPECT_EQ(+p6.TVAEuro, -19.6);
  EXPECT_EQ(+p7.CreditEuro, 50);
  EXPECT_EQ(+p7.PersoEuro, 50);
  EXPECT_EQ(+p7.TVAEuro, 10);
  EXPECT_EQ(+livres.Compte("1080000000").PersoEuro, 0);
  EXPECT_EQ(+livres.Compte("4456000000").DebitEuro, 19.6);
  EXPECT_EQ(+livres.Compte("5121000000").DebitEuro, 110);
  EXPECT_EQ(+livres.Compte("5121000000").CreditEuro, 200);
  ASSERT_TRUE(livres->RemoveEcrSimple(ex, d));
  ASSERT_TRUE(livres->RemoveMouvements(ex, r));
  for (const CompteEssai& compte : ComptesEssai()) {
    const Plan plan = livres.Compte(compte.numero);
    static const u8 zeros[96] = {};
    EXPECT_EQ(std::memcmp(reinterpret_cast<const u8*>(&plan) + 154, zeros, sizeof zeros), 0) << compte.numero;
  }
  EXPECT_EQ(livres->QVNumberOfKey(75), 0u);
}

struct CasRefus {
  const char* nom;
  std::function<void(EcrSimple&)> abime;
  int code;
  const char* dit;
};

class RefusEcriture : public testing::TestWithParam<CasRefus> {};

TEST_P(RefusEcriture, NeChangeRien) {
  const CasRefus& cas = GetParam();
  Livres livres;
  EcrSimple rec = EcritureSimple(JournalDepenses, Mars15, "6061000000", 200, 119.6, 19.6);
  const u32 premier = livres->AddEcrSimple(livres.Exercice(), rec);
  const std::vector<std::string> avant = Decrit(livres.Lignes(premier));
  const Plan planAvant = livres.Compte("6061000000");
  EcrSimple mauvaise = rec;
  mauvaise.Mouvement = 0;
  cas.abime(mauvaise);
  livres.erreurs.clear();
  for (const bool change : {false, true}) {
    if (change && cas.code == ErrValeur && mauvaise.Mouvement) continue;
    EXPECT_FALSE(change ? livres->UpdateEcrSimple(livres.Exercice(), premier, mauvaise)
                        : livres->AddEcrSimple(livres.Exercice(), mauvaise) != 0);
    EXPECT_EQ(livres->QVFileErrorCode(), cas.code);
    ASSERT_EQ(livres.erreurs.size(), 1u);
    EXPECT_NE(livres.erreurs[0].find(cas.dit), std::string::npos) << livres.erreurs[0];
    livres.erreurs.clear();
  }
  EXPECT_EQ(Decrit(livres.Lignes(premier)), avant);
  const Plan planApres = livres.Compte("6061000000");
  EXPECT_EQ(std::memcmp(&planAvant, &planApres, sizeof(Plan)), 0);
  EXPECT_EQ(livres->QVNumberOfKey(75), 4u);
  EXPECT_EQ(livres->GetFreeMouvementsID(livres.Exercice(), 1), 2u);
}

INSTANTIATE_TEST_SUITE_P(
    Cas, RefusEcriture,
    testing::Values(
        CasRefus{"compteAbsent", [](EcrSimple& e) { PoseTexte(e.Compte, "6999000000"); }, ErrCompteAbsent,
                 "6999000000"},
        CasRefus{"tresorerieAbsente", [](EcrSimple& e) { PoseTexte(e.CompteTresorerie, "5999000000"); },
                 ErrCompteAbsent, "5999000000"},
        CasRefus{"taxeSansCompte", [](EcrSimple& e) { PoseTexte(e.CompteTaxe, ""); }, ErrCompteAbsent,
                 "compte"},
        CasRefus{"persoAbsent", [](EcrSimple& e) { PoseTexte(e.ComptePerso, "1089000000"); }, ErrCompteAbsent,
                 "1089000000"},
        CasRefus{"vide",
                 [](EcrSimple& e) {
                   e.MontantFranc = e.MontantEuro = e.RepartitionFranc = e.RepartitionEuro = 0;
                   e.TaxeFranc = e.TaxeEuro = 0.004;
                 },
                 ErrEcritureVide, ""},
        CasRefus{"sansTotal", [](EcrSimple& e) { e.MontantFranc = e.MontantEuro = 0; }, ErrEcritureVide, ""},
        CasRefus{"journalDesOD", [](EcrSimple& e) { e.Journal = JournalOD; }, ErrValeur, ""},
        CasRefus{"tropGrand", [](EcrSimple& e) { e.MontantEuro = 1e14; }, ErrValeur, ""},
        CasRefus{"pasUnNombre", [](EcrSimple& e) { e.TaxeFranc = std::numeric_limits<f64>::quiet_NaN(); },
                 ErrValeur, ""},
        CasRefus{"signesContraires", [](EcrSimple& e) { e.MontantFranc = -e.MontantFranc; }, ErrValeur, ""},
        CasRefus{"numeroPris", [](EcrSimple& e) { e.Mouvement = 1; }, ErrValeur, ""}),
    [](const auto& info) { return info.param.nom; });

TEST(Ecritures, AbsenteEstRefuseeOuSimplementPasLue) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 10, 10, 0);
  Mouvement enTete{};
  EXPECT_EQ(livres->ReadMouvements(ex, 5, enTete), 0u);
  EXPECT_TRUE(livres.erreurs.empty());
  EXPECT_FALSE(livres->UpdateEcrSimple(ex, 5, rec));
  EXPECT_FALSE(livres->UpdateMouvements(ex, 5, enTete));
  EXPECT_FALSE(livres->RemoveMouvements(ex, 5));
  EXPECT_FALSE(livres->ValidMouvements(ex, 5, 1));
  EXPECT_FALSE(livres->ReverseMarkMouvements(ex, 5));
  EXPECT_EQ(livres->QVFileErrorCode(), ErrEcritureAbsente);
  EXPECT_EQ(livres.erreurs.size(), 5u);
  EXPECT_FALSE(livres->RappLines(ex, 3, Banque{}));
  EXPECT_EQ(livres->QVFileErrorCode(), ErrPosition);
  // An opération diverse is no typed entry.
  ASSERT_NE(livres->AddLines(ex, LigneOD(1, Mars15, "5121000000", true, 10)), 0u);
  EXPECT_FALSE(livres->UpdateEcrSimple(ex, 1, rec));
  EXPECT_EQ(livres->ReadEcrSimple(ex, 1, rec), 0u);
  EXPECT_EQ(livres->ReadOpDiverses(ex, 1, enTete), 1u);
}

TEST(Ecritures, OperationDiverse) {
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

  // Changed the way its form does it: removed and written again under its number.
  {
    QVAPI::Unite unite(*livres);
    Line copie = premiere;
    ASSERT_TRUE(livres->RemoveMouvements(ex, mouvement));
    ASSERT_NE(livres->AddLines(ex, LigneOD(mouvement, Mars15, "5300000000", true, 25)), 0u);
    ASSERT_NE(livres->AddLines(ex, copie), 0u);
    ASSERT_TRUE(unite.Valide());
  }
  const std::vector<Line> lignes = livres.Lignes(mouvement);
  EXPECT_EQ(Decrit(lignes),
            (std::vector<std::string>{"5300000000 C 25.00/163.99", "5122000000 D 25.00/163.99"}));
  EXPECT_EQ(+lignes[1].Rapprochee, 1u);
  EXPECT_EQ(+livres.Compte("5121000000").CreditEuro, 0);
}

TEST(Ecritures, ChangerUneLigneRepriseSesEffets) {
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

TEST(Ecritures, EnTeteReecritPartout) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrSimple rec = EcritureSimple(JournalRecettes, FaitDate(31, 1, 2003), "7060000000", 10, 4, 0);
  rec.LienId = 5;
  PoseTexte(rec.Piece, "P1");
  const u32 mouvement = livres->AddEcrSimple(ex, rec);
  Mouvement enTete{};
  ASSERT_EQ(livres->ReadMouvements(ex, mouvement, enTete), mouvement);
  enTete.Date = FaitDate(31, 2, 2003);
  enTete.Ligne = 9;
  enTete.LienId = 0;
  enTete.LienA = 8;
  PoseTexte(enTete.Libelle, "Autre libellé"_w);
  enTete.Validee = 1;
  enTete.Pointee = 1;
  ASSERT_TRUE(livres->UpdateMouvements(ex, mouvement, enTete));
  Mouvement relu{};
  ASSERT_EQ(livres->ReadMouvements(ex, mouvement, relu), mouvement);
  EXPECT_EQ(std::memcmp(&relu, &enTete, sizeof relu), 0);
  EXPECT_EQ(LitTexte(relu.Piece), "P1");
  for (const Line& l : livres.Lignes(mouvement)) EXPECT_EQ(+l.DateLigne, FaitDate(31, 2, 2003));
  std::string cle = MakeJournalKey1(1, FaitDate(31, 2, 2003), 0, 0, "", 0);
  EXPECT_NE(livres->QVBrowseKey(75, cle), 0u);
  EXPECT_EQ(livres->QVNumberOfKey(80), 3u);
  EXPECT_TRUE(livres->QVVerifie(FichierJournal).anomalies.empty());
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", FaitDate(1, 1, 2003)), 1u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", FaitDate(1, 2, 2003)), 10u);
}

TEST(Ecritures, MarquesDeLEntree) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 10, 4, 0);
  const u32 mouvement = livres->AddEcrSimple(ex, rec);
  Mouvement enTete{};
  ASSERT_TRUE(livres->ValidEcrSimple(ex, mouvement, 1));
  livres->ReadMouvements(ex, mouvement, enTete);
  EXPECT_EQ(+enTete.Validee, 1u);
  // One line taken back: the entry is no longer validated.
  const Position premiere = livres->LignesMouvement(ex, mouvement)[0];
  Line ligne{};
  ASSERT_TRUE(livres->ReadLines(ex, premiere, ligne));
  ligne.Validee = 0;
  ligne.Pointee = 1;
  ASSERT_TRUE(livres->UpdateLines(ex, premiere, ligne));
  livres->ReadMouvements(ex, mouvement, enTete);
  EXPECT_EQ(+enTete.Validee, 0u);
  EXPECT_EQ(+enTete.Pointee, 1u);
  ASSERT_TRUE(livres->ReverseMarkMouvements(ex, mouvement));
  for (const Line& l : livres.Lignes(mouvement)) EXPECT_EQ(+l.Pointee, 0u);
}

TEST(Ecritures, NumerosLibres) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 1u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 1u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", 0), 1u);
  const auto ajoute = [&](i16 journal, Date date, u32 ligne, u32 mouvement = 0) {
    EcrSimple rec = EcritureSimple(journal, date, journal == 1 ? "7060000000" : "6061000000", 10, 10, 0);
    rec.Ligne = ligne;
    rec.Mouvement = mouvement;
    return livres->AddEcrSimple(ex, rec);
  };
  const u32 haute = ajoute(1, Mars15, 7);
  ajoute(1, FaitDate(31, 3, 2003), 3);
  ajoute(1, FaitDate(1, 4, 2003), 40);
  ajoute(2, Mars15, 50);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "5121000000", FaitDate(2, 3, 2003)), 8u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 2, "", Mars15), 51u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 3, "", Mars15), 1u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", FaitDate(15, 3, 2004)), 1u);
  ASSERT_TRUE(livres->RemoveEcrSimple(ex, haute));
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 4u);

  const Position position = livres->LignesMouvement(ex, 2)[0];
  Line ligne{};
  ASSERT_TRUE(livres->ReadLines(ex, position, ligne));
  ligne.Ligne = 60;
  ASSERT_TRUE(livres->UpdateLines(ex, position, ligne));
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 61u);
  ligne.Ligne = 2;
  ASSERT_TRUE(livres->UpdateLines(ex, position, ligne));
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 4u);

  EXPECT_EQ(ajoute(1, Mars15, 4, 90), 90u);
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 91u);
  EXPECT_EQ(ajoute(1, Mars15, 5), 91u);
  EXPECT_EQ(ajoute(1, Mars15, 5, 60), 60u);
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 92u);
  {
    QVAPI::Unite unite(*livres);
    EXPECT_EQ(ajoute(1, Mars15, 30), 92u);
    EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 31u);
  }
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 92u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 6u);
  ASSERT_TRUE(livres->RemoveEcrSimple(ex, 91));
  ASSERT_TRUE(livres->RemoveEcrSimple(ex, 90));
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 61u);
}

TEST(Ecritures, LignesAjouteesDansLeDosDesOperations) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 10, 10, 0);
  ASSERT_EQ(livres->AddEcrSimple(ex, rec), 1u);
  Line ligne = LigneOD(50, Mars15, "7060000000", true, 1);
  ligne.Journal = 1;
  ligne.Ligne = 20;
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 2u);
  const Position position = livres->QVAddRec(FichierJournal, &ligne);
  for (unsigned i = 0; i < 6; ++i) {
    char texte[TailleCleMax];
    const unsigned n = DefinitionFichierNumero(FichierJournal)->compose(i, &ligne, texte);
    ASSERT_TRUE(livres->QVAddKey(static_cast<u16>(75 + i), std::string(texte, n), position));
  }
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 51u);
  EXPECT_EQ(livres->GetFreeJournalLine(ex, 1, "", Mars15), 21u);
}

TEST(Ecritures, NumeroDansUneCle) {
  const std::string cles[] = {MakeJournalKey1(2, Mars15, 4000000001, 3, "5121000000", 7),
                              MakeJournalKey2(2, "5121000000", Mars15, 4000000001, 3, 7),
                              MakeJournalKey3("5121000000", Mars15, 4000000001, 3, 2, 7),
                              MakeJournalKey4(Mars15, "5121000000", 4000000001, 3, 2, 7),
                              MakeJournalKey5(4000000001, 3, 2, 7),
                              MakeJournalKey6("F12", 77, 9, 4000000001, 3, 2, 7)};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(QVAPI::GetMouvements(cles[i], i), 4000000001u) << i;
  EXPECT_EQ(QVAPI::GetMouvements(cles[0], 6), 0u);
  EXPECT_EQ(QVAPI::GetMouvements(cles[0], -1), 0u);
  EXPECT_EQ(QVAPI::GetMouvements("", 4), 0u);
  EXPECT_EQ(QVAPI::GetMouvements("000000001", 4), 0u);
  EXPECT_EQ(QVAPI::GetMouvements("00000x0001", 4), 0u);
  EXPECT_EQ(QVAPI::GetMouvements("9999999999", 4), 0u);
}

TEST(Ecritures, FichiersOuvertsLeTempsDeLOperation) {
  Livres livres;
  const std::string ex = livres.Exercice(), autre = livres.Dossier() + "/2004";
  std::filesystem::create_directory(autre);
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 10, 10, 0);
  EcrSimple meme = rec;
  EXPECT_EQ(livres->AddEcrSimple(autre, rec), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrPasOuvert);
  EXPECT_EQ(livres->AddEcrSimple(ex + "/", meme), 1u);
  livres.FermeFichiers();
  EXPECT_EQ(livres->AddEcrSimple(ex, rec), 2u);
  EXPECT_FALSE(livres->GetOpenFlagJournal());
  EXPECT_FALSE(livres->GetOpenFlagPlan());
  Line ligne{};
  EXPECT_FALSE(livres->ReadLines("", 1, ligne));
  EXPECT_EQ(livres->QVFileErrorCode(), ErrPasOuvert);
  const u32 poignee = livres->OpenJournal(ex);
  EXPECT_TRUE(livres->ReadLines("", 4, ligne));
  EXPECT_EQ(+ligne.Mouvement, 2u);
  EXPECT_FALSE(livres->ReadLines("", 5, ligne));
  EXPECT_EQ(livres->QVFileErrorCode(), ErrPosition);
  livres->CloseJournal(poignee);
  for (const bool valide : {false, true}) {
    QVAPI::Unite unite(*livres);
    for (int i = 0; i < 2; ++i) {
      rec.Mouvement = 0;
      EXPECT_EQ(livres->AddEcrSimple(ex, rec), 3u + static_cast<u32>(i));
    }
    if (valide) {
      EXPECT_TRUE(unite.Valide());
    }
  }
  livres.OuvreFichiers();
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 5u);
  EXPECT_EQ(+livres.Compte("7060000000").CreditEuro, 40);
  EXPECT_TRUE(livres->QVVerifie(FichierJournal).anomalies.empty());
}

TEST(Ecritures, WriteJournalLaisseLesCumuls) {
  Livres livres;
  const std::string ex = livres.Exercice();
  Line ligne{};
  EXPECT_FALSE(livres->WriteJournal(ligne));
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 10, 10, 0);
  const u32 mouvement = livres->AddEcrSimple(ex, rec);
  ASSERT_TRUE(livres->ReadLines("", livres->LignesMouvement(ex, mouvement)[0], ligne));
  ligne.MontantFranc = 65.61;
  ASSERT_TRUE(livres->WriteJournal(ligne));
  EXPECT_EQ(+livres.Lignes(mouvement)[0].MontantFranc, 65.61);
  EXPECT_EQ(+livres.Compte("7060000000").CreditFranc, 65.6);

  // What was read in one journal is not written into another.
  const std::string autre = livres.Dossier() + "/2004";
  std::filesystem::create_directory(autre);
  livres.FermeFichiers();
  const u32 poignee = livres->OpenJournal(autre);
  ASSERT_NE(livres->QVAddRec(FichierJournal, &ligne), 0u);
  EXPECT_FALSE(livres->WriteJournal(ligne));
  EXPECT_EQ(livres->QVFileErrorCode(), ErrPosition);
  livres->CloseJournal(poignee);
}

}  // namespace
}  // namespace fenlor
