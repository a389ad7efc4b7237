// Keyed files as the rules see them: one object is one view of one file, with its
// own record. Objects are short-lived: made, opened, used, destroyed.
//
// A walk sets the leading fields of a key in a cleared record, calls `Browse` and
// then `Next` while the fields of the record still match. Several objects may have
// the same file open; they share its key cursors, which belong to the store.
//
// A failure is told at once to the session's dialogue as message 3049 and returned
// as false or 0. What does not exist is not a failure.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/fenlorapp.h"
#include "core/texte.h"
#include "store/definitions.h"

namespace fenlor {

/// What a key rebuild met, so that nothing is lost unseen. Once the rebuild is done,
/// `n` is the sum of `gardes`, `ecartes`, `remplaces`, `inconnus`, `supprimes` and
/// `vierges`.
struct RapportReindex {
  u32 n = 0;          ///< slots of the old file
  u32 gardes = 0;     ///< records in the rebuilt file
  u32 ecartes = 0;    ///< dropped by the filter
  u32 remplaces = 0;  ///< gave way to a later record of the same first key
  u32 inconnus = 0;   ///< slots whose sum is wrong, or whose first byte no record and no deleted slot has
  u32 repares = 0;    ///< records in which one bit had turned, and was turned back
  u32 supprimes = 0;  ///< slots that held a deleted record
  u32 vierges = 0;    ///< slots never written
  u64 octetsRestants = 0;  ///< bytes behind the last whole slot
  u32 clesManquantes = 0;  ///< keys behind the first that two records claimed: told, the later one has it
  bool endommage = false;  ///< the old file could not be opened: its raw bytes were read to their end
  std::string copie;       ///< where the old file stands when it held bytes that were not understood
  bool arrete = false;     ///< stopped by the user: both files are as they were
  bool fait = false;       ///< the rebuilt file is in place
  int code = 0;            ///< the store's reason when it is not
};

class CBTFiles {
 public:
  /// Decides on a record of the raw file; false drops it. It may change the record.
  using Filtre = std::function<bool(void* rec)>;

  /// An empty path is that of the open exercice, of the practice for its own files.
  /// Makes the files when the data file does not exist; opens nothing. The file has keys.
  CBTFiles(CFenlorApp& app, std::string path, NumeroFichier fichier);
  virtual ~CBTFiles();
  CBTFiles(const CBTFiles&) = delete;
  CBTFiles& operator=(const CBTFiles&) = delete;

  const std::string Path;  ///< directory
  const std::string Nom;   ///< store name, file name without extension
  const u16 NumFichier;
  const u16 NumCle;  ///< first key number
  const u32 TailleRec;
  const u32 DerniereCle;          ///< index of the last key
  u32 TailleCle[8] = {};          ///< 0 after the last
  bool CleDouble[8] = {};         ///< several records may hold the same key
  u32 NbOuvertures = 0;           ///< how often this object has the file open
  fenlor::Position Position = 0;  ///< of the record last found or added, 0 when none

  // Primitives: keys by index from 0, positions of 0 for none.
  virtual fenlor::Position FirstKey(u32 indice);
  /// First key at or above the one composed from the record.
  virtual fenlor::Position BrowseKey(u32 indice);
  virtual fenlor::Position NextKey(u32 indice);
  /// Key text composed from the record; empty for an index beyond the last.
  virtual std::string MakeKey(u32 indice) const;
  virtual bool ReadRec(fenlor::Position position);
  virtual bool WriteRec(fenlor::Position position);
  virtual void ClearRec();
  virtual void* GetRec() const { return m_rec; }
  /// Makes a caller's buffer of `TailleRec` bytes the record; null: the object's own.
  virtual void SetRec(void* rec);

  /// Tells message `message` (textes.h) about this file; code 0: the store's last error. The system's reason
  /// stands behind a code of the system.
  void Erreur(int code, const TexteFixe& message, std::initializer_list<std::string> arguments = {});
  /// The same of a record that the store cannot read, with the reason that the store gives.
  void ErreurLecture();

  /// Make empty files, replacing what stands there. The file is closed before and after.
  bool CreateDat();
  bool CreateIdx();
  /// Open the files of the path by themselves, beside the counting of `OpenFile`.
  bool OpenDat();
  bool OpenIdx();
  /// Gives back one opening of `OpenDat` and `OpenIdx` that was counted.
  void Close();

  /// Opens the file, physically when no object has it open yet. False, told as
  /// 3011, when it cannot be opened or is open in another directory.
  bool OpenFile();
  void CloseFile();

  /// Remove and add the keys composed from the record. Each failure is told, the
  /// other keys are gone on with; false when any failed.
  bool DelKeys(fenlor::Position position);
  bool AddKeys(fenlor::Position position);

  // Find a record by key and read it; true when found, else the record stays as it was.
  /// The exact key; where doubles are allowed the first one that begins with it.
  bool Find(u32 indice);
  bool First(u32 indice);
  bool Browse(u32 indice);
  bool Next(u32 indice);

  /// Writes the record as a new one and its keys, all or nothing. A record that
  /// holds the same first key is replaced without a word.
  bool Add();
  /// Removes a record and its keys; position 0 is a success. The record in memory
  /// plays no part.
  bool Delete(fenlor::Position position);
  /// Rewrites the record at `Position`. Precondition: no key field has changed;
  /// otherwise `Delete`, then `Add`.
  bool Update();
  fenlor::Position GetPos() const { return Position; }

  /// Rebuilds the file from its raw bytes, not from its keys, so that damage of
  /// keys, header or length is repaired; deleted slots and what the filter drops do
  /// not come back. The new data file grows as ".neuf" beside the old one and takes
  /// its place in one step when it is whole: a stop by the user, a failure or a
  /// crash before that leaves both files as they were. The keys are then made anew.
  /// An old file with bytes that were not understood is first copied to ".avarie".
  /// No unit of work may be open. Progress and stop go through `CFenlorApp::Boite`.
  RapportReindex Reindex(const Filtre& filtre = {});

 protected:
  CFenlorApp& m_app;

 private:
  /// Puts another buffer in the record's place while it lives.
  class AutreRec {
   public:
    AutreRec(CBTFiles& fichier, void* rec) : m_fichier(fichier), m_garde(fichier.GetRec()) {
      fichier.SetRec(rec);
    }
    ~AutreRec() { m_fichier.SetRec(m_garde); }
    AutreRec(const AutreRec&) = delete;
    AutreRec& operator=(const AutreRec&) = delete;

   private:
    CBTFiles& m_fichier;
    void* m_garde;
  };

  std::string Chemin(const char* extension) const;
  /// Reads the record that a look-up of a key found; tells why when the look-up failed.
  bool Retient(fenlor::Position position);
  bool EstOuvertPhysique();
  /// Copies the surviving slots of the old file into the new, open one.
  /// Told with the store's reason; false.
  bool RefuseOuverture();
  bool Recopie(int ancien, bool avecSommes, const Filtre& filtre, RapportReindex& rapport);
  bool Reconstruit(const Filtre& filtre, RapportReindex& rapport);
  bool Substitue(const std::string& nouveau, RapportReindex& rapport);

  const DefinitionFichier& m_definition;
  std::vector<u8> m_memoire;
  void* m_rec;
};

/// A keyed file whose record is typed: `Rec` is the buffer of `GetRec`.
template <class Record, NumeroFichier numero>
class CFichier : public CBTFiles {
 public:
  CFichier(CFenlorApp& app, std::string path)
      : CBTFiles(app, std::move(path), numero), Rec(static_cast<Record*>(GetRec())) {}

  Record* Rec;

  void SetRec(void* rec) override {
    CBTFiles::SetRec(rec);
    Rec = static_cast<Record*>(GetRec());
  }
  /// As `CBTFiles::Reindex`, the filter on the typed record.
  RapportReindex Reindex(const std::function<bool(Record&)>& filtre = {}) {
    if (!filtre) return CBTFiles::Reindex();
    return CBTFiles::Reindex([&filtre](void* rec) { return filtre(*static_cast<Record*>(rec)); });
  }
};

using CPlan = CFichier<Plan, FichierComptes>;
using CLines = CFichier<Line, FichierJournal>;
using CRubriques = CFichier<Rubrique, FichierRubriques>;
using CBanques = CFichier<Banque, FichierBanques>;
using CReleves = CFichier<OperationImportee, FichierReleves>;
using CImmobilisations = CFichier<Immobilisation, FichierImmo>;
using CAmortissements = CFichier<Amortissement, FichierAmo>;

}  // namespace fenlor
