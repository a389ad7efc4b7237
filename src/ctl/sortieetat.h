// A report that was built, as text on the output. Objects and lines come one at a time:
// nothing of the report is held. False: told.
#pragma once

#include "ctl/contexte.h"
#include "reports/etatcomptable.h"

namespace fenlor {

/// The markup: "titre:", "entete:", "pied:" and "paysage" first, then each block, with
/// its end as a line: "== 3 H", lines that it prints and what it holds (H, X, P).
bool EcritMarquage(Contexte& contexte, CEtatComptable& etat);
/// Every run and rule of every page, on a sheet of A4 at 1,200 units to the inch: page,
/// left, right (units), line (from 1), alignment, style (g, i, s) and text; a rule has
/// "trait" in place of its alignment, in the style "Soignée" "filet", and a tint "bande".
bool EcritRuns(Contexte& contexte, CEtatComptable& etat);
/// On the standard output what `ecrit` writes into the open file that it is given, by way of a file: it is
/// there whole or not at all.
bool DonneParFichier(Contexte& contexte, const std::function<bool(int descripteur)>& ecrit);

}  // namespace fenlor
