// The seal of a closed exercice: what its records were on the day of the closure, so that a later change can
// be seen and named. It protects from accidents and from a change that nobody owns up to; whoever may write
// the files may write a new seal, too: compare it with the one on the paper of the closure.
//
// "SCEAU.dat" in the exercice's folder: "FNSCEAU" and 1, then for each file its number (u16), the number of
// its records (u32) and, sorted, the first 16 bytes of the SHA-256 of each. The settings that count are file
// 0, a record for each "key=value". The seal is the SHA-256 of all that; it stands beside the date of the
// closure in the settings.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// Computes the seal of the open exercice. Precondition: no unit of work. 3214 the store.
Refus CalculeSceau(CFenlorApp& app, std::string& contenu, std::string& hexa);
/// Writes "SCEAU.dat", synced. 3534.
Refus EcritSceau(CFenlorApp& app, const std::string& contenu);

enum class EtatSceau {
  Absent,     ///< not closed, or closed before there were seals
  Intact,     ///< every record is what it was
  Rompu,      ///< records differ
  SansListe,  ///< the list of the records is missing or not the one that was sealed: it holds as a whole, or
              ///< not at all
};
struct ExamenSceau {
  EtatSceau etat = EtatSceau::Absent;
  std::string hexa;                   ///< as sealed
  std::vector<std::string> constats;  ///< sentences on what differs, Windows-1252
};
/// Compares the books of the open exercice with their seal. 3214 the store.
Refus ExamineSceau(CFenlorApp& app, ExamenSceau& examen);

}  // namespace fenlor
