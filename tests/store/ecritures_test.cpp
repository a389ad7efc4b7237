// What entries of every kind share: header, marks, free numbers, files.
#include <cstring>

#include "store/livres.h"

namespace fenlor::test {
namespace {

TEST(Ecritures, AbsenteEstRefuseeOuSimplementPasLue) {
  Livres livres;
  const std::string ex = livres.Exercice();
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 10, 10, 0);
  Mouvement enTete{};
  EXPECT_EQ(livres->ReadMouvements(ex, 5, enTete), 0u);
  EXPECT_TRUE(livres.erreurs.empty());
  EXPECT_FALSE(livres->UpdateEcrSimple(ex, 5, rec) || livres->UpdateMouvements(ex, 5, enTete));
  EXPECT_FALSE(livres->RemoveMouvements(ex, 5) || livres->ValidMouvements(ex, 5, 1));
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

TEST(Ecritures, UnCompteurEpuiseEstNomme) {
  Livres livres;
  const std::string ex = livres.Exercice();
  ASSERT_NE(livres->AddLines(ex, LigneOD(0xFFFFFFFE, Mars15, "5121000000", true, 10)), 0u);
  EcrSimple rec = EcritureSimple(JournalRecettes, Mars15, "7060000000", 10, 10, 0);
  EXPECT_EQ(livres->AddEcrSimple(ex, rec), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrCompteurMouvement);
  EXPECT_EQ(livres->GetFreeMouvementsID(ex, 1), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrCompteurMouvement);
  EXPECT_NE(livres->QVErreurTexte(ErrCompteurMouvement).find("\"Mouvement\""), std::string::npos);
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

TEST(Ecritures, LeTableauDeTresorerieRepartDeZero) {
  Livres livres;
  EcrStandard rec{};
  const auto pose = [&](u32 rang, f64 euro) {
    LineTresor t{};
    t.MontantEuro = euro;
    return livres->SetEcrLineTresor(rang, rec, t);
  };
  EXPECT_FALSE(pose(1, 1));
  EXPECT_TRUE(pose(0, 1));
  EXPECT_TRUE(pose(1, 2));
  EXPECT_TRUE(pose(0, 3));
  EXPECT_EQ(+rec.NbLignesTresorerie, 2u);
  rec.NbLignesTresorerie = 0;
  EXPECT_TRUE(pose(0, 4));
  LineTresor t{};
  EXPECT_TRUE(livres->GetEcrLineTresor(0, rec, t));
  EXPECT_EQ(+t.MontantEuro, 4);
  EXPECT_FALSE(livres->GetEcrLineTresor(1, rec, t));
  livres->LibereLignes(rec);
  EXPECT_FALSE(livres->GetEcrLineTresor(0, rec, t));
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
  EXPECT_FALSE(livres->GetOpenFlagJournal() || livres->GetOpenFlagPlan());
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
}  // namespace fenlor::test
