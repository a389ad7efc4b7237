// One archive: a tar compressed with zstd, which any tool of the system opens when no password locks it.
//
//   first entry   manifeste.json: what follows, with lengths and sums (manifeste.h)
//   then          each file of the manifest, in its order
//   last          a zstd frame that readers skip: 5A 2A 4D 18, length 40, "FENLOR\0\1", SHA-256 of all bytes
//   before
//
// The tar is a chain of zstd frames (trame.h), which every reader takes for one.
// The sum at the end makes every bit count, those between the files as well. An archive may come from a
// stranger: it is gone through from end to end, against its manifest and its sums, before a byte of it is
// handed out.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/refus.h"
#include "garde/manifeste.h"
#include "garde/trame.h"
#include "store/systeme.h"

namespace fenlor {

/// Called with the bytes done so far; false stops the work.
using AvanceArchive = std::function<bool(u64 octets)>;

/// A file on its way into an archive, compressed already.
struct PieceSource {
  std::string nom;
  u64 taille = 0;              ///< of the file itself
  Sha256 somme{};              ///< of its bytes
  Fichier* fichier = nullptr;  ///< holds the frames; outlives the call
  std::vector<Trame> trames;   ///< in the order of the file's bytes
};

/// Writes the archive of `pieces` into `fichier`, which stands under `chemin` (for messages), and syncs it.
/// Lengths and sums of `manifeste` are filled in. 3520 with the system's reason, 3528 stopped, 3529 a piece
/// that cannot be read. The caller removes what was written when it is
/// refused.
Refus EcritArchive(Fichier& fichier, const std::string& chemin, Manifeste& manifeste,
                   const std::vector<PieceSource>& pieces, const std::string& motDePasse,
                   const AvanceArchive& avance = {});

/// Reads what the archive says of itself, and no more: the list of archives shows it. 3521 to 3527.
Refus LitManifesteArchive(Systeme& systeme, const std::string& chemin, const std::string& motDePasse,
                          Manifeste& manifeste);

/// Gets the bytes of piece number `indice` as they come; an errno value stops the work (3520 with the piece's
/// name).
using RecoitPiece = std::function<int(std::size_t indice, const void* octets, std::size_t taille)>;

/// Reads the archive to its last byte: every piece of the manifest is there, in order, with its length and
/// its sum, and nothing else. 3521 to 3527, 3528 stopped. With `recoit` the pieces are handed out, but only
/// in a second reading, when the first found everything right.
Refus ParcourtArchive(Systeme& systeme, const std::string& chemin, const std::string& motDePasse,
                      Manifeste& manifeste, const AvanceArchive& avance = {}, const RecoitPiece& recoit = {});

}  // namespace fenlor
