// The effects of the journal's lines on the cumulative fields of the accounts.
//
// Totals are kept in whole cents: whatever the order in which lines come and go,
// the fields hold exactly what a sum over the remaining lines gives.
//
// A line adds its amount to the debit (`Sens` 0) or the credit of its account,
// and to the reconciled side alike when it is reconciled. The line of the
// personal share also adds to `Perso` of the entry's main account, the line of
// the tax to `TVA`, as a credit when positive: both are positive for receipts and
// negative for expenses. Only accounts of receipts and expenses carry those two.
#pragma once

#include <cmath>
#include <cstring>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

/// True for an amount that the store takes.
inline bool MontantPossible(f64 montant) { return std::fabs(montant) <= MontantMax; }
/// Whole cents, halves up. 0 for an amount that the store does not take.
inline i64 Centimes(f64 montant) {
  return MontantPossible(montant) ? static_cast<i64>(std::floor(montant * 100 + 0.5)) : 0;
}
inline f64 DeCentimes(i64 centimes) { return static_cast<f64>(centimes) / 100.0; }

/// Pairs of fields of `Plan`, Franc then Euro, in the order of the record.
enum ChampCumul { CumulPerso, CumulTva, CumulCredit, CumulDebit, CumulRappCredit, CumulRappDebit, NbCumuls };

/// Cents by field and currency.
struct Cumuls {
  i64 centimes[NbCumuls][2] = {};

  void Ajoute(ChampCumul champ, i64 franc, i64 euro) {
    centimes[champ][0] += franc;
    centimes[champ][1] += euro;
  }
  bool operator==(const Cumuls&) const = default;
};

/// Adds the effects of a line (`signe` 1) or takes them back (-1). `table(compte)`
/// gives the `Cumuls&` of an account number of 11 bytes; it is used at once.
template <class Table>
void ReporteLigne(const Line& ligne, int signe, Table&& table) {
  const i64 franc = signe * Centimes(ligne.MontantFranc);
  const i64 euro = signe * Centimes(ligne.MontantEuro);
  const bool credit = ligne.Sens != 0;
  Cumuls& compte = table(ligne.Compte);
  compte.Ajoute(credit ? CumulCredit : CumulDebit, franc, euro);
  if (ligne.Rapprochee) compte.Ajoute(credit ? CumulRappCredit : CumulRappDebit, franc, euro);
  if ((ligne.Role == RolePerso || ligne.Role == RoleTva) && ligne.ComptePrincipal[0]) {
    table(ligne.ComptePrincipal)
        .Ajoute(ligne.Role == RolePerso ? CumulPerso : CumulTva, credit ? franc : -franc,
                credit ? euro : -euro);
  }
}

/// Gathers the effects of one operation: a handful of accounts.
class EffetsComptes {
 public:
  struct Poste {
    char compte[11];
    Cumuls cumuls;
  };

  void Ajoute(const Line& ligne) { Reporte(ligne, 1); }
  void Retire(const Line& ligne) { Reporte(ligne, -1); }
  const std::vector<Poste>& Postes() const { return m_postes; }

 private:
  void Reporte(const Line& ligne, int signe);
  std::vector<Poste> m_postes;
};

/// Adds to the totals of an account. False when one leaves the range: `plan` is
/// then of no more use.
bool AjouteCumuls(Plan& plan, const Cumuls& cumuls);
/// Sets the totals of an account. False when one is outside the range.
bool PoseCumuls(Plan& plan, const Cumuls& cumuls);

}  // namespace fenlor
