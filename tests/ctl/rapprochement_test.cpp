
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class RapprochementCtl : public CtlDeTest {
 protected:
  void SetUp() override {
    Cree();
    std::string lignes;
    for (const int jour : {3, 4, 5})
      lignes += R"({"journal":"recettes","date":"0)" + std::to_string(jour) +
                R"(/03/2003","compte":"706","ttc":)" + std::to_string(jour * 10) +
                R"(,"tresorerie":"BQ","libelle":"Séance"})" + "\n";
    ASSERT_EQ(StatutFait, Lance({"saisir"}, lignes).statut);
  }
  /// "operation 1, ecriture 2, soldes": what is left.
  std::string Reste() {
    std::string texte;
    for (const std::string& ligne : Lance({"rapprochement", "lister", "--compte", "BQ"}).Lignes()) {
      const Json objet = Json::parse(ligne);
      if (objet["Genre"] != "soldes")
        texte += (texte.empty() ? "" : ", ") + objet["Genre"].get<std::string>() + " " +
                 std::to_string(objet.value("MontantEuro", 0));
    }
    return texte;
  }
};

TEST_F(RapprochementCtl, UnReleveDUnBoutALAutre) {
  const char* operations =
      R"({"Compte":"BQ","Date":"06/03/2003","Libelle":"VIR 1","MontantEuro":30,"Sens":1})"
      "\n"
      R"({"Compte":"512","Date":"06/03/2003","MontantFranc":590.36,"MontantEuro":90,"Sens":1})"
      "\n"
      R"({"Compte":"CA","Date":"06/03/2003","MontantEuro":1})"
      "\n"
      R"({"Compte":"BQ","Date":"06/03/2003","MontantEuro":1,"Sens":2})"
      "\n"
      R"({"Compte":"BQ","Date":"","MontantEuro":1})"
      "\n"
      R"({"Compte":"BQ","Date":"06/03/2003","Montant":1})"
      "\n";
  Resultat r = Lance({"rapprochement", "ajouter"}, operations);
  EXPECT_EQ(StatutRefuse, r.statut);
  std::vector<int> issues;  // of each line: 0 or the refusal
  for (const std::string& ligne : r.Lignes()) issues.push_back(Json::parse(ligne).value("erreur", 0));
  EXPECT_THAT(issues, ::testing::ElementsAre(0, 0, 3450, 3205, 3076, 3203));
  EXPECT_EQ("operation 30, operation 90, ecriture 30, ecriture 40, ecriture 50", Reste());

  const struct {
    std::vector<std::string> args;
    int statut;
    const char *dit, *reste;
  } cas[] = {
      {{},
       StatutUsage,
       "il manque ajouter",
       "operation 30, operation 90, ecriture 30, ecriture 40, ecriture 50"},
      {{"automatique"},
       StatutUsage,
       "--compte",
       "operation 30, operation 90, ecriture 30, ecriture 40, ecriture 50"},
      {{"automatique", "--compte", "BQ", "--du", "01/03/2003", "--au", "31/03/2003"},
       StatutFait,
       R"({"rapprochements":1,"operations":2})",
       "operation 90, ecriture 40, ecriture 50"},
      {{"manuel", "2"}, StatutUsage, "--ligne", "operation 90, ecriture 40, ecriture 50"},
      {{"manuel", "2", "--mouvement", "2"}, StatutRefuse, "3080", "operation 90, ecriture 40, ecriture 50"},
      {{"manuel", "2", "--mouvement", "2", "3"}, StatutFait, R"({"operation":2,"lignes":2})", ""},
      {{"supprimer", "2"}, StatutRefuse, "3451", ""},
      {{"solde", "--compte", "BQ", "--montant", "120,00"}, StatutFait, R"("Difference":0)", ""},
      {{"solde", "--compte", "zz", "--montant", "1"}, StatutRefuse, "3450", ""},
      {{"lister", "--compte", "zz"}, StatutRefuse, "3450", ""},
      {{"lister"}, StatutFait, R"("SoldeReleve":120)", ""},
  };
  for (const auto& c : cas) {
    std::vector<std::string> args = c.args;
    args.insert(args.begin(), "rapprochement");
    r = Lance(args);
    EXPECT_EQ(c.statut, r.statut) << c.dit;
    EXPECT_THAT(r.sortie + r.erreurs, HasSubstr(c.dit));
    EXPECT_EQ(c.reste, Reste()) << c.dit;
  }
  EXPECT_EQ(
      R"({"operation":2})"
      "\n",
      (Lance({"rapprochement", "ajouter"}, R"({"Compte":"BQ","Date":"06/03/2003","MontantEuro":1,"Sens":1})"),
       Lance({"rapprochement", "supprimer", "2"}).sortie));
  Sain();
}

}  // namespace
}  // namespace fenlor::test
