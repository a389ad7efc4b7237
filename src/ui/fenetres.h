// What a form or a document window may ask of the main window, and the bundle
// that each of them is handed. The main window implements `Fenetres`; a test has
// one of its own. It refreshes what the store tells as changed.
#pragma once

#include <QPointer>
#include <QString>
#include <QTimer>
#include <functional>
#include <vector>

#include "core/fenlorapp.h"
#include "ui/barreoffre.h"
#include "ui/preferences.h"

class QDialog;
class QKeySequence;
class QWidget;

namespace fenlor {

class Vue;

/// Bits of the window mask: the document windows of which one of a kind exists.
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
};

/// What changes beside the files of the store, behind their numbers.
enum NumeroReglage : u16 {
  ReglageMonnaies = 256,     ///< one currency or both are shown
  ReglagePreferences = 257,  ///< colours, fonts, habits: bars and main window too
};

/// The windows that show what stands in a file of the store (`NumeroFichier`), or follow a setting: the one
/// table of refreshes.
u32 FenetresDe(u16 numero);

class Fenetres {
 public:
  Fenetres();
  Fenetres(const Fenetres&) = delete;
  Fenetres& operator=(const Fenetres&) = delete;
  virtual ~Fenetres() = default;

  /// From its `Charge` to its end a window follows what the store tells as changed.
  void Entre(Vue& vue);
  /// What the store tells as changed is followed from here on, though no window is open yet.
  void Suit(CFenlorApp& app);
  /// A setting was changed.
  void Note(NumeroReglage reglage);
  /// Brings the open windows up to what was changed since the last time (`ActualiseFenetres`). It comes by
  /// itself, once for all units that a rule made; a form or command that is through asks for it, so that
  /// nothing stale is seen. While a rule is at work (`Occupe`, a unit) it is put off.
  void Actualise();

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
  /// Offers something in the bar at the bottom of the main window.
  virtual void Offre(const Proposition& /*proposition*/) {}
  /// Texts a step larger (1), smaller (-1), or as large as without it (0), everywhere.
  virtual void Zoome(int /*sens*/) {}

 protected:
  /// A rule shows its progress or waits for an answer.
  virtual bool Occupe() const { return false; }
  /// Windows were refreshed; `dessin`: the preferences are other ones.
  virtual void Actualisees(bool /*dessin*/) {}

 private:
  void Attend(u32 masque);
  std::vector<QPointer<Vue>> m_vues;
  u32 m_masque = 0;  ///< stale windows
  QTimer m_minuterie;
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
