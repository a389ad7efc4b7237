// From a series and a kind of chart to shapes in a rectangle of a device.
#pragma once

#include "graphiques/formes.h"
#include "graphiques/serie.h"

namespace fenlor {

/// In the order of the commands 1074 on; the number is what the settings hold.
enum class GenreGraphique : int {
  Aires = 0,
  Aires3D,
  BarresH,
  BarresH3D,
  BarresV,
  BarresV3D,
  Courbes,
  Courbes3D,
  Nuage,
  Surface,
  Secteurs,
  Secteurs3D,
};
constexpr int NbGenresGraphique = 12;
constexpr GenreGraphique GenreParDefaut = GenreGraphique::BarresV;
/// The kind kept in the settings, and keeping it. False when they could not be written.
GenreGraphique GenreRetenu(const CFenlorApp& app);
bool RetientGenre(CFenlorApp& app, GenreGraphique genre);

/// Where a chart and its title go. What does not fit beside the chart itself is left out.
struct PlaceGraphique {
  CadreForme titre, graphique;
  f64 hauteurTitre = 25;  ///< of the fonts
  f64 hauteurTexte = 12;
};
constexpr f64 HauteurTitreEcran = 25;
/// The whole of a window; no band for a title of height 0.
PlaceGraphique PlaceEcran(f64 largeur, f64 hauteur, f64 hauteurTexte, f64 hauteurTitre = HauteurTitreEcran);

/// How much of a sheet a chart takes.
enum class TaillePapier : int { Pleine = 0, Demi = 1, Quart = 2, Proportionnelle = 3 };
/// On a sheet of that size: a title band of a twentieth of its height, the chart below.
PlaceGraphique PlaceFeuille(f64 largeur, f64 hauteur, TaillePapier taille);

struct DessinGraphique {
  std::vector<Forme> formes;
  struct Zone {
    CadreForme cadre;
    int point;
  };
  std::vector<Zone> zones;  ///< where a point of the series is meant though no shape of it is hit
};
/// The chart. All shapes lie within the two rectangles of `place`, texts as `mesure` has them. Values that
/// are no numbers count as 0.
DessinGraphique DessineGraphique(const SerieGraphique& serie, GenreGraphique genre,
                                 const PlaceGraphique& place, const MesureTexte& mesure);
/// The point of the series under a place: the shape on top, else the zone; -1 for none.
int PointSous(const DessinGraphique& dessin, PointForme place);

}  // namespace fenlor
