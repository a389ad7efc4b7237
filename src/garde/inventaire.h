// What stands in a folder of backups, as a person wants to see it: the good ones, the locked ones, and those
// that are none, with the reason.
#pragma once

#include <string>
#include <vector>

#include "garde/archive.h"

namespace fenlor {

struct ArchiveLue {
  std::string nom;  ///< of the file
  u64 taille = 0;
  bool protegee = false;
  Manifeste manifeste;  ///< empty while a password locks it
  Refus refus;          ///< why it cannot be restored: damaged, foreign, unreadable
  bool lue = false;     ///< to its last byte, and good
  std::string moment;   ///< "200303151405", from the manifest or the file's name; may be empty

  std::string Exercices() const;  ///< "2002, 2003"
  u32 Ecritures() const;
};

/// All files of the folder that end as a backup does, newest first. Only what they say of themselves is read.
/// 3586 the folder cannot be read.
Refus ListeArchives(Systeme& systeme, const std::string& dossier, std::vector<ArchiveLue>& archives);

/// Reads one of them to its last byte: `lue`, or `refus` says why it is not; stopped by `avance` it stays as
/// it was. The password only counts for a locked one. Needs no session: may run in a thread of its own.
void LitEntiere(Systeme& systeme, const std::string& dossier, const std::string& motDePasse,
                ArchiveLue& archive, const AvanceArchive& avance = {});

/// "3,4 Mo".
std::string TailleLisible(u64 octets);

}  // namespace fenlor
