// Backups and restorations killed at random moments: an archive that bears its name is good, the books are
// those from before or those of the archive, and the next opening leaves nothing of the dead one.
// FENLOR_MORTS says how many kills of each, FENLOR_GRAINE the seed.

#include <algorithm>
#include <iostream>
#include <random>

#include "pannes/outils.h"

namespace fs = std::filesystem;

namespace fenlor::pannes {
namespace {

class MortsGarde : public testing::Test {
 protected:
  void SetUp() override {
    m_hasard.seed(Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000));
    fs::create_directory(m_copies);
    CreeCabinet(m_modele);
    Remplit(1);
    const Resultat faite = Ctl({"--cabinet", m_modele, "sauvegarder", "--dossier", m_dossier.Chemin()});
    ASSERT_EQ(faite.statut, 0) << faite.erreurs;
    m_archive = faite.sortie.substr(0, faite.sortie.find('\n'));
    m_sauves = Livres(m_modele);
    Remplit(2);
    m_recents = Livres(m_modele);
    fs::copy(m_modele, m_essai, fs::copy_options::recursive);
  }

  /// Entries and assets that only this call makes.
  void Remplit(unsigned fois) {
    const Comptes comptes = LitComptes(m_modele);
    std::string ecritures;
    for (unsigned n = 0; n < 200; ++n)
      ecritures += LigneSaisie(comptes, n % 2 == 0, "Piece " + std::to_string(fois), 10 + n, 10 + n);
    ASSERT_EQ(Ctl({"--cabinet", m_modele, "saisir", "--tout"}, ecritures).statut, 0);
    const Json bien = {{"Numero", fois}, {"Designation", "Table"}, {"DateAchat", "15/03/2003"}};
    ASSERT_EQ(Ctl({"--cabinet", m_modele, "importer", "Immo"}, bien.dump()).statut, 0);
  }

  struct Etat {
    std::string exercice, biens;
  };
  /// Opens the practice, so that leftovers go, and reads it whole.
  static Etat Livres(const std::string& cabinet) {
    const auto montre = [&](const std::vector<std::string>& verbe) {
      std::vector<std::string> arguments = {"--cabinet", cabinet};
      arguments.insert(arguments.end(), verbe.begin(), verbe.end());
      const Resultat r = Ctl(arguments);
      EXPECT_EQ(r.statut, 0) << verbe[0] << r.sortie << r.erreurs;
      EXPECT_EQ(r.erreurs, "");
      return r.sortie;
    };
    montre({"verifier"});
    return {montre({"exporter", "JOURNAL"}) + montre({"exporter", "COMPTES"}), montre({"exporter", "Immo"})};
  }

  static std::vector<std::string> Noms(const std::string& dossier) {
    std::vector<std::string> noms;
    for (const auto& entree : fs::directory_iterator(dossier)) noms.push_back(entree.path().filename());
    return noms;
  }

  /// Kills a run somewhere on its way; true when it was dead before its end.
  bool Tue(const std::vector<std::string>& arguments, long& duree) {
    Enfant enfant(arguments, "/dev/null");
    enfant.Ecoute(500 + static_cast<long>(m_hasard() % static_cast<unsigned>(duree)));
    const bool fini = enfant.Fini();
    enfant.Tue();
    duree = fini ? duree * 9 / 10 + 100 : duree * 11 / 10 + 100;
    return enfant.Attend().statut == 128 + 9;
  }

  DossierTemporaire m_dossier{true};
  const std::string m_modele = m_dossier / "modele", m_essai = m_dossier / "essai",
                    m_copies = m_dossier / "copies";
  std::string m_archive;
  Etat m_sauves, m_recents;
  std::mt19937 m_hasard;
};

TEST_F(MortsGarde, UneSauvegardeTueeNeLaisseRienDeFaux) {
  const unsigned morts = Nombre("FENLOR_MORTS", 12);
  unsigned tues = 0, laissees = 0, bonnes = 0;
  long duree = 40'000;
  for (unsigned tour = 0; (tues < morts || bonnes == 0) && tour < 6 * morts + 60; ++tour) {
    tues += Tue({"--cabinet", m_essai, "sauvegarder", "--dossier", m_copies}, duree);
    laissees += !Noms(m_copies).empty() && !Noms(m_copies)[0].ends_with(".fnz");
    const Etat etat = Livres(m_essai);
    ASSERT_EQ(etat.exercice, m_recents.exercice);
    ASSERT_EQ(etat.biens, m_recents.biens);
    for (const std::string& nom : Noms(m_essai)) ASSERT_FALSE(nom.ends_with(".tmp")) << nom;
    for (const std::string& nom : Noms(m_copies)) {
      ASSERT_TRUE(nom.ends_with(".fnz")) << nom;
      ASSERT_EQ(Ctl({"--cabinet", m_essai, "sauvegardes", "verifier", m_copies + "/" + nom}).statut, 0);
      fs::remove(m_copies + "/" + nom);
      ++bonnes;
    }
  }
  std::cout << tues << " backups killed, " << laissees << " left an unfinished file, " << bonnes
            << " were made\n";
  EXPECT_GE(tues, morts);
}

TEST_F(MortsGarde, UneRestaurationTueeLaisseLesAnciensLivresOuLesNouveaux) {
  const unsigned morts = Nombre("FENLOR_MORTS", 12);
  unsigned tues = 0, laisses = 0, rendus = 0, entre = 0;
  long duree = 60'000;
  for (unsigned tour = 0; (tues < morts || rendus == 0) && tour < 6 * morts + 60; ++tour) {
    fs::remove_all(m_essai);
    fs::copy(m_modele, m_essai, fs::copy_options::recursive);
    const std::vector<std::string> verbe = {"--cabinet", m_essai, "restaurer", m_archive,
                                            "--immobilisations"};
    tues += Tue(verbe, duree);
    laisses += fs::exists(m_essai + "/restauration~");
    Etat etat = Livres(m_essai);
    ASSERT_FALSE(fs::exists(m_essai + "/restauration~"));
    ASSERT_TRUE(etat.exercice == m_recents.exercice || etat.exercice == m_sauves.exercice);
    if (etat.exercice == m_recents.exercice) {
      ASSERT_EQ(etat.biens, m_recents.biens);
      continue;
    }
    // The old books stay under their other name.
    const auto noms = Noms(m_essai);
    ASSERT_EQ(std::count_if(noms.begin(), noms.end(), [](auto& n) { return n.starts_with("2003.avant-"); }),
              1);
    if (etat.biens == m_recents.biens) {
      ++entre;
      ASSERT_EQ(Ctl(verbe).statut, 0);
      etat = Livres(m_essai);
    }
    ASSERT_EQ(etat.biens, m_sauves.biens);
    ++rendus;
  }
  std::cout << tues << " restorations killed, " << laisses << " left unpacked books, " << rendus
            << " were done, " << entre << " of them but for the assets\n";
  EXPECT_GE(tues, morts);
}

}  // namespace
}  // namespace fenlor::pannes
