// The colours of charts: one table, and how an ink becomes a colour on the paper or the desktop in use.
#pragma once

#include <array>
#include <string>

#include "store/enregistrements.h"

namespace fenlor {

struct Rvb {
  u8 rouge = 0, vert = 0, bleu = 0;
  bool operator==(const Rvb&) const = default;
};

/// What is painted with; `TeinteSerie` + n is the n-th colour of the table.
enum TeinteGraphique : u8 {
  TeinteFond,
  TeinteTexte,
  TeinteAxe,
  TeinteGrille,
  TeinteParoi,  ///< walls behind a chart in depth
  TeinteSerie,
};

/// The colours of points. Each differs from its neighbours, the first from the last included, in lightness:
/// they can be told apart on a grey print, and whatever colours the reader sees.
constexpr std::array<Rvb, 8> CouleursSerie = {{
    {0x2D, 0x73, 0xC4},  // blue
    {0xF2, 0xA5, 0x3A},  // orange
    {0x0F, 0x76, 0x62},  // green
    {0xA9, 0xD6, 0xF5},  // pale blue
    {0xA1, 0x3D, 0x5D},  // crimson
    {0xF3, 0xD9, 0x6B},  // yellow
    {0x6A, 0x5A, 0xA8},  // violet
    {0xF0, 0xAE, 0xC6},  // pink
}};

/// Ink of a shape: a hue, and so many hundredths of the way to white (above 0) or black (below).
struct Encre {
  u8 teinte = TeinteTexte;
  int lumiere = 0;
  bool operator==(const Encre&) const = default;
};

/// What a chart stands on: white paper, or the desktop's own colours.
struct ThemeGraphique {
  Rvb fond{255, 255, 255};
  Rvb texte{0, 0, 0};
};

/// The colour of an ink. Axis, grid and walls lie between text and background of the theme, so that a dark
/// desktop has dark walls.
Rvb Couleur(const ThemeGraphique& theme, Encre encre);
/// "#1f5a9e"
std::string EnHexa(Rvb couleur);

}  // namespace fenlor
