// The shapes that a chart consists of, in the units of the device they were made for: x to the right, y
// downward. Whoever paints them paints them in their order.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/colonneliste.h"
#include "graphiques/couleurs.h"

namespace fenlor {

struct PointForme {
  f64 x = 0, y = 0;
};
inline PointForme operator+(PointForme a, PointForme b) { return {a.x + b.x, a.y + b.y}; }

struct CadreForme {
  f64 gauche = 0, haut = 0, droite = 0, bas = 0;
  f64 Largeur() const { return droite - gauche; }
  f64 Hauteur() const { return bas - haut; }
};

enum class SorteForme { Polygone, Ligne, Texte };

struct Forme {
  SorteForme sorte = SorteForme::Polygone;
  std::vector<PointForme> points;  ///< outline (closed by itself), ends of a line, anchor of a text
  Encre encre;                     ///< of the surface, the line, the letters
  int point = -1;                  ///< of the series that it stands for, or none
  bool bord = false;               ///< the outline is drawn, in the ink of the axis
  f64 epaisseur = 1;               ///< of a line
  // Of a text: its anchor is on the base line, at the end that `cote` says or in the middle.
  std::string texte;  ///< Windows-1252
  f64 hauteur = 0;    ///< of the font
  Cote cote = Cote::Gauche;
  bool debout = false;  ///< reads upward
  bool gras = false;
};

/// How wide texts are. A device measures with the font that it draws with.
class MesureTexte {
 public:
  virtual ~MesureTexte() = default;
  virtual f64 Largeur(std::string_view texte, f64 hauteur, bool gras) const = 0;
};
/// A usual face without serifs, from a table: for what is written without any font, and for tests.
class MesureTable : public MesureTexte {
 public:
  f64 Largeur(std::string_view texte, f64 hauteur, bool gras) const override;
};

// Parts of the height of a font above and below the base line.
constexpr f64 MonteeTexte = 0.93, DescenteTexte = 0.24;

bool Contient(const std::vector<PointForme>& polygone, PointForme p);

}  // namespace fenlor
