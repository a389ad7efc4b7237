// Matching what the bank says with what the books say. A match marks one or more lines of the treasury
// account as reconciled, copies an operation into each, and takes the operation out of the file of those that
// wait.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "banque/operations.h"
#include "journal/saisie.h"

namespace fenlor {

/// The lines of an account in a period, both days included.
struct PeriodeRapprochement {
  std::string compte;  ///< long form
  Date du = 0, au = 0;
};

/// A line that is not reconciled yet. Amounts in cents.
struct LigneARapprocher {
  Position position = 0;
  Date date = 0;
  i64 franc = 0, euro = 0;
  bool credit = false;

  i64 Montant(bool enEuro) const { return enEuro ? euro : franc; }
};
/// By date, lines of drafts among them.
std::vector<LigneARapprocher> LignesARapprocher(CFenlorApp& app, const PeriodeRapprochement& periode);
/// Sum of the rows chosen, in cents.
i64 CumulLignes(const std::vector<LigneARapprocher>& lignes, const std::vector<int>& choisies, bool euro);
/// The rows that may stay selected together with that of the focus: all of them when they are on its side,
/// else it alone.
std::vector<int> MemeSens(const std::vector<LigneARapprocher>& lignes, const std::vector<int>& choisies,
                          int focus);
/// The other side of a line's entry, "706; 7065": accounts of receipts and expenses without the personal
/// share, in an opération diverse every other account.
std::string Contrepartie(CFenlorApp& app, const Line& ligne);
/// What a line is about: its label, and the designation of the line where that says more.
std::string LibelleLigne(const Line& ligne);

/// The month of the account's last operation; without any that of today, in the exercice's first year.
/// `operation`: the day proposed for the next operation, the last one's, else the first of that month.
struct PropositionRapprochement {
  Date du = 0, au = 0, operation = 0;
};
PropositionRapprochement ProposeRapprochement(CFenlorApp& app, const std::vector<OperationLue>& operations);

/// One operation and the lines that are it, as one unit. In order: 3056 closed exercice; 3078 `operation` is
/// 0, 3451 gone; 3079 no line; 3455 a line of another account, reconciled already, or twice; 3080 their sum
/// (`euro` or Franc) is not the operation's amount; 3081 a line of a later day; 3456 asked when they are on
/// the operation's own side. Each line keeps a copy of itself, valued today.
Refus RapprocheManuel(CFenlorApp& app, Position operation, const std::vector<Position>& lignes, bool euro);

struct DemandeAutomatique {
  PeriodeRapprochement periode;
  bool confirmation = false;  ///< each pair is asked about
  bool euro = true;           ///< currency of the questions
};
struct BilanRapprochement {
  u32 rapproches = 0;  ///< pairs
  u32 operations = 0;  ///< at the start
};
/// Pairs the operations of the account with lines of the period: an operation, in list order, takes the first
/// line of the other side, not after it, of the same cents in both currencies. 3056, 3115 no operation, 3116
/// no line. With `confirmation` each pair is asked about and durable before the next question: no goes on to
/// the next line, cancel ends. Without it the run is one unit; the user may stop it, which keeps the pairs
/// taken.
Refus RapprocheAutomatique(CFenlorApp& app, const DemandeAutomatique& demande, BilanRapprochement& bilan);

/// What stands under the lists, in the bank's sense: above 0 when the bank owes the money.
struct SoldesRapprochement {
  std::optional<f64> releve;  ///< of the last statement; none known yet
  f64 livres = 0;             ///< opening balance and reconciled lines
  f64 Difference() const;     ///< of `releve`, in whole cents
};
SoldesRapprochement LitSoldes(CFenlorApp& app, const std::string& compte, bool euro);

/// The entry that an operation asks for: a receipt when the bank credits, an expense when it debits, without
/// its account. 3056, 3451, 3104 for a day outside the exercice.
Refus ProposeEcriture(CFenlorApp& app, Position operation, SaisieEcriture& saisie);
/// Saves it as it was completed (`EnregistreEcriture`) and matches its treasury line with the operation, in
/// one unit. 3457 when it has no such line, 3081 when that one is of a later day: nothing is saved then.
Refus EnregistreEcritureDe(CFenlorApp& app, Position operation, const SaisieEcriture& saisie,
                           EcritureFaite& faite);

}  // namespace fenlor
