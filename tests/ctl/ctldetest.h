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
    /// One a line.
    std::vector<Json> Objets() const {
      std::vector<Json> objets;
      for (const std::string& ligne : Lignes()) objets.push_back(Json::parse(ligne));
      return objets;
    }
    /// The first one whose field has that value; null when there is none.
    Json Objet(const char* champ, const Json& valeur) const {
      for (const Json& objet : Objets())
        if (objet.value(champ, Json()) == valeur) return objet;
      return {};
    }
  };
  /// A call, its status, and part of what it says.
  struct Appel {
    std::vector<std::string> args;
    int statut;
    std::string dit, entree = {};
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

  /// Runs a command line as it is, on another disk when one is given.
  Resultat Execute(const std::vector<std::string>& args, const std::string& entree = {},
                   Systeme* systeme = nullptr) {
    OptionsCtl options = m_options;
    if (systeme) options.magasin.systeme = systeme;
    std::istringstream in(entree);
    std::ostringstream out, err;
    Resultat r;
    r.statut = ExecuteCtl(args, in, out, err, options);
    r.sortie = out.str();
    r.erreurs = err.str();
    return r;
  }
  /// Runs a command on the practice `cabinet`.
  Resultat LanceSur(const std::string& cabinet, std::vector<std::string> args, const std::string& entree = {},
                    Systeme* systeme = nullptr) {
    args.insert(args.begin(), {"--cabinet", cabinet});
    return Execute(args, entree, systeme);
  }
  Resultat Lance(std::vector<std::string> args, const std::string& entree = {}) {
    return LanceSur(Cabinet(), std::move(args), entree);
  }

  void Cree(std::vector<std::string> args = {"--exercice", "2003"}) {
    args.insert(args.begin(), "creer");
    const Resultat r = Lance(args);
    ASSERT_EQ(r.statut, StatutFait) << r.erreurs;
  }
  /// Makes the calls in their order, the words of `debut` in front of each.
  void Essaie(const std::vector<std::string>& debut, const std::vector<Appel>& appels) {
    for (const Appel& appel : appels) {
      std::vector<std::string> args = debut;
      args.insert(args.end(), appel.args.begin(), appel.args.end());
      const Resultat r = Lance(args, appel.entree);
      EXPECT_EQ(r.statut, appel.statut) << ::testing::PrintToString(args) << appel.entree << r.erreurs;
      EXPECT_THAT(r.sortie + r.erreurs, HasSubstr(appel.dit))
          << ::testing::PrintToString(args) << appel.entree;
    }
  }
  /// Entries, an object a line.
  void Saisit(const std::string& lignes) {
    const Resultat r = Lance({"saisir"}, lignes);
    ASSERT_EQ(r.statut, StatutFait) << r.sortie << r.erreurs;
  }
  /// Entries 1 to 3: receipts at the bank of 30, 40 and 50 Euros, on 3, 4 and 5 March.
  void SaisitTroisSeances() {
    for (const std::string jour : {"3", "4", "5"})
      Saisit(R"({"journal":"recettes","date":"0)" + jour + R"(/03/2003","compte":"706","ttc":)" + jour +
             R"(0,"tresorerie":"BQ","libelle":"Séance"})");
  }
  void Sain(const std::string& exercice = "2003") {
    const Resultat r = Lance({"--exercice", exercice, "verifier"});
    EXPECT_EQ(r.statut, StatutFait) << r.sortie << r.erreurs;
  }
  /// The accounts of `balance --json` by short number; the totals under "".
  std::map<std::string, Json> Balance() {
    std::map<std::string, Json> comptes;
    for (const Json& compte : Lance({"balance", "--json"}).Objets()) {
      std::string numero = compte.value("Compte", "");
      numero.erase(numero.find_last_not_of('0') + 1);
      comptes[numero] = compte;
    }
    return comptes;
  }
  std::vector<Json> Journal() { return Lance({"exporter", "JOURNAL", "--cle", "4"}).Objets(); }

 private:
  DossierTemporaire m_dossier;
  SystemeSansSynchro m_disque;
  OptionsCtl m_options;
};

}  // namespace fenlor::test
