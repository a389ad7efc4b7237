// What the operations on exercices share behind qvapi.h: names, settings of an
// exercice's section, its files, and the end of what an unclean stop cut short.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "store/definitions.h"
#include "store/etat.h"

namespace fenlor {

/// Numbers of the error table that the store tells itself.
enum MessageExercice : u32 {
  MsgFichierEndommage = 3010,
  MsgOuvertureImpossible = 3011,
  MsgExerciceExistant = 3073,
  MsgConflit = 3075,
  MsgExerciceInconnu = 3208,
  MsgNomExercice = 3211,
  MsgPeriode = 3212,
};

/// Noted in an exercice's section while a replacement is under way.
constexpr const char* CleRemplacement = "Remplacement";
/// Name that the directory of the books before a restoration gets once the settings are those of the restored
/// ones.
constexpr const char* CleAvant = "Avant";

/// "JJ/MM/AAAA" settings of an exercice; an end that is not after the beginning
/// counts as the day before the same date one year later.
struct PeriodeExercice {
  Date debut = 0, fin = 0;
  bool Connue() const { return debut != 0 && fin != 0; }
};

/// 1 to 4 letters or digits.
bool NomExerciceCorrect(const std::string& nom);

// Readers of the settings. A file that cannot be read looks empty: `erreur` keeps
// the first error, and nothing may be decided when it is set.
std::string LitReglage(EtatQVAPI& etat, const std::string& section, const std::string& cle, int& erreur);
std::vector<std::string> LitNoms(EtatQVAPI& etat, int& erreur);
/// The list's spelling of a name, empty when it is not in the list.
std::string NomListe(EtatQVAPI& etat, const std::string& nom, int& erreur);
PeriodeExercice LitPeriode(EtatQVAPI& etat, const std::string& nom, int& erreur);
/// Keys that belong to an exercice; its section may hold others.
std::vector<std::string> ClesExercice();

/// True when a practice is open and its settings can be read; else refuses, told.
bool CabinetPret(EtatQVAPI& etat);
/// Refuses and tells the code's own words with its file (none: that of the last failure), or a numbered text.
bool RefuseDit(QVAPI& magasin, EtatQVAPI& etat, int code, const std::string& fichier = {});
/// The same for settings that cannot be read or written.
bool RefuseReglages(QVAPI& magasin, EtatQVAPI& etat, int code);
bool RefuseDit(EtatQVAPI& etat, int code, u32 numero, const std::string& texte);

/// File numbers of the data files that every exercice is made with.
const std::vector<u16>& FichiersExercice();
/// Opens data and keys of a known file in a directory. Unlike the record families
/// it never creates a data file: books must not come back empty.
bool OuvreFichier(EtatQVAPI& etat, u16 numero, const std::string& dossier);
void FermeFichier(EtatQVAPI& etat, u16 numero);

/// Opens the four data files of an exercice once and closes them again. Missing
/// and damaged files are refused, told with their name.
bool EssaieFichiers(QVAPI& magasin, EtatQVAPI& etat, const std::string& nom);

/// Takes the file numbers of an exercice's files away from whoever has them open,
/// and gives them back, open as they were, when it ends.
class EmpruntFichiers {
 public:
  explicit EmpruntFichiers(EtatQVAPI& etat);
  ~EmpruntFichiers();
  EmpruntFichiers(const EmpruntFichiers&) = delete;
  EmpruntFichiers& operator=(const EmpruntFichiers&) = delete;

 private:
  struct Prete {
    std::string dossier;
    bool cles;
    unsigned ouvertures;
  };
  EtatQVAPI& m_etat;
  std::map<u16, Prete> m_pretes;
};

/// Ends replacements and deletions of exercices that an unclean stop cut short: a
/// replacement goes back to the old exercice, a deletion is completed. To be
/// called once the practice is open; does nothing when there is nothing to do.
/// False when an exercice could not be put back, told: its note then stays.
bool AcheveExercices(EtatQVAPI& etat);

}  // namespace fenlor
