// Every colour of the program stands here: no other source spells one. What is asked for by role follows the
// desktop's palette; what has a look of its own (paper, the opening picture, named shades) is a function or a
// table.
#pragma once

#include <QColor>
#include <QPalette>
#include <array>
#include <optional>

namespace fenlor {

/// The first choice of the preferences.
enum class JeuCouleurs {
  Classique,  ///< the four colours of the settings; on a dark desktop the desktop's, while they are the
              ///< defaults
  Bureau,     ///< the desktop's everywhere ("Couleur système")
  Contraste,  ///< black on white, or white on black, in the whole program
};

/// What a text is never below, whatever the settings and the desktop: contrast to what it is drawn on.
constexpr double contrasteTexte = 4.5;
/// The same for a line or a border.
constexpr double contrasteTrait = 3;

/// Contrast of two opaque colours, 1 (none) to 21 (black on white).
double Contraste(const QColor& a, const QColor& b);
/// `texte` when its contrast to `fond` is `minimum` at least, else black or white, whichever stands out more.
QColor Lisible(const QColor& texte, const QColor& fond, double minimum = contrasteTexte);
/// The same on the rows of two colours, with `secours` tried before black and white.
QColor LisibleSur(const QColor& texte, const QColor& impaire, const QColor& paire, const QColor& secours);
/// `texte` as faint on `fond` as still reads well.
QColor Attenue(const QColor& texte, const QColor& fond);
bool EstSombre(const QPalette& palette);

/// What marks a field whose text is refused, on the palette's fields.
QColor CouleurFaute(const QPalette& palette);
/// A link on the palette's fields.
QColor CouleurLien(const QPalette& palette);

/// A dark palette of the program's own.
QPalette PaletteSombre();
/// Black on white, or white on black where the desktop is dark.
QPalette PaletteContraste(bool sombre);
/// The palette with those of its texts, greyed ones too, that do not reach `contrasteTexte` made to reach it.
/// Only what was changed is set in it, so that the desktop still rules the rest.
QPalette PaletteLisible(const QPalette& bureau);

/// Rules, rows and background of the journals.
struct CouleursJournaux {
  QColor bordure, impaire, paire, fond;
  friend bool operator==(const CouleursJournaux&, const CouleursJournaux&) = default;
};
/// As a fresh practice has them.
CouleursJournaux JournauxParDefaut();
/// What is drawn with, of the four colours of the settings and the palette of the program.
CouleursJournaux JournauxDe(JeuCouleurs jeu, const CouleursJournaux& reglees, const QPalette& palette);

/// The palette of the program over that of the desktop, whose changes it follows.
class PaletteProgramme {
 public:
  void Pose(JeuCouleurs jeu);
  /// A change of the application's palette is its own doing.
  bool EnCours() const { return m_enCours; }

 private:
  std::optional<QPalette> m_bureau;  ///< as it was found
  QPalette m_posee;
  bool m_enCours = false;
};

/// The eight colours that a box offers, by name.
struct Teinte {
  QRgb valeur;
  const char16_t* nom;
};
using Teintes = std::array<Teinte, 8>;
const Teintes& TeintesFonds();   ///< light, to write on
const Teintes& TeintesTextes();  ///< dark, to write with

QColor Blanc(int opacite = 255);
QColor Noir(int opacite = 255);
/// Sheets and what is printed on them, whatever the desktop.
QColor BlancPapier();
QColor NoirEncre();
/// Behind headings and totals of a page, and the rules of the same style of paper.
QColor TeinteBande();
QColor GrisFilet();

/// The opening picture: a gradient from `fonce` to `clair`, with `accent` and `Blanc` on it.
struct CouleursAccueil {
  QColor fonce, clair, accent;
};
CouleursAccueil AccueilDe(bool tessamaris);
/// A file that is open lights this lamp.
QColor Lampe();
/// The book of a closed exercice and the open one of an open one.
struct CouleursLivre {
  QColor contour, couverture, pages, reflet;
};
CouleursLivre LivreDe(bool ferme);

}  // namespace fenlor
