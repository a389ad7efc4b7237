#include "journal/suspens.h"

#include <fstream>

#include "journal/cabinetmedical.h"

namespace fenlor::test {
namespace {

class SuspensTest : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }
  SaisieSuspendue Depense() {
    SaisieSuspendue s;
    s.ecriture = Ecriture(JournalDepenses, "6154", 33.33);
    s.ecriture.libelle = "Loyer; \"mars\" ";
    s.ecriture.genre = GenreStandard;
    s.ecriture.tresoreries = {{Long("512"), 30.01, PaiementCheque}, {Long("531"), 3.32, PaiementAutre}};
    s.ttc = "33,33x";
    s.code = " LOY";
    return s;
  }
  SaisieSuspendue SousOD(const SaisieOD& od) {
    SaisieSuspendue s;
    s.operationDiverse = true;
    s.ecriture.journal = JournalOD;
    s.ecriture.mouvement = od.mouvement;
    s.ecriture.date = od.date;
    s.ecriture.libelle = od.libelle;
    s.lignes = od.lignes;
    return s;
  }
  bool Lue(const SaisieSuspendue& attendue) {
    const auto lue = LitSuspens(App());
    return lue && TexteSuspens(*lue) == TexteSuspens(attendue);
  }
};

TEST_F(SuspensTest, CeQuiEstNoteSeRelitEtNeLaisseRien) {
  EXPECT_FALSE(LitSuspens(App()));
  SaisieSuspendue od = SousOD(OD({{Long("706"), "a", 0, 12.5}, {Long("512"), "", 12.5, 0}}));
  od.ligneOuverte = true;
  od.ligne = {2, {Long("514"), "b"}, "51x", "12,5x", ""};
  for (const SaisieSuspendue& s :
       {od, Depense()}) {  // the second has fewer lines of one kind, more of another
    ASSERT_TRUE(NoteSuspens(App(), s));
    EXPECT_TRUE(Lue(s)) << TexteSuspens(s);
  }
  EXPECT_EQ("Reprendre la saisie du 15/03 (Loyer; \"mars\" , 33,33 \x80)", DecritSuspens(Depense()));
  EXPECT_TRUE(OublieSuspens(App()));
  EXPECT_FALSE(LitSuspens(App()));
  EXPECT_TRUE(OublieSuspens(App()));
}

TEST_F(SuspensTest, CeQuiEstDansLesLivresNEstPlusPropose) {
  // Saved, and the program died before it forgot what had been typed; other entries were made meanwhile.
  SaisieSuspendue s = Depense();
  s.ttc.clear();
  ASSERT_TRUE(NoteSuspens(App(), s));
  ASSERT_NE(0u, Enregistre(Ecriture(JournalRecettes, "706", 20)));
  EXPECT_TRUE(Lue(s));
  ASSERT_NE(0u, Enregistre(s.ecriture));
  EXPECT_FALSE(LitSuspens(App()));

  const SaisieOD od = OD({{Long("706"), "a", 0, 12.5}, {Long("512"), "", 12.5, 0}});
  ASSERT_TRUE(NoteSuspens(App(), SousOD(od)));
  ASSERT_FALSE(Essaie(od));
  EXPECT_FALSE(LitSuspens(App()));
  // It died while the form of the last line was open, or between that and the save.
  SaisieSuspendue ouverte = SousOD(od);
  ouverte.ligneOuverte = true;
  ouverte.ligne.debit = "12,5";
  ASSERT_TRUE(NoteSuspens(App(), ouverte));
  EXPECT_TRUE(Lue(ouverte)) << "one line more than the books hold";
  ouverte.lignes.pop_back();
  ouverte.ecriture.mouvement = Faite.mouvement;
  ASSERT_TRUE(NoteSuspens(App(), ouverte));
  EXPECT_FALSE(LitSuspens(App())) << "that line was finished, and all of it saved";

  // The same entry an earlier day of typing is no reason to drop this one.
  ASSERT_TRUE(NoteSuspens(App(), s));
  EXPECT_TRUE(Lue(s));
}

TEST_F(SuspensTest, UneEcritureModifieeEtUneQuiNExistePlus) {
  SaisieSuspendue s;
  s.ecriture = Ecriture(JournalRecettes, "706", 20);
  s.ecriture.mouvement = Enregistre(s.ecriture);
  s.ecriture.montants = ChaineMontants(App(), LitCompte("706"), 30);
  ASSERT_TRUE(NoteSuspens(App(), s));
  EXPECT_TRUE(Lue(s));
  ASSERT_NE(0u, Enregistre(s.ecriture));
  EXPECT_FALSE(LitSuspens(App()));

  s.ecriture.montants = ChaineMontants(App(), LitCompte("706"), 40);
  ASSERT_TRUE(NoteSuspens(App(), s));
  Boite.Reponses = {RepOui};
  ASSERT_FALSE(SupprimeEcriture(App(), s.ecriture.mouvement));
  s.ecriture.mouvement = 0;
  EXPECT_TRUE(Lue(s));
}

TEST_F(SuspensTest, UnFichierQuiNEnEstPasUnEtUnExerciceClos) {
  const std::string chemin = App().PathExercice + "/SAISIE.ini";
  for (const char* texte : {"", "[Saisie]\r\n", "[Saisie]\r\nJournal=7\r\nDate=1\r\n",
                            "[Saisie]\r\nJournal=1\r\nGenre=2\r\nDate=99999999999999\r\n"}) {
    std::ofstream(chemin) << texte;
    EXPECT_FALSE(LitSuspens(App())) << texte;
  }
  ASSERT_TRUE(NoteSuspens(App(), Depense()));
  std::ofstream(chemin, std::ios::app) << "Lignes=4000000000\r\nTTC=1e400\r\n";
  EXPECT_TRUE(LitSuspens(App()));
  ASSERT_TRUE(App().Reglages.EcritIniExercice({}, "Cloture", "Oui"));
  EXPECT_FALSE(LitSuspens(App()));
}

}  // namespace
}  // namespace fenlor::test
