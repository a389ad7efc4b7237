// Backups and restorations of fenlorctl killed at random moments: an archive that bears its name is good, the
// books are those from before or those of the archive, and the next opening leaves nothing of the dead one.
// FENLOR_MORTS says how many kills of each, FENLOR_GRAINE the seed.
#include "pannes/mortsgarde.h"

namespace fenlor::pannes {
namespace {

TEST_F(MortsGarde, UneSauvegardeTueeNeLaisseRienDeFaux) {
  TueDesSauvegardes(Nombre("FENLOR_MORTS", 12),
                    {{"--cabinet", m_essai, "sauvegarder", "--dossier", m_copies}, 40'000});
}

TEST_F(MortsGarde, UneRestaurationTueeLaisseLesAnciensLivresOuLesNouveaux) {
  TueDesRestaurations(Nombre("FENLOR_MORTS", 12),
                      {{"--cabinet", m_essai, "restaurer", m_archive, "--immobilisations"}, 60'000});
}

}  // namespace
}  // namespace fenlor::pannes
