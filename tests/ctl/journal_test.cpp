
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class JournalCtl : public CtlDeTest {
 protected:
  void SetUp() override {
    Cree();
    Saisit(
        R"({"journal":"recettes","date":"03/03/2003","compte":"706","libelle":"Consultations","ttc":100,"tresoreries":[{"compte":"BQ","montant":60},{"compte":"CA","montant":40}]}
{"journal":"recettes","date":"04/03/2003","compte":"706","libelle":"Visite Noël","ttc":30,"tresorerie":"BQ","pointer":true,"valider":true}
{"journal":"recettes","date":"05/04/2003","compte":"706","libelle":"Avril","ttc":20,"tresorerie":"BQ"}
{"journal":"depenses","date":"06/03/2003","code":"TEL","libelle":"Téléphone","ttc":50,"tresorerie":"BQ"}
{"journal":"od","date":"07/03/2003","libelle":"Versement","lignes":[{"compte":"512","debit":10},{"compte":"53","libelle":"Sortie de caisse","credit":10}]})");
  }
  Resultat Liste(std::vector<std::string> args, bool mars = true) {
    args.insert(args.begin(), {"journal", "--journal"});
    if (mars) args.insert(args.end(), {"--mois", "03/2003"});
    return Lance(args);
  }
  std::vector<Json> Objets(std::vector<std::string> args) {
    args.emplace_back("--json");
    return Liste(std::move(args)).Objets();
  }
};

TEST_F(JournalCtl, CommeLaFenetre) {
  const Resultat r = Liste({"recettes"});
  ASSERT_EQ(r.statut, StatutFait) << r.erreurs;
  EXPECT_EQ(r.sortie.substr(0, r.sortie.find('\n')), "Recettes du mois de Mars 2003");
  EXPECT_THAT(r.sortie, HasSubstr("    1     3  Consultations  ***"));
  EXPECT_THAT(r.sortie, HasSubstr("    2     4  Visite Noël    BQ"));
  EXPECT_THAT(r.sortie, HasSubstr("Montant €"));
  EXPECT_THAT(r.sortie, Not(HasSubstr("Montant F")));
  EXPECT_THAT(r.sortie, Not(HasSubstr("Avril")));
  EXPECT_THAT(r.Lignes().back(), HasSubstr("130,00"));

  const Resultat od = Liste({"od"});
  EXPECT_THAT(od.sortie, HasSubstr("Opérations diverses du mois de Mars 2003"));
  EXPECT_THAT(od.sortie, HasSubstr("Crédit €"));
  EXPECT_THAT(od.sortie, HasSubstr("Sortie de caisse"));
  EXPECT_EQ(od.Lignes().size(), 5u) << "title, headings, two lines, totals";
}

TEST_F(JournalCtl, ObjetsEtTotaux) {
  const auto caisse = Objets({"recettes", "--compte", "CA"});
  ASSERT_EQ(caisse.size(), 2u);
  EXPECT_EQ(caisse[0]["MontantEuro"], 40);
  EXPECT_EQ(caisse[0]["Tresorerie"], "***");
  EXPECT_EQ(caisse[0]["Date"], "03/03/2003");
  EXPECT_EQ(caisse[1]["TotalDebitEuro"], 40);
  EXPECT_EQ(caisse[1]["TotalCreditEuro"], 40);
  EXPECT_EQ(caisse[1]["Partielle"], false);
  EXPECT_EQ(Objets({"recettes", "--compte", "530"}), caisse) << "by number";

  // Receipts before it, in their own journal, count; what comes behind it does not.
  EXPECT_EQ(Objets({"depenses", "--compte", "BQ"})[0]["SoldeEuro"], 50 - 60 - 30);

  const auto comptable = Objets({"recettes", "--comptable"});
  ASSERT_EQ(comptable.size(), 6u);
  EXPECT_EQ(comptable[0]["Sens"], 1);
  EXPECT_EQ(comptable[2]["Sens"], 0);
  EXPECT_EQ(comptable[2]["MontantEuro"], 40);
}

TEST_F(JournalCtl, ChaqueChampDitLeSien) {
  Saisit("{\"mouvement\":1,\"rapprocher\":true}\n{\"mouvement\":4,\"pointer\":true}");
  EXPECT_EQ(
      Liste({"recettes", "--json"}).sortie,
      R"({"Mouvement":1,"Ligne":1,"Date":"03/03/2003","Libelle":"Consultations","Tresorerie":"***","MontantFranc":655.95,"MontantEuro":100,"Pointee":0,"Remise":0,"Rapprochee":1,"Validee":0,"Rubrique":"01 ","Compte":"7060000000","Designation":"Honoraires"}
{"Mouvement":2,"Ligne":2,"Date":"04/03/2003","Libelle":"Visite Noël","Tresorerie":"BQ","MontantFranc":196.79,"MontantEuro":30,"Pointee":1,"Remise":0,"Rapprochee":0,"Validee":1,"Rubrique":"01 ","Compte":"7060000000","Designation":"Honoraires"}
{"Ecritures":2,"Partielle":false,"TotalDebitFranc":852.74,"TotalCreditFranc":852.75,"TotalDebitEuro":130,"TotalCreditEuro":130}
)");
  EXPECT_EQ(
      Liste({"depenses", "--json"}).Lignes().at(0),
      R"({"Mouvement":4,"Ligne":1,"Date":"06/03/2003","Libelle":"Téléphone","Tresorerie":"BQ","MontantFranc":327.98,"MontantEuro":50,"Pointee":1,"Remise":0,"Rapprochee":0,"Validee":0,"Rubrique":"27 ","Compte":"6262000000","Designation":"Téléphone et Internet"})");
}

TEST_F(JournalCtl, CriteresEtFautes) {
  const struct {
    std::vector<std::string> args;
    int statut;
    const char* dit;  ///< part of what is said
    int ecritures = -1;
  } cas[] = {
      {{"recettes", "--pointees"}, StatutFait, "Liste partielle", 1},
      {{"recettes", "--non-pointees"}, StatutFait, "Liste partielle", 1},
      {{"recettes", "--remises"}, StatutFait, "Liste partielle", 0},
      {{"recettes", "--non-remises"}, StatutFait, "Liste partielle", 2},
      {{"recettes", "--rapprochees"}, StatutFait, "Liste partielle", 0},
      {{"recettes", "--non-rapprochees"}, StatutFait, "Liste partielle", 2},
      {{"recettes", "--mode", "validees"}, StatutFait, "Visite", 1},
      {{"recettes", "--mode", "brouillard"}, StatutFait, "Consultations", 1},
      {{"recettes", "--associees"}, StatutFait, "Liste partielle", 0},
      {{"recettes", "--non-associees"}, StatutFait, "Liste partielle", 2},
      {{"recettes", "--montant-min", "30", "--montant-max", "30,00"}, StatutFait, "Visite", 1},
      {{"recettes", "--montant-min", "190", "--montant-max", "200", "--monnaie", "franc"},
       StatutFait,
       "Visite",
       1},
      {{"recettes", "--montant-min", "0", "--montant-max", "0"}, StatutFait, "Mars 2003\n", 2},
      {{"recettes", "--compte-de", "51", "--compte-a", "52"}, StatutFait, "Liste partielle", 2},
      {{"recettes", "--compte-de", "53", "--compte-a", "53"}, StatutFait, "Consultations", 1},
      {{"depenses", "--rubrique-de", "27", "--rubrique-a", "27"}, StatutFait, "Téléphone", 1},
      {{"depenses", "--rubrique-de", "01", "--rubrique-a", "02"}, StatutFait, "Liste partielle", 0},
      {{"recettes", "--jour-de", "4", "--jour-a", "31"}, StatutFait, "Visite", 1},
      {{"recettes", "--pointees", "--non-pointees"}, StatutUsage, "incompatibles"},
      {{"recettes", "--montant-min", "5"}, StatutUsage, "--montant-max"},
      {{"recettes", "--jour-de", "5"}, StatutUsage, "--jour-a"},
      {{"recettes", "--jour-de", "0", "--jour-a", "32"}, StatutUsage, "jour incorrect"},
      {{"recettes", "--monnaie", "euro"}, StatutUsage, "--monnaie"},
      {{"achats"}, StatutUsage, "mot inconnu"},
      {{"recettes", "--mode", "tout"}, StatutUsage, "mot inconnu"},
      {{"recettes", "--compte", "706"}, StatutRefuse, "Erreur 3205 : Le champ \"compte\""},
      {{"recettes", "--compte", "XX"}, StatutRefuse, "\"compte\""},
      {{"od", "--compte", "BQ"}, StatutRefuse, "\"compte\""},
      {{"od", "--rubrique-de", "01", "--rubrique-a", "02"}, StatutRefuse, "\"rubrique-de\""},
      {{"recettes", "--compte-de", "70600000001", "--compte-a", "9"}, StatutRefuse, "Erreur 3206"},
      {{"recettes", "--compte-de", "1", "--compte-a", "日"}, StatutRefuse, "\"compte-a\""},
  };
  for (const auto& c : cas) {
    const Resultat r = Liste(c.args);
    EXPECT_EQ(r.statut, c.statut) << ::testing::PrintToString(c.args) << r.sortie << r.erreurs;
    EXPECT_THAT(r.sortie + r.erreurs, HasSubstr(c.dit)) << ::testing::PrintToString(c.args);
    if (c.ecritures < 0) continue;
    EXPECT_EQ(Objets(c.args).back()["Ecritures"], c.ecritures) << ::testing::PrintToString(c.args);
  }
  const struct {
    const char* mois;
    int statut;
  } mois[] = {{"13/2003", StatutUsage},  {"2003", StatutUsage},  {"03/2004", StatutRefuse},
              {"12/2002", StatutRefuse}, {"5/2003", StatutFait}, {"12/2003", StatutFait}};
  for (const auto& m : mois)
    EXPECT_EQ(Liste({"recettes", "--mois", m.mois}, false).statut, m.statut) << m.mois;
}

}  // namespace
}  // namespace fenlor::test
