// Commands on many entries at once: validation of the drafts, renumbering, another month.
#pragma once

#include <string>
#include <vector>

#include "journal/listejournal.h"
#include "journal/saisie.h"

namespace fenlor {

enum class ActionBrouillard { Valider, Devalider, Delier };

struct DemandeValidation {
  i16 journal = 0;  ///< 0: all
  bool toutes = true;
  bool pointees = false, remises = false, rapprochees = false;
  bool tousMontants = true;
  f64 montantMin = 0, montantMax = 0;
  bool euro = true;  ///< currency of the bounds
  Date du = 0, au = 0;
  ActionBrouillard action = ActionBrouillard::Valider;
};
struct BilanLot {
  u32 lignes = 0;       ///< lines that passed
  u32 ecritures = 0;    ///< entries that changed
  bool arrete = false;  ///< stopped by the user: what is done stays
};
/// Validates each entry of which one line passes; progress and stop through `CFenlorApp::Boite`.
/// An entry is treated once. What was validated before a stop stays so; each batch of entries is
/// one unit of work.
/// `bilan` tells what was done up to a refusal too.
Refus TraiteBrouillard(CFenlorApp& app, const DemandeValidation& demande, BilanLot& bilan);

/// Numbers the entries of a list from 1 in its order, validated ones too; one that cannot be read is left out
/// without using a number. Asks 3316 before, or, while other entries of the journal's month are not in the
/// list, 3430 with "Non" first. One unit of work. A closed exercice does not matter. `nombre`: how many.
Refus RenumeroteEcritures(CFenlorApp& app, const DemandeListe& demande, u32& nombre);

/// First test of "another month": 3056 closed exercice, 3202 unknown, 3103 linked. `mois`: of the entry.
Refus ControleDeplacement(CFenlorApp& app, u32 mouvement, unsigned& mois);
/// Puts the entry into another month of its year, 1 to 12; the day stays, be it real there or not. Its number
/// is that of a new entry of the month.
/// Refused as above.
Refus DeplaceEcriture(CFenlorApp& app, u32 mouvement, unsigned mois);

// Commands of a window on its selected rows. Entries that are not there any more are left out in
// silence; the others are one unit of work.

/// Flips the pointing mark of each.
Refus PointeEcritures(CFenlorApp& app, const std::vector<u32>& mouvements);
/// Puts them into another month. Linked ones stay, which is the outcome when the others are on disk: 3103,
/// several 3431 with it.
Refus DeplaceEcritures(CFenlorApp& app, const std::vector<u32>& mouvements, unsigned mois);

// The commands on one entry (journal/saisie.h) over a selection; each entry is a unit of its own. With more
// than one row "Annuler" ends the command, what was done stays; "Tous" is yes for all that follow of the
// same sort, with progress and a way to stop. A plain deletion is another sort than that of a reconciled
// or linked entry, reconciling another than taking it back; the three questions of a validation are one.
// Refusals are one outcome at the end, several as 3431.

/// All is asked first, then the entries go into the trash together, then they are deleted one by one.
Refus SupprimeEcritures(CFenlorApp& app, const std::vector<u32>& mouvements);
Refus ValideEcritures(CFenlorApp& app, const std::vector<u32>& mouvements);
/// Each as it needs it: reconciled, or no more when it is already. Entries without a bank line are left out.
Refus RapprocheEcritures(CFenlorApp& app, const std::vector<u32>& mouvements);

}  // namespace fenlor
