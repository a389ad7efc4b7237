#include "graphiques/dessin.h"

#include <algorithm>
#include <cassert>

#include "core/cles.h"
#include "core/valeurs.h"
#include "graphiques/dessinateur.h"
#include "graphiques/textes.h"

namespace fenlor {

namespace {

constexpr f64 BandeTitre = 1.8;  ///< of the height of the title, on a screen
constexpr f64 PartTitre = 5.0 / 100, PartPolice = 4.0 / 10;
constexpr f64 PoliceFeuille = 0.55;      ///< of the title's, for the other texts on a sheet
constexpr f64 LignesFeuille = 1.0 / 24;  ///< of the height of the chart, at most

CadreForme Rogne(CadreForme cadre, f64 marge) {
  return {cadre.gauche + marge, cadre.haut + marge, cadre.droite - marge, cadre.bas - marge};
}

}  // namespace

GenreGraphique GenreRetenu(const CFenlorApp& app) {
  const std::string texte = app.Reglages.LitIni(Texte(SecPreferences), Texte(CleGenreGraphique));
  const int genre = EstVide(texte) ? static_cast<int>(GenreParDefaut) : TexteVersEntier(texte);
  return genre >= 0 && genre < NbGenresGraphique ? static_cast<GenreGraphique>(genre) : GenreParDefaut;
}

bool RetientGenre(CFenlorApp& app, GenreGraphique genre) {
  assert(static_cast<int>(genre) >= 0 && static_cast<int>(genre) < NbGenresGraphique);
  return app.Reglages.EcritIni(Texte(SecPreferences), Texte(CleGenreGraphique),
                               std::to_string(static_cast<int>(genre)));
}

PlaceGraphique PlaceEcran(f64 largeur, f64 hauteur, f64 hauteurTexte, f64 hauteurTitre) {
  assert(largeur >= 0 && hauteur >= 0 && hauteurTexte > 0 && hauteurTitre >= 0);
  const f64 bande = std::min(BandeTitre * hauteurTitre, hauteur / 4);
  const CadreForme reste{0, bande, largeur, std::max(bande, hauteur)};
  return {{0, 0, largeur, bande},
          Rogne(reste, std::min({hauteurTexte, largeur / 20, hauteur / 20})),
          hauteurTitre,
          hauteurTexte};
}

PlaceGraphique PlaceFeuille(f64 largeur, f64 hauteur, TaillePapier taille) {
  PlaceGraphique place;
  assert(largeur > 0 && hauteur > 0);
  const f64 bande = hauteur * PartTitre, reste = hauteur - bande;
  place.titre = {0, 0, largeur, bande};
  place.hauteurTitre = bande * PartPolice;
  CadreForme& cadre = place.graphique;
  cadre = {0, bande, largeur, hauteur};
  if (taille == TaillePapier::Demi) cadre.bas = bande + reste / 2;
  if (taille == TaillePapier::Quart) cadre.bas = bande + reste / 4;
  if (taille == TaillePapier::Proportionnelle && largeur <= reste) cadre.bas = bande + largeur;
  if (taille == TaillePapier::Proportionnelle && largeur > reste)
    cadre = {(largeur - reste) / 2, bande, (largeur + reste) / 2, hauteur};
  place.hauteurTexte = std::min(place.hauteurTitre * PoliceFeuille, cadre.Hauteur() * LignesFeuille);
  return place;
}

DessinGraphique DessineGraphique(const SerieGraphique& serie, GenreGraphique genre,
                                 const PlaceGraphique& place, const MesureTexte& mesure) {
  assert(place.hauteurTexte > 0);
  DessinGraphique dessin;
  Dessinateur d(serie, place, mesure, dessin);
  d.Titre();
  if (serie.points.empty() || place.graphique.Largeur() < 2 * place.hauteurTexte ||
      place.graphique.Hauteur() < 2 * place.hauteurTexte)
    return dessin;
  using G = GenreGraphique;
  const bool relief = genre == G::Aires3D || genre == G::BarresH3D || genre == G::BarresV3D ||
                      genre == G::Courbes3D || genre == G::Secteurs3D;
  switch (genre) {
    case G::Aires:
    case G::Aires3D:
      DessineAires(d, relief);
      break;
    case G::BarresH:
    case G::BarresH3D:
      DessineBarres(d, Repere::Sens::Horizontal, relief);
      break;
    case G::BarresV:
    case G::BarresV3D:
      DessineBarres(d, Repere::Sens::Vertical, relief);
      break;
    case G::Courbes:
    case G::Courbes3D:
      DessineCourbes(d, relief);
      break;
    case G::Nuage:
      DessineNuage(d);
      break;
    case G::Surface:
      DessineSurface(d);
      break;
    case G::Secteurs:
    case G::Secteurs3D:
      DessineSecteurs(d, relief);
      break;
  }
  if (d.ToutNul()) d.Annonce(Texte(TexteToutNul));
  return dessin;
}

int PointSous(const DessinGraphique& dessin, PointForme place) {
  for (auto forme = dessin.formes.rbegin(); forme != dessin.formes.rend(); ++forme)
    if (forme->sorte == SorteForme::Polygone && forme->point >= 0 && Contient(forme->points, place))
      return forme->point;
  for (const DessinGraphique::Zone& zone : dessin.zones)
    if (place.x >= zone.cadre.gauche && place.x < zone.cadre.droite && place.y >= zone.cadre.haut &&
        place.y < zone.cadre.bas)
      return zone.point;
  return -1;
}

}  // namespace fenlor
