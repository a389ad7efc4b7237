// The assistants of backup and restoration, killed while they work. FENLOR_MORTS_FENETRE says how many kills
// of each, FENLOR_GRAINE the seed.
#include "pannes/mortsgarde.h"

namespace fenlor::pannes {
namespace {

using MortsGardeFenetre = MortsGarde;

TEST_F(MortsGardeFenetre, UneSauvegardeTuee) {
  const unsigned morts = Nombre("FENLOR_MORTS_FENETRE", 6);
  unsigned tues = 0, laissees = 0, bonnes = 0;
  long duree = 100'000;
  for (unsigned tour = 0; (tues < morts || bonnes == 0) && tour < 6 * morts + 60; ++tour) {
    tues += Tue({m_essai, m_copies}, duree, "gardefenetre");
    duree = std::min(duree, 1'000'000l);  // it never ends by itself: the next one would live on and on
    const auto noms = Noms(m_copies);
    laissees += std::any_of(noms.begin(), noms.end(), [](auto& n) { return n.ends_with(".part"); });
    bonnes += ControleSauvegarde();
    ASSERT_FALSE(HasFailure()) << "kill " << tues;
  }
  std::cout << tues << " backup assistants killed, " << laissees << " left an unfinished file, " << bonnes
            << " good ones\n";
  EXPECT_GE(tues, morts);
}

TEST_F(MortsGardeFenetre, UneRestaurationTuee) {
  const unsigned morts = Nombre("FENLOR_MORTS_FENETRE", 6);
  unsigned tues = 0, rendus = 0, entre = 0, laisses = 0;
  long duree = 150'000;
  fs::copy(m_archive, m_copies);
  for (unsigned tour = 0; (tues < morts || rendus == 0) && tour < 6 * morts + 60; ++tour) {
    Recopie();
    tues += Tue({m_essai, m_copies, "restaure"}, duree, "gardefenetre");
    laisses += fs::exists(m_essai + "/restauration~");
    rendus += ControleRestauration(entre);
    ASSERT_FALSE(HasFailure()) << "kill " << tues;
  }
  std::cout << tues << " restoration assistants killed, " << laisses << " left unpacked books, " << rendus
            << " were done, " << entre << " of them but for the assets\n";
  EXPECT_GE(tues, morts);
}

}  // namespace
}  // namespace fenlor::pannes
