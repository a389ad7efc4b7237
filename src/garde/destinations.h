// Folders that are proposed for backups.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// A mounted drive, as the desktop knows it; paths in the platform's bytes.
struct Volume {
  std::string racine;        ///< where it is mounted
  std::string peripherique;  ///< "/dev/sdb1"
  bool lectureSeule = false;
  bool amovible = false;  ///< the system says so
};

struct Destinations {
  std::vector<std::string> dossiers;  ///< the first is the one to begin with
  std::string propre;                 ///< of them, the one that is made when it is wanted; may be empty
};

/// The folder that was chosen last, the drives that can be taken away, "Sauvegardes Fenlor" in `documents`
/// (may be empty). Drives that the books stand on, or that cannot be written, are none, and nothing in the
/// folder `cabinet` of the practice is: what destroys the books would destroy their copy.
Destinations ProposeDestinations(const std::string& retenu, const std::vector<Volume>& volumes,
                                 const std::string& documents, const std::string& cabinet);

/// Where a restoration looks first: the folder chosen last, else the first of the others that is there; may
/// be empty.
std::string DossierDeDepart(CFenlorApp& app, const Destinations& destinations, const std::string& retenu);

/// Makes `dossier` when it is the program's own and not there yet, the folder it stands in as well. 3520.
Refus PrepareDestination(CFenlorApp& app, const Destinations& destinations, const std::string& dossier);

}  // namespace fenlor
