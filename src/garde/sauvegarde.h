// Backup: the books of one moment in one file, read back whole before anybody is told that it is there.
#pragma once

#include <string>

#include "garde/photographie.h"

namespace fenlor {

constexpr const char* ExtensionSauvegarde = ".fnz";

struct DemandeSauvegarde {
  std::string dossier;     ///< where the file goes; the platform's bytes
  bool complet = false;    ///< the whole practice, else the open exercice
  std::string motDePasse;  ///< empty: not locked
};

struct SauvegardeFaite {
  std::string chemin;
  u64 taille = 0;  ///< bytes of the file
  Manifeste manifeste;
};

/// "Fenlor_cabinet_2003_20261122_1053.fnz"; what is no letter, digit or "-" of the practice's name is left
/// out.
std::string NomSauvegarde(const Manifeste& manifeste);

/// Writes the archive of a photograph under a provisional name, syncs it, reads it back from the medium to
/// its last byte, compares it with what was photographed, and only then gives it its name, which is never
/// that of another file. Needs no session: may run in a thread of its own. `avance` sees the bytes of the
/// books that were read back, 0 while the archive is written. 3520 to 3528; what was written is removed then.
Refus EcritSauvegarde(Systeme& systeme, const Photographie& photographie, const DemandeSauvegarde& demande,
                      SauvegardeFaite& faite, const AvanceArchive& avance = {});

/// All of it: photograph and archive, with the progress of the dialogue, which may stop it (3528). What was
/// made is noted as the last one that was read back; a refusal leaves `faite` empty. 3209 one exercice is
/// asked for and none is open.
Refus Sauvegarde(CFenlorApp& app, const DemandeSauvegarde& demande, SauvegardeFaite& faite);

}  // namespace fenlor
