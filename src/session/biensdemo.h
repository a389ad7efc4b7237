// The equipment of the demo practice: assets of all kinds, bought from 1987 on.
#pragma once

#include "core/fenlorapp.h"
#include "core/refus.h"

namespace fenlor {

/// The last day on which the demo practice pays in Franc.
constexpr Date DernierJourFranc = FaitDate(17, 2, 2002);

/// Adds them through the rules of their forms, the open exercice being 2003: linear by life and by rate,
/// degressive by each table, exceptional, without depreciable value, sold at a gain and at a loss, scrapped,
/// with a corrected year. A disposal that is still to come on the day of the clock is left out. One unit of
/// work.
Refus AjouteBiensDemo(CFenlorApp& app);

}  // namespace fenlor
