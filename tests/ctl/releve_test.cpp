// fenlorctl releve importer: parsing, JSON, what is written and what is not.

#include <fstream>
#include <sstream>

#include "ctl/ctl.h"
#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

class CtlReleve : public testing::Test {
 protected:
  int Lance(std::vector<std::string> arguments) {
    std::istringstream entree;
    std::ostringstream sortie, erreurs;
    arguments.insert(arguments.begin(), {"--cabinet", m_dossier / "cabinet"});
    const int statut = ExecuteCtl(arguments, entree, sortie, erreurs, {});
    m_sortie = sortie.str();
    m_erreurs = erreurs.str();
    return statut;
  }
  test::DossierTemporaire m_dossier;
  std::string m_sortie, m_erreurs;
};

TEST_F(CtlReleve, EssaiPuisImportPuisRien) {
  ASSERT_EQ(Lance({"creer", "--exercice", "2003", "--euro"}), StatutFait);
  const std::string fichier = m_dossier / "mars.csv";
  std::ofstream(fichier)
      << "Solde au 31/03/2003;10,00\nDate;Libellé;Montant\n05/03/2003;Loyer;-640,00\n01/01/2004;a;1\né;b;1\n";
  EXPECT_EQ(Lance({"releve", "importer", fichier, "--compte", "bq", "--essai", "--json"}), StatutFait);
  EXPECT_EQ(m_sortie,
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
  EXPECT_EQ(Lance({"exporter", "BANQUE"}), StatutFait);
  EXPECT_EQ(m_sortie, "");
  for (const char* compte : {"Importées : 1 ; déjà connues : 0", "Importées : 0 ; déjà connues : 1"}) {
    EXPECT_EQ(Lance({"releve", "importer", fichier, "--compte", "512"}), StatutFait);
    EXPECT_NE(m_sortie.find(compte), std::string::npos) << m_sortie;
    EXPECT_NE(m_erreurs.find("Ligne 5 illisible : La date \"é\" est illisible."), std::string::npos)
        << m_erreurs;
  }
  EXPECT_EQ(Lance({"releve", "importer", fichier, "--compte", "BQ", "--format", "qif"}), StatutRefuse);
  EXPECT_EQ(Lance({"releve", "importer", m_dossier / "rien", "--compte", "BQ"}), StatutRefuse);
  EXPECT_NE(m_erreurs.find("3011"), std::string::npos) << m_erreurs;
  EXPECT_EQ(Lance({"releve", "importer", fichier, "--compte", "706"}), StatutRefuse);
  EXPECT_EQ(Lance({"releve", "importer", fichier, "--compte", "BQ", "--format", "pdf"}), StatutUsage);
  EXPECT_EQ(Lance({"releve", "importer", fichier}), StatutUsage);
}

}  // namespace
}  // namespace fenlor::test
