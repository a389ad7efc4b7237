
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class Fiches : public CtlDeTest {
 protected:
  void Essaie(const std::vector<Appel>& appels) { CtlDeTest::Essaie({"compte"}, appels); }
  Json Compte(const std::string& numero) {
    return Lance({"exporter", "COMPTES"}).Objet("Compte", QVAPI::GetLongCompte(numero));
  }
};

TEST_F(Fiches, UnPlanDeComptesArrange) {
  Cree({"--exercice", "2003", "--euro", "--tva"});
  Essaie({
      {{}, StatutUsage, "il manque ajouter"},
      {{"ajouter", "--code", "A"}, StatutUsage, "il manque --forme"},
      {{"ajouter", "--forme", "plan", "--code", "A"}, StatutUsage, "il manque --type"},
      {{"ajouter", "--forme", "recettes", "--type", "tva"}, StatutUsage, "--type va avec"},
      {{"modifier", "706", "--part-pro", "abc"}, StatutUsage, "nombre incorrect"},
      {{"ajouter", "--forme", "recettes", "--compte", "7069"}, StatutRefuse, "Erreur 3057"},
      {{"ajouter", "--forme", "recettes", "--code", "bq", "--compte", "512"}, StatutRefuse, "Erreur 3058"},
      {{"ajouter", "--forme", "recettes", "--code", "X", "--taux", "5"}, StatutRefuse, "sans objet"},
      {{"ajouter", "--forme", "recettes", "--code", "X", "--rubrique", "08"}, StatutRefuse, "rubrique"},
      {{"ajouter", "--forme", "recettes", "--code", "X", "--tva", "706"}, StatutRefuse, "compte de T.V.A."},
      {{"ajouter", "--forme", "recettes", "--code", "NOTES", "--compte", "7069", "--designation",
        "Actes à 19,6", "--rubrique", "01", "--tva", "4451"},
       StatutFait,
       "Compte 7069 enregistré."},
      {{"ajouter", "--forme", "tresorerie", "--code", "CAGNOTTE", "--caisse", "--debit-initial", "12,50"},
       StatutFait,
       "Compte 5301 enregistré."},
      {{"ajouter", "--forme", "tresorerie", "--code", "CR", "--credit-initial", "5"},
       StatutRefuse,
       "Erreur 3334 : Attention !"},
      {{"ajouter", "--forme", "tresorerie", "--code", "CR", "--credit-initial", "5", "--oui"},
       StatutFait,
       "5101"},
      {{"ajouter", "--forme", "plan", "--type", "recette", "--code", "X", "--compte", "6199", "--oui"},
       StatutFait,
       ""},
      {{"modifier", "9999", "--code", "X"}, StatutRefuse, "n'existe pas"},
      {{"modifier", "706", "--forme", "depenses", "--code", "X"}, StatutRefuse, "autre type"},
      {{"supprimer", "6199"}, StatutFait, "supprimé"},
  });
  EXPECT_TRUE(Compte("6199").is_null());
  EXPECT_EQ(Compte("5301")["SoldeInitialEuro"], -12.5);
  EXPECT_EQ(Compte("5301")["TypeTresorerie"], 0);
  EXPECT_EQ(Compte("5101")["SoldeInitialEuro"], 5);

  // A balance has one side: giving the other one takes the first away.
  Essaie({{{"modifier", "5101", "--debit-initial", "3"}, StatutFait, ""}});
  EXPECT_EQ(Compte("5101")["SoldeInitialEuro"], -3);

  // Only what is given changes.
  const Json avant = Compte("7069");
  EXPECT_EQ(avant["Designation"], "Actes à 19,6");
  EXPECT_EQ(avant["TauxTVA"], 19.6);
  Essaie({{{"modifier", "7069", "--designation", "Actes"}, StatutFait, ""}});
  Json attendu = avant;
  attendu["Designation"] = "Actes";
  EXPECT_EQ(Compte("7069"), attendu);
  Essaie(
      {{{"modifier", "7069", "--tva", "", "--rubrique", "", "--compte", "7068"}, StatutFait, "Compte 7068"}});
  EXPECT_EQ(Compte("7068")["Rubrique"], "");
  EXPECT_EQ(Compte("7068")["TauxTVA"], 0);
  EXPECT_TRUE(Compte("7069").is_null());

  const Resultat liste = Lance({"compte", "lister", "--forme", "tresorerie"});
  EXPECT_THAT(liste.Lignes().at(0), HasSubstr("Solde Rapproché"));
  EXPECT_THAT(liste.sortie, HasSubstr("D 12,50\n"));
  EXPECT_EQ(
      Json::parse(Lance({"compte", "lister", "--forme", "recettes", "--json"}).Lignes().at(0))["Rubrique"],
      "");
  Sain();
}

}  // namespace
}  // namespace fenlor::test
