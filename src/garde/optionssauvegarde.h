// What is remembered of backups for the user of this machine, whatever the practice: where they go, how many
// are kept, when the last one was made and proved. Kept in the registry, not in the settings that a backup
// holds.
#pragma once

#include <string>

#include "garde/conservation.h"

namespace fenlor {

struct OptionsSauvegarde {
  std::string dossier;        ///< the platform's bytes; empty: none was chosen yet
  bool finDeSession = false;  ///< the whole practice into that folder at the end of each session
  Conservation conservation;
};

/// Bounds of each number of `Conservation`; one day at least.
constexpr unsigned ConservationMax = 999;
constexpr std::size_t TailleDossierMax = 259;  ///< bytes that the registry gives back

OptionsSauvegarde LitOptionsSauvegarde(const CFenlorApp& app);
/// 3551 (field "dossier") a folder's path beyond the limit, 3552 copies at the end of a session without a
/// folder, 3214 the registry. What is as it was is not written.
Refus EcritOptionsSauvegarde(CFenlorApp& app, const OptionsSauvegarde& options);
/// The folder alone, as above.
Refus RetientDossier(CFenlorApp& app, const std::string& dossier);

/// "Date sauvegarde" is today. The store's warnings tell where it cannot be noted.
void NoteDateSauvegarde(CFenlorApp& app);
/// Notes a backup that was read back: its name and moment, and the date above.
void NoteSauvegardeVerifiee(CFenlorApp& app, const SauvegardeFaite& faite);
/// Sentence on the last backup that was read back, Windows-1252; empty when there is none.
std::string PhraseSauvegardeVerifiee(const CFenlorApp& app);

}  // namespace fenlor
