// The program from its start to its end: store session, main window, first
// exercice, and the close-down in the order that the practice application relies on.
#pragma once

#include <QString>
#include <memory>

#include "core/fenlorapp.h"
#include "session/lancement.h"
#include "ui/dialogueqt.h"

namespace fenlor {

class CMainFrame;
class EcranAccueil;
class InstanceUnique;

struct OptionsProgramme {
  ArgumentsLancement ligne;
  std::string pathProgrammes;  ///< folder of the tips and of a template
  OptionsQVAPI magasin;
  bool accueil = true;  ///< the splash screen
  std::string note;     ///< what the last program had to say when it was ended (store/urgence.h)
};

class Programme {
 public:
  explicit Programme(OptionsProgramme options);
  /// `ExitInstance`, when it was not called.
  ~Programme();

  /// Starts up to the main window with its exercice. False: the program ends, and the
  /// user was told why where there is something to tell.
  bool InitInstance();
  /// Writes the exercice's name back, closes the store, tells the parent. Called once, after
  /// the main window has closed.
  void ExitInstance();

  CFenlorApp& App() { return m_app; }
  CMainFrame& Cadre() { return *m_cadre; }
  /// A running program has this practice open: it came forward, this one ends.
  bool AutreInstance() const { return m_autre; }
  /// The update program was started, which replaces the files of this one: it ends.
  bool MiseAJourLancee() const { return m_miseAJour; }

 private:
  bool RappelleMiseAJour();
  bool OuvreMagasin();
  bool ChoisitCabinet();
  bool OuvreCompta();
  void PremierExercice();
  void OuvreExerciceCourant();
  void FermeAccueil();
  /// True, told, when the settings name no exercice although books are there.
  bool ReglagesPerdus();

  OptionsProgramme m_options;
  QVAPI m_magasin;
  DialogueQt m_dialogue;
  CFenlorApp m_app;
  std::unique_ptr<CMainFrame> m_cadre;
  std::unique_ptr<InstanceUnique> m_instance;
  std::unique_ptr<EcranAccueil> m_accueil;
  bool m_session = false;  ///< the store session is open
  bool m_compta = false;   ///< the books are open
  bool m_premier = false;  ///< the first exercice was just made
  bool m_autre = false;
  bool m_miseAJour = false;
};

}  // namespace fenlor
