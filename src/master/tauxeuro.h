// The table of conversion rates, section "TAUX EURO": rows "date|rate" under the
// keys 1, 2, ...
#pragma once

#include <vector>

#include "master/options.h"

namespace fenlor {

struct TauxEuro {
  Date date = 0;  ///< first day of validity
  f64 taux = 0;   ///< Franc for one Euro
};

constexpr int DecimalesTauxEuro = 5;

/// By date. Rows that hold no date or no rate are left out.
std::vector<TauxEuro> LitTauxEuro(CFenlorApp& app);
/// Checks a row that is to be added, or to take the place of row `modifie`: 3104
/// ("date") the date, 3230 ("date") another row has it, 3118 ("taux") the rate.
Refus ControleTauxEuro(const std::vector<TauxEuro>& lignes, const TauxEuro& saisie, int modifie = -1);
/// Puts a checked row in its place by date; index of the row.
int PlaceTauxEuro(std::vector<TauxEuro>& lignes, const TauxEuro& saisie, int modifie = -1);
/// Writes the table, numbered from 1 without gaps, in one replacement of the settings, and sets
/// the session's `TauxEuroCourant`, the rate of the last row (0: none). A table that
/// did not change is not written. False, not told, when it could not be written.
bool EcritTauxEuro(CFenlorApp& app, const std::vector<TauxEuro>& lignes);

}  // namespace fenlor
