// One durable replacement of a whole file.
#pragma once

#include <string>
#include <string_view>

#include "store/systeme.h"

namespace fenlor {

/// The usual name of the file beside it that a replacement goes through; a crash may leave it.
inline std::string NomProvisoire(const std::string& chemin) { return chemin + ".tmp"; }

/// Puts `contenu` in the place of the file at `chemin`, through a file `provisoire` beside it that is gone
/// afterwards. What bears the name is the whole old file or the whole new one, whatever happens; the new
/// name is durable with `SynchroniseDossier`. errno's value, 0 when done; `empreinte` is the new file's.
int RemplaceFichier(Systeme& systeme, const std::string& chemin, const std::string& provisoire,
                    std::string_view contenu, Empreinte& empreinte);

}  // namespace fenlor
