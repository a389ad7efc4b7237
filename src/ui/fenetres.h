// What a form or a document window may ask of the main window, and the bundle
// that each of them is handed. The main window implements `Fenetres`; a test has
// one of its own.
#pragma once

#include <QString>
#include <functional>

#include "core/fenlorapp.h"
#include "ui/preferences.h"

class QDialog;
class QKeySequence;
class QWidget;

namespace fenlor {

/// Bits of the window mask: the document windows of which one of a kind exists.
/// The mask names the windows to refresh, and those to bring back.
enum MasqueFenetre : u32 {
  FenTresorerie = 1,
  FenComptesRecettes = 2,
  FenComptesDepenses = 4,
  FenPlanComptable = 8,
  FenRubriques = 16,
  FenLibelles = 32,
  FenRecettes = 256,
  FenDepenses = 512,
  FenOperationsDiverses = 1024,
  FenImmobilisations = 4096,
  ActualiseEcritures = 1793,  ///< treasury and the three journals
  ActualiseComptes = 1807,    ///< and the lists of accounts
  ActualiseListes = 55,       ///< the lists, after a change of their font
  ActualiseTout = 65535,      ///< the preferences changed: bars and frame too
};

class Fenetres {
 public:
  virtual ~Fenetres() = default;
  /// Reloads the open windows of the mask (`ActualiseFenetres`).
  virtual void Actualise(u32 masque) = 0;
  /// Closes all document windows (`FermeToutesFenetres`).
  virtual void FermeToutes() = 0;
  /// `SauveFenetres` and `RestaureFenetres`: which windows are open, in the settings.
  virtual void Sauve() = 0;
  virtual void Restaure() = 0;
  /// Title, combo of the exercices and availability of the commands follow the session
  /// (`NomExercice`, the list of exercices).
  virtual void MontreExercice() = 0;
  /// Shows a help page: "Fenetre" plus the window's name, or "Dialog" plus the form's.
  virtual void Aide(const QString& page) = 0;
  /// A key that the open form has no use for: true when it was that of a tool which works
  /// beside forms, the calculator.
  virtual bool Touche(const QKeySequence& touche) = 0;
  /// The main window, owner of forms; null in a test.
  virtual QWidget* Cadre() = 0;
};

/// Handed to every form and window; outlives them all.
struct ContexteUi {
  CFenlorApp& App;
  Fenetres& Cadre;
  Preferences& Dessin;
};

/// Keeps a shown tool window usable while a modal form is open, which blocks every window
/// but those that belong to it.
void SuitModale(QDialog& outil);

/// Work that needs the files for itself: notes and closes the windows, works, and
/// brings the same windows back.
void AvecFichiersSeul(ContexteUi& contexte, const std::function<void()>& travail);

}  // namespace fenlor
