// The books of one moment: compressed copies of their files, made between two units of work while the
// practice stays open.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/fenlorapp.h"
#include "garde/archive.h"

namespace fenlor {

/// Copies the bytes of a data file of the store that count into a new file, synced. errno or the store's
/// error; nothing stands there then.
int CopieDonnees(Systeme& systeme, const std::string& de, const std::string& vers);

/// Called with the part that is done, 0 to 1; false stops the work.
using AvancePhotographie = std::function<bool(f64 part)>;

class Photographie {
 public:
  /// Brings the store's files to their place and copies those of the exercices, the practice's own and the
  /// settings, compressed, into files without a name in the practice's folder: they are gone with the object,
  /// or with the process. To be called outside any unit of work. 3208 an unknown exercice, 3214 the store,
  /// 3528 stopped, 3529 a file that cannot be read, 3587 no place for its copy.
  Refus Prend(CFenlorApp& app, const std::vector<std::string>& exercices, bool complet,
              const AvancePhotographie& avance = {});

  /// From here on the session is free: the copies may be read from another thread.
  std::vector<PieceSource> Pieces() const;
  /// Practice, moment and exercices; lengths and sums are left to `EcritArchive`.
  const Manifeste& Tete() const { return m_tete; }
  /// Of the books, before they were compressed.
  u64 Octets() const;

 private:
  struct Voulu {
    std::string nom;
    bool facultatif;
  };
  /// Suite sees the bytes of this file that are done.
  Refus Copie(CFenlorApp& app, const Voulu& voulu, const std::function<bool(u64)>& suite);

  struct Piece {
    std::string nom;
    std::unique_ptr<Fichier> copie;
    std::vector<Trame> trames;
    u64 taille = 0;
    Sha256 somme{};
    u32 ecritures = 0;  ///< of a journal
  };
  std::vector<Piece> m_pieces;
  Manifeste m_tete;
};

}  // namespace fenlor
