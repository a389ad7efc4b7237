// The redo log of a practice, "fenlor.rep": after-images of committed units that
// may not yet stand in the data files. Every commit is one sync of this file, and
// one write unless it is large; its space is filled with zeroes ahead of time.
//
//   offset  size      meaning
//        0  32 KiB    header, copy of even epochs
//   32 KiB  32 KiB    header, copy of odd epochs
//   64 KiB  ...       units, each on a multiple of 4 KiB
//
// Header: "QVREP\r\n" and 1A; u32 version, 1; u32 CRC-32 of what follows; u64 id
// of the log; u64 epoch; u64 number of the next unit; u32 seals; u32 0; then the
// seals of 64 bytes. A unit counts only when its epoch is the header's: writing
// the header of the next epoch empties the log.
//
// Unit: u32 magic "QVUN"; u32 CRC-32 of what follows; u64 epoch; u64 number;
// u32 bytes that follow; u32 data files n; then n files: u64 id, u64 generation
// of its header, u16 file number, u16 record size, u32 slots, u32 first free
// slot, u32 free slots after the unit, u16 length of the path below the practice,
// the path; then images until the end: u16 index of the file, u16 offset, u16
// length of the bytes, u16 length to fill up with zeroes behind them, u32
// position, the bytes.
//
// A seal says that a key file was brought home after the last change of its data
// file: it names the length and time of both and the sum of all its bytes. Keys
// without a true seal are not looked at but made again.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "store/systeme.h"

namespace fenlor {

struct Sceau {
  u64 tailleDat = 0;
  i64 secondesDat = 0, nanoDat = 0;
  u64 tailleIdx = 0;
  i64 secondesIdx = 0, nanoIdx = 0;
  u32 crcIdx = 0;  ///< of the whole key file
  bool operator==(const Sceau&) const = default;
  /// True when lengths and times agree: only a damage can then make the sums differ.
  bool MemesFichiers(const Sceau& autre) const {
    return std::tie(tailleDat, secondesDat, nanoDat, tailleIdx, secondesIdx, nanoIdx) ==
           std::tie(autre.tailleDat, autre.secondesDat, autre.nanoDat, autre.tailleIdx, autre.secondesIdx,
                    autre.nanoIdx);
  }
};

struct FichierUnite {
  u64 id = 0, generation = 0;
  u16 numero = 0, taille = 0;
  u32 emplacements = 0, tete = 0, libres = 0;
  std::string chemin;  ///< below the practice
};

struct ImageUnite {
  u16 fichier = 0;
  u16 decalage = 0;
  u16 zeros = 0;
  u32 position = 0;
  std::string_view octets;
};

class JournalReprise {
 public:
  /// Opens "fenlor.rep" of a directory, or creates it. `ErrJournalReprise` when
  /// its header cannot be read or units stand where none may stand. `lecture`: nothing is written, now or
  /// later; a log that is not there is then an empty one.
  int Ouvre(Systeme& systeme, const std::string& dossier, std::size_t capacite, bool lecture = false);

  u64 Id() const { return m_id; }
  /// Number of the next unit; it outlives the emptying of the log.
  u64 Suivante() const { return m_suivante; }
  std::map<u64, Sceau> sceaux;  ///< by id of the data file

  /// Bytes that an image takes in a unit.
  static constexpr std::size_t TailleImage(std::size_t octets) { return 12 + octets; }
  /// Starts a unit whose images take so many bytes together (`TailleImage`); when it fits (`Tient`) they are
  /// added, then it is written. Of a large unit the first pieces are handed to the system meanwhile, all but
  /// its first block: without that one they count for nothing.
  void Commence(const std::vector<FichierUnite>& fichiers, std::size_t octets);
  /// True when the unit that was started fits behind those that stand there, or the log is empty.
  bool Tient() const;
  void AjouteImage(const ImageUnite& image);
  bool EstVide() const { return m_fin == 0; }
  /// A header could not be synced: `Vide` must succeed before the next unit.
  bool DoitVider() const { return m_aVider; }
  /// True when what the disk holds of the log is what a reader sees.
  bool EstSur() const { return !m_aVider && !m_doute; }
  /// 0 while the file still has its name and its length, else ErrAltere or errno.
  int EstEntier() { return m_fichier->Tient(m_taille); }
  /// Writes and syncs the unit. On failure it does not count, now or later.
  int Ecrit();
  /// Writes the header of the next epoch with the seals, and syncs.
  int Vide();
  /// Units that stand in the log: `suite` gets each in order, and returns 0 or
  /// the error that stops the reading.
  template <class Suite>
  int Relit(Suite&& suite, u64 fin = ~u64{0}) {
    for (std::string unite; m_fin < fin && LitUnite(unite);) {
      std::vector<FichierUnite> fichiers;
      std::vector<ImageUnite> images;
      if (!Decompose(unite, fichiers, images)) return MauvaiseUnite();
      if (const int rc = suite(fichiers, images)) return rc;
    }
    return m_erreurLecture;
  }
  /// The units written since the log was emptied, once more.
  template <class Suite>
  int Redit(Suite&& suite) {
    const u64 fin = m_fin, suivante = m_suivante;
    Rembobine();
    int rc = Relit(suite, fin);
    if (!rc && m_fin != fin) rc = MauvaiseUnite();
    m_fin = fin;
    m_suivante = suivante;
    return rc;
  }
  /// Reads all units without handing them on: 0 when `Relit` will get through.
  int Verifie();
  /// True when `Verifie` found units that the data files may lack.
  bool EnSuspens() const { return m_finDerniere > 0; }
  /// Makes sure that the disk has what `Verifie` read: the last unit and none behind it, and the header of
  /// this epoch as the only one that a cut can leave. Units that stand in the log are replayed only behind
  /// it. 0 or errno.
  int Affirme();
  /// The same for a log without units. 0 or errno.
  int AffirmeVide();
  u64 NbSynchros() const { return m_synchros; }

 private:
  int Cree(Systeme& systeme, const std::string& chemin);
  int EcritEntete(u64 copie);
  int Prepare();
  int Verse();
  int VerseFin();
  /// Voids what stands at a place of the units, unsynced.
  int Barre(u64 place);
  void Rembobine() {
    m_suivante = m_premiere;
    m_fin = m_lecture = 0;
  }
  bool DecodeEntete(const std::vector<u8>& octets, u64& epoque, u64& suivante, u64& id,
                    std::map<u64, Sceau>& sceaux) const;
  bool LitUnite(std::string& unite);
  int VerifieFin();
  static bool Decompose(const std::string& unite, std::vector<FichierUnite>& fichiers,
                        std::vector<ImageUnite>& images);
  static int MauvaiseUnite();

  std::unique_ptr<Fichier> m_fichier;
  std::size_t m_capacite = 0;
  u64 m_taille = 0;
  u64 m_id = 0;
  u64 m_epoque = 0;
  u64 m_suivante = 1;  ///< number of the next unit
  u64 m_premiere = 1;  ///< number of the first unit of this epoch
  u64 m_fin = 0;       ///< end of the units, behind the headers
  u64 m_lecture = 0;
  u64 m_derniere = 0, m_finDerniere = 0;  ///< where the last unit stands that `Verifie` read
  int m_erreurLecture = 0;
  bool m_doute = false;   ///< a failed unit may still stand on the disk
  bool m_aVider = false;  ///< a header was not synced: no unit may follow before it is
  u64 m_synchros = 0;
  std::vector<u8> m_unite;        ///< the unit, or what of it the system does not have yet
  std::vector<u8> m_premierBloc;  ///< of a unit that is written in pieces
  u64 m_promis = 0;               ///< bytes of the whole unit
  u64 m_verses = 0;               ///< of these, in pieces so far
  u32 m_somme = 0;                ///< of the pieces
  bool m_prepare = false;         ///< the place of the unit may be written over
  int m_erreurPiece = 0;
};

}  // namespace fenlor
