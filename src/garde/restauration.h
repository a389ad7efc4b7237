// Bringing books back from an archive. It is gone through from end to end, unpacked beside the books, opened
// and verified there, and only then put in their place; what stood there stays under another name.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/fenlorapp.h"
#include "garde/archive.h"

namespace fenlor {

struct DemandeRestauration {
  std::string chemin;                  ///< of the archive
  std::string motDePasse;              ///< of the archive, when it is locked
  std::vector<std::string> exercices;  ///< which of its exercices; empty: all
};

struct ExerciceRestaure {
  std::string nom;
  std::string ancien;  ///< folder in the practice that holds the books as they were; empty: there were none
  /// What the verification of the restored books found, Windows-1252: the first hundred, then how many more.
  std::vector<std::string> constats;
  std::size_t nbConstats = 0;
};

struct RestaurationFaite {
  Manifeste manifeste;
  std::vector<ExerciceRestaure> exercices;
  bool cabinet = false;  ///< the practice had nothing yet: its settings and its own files came back, too
  /// Names of files that all exercices share, differ from those of the archive, and were left as they were.
  std::string communsGardes;
};

/// The exercice that is open is opened again. Its settings come back with an exercice; those of the practice
/// only where it has no exercice yet. The files that all exercices share come back where the practice has
/// none of them, or one that cannot be read; where it has others, the question 3560 is asked first (yes: they
/// come back in one unit, and what stood there stays aside). 3208 an exercice that the archive does not hold,
/// 3521 to 3527, 3530 what was unpacked cannot be opened as books, 3561 stopped, or the question was answered
/// by neither, 3214 the store. A refusal leaves the books as they were, those of exercices already brought
/// back excepted. 3563 a practice that is open to be read.
Refus Restaure(CFenlorApp& app, const DemandeRestauration& demande, RestaurationFaite& faite);

}  // namespace fenlor
