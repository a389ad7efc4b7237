// The shared colours, pens and fonts of lists, journals and forms: settings of
// the practice turned into drawing objects.
#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>

#include "core/fenlorapp.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "ui/couleurs.h"

namespace fenlor {

/// Owned by the main window for its whole life; made anew by `ChargePreferences`
/// whenever the preferences or the desktop's palette change.
struct Preferences {
  PaletteProgramme Palette;             ///< stays when the rest is made anew
  QColor CouleurBordure;                ///< rules of journals and of the asset register
  QColor CouleurImpaire, CouleurPaire;  ///< backgrounds of the alternating rows
  QColor CouleurFond;                   ///< background of the journal window
  QPen Bordure1, Bordure2;              ///< of `CouleurBordure`, width 1 and 2
  QPen ReliefClair, ReliefSombre;       ///< raised edges
  QBrush FondApplication, FondBouton, Fond;
  QFont PoliceListes, PoliceJournaux, PoliceValidees, PoliceSaisies, PoliceTextes, PoliceMois;
  QColor TexteListes, TexteJournaux, TexteValidees, TexteSaisies;
  bool CouleurSysteme = false;
  int ZoomProgramme = 100;  ///< percent, that the program's own font was enlarged by; stays likewise
};

/// Reads section "Préférences" and writes defaults for blank keys, in one replacement
/// of the file. Never fails: when the settings cannot be read, or no practice is open, the defaults hold;
/// when they cannot be written nothing is said. Texts stay readable whatever the desktop: a text colour that
/// does not stand out from what it is drawn on (rows of the journals, or the palette) is replaced.
void ChargePreferences(Preferences& preferences, CFenlorApp& app, const QPalette& palette);
/// The palette of the program as the settings choose it, then `ChargePreferences` with it.
void AppliquePreferences(Preferences& preferences, CFenlorApp& app);
/// The texts' size in percent, from the settings.
int LitZoom(const CFenlorApp& app);
/// A step more or less, or 100 for 0; false when that changes nothing or could not be kept.
bool ChangeZoom(CFenlorApp& app, int sens);
/// "Couleur système" and "Contraste élevé" of the settings; Classique where no practice is open.
JeuCouleurs JeuRegle(const CFenlorApp& app);

/// Colour and font settings as a page shows them: the default when the key is blank; writes nothing.
QColor CouleurReglee(const CFenlorApp& app, const TexteFixe& cle);
std::string PoliceReglee(const CFenlorApp& app, const TexteFixe& cle);

/// Reports that the settings file could not be written (3220), with its path and the reason of
/// the last write. Returns false.
bool DitEchecReglages(CFenlorApp& app);
/// A practice is open: without one the settings give defaults and keep nothing.
bool CabinetOuvert(const CFenlorApp& app);

/// A setting of the form "MS Sans Serif, -11, 0, 0, 0, 0, 0" as a font: a negative
/// size is a height in pixels of a 96 dpi screen, a positive one is in points. A face
/// that the machine lacks becomes the desktop's own.
QFont FaitPolice(const Police& police);
/// The setting of a font and its colour (red in the low byte); an invalid colour is left
/// blank. The size is the negative height of above, or points (`enPoints`) as the reports read it.
std::string EcritPolice(const QFont& police, const QColor& couleur, bool enPoints = false);
std::string EcritPolice(const Police& police);
/// "MS Sans Serif 8, Gras, Italique"
QString DecritPolice(const Police& police);

/// A colour setting: a decimal number, red in the low byte, and back. What is no number is black.
QColor LitCouleur(std::string_view texte);
std::string EcritCouleur(const QColor& couleur);

}  // namespace fenlor
