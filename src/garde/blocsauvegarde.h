// The block of parameters that a backup or a restoration is started with.
//
//   offset  size  meaning
//        0   260  folder of the exercice: that of the practice, "/", the name; no name while none is open
//      260   516  folder of the backups that was chosen last, or nothing
//      776     4  1: compress
//      780     4  1: read back and compare
//      784     4  0: in one file, not over several media
//      788     4  0: replace no file, so ask nothing about one
#pragma once

#include <cstddef>

#include "core/fenlorapp.h"

namespace fenlor {

#pragma pack(push, 1)
struct BlocSauvegarde {
  char exercice[260];
  char destination[516];
  u32 comprime;
  u32 verifie;
  u32 fractionne;
  u32 demande;
};
#pragma pack(pop)
static_assert(sizeof(BlocSauvegarde) == 792 && offsetof(BlocSauvegarde, destination) == 260 &&
              offsetof(BlocSauvegarde, comprime) == 776 && offsetof(BlocSauvegarde, demande) == 788);

/// Filled from the session and the options. 3553 the practice's path is too long for the block.
Refus RemplitBloc(const CFenlorApp& app, BlocSauvegarde& bloc);
/// The name behind the last "/" of its first path; may be empty.
std::string ExerciceDuBloc(const BlocSauvegarde& bloc);

}  // namespace fenlor
