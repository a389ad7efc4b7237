
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

using ::testing::EndsWith;

struct GardeCtl : CtlDeTest {
  GardeCtl() {
    setenv("FENLOR_AUJOURDHUI", "15/03/2003", 1);
    unsetenv("FENLOR_MOT_DE_PASSE_SAUVEGARDE");
    Cree();
    EXPECT_EQ(SystemePosix().CreeDossier(copies), 0);
  }
  ~GardeCtl() override {
    unsetenv("FENLOR_AUJOURDHUI");
    unsetenv("FENLOR_MOT_DE_PASSE_SAUVEGARDE");
  }
  Json Objet(std::vector<std::string> args) {
    args.insert(args.begin(), "--json");
    const Resultat r = Lance(std::move(args));
    EXPECT_EQ(r.statut, StatutFait) << r.erreurs;
    return r.Lignes().empty() ? Json() : Json::parse(r.Lignes()[0]);
  }
  void Recette() {
    Saisit(R"({"journal":"recettes","date":"10/03/2003","compte":"706","ttc":20,"tresorerie":"512"})");
  }
  const std::string copies = Cabinet("copies");
};

TEST_F(GardeCtl, UneSauvegardeDuDebutALaFin) {
  Recette();
  const Resultat faite = Lance({"sauvegarder", "--dossier", copies});
  ASSERT_EQ(faite.statut, StatutFait) << faite.erreurs;
  const std::string chemin = faite.Lignes().at(0);
  EXPECT_THAT(LitFichier(Cabinet("registre") + "/registre.ini"), HasSubstr("Date sauvegarde=15/03/2003"));
  EXPECT_THAT(chemin, EndsWith(".fnz"));
  const Json complete = Objet({"sauvegarder", "--dossier", copies, "--tout-le-cabinet"});
  EXPECT_EQ(complete["exercices"], "2003");
  EXPECT_EQ(complete["ecritures"], 1);
  EXPECT_EQ(complete["protegee"], false);
  EXPECT_GT(complete["octets"], complete["taille"]);
  const Json listee = Objet({"sauvegardes", "lister", "--dossier", copies});
  EXPECT_EQ(listee["date"], "15/03/2003");
  EXPECT_EQ(listee["refus"], "");
  EXPECT_EQ(Objet({"sauvegardes", "verifier", chemin})["nom"], "2003");
  EXPECT_EQ(Lance({"sauvegardes", "purger", "--dossier", copies, "--jours", "1"}).sortie, "");

  Recette();
  const Json rendue = Objet({"restaurer", chemin});
  EXPECT_EQ(rendue["exercice"], "2003");
  EXPECT_EQ(rendue["constats"], 0);
  EXPECT_THAT(rendue["ancien"].get<std::string>(), HasSubstr("2003.avant-20030315"));
  EXPECT_EQ(Objet({"sauvegarder", "--dossier", copies})["ecritures"], 1);
  EXPECT_EQ(LanceSur(Cabinet("autre"), {"restaurer", complete["fichier"]}).statut, StatutFait);
  EXPECT_EQ(LanceSur(Cabinet("autre"), {"verifier"}).statut, StatutFait);
}

TEST_F(GardeCtl, LesRefus) {
  setenv("FENLOR_MOT_DE_PASSE_SAUVEGARDE", "secret", 1);
  const std::string protegee = Objet({"sauvegarder", "--dossier", copies})["fichier"];
  unsetenv("FENLOR_MOT_DE_PASSE_SAUVEGARDE");
  EcritFichier(copies + "/autre.fnz", "rien");
  Essaie({}, {
                 {{"sauvegarder", "--dossier", copies + "/absent"}, StatutRefuse, "3520"},
                 {{"sauvegarder", "--dossier", copies, "--proteger"}, StatutRefuse, "3533"},
                 {{"restaurer", protegee}, StatutRefuse, "3526"},
                 {{"restaurer", copies + "/autre.fnz"}, StatutRefuse, "3522"},
                 {{"restaurer", copies + "/absent.fnz"}, StatutRefuse, "3521"},
                 {{"sauvegardes", "lister", "--dossier", copies + "/absent"}, StatutRefuse, "3586"},
                 {{"sauvegarder"}, StatutUsage, ""},
                 {{"sauvegardes"}, StatutUsage, ""},
             });
  EXPECT_THAT(Lance({"sauvegardes", "lister", "--dossier", copies}).sortie,
              HasSubstr("autre.fnz  autre.fnz n'est pas une sauvegarde"));
}

TEST_F(GardeCtl, UneCloture) {
  Recette();
  EXPECT_EQ(Objet({"sceau"})["etat"], "absent");
  EXPECT_THAT(Lance({"cloturer"}).erreurs, HasSubstr("3033"));
  ASSERT_EQ(Lance({"valider", "--oui"}).statut, StatutFait);
  EXPECT_THAT(Lance({"cloturer"}).erreurs, HasSubstr("3322"));
  const Json close = Objet({"cloturer", "--oui"});
  EXPECT_EQ(close["cloture"], "15/03/2003");
  EXPECT_EQ(close["sceau"].get<std::string>().size(), 64u);
  EXPECT_EQ(Objet({"sceau"})["etat"], "intact");
  EcritFichier(Cabinet() + "/fenlor.ini", [&] {
    std::string texte = LitFichier(Cabinet() + "/fenlor.ini");
    return texte.replace(texte.find("TVA=Non"), 7, "TVA=Oui");
  }());
  EXPECT_EQ(Lance({"verifier"}).statut, StatutRefuse);
  EXPECT_THAT(Lance({"sceau"}).sortie, HasSubstr("rompu"));
}

}  // namespace
}  // namespace fenlor::test
