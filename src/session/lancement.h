// The start of the program as far as it needs no window: command line, parent
// application, migration of the settings, the store's callback.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/fenlorapp.h"
#include "core/version.h"

namespace fenlor {

/// What the command line asked for. Paths are the platform's bytes, the rest is as
/// it was typed (UTF-8). A switch that was not given, or was blank, holds nothing.
struct ArgumentsLancement {
  std::optional<std::string> nomCabinet;      ///< /C
  std::optional<std::string> pathCabinet;     ///< /D
  std::optional<std::string> pathMagasin;     ///< /F: the store's own idea of the practice's directory
  std::optional<u64> parent;                  ///< /H
  std::optional<std::string> pathProgrammes;  ///< /P
  std::optional<std::string> edition;         ///< /S
  std::optional<std::string> utilisateur;     ///< /U
  bool aide = false;                          ///< --help, -h
  bool version = false;                       ///< --version
  bool sansAccueil = false;                   ///< --sans-accueil: no splash screen
  std::vector<std::string> inconnus;          ///< words that are none of these
};

/// Reads the words behind the program's name. A switch is "/" and a letter of either
/// case. Three ways to write its value:
///  - the next word, whatever it begins with: `/D /srv/cabinet`, `/H 12`;
///  - in the same word: `/H12`, and a path after /D, /F, /P: `/D/srv/cabinet`;
///  - a whole line in one word, texts between double quotes: `/D "C D" /H 12`; unknown
///    letters of such a line are skipped.
/// Of two equal switches the last one counts. A word that is the path of a folder names the
/// practice, as /D does; beside /D, or a second one, it is a word too many.
ArgumentsLancement LitLigneCommande(const std::vector<std::string>& arguments);
/// What --help prints, UTF-8.
std::string AideLigneCommande();
/// Puts the command line into the session and hands the store its part.
void AppliqueLigneCommande(CFenlorApp& app, const ArgumentsLancement& ligne);

/// The practice of somebody who named none: beside the program when its settings
/// stand there, else a folder of the user's own. Nothing is created. `xdgDataHome` counts
/// when it is absolute.
std::string DossierCabinetDefaut(const std::string& pathProgrammes, const std::string& xdgDataHome,
                                 const std::string& home);

/// Version of the parent application from the machine's registry into `ParentAncien`. A
/// blank version is written there as this program's own.
void LitVersionParent(CFenlorApp& app);
/// True when the parent application is set up for a speciality that has pictures and
/// a home page of its own.
bool IsSpecialiteTessamaris(CFenlorApp& app);

/// Brings the settings of an older version up to date and notes this one's. From
/// before version 2 the password goes, which is told unless the settings are new. Needs
/// a reserved or open practice. False when the settings could not be read or written: they
/// are then as they were, nothing was told, and the start goes on.
bool MigreReglages(CFenlorApp& app);
/// Rate of the last row of the table into `TauxEuroCourant`, which an empty table leaves.
void LitTauxCourant(CFenlorApp& app);

/// Tells what the store found or could not bring home (keys made again), in one box; nothing: none.
void DitAvertissements(CFenlorApp& app);

/// The line that tells the parent application of an event: "2023 1 0".
std::string MessageParent(unsigned wparam, unsigned lparam);
enum EvenementParent : unsigned { ParentFermeture = 1, ParentEvenement = 3 };

/// The store's callback. A functor that is handed over as a whole; the session
/// outlives it.
class RappelSession {
 public:
  struct Crochets {
    /// A parent application wants an exercice of this name; true when it was created.
    std::function<bool(const std::string& nom)> creeExercice;
    /// Tells the parent application; called when the session has one.
    std::function<void(unsigned wparam, unsigned lparam)> parent;
    /// Lets waiting messages pass; true when the user stopped the work. By
    /// default `Dialogue::IsAborted`.
    std::function<bool()> arret;
  };

  RappelSession(CFenlorApp& app, Crochets crochets);
  /// An event of `EvenementMagasin`; the result is 1 where no other answer is told.
  u32 operator()(u32 evenement, u32 valeur, const std::string& texte);

 private:
  u32 ExerciceAbsent(u32 valeur, const std::string& nom);
  CFenlorApp& m_app;
  Crochets m_crochets;
  unsigned m_profondeur = 0;
  std::shared_ptr<Progression> m_progression;  ///< shared, for a callback is copied
};

}  // namespace fenlor
