// The end of a session: how old the last backup and the last update are, and the backup that is made without
// a question.
#pragma once

#include <string>

#include "garde/sauvegarde.h"

namespace fenlor {

enum class EtatLampe { Eteinte, Allumee, Alarme };

/// Alarm above the second number of days, lit above the first.
EtatLampe LampeDe(i64 jours, int allumee, int alarme);

struct BilanSession {
  i64 joursSauvegarde = 0;
  EtatLampe lampeSauvegarde = EtatLampe::Eteinte;
  std::string verifiee;    ///< sentence on the last backup that was read back; may be empty
  bool miseAJour = false;  ///< there is an update program, and the user wants to hear of it
  int joursMiseAJour = 0;
  EtatLampe lampeMiseAJour = EtatLampe::Eteinte;
};

/// The screen is to be shown: the preference says so, no parent application started the program, and the
/// close is not on its way to the update program.
bool MontreFinDeSession(const CFenlorApp& app);
/// What it shows. A backup dated in the time to come is dated today from here on.
BilanSession LitBilanSession(CFenlorApp& app);
/// The preference; 3220.
Refus EcritFinDeSession(CFenlorApp& app, bool affiche);

/// The archive holds every exercice of the practice.
bool CouvreLeCabinet(CFenlorApp& app, const Manifeste& manifeste);

/// When the options say so: a backup of the whole practice into the chosen folder, locked as the session's
/// last one was, then the keeping. Nothing to do where one that was just made (`faite`; empty: none) covers
/// the practice. Refusals of `Sauvegarde` and `Purge`.
Refus SauvegardeFinDeSession(CFenlorApp& app, const Manifeste& faite = {});

}  // namespace fenlor
