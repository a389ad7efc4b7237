// A practice of the form before slots had sums, killed while its first opening converts it: what is opened
// next begins again, and in the end the books show what they show where nobody killed it.
// FENLOR_MORTS says how many kills must hit a conversion, FENLOR_LIGNES how long the journal of the large
// book is, FENLOR_GRAINE the seed.
#include <chrono>
#include <fstream>
#include <iostream>
#include <random>

#include "pannes/outils.h"
#include "store/fichierdat.h"

namespace fs = std::filesystem;

namespace fenlor::pannes {
namespace {

class MortsConversion : public testing::Test {
 protected:
  void SetUp() override {
    const unsigned graine = Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000);
    std::cout << "seed " << graine << "\n";
    m_hasard.seed(graine);
  }

  /// All that the books show, once what is left of their conversion is done.
  std::string Montre() {
    std::string tout;
    for (const char* fichier : {"JOURNAL", "COMPTES", "RUBRIQUE", "BANQUE", "AUTO", "Immo", "Amo"}) {
      const Resultat r = Ctl({"--cabinet", m_cabinet, "exporter", fichier});
      EXPECT_EQ(r.statut, 0) << r.erreurs;
      tout += r.sortie;
    }
    Verifie(m_cabinet);
    return tout;
  }

  /// How many data files have sums, how many have none, and how many are on their way.
  struct Formes {
    unsigned neuves = 0, anciennes = 0, enChemin = 0;
    bool SontPartielles() const { return enChemin > 0 || (neuves > 0 && anciennes > 0); }
  };
  Formes VoitFormes() const {
    Formes formes{.anciennes = 0u - m_autres};
    for (const auto& entree : fs::recursive_directory_iterator(m_cabinet)) {
      const fs::path& chemin = entree.path();
      formes.enChemin += chemin.extension() == ".neuf";
      if (chemin.extension() != ".dat" || chemin.filename() == "TEXTES.dat") continue;
      std::array<char, 12> debut{};
      std::ifstream(chemin, std::ios::binary).read(debut.data(), debut.size());
      if (debut[0] == 0) std::ifstream(chemin, std::ios::binary).seekg(512).read(debut.data(), debut.size());
      ++(debut[8] == 1 ? formes.anciennes : formes.neuves);
    }
    return formes;
  }

  /// Each kill comes at any moment of the time that a whole conversion takes.
  void TueEnChemin() {
    test::OteSommes(m_ancien);
    Recopie(m_ancien, m_cabinet);
    const unsigned toutes = VoitFormes().anciennes;
    const std::vector<std::string> verbe = {"--cabinet", m_cabinet, "balance"};
    const auto debut = std::chrono::steady_clock::now();
    ASSERT_EQ(Enfant(verbe, "/dev/null").Attend().statut, 0);
    const auto passe = std::chrono::steady_clock::now() - debut;
    long duree = std::chrono::duration_cast<std::chrono::microseconds>(passe).count() + 1;
    m_autres = VoitFormes().anciennes;
    ASSERT_GE(toutes, m_autres + 4);
    const std::string entier = Montre();
    ASSERT_FALSE(HasFailure());

    const unsigned morts = Nombre("FENLOR_MORTS", 10);
    unsigned enChemin = 0, tues = 0, finies = 0, compares = 0;
    Recopie(m_ancien, m_cabinet);
    bool touchee = false;
    for (unsigned tour = 0; (enChemin < morts || touchee) && tour < 20 * morts + 100; ++tour) {
      Enfant enfant(verbe, "/dev/null");
      enfant.Ecoute(static_cast<long>(m_hasard() % static_cast<unsigned>(duree)));
      enfant.Tue();
      tues += enfant.Attend().statut == 128 + 9;
      const Formes formes = VoitFormes();
      const bool finie = formes.anciennes == 0;
      enChemin += formes.SontPartielles();
      touchee = touchee || formes.SontPartielles();
      finies += finie;
      duree = finie ? duree * 9 / 10 + 100 : duree * 21 / 20 + 100;
      if (!finie && enChemin < morts && m_hasard() % 8 != 0) continue;
      if (touchee) {
        ASSERT_TRUE(Montre() == entier) << "kill " << tues;
        EXPECT_EQ(VoitFormes().enChemin, 0u) << "a new file was left";
        ++compares;
      }
      Recopie(m_ancien, m_cabinet);
      touchee = false;
    }
    std::cout << tues << " killed, " << enChemin << " conversions on the way, " << finies << " done, "
              << compares << " compared\n";
    EXPECT_GE(enChemin, morts);
  }

  DossierTemporaire m_dossier;
  unsigned m_autres = 0;  ///< files of exercices that nobody opens
  const std::string m_ancien = m_dossier / "ancien", m_cabinet = m_dossier / "cabinet";
  std::mt19937 m_hasard;
};

TEST_F(MortsConversion, DeLaDemonstration) {
  ASSERT_EQ(Ctl({"--cabinet", m_ancien, "demo"}).statut, 0);
  TueEnChemin();
}

TEST_F(MortsConversion, DUnGrandLivre) {
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_ancien));
  const Comptes comptes = LitComptes(m_ancien);
  std::string entree;
  for (unsigned n = Nombre("FENLOR_LIGNES", 6000) / 3; n > 0; --n)
    entree += LigneSaisie(comptes, true, "Piece " + std::to_string(n), 10 + n % 900, 10);
  ASSERT_EQ(Ctl({"--cabinet", m_ancien, "saisir", "--tout"}, entree).statut, 0);
  TueEnChemin();
}

}  // namespace
}  // namespace fenlor::pannes
