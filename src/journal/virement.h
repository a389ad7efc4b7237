// Internal transfer: money from one treasury account to another, as an expense and a
// receipt on the two transit accounts. Both halves are one unit of work.
#pragma once

#include <string>

#include "journal/saisie.h"

namespace fenlor {

struct SaisieVirement {
  Date date = 0;
  std::string de, vers;  ///< treasury accounts, long form; empty: none chosen
  std::string libelle;
  bool euro = true;  ///< currency of `montant`
  f64 montant = 0;
  i16 paiement = PaiementAutre;  ///< of the receipt; off a bank account always "Autre"
};
/// The two entries made.
struct VirementFait {
  u32 depense = 0, recette = 0;
};

/// What the form tests as it opens: 3056 closed exercice, 3082 fewer than two treasury accounts,
/// then the two transit accounts, receipts first, each asked for as `CheckComptePerso` does.
Refus ControleVirement(CFenlorApp& app);
/// Checks in order: 3089 date ("date"), 3083 ("de"), 3084 ("vers"), 3085 the same twice ("vers"), 3041
/// ("monnaie"), 3086 amount in either currency ("montant"); the opening tests again, as books may
/// have changed; a label longer than 80 is 3206 ("libelle"). An empty label is "Virement interne".
Refus EnregistreVirement(CFenlorApp& app, const SaisieVirement& saisie, VirementFait& fait);

}  // namespace fenlor
