// fenlorctl inside the test's process, on a practice of the test's own.
#pragma once

#include <nlohmann/json.hpp>
#include <sstream>

#include "ctl/ctl.h"
#include "outils/cabinetdetest.h"
#include "outils/systemesanssynchro.h"

namespace fenlor::test {

class CtlDeTest : public ::testing::Test {
 protected:
  using Json = nlohmann::json;
  /// A receipt as `saisir` takes it.
  static constexpr const char* Recette =
      R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":1,"tresorerie":"BQ"})";

  struct Resultat {
    int statut = 0;
    std::string sortie;
    std::string erreurs;

    std::vector<std::string> Lignes() const {
      std::vector<std::string> lignes;
      std::istringstream flux(sortie);
      for (std::string ligne; std::getline(flux, ligne);) lignes.push_back(ligne);
      return lignes;
    }
  };

  CtlDeTest() {
    unsetenv("FENLOR_CABINET");  // the developer's own practice is none of a test's
    m_options.magasin.systeme = &m_disque;
    m_options.magasin.tailleReprise = 256u << 10;
    m_options.magasin.dossierRegistre = m_dossier.Chemin() + "/registre";
    m_options.magasin.dossierRegistreMachine = m_dossier.Chemin() + "/machine";
  }

  std::string Cabinet(const std::string& nom = "cabinet") const { return m_dossier.Chemin() + "/" + nom; }
  OptionsCtl& Options() { return m_options; }

  /// Runs a command on the practice `cabinet`.
  Resultat LanceSur(const std::string& cabinet, std::vector<std::string> args,
                    const std::string& entree = {}) {
    args.insert(args.begin(), {"--cabinet", cabinet});
    std::istringstream in(entree);
    std::ostringstream out, err;
    Resultat r;
    r.statut = ExecuteCtl(args, in, out, err, m_options);
    r.sortie = out.str();
    r.erreurs = err.str();
    return r;
  }
  Resultat Lance(std::vector<std::string> args, const std::string& entree = {}) {
    return LanceSur(Cabinet(), std::move(args), entree);
  }

  void Cree(std::vector<std::string> args = {"--exercice", "2003"}) {
    args.insert(args.begin(), "creer");
    const Resultat r = Lance(args);
    ASSERT_EQ(r.statut, StatutFait) << r.erreurs;
  }
  void Sain(const std::string& exercice = "2003") {
    const Resultat r = Lance({"--exercice", exercice, "verifier"});
    EXPECT_EQ(r.statut, StatutFait) << r.sortie << r.erreurs;
  }
  /// The accounts of `balance --json` by short number; the totals under "".
  std::map<std::string, Json> Balance() {
    std::map<std::string, Json> comptes;
    for (const std::string& ligne : Lance({"balance", "--json"}).Lignes()) {
      const Json compte = Json::parse(ligne);
      std::string numero = compte.value("Compte", "");
      numero.erase(numero.find_last_not_of('0') + 1);
      comptes[numero] = compte;
    }
    return comptes;
  }
  std::vector<Json> Journal() {
    std::vector<Json> lignes;
    for (const std::string& ligne : Lance({"exporter", "JOURNAL", "--cle", "4"}).Lignes())
      lignes.push_back(Json::parse(ligne));
    return lignes;
  }

 private:
  DossierTemporaire m_dossier;
  SystemeSansSynchro m_disque;
  OptionsCtl m_options;
};

}  // namespace fenlor::test
