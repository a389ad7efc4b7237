
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class ImmobilisationsCtl : public CtlDeTest {
 protected:
  /// The record of that number in `lister --json`.
  Json Bien(int numero) { return Lance({"--json", "immobilisation", "lister"}).Objet("Numero", numero); }
  Resultat Verbe(const char* action, const std::string& entree, std::vector<std::string> autres = {}) {
    autres.insert(autres.begin(), {"--aujourdhui", "15/03/2003", "immobilisation", action});
    return Lance(autres, entree);
  }
};

TEST_F(ImmobilisationsCtl, LaVieDUnBien) {
  Cree();
  const std::string table =
      R"({"Designation":"Table d'examen","DateAchat":"15/03/2001","TauxTVA":19.6,"PrixEuro":1196.0,"Duree":5})";
  const struct {
    const char* action;
    std::string entree;
    int statut;
    const char* dit;
  } cas[] = {
      {"ajouter", table, StatutFait, R"({"entree":1,"Numero":1})"},
      {"ajouter", "\n" + table, StatutFait, R"({"entree":2,"Numero":2})"},
      {"ajouter", R"({"Designation":5})", StatutRefuse, "Designation"},
      {"ajouter", R"({"Numero":5})", StatutRefuse, "attribué"},
      {"ajouter", R"({"Monnaie":2})", StatutRefuse, "Monnaie"},
      {"ajouter", R"({"DateCession":"01/02/2003"})", StatutRefuse, "ceder ou rebuter"},
      {"modifier", R"({"PrixEuro":100})", StatutRefuse, "3204"},
      {"modifier", R"({"Numero":9})", StatutRefuse, "n'existe pas"},
      {"modifier", R"({"Numero":1,"TypeAmortissement":2})", StatutFait, R"("Numero":1)"},
      {"modifier", R"({"Numero":1,"DateAchat":"01/03/1996","TypeAmortissement":1,"TauxAnnuel":60})",
       StatutFait, R"("Numero":1)"},
      {"modifier", R"({"Numero":1,"DateAchat":"01/02/1997"})", StatutFait, R"("Numero":1)"},
      {"ceder", R"({"Numero":1,"DateCession":"10/03/2003"})", StatutRefuse, "PrixCessionEuro"},
      {"ceder", R"({"Numero":1,"DateCession":""})", StatutRefuse, "ni cédé"},
      {"ceder", R"({"Numero":1,"PrixCessionFranc":1,"MonnaieCession":1})", StatutRefuse, "l'autre monnaie"},
      {"ceder", R"({"Numero":1,"DateCession":"10/03/2003","PrixCessionEuro":700})", StatutFait, "1"},
      {"rebuter", R"({"Numero":2,"PrixCessionEuro":1})", StatutRefuse, "PrixCessionEuro"},
      {"rebuter", R"({"Numero":2,"DateCession":"31/02/2003"})", StatutRefuse, "n'existe pas"},
      {"rebuter", R"({"Numero":2})", StatutFait, "2"},
      {"detail", R"({"Numero":2,"Annees":[{"Annee":2004}]})", StatutRefuse, "2004"},
      {"detail", R"({"Numero":2,"Annees":[{"Annee":2002,"Reel":100.5}]})", StatutFait,
       R"("Monnaie":"euro","Annees":[{"Annee":2001,"Theorique":158.89,"Reel":158.89},)"
       R"({"Annee":2002,"Theorique":200,"Reel":100.5},{"Annee":2003,"Theorique":41.67,"Reel":41.67}]})"},
  };
  for (const auto& c : cas)
    Essaie({"--aujourdhui", "15/03/2003", "immobilisation"}, {{{c.action}, c.statut, c.dit, c.entree}});
  EXPECT_EQ(Bien(1)["Duree"], 5);
  EXPECT_EQ(Bien(1)["TauxAnnuel"], 35) << "the row of the other table";
  EXPECT_EQ(Bien(1)["TVAEuro"], 196);
  EXPECT_EQ(Bien(1)["PrixCessionEuro"], 700);
  EXPECT_EQ(Bien(2)["DateCession"], "15/03/2003");
  EXPECT_EQ(Bien(2)["Rebut"], 1);
  // What is listed goes back as it is.
  const Json avant = Bien(1);
  EXPECT_EQ(Verbe("modifier", avant.dump()).erreurs, "");
  EXPECT_EQ(Bien(1), avant);
  EXPECT_THAT(Lance({"immobilisation", "lister"}).sortie,
              HasSubstr("2   15/03/2001  Table d'examen  lineaire   15/03/2003 (Rebut)"));
}

TEST_F(ImmobilisationsCtl, CeQuiSeSupprime) {
  Cree();
  const std::string bien = R"({"DateAchat":"15/03/2001","PrixEuro":1196})";
  ASSERT_EQ(Verbe("ajouter", bien + "\n" + bien).statut, StatutFait);
  ASSERT_EQ(Verbe("rebuter", R"({"Numero":1})").statut, StatutFait);
  EXPECT_EQ(Verbe("rebuter", R"({"Numero":1,"DateCession":""})", {"--oui"}).erreurs, "");
  EXPECT_EQ(Bien(1)["DateCession"], "");
  const Resultat r = Verbe("supprimer", "{\"Numero\":1}\n{\"Numero\":1}\n{\"Numero\":2}", {"--oui"});
  EXPECT_EQ(r.statut, StatutRefuse);
  ASSERT_EQ(r.Lignes().size(), 3u);
  EXPECT_EQ(Json::parse(r.Lignes()[1])["entree"], 2);
  EXPECT_EQ(r.Lignes()[2], R"({"entree":3,"Numero":2})");
  EXPECT_EQ(Lance({"--json", "immobilisation", "lister"}).sortie, "");
  EXPECT_EQ(Lance({"immobilisation"}).statut, StatutUsage);
  Sain();
}

}  // namespace
}  // namespace fenlor::test
