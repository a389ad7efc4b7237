
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class RapprochementCtl : public CtlDeTest {
 protected:
  void SetUp() override {
    Cree();
    SaisitTroisSeances();
  }
  /// "operation 1, ecriture 2, soldes": what is left.
  std::string Reste() {
    std::string texte;
    for (const Json& objet : Lance({"rapprochement", "lister", "--compte", "BQ"}).Objets()) {
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
  for (const Json& ligne : r.Objets()) issues.push_back(ligne.value("erreur", 0));
  EXPECT_THAT(issues, ::testing::ElementsAre(0, 0, 3450, 3205, 3076, 3203));
  const char *tout = "operation 30, operation 90, ecriture 30, ecriture 40, ecriture 50",
             *deux = "operation 90, ecriture 40, ecriture 50";
  EXPECT_EQ(tout, Reste());

  const struct {
    std::vector<std::string> args;
    int statut;
    const char *dit, *reste;
  } cas[] = {
      {{}, StatutUsage, "il manque ajouter", tout},
      {{"automatique"}, StatutUsage, "--compte", tout},
      {{"automatique", "--compte", "BQ", "--du", "01/03/2003", "--au", "31/03/2003"},
       StatutFait,
       R"({"rapprochements":1,"operations":2})",
       deux},
      {{"manuel", "2"}, StatutUsage, "--ligne", deux},
      {{"manuel", "2", "--mouvement", "2"}, StatutRefuse, "3080", deux},
      {{"manuel", "2", "--mouvement", "2", "3"}, StatutFait, R"({"operation":2,"lignes":2})", ""},
      {{"supprimer", "2"}, StatutRefuse, "3451", ""},
      {{"solde", "--compte", "BQ", "--montant", "120,00"}, StatutFait, R"("Difference":0)", ""},
      {{"solde", "--compte", "zz", "--montant", "1"}, StatutRefuse, "3450", ""},
      {{"lister", "--compte", "zz"}, StatutRefuse, "3450", ""},
      {{"lister"}, StatutFait, R"("SoldeReleve":120)", ""},
  };
  for (const auto& c : cas) {
    Essaie({"rapprochement"}, {{c.args, c.statut, c.dit}});
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
