// The files that all exercices of a practice share: assets and links. An exercice that is brought back takes
// its own books along; these it cannot, for the other exercices stand on them, too.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

struct FichierCommun {
  u16 numero = 0;
  bool illisible = false;                ///< that of the practice cannot be opened
  std::vector<std::string> ici, sauves;  ///< records of the practice and of the archive, sorted
  /// Nothing of the practice's would be lost.
  bool Libre() const { return illisible || ici.empty(); }
};

/// The shared files of which the archive, unpacked and open as `sauve`, holds other records than the
/// practice. 3214 the store.
Refus CompareCommuns(CFenlorApp& app, QVAPI& sauve, std::vector<FichierCommun>& differents);
/// "immobilisations, amortissements", Windows-1252.
std::string NomsCommuns(const std::vector<FichierCommun>& communs);

/// Gives these files the records of the archive, in one unit of work. What they held stays beside them as
/// "Immo" with `suffixe` and ".dat" behind it, and what cannot be read as well. 3530 such a copy cannot be
/// made, 3214 the store.
Refus RameneCommuns(CFenlorApp& app, const std::vector<FichierCommun>& communs, const std::string& suffixe);

}  // namespace fenlor
