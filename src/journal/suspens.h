// What stands in the form of an entry that was not saved yet. It is kept in a file of the exercice while the
// form is open, so that it outlives the program, the power and a lid that is closed; the books know nothing
// of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "journal/saisie.h"

namespace fenlor {

/// What stands in the form of a line, over that of an opération diverse or of an entry that several treasury
/// accounts share. Of these it has account, payment and, as `debit`, the amount.
struct LigneSuspendue {
  u32 rang = 0;          ///< of the line that it changes, from 1; 0: a new one
  LigneODSaisie saisie;  ///< but for the amounts
  std::string code;      ///< that names no account
  std::string debit, credit;
};

struct SaisieSuspendue {
  bool operationDiverse = false;
  /// Of an opération diverse what both have: journal, entry, date, label, currency.
  SaisieEcriture ecriture;
  std::vector<LigneODSaisie> lignes;  ///< of an opération diverse
  bool ligneOuverte = false;
  LigneSuspendue ligne;  ///< while it is open
  /// What stands in a field that cannot be read, letter for letter.
  std::string code, tresorerie, ttc, professionnelle;
};

/// The text that the file holds: two forms with the same text hold the same.
std::string TexteSuspens(const SaisieSuspendue& saisie);

/// Writes it to the open exercice, in the place of what was kept before; durable when it returns true.
/// Nothing else depends on it: a failure costs the help after a crash, and leaves what was kept before.
bool NoteSuspens(CFenlorApp& app, const SaisieSuspendue& saisie);
/// The form ended: nothing is kept any more. False when the file could not be removed.
bool OublieSuspens(CFenlorApp& app);

/// What the open exercice keeps. None: nothing is, the file holds no entry, the exercice is closed, or the
/// entry stands in the books as it was typed, for the program died between the save and `OublieSuspens`. One
/// that was typed over an entry which exists no more is a new entry.
std::optional<SaisieSuspendue> LitSuspens(CFenlorApp& app);

/// "Reprendre la saisie du 12/03 (Consultation, 25,00 €)", amounts and label as far as they were typed.
std::string DecritSuspens(const SaisieSuspendue& saisie);

}  // namespace fenlor
