// fenlorctl releve importer: parsing, JSON, what is written and what is not.

#include <fstream>

#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

using CtlReleve = CtlDeTest;

TEST_F(CtlReleve, EssaiPuisImportPuisRien) {
  Cree({"--exercice", "2003", "--euro"});
  const std::string fichier = Cabinet("mars.csv");
  std::ofstream(fichier)
      << "Solde au 31/03/2003;10,00\nDate;Libellé;Montant\n05/03/2003;Loyer;-640,00\n01/01/2004;a;1\né;b;1\n";
  const Resultat essai = Lance({"releve", "importer", fichier, "--compte", "bq", "--essai", "--json"});
  EXPECT_EQ(essai.statut, StatutFait);
  EXPECT_EQ(essai.sortie,
            "{\"sort\":\"nouvelle\",\"rang\":3,\"Date\":\"05/03/"
            "2003\",\"DateValeur\":\"\",\"Libelle\":\"Loyer\",\"Montant\":640,"
            "\"Monnaie\":\"EUR\",\"Sens\":0,\"Identifiant\":\"\"}\n"
            "{\"sort\":\"hors_exercice\",\"rang\":4,\"Date\":\"01/01/"
            "2004\",\"DateValeur\":\"\",\"Libelle\":\"a\",\"Montant\":1,"
            "\"Monnaie\":\"EUR\",\"Sens\":1,\"Identifiant\":\"\"}\n"
            "{\"sort\":\"illisible\",\"rang\":5,\"raison\":\"La date \\\"é\\\" est illisible.\"}\n"
            "{\"format\":\"csv\",\"numero\":\"\",\"essai\":true,\"nouvelle\":1,\"connue\":0,\"hors_"
            "exercice\":1,\"illisible\":1,"
            "\"solde\":10,\"date_solde\":\"31/03/2003\"}\n");
  EXPECT_EQ(Lance({"exporter", "BANQUE"}).sortie, "");
  for (const char* compte : {"Importées : 1 ; déjà connues : 0", "Importées : 0 ; déjà connues : 1"}) {
    const Resultat r = Lance({"releve", "importer", fichier, "--compte", "512"});
    EXPECT_EQ(r.statut, StatutFait);
    EXPECT_THAT(r.sortie, HasSubstr(compte));
    EXPECT_THAT(r.erreurs, HasSubstr("Ligne 5 illisible : La date \"é\" est illisible."));
  }
  Resultat loyers;
  for (const char* mois : {"05", "06"}) {
    std::ofstream(fichier) << "Date;Libellé;Référence;Montant\n05/" << mois << "/2003;Loyer;RUM 1;-640,00\n";
    loyers = Lance({"releve", "importer", fichier, "--compte", "512"});
  }
  EXPECT_THAT(loyers.sortie, HasSubstr("Importées : 1"));
  EXPECT_THAT(loyers.erreurs, HasSubstr("ses numéros ne comptent pas"));
  const std::string deux = Cabinet("deux.qif");
  EcritFichier(deux,
               "!Account\nNUN\n^\n!Type:Bank\nD01/03/2003\nT1\n^\n!Account\nNDEUX\n^\n!Type:Bank\n"
               "D01/03/2003\nT2\n^\n");
  Essaie({"releve", "importer", deux, "--compte", "BQ", "--essai"},
         {{{}, StatutRefuse, "UN, DEUX"}, {{"--numero", "DEUX"}, StatutFait, "2,00 EUR"}});
  Essaie({"releve", "importer"}, {{{fichier, "--compte", "BQ", "--format", "qif"}, StatutRefuse, ""},
                                  {{Cabinet("rien"), "--compte", "BQ"}, StatutRefuse, "3011"},
                                  {{fichier, "--compte", "706"}, StatutRefuse, ""},
                                  {{fichier, "--compte", "BQ", "--format", "pdf"}, StatutUsage, ""},
                                  {{fichier}, StatutUsage, ""}});
}

}  // namespace
}  // namespace fenlor::test
