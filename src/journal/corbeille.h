// What was deleted of an exercice in the last 90 days: the file "CORBEILLE.dat" in its folder. An entry is
// put there before it goes, so that a stop in between costs nothing: one that still stands is not shown.
//
//   offset  size  meaning
//        0     8  "FNCORB\1" and 0
//        8   ...  deletions: u32 number, u32 date, u32 entry number it was restored
//                  under, u16 time, u16 lines n, n records `Line`
//      end     4  CRC-32C of all bytes before
#pragma once

#include <chrono>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

constexpr std::chrono::days JoursCorbeille{90};

struct Suppression {
  u32 numero = 0;
  Date date = 0;
  Heure heure = 0;
  u32 restauree = 0;         ///< number under which it was entered again, 0: never
  std::vector<Line> lignes;  ///< of one entry, in order of rank; never empty
  /// Its debits.
  f64 Montant(bool euro) const;
};

/// Before entries are deleted: all that a command deletes with one write. A file that is damaged is set aside
/// with a warning ("CORBEILLE.dat.avarie", then "...avarie2"); one that can be neither, or not written, is a
/// refusal (3574), and the entries had better stay.
Refus MetEnCorbeille(CFenlorApp& app, const std::vector<u32>& mouvements);
/// After a command that did not come to these: they stand, and are not in the trash.
Refus OteDeCorbeille(CFenlorApp& app, const std::vector<u32>& mouvements);

/// At the opening of an exercice: what a command that was killed put there, and did not come to delete, is
/// taken out before anybody changes it, which would look as if it were another one. So is what was taken
/// back. A trash that cannot be read or written stays as it is: who needs it is told.
void RangeCorbeille(CFenlorApp& app);

/// Deletions, the newest first. Refused: 3573 for a file that is damaged, 3574 for one that cannot be read.
Refus LitCorbeille(CFenlorApp& app, std::vector<Suppression>& suppressions);

/// Enters it again, free of the parent application, under its own number unless that is taken, which comes
/// out in `mouvement`. One unit. Refused: the exercice (3209, 3056), no such deletion (3575), an account that
/// is gone.
Refus RestaureSuppression(CFenlorApp& app, u32 numero, u32& mouvement);

}  // namespace fenlor
