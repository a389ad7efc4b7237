// The closure of an exercice: a date in its settings, behind which every command that would change it
// refuses.
#pragma once

#include <string>

#include "core/fenlorapp.h"
#include "session/entretien.h"

namespace fenlor {

struct PropositionCloture {
  std::string exercice;
  Date debut = 0, fin = 0;
  Date date = 0;  ///< of the closure: today
};

/// What the form shows. 3209 none is open, 3056 it is closed already.
Refus ProposeCloture(CFenlorApp& app, PropositionCloture& proposition);

/// Closes the open exercice: asks (3321) and makes all totals anew (`autour` closes the windows), 3033 while
/// a draft is left, asks about what is not reconciled (3322), seals the books, and writes date and seal in
/// one replacement of the settings. A refusal leaves the exercice open; its totals are then those of its
/// lines.
Refus Cloture(CFenlorApp& app, const PropositionCloture& proposition, const Autour& autour = {});

}  // namespace fenlor
