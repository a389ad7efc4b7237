// The operations of bank statements that wait to be matched with the books ("BANQUE"), and the balance that
// the statement of an account ends with. Matching is in `rapprochement.h`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/fiche.h"

namespace fenlor {

/// An operation as a person types it. Texts are Windows-1252.
struct FicheOperation {
  Position position = 0;  ///< 0 for a new operation
  std::string compte;     ///< bank account, in any form
  Date date = 0;
  Date dateValeur = 0;  ///< 0: `date`
  std::string libelle;
  i16 sens = 0;      ///< in the bank's own sense: 0 débit, 1 crédit
  f64 montant = 0;   ///< above 0
  bool euro = true;  ///< currency of `montant`
  f64 autre = 0;     ///< the same in the other currency; 0: at the rate of the date
  static const TableFiche Table;
};

/// An operation of the file and its place.
struct OperationLue {
  Position position = 0;
  Banque rec{};

  f64 Montant(bool euro) const { return euro ? rec.MontantEuro : rec.MontantFranc; }
};

/// The operations of an account (long form), in order of their date.
std::vector<OperationLue> LitOperations(CFenlorApp& app, const std::string& compte);
/// 3451 when there is none at that position any more.
Refus LitOperation(CFenlorApp& app, Position position, OperationLue& operation);
/// As the fields of the form hold it.
FicheOperation FicheDe(CFenlorApp& app, const OperationLue& operation, bool euro);

/// A bank account of the chart, in any form: 3119 for none, 3450 for any other.
Refus ControleCompteBanque(CFenlorApp& app, const std::string& compte);
/// The record that an operation makes. In order: an account that
/// is no bank account of the chart (3119, 3450), a text too long (3206), no date (3076) or none of a calendar
/// (3104), no amount (3077) or one that the books cannot hold (3401).
Refus ComposeOperation(CFenlorApp& app, const FicheOperation& fiche, Banque& rec);
/// The same, then written, in the place of the one at `fiche.position`, as one unit; on a closed exercice
/// 3056. `fiche.position` becomes its own. One that is changed keeps its amount of the other currency as long
/// as date and amount are the same.
Refus EnregistreOperation(CFenlorApp& app, FicheOperation& fiche);
/// Closed exercice (3056), gone (3451), then the question, its amount in the currency `euro`.
Refus SupprimeOperation(CFenlorApp& app, Position position, bool euro);
/// "12,50 €": an amount as questions show it.
std::string MontantEnTexte(f64 montant, bool euro);

/// What a statement ends with, as the bank prints it: above 0 when the bank owes the money.
struct SoldeReleve {
  f64 montant = 0;
  bool euro = true;
  Date date = 0;  ///< of the balance; 0: not known
};
/// The last one known of an account (long form) in the open exercice.
std::optional<SoldeReleve> LitSoldeReleve(CFenlorApp& app, const std::string& compte);
/// Keeps it in the exercice's settings; none: forgets it. 3056, 3220.
Refus EcritSoldeReleve(CFenlorApp& app, const std::string& compte, const std::optional<SoldeReleve>& solde);

}  // namespace fenlor
