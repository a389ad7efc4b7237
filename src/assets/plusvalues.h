// Gains and losses on the disposal of assets, and the sums over all assets that the
// variables of the fiscal statement show.
#pragma once

#include "core/fenlorapp.h"

namespace fenlor {

struct MontantDouble {
  f64 franc = 0, euro = 0;
  MontantDouble& operator+=(const MontantDouble& autre) {
    franc += autre.franc;
    euro += autre.euro;
    return *this;
  }
};

/// A loss is negative.
struct PlusValue {
  MontantDouble court, aLongTerme;
};

/// Which figures decide how the Euro gain is split: those in Franc, or its own.
enum class PartageEuro { CommeLeFranc, ParLuiMeme };

/// Gain on the disposal of an asset: its price less its depreciable value plus `cumul`,
/// the theoretical depreciation. The price of a scrapping is that of the record. All of
/// it is short term for an asset held for less than two years, and when it is not above
/// the depreciation or the value is negative; else the depreciation is short term and the
/// rest long term. An asset without value, held longer, is long term.
/// Precondition: `DateCession` is set.
PlusValue CalculPlusValue(const Immobilisation& immobilisation, MontantDouble cumul,
                          PartageEuro partage = PartageEuro::CommeLeFranc);

/// Over all assets of the practice, for the open exercice.
struct SommesImmobilisations {
  MontantDouble amortissements;       ///< "&AMORT": theoretical annuities of the exercice's last year
  MontantDouble valeurs;              ///< "&IMMO_HTVA": depreciable values, of disposed assets too
  MontantDouble court, aLongTerme;    ///< disposals from the exercice's first to its last day
  MontantDouble PlusValues() const;   ///< "&PVC": the short-term sum when positive, each currency by itself
  MontantDouble MoinsValues() const;  ///< "&MVC": its opposite when negative
};
/// Steps the open progress after each asset and stops when the user does; the sums are
/// then those so far. False when the assets cannot be read, told: all sums are 0.
bool CalculSommesImmobilisations(CFenlorApp& app, SommesImmobilisations& sommes);

}  // namespace fenlor
