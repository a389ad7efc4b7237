// The axis of values: round steps, and how values are written.
#pragma once

#include <string>

#include "store/enregistrements.h"

namespace fenlor {

/// From `premier` to `dernier` steps, zero among them: a step is 1, 2 or 5 times a power of ten, a cent at
/// least.
struct EchelleAxe {
  f64 pas = 1;
  i64 premier = 0, dernier = 1;

  f64 Valeur(i64 rang) const { return static_cast<f64>(rang) * pas; }
  f64 Minimum() const { return Valeur(premier); }
  f64 Maximum() const { return Valeur(dernier); }
};

/// The scale that holds zero and both values, with at most `intervalles` + 1 steps between them (2 at least
/// with values on both sides of zero).
EchelleAxe FaitEchelle(f64 minimum, f64 maximum, unsigned intervalles);

/// "12 000 €": whole where the step is, groups of three digits apart.
std::string TexteGraduation(f64 valeur, f64 pas, bool euro);
/// "-1234,50 €", "0,00 €".
std::string TexteValeur(f64 valeur, bool euro);

}  // namespace fenlor
