// What the lines of the fiscal statement are worth: the variables that formulas may name, and the value
// of a heading. No report is needed for it.
//
//   Variables2035 variables;
//   CalculVariables2035(app, variables);
//   Rubriques2035 rubriques(app);
//   if (const Refus refus = rubriques.Lit()) return refus;
//   rubriques.PoseVariables(variables);
//   f64 recettes = rubriques.ValeurRubriqueEuro("07");
//
// The yearly allowance for kilometres is `FraisKilometriques` (master/fraiskm.h).
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "assets/plusvalues.h"
#include "core/fenlorapp.h"

namespace fenlor {

struct Variables2035 {
  MontantDouble amortissements;       ///< "&AMORT": the year's depreciation of all assets
  MontantDouble fraisKm;              ///< "&FRAISKM": kilometre allowance of the year
  MontantDouble plusValues;           ///< "&PVC": short-term gains on disposal less losses, when positive
  MontantDouble moinsValues;          ///< "&MVC": the opposite when negative
  MontantDouble immobilisationsHTVA;  ///< "&IMMO_HTVA": depreciable values of all assets

  /// By the exact name; null when there is none.
  const MontantDouble* Trouve(std::string_view nom) const;
};

/// For the open exercice. The allowance is in the exercice's currency and converted at the rate of today.
/// Steps the open progress after each asset and stops when the user does. False when the assets cannot be
/// read, told: what comes from them is then 0.
bool CalculVariables2035(CFenlorApp& app, Variables2035& variables);

/// The headings of the open exercice and their values, as the books are when `Lit` reads them.
///
/// A heading is worth its manual amount; without a formula, the totals of the accounts that name it, receipts
/// as credit less debit, expenses as debit less credit; else what its formula says. Each value is rounded to
/// a whole unit of the currency, and a term below 0 counts as 0. A term of at most three characters is the
/// code of a heading, as it stands and filled up with blanks; a longer one names a variable or nothing.
class Rubriques2035 {
 public:
  explicit Rubriques2035(CFenlorApp& app) : m_app(app) {}

  /// Reads headings and totals of the accounts. 3209: no exercice is open.
  Refus Lit();
  /// Until then all variables are 0.
  void PoseVariables(const Variables2035& variables);
  u32 Nombre() const { return static_cast<u32>(m_fiches.size()); }

  /// Value of a heading by its code, or of a variable by its name. 0 for what there is not, and for a heading
  /// whose formula leads back to itself.
  f64 ValeurRubriqueFranc(std::string_view code) { return Valeur(Complete(code)).franc; }
  f64 ValeurRubriqueEuro(std::string_view code) { return Valeur(Complete(code)).euro; }

  /// Headings whose formulas lead back to themselves, each in one way at least: "12 > 14 > 12".
  const std::vector<std::string>& Boucles() const { return m_boucles; }

 private:
  struct Fiche {
    std::string formule;
    bool manuel = false;
    MontantDouble montant;
    bool enBoucle = false;
  };

  static std::string Complete(std::string_view code);
  bool LitRubriques();
  bool LitComptes();
  void ChercheBoucles();
  MontantDouble Valeur(const std::string& code);
  MontantDouble Calcule(const std::string& code);
  MontantDouble ValeurFormule(const std::string& formule);

  CFenlorApp& m_app;
  Variables2035 m_variables;
  MontantDouble m_fraisKm;                        ///< by the scale of each currency
  std::map<std::string, Fiche> m_fiches;          ///< by code, three characters
  std::map<std::string, MontantDouble> m_totaux;  ///< of the accounts, by the heading that they name
  std::map<std::string, MontantDouble> m_valeurs;
  std::vector<std::string> m_boucles;
};

}  // namespace fenlor
