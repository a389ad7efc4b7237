// The forecast: what the models bring and cost from today to the end of the exercice, month by month, and
// what the treasury accounts hold then.
#pragma once

#include <string>
#include <vector>

#include "auto/parcoursauto.h"
#include "core/fenlorapp.h"

namespace fenlor {

/// A treasury account as the books have it. What it holds is positive, an overdraft negative.
struct TresoreriePrevue {
  std::string compte, code;  ///< long form
  f64 solde = 0;
};

/// One account in one month, or all of them.
struct LignePrevision {
  Date mois = 0;             ///< its first day
  std::string compte, code;  ///< empty: all treasury accounts together
  f64 recettes = 0, depenses = 0;
  f64 solde = 0;  ///< at the end of the month
};

struct Previsions {
  bool euro = true;  ///< currency of the amounts: that of the exercice
  std::vector<LignePrevision> lignes;
};

/// As if each day up to the end of the exercice had its walk, and what is announced were confirmed on that
/// day. What is due already counts in the first month, that of today. A month has a row for all accounts and
/// one for each account that holds something or that a model is paid through; with one such account its row
/// alone. A model on an account that is none of `comptes` brings nothing.
std::vector<LignePrevision> Prevoit(const std::vector<EcrituresAuto>& modeles, CalendrierAuto calendrier,
                                    bool euro, std::vector<TresoreriePrevue> comptes);

/// That of the open exercice. 3209, 3056.
Refus CalculePrevisions(CFenlorApp& app, Previsions& previsions);

/// "Mars 2003"; only the first row of a month names it.
std::string MoisPrevision(const Previsions& previsions, std::size_t rang);
std::string TresoreriePrevision(const LignePrevision& ligne);

}  // namespace fenlor
