// Due dates: what the models bring today. Automatic models are entered, announced ones are listed for
// confirmation. An entry and the step of its model are one unit of work, so that nothing that stops the
// program makes an occurrence come twice or not at all.
#pragma once

#include <string>
#include <vector>

#include "auto/parcoursauto.h"
#include "core/fenlorapp.h"

namespace fenlor {

/// An occurrence that waits for confirmation.
struct EcheanceAnnoncee {
  u32 numero = 0;  ///< of the model
  Date date = 0;
  std::string libelle, tresorerie;  ///< label; code of the account
  i16 genre = JournalRecettes;
  f64 montant = 0;  ///< in the model's currency
  bool euro = true;
};

/// An entry that was made.
struct EcheanceFaite {
  u32 numero = 0;  ///< of the model, as it was then
  u32 mouvement = 0;
  Date date = 0;
};

/// What a walk or a confirmation brought.
struct BilanEcheances {
  bool parcouru = false;  ///< false: the walk of today was done already, or the exercice is closed
  std::vector<EcheanceFaite> faites;
  std::vector<EcheanceAnnoncee> annoncees;
  /// What stopped single models, each to be told: 3046 (Franc after the limit), a failure of the store. Such
  /// a model stays as it was, and comes again with the next walk. Of a confirmation `rang` is the occurrence.
  std::vector<Refus> refus;
};

/// The calendar of the open exercice and of today.
CalendrierAuto LitCalendrierAuto(CFenlorApp& app);

/// The walk of all models, once a day: the day is kept in the exercice's settings when it is through. 3209:
/// no exercice is open. Nothing in a closed one.
Refus CalculeEcheances(CFenlorApp& app, BilanEcheances& bilan);
/// What is announced today, whatever was walked; writes nothing.
Refus ListeAnnoncees(CFenlorApp& app, std::vector<EcheanceAnnoncee>& annoncees);

/// Enters the occurrences `rangs` of `annoncees`, each with the step of its model in one unit of work, and
/// moves the models on; the numbers of the others follow. A model that is gone is passed over, and so is an
/// occurrence that is refused (`bilan.refus`). Refused as a whole: 3056, books that cannot be opened.
Refus ConfirmeEcheances(CFenlorApp& app, std::vector<EcheanceAnnoncee>& annoncees,
                        const std::vector<std::size_t>& rangs, BilanEcheances& bilan);

}  // namespace fenlor
