#include "session/entretien.h"

#include "journal/cabinetmedical.h"
#include "session/textes.h"

namespace fenlor::test {
namespace {

// ------------------------------------------------------------- The filters

TEST(Filtres, Comptes) {
  struct Cas {
    const char* compte;
    i16 type;
    f64 partPro;
    bool garde;
    f64 apres;
  };
  const Cas cas[] = {
      {"7060000000", Recette, 80, true, 100}, {"6132000000", Depense, 80, true, 80},
      {"", Recette, 80, false, 80},           {"   ", Autre, 80, false, 80},
      {"1080000000", Autre, 80, true, 80},    {"1080000000", 5, 80, false, 80},
  };
  for (const Cas& c : cas) {
    Plan rec{};
    PoseTexte(rec.Compte, c.compte);
    rec.Type = c.type;
    rec.PartPro = c.partPro;
    EXPECT_EQ(c.garde, FiltrePlan(rec)) << c.compte << " " << c.type;
    EXPECT_EQ(c.apres, f64{rec.PartPro}) << c.compte << " " << c.type;
  }
  Plan pleine{};
  std::memset(pleine.Compte, 'x', offsetof(Plan, Type) - offsetof(Plan, Compte));
  ASSERT_TRUE(FiltrePlan(pleine));
  EXPECT_EQ(std::string(8, 'x'), std::string(pleine.Code)) << "a text without its end gets one";
  EXPECT_EQ(80u, std::string(pleine.Designation).size());
  EXPECT_EQ(3u, std::string(pleine.Rubrique).size());
}

TEST(Filtres, OperationsBancaires) {
  struct Cas {
    const char* quoi;
    const char* compte;
    Date date;
    Date valeur;
    f64 franc, euro;
    bool garde;
    Date valeurApres;
  };
  const Date jour = FaitDate(5, 3, 2003), autre = FaitDate(7, 3, 2003), faux = FaitDate(30, 2, 2003);
  const Cas cas[] = {
      {"bonne", "5120000000", jour, autre, 10, 0, true, autre},
      {"en euros seulement", "5120000000", jour, autre, 0, 10, true, autre},
      {"sans date de valeur", "5120000000", jour, 0, 10, 0, true, jour},
      {"date de valeur impossible", "5120000000", jour, faux, 10, 0, true, jour},
      {"sans montant", "5120000000", jour, autre, 0, 0, false, autre},
      {"sans compte", " ", jour, autre, 10, 0, false, autre},
      {"date impossible", "5120000000", faux, autre, 10, 0, false, autre},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    Banque rec{};
    PoseTexte(rec.Compte, c.compte);
    rec.Date = c.date;
    rec.DateValeur = c.valeur;
    rec.MontantFranc = c.franc;
    rec.MontantEuro = c.euro;
    EXPECT_EQ(c.garde, FiltreBanque(rec));
    EXPECT_EQ(c.valeurApres, u32{rec.DateValeur});
  }
}

TEST(Filtres, RubriquesEtImmobilisations) {
  Rubrique rubrique{};
  EXPECT_FALSE(FiltreRubrique(rubrique));
  std::memset(rubrique.Formule, 'x', sizeof rubrique.Formule);
  PoseTexte(rubrique.Rubrique, "01 ");
  EXPECT_TRUE(FiltreRubrique(rubrique));
  EXPECT_EQ(127u, std::string(rubrique.Formule).size());

  Immobilisation immo{};
  immo.DateAchat = FaitDate(29, 2, 2000);
  EXPECT_FALSE(FiltreImmo(immo));
  immo.Numero = 1;
  EXPECT_TRUE(FiltreImmo(immo));
  immo.DateAchat = FaitDate(29, 2, 2001);
  EXPECT_FALSE(FiltreImmo(immo));

  for (const auto& [numero, annee, garde] : {std::tuple{0, 2003, false}, {1, 0, false}, {1, 2003, true}}) {
    Amortissement amo{};
    amo.Numero = static_cast<u32>(numero);
    amo.Annee = static_cast<u32>(annee);
    EXPECT_EQ(garde, FiltreAmo(amo));
  }
}

class EntretienTest : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }
  std::vector<std::string> Noms(const Reconstruction& r) {
    std::vector<std::string> noms;
    for (const FichierReconstruit& f : r.fichiers) noms.push_back(f.nom);
    return noms;
  }
};

// ------------------------------------------------------------- Key rebuild

TEST_F(EntretienTest, ReconstruitDansLOrdreDit) {
  ASSERT_NE(0u, Enregistre(Ecriture(JournalRecettes, "706", 10)));
  PoseTaxe("7065", Recette, {}, 80);
  const u32 comptes = Magasin().GetPlanRec(0);
  Reconstruction r;
  ASSERT_FALSE(ReconstruitCles(App(), {"Amo", "immo", "JOURNAL", "RUBRIQUE", "COMPTES", "BANQUE"}, r));
  EXPECT_FALSE(r.arrete);
  EXPECT_EQ((std::vector<std::string>{"BANQUE", "COMPTES", "JOURNAL", "RUBRIQUE", "Immo", "Amo"}), Noms(r));
  EXPECT_EQ(comptes, r.fichiers[1].rapport.gardes);
  EXPECT_EQ(2u, r.fichiers[2].rapport.gardes);
  EXPECT_EQ(100, f64{LitCompte("7065").PartPro});
  EXPECT_EQ(10, f64{LitCompte("706").CreditEuro});
  EXPECT_EQ("Reconstruction des clés."_w, Boite.Titre);
  EXPECT_TRUE(Boite.Annulable);
  EXPECT_EQ("Reconstruction des clés\n\ndu fichier COMPTES\n\nen cours..."_w, Boite.Textes[2]);
  EXPECT_EQ(1u, Boite.Ouvertures);
  EXPECT_EQ(0u, Boite.Profondeur);

  Boite.Oublie();
  EXPECT_FALSE(ReconstruitCles(App(), {}, r)) << "no file: done at once";
  EXPECT_EQ(unsigned{ErrChampInconnu}, ReconstruitCles(App(), {"JOURNAL", "GRAND"}, r).numero);
}

TEST_F(EntretienTest, UnArretLaisseLesFichiersFinis) {
  for (int i = 0; i < 3; ++i) ASSERT_NE(0u, Enregistre(Ecriture(JournalRecettes, "706", 10)));
  const u32 comptes = Magasin().GetPlanRec(0);
  // The walk asks at least once for each account: the stop comes within COMPTES.
  Boite.ArretApres = 5;
  Reconstruction r;
  EXPECT_FALSE(ReconstruitCles(App(), {"COMPTES", "JOURNAL"}, r));
  Boite.ArretApres = -1;
  EXPECT_TRUE(r.arrete);
  EXPECT_EQ(std::vector<std::string>{"COMPTES"}, Noms(r));
  EXPECT_EQ(0u, Boite.Profondeur);
  EXPECT_EQ(comptes, Magasin().GetPlanRec(0));
  EXPECT_EQ(30, f64{LitCompte("706").CreditEuro});
}

TEST_F(EntretienTest, UnFichierIllisibleNArretePasLesAutres) {
  const std::string journal = App().PathExercice + "/JOURNAL.dat";
  Magasin().QVCloseExercice();
  std::filesystem::remove(journal);
  std::filesystem::create_directory(journal);
  Reconstruction r;
  const Refus refus = ReconstruitCles(App(), {"JOURNAL", "RUBRIQUE"}, r);
  EXPECT_EQ(unsigned{ErrReconstruction}, refus.numero);
  ASSERT_EQ(2u, r.fichiers.size());
  EXPECT_FALSE(r.fichiers[0].rapport.fait);
  EXPECT_TRUE(r.fichiers[1].rapport.fait);
  EXPECT_FALSE(Boite.Erreurs.empty());
}

// ------------------------------------------------------------ Recalculation

TEST_F(EntretienTest, CommandeRecalcul) {
  ASSERT_NE(0u, Enregistre(Ecriture(JournalRecettes, "706", 10)));
  ASSERT_NE(0u, Enregistre(Ecriture(JournalDepenses, "6063", 119.60)));
  ASSERT_NE(0u, EnregistreLesLignes({{"512", {}, 10, 0}, {"706", {}, 0, 10}}));
  ChangeCompte("706", [](Plan& rec) { rec.CreditEuro = 999; });

  Statistiques s{};
  EXPECT_EQ(unsigned{QuestionRecalcul}, CommandeRecalcul(App(), s).numero);
  EXPECT_EQ(999, f64{LitCompte("706").CreditEuro}) << "answered no";
  Boite.Oublie();
  Boite.Reponses = {RepOui, RepOk};
  EXPECT_FALSE(CommandeRecalcul(App(), s));
  EXPECT_EQ(20, f64{LitCompte("706").CreditEuro});
  EXPECT_EQ((std::vector<unsigned>{QuestionRecalcul, InfoRecalcul}), Boite.NumerosQuestions());
  EXPECT_EQ(
      "1 écriture(s) de recettes traitée(s)\n1 écriture(s) de dépenses traitée(s)\n1 écritures d'opérations "
      "diverses "
      "traitée(s)\n0 écriture(s) pointée(s)\n0 ligne(s) remise(s)\n"
      "0 ligne(s) rapprochée(s)\n0 écriture(s) validée(s)"_w,
      Boite.Questions.back().texte);
}

// --------------------------------------------------------- Euro adjustment

TEST_F(EntretienTest, AjustementDesEuros) {
  const u32 euro = Enregistre(Ecriture(JournalRecettes, "706", 10, "512", FaitDate(31, 1, 2003)));
  const u32 apres = Enregistre(Ecriture(JournalRecettes, "706", 10, "512", FaitDate(1, 2, 2003)));
  Regle("Préférences"_w, "LimiteFranc", "31/12/2003");
  SaisieEcriture saisie = Ecriture(JournalRecettes, "706", 10, "512", FaitDate(1, 2, 2003));
  saisie.euro = false;
  const u32 franc = Enregistre(saisie);
  Regle("TAUX EURO", "1", "01/01/1999|6,55957");
  Regle("TAUX EURO", "2", "01/02/2003|5");

  AjustementEuros r;
  EXPECT_EQ(unsigned{QuestionAjustementEuro}, AjusteEuros(App(), r).numero);
  Boite.Reponses = {RepOui};
  ASSERT_FALSE(AjusteEuros(App(), r));
  EXPECT_EQ(6u, r.parcourues);
  EXPECT_EQ(4u, r.changees);
  EXPECT_EQ("Recalcul des Montants Euros", Boite.Titre);
  EXPECT_EQ(6u, Boite.Maximum);
  EXPECT_EQ(6u, Boite.Place);
  EXPECT_EQ((std::vector<std::string>{"706 C 10.00 65.60", "512 D 10.00 65.60"}), LignesLues(euro));
  EXPECT_EQ((std::vector<std::string>{"706 C 10.00 50.00", "512 D 10.00 50.00"}), LignesLues(apres));
  EXPECT_EQ((std::vector<std::string>{"706 C 2.00 10.00", "512 D 2.00 10.00"}), LignesLues(franc));
  EXPECT_EQ(141.20, f64{LitCompte("706").CreditFranc}) << "the totals wait for the recalculation";

  Boite.Reponses = {RepOui};
  EXPECT_FALSE(AjusteEuros(App(), r));
  EXPECT_EQ(0u, r.changees) << "once is enough";
}

TEST_F(EntretienTest, AjustementArrete) {
  std::vector<u32> mouvements;
  for (unsigned jour = 1; jour <= 3; ++jour)
    mouvements.push_back(Enregistre(Ecriture(JournalRecettes, "706", 10, "512", FaitDate(jour, 2, 2003))));
  Regle("TAUX EURO", "1", "01/01/1999|5");
  Boite.Reponses = {RepOui};
  Boite.ArretApres = 2;
  AjustementEuros r;
  EXPECT_FALSE(AjusteEuros(App(), r));
  EXPECT_TRUE(r.arrete);
  EXPECT_EQ(3u, r.parcourues);
  EXPECT_EQ(0u, Boite.Profondeur);
  ASSERT_TRUE(Rouvre());
  EXPECT_EQ((std::vector<std::string>{"706 C 10.00 50.00", "512 D 10.00 50.00"}), LignesLues(mouvements[0]));
  EXPECT_EQ((std::vector<std::string>{"706 C 10.00 50.00", "512 D 10.00 65.60"}), LignesLues(mouvements[1]));
  EXPECT_EQ((std::vector<std::string>{"706 C 10.00 65.60", "512 D 10.00 65.60"}), LignesLues(mouvements[2]));
}

}  // namespace
}  // namespace fenlor::test
