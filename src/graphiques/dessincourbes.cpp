#include <algorithm>
#include <cassert>
#include <cmath>

#include "graphiques/dessinateur.h"

namespace fenlor {

namespace {

constexpr f64 ReculAires = 0.6, ReculCourbes = 0.8;
constexpr f64 ReculNappe = 1000, ReculNappeMax = 0.3;  ///< the sheet goes as far back as it may
constexpr f64 DebutRuban = 0.2, FinRuban = 0.8;        ///< of the depth
constexpr f64 RayonMarque = 0.32, RayonPoint = 0.45;   ///< of the height of the font
constexpr f64 TraitCourbe = 2.2;
constexpr int RangsNappe = 4;
constexpr f64 LumiereBasse = -40, LumiereHaute = 55;

/// A place of the curve: across the values, and a value.
struct Etape {
  f64 travers, valeur;
};

/// The curve from point to point; a single one is as wide as half its slot.
std::vector<Etape> Etapes(const Dessinateur& dessin, const Repere& repere) {
  std::vector<Etape> etapes;
  for (std::size_t i = 0; i < dessin.Nombre(); ++i) etapes.push_back({repere.Milieu(i), dessin.Valeur(i)});
  if (etapes.size() == 1) {
    const f64 quart = repere.Case() / 4;
    etapes = {{etapes[0].travers - quart, etapes[0].valeur}, {etapes[0].travers + quart, etapes[0].valeur}};
  }
  return etapes;
}

/// The stretch between two places, cut where it passes a multiple of `pas`, zero among them.
std::vector<Etape> Coupe(const Etape& a, const Etape& b, f64 pas) {
  std::vector<Etape> etapes{a};
  assert(pas > 0);
  const f64 bas = std::min(a.valeur, b.valeur), haut = std::max(a.valeur, b.valeur);
  std::vector<f64> niveaux;
  for (f64 rang = std::floor(bas / pas) + 1; rang * pas < haut; ++rang) niveaux.push_back(rang * pas);
  if (a.valeur > b.valeur) std::reverse(niveaux.begin(), niveaux.end());
  for (const f64 niveau : niveaux)
    etapes.push_back(
        {a.travers + (b.travers - a.travers) * (niveau - a.valeur) / (b.valeur - a.valeur), niveau});
  etapes.push_back(b);
  return etapes;
}

/// The curve with a place wherever it passes zero.
std::vector<Etape> AvecZeros(const std::vector<Etape>& etapes, const EchelleAxe& echelle) {
  // Only zero is a multiple of more than the whole axis.
  assert(etapes.size() >= 2);
  const f64 pas = 4 * std::max(echelle.Maximum(), -echelle.Minimum());
  std::vector<Etape> toutes{etapes.front()};
  for (std::size_t i = 1; i < etapes.size(); ++i) {
    const std::vector<Etape> morceau = Coupe(etapes[i - 1], etapes[i], pas);
    toutes.insert(toutes.end(), morceau.begin() + 1, morceau.end());
  }
  return toutes;
}

void Marque(Dessinateur& dessin, const Repere& repere, std::size_t i, f64 rayon) {
  const PointForme p = repere.Place(repere.Milieu(i), dessin.Valeur(i));
  const f64 r = std::min(
      {rayon * dessin.Police(), std::max(repere.Case() / 2, dessin.Trait()), dessin.Cadre().Hauteur() / 10});
  dessin.Polygone({{p.x - r, p.y}, {p.x, p.y - r}, {p.x + r, p.y}, {p.x, p.y + r}},
                  EncreValeur(dessin.Valeur(i)), static_cast<int>(i), true);
}

/// Light on a stretch that one looks down on.
int LumierePente(PointForme a, PointForme b) {
  const f64 longueur = std::hypot(b.x - a.x, b.y - a.y);
  const f64 pente = longueur > 0 ? (b.y - a.y) / longueur : 0;  // below zero it rises
  return static_cast<int>(std::lround(20 - 25 * std::abs(pente) - 15 * pente));
}

/// A quarter of a sheet or ribbon, between two parts of the depth.
std::vector<PointForme> Lame(const Repere& repere, const Etape& a, const Etape& b, f64 avant, f64 arriere) {
  assert(avant < arriere);
  const PointForme p = repere.Profondeur(), fa = repere.Place(a.travers, a.valeur),
                   fb = repere.Place(b.travers, b.valeur);
  const PointForme devant{p.x * avant, p.y * avant}, derriere{p.x * arriere, p.y * arriere};
  return {fa + devant, fb + devant, fb + derriere, fa + derriere};
}

/// Ink of a band of the sheet: darker near zero, lighter far from it.
Encre EncreBande(const EchelleAxe& echelle, f64 valeur) {
  const f64 etendue = std::max(echelle.Maximum(), -echelle.Minimum());
  assert(echelle.pas > 0 && etendue > 0);
  const f64 bande = std::floor(std::abs(valeur) / echelle.pas) * echelle.pas;
  const f64 lumiere = LumiereBasse + (LumiereHaute - LumiereBasse) * std::min(1.0, bande / etendue);
  Encre encre = EncreValeur(valeur);
  encre.lumiere = static_cast<int>(std::lround(lumiere));
  return encre;
}

}  // namespace

void DessineAires(Dessinateur& dessin, bool relief) {
  Repere repere(dessin, Repere::Sens::Vertical, relief ? ReculAires : 0);
  const std::vector<Etape> etapes = AvecZeros(Etapes(dessin, repere), repere.Echelle());
  // One surface after the other, each on one side of zero.
  for (std::size_t debut = 0; debut + 1 < etapes.size();) {
    std::size_t fin = debut + 1;
    const bool negative = etapes[debut].valeur < 0 || etapes[fin].valeur < 0;
    const auto meme = [&](const Etape& e) { return negative ? e.valeur <= 0 : e.valeur >= 0; };
    while (fin + 1 < etapes.size() && etapes[fin].valeur != 0 && meme(etapes[fin + 1])) ++fin;
    assert(fin > debut && fin < etapes.size());
    std::vector<PointForme> face{repere.Place(etapes[debut].travers, 0)};
    for (std::size_t i = debut; i <= fin; ++i)
      if (etapes[i].valeur != 0) face.push_back(repere.Place(etapes[i].travers, etapes[i].valeur));
    face.push_back(repere.Place(etapes[fin].travers, 0));
    if (face.size() >= 3) dessin.Corps(face, repere.Profondeur(), EncreValeur(negative ? -1 : 1), -1);
    debut = fin;
  }
  repere.LigneZero();
  if (!relief)
    for (std::size_t i = 0; i < dessin.Nombre(); ++i) Marque(dessin, repere, i, RayonMarque);
}

void DessineCourbes(Dessinateur& dessin, bool relief) {
  Repere repere(dessin, Repere::Sens::Vertical, relief ? ReculCourbes : 0);
  const std::vector<Etape> etapes = Etapes(dessin, repere);
  repere.LigneZero();
  for (std::size_t i = 1; i < etapes.size(); ++i) {
    const Etape &a = etapes[i - 1], &b = etapes[i];
    const PointForme pa = repere.Place(a.travers, a.valeur), pb = repere.Place(b.travers, b.valeur);
    if (!relief) {
      dessin.Trace(pa, pb, EncreValeur(0), TraitCourbe);
      continue;
    }
    Encre encre = EncreValeur(0);
    encre.lumiere = LumierePente(pa, pb);
    dessin.Polygone(Lame(repere, a, b, DebutRuban, FinRuban), encre, -1, true);
  }
  if (!relief)
    for (std::size_t i = 0; i < dessin.Nombre(); ++i) Marque(dessin, repere, i, RayonMarque);
}

void DessineNuage(Dessinateur& dessin) {
  Repere repere(dessin, Repere::Sens::Vertical, 0);
  repere.LigneZero();
  for (std::size_t i = 0; i < dessin.Nombre(); ++i) Marque(dessin, repere, i, RayonPoint);
}

void DessineSurface(Dessinateur& dessin) {
  Repere repere(dessin, Repere::Sens::Vertical, ReculNappe, ReculNappeMax);
  const std::vector<Etape> etapes = Etapes(dessin, repere);
  const PointForme prof = repere.Profondeur();
  for (std::size_t i = 1; i < etapes.size(); ++i) {
    const std::vector<Etape> morceaux = Coupe(etapes[i - 1], etapes[i], repere.Echelle().pas);
    for (std::size_t m = 1; m < morceaux.size(); ++m) {
      const f64 valeur = (morceaux[m - 1].valeur + morceaux[m].valeur) / 2;
      dessin.Polygone(Lame(repere, morceaux[m - 1], morceaux[m], 0, 1), EncreBande(repere.Echelle(), valeur));
    }
    const PointForme a = repere.Place(etapes[i - 1].travers, etapes[i - 1].valeur);
    const PointForme b = repere.Place(etapes[i].travers, etapes[i].valeur);
    for (int rang = 0; rang <= RangsNappe; ++rang) {
      const f64 part = static_cast<f64>(rang) / RangsNappe;
      const PointForme recul{prof.x * part, prof.y * part};
      dessin.Trace(a + recul, b + recul, {TeinteAxe});
    }
    dessin.Trace(a, a + prof, {TeinteAxe});
    if (i + 1 == etapes.size()) dessin.Trace(b, b + prof, {TeinteAxe});
  }
  repere.LigneZero();
}

}  // namespace fenlor
