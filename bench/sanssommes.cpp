// The sums of the slots taken away: linked before the store, it stands in for sommeemplacements.cpp. What the
// rest costs is what everything would cost without them.
#include "store/somme.h"

namespace fenlor {

u32 SommeEmplacement(const u8*, u32, Position) { return 0; }
bool SommeJuste(const u8*, u32, Position) { return true; }
u32 PremierFaux(const u8*, u32 nombre, u32, Position) { return nombre; }
int FauxDuFichier(Fichier&, u64, u32, u32, Position& faux) {
  faux = 0;
  return 0;
}

}  // namespace fenlor
