// Backups and restorations killed at random moments, by fenlorctl and by the assistants of the windows.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <random>

#include "pannes/outils.h"

namespace fenlor::pannes {

namespace fs = std::filesystem;

class MortsGarde : public testing::Test {
 protected:
  void SetUp() override {
    m_hasard.seed(Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000));
    fs::create_directory(m_copies);
    // What the user's settings remember of backups is this test's own.
    ASSERT_EQ(setenv("XDG_CONFIG_HOME", (m_dossier / "config").c_str(), 1), 0);
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
    test::EcritFichier(m_modele + "/2003/CORBEILLE.dat", "what was deleted");
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
  bool Tue(const std::vector<std::string>& arguments, long& duree, const std::string& nom = "fenlorctl") {
    Enfant enfant(arguments, "/dev/null", nom);
    // A window takes its time to come up, and says when it has.
    if (nom != "fenlorctl")
      for (int i = 0; i < 1500 && !enfant.Fini() && enfant.Sortie().empty(); ++i) enfant.Ecoute(20'000);
    enfant.Ecoute(500 + static_cast<long>(m_hasard() % static_cast<unsigned>(duree)));
    const bool fini = enfant.Fini();
    enfant.Tue();
    duree = fini ? duree * 9 / 10 + 100 : duree * 11 / 10 + 100;
    const Resultat r = enfant.Attend();
    EXPECT_TRUE(r.statut == 0 || r.statut == 128 + 9) << r.statut << r.sortie << r.erreurs;
    return r.statut == 128 + 9;
  }
  /// A command that is killed again and again, and how long it takes by now.
  struct Course {
    std::vector<std::string> arguments;
    long duree;
    std::string programme = "fenlorctl";
  };
  /// Until `morts` were killed and one was through; the tests of what they left count themselves.
  void TueJusqua(unsigned morts, Course course, const std::function<bool()>& controle) {
    unsigned tues = 0, faites = 0;
    for (unsigned tour = 0; (tues < morts || faites == 0) && tour < 6 * morts + 60; ++tour) {
      tues += Tue(course.arguments, course.duree, course.programme);
      // A window never ends by itself: the next one would live on and on.
      if (course.programme != "fenlorctl") course.duree = std::min(course.duree, 1'000'000l);
      faites += controle();
      ASSERT_FALSE(HasFailure()) << "kill " << tues;
    }
    std::cout << tues << " killed, " << faites << " were done, ";
    EXPECT_GE(tues, morts);
  }
  void TueDesSauvegardes(unsigned morts, const Course& course) {
    unsigned laissees = 0;
    TueJusqua(morts, course, [&] {
      const auto noms = Noms(m_copies);
      laissees += std::any_of(noms.begin(), noms.end(), [](auto& n) { return !n.ends_with(".fnz"); });
      return ControleSauvegarde() > 0;
    });
    std::cout << laissees << " left an unfinished file\n";
  }
  void TueDesRestaurations(unsigned morts, const Course& course) {
    unsigned laisses = 0, entre = 0;
    TueJusqua(morts, course, [&] {
      laisses += fs::exists(m_essai + "/restauration~");
      const bool rendus = ControleRestauration(entre);
      Recopie();
      return rendus;
    });
    std::cout << laisses << " left unpacked books, " << entre << " were done but for the assets\n";
  }
  /// What a killed backup left: the books as they were, and good archives alone, which go. How many.
  unsigned ControleSauvegarde() {
    const Etat etat = Livres(m_essai);
    EXPECT_EQ(etat.exercice, m_recents.exercice);
    EXPECT_EQ(etat.biens, m_recents.biens);
    for (const std::string& nom : Noms(m_essai)) EXPECT_FALSE(nom.ends_with(".tmp")) << nom;
    unsigned bonnes = 0;
    for (const std::string& nom : Noms(m_copies)) {
      EXPECT_TRUE(nom.ends_with(".fnz")) << nom;
      EXPECT_EQ(Ctl({"--cabinet", m_essai, "sauvegardes", "verifier", m_copies + "/" + nom}).statut, 0);
      fs::remove(m_copies + "/" + nom);
      ++bonnes;
    }
    return bonnes;
  }
  void Recopie() {
    fs::remove_all(m_essai);
    fs::copy(m_modele, m_essai, fs::copy_options::recursive);
  }
  /// What a killed restoration left: true when the books are those of the archive. The assets come last:
  /// `entre` counts those that the same command brings then.
  bool ControleRestauration(unsigned& entre) {
    Etat etat = Livres(m_essai);
    EXPECT_FALSE(fs::exists(m_essai + "/restauration~"));
    EXPECT_TRUE(etat.exercice == m_recents.exercice || etat.exercice == m_sauves.exercice);
    if (etat.exercice == m_recents.exercice) {
      EXPECT_EQ(etat.biens, m_recents.biens);
      return false;
    }
    // The old books stay under their other name.
    const auto noms = Noms(m_essai);
    EXPECT_EQ(std::count_if(noms.begin(), noms.end(), [](auto& n) { return n.starts_with("2003.avant-"); }),
              1);
    if (etat.biens == m_recents.biens) {
      ++entre;
      EXPECT_EQ(Ctl({"--cabinet", m_essai, "restaurer", m_archive, "--immobilisations"}).statut, 0);
      etat = Livres(m_essai);
    }
    EXPECT_EQ(etat.biens, m_sauves.biens);
    return true;
  }

  DossierTemporaire m_dossier{true};
  const std::string m_modele = m_dossier / "modele", m_essai = m_dossier / "essai",
                    m_copies = m_dossier / "copies";
  std::string m_archive;
  Etat m_sauves, m_recents;
  std::mt19937 m_hasard;
};

}  // namespace fenlor::pannes
