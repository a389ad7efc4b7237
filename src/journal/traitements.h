// Commands on many entries at once: validation of the drafts, renumbering, another month.
#pragma once

#include <string>
#include <vector>

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
struct ResultatLot {
  unsigned erreur = 0;  ///< of the books, told; 0: done
  u32 lignes = 0;       ///< lines that passed
  u32 ecritures = 0;    ///< entries that changed
  bool arrete = false;  ///< stopped by the user: what is done stays
};
/// Validates each entry of which one line passes; progress and stop through `CFenlorApp::Boite`.
/// An entry is treated once. What was validated before a stop stays so; each batch of entries is
/// one unit of work.
ResultatLot TraiteBrouillard(CFenlorApp& app, const DemandeValidation& demande);

/// Asks 3316, then numbers these entries from 1 in their order, validated ones too; one that cannot
/// be read is left out without using a number. One unit of work. A closed exercice does not matter.
ResultatSaisie RenumeroteEcritures(CFenlorApp& app, const std::vector<u32>& mouvements);

/// First test of "another month": 3056 closed exercice, 3202 unknown, 3103 linked. `mois`: of the entry.
ResultatSaisie ControleDeplacement(CFenlorApp& app, u32 mouvement, unsigned& mois);
/// Puts the entry into another month of its year, 1 to 12; the day stays, be it real there or not.
/// Refused as above.
ResultatSaisie DeplaceEcriture(CFenlorApp& app, u32 mouvement, unsigned mois);


// Commands of a window on its selected rows. Entries that are not there any more are left out in
// silence; the others are one unit of work. False, told, when the books could not be written.

/// Flips the pointing mark of each.
bool PointeEcritures(CFenlorApp& app, const std::vector<u32>& mouvements);
/// Puts them into another month. Linked ones stay, and each is told (3103) when the others are on disk.
bool DeplaceEcritures(CFenlorApp& app, const std::vector<u32>& mouvements, unsigned mois);

}  // namespace fenlor
