// The ready-made labels of an exercice: the text file "TEXTES.dat" in its folder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

constexpr std::size_t LongueurLibelle = 80;

/// As a label stands in the file: blanks as `CompacteTexte` leaves them, cut to 80.
std::string NormeLibelle(std::string_view texte);
/// False for a text that would not come back from the file: a blank one, or one that begins with "@" or
/// "[" as the lines that are no labels do.
bool LibelleRelisible(std::string_view texte);

/// Labels in file order: lines normalised and cut to 80, blank ones and those that begin with "@" or "["
/// left out. A file that does not exist is made with its first line. Refused (3117) when it
/// can neither be read nor made; `libelles` is then empty, and nothing must be written in its place.
Refus LitLibelles(CFenlorApp& app, std::vector<std::string>& libelles);
/// "@Texte", then each label that is not blank, normalised, lines ended by CR LF, and the checksum. The file
/// is replaced as a whole and is durable then; a failure (3351) leaves the old one.
Refus EcritLibelles(CFenlorApp& app, const std::vector<std::string>& libelles);

}  // namespace fenlor
