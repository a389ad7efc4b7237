// The demo practice: three years of a general practitioner, made through the very
// rules that the forms save with. The same on every machine.
//
//   2001  kept in Franc
//   2002  kept in Euro, typed in Franc until 17/02/2002
//   2003  kept in Euro
//
// Each has about 3,000 entries: consultations and visits of every working day in
// cash, by cheque and by card, receipts split over two treasury accounts, the
// expenses of a practice with its secretary, a telephone that is partly private,
// transfers and personal draws as opérations diverses. Early months are
// validated, entries are pointed, bank lines reconciled, and the last year keeps
// bank operations that wait for reconciliation, and statements in files (demoreleves.h). The practice owns
// assets of all kinds (biensdemo.h).
#pragma once

#include <functional>
#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// What was made of one exercice.
struct ResumeDemo {
  std::string exercice;
  bool euro = true;
  u32 ecritures = 0;  ///< opérations diverses included
  u32 od = 0;
  f64 recettes = 0;  ///< as the books have them, in the currency of the exercice
  f64 depenses = 0;
};

/// Fills an open practice that has no exercice yet, and makes 2003 its current one
/// (no exercice is open at the end). `suite` hears of each exercice when it is on
/// disk. Refused when there are exercices. A failure leaves what was made before:
/// each month is one unit of work.
Refus RemplitDemo(CFenlorApp& app, const std::function<void(const ResumeDemo&)>& suite);

}  // namespace fenlor
