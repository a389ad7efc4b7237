// The ledger store: the one door to the books on disk.
//
// `QVAPI` is one session with the store. It owns the data files of a practice,
// the keys, the redo log, and the accounting rules of an entry. Everything above
// sees operations and flat records (enregistrements.h), no file and no key.
//
// Outcomes. An operation returns a position, a handle or true for success, and 0
// or false for failure; `QVFileErrorCode` then holds the reason: an errno value
// below 1000, or one of `ErreurMagasin`. `QVErreurTexte` says it in French. A
// failed operation has changed nothing.
//
// Units of work. Whatever is written between the start of a `Unite` and its
// `Valide` is on disk as a whole once `Valide` returned true, or not at all,
// whatever happens to the process or the machine. An operation called outside
// any unit is a unit of its own. A durable unit costs one sync.
//
// Texts are Windows-1252, paths are the platform's bytes with its separator.
// One session is used from one thread; an opening, a verification, keys made again take helpers that end
// within the call (partage.h has their rules), and call nobody back. A practice is opened by one session at a
// time, on one machine: `QVOpenCompta` tells who holds it otherwise.
#pragma once

#include <array>
#include <bitset>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "store/dates.h"
#include "store/definitions.h"
#include "store/enregistrements.h"
#include "store/profil.h"
#include "store/systeme.h"

namespace fenlor {

class Moteur;
class FabriqueCles;
struct EtatQVAPI;

/// Reasons of a failure that are not errno values.
enum ErreurMagasin : int {
  ErrAucune = 0,
  ErrPasOuvert = 1001,        ///< the file, the practice or the session is not open
  ErrEndommage = 1002,        ///< the file is not what its header says: "Fichier endommagé"
  ErrFormat = 1003,           ///< not a file of this store, or of another version
  ErrPosition = 1004,         ///< no record there
  ErrCleDouble = 1005,        ///< the key exists
  ErrCleAbsente = 1006,       ///< the key does not exist
  ErrOccupe = 1007,           ///< the practice is held by somebody else
  ErrCompteAbsent = 1008,     ///< an account of the entry is not in the chart
  ErrEcritureAbsente = 1009,  ///< no such entry
  ErrEcritureVide = 1010,     ///< an entry without any amount
  ErrValeur = 1011,           ///< an argument is outside its range
  ErrMotDePasse = 1012,
  ErrExistant = 1013,           ///< the exercice exists and was not to be replaced
  ErrConflit = 1014,            ///< the period overlaps another exercice
  ErrJournalReprise = 1015,     ///< the redo log cannot be read
  ErrModele = 1016,             ///< the template "defaut.qvc" cannot be read
  ErrCles = 1017,               ///< the key file failed
  ErrAltere = 1018,             ///< somebody removed, replaced or cut an open file
  ErrCompteurMouvement = 1019,  ///< no entry number is left
  ErrCompteurImmo = 1020,       ///< no number of an asset is left
  ErrRetour = 1021,             ///< what a unit wrote does not stand there any more
  ErrRetourAncien = 1022,       ///< what a unit changed had to give way to later ones
  ErrRetourGrand = 1023,        ///< what a unit changed is more than is kept of one
  ErrLectureSeule = 1024,       ///< the practice is open to be read
  ErrSuspens = 1025,            ///< the redo log of a practice that may only be read holds units
  ErrTenu = 1026,               ///< another session has the data file, though the lock is not its any more
};

/// Events of the callback (`QVSetCallback`).
enum EvenementMagasin : u32 {
  EvDebut = 1,     ///< a long operation begins; text
  EvFin = 2,       ///< it ends
  EvTexte = 3,     ///< progress text
  EvMaximum = 4,   ///< progress maximum in the value
  EvProgres = 5,   ///< progress position in the value; answer 3 stops the work
  EvErreur = 6,    ///< error text; the value is the message number or 0
  EvQuestion = 7,  ///< question; the value is the style word; answer 6 is yes
  EvExerciceAbsent = 8,
  EvQuestionRefusee = 9,
};

/// Receives every event of the store: event, value, text (Windows-1252).
using RappelMagasin = std::function<u32(u32 evenement, u32 valeur, const std::string& texte)>;

/// What a session needs from outside. Everything has a default.
struct OptionsQVAPI {
  Systeme* systeme = nullptr;            ///< SystemePosix when null; outlives the session
  FabriqueCles* cles = nullptr;          ///< LMDB when null; outlives the session
  std::size_t tailleReprise = 8u << 20;  ///< bytes of the redo log before it is emptied
  std::string dossierRegistre;           ///< folder of the per-user keys; the platform's when empty
  std::string dossierRegistreMachine;
  /// Opens a practice whose redo log or data files are damaged, to save what can
  /// be: see `Moteur::OuvreCabinet`. `AvertissementsMagasin` tells what was left.
  bool reparation = false;
};

/// What `verifier` asks about one data file.
struct EtatFichier {
  std::string nom;                     ///< "JOURNAL"
  u32 emplacements = 0;                ///< slots
  u32 vivants = 0;                     ///< records
  u32 libres = 0;                      ///< deleted slots in the free list
  std::vector<std::string> anomalies;  ///< sentences, Windows-1252
};

class QVAPI {
 public:
  explicit QVAPI(OptionsQVAPI options = {});
  /// Undoes an open unit and closes what is open.
  ~QVAPI();
  QVAPI(const QVAPI&) = delete;
  QVAPI& operator=(const QVAPI&) = delete;

  // ---------------------------------------------------------------- Session

  /// Opens the library; 0 on failure. Called once, first.
  bool QVOpenSession(i32 version);
  /// Closes the practice and the library. False when something could not be
  /// brought to its place: nothing is lost, the next opening finishes the work.
  bool QVCloseSession();
  void QVSetPathProgrammes(const std::string& chemin);
  /// Overrides the practice's directory of the next `QVOpenCompta`.
  void QVSetPathCabinet(const std::string& chemin);
  void QVSetNomCabinet(const std::string& texte);
  void QVSetUserCabinet(const std::string& texte);
  void QVSetWithQuorbane(bool avec, u16 edition);
  void QVSetCallback(RappelMagasin rappel);
  /// False: nobody hears the store, its refusals are to be told from `QVFileErrorCode`.
  bool QVHasCallback() const;
  /// True when the practice in `chemin` has a password.
  bool QVIsComptaPassword(const std::string& chemin);
  /// Takes the lock of the practice in `chemin` and binds `Reglages` to it, so that its
  /// settings can be read and written before anybody was asked for a password. The
  /// books stay closed until `QVOpenCompta`. False with ErrOccupe as there.
  bool QVReserveCabinet(const std::string& chemin);
  /// Opens the practice in `chemin`: takes its lock, finishes what an unclean
  /// stop left in the redo log, and refuses a damaged log (ErrJournalReprise).
  /// False with ErrMotDePasse for a wrong password and with ErrOccupe when
  /// another session holds it (`QVDetenteur`). An open practice with the right
  /// password is a success. A directory without "fenlor.ini" is a practice
  /// without exercices.
  bool QVOpenCompta(const std::string& chemin, const std::string& motDePasse);
  /// The practice is open, or reserved, to be read, since its lock may not be written: a disk or a folder
  /// that is read-only. Everything that would change it is refused (ErrLectureSeule; EROFS of a plain file or
  /// the settings), and nothing of it is touched. Told by one warning. A practice that was not closed cannot
  /// be opened so (ErrSuspens).
  bool QVEnLecture() const;
  /// Who holds the practice after ErrOccupe: "processus 123, utilisateur x, machine y".
  std::string QVDetenteur() const;
  /// Path of the settings file; the only configuration file there is (10099).
  std::string QVGetFilename(i32 numero, i32 reserve) const;
  /// Per-user registry (racine "HKEY_CURRENT_USER") or the machine's
  /// ("HKEY_LOCAL_MACHINE"): files under the platform's configuration folders.
  bool QVGetRegString(const std::string& racine, const std::string& cle, const std::string& groupe,
                      const std::string& nom, std::string& texte);
  bool QVSetRegString(const std::string& racine, const std::string& cle, const std::string& groupe,
                      const std::string& nom, const std::string& texte);
  const std::string& PathCabinet() const;
  const std::string& PathProgrammes() const;
  /// "fenlor.ini" of the open or reserved practice. Precondition: there is one.
  Profil& Reglages();
  Systeme& SystemeFichiers();

  // ------------------------------------------------------------------ Clock

  /// Today; FENLOR_AUJOURDHUI ("JJ/MM/AAAA") or `FixeAujourdhui` replace it.
  Date Today() const;
  Heure Now() const;
  void FixeAujourdhui(Date date);

  // ---------------------------------------------------------- Unit of work

  /// Scope guard: while one lives the settings file is looked at once, however many settings are read from
  /// it; what others write meanwhile is seen afterwards. Instants nest; a unit of work is one.
  class Instant {
   public:
    explicit Instant(QVAPI& magasin);
    ~Instant();
    Instant(const Instant&) = delete;
    Instant& operator=(const Instant&) = delete;

   private:
    QVAPI& m_magasin;
  };
  /// Scope guard. Leaving the scope without `Valide` undoes everything written
  /// since it began. Units nest: an inner one that is undone takes back its own
  /// part only; what is durable is decided by the outermost.
  class Unite {
   public:
    /// `nom`: what a person reads where the unit may be taken back, "suppression de..." (Windows-1252). The
    /// first name of nested units counts; without any the namer of `QVRetientUnites` gives one.
    explicit Unite(QVAPI& magasin, const std::string& nom = {});
    ~Unite();
    /// It is not to be taken back, nor is what it is part of: a validation, recalculated totals.
    void SansRetour();
    Unite(const Unite&) = delete;
    Unite& operator=(const Unite&) = delete;
    /// Ends the unit. True: it is on disk (for an inner unit: it is part of the
    /// outer one). False: all of it is undone and `QVFileErrorCode` says why.
    bool Valide();

   private:
    QVAPI& m_magasin;
    Instant m_instant;
    bool m_fini = false;
  };
  /// The numbers of the files (definitions.h) that a durable unit changed.
  using Changements = std::bitset<256>;
  /// `suite` hears of each outermost unit, also one of a single operation, as soon as it is on disk; of an
  /// undone one it hears nothing. It notes what it hears and reads nothing: a rule may be at work. An
  /// empty function ends it.
  void QVSuitChangements(std::function<void(const Changements&)> suite);
  /// Tells the change of a plain file, which the store does not see.
  void QVNoteChangement(NumeroFichier numero);
  // Taking back. What units change is kept (annulation.h) from the call on, until the exercice is closed; a
  // disk that has no room for it costs the taking back, never the unit. A settings key that a unit writes
  // goes back with it where it still holds what the unit wrote.
  using NommeurUnites = std::function<std::string(std::span<const EcartUnite>)>;
  void QVRetientUnites(bool actives, NommeurUnites nommeur = {});
  void QVOublieUnites();
  /// A text file that was replaced, outside of any unit: one of its own. Also tells the change.
  void QVRetientTexte(NumeroFichier numero, const std::string& chemin, const std::string& avant,
                      const std::string& apres, const std::string& nom);
  /// Name of the unit that `QVReprend` takes back (`refaire`: does again), empty when there is none.
  std::string QVNomReprise(bool refaire) const;
  /// Why that unit cannot be: ErrRetourAncien, ErrRetourGrand, or errno of the disk that had no room. 0: it
  /// can.
  int QVPerteReprise(bool refaire) const;
  /// Rises whenever the answers may be others.
  u64 QVVersionReprises() const;
  /// Takes the last unit back as a new one, which can be done again; or does the last one that was taken back
  /// again. `controle` sees each slot, as it stands and as it will be, before anything is written; false
  /// stops the work (QVFileErrorCode: ErrAucune). Refused with ErrRetour when a slot, or a text, holds
  /// something else than the unit wrote.
  bool QVReprend(bool refaire, const std::function<bool(const EcartUnite&)>& controle = {});
  /// A unit is open: what is read may still be undone.
  bool QVEnUnite() const;
  /// Brings everything to its place and empties the redo log.
  bool QVFlush();
  /// Syncs of the redo log so far: one for each durable unit.
  u64 NbSynchros() const;

  // -------------------------------------------------------------- Exercices

  /// Creates the directory and the files of an exercice, from the last exercice
  /// when there is one, else from the template "defaut.qvc"; writes its section
  /// and adds its name to the list. A name has 1 to 4 characters, letters and
  /// digits. A period that overlaps another exercice is refused (message 3075,
  /// ErrConflit); for an existing name the question 3073 is asked (ErrExistant).
  bool QVCreateExercice(const std::string& nom, Date debut, Date fin, bool euro, bool tva);
  /// Makes it current: opens its files. False, with the file named by a message,
  /// when one is missing or damaged.
  bool QVOpenExercice(const std::string& nom);
  void QVCloseExercice();
  bool QVDeleteExercice(const std::string& nom);
  /// Puts the books of the directory `pret` (somewhere below the practice's, synced, open to nobody) in the
  /// place of an exercice, with these keys as its settings, or makes it one more exercice. What stood there
  /// stays under the name `avant` in the practice's directory; refused while something bears that name. A
  /// stop at any moment leaves the old books or the new.
  bool QVInstalleExercice(const std::string& nom, const std::string& pret,
                          const std::vector<std::pair<std::string, std::string>>& reglages,
                          const std::string& avant);
  /// 1 when the files are of the current format; 0 with a message otherwise.
  u32 QVConvertCompta(const std::string& nom);
  /// Recomputes all cumulative amounts of "COMPTES" from the lines, as one unit.
  bool QVCalculCompta(const std::string& nom, Statistiques& statistiques);
  u32 GetExercicesRec();
  /// Names in the order of the list.
  std::vector<std::string> ListeExercices();
  /// Name of the exercice that ends last; empty when there is none.
  std::string GetLastExercice();
  /// Current exercice, empty when none is open.
  const std::string& NomExercice() const;
  const std::string& PathExercice() const;
  /// Path of an exercice's directory.
  std::string CheminExercice(const std::string& nom) const;

  // ---------------------------------------------------------- Indexed files
  // A file number names an open file; its key numbers follow from the first key
  // number. Paths are full, with extension.

  bool QVNewDat(u16 numFichier, const std::string& chemin, u16 tailleRec);
  bool QVNewIdx(u16 premiereCle, const std::string& chemin, u32 tailleCle0, bool doubles, u16 derniereCle);
  bool QVAddIdx(u16 premiereCle, u32 tailleCle, bool doubles, u16 indice);
  /// Opens by file number or by first key number. A key file that is missing,
  /// torn, foreign or older than its data file is rebuilt without a question.
  bool QVOpen(u16 numero, const std::string& chemin);
  bool QVClose(u16 numero);
  Position QVAddRec(u16 numFichier, const void* rec);
  bool QVDelRec(u16 numFichier, Position position);
  bool QVReadRec(u16 numFichier, Position position, void* rec);
  bool QVWriteRec(u16 numFichier, Position position, const void* rec);
  bool QVAddKey(u16 numCle, const std::string& cle, Position position);
  /// All keys of a record of a known file, composed from it; when one fails none of them. `neuf`: none of
  /// them can exist yet.
  bool QVAddKeys(u16 numFichier, const void* rec, Position position, bool neuf);
  bool QVDelKey(u16 numCle, const std::string& cle);
  bool QVDelDupKey(u16 numCle, const std::string& cle, Position position);
  /// Position of the exact key (the first one where doubles are allowed), or 0.
  Position QVFindKey(u16 numCle, const std::string& cle);
  /// First key at or above; `cle` becomes the key found. 0 past the end.
  Position QVBrowseKey(u16 numCle, std::string& cle);
  Position QVFirstKey(u16 numCle, std::string& cle);
  Position QVLastKey(u16 numCle, std::string& cle);
  /// Go on from the key last returned for this key number, whatever was added or
  /// removed in between. 0 at the end: the cursor then stays where it was.
  Position QVNextKey(u16 numCle, std::string& cle);
  Position QVPrevKey(u16 numCle, std::string& cle);
  u32 QVNumberOfKey(u16 numCle);
  /// Record slots, deleted ones included.
  u32 QVNumberOfRec(u16 numFichier);
  /// Offset of the first record in a data file: 1024, whatever the size.
  static u32 QVGetFirstRecPos(u16 tailleRec);
  /// True when a raw slot holds no record: deleted, or never written.
  static bool QVEstVide(u16 numFichier, const void* rec);
  /// Error of the last failed operation (ErreurMagasin or errno); 0 when none.
  int QVFileErrorCode() const;
  std::string QVErreurTexte(int code) const;
  /// The last failure in words, with the path of its file if any.
  std::string QVEchecTexte() const;
  /// Path of the file that the last failure is about, empty when none.
  std::string QVFichierErreur() const;
  /// Sentences (Windows-1252) on what went wrong without stopping the work, such
  /// as keys that could not be written and will be rebuilt; emptied by the call.
  std::vector<std::string> AvertissementsMagasin();
  /// One more of them (UTF-8).
  void QVAvertit(const std::string& phrase);
  /// Sets the error of a caller that works on the store's behalf.
  void PoseErreur(int code);
  /// Reads slot after slot in file order, deleted ones left out, without any key:
  /// `suite` gets position and record, and returns false to stop.
  bool QVParcours(u16 numFichier, const std::function<bool(Position, const void*)>& suite);
  /// Reads along a key, from the text `debut` to `fin` (left out; empty: the end),
  /// without copying: `suite` gets position and record in place, its marker byte
  /// as stored, and returns false to stop. It must not write. Cursors stay.
  bool QVParcoursCle(u16 numCle, const std::string& debut, const std::string& fin,
                     const std::function<bool(Position, const void*)>& suite);
  /// Compares keys and records of an open file, slot by slot and key by key.
  EtatFichier QVVerifie(u16 numFichier);

  // ------------------------------------------------------------ Plain files

  int QVCreateFile(const std::string& chemin);           ///< handle or -1
  int QVOpenFile(const std::string& chemin, u32 acces);  ///< 0x80000000 read, 0x40000000 write
  bool QVCloseFile(int fichier);
  int QVReadFile(int fichier, void* tampon, u32 taille);  ///< bytes or -1
  int QVWriteFile(int fichier, const void* tampon, u32 taille);
  i64 QVSeekFile(int fichier, i64 offset, int origine);  ///< 0 start, 2 end; position or -1
  bool QVExistFile(const std::string& chemin);
  bool QVDeleteFile(const std::string& chemin);
  bool QVRenameFile(const std::string& de, const std::string& vers);

  // -------------------------------------------------------- Record families
  // A row of the table in definitions.h is all that a file needs here. The named
  // operations say which row; `Ouverture` (store/ouverture.h) closes by itself.

  /// Opens data and keys of a known file in a directory; an empty text is that of
  /// the open exercice, or of the practice for the files it owns. Creates what is
  /// missing. A handle, 0 on failure. Each opening is counted.
  u32 OpenFichier(u16 numFichier, const std::string& chemin);
  /// Gives one opening back; the last one closes the file. False: it was not open.
  bool CloseFichier(u16 numFichier, u32 poignee);

  u32 OpenPlan(const std::string& chemin) { return OpenFichier(FichierComptes, chemin); }
  u32 OpenRubriques(const std::string& chemin) { return OpenFichier(FichierRubriques, chemin); }
  u32 OpenBanques(const std::string& chemin) { return OpenFichier(FichierBanques, chemin); }
  u32 OpenJournal(const std::string& chemin) { return OpenFichier(FichierJournal, chemin); }
  u32 OpenImmobilisations(const std::string& chemin) { return OpenFichier(FichierImmo, chemin); }
  u32 OpenAmortissements(const std::string& chemin) { return OpenFichier(FichierAmo, chemin); }
  u32 OpenRecettes(const std::string& chemin) { return OpenFichier(FichierRecettes, chemin); }
  u32 OpenDepenses(const std::string& chemin) { return OpenFichier(FichierDepenses, chemin); }
  u32 OpenEcrituresAuto(const std::string& chemin) { return OpenFichier(FichierAuto, chemin); }
  /// The table of rates stands in the program: there is no file behind it.
  u32 OpenTauxDegressif(const std::string&) { return 1; }
  bool ClosePlan(u32 poignee) { return CloseFichier(FichierComptes, poignee); }
  bool CloseRubriques(u32 poignee) { return CloseFichier(FichierRubriques, poignee); }
  bool CloseBanques(u32 poignee) { return CloseFichier(FichierBanques, poignee); }
  bool CloseJournal(u32 poignee) { return CloseFichier(FichierJournal, poignee); }
  bool CloseImmobilisations(u32 poignee) { return CloseFichier(FichierImmo, poignee); }
  bool CloseAmortissements(u32 poignee) { return CloseFichier(FichierAmo, poignee); }
  bool CloseRecettes(u32 poignee) { return CloseFichier(FichierRecettes, poignee); }
  bool CloseDepenses(u32 poignee) { return CloseFichier(FichierDepenses, poignee); }
  bool CloseEcrituresAuto(u32 poignee) { return CloseFichier(FichierAuto, poignee); }
  bool CloseTauxDegressif(u32 poignee);
  bool GetOpenFlagPlan() const;
  bool GetOpenFlagJournal() const;
  bool GetOpenFlagRubriques() const;
  bool GetOpenFlagBanques() const;
  u64 GetPlanSize(u32 reserve);  ///< bytes
  u64 GetJournalSize(u32 reserve);
  u64 GetRubriquesSize(u32 reserve);
  u64 GetBanquesSize(u32 reserve);
  u32 GetPlanRec(u32 reserve);  ///< records
  u32 GetJournalRec(u32 reserve);
  u32 GetRubriquesRec(u32 reserve);
  u32 GetBanquesRec(u32 reserve);
  /// Reads the account whose `Compte` stands in the record.
  Position ReadPlan(Plan& rec, u32 reserve);
  bool DeletePlan(Position position);
  /// Rewrites the line last read by `ReadLines`, entry and totals untouched.
  bool WriteJournal(const Line& rec);

  // ---------------------------------------------------------------- Entries
  // The first argument is `PathExercice`. Lines, keys and cumulative amounts
  // follow in one unit. Failures are also told through event 6.

  /// Writes a new entry; assigns `Mouvement` when it is 0. The entry's number.
  u32 AddEcrSimple(const std::string& exercice, EcrSimple& rec);
  /// The treasury lines are those of the ticket `rec.LignesTresorerie`.
  u32 AddEcrStandard(const std::string& exercice, EcrStandard& rec);
  /// Replaces an entry's lines. Lines whose account and side persist keep
  /// `Pointee`, `Remise`, `DateRemise`, `Rapprochee` and its block.
  bool UpdateEcrSimple(const std::string& exercice, u32 mouvement, EcrSimple& rec);
  bool UpdateEcrStandard(const std::string& exercice, u32 mouvement, EcrStandard& rec);
  /// Rebuild a record from the entry's lines; 0 when not found or of another kind.
  u32 ReadEcrSimple(const std::string& exercice, u32 mouvement, EcrSimple& rec);
  /// Also makes a ticket for the treasury lines; the caller gives it back
  /// with `LibereLignes`.
  u32 ReadEcrStandard(const std::string& exercice, u32 mouvement, EcrStandard& rec);
  u32 ReadOpDiverses(const std::string& exercice, u32 mouvement, Mouvement& rec);
  u32 ReadMouvements(const std::string& exercice, u32 mouvement, Mouvement& rec);
  bool RemoveEcrSimple(const std::string& exercice, u32 mouvement);
  bool RemoveEcrStandard(const std::string& exercice, u32 mouvement);
  bool RemoveMouvements(const std::string& exercice, u32 mouvement);
  /// Rewrites date, line number, label, marks and link words in every line.
  bool UpdateMouvements(const std::string& exercice, u32 mouvement, const Mouvement& rec);
  bool ValidEcrSimple(const std::string& exercice, u32 mouvement, u32 valide);
  bool ValidEcrStandard(const std::string& exercice, u32 mouvement, u32 valide);
  bool ValidOpDiverses(const std::string& exercice, u32 mouvement, u32 valide);
  bool ValidMouvements(const std::string& exercice, u32 mouvement, u32 valide);
  bool ReverseMarkMouvements(const std::string& exercice, u32 mouvement);
  /// Adds one line of an opération diverse. `Rang` is the next free one of the
  /// entry. Its position.
  Position AddLines(const std::string& exercice, const Line& rec);
  bool ReadLines(const std::string& exercice, Position position, Line& rec);
  bool UpdateLines(const std::string& exercice, Position position, const Line& rec);
  /// Marks a line reconciled and copies the bank operation into it.
  bool RappLines(const std::string& exercice, Position position, const Banque& rec);
  /// A line, and the operation of "BANQUE" that it is.
  struct Rapprochement {
    Position ligne = 0, operation = 0;
  };
  /// The same for each pair, with its operation, which is taken out of "BANQUE": one unit. That file is open.
  bool RappLines(const std::string& exercice, std::span<const Rapprochement> paires);
  /// Highest `Ligne` of the journal in the month of the date, plus 1; 1 for
  /// date 0. The account plays no part.
  u32 GetFreeJournalLine(const std::string& exercice, u16 journal, const std::string& compte, Date date);
  u32 GetFreeMouvementsID(const std::string& exercice, u16 journal);
  /// Positions of an entry's lines in order of `Rang`.
  std::vector<Position> LignesMouvement(const std::string& exercice, u32 mouvement);
  u32 GetMouvementsLinesCount(u32 mouvement);
  bool IsRappLineInMouvements(u32 mouvement);
  /// Entry number inside a key text of that key index of "JOURNAL"; 0 for none.
  static u32 GetMouvements(const std::string& cle, int indice);
  /// i-th treasury line, from 0; false at the end.
  bool GetEcrLineTresor(u32 indice, const EcrStandard& rec, LineTresor& ligne) const;
  /// Stores the i-th line: makes the ticket when it is 0, and appends when the
  /// index is `NbLignesTresorerie`, which then rises. False beyond that.
  bool SetEcrLineTresor(u32 indice, EcrStandard& rec, const LineTresor& ligne);
  void LibereLignes(EcrStandard& rec);

  // ----------------------------------------------------------------- Assets

  bool WriteImmobilisations(const Immobilisation& rec);  ///< adds, or replaces that number
  bool DeleteImmobilisations(Position position);
  u32 GetFreeImmobilisationsID(const std::string& cabinet);  ///< last id given plus 1
  bool WriteLastImmobilisationsID(u32 numero);
  Position ReadAmortissements(Amortissement& rec);  ///< key: Numero and Annee of the record
  bool WriteAmortissements(const Amortissement& rec);
  bool DeleteAmortissements(Position position);
  /// Row of the table for an asset bought on `achat`, from 1, by ascending life.
  bool ReadTauxDegressif(Date achat, u32 indice, TauxDegressif& rec) const;

  // ------------------------------------------------------ Automatic entries
  // The context is the handle of OpenEcrituresAuto. Numbers run from 1 without
  // gaps; deleting one moves the later ones down.

  u32 GetEcrituresAutoRec(u32 contexte);
  /// All of them, in order of their numbers.
  bool ListeEcrituresAuto(std::vector<EcrituresAuto>& liste);
  bool ReadEcrituresAuto(u32 indice, EcrituresAuto& rec, u32 contexte);
  /// Appends when `Numero` is 0 (and fills it), else rewrites that number. The list of the settings
  /// follows by `FlushEcrituresAuto`, and at the latest when the file is closed.
  bool WriteEcrituresAuto(EcrituresAuto& rec, u32 contexte);
  bool DeleteEcrituresAuto(u32 indice, u32 contexte);
  bool FlushEcrituresAuto(u32 contexte);

  // ------------------------------------------------------------------ Links
  // Receipts and expenses of the parent application, kept in the practice.

  /// Finds by key: 2 the link key, 0 `LienId`, 1 date. Position or 0.
  Position ReadRecettes(RecetteLiee& rec, u32 cle);
  Position WriteRecettes(const RecetteLiee& rec);
  /// Deletes the receipt and the entry that is linked to it, in one unit.
  bool DeleteRecettes(Position position);
  Position ReadDepenses(DepenseLiee& rec, u32 cle);  ///< 0 the link key, 1 date
  Position WriteDepenses(const DepenseLiee& rec);
  bool DeleteDepenses(Position position);

  // --------------------------------------------------------------- Accounts

  /// Stored form: blanks removed, upper case, cut at 10, padded with "0" to 10.
  /// Empty for a blank text.
  static std::string GetLongCompte(const std::string& texte);
  /// Screen form: trailing zeros removed, one character at least stays; with the
  /// preference "Zéros Significatifs" the first "Nombre de chiffres" stay.
  std::string GetShortCompte(const std::string& compte);
  std::string GetCompteVireFrom();  ///< transit account of transfers, expense side
  std::string GetCompteVireTo();    ///< receipt side
  std::string GetComptePerso();     ///< personal share
  std::string GetCompteEcartCredit();
  std::string GetCompteEcartDebit();
  bool SetCompteVireFrom(const std::string& compte);
  bool SetCompteVireTo(const std::string& compte);
  bool SetComptePerso(const std::string& compte);
  bool SetCompteEcartCredit(const std::string& compte);
  bool SetCompteEcartDebit(const std::string& compte);

  // ------------------------------------------------------------------- Euro

  /// Franc for one Euro in force on a date, from the section "TAUX EURO": the row
  /// with the latest date not after it; the earliest row when there is none;
  /// 6.55957 when the table is empty.
  f64 GetTauxEuro(Date date);
  /// Both round to 2 decimals, halves up.
  static f64 ConvertFrancToEuro(f64 taux, f64 montant);
  static f64 ConvertEuroToFranc(f64 taux, f64 montant);

 private:
  std::unique_ptr<EtatQVAPI> m_etat;
};

}  // namespace fenlor
