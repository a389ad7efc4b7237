#include "master/options.h"

#include "core/btfiles.h"
#include "journal/cabinetmedical.h"
#include "master/comptesparticuliers.h"
#include "master/optionstva.h"
#include "master/tauxeuro.h"
#include "master/textes.h"
#include "outils/systemefautif.h"
#include "store/motdepasse.h"

namespace fenlor::test {
namespace {

class OptionsTest : public CabinetMedical {
 protected:
  std::string Ini() { return test::LitFichier(Magasin().QVGetFilename(10099, 0)); }
  /// "compte taux code", a line for each VAT account of the file.
  std::vector<std::string> Tvas() {
    std::vector<std::string> textes;
    for (const LigneTva& ligne : LitComptesTva(App())) {
      char taux[32];
      std::snprintf(taux, sizeof taux, " %.2f ", ligne.taux);
      textes.push_back(Magasin().GetShortCompte(ligne.compte) + taux +
                       LitTexte(LitCompte(ligne.compte).Code));
    }
    return textes;
  }
  void Mouvemente() {
    SaisieEcriture saisie = Ecriture(JournalRecettes, "7070", 119.6);
    ASSERT_NE(Enregistre(saisie), 0u);
  }
};

TEST_F(OptionsTest, UnePageRelueEstCelleQuiFutEcrite) {
  Installe();
  const std::string adresse = "Dr Hélène Martin\r\n3, rue de l'Œuvre\r\n  69000 Lyon "_w;
  ASSERT_TRUE(EcritActivite(App(), {adresse, "123 456 789 00012", "851C", "Médecin"_w, "01/10/1998", true}));
  EXPECT_EQ(Reglage("Activite", "Identification"), "Dr Hélène Martin\\n3, rue de l'Œuvre\\n  69000 Lyon "_w);
  ASSERT_TRUE(EcritOptions(App(), OptionsAssociation{"AGA\r\nRhône"_w, "101690", "1999"}));
  ASSERT_TRUE(EcritOptions(App(), OptionsComptable{"Cabinet \"Durand\""}));
  ASSERT_TRUE(Rouvre());
  EXPECT_EQ(LitActivite(App()).identification, adresse);
  EXPECT_EQ(LitOptions<OptionsAssociation>(App()).identification, "AGA\r\nRhône"_w);
  EXPECT_EQ(LitOptions<OptionsComptable>(App()).identification, "Cabinet \"Durand\"");
  // What is written again as it was read leaves the file alone; a pasted tab is no reason to fail.
  const std::string avant = Ini();
  ASSERT_TRUE(EcritActivite(App(), LitActivite(App())) &&
              EcritOptions(App(), LitOptions<OptionsAssociation>(App())));
  EXPECT_EQ(Ini(), avant);
  ASSERT_TRUE(EcritOptions(App(), OptionsComptable{"A\tB"}));
  EXPECT_EQ(LitOptions<OptionsComptable>(App()).identification, "A B");
}

TEST_F(OptionsTest, LaDoubleMonnaieEstCelleDuDernierExercice) {
  Installe("2003");
  ASSERT_TRUE(EcritActivite(App(), {"", "", "", "", "", true}));
  EXPECT_TRUE(App().AfficherDouble);
  ASSERT_TRUE(CreeExercice("2004") && OuvreExercice("2003"));
  const std::string avant = Reglage("2003", "AFFICHERDOUBLE");
  ASSERT_TRUE(EcritActivite(App(), {"", "", "", "", "", !LitActivite(App()).afficherDouble}));
  EXPECT_TRUE(App().AfficherDouble) << "another exercice's setting";
  EXPECT_EQ(Reglage("2003", "AFFICHERDOUBLE"), avant);
  EXPECT_EQ(Parametres::IsOui(Reglage("2004", "AFFICHERDOUBLE")), LitActivite(App()).afficherDouble);
}

TEST_F(OptionsTest, ExerciceEnCours) {
  Installe("2003");
  Regle("2003", "Debut", "01/07/2003");
  struct {
    const char* fin;
    Date attendue;
  } const cas[] = {{"31/12/2003", FaitDate(31, 12, 2003)},
                   {"01/07/2003", FaitDate(30, 6, 2004)},
                   {"", FaitDate(30, 6, 2004)}};
  for (const auto& c : cas) {
    Regle("2003", "Fin", c.fin);
    EXPECT_EQ(StrDate(LitExerciceEnCours(App()).fin), StrDate(c.attendue)) << c.fin;
  }
  Regle("2003", "Cloture", "  ");
  const ExerciceEnCours lu = LitExerciceEnCours(App());
  EXPECT_EQ(lu.annee, "2003");
  EXPECT_EQ(lu.cloture, "");
  EXPECT_TRUE(lu.tva && lu.euro);
}

TEST_F(OptionsTest, LignesDuReleveCompletees) {
  Regle("2035", "Depenses", "8, 31");
  ASSERT_TRUE(CompleteLignes2035(App()));
  EXPECT_EQ(Reglage("2035", "Recettes"), "1, 7");
  EXPECT_EQ(Reglage("2035", "Depenses"), "8, 31");
  EXPECT_EQ(Reglage("2035", "Résultat"_w), "33, 47");
  EXPECT_EQ(Reglage("2035", "T.V.A."), "48, 52");
}

TEST_F(OptionsTest, Banques) {
  Installe();
  std::vector<AdresseBanque> banques = LitAdressesBanque(App());
  ASSERT_FALSE(banques.empty());
  for (const AdresseBanque& b : banques) EXPECT_NE(b.code, "CA") << "cash is no bank";
  const auto bq = std::find_if(banques.begin(), banques.end(), [](const auto& b) { return b.code == "BQ"; });
  ASSERT_NE(bq, banques.end());
  bq->identification = "Crédit\r\nLyon"_w;
  bq->compte = "30002 00550";
  ASSERT_TRUE(EcritAdressesBanque(App(), banques, true));
  EXPECT_EQ(Reglage("BQ", "Compte"), "30002 00550");
  EXPECT_FALSE(Magasin().Reglages().Existe("CCP")) << "a bank without a word has no section";
  EXPECT_TRUE(App().Reglages.IsRapprochementEspeces());
  banques = LitAdressesBanque(App());
  for (AdresseBanque& b : banques) b = {b.code, {}, {}};
  ASSERT_TRUE(EcritAdressesBanque(App(), banques, false));
  EXPECT_EQ(Reglage("BQ", "Identification") + Reglage("BQ", "Compte"), "");
  EXPECT_FALSE(App().Reglages.IsRapprochementEspeces());
}

TEST_F(OptionsTest, ControleDuMotDePasse) {
  struct {
    const char *stocke, *ancien, *nouveau, *verification;
    unsigned erreur;
    const char* champ;
  } const cas[] = {
      {"", "", "secret", "secret", 0, ""},
      {"", "", "secret", "secre", 3067, "nouveau"},
      {"", "", " Le  secret ", "le SECRET", 0, ""},
      {"secret", "", "autre", "autre", 3068, "ancien"},
      {"secret", " ", "autre", "autre", 3068, "ancien"},
      {"secret", "secret2", "autre", "autre", 3068, "nouveau"},
      {"secret", "secre", "autre", "autre", 3068, "nouveau"},
      {"secret", " SECRET ", "autre", "autre", 0, ""},
      {"secret", "secret", "autre", "", 3067, "nouveau"},
      {"secret", "faux", "a", "b", 3068, "nouveau"},
      {"secret", "secret", "", "", 0, ""},
      {"secret", "", "", "", 0, ""},
  };
  for (const auto& c : cas) {
    ASSERT_TRUE(Magasin().Reglages().Ecrit("Activite", "Mot de Passe", MotDePasseBrouille(c.stocke)));
    const Refus r = ControleMotDePasse(App(), {c.ancien, c.nouveau, c.verification});
    EXPECT_EQ(r.numero, c.erreur) << c.stocke << '/' << c.ancien << '/' << c.nouveau;
    EXPECT_STREQ(r.champ, c.champ) << c.stocke << '/' << c.ancien << '/' << c.nouveau;
  }
}

TEST_F(OptionsTest, MotDePasseEcrit) {
  const std::string debut = Ini();
  ASSERT_TRUE(EcritMotDePasse(App(), {}));
  EXPECT_EQ(Ini(), debut) << "no protection before and after";
  const std::string mot = "été  Œuvre"_w;
  ASSERT_TRUE(EcritMotDePasse(App(), {"", mot, mot}));
  EXPECT_TRUE(MotDePasseExiste(App()) && Magasin().QVIsComptaPassword(Magasin().PathCabinet()));
  EXPECT_FALSE(ControleMotDePasse(App(), {mot, "x", "x"}));
  ASSERT_TRUE(EcritMotDePasse(App(), {mot, "", ""}));
  EXPECT_FALSE(MotDePasseExiste(App()) || Magasin().QVIsComptaPassword(Magasin().PathCabinet()));
}

TEST_F(OptionsTest, RappelDesMisesAJour) {
  OptionsMiseAJour options = LitMiseAJour(App());
  EXPECT_EQ(options.application, "fenlor");
  ASSERT_TRUE(EcritMiseAJour(App(), options));
  const auto lit = [&](const std::string& nom) {
    std::string texte;
    Magasin().QVGetRegString("HKEY_CURRENT_USER", "", "Système"_w, nom, texte);
    return texte;
  };
  EXPECT_EQ(lit("Jours QVUpdate"), "") << "a default that nobody touched";
  ASSERT_TRUE(EcritMiseAJour(App(), {MiseAJourJamais, 400, " qves "}));
  EXPECT_EQ(LitMiseAJour(App()).jours, 365);
}

TEST_F(OptionsTest, ComptesParticuliers) {
  Installe();
  ComptesParticuliers comptes = LitComptesParticuliers(App());
  EXPECT_EQ(comptes[Perso], Long("108"));
  comptes[VirementRecette] = Long("706");
  comptes[VirementDepense] = Long("758");
  comptes[EcartDebit] = "";  // none chosen: stays
  comptes[Perso] = Long("6132");
  ASSERT_TRUE(EcritComptesParticuliers(App(), comptes));
  EXPECT_EQ(Magasin().GetCompteVireTo(), Long("706"));
  EXPECT_EQ(Magasin().GetCompteVireFrom(), Long("758"));
  EXPECT_EQ(Magasin().GetComptePerso(), Long("6132"));
  EXPECT_EQ(Magasin().GetCompteEcartDebit(), Long("658"));
  const std::vector<CompteListe> liste = ComptesAChoisir(App());
  for (std::size_t i = 1; i < liste.size(); ++i) EXPECT_LT(liste[i - 1].compte, liste[i].compte);
  EXPECT_EQ(std::count_if(liste.begin(), liste.end(), [](const auto& c) { return c.texte == "6132 Loyer"; }),
            1);
}

// A chart of its own: the VAT accounts below and one account that is none.
class OptionsTva : public OptionsTest {
 protected:
  void SetUp() override {
    Installe();
    for (const LigneTva& ligne : LitComptesTva(App()))
      ASSERT_TRUE(Magasin().OpenPlan({}) && Magasin().DeletePlan(ligne.position));
    PoseTaxe("4451", Tva, {}, 100);
    ASSERT_TRUE(PoseCompte("4452", Autre, "TVA02", "Pas de taxe"));
  }
  std::vector<LigneTva> Lignes() { return LitComptesTva(App()); }
};

TEST_F(OptionsTva, NumeroPropose) {
  EXPECT_EQ(ProposeCompteTva(App(), {}), "4451");
  EXPECT_EQ(Reglage("Activite", "RadicalTVA"), "445") << "the default is written back";
  EXPECT_EQ(ProposeCompteTva(App(), Lignes()), "4453") << "4452 is another account";
  std::vector<LigneTva> lignes = Lignes();
  lignes.push_back({0, Long("4453"), 1});
  EXPECT_EQ(ProposeCompteTva(App(), lignes), "4454");
  Regle("Activite", "RadicalTVA", "4457");
  EXPECT_EQ(ProposeCompteTva(App(), lignes), "44571");
}

TEST_F(OptionsTva, Refus) {
  struct {
    const char* compte;
    f64 taux;
    unsigned erreur;
  } const cas[] = {{"", 0, 3071},     {"4451", 0, 3070}, {"4452", 7, 3070},    {"512", 7, 3070},
                   {"4453", 0, 3069}, {"4453", 7, 0},    {"4453", 0.001, 3069}};
  for (const auto& c : cas)
    EXPECT_EQ(ControleAjoutTva(App(), Lignes(), {0, Long(c.compte), c.taux}).numero, c.erreur) << c.compte;
  EXPECT_FALSE(ControleAjoutTva(App(), {}, {0, Long("4451"), 5.5})) << "taken out of the list, put in again";
  EXPECT_FALSE(ControleModificationTva(App(), Lignes()[0]));
  EXPECT_FALSE(ControleSuppressionTva(App(), Lignes()[0]));
  Mouvemente();
  EXPECT_EQ(ControleModificationTva(App(), Lignes()[0]).numero, 3100u);
  EXPECT_EQ(ControleSuppressionTva(App(), Lignes()[0]).numero, 3096u);
  EXPECT_FALSE(ControleSuppressionTva(App(), {0, Long("4451"), 1})) << "a row of the list alone";
}

TEST_F(OptionsTva, ListeAppliquee) {
  std::vector<LigneTva> lignes = Lignes();
  ASSERT_EQ(lignes.size(), 1u);
  unsigned comptes = 9;
  EXPECT_FALSE(AppliqueComptesTva(App(), lignes, comptes));
  EXPECT_EQ(comptes, 0u);
  ASSERT_TRUE(PoseCompte("4459", Autre, "TVA01", "Code pris"));
  EXPECT_EQ(AppliqueComptesTva(App(), {lignes[0], {0, Long("4459"), 7}}, comptes).numero, 3070u);
  lignes[0].taux = 20;
  lignes.push_back({0, Long("4453"), 5.5});
  lignes.push_back({0, Long("4454"), 2.1});
  const u64 synchros = Magasin().NbSynchros();
  EXPECT_FALSE(AppliqueComptesTva(App(), lignes, comptes));
  EXPECT_EQ(comptes, 3u);
  EXPECT_EQ(Magasin().NbSynchros(), synchros + 1) << "one unit";
  EXPECT_EQ(Tvas(), (std::vector<std::string>{"4451 20.00 4451", "4453 5.50 TVA03", "4454 2.10 TVA04"}));
  EXPECT_EQ(LitTexte(LitCompte(Long("4453")).Designation), "T.V.A. à 5,50 %"_w);
  EXPECT_EQ(+LitCompte(Long("4453")).PartPro, 100);
  lignes = Lignes();
  lignes.erase(lignes.begin());
  EXPECT_FALSE(AppliqueComptesTva(App(), lignes, comptes));
  EXPECT_EQ(comptes, 1u);
  EXPECT_EQ(+LitCompte(Long("4451")).Type, -1);
  EXPECT_EQ(+LitCompte(Long("4452")).Type, Autre);
}

TEST_F(OptionsTva, MouvementsArrivesEntreTemps) {
  const std::vector<LigneTva> avant = Lignes();
  Mouvemente();
  const std::vector<std::string> comptes = Tvas();
  std::vector<LigneTva> lignes{{0, Long("4453"), 5.5}};
  unsigned changes = 0;
  EXPECT_EQ(AppliqueComptesTva(App(), lignes, changes).numero, 3096u);
  lignes.push_back({avant[0].position, avant[0].compte, 20});
  EXPECT_EQ(AppliqueComptesTva(App(), lignes, changes).numero, 3100u);
  EXPECT_EQ(Tvas(), comptes) << "nothing is done by halves";
  Regle("2003", "Cloture", "31/12/2003");
  EXPECT_FALSE(AppliqueComptesTva(App(), {}, changes));
  EXPECT_EQ(Tvas(), comptes);
}

TEST_F(OptionsTest, TableDesTauxEuro) {
  Regle("TAUX EURO", "1", "01/06/2001|6,6");
  Regle("TAUX EURO", "2", "01/01/1999 | 6.55957");
  Regle("TAUX EURO", "3", "rien|1");
  Regle("TAUX EURO", "4", "01/01/2002|0");
  Regle("TAUX EURO", "6", "01/01/2003|9");
  std::vector<TauxEuro> lignes = LitTauxEuro(App());
  ASSERT_EQ(lignes.size(), 2u);
  EXPECT_EQ(lignes[0].date, FaitDate(1, 1, 1999));
  EXPECT_EQ(lignes[0].taux, 6.55957);
  const std::string avant = Ini();
  ASSERT_TRUE(EcritTauxEuro(App(), lignes));
  EXPECT_EQ(Ini(), avant) << "nothing changed";
  EXPECT_EQ(App().TauxEuroCourant, 6.6);

  struct {
    Date date;
    f64 taux;
    int modifie;
    unsigned erreur;
  } const cas[] = {{0, 6, -1, 3104},
                   {FaitDate(31, 2, 2003), 6, -1, 3104},
                   {FaitDate(1, 1, 1999), 6, -1, ErrDateTauxExistante},
                   {FaitDate(1, 1, 1999), 6, 1, ErrDateTauxExistante},
                   {FaitDate(1, 1, 1999), 6, 0, 0},
                   {FaitDate(1, 1, 2000), 0, -1, 3118},
                   {FaitDate(1, 1, 2000), 0.000001, -1, 3118},
                   {FaitDate(1, 1, 2000), 6.5, -1, 0}};
  for (const auto& c : cas)
    EXPECT_EQ(ControleTauxEuro(lignes, {c.date, c.taux}, c.modifie).numero, c.erreur) << StrDate(c.date);

  EXPECT_EQ(PlaceTauxEuro(lignes, {FaitDate(1, 1, 2000), 6.5}), 1);
  EXPECT_EQ(PlaceTauxEuro(lignes, {FaitDate(1, 1, 2004), 7.25}, 0), 2);
  ASSERT_TRUE(EcritTauxEuro(App(), lignes));
  EXPECT_EQ(Magasin().Reglages().Cles("TAUX EURO"), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_EQ(Reglage("TAUX EURO", "1"), "01/01/2000|6.50000");
  EXPECT_EQ(App().TauxEuroCourant, 7.25);
  EXPECT_EQ(Magasin().GetTauxEuro(FaitDate(1, 7, 2001)), 6.6);
  ASSERT_TRUE(EcritTauxEuro(App(), {}));
  EXPECT_TRUE(LitTauxEuro(App()).empty());
  EXPECT_EQ(Magasin().GetTauxEuro(FaitDate(1, 7, 2001)), 6.55957);
}

// The settings cannot be written: nothing of a page is, and the session stays as it was.
TEST(OptionsDisque, ReglagesQuiNeSEcriventPas) {
  SystemePosix vrai;
  SystemeFautif disque(vrai);
  struct Cabinet : test::CabinetDeTest {
    explicit Cabinet(Systeme& systeme) : CabinetDeTest(test::Cles::Memoire, 256u << 10, &systeme) {}
    void TestBody() override {}
  } cabinet(disque);
  ASSERT_TRUE(cabinet.CreeExercice("2003"));
  CFenlorApp& app = cabinet.App();
  const std::string chemin = cabinet.Magasin().QVGetFilename(10099, 0);
  const std::string avant = test::LitFichier(chemin);
  disque.SurChemin("fenlor.ini");
  disque.Programme(1, ENOSPC, SystemeFautif::Ecriture | SystemeFautif::Renommage, false);
  EXPECT_FALSE(EcritActivite(app, {"A", "1", "", "", "", true}) || app.AfficherDouble);
  EXPECT_FALSE(EcritComptesParticuliers(app, {Long("706"), Long("6132"), "", "", ""}));
  EXPECT_FALSE(EcritTauxEuro(app, {{FaitDate(1, 1, 2001), 7}}));
  EXPECT_EQ(app.TauxEuroCourant, 0);
  EXPECT_FALSE(EcritMotDePasse(app, {"", "a", "a"}));
  EXPECT_EQ(test::LitFichier(chemin), avant);
  EXPECT_EQ(cabinet.Magasin().Reglages().Lit("Activite", "Identification"), "");
}

}  // namespace
}  // namespace fenlor::test
