// Entries while they are written: the lines of an opération diverse, which the program makes itself, and the
// record of a standard entry with its treasury lines. Lines of simple and standard entries are written by
// the store alone.
#pragma once

#include <string_view>
#include <vector>

#include "core/btfiles.h"

namespace fenlor {

/// An opération diverse of the open exercice.
class COpDiverses {
 public:
  /// The session outlives the object.
  explicit COpDiverses(CFenlorApp& app) : m_app(app) {}

  Mouvement Rec{};  ///< the header: its lines bear its number, journal, label, dates and marks
  /// Lines of the entry that is written anew. A new line on the account and the side of one of them takes
  /// its marks and, off a treasury account, its mode of payment, which nobody chooses there; it leaves this
  /// list.
  std::vector<Line> Anciennes;
  /// The lines to come are those of `Anciennes`: their amounts stay as they are in both currencies.
  bool GardeMontants = false;

  /// A line on an account and of its name, of an amount that is credit less debit, in both currencies by the
  /// rate of the header's date.
  Line FaitLigne(const Plan& compte, f64 montant, bool euro) const;
  /// Adds a line to the entry. Its position, 0 when the store refused.
  Position AddLine(Line ligne);
  /// Adds a line for a difference, credits less debits: a negative one as a credit on the account for credit
  /// deviations, a positive one as a debit on that for debits. Exactly 0 adds nothing and succeeds. False
  /// when the account is not in the chart, or the store refused.
  bool AddEcart(f64 montant, bool euro);

 private:
  CFenlorApp& m_app;
};

/// A standard entry; owns the treasury lines of its record.
class CEcrStandard {
 public:
  explicit CEcrStandard(CFenlorApp& app) : m_magasin(app.Magasin) {}
  ~CEcrStandard() { m_magasin.LibereLignes(Rec); }
  CEcrStandard(const CEcrStandard&) = delete;
  CEcrStandard& operator=(const CEcrStandard&) = delete;

  EcrStandard Rec{};

 private:
  QVAPI& m_magasin;
};

/// What a line is called on paper: the words typed for a line of an opération diverse, which its
/// `Designation` keeps; of any other line that field is the account's own name, and the entry's label stands
/// instead.
std::string_view NomDeLigne(const Line& ligne);

}  // namespace fenlor
