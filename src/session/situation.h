// Where the practice stands: what the start page shows of the books.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// Of the receipts and expenses accounts, as they stand in the books: the professional part, without tax.
/// In the currency of the open exercice, drafts included.
struct Resultats {
  f64 recettes = 0;
  f64 depenses = 0;
  f64 Resultat() const;  ///< in whole cents
};

struct SoldeTresorerie {
  std::string compte;  ///< long form
  std::string code, designation;
  f64 livres = 0;     ///< above 0: money that is there
  f64 rapproche = 0;  ///< as the bank knows it
};

struct Situation {
  Date jour = 0;  ///< whose month is looked at: today, else the last day of the exercice
  bool euro = true;
  std::vector<SoldeTresorerie> tresorerie;
  std::array<Resultats, 12> mois{};  ///< January to December, of both years of an exercice that has two
  Resultats annee;
  std::string exerciceAvant;  ///< the one that ends the day before this one begins; empty: none
  std::array<Resultats, 12> moisAvant{};
  Resultats anneeAvant;
  u32 brouillon = 0;    ///< entries not validated
  u32 aRapprocher = 0;  ///< bank operations that wait
  u32 echeances = 0;    ///< models whose next day is within `JoursEcheances` of today, or past

  const Resultats& Mois() const;
  const Resultats& MoisAvant() const;
};
constexpr int JoursEcheances = 14;

/// Reads the open exercice, and the one before in the currency of this one when it has not been read into
/// `situation` yet and its files can be opened beside no others. Refused by 3209 and by what the store says;
/// `situation` is then what it was.
Refus LitSituation(CFenlorApp& app, Situation& situation);

}  // namespace fenlor
