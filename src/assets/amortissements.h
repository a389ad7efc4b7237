// Depreciation of one asset, year by year, from its purchase to a date. Nothing of
// the schedule is stored: it is derived from the asset's record each time. A year
// whose real amount was corrected has a record of `CAmortissements`. Franc and Euro
// are two series that never meet.
//
// The walk hands each year to `OnAnnuite`; annuites.h has those who collect it.
#pragma once

#include "core/fenlorapp.h"
#include "core/valeurs.h"

namespace fenlor {

/// Days of a period in months of 30 days, both ends included; the years play no
/// part. A reversed pair counts positive, one day less.
inline int JoursAmortissement(Date debut, Date fin) { return Jours360(debut, fin); }
/// Months of a period, the first and the last whole; the years play no part.
inline int MoisAmortissement(Date debut, Date fin) { return MoisEntre(debut, fin); }

/// `Immobilisation::TypeAmortissement`
enum TypeAmortissement : u8 { Lineaire = 0, Degressif = 1, Exceptionnel = 2 };

class CCalculAmortissements {
 public:
  /// The asset is the caller's and outlives the calculation; another one may be put
  /// in its place between two calculations.
  explicit CCalculAmortissements(CFenlorApp& app, const Immobilisation* immobilisation = nullptr)
      : Immo(immobilisation), m_app(app) {}
  virtual ~CCalculAmortissements() = default;
  CCalculAmortissements(const CCalculAmortissements&) = delete;
  CCalculAmortissements& operator=(const CCalculAmortissements&) = delete;

  int DecimalesFranc = 2;
  int DecimalesEuro = 2;
  const Immobilisation* Immo;

  /// One year, in ascending order; true. `annee` may lie above `anneeDemandee`, the
  /// year of the date asked for: an asset bought later has its first year all the
  /// same. The real amounts are the theoretical ones unless the year was corrected.
  virtual bool OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                         f64 reelEuro);

  /// Walks from the year of purchase to `date`, or to the disposal when it comes
  /// first; 0: to the end of the open exercice. The sums of the real amounts replace
  /// the cumuls. Always true. Precondition: `Immo` is set.
  bool CalculAmortissements(Date date, f64& cumulFranc, f64& cumulEuro);

  /// Annuity of one year, neither rounded nor limited to what remains. `taux` in
  /// percent, `ecoulees` the years before, the period as a fraction. A degressive
  /// asset gets the linear share of what remains unless its rate gives more; in the
  /// year after its last one that share is infinite, or NaN when nothing remains.
  static f64 CalculAnnuite(f64 base, f64 cumul, u8 type, f64 taux, f64 duree, u32 ecoulees, int numerateur,
                           int denominateur);

 private:
  CFenlorApp& m_app;
};

}  // namespace fenlor
