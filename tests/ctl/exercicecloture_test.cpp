// A closed exercice, and a practice on a disk that may only be read, against every verb of fenlorctl: what
// would change them is refused.

#include <regex>
#include <set>

#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

struct ExerciceComplet : CtlDeTest {
  ExerciceComplet() {
    setenv("FENLOR_AUJOURDHUI", "20/03/2003", 1);
    Cree({"--exercice", "2003", "--euro", "--tva"});
    Fait(
        {"saisir"},
        R"({"journal":"recettes","date":"10/03/2003","compte":"706","ttc":20,"tresorerie":"512","paiement":"cheque"}
{"journal":"depenses","date":"11/03/2003","compte":"606","ttc":20,"tresorerie":"512","libelle":"D"}
{"journal":"recettes","date":"12/03/2003","compte":"706","ttc":30,"tresorerie":"512","paiement":"cheque"})");
    Fait({"importer", "Immo"},
         R"({"Numero":1,"Designation":"T","DateAchat":"15/03/2003","Duree":5,"ValeurAmortissableEuro":900})");
    Fait({"importer", "BANQUE"},
         R"({"Compte":"512","Libelle":"Op","Date":"15/03/2003","MontantEuro":20,"Sens":1})");
    Fait(
        {"automatique", "ajouter"},
        R"({"Genre":2,"Date":"15/01/2003","Tresorerie":"512","Compte":"606","MontantEuro":3,"Periodicite":6})");
    EcritFichier(Cabinet() + "/releve.csv", "Date;Libelle;Montant\n15/03/2003;X;1,50\n");
    Fait({"remise", "remettre", "--mouvement", "1", "--date", "20/03/2003"});
    Fait({"valider", "--oui"});
  }
  ~ExerciceComplet() override { unsetenv("FENLOR_AUJOURDHUI"); }

  void Fait(const std::vector<std::string>& args, const std::string& entree = {}) {
    const Resultat r = Lance(args, entree);
    EXPECT_EQ(r.statut, StatutFait) << args[0] << r.erreurs;
  }
  std::string Livres() {
    std::string tout;
    for (const char* nom : {"JOURNAL", "COMPTES", "RUBRIQUE", "BANQUE", "RELEVES", "AUTO", "Immo", "Amo"})
      tout += Lance({"exporter", nom}).sortie;
    return tout + LitFichier(Cabinet() + "/2003/TEXTES.dat") + LitFichier(Cabinet() + "/fenlor.ini");
  }
  /// Names that a help lists behind a title.
  std::vector<std::string> Liste(const std::vector<std::string>& args, const std::string& titre) {
    std::vector<std::string> noms;
    bool dedans = false;
    for (const std::string& ligne : Lance(args).Lignes()) {
      if (ligne.empty() || ligne[0] != ' ') dedans = ligne == titre;
      std::smatch nom;
      if (dedans && std::regex_search(ligne, nom, std::regex("^  ([a-z0-9-]+)  "))) noms.push_back(nom[1]);
    }
    return noms;
  }
};

struct Ordre {
  std::vector<std::string> args;
  std::string entree = {};
};
const Ordre Refuses[] = {
    {{"saisir"}, R"({"journal":"recettes","date":"10/03/2003","compte":"706","ttc":20,"tresorerie":"512"})"},
    {{"saisir"}, R"({"mouvement":1,"supprimer":true})"},
    {{"saisir"}, R"({"mouvement":1,"pointer":true})"},
    {{"saisir"}, R"({"mouvement":1,"rapprocher":true})"},
    {{"valider"}},
    {{"virement", "--de", "512", "--vers", "530", "--montant", "5", "--date", "15/03/2003"}},
    {{"renumeroter", "--journal", "recettes", "--mois", "03/2003"}},
    {{"deplacer", "--mouvement", "1", "--mois", "4"}},
    {{"compte", "ajouter", "--compte", "604", "--forme", "depenses", "--designation", "A", "--code", "ZA"}},
    {{"compte", "modifier", "706", "--designation", "Autre"}},
    {{"compte", "supprimer", "708"}},
    {{"rubrique", "ajouter", "--code", "99", "--designation", "X"}},
    {{"rubrique", "modifier", "1", "--designation", "X"}},
    {{"rubrique", "supprimer", "1"}},
    {{"frais-km", "enregistrer", "--distance", "9000"}},
    {{"frais-km", "supprimer"}},
    {{"remise", "remettre", "--mouvement", "3"}},
    {{"remise", "retirer", "--mouvement", "1"}},
    {{"rapprochement", "ajouter"},
     R"({"Compte":"512","Libelle":"O","Date":"15/03/2003","MontantEuro":20,"Sens":1})"},
    {{"rapprochement", "supprimer", "1"}},
    {{"rapprochement", "manuel", "1", "--mouvement", "1"}},
    {{"rapprochement", "automatique", "--compte", "512"}},
    {{"releve", "importer", "releve.csv", "--compte", "512"}},
    {{"automatique", "ajouter"},
     R"({"Genre":2,"Date":"15/01/2003","Tresorerie":"512","Compte":"606","MontantEuro":3,"Periodicite":6})"},
    {{"automatique", "modifier"}, R"({"Numero":1,"MontantEuro":4})"},
    {{"automatique", "supprimer"}, R"({"Numero":1})"},
    {{"immobilisation", "ajouter"}, R"({"PrixEuro":3,"DateAchat":"15/03/2003"})"},
    {{"immobilisation", "modifier"}, R"({"Numero":1,"Designation":"Z"})"},
    {{"immobilisation", "ceder"}, R"({"Numero":1,"DateCession":"16/03/2003","PrixCessionEuro":7})"},
    {{"immobilisation", "rebuter"}, R"({"Numero":1,"DateCession":"16/03/2003"})"},
    {{"immobilisation", "supprimer"}, R"({"Numero":1})"},
    {{"immobilisation", "detail"}, R"({"Numero":1,"Annees":[{"Annee":2003,"Reel":5}]})"},
    {{"importer", "BANQUE"}, R"({"Compte":"512","Date":"15/03/2003","MontantEuro":20,"Sens":1})"},
    {{"importer", "Immo"}, R"({"Numero":2,"DateAchat":"15/03/2003"})"},
    {{"importer", "Amo"}, R"({"Numero":1,"Annee":2003})"},
    {{"recalculer", "--euros"}},
    {{"creer", "--exercice", "2003", "--euro"}},
    {{"cloturer"}},
    {{"corbeille", "restaurer", "1"}},
};
/// They read, make something beside the exercice, or are told to stay open.
const char Permis[] =
    "exercices,journal,etat,exporter,balance,verifier,sceau,sauvegarder,restaurer,sauvegardes,chercher,"
    "graphique,amortissement,recalculer,reconstruire,demo,echeances,compte lister,rubrique lister,"
    "frais-km afficher,remise lister,rapprochement lister,rapprochement solde,automatique lister,"
    "immobilisation lister,corbeille lister";

TEST_F(ExerciceComplet, ClotureChaqueVerbeQuiEcritEstRefuse) {
  Fait({"cloturer", "--oui"});
  std::set<std::string> connus;
  std::istringstream permis(Permis);
  for (std::string verbe; std::getline(permis, verbe, ',');) connus.insert(verbe);
  const std::string avant = Livres();
  for (Ordre ordre : Refuses) {
    connus.insert(ordre.args[0]);
    connus.insert(ordre.args[0] + " " + (ordre.args.size() > 1 ? ordre.args[1] : ""));
    for (std::string& arg : ordre.args)
      if (arg == "releve.csv") arg = Cabinet() + "/releve.csv";
    ordre.args.push_back("--oui");
    const Resultat r = Lance(ordre.args, ordre.entree);
    EXPECT_EQ(r.statut, StatutRefuse) << ordre.args[0] << " " << ordre.entree << r.sortie << r.erreurs;
    EXPECT_THAT(r.erreurs, HasSubstr("3056")) << ordre.args[0] << " " << ordre.entree;
    ASSERT_EQ(Livres(), avant) << ordre.args[0] << " " << ordre.entree;
  }
  for (const char* reste : {"recalculer", "echeances"}) Fait({reste});
  EXPECT_EQ(Livres(), avant);
  EXPECT_EQ(Lance({"sceau"}).statut, StatutFait);
  const auto verbes = Liste({"--help"}, "Commandes:");
  EXPECT_GT(verbes.size(), 25u);
  for (const std::string& verbe : verbes) {
    const auto actions = Liste({verbe, "--help"}, "Actions:");
    EXPECT_TRUE(connus.count(verbe) || !actions.empty()) << verbe << " is not in the table";
    for (const std::string& action : actions)
      EXPECT_TRUE(connus.count(verbe + " " + action) || connus.count(verbe)) << verbe << " " << action;
  }
}

/// On a disk that may only be read: what reads answers as ever, what writes is refused, and nothing is
/// touched.
TEST_F(ExerciceComplet, EnLectureSeuleChaqueVerbeQuiEcritEstRefuse) {
  const std::vector<std::vector<std::string>> lectures = {
      {"exercices"},
      {"journal", "--journal", "recettes", "--mois", "03/2003"},
      {"exporter", "JOURNAL"},
      {"exporter", "Amo"},
      {"balance"},
      {"verifier"},
      {"chercher", "D"},
      {"amortissement"},
      {"compte", "lister", "--forme", "plan"},
      {"rubrique", "lister"},
      {"immobilisation", "lister"},
      {"automatique", "lister"},
      {"corbeille", "lister"},
      {"frais-km", "afficher"},
      {"etat", "detail", "--marquage"},
      {"etat", "grand-livre", "--marquage"},
      {"etat", "centralisation", "--marquage"},
      {"graphique", "--compte", "706", "--texte"}};
  const auto dossier = [this] {
    std::map<std::string, std::string> fichiers;
    for (const auto& e : std::filesystem::recursive_directory_iterator(Cabinet()))
      fichiers[e.path().string()] = std::to_string(e.last_write_time().time_since_epoch().count()) +
                                    (e.is_regular_file() ? LitFichier(e.path().string()) : std::string());
    return fichiers;
  };
  std::vector<std::string> lus;
  for (const auto& args : lectures) lus.push_back(Lance(args).sortie);
  SystemePosix vrai;
  SystemeGarde disque(vrai);
  disque.Garde(Cabinet());
  auto avant = dossier();
  for (std::size_t rang = 0; rang < lectures.size(); ++rang) {
    const Resultat r = LanceSur(Cabinet(), lectures[rang], {}, &disque);
    EXPECT_EQ(r.statut, StatutFait) << lectures[rang][0] << r.erreurs;
    EXPECT_EQ(r.sortie, lus[rang]);
    EXPECT_EQ(std::count(r.erreurs.begin(), r.erreurs.end(), '\n'), 1) << r.erreurs;
    EXPECT_THAT(r.erreurs, HasSubstr("lecture seule")) << lectures[rang][0];
  }
  std::filesystem::create_directory(Cabinet("copies"));
  const Resultat copie = LanceSur(Cabinet(), {"sauvegarder", "--dossier", Cabinet("copies")}, {}, &disque);
  ASSERT_EQ(copie.statut, StatutFait) << copie.erreurs;
  std::vector<Ordre> ordres(std::begin(Refuses), std::end(Refuses));
  ordres.push_back({{"restaurer", copie.Lignes()[0]}});
  ordres.insert(ordres.end(),
                {{{"recalculer"}}, {{"reconstruire"}}, {{"creer", "--exercice", "2005", "--euro"}}});
  for (Ordre ordre : ordres) {
    for (std::string& arg : ordre.args)
      if (arg == "releve.csv") arg = Cabinet() + "/releve.csv";
    ordre.args.push_back("--oui");
    const Resultat r = LanceSur(Cabinet(), ordre.args, ordre.entree, &disque);
    EXPECT_EQ(r.statut, StatutRefuse) << ordre.args[0] << " " << ordre.entree << r.sortie << r.erreurs;
    EXPECT_THAT(r.sortie + r.erreurs, HasSubstr("3563")) << ordre.args[0] << " " << ordre.entree << r.sortie;
  }
  EXPECT_EQ(dossier(), avant);
  // Without keys, and without a file that nobody needed yet: both are in memory alone.
  for (const char* nom : {"/2003/COMPTES.idx", "/Amo.dat"}) std::filesystem::remove(Cabinet() + nom);
  avant = dossier();
  for (const auto& args : lectures) {
    const Resultat r = LanceSur(Cabinet(), args, {}, &disque);
    EXPECT_EQ(r.statut, StatutFait) << args[0] << r.erreurs;
  }
  EXPECT_THAT(LanceSur(Cabinet(), {"balance"}, {}, &disque).erreurs, HasSubstr("en mémoire"));
  EXPECT_EQ(dossier(), avant);
}

}  // namespace
}  // namespace fenlor::test
