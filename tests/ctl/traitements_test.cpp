#include "ctl/ctldetest.h"
#include "outils/systemefautif.h"

namespace fenlor::test {
namespace {

class TraitementsCtl : public CtlDeTest {
 protected:
  void SetUp() override {
    Cree();
    Saisit(
        R"({"journal":"recettes","date":"31/03/2003","compte":"706","ttc":100,"tresorerie":"BQ","pointer":true}
{"journal":"recettes","date":"02/03/2003","compte":"706","ttc":20,"tresorerie":"CA"}
{"journal":"depenses","date":"05/03/2003","code":"TEL","ttc":60,"tresorerie":"BQ"})");
  }
  /// "1v 2 3v": the entries, validated ones marked.
  std::string Etats() {
    std::map<int, bool> etats;
    for (const Json& ligne : Journal()) etats[ligne["Mouvement"]] = ligne["Validee"] != 0;
    std::string texte;
    for (const auto& [mouvement, validee] : etats)
      texte += (texte.empty() ? "" : " ") + std::to_string(mouvement) + (validee ? "v" : "");
    return texte;
  }
  Json Entete(int mouvement) {
    for (const Json& ligne : Journal())
      if (ligne["Mouvement"] == mouvement) return ligne;
    return {};
  }
};

TEST_F(TraitementsCtl, Valider) {
  struct Cas {
    std::vector<std::string> options;
    int statut;
    const char* sortie;
    const char* etats;
  };
  const Cas cas[] = {
      {{"--journal", "od"}, 0, "0 écriture(s) validée(s).\n", "1 2 3"},
      {{"--du", "01/04/2003"}, 0, "0 écriture(s) validée(s).\n", "1 2 3"},
      {{"--rapprochees"}, 0, "0 écriture(s) validée(s).\n", "1 2 3"},
      {{"--montant-min", "60", "--montant-max", "60,00"}, 0, "1 écriture(s) validée(s).\n", "1 2 3v"},
      {{"--montant-max", "200", "--monnaie", "franc"}, 0, "1 écriture(s) validée(s).\n", "1 2v 3v"},
      {{"--mouvement", "2", "99", "1", "1"}, 1, "Écriture 2 validée.\nÉcriture 1 validée.\n", "1v 2v 3v"},
  };
  for (const Cas& c : cas) {
    std::vector<std::string> args{"valider"};
    args.insert(args.end(), c.options.begin(), c.options.end());
    const Resultat r = Lance(args);
    EXPECT_EQ(c.statut, r.statut) << r.erreurs;
    EXPECT_EQ(c.sortie, r.sortie);
    EXPECT_EQ(c.etats, Etats());
    EXPECT_EQ(c.statut ? "Erreur 3202 : L'écriture 99 n'existe pas.\n" : "", r.erreurs);
  }
  EXPECT_EQ("{\"lignes\":6,\"ecritures\":0}\n", Lance({"valider", "--json"}).sortie);
  Sain();
}

TEST_F(TraitementsCtl, Virement) {
  const auto vire = [&](std::vector<std::string> options) {
    std::vector<std::string> args{"virement", "--aujourdhui", "15/03/2003", "--de", "BQ"};
    args.insert(args.end(), options.begin(), options.end());
    return Lance(args);
  };
  Resultat r = vire({"--vers", "ca", "--montant", "50,5"});
  ASSERT_EQ(StatutFait, r.statut) << r.erreurs;
  EXPECT_EQ("Virement enregistré : dépense 4, recette 5.\n", r.sortie);
  EXPECT_EQ("Virement interne", Entete(4)["Libelle"]);
  EXPECT_EQ(50.5, Entete(5)["MontantEuro"]);
  r = vire({"--vers", "CA", "--montant", "10", "--date", "1/2/2003", "--libelle", "Dépôt", "--json"});
  EXPECT_EQ("{\"depense\":6,\"recette\":7}\n", r.sortie);
  EXPECT_EQ("Dépôt", Entete(7)["Libelle"]);

  Essaie({"virement", "--aujourdhui", "15/03/2003", "--de", "BQ", "--montant", "10"},
         {{{"--vers", "CA", "--date", "01/01/2004"}, StatutRefuse, "Erreur 3089 : "},
          {{"--vers", "CA", "--libelle", "日"}, StatutRefuse, "Erreur 3205 : "},
          {{"--vers", "CA", "--libelle", std::string(81, 'x')}, StatutRefuse, "Erreur 3206 : "}});
  EXPECT_EQ("1 2 3 4 5 6 7", Etats());
  Sain();
}

TEST_F(TraitementsCtl, RenumeroterEtDeplacer) {
  const auto numeros = [&] {
    return std::to_string(Entete(1)["Ligne"].get<int>()) + std::to_string(Entete(2)["Ligne"].get<int>());
  };
  EXPECT_EQ("12", numeros());
  Resultat r = Lance({"renumeroter", "--journal", "recettes", "--mois", "03/2003"});
  EXPECT_EQ("2 écriture(s) renumérotée(s).\n", r.sortie) << r.erreurs;
  EXPECT_EQ("21", numeros()) << "in the order of the window: by date";
  ASSERT_EQ(StatutFait, Lance({"valider", "--mouvement", "1"}).statut);
  r = Lance({"renumeroter", "--journal", "recettes", "--mois", "3/2003", "--mode", "validees", "--json"});
  EXPECT_EQ(0u, r.erreurs.find("Erreur 3430 : ")) << r.erreurs;
  EXPECT_EQ("21", numeros()) << "a partial list would leave duplicates";
  r = Lance(
      {"renumeroter", "--journal", "recettes", "--mois", "3/2003", "--mode", "validees", "--json", "--oui"});
  EXPECT_EQ("{\"ecritures\":1}\n", r.sortie) << r.erreurs;
  EXPECT_EQ("11", numeros());
  r = Lance({"renumeroter", "--journal", "recettes", "--mois", "01/2004"});
  EXPECT_EQ(0u, r.erreurs.find("Erreur 3205 : ")) << "not of the exercice";

  EXPECT_EQ("{\"mouvement\":2}\n", Lance({"deplacer", "--mouvement", "2", "--mois", "4", "--json"}).sortie);
  EXPECT_EQ("02/04/2003", Entete(2)["Date"]);
  Resultat deux = Lance({"deplacer", "--mouvement", "1", "99", "3", "--mois", "5"});
  EXPECT_EQ(StatutRefuse, deux.statut) << "one of them";
  EXPECT_EQ("Écriture 1 déplacée.\nÉcriture 3 déplacée.\n", deux.sortie);
  Sain();
}

TEST_F(TraitementsCtl, UneSeuleUnite) {
  Systeme& disque = *Options().magasin.systeme;
  const auto synchros = [&](std::vector<std::string> args) {
    SystemeFautif compteur(disque);
    Options().magasin.systeme = &compteur;
    EXPECT_EQ(StatutFait, Lance(std::move(args)).statut);
    Options().magasin.systeme = &disque;
    return compteur.Compte(SystemeFautif::Synchro);
  };
  for (const char* commande : {"deplacer", "valider"}) {
    std::vector<std::string> une{commande, "--mouvement", "1"},
        toutes{commande, "--mouvement", "2", "3", "1"};
    if (une[0] == "deplacer") {
      une.insert(une.end(), {"--mois", "5"});
      toutes.insert(toutes.end(), {"--mois", "8"});
    }
    const u64 seule = synchros(une);
    EXPECT_GT(seule, 0u) << commande;
    EXPECT_EQ(synchros(toutes), seule) << commande;
  }
  EXPECT_EQ("05/08/2003", Entete(3)["Date"]);
  EXPECT_EQ("1v 2v 3v", Etats());
  Sain();
}

TEST_F(TraitementsCtl, Usage) {
  const std::vector<std::string> cas[] = {
      {"valider", "--journal", "banque"},
      {"valider", "--mouvement", "0"},
      {"valider", "--mouvement", "3", "--pointees"},
      {"valider", "--du", "31/02/2003"},
      {"virement", "--de", "BQ", "--montant", "5"},
      {"virement", "--de", "BQ", "--vers", "CA", "--montant", "cinq"},
      {"renumeroter", "--journal", "recettes", "--mois", "13/2003"},
      {"renumeroter", "--mois", "03/2003"},
      {"deplacer", "--mouvement", "1", "--mois", "13"},
      {"deplacer", "--mois", "3"},
      {"deplacer", "--mouvement", "99999999999", "--mois", "3"},
  };
  for (const auto& args : cas) Essaie(args, {{{}, StatutUsage, "fenlorctl : "}});
}

}  // namespace
}  // namespace fenlor::test
