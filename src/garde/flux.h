// The bytes of an archive on their way to and from its file: plain, or locked with a password.
//
// A locked file (libsodium: Argon2id makes the key, XChaCha20-Poly1305 in its stream form locks the bytes):
//
//   offset  size  meaning
//        0     8  "FNZ\r\n", 1A, 1 (form), 0
//        8     8  operations of Argon2id
//       16     8  its memory in bytes
//       24    16  salt, drawn at random
//       40    24  header of the stream
//       64     n  blocks of 64 KiB, each 17 bytes longer than what it holds; the last one is marked as last
//
// The first 64 bytes are authenticated with the first block: nothing in the file can be changed, left out,
// put in another order or cut off without being seen. A plain file holds the bytes as they are.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "garde/manifeste.h"
#include "store/systeme.h"

namespace fenlor {

/// Where an archive's bytes go. Each operation returns an errno value, 0 when it went well.
class Puits {
 public:
  virtual ~Puits() = default;
  virtual int Ecrit(const void* octets, std::size_t taille) = 0;
  /// What is still held back; nothing may be written behind it.
  virtual int Termine() = 0;
};

/// Where they come from.
class Source {
 public:
  virtual ~Source() = default;
  /// Up to `taille` bytes; `lus` 0 is the end.
  virtual int Lit(void* tampon, std::size_t taille, std::size_t& lus) = 0;
};

/// Errors of a source that are no errno values.
enum ErreurFlux : int {
  FluxEtranger = 2001,        ///< neither an archive nor a locked one
  FluxRecent = 2002,          ///< a later form of locked file
  FluxMotDePasse = 2003,      ///< the first block does not open: wrong password, or damaged
  FluxEndommage = 2004,       ///< a later block does not open, or the end is missing
  FluxSansMotDePasse = 2005,  ///< locked, and no password was given
  FluxDemesure = 2006,        ///< asks for more memory or work than any archive of ours
};

/// Running SHA-256.
class CalculSha256 {
 public:
  static constexpr std::size_t TailleEtat = 128;

  CalculSha256();
  void Ajoute(const void* octets, std::size_t taille);
  Sha256 Fin();

 private:
  alignas(16) std::array<u8, TailleEtat> m_etat;
};

/// What it costs to try a password (Argon2id).
struct CoutCle {
  u64 operations;
  u64 memoire;  ///< bytes
};
/// A good half second and 256 MiB of an ordinary machine. The file says it, so that it can rise.
CoutCle CoutOrdinaire();

/// Writes into `fichier` from its beginning; it outlives the sink. An empty password leaves the bytes plain.
/// Null when the machine has not the memory that the key takes.
std::unique_ptr<Puits> PuitsFichier(Fichier& fichier, const std::string& motDePasse,
                                    const CoutCle& cout = CoutOrdinaire());

/// Reads `fichier` from its beginning; it outlives the source. `source` stays null on an ErreurFlux or an
/// errno value, which is returned. A password given for a plain file is not looked at.
int SourceFichier(Fichier& fichier, const std::string& motDePasse, std::unique_ptr<Source>& source);

/// True when the file begins as a locked one.
bool EstProtege(Fichier& fichier);

}  // namespace fenlor
