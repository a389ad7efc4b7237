// The assistants of backup and restoration, killed while they work. FENLOR_MORTS_FENETRE says how many kills
// of each, FENLOR_GRAINE the seed.
#include "pannes/mortsgarde.h"

namespace fenlor::pannes {
namespace {

using MortsGardeFenetre = MortsGarde;

TEST_F(MortsGardeFenetre, UneSauvegardeTuee) {
  TueDesSauvegardes(Nombre("FENLOR_MORTS_FENETRE", 6), {{m_essai, m_copies}, 100'000, "gardefenetre"});
}

TEST_F(MortsGardeFenetre, UneRestaurationTuee) {
  fs::copy(m_archive, m_copies);
  TueDesRestaurations(Nombre("FENLOR_MORTS_FENETRE", 6),
                      {{m_essai, m_copies, "restaure"}, 150'000, "gardefenetre"});
}

}  // namespace
}  // namespace fenlor::pannes
