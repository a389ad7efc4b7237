// Which backups of a folder stay and which are in the way by now.
#pragma once

#include <string>
#include <vector>

#include "garde/sauvegarde.h"

namespace fenlor {

/// The newest backup of each of the last days, weeks (Monday to Sunday) and months that have one.
struct Conservation {
  unsigned jours = 7;
  unsigned semaines = 4;
  unsigned mois = 12;
};

/// A file of the folder that bears the name of a backup.
struct SauvegardePresente {
  std::string nom;    ///< of the file
  std::string serie;  ///< "Fenlor_cabinet_2003": backups of one kind stand for each other
  Date date = 0;
  std::string heure;  ///< "1053", with the rank of that minute behind it
  u64 taille = 0;
  bool protegee = false;
};

/// Takes the name apart. False for names that `NomSauvegarde` never gives.
bool LitNomSauvegarde(const std::string& nom, SauvegardePresente& sauvegarde);

/// The backups of a folder, newest first. 3586 the folder cannot be read.
Refus ListeSauvegardes(Systeme& systeme, const std::string& dossier,
                       std::vector<SauvegardePresente>& presentes);

/// Those that may go: of each series all but the newest of every day, week and month that counts. The newest
/// of a series always stays.
std::vector<SauvegardePresente> Perimees(const std::vector<SauvegardePresente>& presentes,
                                         const Conservation& regle);

/// Removes them, but only where one of the same series that stays was read to its end and is good; a locked
/// one counts as good when `motDePasse` opens it. Where none is, the newest good one among those that were to
/// go stays as well. 3586 when the folder cannot be read, 3532 when a file cannot be removed.
Refus Purge(Systeme& systeme, const std::string& dossier, const Conservation& regle,
            const std::string& motDePasse, std::vector<std::string>& retirees);

}  // namespace fenlor
