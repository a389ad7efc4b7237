
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class AutomatiqueCtl : public CtlDeTest {
 protected:
  void SetUp() override { Cree(); }
  Resultat Auto(const std::string& action, const std::string& entree) {
    return Lance({"--aujourdhui", "15/03/2003", "automatique", action}, entree);
  }
  Resultat Echeances(std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"--aujourdhui", "15/03/2003", "echeances"});
    return Lance(options);
  }
};

constexpr const char* Loyer =
    R"({"Genre":2,"Date":"05/02/2003","Libelle":"Loyer","Tresorerie":"BQ","Compte":"6132","MontantEuro":700,"Periodicite":6,"NbPaiements":12})"
    "\n";
constexpr const char* Abonnement =
    R"({"Genre":2,"Date":"01/03/2003","Tresorerie":"512","Compte":"TEL","MontantEuro":30,"Periodicite":2,"Annoncer":1,"ModePaiement":1})"
    "\n";

TEST_F(AutomatiqueCtl, Modeles) {
  EXPECT_EQ(Lance({"automatique"}).statut, StatutUsage);
  const struct {
    const char *action, *entree;
    int statut;
    const char* dit;
  } cas[] = {
      {"ajouter", "{\"Genre\":3}\n", StatutRefuse, "\"Genre\\\" est incorrect"},
      {"ajouter", "{\"Genre\":2,\"MontantFranc\":3}\n", StatutRefuse, "MontantFranc\\\" est inconnu"},
      {"ajouter", "{\"Genre\":1,\"Compte\":\"706\",\"RepartitionEuro\":3}\n", StatutRefuse,
       "pour une recette"},
      {"ajouter", "{\"Genre\":2,\"Date\":\"31/02/2003\"}\n", StatutRefuse, "\"erreur\":3104"},
      {"ajouter", Loyer, StatutFait, "{\"entree\":1,\"Numero\":1}\n"},
      {"ajouter", Abonnement, StatutFait, "\"Numero\":2"},
      {"modifier", "{\"Libelle\":\"x\"}\n", StatutRefuse, "Numero"},
      {"modifier", "{\"Numero\":3,\"Libelle\":\"x\"}\n", StatutRefuse, "3510"},
      {"modifier", "{\"Numero\":1,\"MontantEuro\":800,\"RepartitionEuro\":600}\n", StatutFait,
       "\"Numero\":1"},
      {"lister", "", StatutFait,
       R"({"Numero":1,"Genre":2,"Libelle":"Loyer","Date":"05/02/2003","SaisieEuro":1,"Tresorerie":"5120000000",)"
       R"("MontantFranc":5247.66,"MontantEuro":800,"Compte":"6132000000","RepartitionFranc":3935.74,)"
       R"("RepartitionEuro":600,"CompteTaxe":"","TaxeFranc":0,"TaxeEuro":0,"TauxTaxe":0,"ModePaiement":0,)"
       R"("NbPaiements":12,"NbRestants":12,"Periodicite":6,"DerniereEcheance":"","Annoncer":0})"},
      {"lister", "", StatutFait, R"("ModePaiement":1,"NbPaiements":999,"NbRestants":999,"Periodicite":2)"},
      {"supprimer", "{\"Numero\":1}\n{\"Numero\":2}\n", StatutRefuse,
       "{\"entree\":1,\"Numero\":1}\n{\"entree\":2"},
  };
  for (const auto& c : cas)
    Essaie({"--aujourdhui", "15/03/2003", "automatique"}, {{{c.action}, c.statut, c.dit, c.entree}});
  EXPECT_EQ(Auto("lister", "").Lignes().size(), 1u);
}

TEST_F(AutomatiqueCtl, Echeances) {
  ASSERT_EQ(Auto("ajouter", std::string(Loyer) + Abonnement).statut, StatutFait);
  const std::string premiere =
      R"({"Echeance":1,"Numero":2,"Date":"01/03/2003","Libelle":"Téléphone et Internet","Tresorerie":"BQ",)"
      R"("Genre":2,"MontantEuro":30})";
  Resultat r = Echeances();
  ASSERT_EQ(r.Lignes().size(), 5u) << r.sortie << r.erreurs;
  EXPECT_EQ(r.Lignes()[1], R"({"Numero":1,"Date":"05/03/2003","Mouvement":2})");
  EXPECT_EQ(r.Lignes()[2], premiere);
  r = Echeances();
  ASSERT_EQ(r.Lignes().size(), 3u) << "what is automatic comes once, what is announced until it is confirmed";
  EXPECT_EQ(r.Lignes()[0], premiere);
  EXPECT_THAT(Echeances({"--confirmer", "1", "4"}).erreurs, HasSubstr("3511"));
  EXPECT_EQ(Echeances({"--confirmer", "2", "2"}).sortie,
            "{\"Echeance\":2,\"Numero\":2,\"Date\":\"08/03/2003\",\"Mouvement\":3}\n");
  EXPECT_EQ(Echeances({"--toutes"}).sortie, "");
  r = Echeances({"--prevision"});
  ASSERT_EQ(r.Lignes().size(), 10u) << r.sortie << r.erreurs;
  EXPECT_EQ(
      r.Lignes()[1],
      R"({"Mois":"04/2003","Tresorerie":"5120000000","Code":"BQ","Recettes":0,"Depenses":820,"Solde":-2310})");
  EXPECT_EQ(Echeances({"--prevision", "--toutes"}).statut, StatutUsage);
  Sain();
}

}  // namespace
}  // namespace fenlor::test
