// One data file: a header in two alternating copies, then fixed slots.
//
//   offset  size  meaning
//        0    56  header, copy of even generations
//      512    56  header, copy of odd generations
//     1024     n  slot 1, slot 2, ... each a record and its sum (somme.h)
//
// Header (little-endian):
//        0     8  "QVDAT\r\n" and 1A
//        8     4  version, 2; slots of version 1 have no sums
//       12     2  file number
//       14     2  record size
//       16     8  id of the file, drawn at its creation
//       24     8  id of the redo log that guards it
//       32     8  generation, rises with each copy written
//       40     4  slots
//       44     4  first slot of the free list, 0 for none
//       48     4  free slots
//       52     4  CRC-32 of bytes 0 to 51
//
// A live slot begins with its marker: 1 in its first byte, or a number that is
// neither 0 nor FFFFFFFF. A deleted slot begins with 255 (all four bytes where
// records begin with a number) and holds the next free slot at offset 4. A slot
// of zeroes was never written.
#pragma once

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "store/somme.h"
#include "store/systeme.h"

namespace fenlor {

constexpr u32 DebutEmplacements = 1024;
/// Version of a data file whose slots end with a sum.
constexpr u32 VersionSommes = 2;

struct EnteteDat {
  u32 version = VersionSommes;
  u16 numero = 0;
  u16 taille = 0;
  u64 id = 0;
  u64 idReprise = 0;
  u64 generation = 0;
  u32 emplacements = 0;
  u32 tete = 0;
  u32 libres = 0;
  /// Bytes from one slot to the next.
  u32 Pas() const { return taille + (version < VersionSommes ? 0 : TailleSomme); }
};

/// What a slot's first bytes say.
enum class EtatEmplacement { Vivant, Libre, Jamais, Inconnu };

class FichierDat {
 public:
  ~FichierDat();

  /// Writes an empty file of no slots and syncs it. 0, errno or ErreurMagasin.
  static int Cree(Systeme& systeme, const std::string& chemin, const EnteteDat& entete);
  /// Opens and checks. `idReprise` is the practice's log: a file guarded by it
  /// may have a tail that was never committed, which is cut off; any other
  /// file must have exactly the length that its header tells. For the
  /// recovery the length is left as found: it knows better than the header.
  /// For reading alone nothing is cut off, and what would be is not looked at; `Examen` reads a file as it is
  /// found, as the recovery does.
  enum class Pour { Ecriture, Lecture, Reprise, Examen };
  int Ouvre(Systeme& systeme, const std::string& chemin, u64 idReprise, Pour pour = Pour::Ecriture);
  /// Keeps every other session from the file as long as it is open, writers alone where `partage`. ErrTenu
  /// when one has it.
  int Tient(bool partage) const;

  /// Header as last committed, with the generation that is durable.
  EnteteDat entete;

  EtatEmplacement EtatDe(const u8* emplacement) const;
  static EtatEmplacement EtatDe(u8 marque, const u8* emplacement);

  /// Slot in the mapping, or in the tail not yet written. Precondition: the
  /// position was written or reserved.
  const u8* Place(Position position) const;
  /// The beginning of a slot will be read soon.
  void Annonce(Position position) const {
    const u8* slot = Place(position);
    for (u32 place = 0; place < std::min<u32>(entete.taille, 320); place += 64)
      __builtin_prefetch(slot + place);
  }
  /// Makes sure that slots up to `position` have disk space and can be mapped.
  int Reserve(Position position);
  int EcritPlace(Position position, u32 decalage, const void* octets, u32 taille);
  /// Whole slots in a row, by one call.
  int EcritSuite(Position premiere, const void* octets, std::size_t taille);
  /// Copies a record to where a slot is made, and puts its sum behind it.
  void PoseScelle(u8* emplacement, const void* rec, Position position) const;
  /// True when the sum of a slot of the file is right. A file without sums has none wrong.
  bool EstJuste(Position position) const;
  /// ErrEndommage when the sum of one of these slots is wrong.
  int Verifie(const std::set<Position>& positions);
  /// 0 when the sums of all committed slots are right, else ErrEndommage or errno.
  int VerifieTout() const;
  /// Writes a file of version 1 anew with sums and puts it in its place, which is durable then. The object
  /// keeps the old one.
  int Convertit(Systeme& systeme);

  // The uncommitted tail of a large unit.
  int AjouteQueue(Position position, const void* rec);
  int ModifieQueue(Position position, const void* rec);
  int VerseQueue();
  /// Forgets the tail behind `emplacements`.
  void CoupeQueue(u32 emplacements);
  /// Nothing of the tail is in memory or in flight: it may be committed.
  bool QueueDurable() const { return m_queueDurable && m_queue.empty(); }

  /// After a failure the kernel counts what it did not write as written: the file is in doubt until
  /// its changes were written once more and a sync succeeded. A tail lost that way stays lost.
  int Synchronise();
  bool EnDoute() const { return m_doute; }
  /// Writes the copy of the header that follows the last durable one (not synced).
  int EcritEntete();
  /// Cuts the file to its slots (not synced).
  int Ajuste();
  int Mesure(Empreinte& empreinte);
  /// 0 while the file still has its name and its length, else ErrAltere or errno.
  int Tient();

  const std::string& Chemin() const { return m_chemin; }
  u8 Marque() const { return m_marque; }
  u64 Offset(Position position) const { return DebutEmplacements + u64(position - 1) * entete.Pas(); }
  void PoseMarque(u8 marque) { m_marque = marque; }

  static void Code(const EnteteDat& entete, u8* octets);
  static bool Decode(const u8* octets, EnteteDat& entete);

 private:
  int Projette(u64 taille);
  u64 TailleExacte() const { return DebutEmplacements + u64{entete.emplacements} * entete.Pas(); }
  u64 PlaceQueue(Position position) const { return u64(position - m_debutQueue) * entete.Pas(); }

  std::string m_chemin;
  std::unique_ptr<Fichier> m_fichier;
  u8 m_marque = 1;
  const u8* m_projection = nullptr;
  std::size_t m_tailleProjection = 0;
  u64 m_reserve = 0;  ///< bytes of the file that have disk space
  std::vector<u8> m_queue;
  Position m_debutQueue = 0;   ///< slot of the queue's first byte, 0 when empty
  bool m_queueDurable = true;  ///< what was written behind the committed end is synced
  bool m_queuePerdue = false;  ///< a failed sync forgot it
  bool m_doute = false;
  bool m_enteteEcrit = false;  ///< a header is on its way
};

/// A random number other than 0.
u64 TireId();

}  // namespace fenlor
