// "TEXTES.dat" of an exercice, its labels: a line "@Texte", then one label a line, and at the end "@Somme="
// with the checksum of all bytes before. Lines that begin with "@" are no labels.
#pragma once

#include <string>
#include <string_view>

#include "store/systeme.h"

namespace fenlor {

constexpr u64 TailleTextesMax = 1u << 22;

/// The whole file, "@Texte" alone when there is none. 0 or errno.
int LitTextes(Systeme& systeme, const std::string& chemin, std::string& textes);
/// Writes a new file (not its name) durably. 0 or errno.
int EcritTextes(Systeme& systeme, const std::string& chemin, const std::string& textes);
/// The lines with their checksum behind them.
std::string ScelleTextes(const std::string& lignes);
/// True when the checksum that the file holds is not its own: somebody else wrote it. A file without one is
/// not doubted.
bool TextesModifies(const std::string& textes);

}  // namespace fenlor
