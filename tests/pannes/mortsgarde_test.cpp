// Backups and restorations of fenlorctl killed at random moments: an archive that bears its name is good, the
// books are those from before or those of the archive, and the next opening leaves nothing of the dead one.
// FENLOR_MORTS says how many kills of each, FENLOR_GRAINE the seed.
#include "pannes/mortsgarde.h"

namespace fenlor::pannes {
namespace {

TEST_F(MortsGarde, UneSauvegardeTueeNeLaisseRienDeFaux) {
  const unsigned morts = Nombre("FENLOR_MORTS", 12);
  unsigned tues = 0, laissees = 0, bonnes = 0;
  long duree = 40'000;
  for (unsigned tour = 0; (tues < morts || bonnes == 0) && tour < 6 * morts + 60; ++tour) {
    tues += Tue({"--cabinet", m_essai, "sauvegarder", "--dossier", m_copies}, duree);
    laissees += !Noms(m_copies).empty() && !Noms(m_copies)[0].ends_with(".fnz");
    bonnes += ControleSauvegarde();
    ASSERT_FALSE(HasFailure()) << "kill " << tues;
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
    Recopie();
    tues += Tue({"--cabinet", m_essai, "restaurer", m_archive, "--immobilisations"}, duree);
    laisses += fs::exists(m_essai + "/restauration~");
    rendus += ControleRestauration(entre);
    ASSERT_FALSE(HasFailure()) << "kill " << tues;
  }
  std::cout << tues << " restorations killed, " << laisses << " left unpacked books, " << rendus
            << " were done, " << entre << " of them but for the assets\n";
  EXPECT_GE(tues, morts);
}

}  // namespace
}  // namespace fenlor::pannes
