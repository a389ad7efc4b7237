// Rules of the kilometre expenses: the yearly allowance for the car, by a scale of
// three tiers. What is recorded stands in the exercice's section of the settings, and
// the scale in a section of its own besides, from where the next exercice takes it.
#pragma once

#include <array>
#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// What the form holds, as text (Windows-1252); a text that is no number counts as 0.
/// Rates and fixed part are in the exercice's currency.
struct FicheFraisKm {
  bool enregistre = false;          ///< an amount is recorded, which can be deleted
  bool compteur = false;            ///< readings of the meter, else a typed distance
  std::string ancien, dernier;      ///< readings, whole kilometres up to 999999
  std::string kms;                  ///< distance, likewise
  std::string borneInf, borneSup;   ///< bounds of the tiers, likewise
  std::string fixe;                 ///< fixed part of the second tier
  std::array<std::string, 3> taux;  ///< for a kilometre, three decimals; the first up to 999.999,
                                    ///< the others up to 99999.999
};

/// A blank value of the exercice is that of the common section. Without a recorded amount all
/// is from there, and the distance is 0.
FicheFraisKm LitFraisKm(const CFenlorApp& app);
/// After a change of a reading: the last one is not below the old one, the distance is what lies
/// between.
void ChangeReleve(const CFenlorApp& app, FicheFraisKm& fiche);
/// The allowance, not rounded.
f64 CalculFraisKm(const CFenlorApp& app, const FicheFraisKm& fiche);
/// The allowance in the other currency as a text, at the rate of today; empty for 0.
std::string FraisKmAutreMonnaie(CFenlorApp& app, f64 montant);
/// What stands before the three rates: "Jusqu'à 5000 km :" ...
std::array<std::string, 3> LibellesTauxKm(const CFenlorApp& app, const FicheFraisKm& fiche);
/// A rate as its field shows it after it was left.
std::string FormatTauxKm(const CFenlorApp& app, const std::string& texte, std::size_t tranche);

/// Closed exercice (3056); an amount that rounds to 0 (3106, at "kms" or "dernier"); the question 3380 when
/// an amount is recorded already; when there are entries in accounts of headings that use "&FRAISKM", or that
/// these add up, the offer 3381 to delete them, which may be declined. Then all settings at once, and
/// the deletion when they stand on the disk: a failure never takes entries without an amount in their
/// place. `fiche` becomes what was written: within its limits, the distance that of the readings where
/// these count. `supprimees`: entries were deleted.
Refus EnregistreFraisKm(CFenlorApp& app, FicheFraisKm& fiche, bool& supprimees);
/// Closed exercice (3056), then the question 3382. Empties readings and distance; the scale stays.
/// Nothing to do, which is a success, when no amount is recorded.
Refus SupprimeFraisKm(CFenlorApp& app, FicheFraisKm& fiche);

/// The yearly allowance that is recorded, by the rates of one currency; 0 when none is. A blank
/// value of the scale is that of the common section, readings and distance are taken as they stand.
f64 FraisKilometriques(const CFenlorApp& app, bool euro);
/// In the exercice's currency.
f64 FraisKilometriques(const CFenlorApp& app);

}  // namespace fenlor
