// What an archive says of itself, in its first entry: the practice, the exercices and, for each file, its
// name, length and SHA-256. It comes from outside when an archive is read: nothing of it is believed
// before `LitManifeste` took it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

using Sha256 = std::array<u8, 32>;

/// "9f86d0..." in 64 small digits.
std::string EnHexa(const Sha256& somme);

struct PieceArchive {
  std::string nom;  ///< "2003/JOURNAL.dat", "fenlor.ini"
  u64 taille = 0;   ///< bytes
  Sha256 somme{};
  bool operator==(const PieceArchive&) const = default;
};

/// What the list of archives tells of an exercice.
struct ExerciceArchive {
  std::string nom;
  std::string debut, fin, cloture;  ///< dates as the settings hold them
  u32 ecritures = 0;                ///< highest entry number that lines use: entries ever written and kept
  bool operator==(const ExerciceArchive&) const = default;
};

struct Manifeste {
  std::string cabinet;   ///< name of the practice's folder, Windows-1252
  std::string date;      ///< "22/11/2026"
  std::string heure;     ///< "10:53:57"
  bool complet = false;  ///< the whole practice, not one exercice
  std::vector<ExerciceArchive> exercices;
  std::vector<PieceArchive> pieces;  ///< in the order in which they follow
  bool operator==(const Manifeste&) const = default;
  u64 Octets() const;
};

/// Bounds of what is read: an archive beyond them is none of ours.
constexpr std::size_t TailleManifesteMax = std::size_t{4} << 20;
constexpr std::size_t NbPiecesMax = 10'000;
constexpr u64 TaillePieceMax = u64{1} << 40;

/// JSON in UTF-8.
std::string EcritManifeste(const Manifeste& manifeste);

/// Takes a manifest apart. The reason (Windows-1252) why it is refused, empty when it is good: no JSON, a
/// field that is missing or of another kind, a name that is not that of a file of a practice (see
/// `NomDePiece`), a name twice, a length or a number of files beyond the bounds, an exercice without a name
/// of its form or one that a file belongs to and that is not listed.
std::string LitManifeste(std::string_view json, Manifeste& manifeste);

/// True for the names that an archive may hold: "fenlor.ini" or a data file in the practice, and a data file
/// in the folder of an exercice (`exercice` becomes its name). Whatever else stands in an archive could be
/// meant for another place.
bool NomDePiece(std::string_view nom, std::string& exercice);

}  // namespace fenlor
