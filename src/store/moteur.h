// The engine below `QVAPI`: data files with slots, keys, units of work, redo
// log, recovery, the practice's lock. It knows records as bytes and keys as
// texts; it knows nothing of accounting. docs/FORMAT.md describes its files.
#pragma once

#include <bitset>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/annulation.h"
#include "store/definitions.h"
#include "store/magasincles.h"
#include "store/systeme.h"

namespace fenlor {

class Moteur {
 public:
  Moteur(Systeme& systeme, FabriqueCles& cles, std::size_t tailleReprise);
  ~Moteur();
  Moteur(const Moteur&) = delete;
  Moteur& operator=(const Moteur&) = delete;

  // -- practice
  /// Takes the lock alone; the opening of the same practice goes on from there.
  bool ReserveCabinet(const std::string& dossier);
  /// Takes the lock and recovers. False: `Erreur()`.
  /// With `reparation` a log that cannot be read is set aside ("fenlor.rep.avarie")
  /// and units whose data file is lost are skipped, each with a warning.
  /// A practice whose lock may not be written is opened to be read: what changes a file of its own is then
  /// ErrLectureSeule, nothing on its disk is touched, keys that nobody vouches for live in memory, files that
  /// are missing are empty ones. ErrSuspens when its log holds units that the data files may lack.
  bool OuvreCabinet(const std::string& dossier, bool reparation = false);
  /// The practice is open, or reserved, to be read.
  bool EnLecture() const;
  /// Empties the redo log, seals the key files, gives the lock back, also one that was
  /// only reserved.
  bool FermeCabinet();
  bool EstOuvert() const;
  const std::string& Detenteur() const;
  /// Applies and syncs everything, empties the redo log.
  bool Vidange();

  // -- files, by file number or first key number
  bool CreeDat(u16 numFichier, const std::string& chemin, u16 taille);
  /// Creates the key file, with the keys of the records that its data file holds.
  bool CreeIdx(u16 premiereCle, const std::string& chemin, bool doubles);
  /// One more key of a file that the store does not know.
  bool AjouteIdx(u16 premiereCle, unsigned indice, bool doubles);
  bool Ouvre(u16 numero, const std::string& chemin);
  bool Ferme(u16 numero);
  bool EstOuvertFichier(u16 numero) const;
  /// Path under which a file number is open, empty when it is not.
  std::string CheminOuvert(u16 numFichier) const;
  /// Lets go of every file below a directory (or of that very file): it may then
  /// be renamed or removed. False when something could not be brought home.
  bool Relache(const std::string& chemin);

  // -- records
  Position Ajoute(u16 numFichier, const void* rec);
  bool Supprime(u16 numFichier, Position position);
  bool Ecrit(u16 numFichier, Position position, const void* rec);
  bool Lit(u16 numFichier, Position position, void* rec);
  /// The record in place, its marker byte as stored (mask it when byte 0 counts).
  /// Null on failure. Valid until the next operation that writes.
  const u8* Vue(u16 numFichier, Position position);
  /// A record will be read soon.
  void Annonce(u16 numFichier, Position position) const;
  /// What a look over a whole file finds, shared among helpers. The keys are right when they are those of the
  /// records, each once and in order; the sums, when none of a slot is wrong. Which one is not is for the
  /// caller to find.
  struct Revue {
    u32 vivants = 0, libres = 0, illisibles = 0;
    bool cles = true, sommes = true;
  };
  Revue PasseEnRevue(u16 numFichier);
  /// True when the sum of a slot, live or deleted, is right.
  bool EstJuste(u16 numFichier, Position position) const;
  u32 NombreEmplacements(u16 numFichier) const;

  // -- keys
  bool AjouteCle(u16 numCle, std::string_view texte, Position position);
  bool SupprimeCle(u16 numCle, std::string_view texte, Position position);
  Position TrouveCle(u16 numCle, std::string_view texte);
  /// Cursor moves; the cursor belongs to the key number. A walk in one direction makes at most
  /// as many moves as there are records: keys that go back, round or beyond are ErrEndommage, and
  /// made again for whoever looks next.
  Position Borne(u16 numCle, std::string& texte);
  Position Premier(u16 numCle, std::string& texte);
  Position Dernier(u16 numCle, std::string& texte);
  Position Suivant(u16 numCle, std::string& texte);
  Position Precedent(u16 numCle, std::string& texte);
  /// Hands the records of the keys from `debut` (included) to `fin` (left out;
  /// empty: the end) to `suite(position, record in place)`, which returns false to
  /// stop and must not write. No cursor moves. False on a failure.
  using SuiteParcours = std::function<bool(Position, const void*)>;
  bool Parcours(u16 numCle, const std::string& debut, const std::string& fin, const SuiteParcours& suite);
  u32 NombreCles(u16 numCle);
  /// True when the key file was found damaged since its opening (its keys were then made again).
  bool ClesEndommagees(u16 numFichier) const;
  /// All keys of a record of a known file, composed from it. `neuves`: the
  /// caller knows that none exists (they are then written later, in order).
  bool AjouteCles(u16 numFichier, Position position, const void* rec, bool neuves);
  bool SupprimeCles(u16 numFichier, Position position, const void* rec);
  /// The unit in progress changes a good part of the file's records and leaves its keys alone: they are made
  /// again from the records before anybody looks at one.
  bool RemetCles(u16 numFichier);
  /// Rewrites a record and those of its keys that change.
  bool Remplace(u16 numFichier, Position position, const void* rec);

  // -- units of work
  void DebutUnite();
  /// Ends the innermost unit. False: undone.
  bool ValideUnite();
  void AnnuleUnite();
  unsigned Profondeur() const;
  /// As `QVAPI::QVSuitChangements` and `QVNoteChangement`.
  void SuitChangements(std::function<void(const std::bitset<256>&)> suite);
  void NoteChangement(u16 numFichier);

  // -- units taken back, as `QVAPI::QVReprend` and its like
  using NommeurUnites = std::function<std::string(std::span<const EcartUnite>)>;
  using SuiteRetour = std::function<bool(const EcartUnite&)>;
  void RetientUnites(bool actives, NommeurUnites nommeur);
  void OublieUnites();
  /// The unit in progress: the first name stays.
  void NommeUnite(const std::string& nom);
  void SansRetour();
  void RetientReglage(const UniteRetenue::ReglageRetenu& reglage);
  /// Outside of any unit.
  void RetientTexte(const UniteRetenue::TexteRetenu& texte, const std::string& nom);
  /// Of the unit that would be taken back (done again), empty for none.
  std::string NomRetenue(bool refaire) const;
  /// Why it cannot be, 0 when it can: as `Retenues::Perte`.
  int PerteRetenue(bool refaire) const;
  bool LitRetenue(bool refaire, UniteRetenue& unite);
  /// Rises when the three above may answer otherwise.
  u64 VersionRetenues() const;
  /// Its files are open. False: ErrRetour when a slot holds something else than the unit wrote, ErrAucune
  /// when `controle` said no.
  bool PeutReprendre(const UniteRetenue& unite, const SuiteRetour& controle);
  /// Writes the slots of that unit back, as a new unit.
  bool Reprend(bool refaire, const UniteRetenue& unite);
  /// Before another unit is made durable `prealable` answers 0, or the unit is refused with its errno.
  void Exige(std::function<int()> prealable);
  /// The redo log, and the number that its next unit will have: one that is lower is durable.
  u64 IdReprise() const;
  u64 ProchaineUnite() const;

  u64 NbSynchros() const;
  /// Rises whenever a unit, inner or outer, is undone: caches of values derived
  /// from the files are stale when it moved.
  u64 NbAnnulations() const;

  // -- inspection
  int Erreur() const;
  /// Without a file: that of the same error stays.
  void PoseErreur(int code, const std::string& fichier = {});
  /// File that the last error is about, empty when none.
  const std::string& FichierErreur() const;
  bool EstLibre(u16 numFichier, Position position);
  /// Free list, walked and checked; false when it is damaged.
  bool ListeLibre(u16 numFichier, std::vector<Position>& libres);
  /// Sentences (UTF-8) on what could not be brought home and why; emptied.
  std::vector<std::string> Avertissements();
  void Avertit(const std::string& phrase);

 private:
  struct Etat;
  std::unique_ptr<Etat> m;
};

}  // namespace fenlor
