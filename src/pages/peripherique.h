// The sheet that a report is drawn on: integer units, the origin in the upper left
// corner of what can be printed. Texts are Windows-1252.
//
// The layout follows the unit, not the pixel: two devices that count the same units to
// the inch break the same report at the same places, whatever they paint with. So a
// device that paints (printer, PDF, preview) counts in `UnitesPeripherique` units and
// scales.
#pragma once

#include <string>
#include <string_view>

#include "store/enregistrements.h"

namespace fenlor {

constexpr i32 UnitesPeripherique = 1200;  ///< to the inch

enum class Alignement { Gauche, Centre, Droite };

/// Bits of a style; its value is the place of the font among the eight.
enum StyleEtat : unsigned { StyleSouligne = 1, StyleItalique = 2, StyleGras = 4, NbStyles = 8 };

struct PoliceEtat {
  std::string face;  ///< Windows-1252
  i32 hauteur = 0;   ///< of the cell, in units
  i32 poids = 400;   ///< 700 for bold
  bool italique = false;
  bool souligne = false;
};

/// `droite` and `bas` stand just outside. One that is empty or turned over shows nothing.
struct Rectangle {
  i32 gauche = 0, haut = 0, droite = 0, bas = 0;
  bool operator==(const Rectangle&) const = default;
};

/// What a style of paper fills with.
enum class Ton { Filet, Bande };

/// In an amount: a blank a third as wide as a digit.
constexpr char BlancFin = '\x1F';

struct Etendue {
  i32 largeur = 0, hauteur = 0;
};

class Peripherique {
 public:
  virtual ~Peripherique() = default;

  virtual i32 Largeur() const = 0;  ///< of what can be printed of the sheet, as it is turned
  virtual i32 Hauteur() const = 0;
  virtual i32 UnitesParPouce() const = 0;  ///< vertical

  /// Makes the font of a style in place of the one that was there.
  virtual void FaitPolice(unsigned style, const PoliceEtat& police) = 0;
  /// One plain font of the device's own choice for all eight styles.
  virtual void FaitPoliceBrouillon() = 0;
  virtual i32 HauteurPolice(unsigned style) const = 0;  ///< of a line of text
  virtual Etendue Mesure(unsigned style, std::string_view texte) const = 0;

  /// On a single line, without background; wider than the rectangle it is drawn narrower, so that it fills
  /// it.
  virtual void DessineTexte(unsigned style, const Rectangle& cadre, Alignement alignement,
                            std::string_view texte) = 0;
  /// A horizontal black line of so many units (0 and 1: the thinnest there is).
  virtual void DessineTrait(i32 gauche, i32 droite, i32 y, i32 epaisseur) = 0;
  /// Fills a rectangle, never so thin that it is not seen; what is drawn later stands on it.
  virtual void Remplit(const Rectangle& cadre, Ton ton) = 0;
};

}  // namespace fenlor
