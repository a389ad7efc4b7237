// The end of an asset: sold for a price, or scrapped without one. A record has no date of disposal (it is
// held), a date (sold), or a date and `Rebut` (scrapped). These rules change a record in memory, and only
// when nothing is refused; `EcritImmobilisation` puts it into the file.
#pragma once

#include <optional>

#include "core/fenlorapp.h"
#include "core/refus.h"

namespace fenlor {

inline bool EstCedee(const Immobilisation& immo) { return immo.DateCession != 0 && immo.Rebut == 0; }
inline bool EstRebutee(const Immobilisation& immo) { return immo.DateCession != 0 && immo.Rebut != 0; }

/// What the form of a disposal holds; that of a scrapping has the date alone.
struct FicheCession {
  Date date = 0;
  f64 prix = 0;
  bool euro = false;  ///< currency of the price
};

/// What the form opens with. A record that was disposed of: its date, its currency, and the price in the
/// currency of the exercice; else today and the currency of the exercice.
FicheCession CessionDe(CFenlorApp& app, const Immobilisation& immo);

/// 3044: it was scrapped.
Refus ControleCession(const Immobilisation& immo);
/// 3045: it was sold.
Refus ControleRebut(const Immobilisation& immo);

/// Checks in this order: scrapped (3044), no date (3104, "date"), a price out of bounds (3401, "prix"), Franc
/// after the limit (3043, "date"), before the purchase (3013, "date"), after today (3014, "date"). The other
/// currency is at the rate of today; a price and a currency that are those of `CessionDe` leave both as they
/// are.
Refus PoseCession(CFenlorApp& app, const FicheCession& cession, Immobilisation& immo);
/// Sold (3045), no date (3104), before the purchase (3013), after today (3014), all "date". Both prices
/// become 0.
Refus PoseRebut(CFenlorApp& app, Date date, Immobilisation& immo);
/// Asks 3481, then the asset is held again; its prices stay, without a meaning: those of `saisie`, what
/// stands in the form, where they are within bounds.
Refus AnnuleCession(CFenlorApp& app, Immobilisation& immo, const std::optional<FicheCession>& saisie = {});

}  // namespace fenlor
