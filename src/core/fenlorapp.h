// The session: the one object that says where the data lives, which exercice is
// open and how the program was started. Made in `main` or in a test's fixture
// and handed to whoever needs it; there is no other global state.
#pragma once

#include <initializer_list>
#include <map>
#include <string>

#include "core/dialogue.h"
#include "core/parametres.h"
#include "core/refus.h"
#include "core/texte.h"
#include "store/qvapi.h"

namespace fenlor {

class CFenlorApp {
 public:
  /// Store and dialogue outlive the session.
  CFenlorApp(QVAPI& magasin, Dialogue& dialogue) : Magasin(magasin), Boite(dialogue), Reglages(magasin) {}
  CFenlorApp(const CFenlorApp&) = delete;
  CFenlorApp& operator=(const CFenlorApp&) = delete;

  QVAPI& Magasin;
  Dialogue& Boite;
  Parametres Reglages;

  std::string PathProgrammes;
  std::string PathCabinet;
  std::string NomExercice;   ///< empty: none open
  std::string PathExercice;  ///< empty: none open
  bool WithQuorbane = false;
  u16 Edition = 2;  ///< 0 Quorbane, 1 QVES, 2 standalone, 3 Tessamaris, 4 TMES
  u64 ParentWindow = 0;
  bool ParentAncien = false;
  u32 ExerciceOuvert = 0;
  bool AfficherDouble = false;
  f64 TauxEuroCourant = 0;
  bool UpdateInstalle = false;       ///< the update program exists (session/miseajour.h)
  bool EcranFinDeSession = true;     ///< false: the close that is on its way shows no last screen
  std::string MotDePasseSauvegarde;  ///< of the session's last backup in the windows; never written anywhere

  /// How often objects hold each file open, by file number (btfiles.h).
  std::map<u16, unsigned> NbOuvert;
  /// Where they have it open, and the store's handle.
  struct FichierOuvert {
    std::string path;
    u32 poignee = 0;
  };
  std::map<u16, FichierOuvert> Ouverts;

  /// Shows the numbered error filled with the arguments; returns false, so that
  /// a refusal is `return app.ReportErreur(...)`.
  bool ReportErreur(const TexteFixe& erreur, std::initializer_list<std::string> arguments = {});
  /// Tells what stopped a rule, unless the user knows. True when nothing did, so that an edge may
  /// `return App().Dit(rule(...))`.
  bool Dit(const Refus& refus);
  /// Asks the numbered question; any answer but `attendue`, and Escape, is what stops the rule.
  Refus Demande(unsigned style, int attendue, const TexteFixe& question, const char* champ = "",
                std::initializer_list<std::string> arguments = {});
  /// The gate of every rule that changes a practice: 3563 one that is open to be read.
  Refus ControleLecture() const;
  /// That of every rule that changes an exercice, the open one without a name: the same, then 3056 closed.
  Refus ControleEcriture(const std::string& exercice = {}) const;
  /// The store's last failure (3214 with its words), not told yet.
  Refus EchecMagasin() const;
  /// The same of an operation that tells its failures through the store's callback.
  Refus EchecDit() const;
  /// An account as it is typed and shown, from its long number.
  std::string NumeroCourt(const std::string& longue);
  /// The settings could not be written (3220 with file and reason).
  Refus EchecReglages() const;
  /// Asks the numbered question.
  int MessageId(unsigned style, const TexteFixe& question, std::initializer_list<std::string> arguments = {});
};

}  // namespace fenlor
