// Maintenance of the books: rebuild of the key files, recalculation of the accounts'
// totals, adjustment of the second currency. Rules without windows: the caller has
// closed its own views of the files before.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "core/btfiles.h"
#include "core/texte.h"

namespace fenlor {

// Filters of the key rebuild: they correct a record in place and return false for
// one that is not worth keeping.

/// Drops a blank `Compte` and a `Type` above 4; an account of receipts gets back its
/// professional share of 100.
bool FiltrePlan(Plan& rec);
/// Drops a blank `Rubrique`.
bool FiltreRubrique(Rubrique& rec);
/// Drops a blank `Compte`, an impossible `Date`, and two amounts of 0; an impossible
/// `DateValeur` becomes `Date`.
bool FiltreBanque(Banque& rec);
/// Drops a blank `Compte` and an impossible `Date`.
bool FiltreReleve(OperationImportee& rec);
/// Drops `Numero` 0 and an impossible `DateAchat`.
bool FiltreImmo(Immobilisation& rec);
/// Drops a record without `Numero` or without `Annee`.
bool FiltreAmo(Amortissement& rec);

/// One row of the list of files, in the order in which they are rebuilt.
struct FichierReconstructible {
  TexteFixe libelle;  ///< text number: "Journal (journal.dat)"
  const char* nom;    ///< store name: "JOURNAL"
  bool duCabinet;     ///< shared by all exercices of the practice
};
std::span<const FichierReconstructible> FichiersReconstructibles();

/// What became of one file.
struct FichierReconstruit {
  std::string nom;
  RapportReindex rapport;
};

struct Reconstruction {
  /// The files gone through, in order. After a stop the last one is as it was.
  std::vector<FichierReconstruit> fichiers;
  bool arrete = false;  ///< by the user
};

/// Rebuilds the named files (store names, without regard to case) in the order of
/// the list above, whatever that of `noms`. Refused before any work: 3203 an unknown
/// name, 3209 a file of an exercice while none is open. A stop leaves the files that
/// were finished rebuilt. In a closed exercice the records of its files stay as they are. 3010 when a file
/// could not be rebuilt; the others are. The files told it.
Refus ReconstruitCles(CFenlorApp& app, const std::vector<std::string>& noms, Reconstruction& resultat);
/// What a rebuild lost or mended, a line for each file of which there is something to
/// tell, Windows-1252; empty when all records are as they were.
std::string ResumeReconstruction(const Reconstruction& reconstruction);

/// How the work of a command is run once its question was answered yes: the windows
/// close theirs around it. By default it just runs.
using Autour = std::function<void(const std::function<void()>& travail)>;

/// Makes all totals of the accounts anew from the lines. Progress and messages come
/// through the store's callback. The result is the store's.
bool RecalculComptes(CFenlorApp& app, Statistiques& statistiques);
/// The same with the windows closed around it. Not `fait` and no refusal: the user stopped it.
Refus RecalculEntoure(CFenlorApp& app, Statistiques& statistiques, const Autour& autour, bool& fait);
/// The command: asks, recalculates, tells the figures. A stop is no refusal: nothing was changed.
Refus CommandeRecalcul(CFenlorApp& app, Statistiques& statistiques, const Autour& autour = {});

struct AjustementEuros {
  u32 parcourues = 0;   ///< lines walked
  u32 changees = 0;     ///< lines of which an amount changed
  bool arrete = false;  ///< by the user
};

/// The command: asks, then makes the second currency of every line agree with the
/// rate at the line's own date; the currency in which it was typed is the truth. 3056 a closed exercice. The
/// accounts' totals do not follow: `CommandeRecalcul` comes next. A stop, or a failure
/// (3214), leaves the lines of the finished batches adjusted; running it again is safe.
Refus AjusteEuros(CFenlorApp& app, AjustementEuros& ajustement, const Autour& autour = {});

}  // namespace fenlor
