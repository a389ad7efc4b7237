// What a backup or a restoration that was killed leaves behind.
#pragma once

#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// Where an archive is unpacked: a practice of its own inside the practice, which no list of exercices shows.
constexpr const char* NomAtelier = "restauration~";
/// Behind the name of an archive until it was read back.
constexpr const char* SuffixeProvisoire = ".part";
/// Backups, or old books, of one practice within one minute. A disk that does not answer says of every name
/// that it is taken.
constexpr unsigned HomonymesMax = 100;

/// Takes the file for this process until the descriptor is closed. ErrOccupe, or errno.
int TientFichier(const Fichier& fichier);

/// Removes a folder with what stands in it, two floors deep as a practice is. A folder that is not there is
/// gone. errno of what stayed.
int OteAtelier(Systeme& systeme, const std::string& dossier);

/// Notes in the practice, while it lives, the folder into which an archive is being written, after it removed
/// there what an older note tells of; the note stays where an unfinished one could not be removed, or where
/// the folder is not the one that it was any more: a drive went away. It is a courtesy to `RangeRestes`:
/// where it cannot be written the backup goes on.
class NoteSauvegarde {
 public:
  NoteSauvegarde(CFenlorApp& app, const std::string& dossier);
  ~NoteSauvegarde();
  NoteSauvegarde(const NoteSauvegarde&) = delete;
  NoteSauvegarde& operator=(const NoteSauvegarde&) = delete;

 private:
  CFenlorApp& m_app;
  const std::string m_dossier;
  const u64 m_noeud;  ///< of the folder: another one behind its name is another drive
  bool m_notee = false;
};

/// To be called once the practice is open: removes the unpacked books of a restoration, and in the folders
/// of the notes the unfinished archives that no process holds. What cannot be removed is one of the store's
/// warnings, for the edge to tell; a folder that is not there, or has nothing in it as one whose drive is
/// away, is tried again at the next opening.
void RangeRestes(CFenlorApp& app);

}  // namespace fenlor
