
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class AmortissementCtl : public CtlDeTest {
 protected:
  static std::string Bien(const std::string& reste = "") {
    return "{\"Designation\":\"Échographe\",\"DateAchat\":\"15/03/2003\",\"ValeurAmortissableEuro\":10000,"
           "\"ValeurAmortissableFranc\":65595.7,\"Duree\":5,\"TauxAnnuel\":20" +
           reste + "}\n";
  }
};

TEST_F(AmortissementCtl, UnEcheancier) {
  Cree({"--exercice", "2005"});
  Resultat r = Lance({"amortissement"}, Bien());
  EXPECT_THAT(r.Lignes(),
              ElementsAre("Échographe, achat le 15/03/2003",
                          "Année  Théorique F  Théorique €    Réel F   Réel €   Cumul F  Cumul €",
                          "2003      10422,43      1588,89  10422,43  1588,89  10422,43  1588,89",
                          "2004      13119,14      2000,00  13119,14  2000,00  23541,57  3588,89",
                          "2005      13119,14      2000,00  13119,14  2000,00  36660,71  5588,89"))
      << r.erreurs;
  r = Lance({"--json", "amortissement", "--au", "31/12/2010"},
            Bien(",\"Numero\":3,\"DateCession\":\"10/04/2005\""));
  ASSERT_EQ(r.Lignes().size(), 3u) << r.erreurs;
  const Json derniere = Json::parse(r.Lignes()[2]);
  EXPECT_EQ(derniere["Annee"], 2005);
  EXPECT_EQ(derniere["TheoriqueEuro"], 555.56);
  EXPECT_EQ(derniere["CumulEuro"], 4144.45);
}

TEST_F(AmortissementCtl, UnBienImporte) {
  Cree({"--exercice", "2005"});
  ASSERT_EQ(Lance({"importer", "Immo"}, Bien(",\"Numero\":3")).statut, 0);
  ASSERT_EQ(Lance({"importer", "Amo"}, "{\"Numero\":3,\"Annee\":2004,\"ReelEuro\":8000.0,\"ReelFranc\":0}\n")
                .statut,
            0);
  Resultat r = Lance({"--json", "amortissement", "--numero", "3"});
  ASSERT_EQ(r.Lignes().size(), 3u) << r.erreurs;
  EXPECT_EQ(Json::parse(r.Lignes()[1])["TheoriqueEuro"], 2000);
  EXPECT_EQ(Json::parse(r.Lignes()[1])["ReelEuro"], 8000);
  EXPECT_EQ(Json::parse(r.Lignes()[2])["TheoriqueEuro"], 411.11) << "what the correction left";
  EXPECT_EQ(Lance({"--json", "amortissement"}, Lance({"exporter", "Immo"}).sortie).sortie, r.sortie);
  Sain("2005");
}

TEST_F(AmortissementCtl, LesRefus) {
  Cree({"--exercice", "2005"});
  const std::string degressif = R"({"DateAchat":"01/01/2003","TauxAnnuel":20,"TypeAmortissement":1})";
  Essaie({"amortissement"},
         {
             {{"--numero", "9"}, StatutRefuse, "n'existe pas"},
             {{"--numero", "1", "--fichier", "-"}, StatutUsage, "incompatibles"},
             {{"--au", "31/02/2004"}, StatutUsage, "date incorrecte"},
             {{"--fichier", "/nulle/part"}, StatutRefuse, "Erreur 3117"},
             {{}, StatutRefuse, "\"TauxAnnuel\" est obligatoire", "{\"DateAchat\":\"01/01/2003\"}"},
             {{}, StatutRefuse, "\"Duree\"", degressif},
             {{}, StatutRefuse, "\"TypeAmortissement\" est incorrect", Bien(",\"TypeAmortissement\":3")},
             {{}, StatutRefuse, "2005", "{\"DateAchat\":\"\",\"TauxAnnuel\":20}\n" + Bien()},
             {{"--exercice", "1999"}, StatutRefuse, "1999", Bien()},
             {{"--exercice", "1999", "--au", "31/12/2003"}, StatutFait, "1588,89", Bien()},
         });
}

using FraisKmCtl = CtlDeTest;

TEST_F(FraisKmCtl, UneAnnee) {
  Cree();
  Essaie({"frais-km"},
         {
             {{}, StatutUsage, "il manque afficher"},
             {{"enregistrer", "--distance", "1000000"}, StatutUsage, "kilomètres incorrects"},
             {{"enregistrer", "--distance", "5", "--dernier", "6"}, StatutUsage, "incompatibles"},
             {{"enregistrer", "--taux-1", "1000"}, StatutUsage, "incorrect"},
             {{"afficher"}, StatutFait, "Distance :                        0\n"},
             {{"enregistrer"}, StatutRefuse, "Erreur 3106"},
             {{"enregistrer", "--distance", "5000", "--taux-1", "0,5"}, StatutFait, "2500,00 €"},
             {{"enregistrer", "--distance", "4000"}, StatutRefuse, "Erreur 3380"},
             {{"--oui", "enregistrer", "--ancien", "10000", "--dernier", "30000"}, StatutFait, "8535,00 €"},
             {{"afficher"}, StatutFait, "10000 - 30000"},
             {{"supprimer"}, StatutFait, "supprimés"},
             {{"supprimer"}, StatutFait, "Aucun montant"},
         });
}

TEST_F(FraisKmCtl, LesEcrituresNePartentQueSurOrdre) {
  Cree();
  Essaie({}, {{{"compte", "modifier", "6251", "--rubrique", "23A"}, StatutFait, ""},
              {{"rubrique", "modifier", "23A", "--formule", "&FRAISKM"}, StatutFait, ""}});
  Saisit(R"({"journal":"depenses","date":"15/03/2003","compte":"6251","ttc":60,"tresorerie":"BQ"})");
  const std::vector<std::string> enregistre{"--oui", "frais-km", "enregistrer"};
  Essaie(enregistre, {{{"--distance", "1000"}, StatutFait, "1 écriture(s) restent"}});
  EXPECT_EQ(Journal().size(), 2u);
  Essaie(enregistre, {{{"--supprimer-ecritures"}, StatutFait, "1 écriture(s) supprimée(s)"}});
  EXPECT_EQ(Journal().size(), 0u);
  const Json affiche = Json::parse(Lance({"--json", "frais-km", "afficher"}).sortie);
  EXPECT_EQ(affiche["kms"], 1000);
  EXPECT_EQ(affiche["montant"], 636);
  Sain();
}

}  // namespace
}  // namespace fenlor::test
