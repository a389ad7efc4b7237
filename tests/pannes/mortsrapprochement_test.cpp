// The automatic matching killed at random moments: nothing is half matched, no operation is lost, none stands
// twice. FENLOR_MORTS says how many kills.

#include <iostream>
#include <random>

#include "pannes/outils.h"

namespace fenlor::pannes {
namespace {

constexpr unsigned Operations = 200;

/// Operations by label: how often they wait, how often they stand in a reconciled line.
struct Places {
  unsigned attend = 0, rapprochee = 0;
};
std::map<std::string, Places> Ou(const std::string& cabinet) {
  std::map<std::string, Places> places;
  const Resultat banque = Ctl({"--cabinet", cabinet, "exporter", "BANQUE"});
  EXPECT_EQ(banque.statut, 0) << banque.erreurs;
  const auto operations = LignesJson(banque.sortie);
  for (const Json& operation : operations.value()) ++places[operation.value("Libelle", "")].attend;
  for (const auto& [mouvement, lignes] : LitJournal(cabinet)) {
    EXPECT_EQ(Anomalie(lignes), "");
    for (const Json& ligne : lignes)
      if (ligne.value("Rapprochee", 0) != 0) ++places[ligne.value("RappLibelle", "")].rapprochee;
  }
  return places;
}

TEST(MortsRapprochement, RienNEstAMoitieRapproche) {
  const unsigned morts = Nombre("FENLOR_MORTS", 30);
  std::mt19937 hasard(Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000));
  DossierTemporaire dossier(true);
  const std::string modele = dossier / "modele", cabinet = dossier / "cabinet";
  CreeCabinet(modele);
  const Comptes comptes = LitComptes(modele);
  std::string ecritures, operations;
  for (unsigned n = 0; n < Operations; ++n) {
    ecritures += LigneSaisie(comptes, true, "Piece", 10 + n % 40, 10 + n % 40);
    Json operation = {
        {"Compte", comptes.banque}, {"Date", "31/12/2003"}, {"Sens", 1}, {"MontantEuro", 10 + n % 40}};
    operation["Libelle"] = "Op " + std::to_string(n);
    operations += operation.dump() + "\n";
  }
  ASSERT_EQ(Ctl({"--cabinet", modele, "saisir", "--tout"}, ecritures).statut, 0);
  ASSERT_EQ(Ctl({"--cabinet", modele, "rapprochement", "ajouter"}, operations).statut, 0);

  unsigned tues = 0, faits = 0;
  long duree = 20'000;
  for (unsigned tour = 0; (tues < morts || faits == 0) && tour < 4 * morts + 40; ++tour) {
    std::filesystem::remove_all(cabinet);
    std::filesystem::copy(modele, cabinet, std::filesystem::copy_options::recursive);
    Enfant enfant({"--cabinet", cabinet, "rapprochement", "automatique", "--compte", comptes.banque},
                  "/dev/null");
    enfant.Ecoute(1'000 + static_cast<long>(hasard() % static_cast<unsigned>(duree)));
    const bool fini = enfant.Fini();
    enfant.Tue();
    tues += enfant.Attend().statut == 128 + 9;
    // On a slow machine a run must be given the time to stand, too.
    duree = fini ? duree * 9 / 10 + 100 : tues >= morts ? duree * 2 : duree * 11 / 10 + 100;
    const Resultat verification = Ctl({"--cabinet", cabinet, "verifier"});
    ASSERT_EQ(verification.statut, 0) << verification.sortie << verification.erreurs;
    const auto places = Ou(cabinet);
    ASSERT_EQ(places.size(), Operations) << "after " << tues << " kills";
    const unsigned rapprochee = places.begin()->second.rapprochee;
    for (const auto& [libelle, place] : places) {
      ASSERT_EQ(place.attend + place.rapprochee, 1u) << libelle;
      ASSERT_EQ(place.rapprochee, rapprochee) << "the run is one unit";
    }
    faits += rapprochee;
  }
  std::cout << tues << " killed, " << faits << " runs stood\n";
  EXPECT_TRUE(tues >= morts && faits > 0);
}

}  // namespace
}  // namespace fenlor::pannes
