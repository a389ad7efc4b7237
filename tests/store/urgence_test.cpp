// What the system ends a program for is told before.
#include "store/urgence.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <thread>

#include "outils/cabinetdetest.h"
#include "store/systeme.h"

namespace fenlor::test {
namespace {

class Urgences : public testing::Test {
 protected:
  test::DossierTemporaire m_dossier;
  const std::string m_note = m_dossier.Chemin() + "/arret.txt";
  const std::string m_fichier = m_dossier.Chemin() + "/JOURNAL.dat";
};

TEST_F(Urgences, UnFichierRaccourciEstNommeEtNote) {
  const auto lit = [this] {
    InstalleUrgences(m_note);
    SystemePosix systeme;
    std::unique_ptr<Fichier> fichier;
    systeme.Ouvre(m_fichier, Systeme::Lecture, fichier);
    const auto* page = static_cast<const volatile char*>(
        mmap(nullptr, 20000, PROT_READ, MAP_SHARED, fichier->Descripteur(), 0));
    std::filesystem::resize_file(m_fichier, 10);
    // Helpers may read with the program: whoever meets the damage first tells it.
    std::atomic<int> prets = 4;
    const auto touche = [&] {
      for (--prets; prets > 0;) continue;
      if (page[12000] == 0) _exit(2);
    };
    std::thread aides[] = {std::thread(touche), std::thread(touche), std::thread(touche)};
    touche();
    for (std::thread& aide : aides) aide.join();
    _exit(3);
  };
  for (int i = 0; i < 10; ++i) {
    test::EcritFichier(m_fichier, std::string(20000, 'x'));
    EXPECT_EXIT(lit(), testing::ExitedWithCode(1), "Erreur 3441 : le fichier .*/JOURNAL.dat ne peut plus");
  }
  EXPECT_NE(PrendNote(m_note).find("/JOURNAL.dat ne peut plus"), std::string::npos);
  EXPECT_EQ(PrendNote(m_note), "") << "told once";
}

TEST_F(Urgences, SansMemoireNiPlace) {
#ifndef __SANITIZE_ADDRESS__  // which ends such a demand in its own way
  const auto demande = [this] {
    InstalleUrgences(m_note);
    const std::size_t trop = std::size_t{1} << 60;
    [&]() noexcept { ::operator delete(::operator new(trop)); }();
  };
  EXPECT_EXIT(demande(), testing::ExitedWithCode(1), "Erreur 3442");
  EXPECT_NE(PrendNote(m_note), "");
#endif
  const auto ecrit = [this] {
    InstalleUrgences();
    const rlimit limite{1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limite);
    SystemePosix systeme;
    std::unique_ptr<Fichier> fichier;
    systeme.Ouvre(m_fichier, Systeme::Creation, fichier);
    _exit(fichier->Ecrit(m_note.data(), 4, 2000) == EFBIG ? 0 : 4);
  };
  EXPECT_EXIT(ecrit(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace fenlor::test
