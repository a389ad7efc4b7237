// The schedule of one asset year by year, to the end of the exercice or the disposal, and the real amounts
// that a person sets against the theoretical ones. Amounts are in the currency of the exercice, to the cent.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"
#include "core/refus.h"

namespace fenlor {

struct LigneDetail {
  u32 annee = 0;
  f64 theorique = 0, reel = 0;
  bool Corrigee() const { return reel != theorique; }
};

struct DetailAmortissements {
  Immobilisation immo{};
  bool euro = false;
  std::vector<LigneDetail> lignes;  ///< by year
  /// "1588,89 €", empty for 0.
  std::string Texte(f64 montant) const;
};

/// 3482 when the asset has no depreciable value in either currency; a failure to read it has been told.
Refus LitDetail(CFenlorApp& app, Position position, DetailAmortissements& detail);

/// All rows as one unit of work: a row whose real amount is the theoretical one has no record, any other has
/// one, the other currency at the rate of today. A record that has the row's real amount already stays as it
/// is. 3056 in a closed exercice, 3401 ("reel", with its row) for an amount out of bounds, 3484 when the
/// asset is no longer there; the old corrections then stay.
Refus EnregistreDetail(CFenlorApp& app, const DetailAmortissements& detail);

}  // namespace fenlor
