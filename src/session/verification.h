// Verification of the books of the open exercice: says what does not hold, changes
// nothing.
#pragma once

#include <functional>
#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// Takes one finding: a French sentence, Windows-1252.
using RappelConstat = std::function<void(const std::string& phrase)>;

/// Checks the data files of the exercice and of the practice (keys against records),
/// every account's totals against a sum of the lines made here, and every entry: its
/// lines agree on what they share, follow each other from 0, name accounts of the
/// chart with their type, bear real dates and balance. Returns the number of findings.
///
/// An entry balances to the cent in the currency in which it was typed. In the other
/// one it may be off by a cent a line where the lines were converted one by one: for a
/// standard entry, an opération diverse, or lines whose second amount is just what
/// the rate at their date gives (as the Euro adjustment leaves them).
///
/// Precondition: an exercice is open, and no unit of work.
u32 VerifieExercice(CFenlorApp& app, const RappelConstat& constat);

/// For an exercice that does not open: names each record of its files whose sum is wrong. Returns their
/// number; a file whose header is damaged has none.
u32 ConstateDegats(CFenlorApp& app, const std::string& exercice, const RappelConstat& constat);

}  // namespace fenlor
