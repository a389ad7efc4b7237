#include "graphiques/formes.h"

#include <cassert>
#include <cmath>

namespace fenlor {

namespace {

/// Thousandths of the font's height.
int Chasse(char c) {
  constexpr std::string_view etroits = "ijl.,:;!'|I \xA0()";
  constexpr std::string_view larges = "mwMW%@\x8C\x9C";
  if (etroits.find(c) != std::string_view::npos) return 340;
  if (larges.find(c) != std::string_view::npos) return 980;
  if ((c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0xC0) return 720;
  return 636;
}

}  // namespace

f64 MesureTable::Largeur(std::string_view texte, f64 hauteur, bool gras) const {
  int milliemes = 0;
  for (const char c : texte) milliemes += Chasse(c);
  return milliemes * hauteur * (gras ? 1.1 : 1.0) / 1000;
}

CadreForme CadreTexte(const Forme& texte, const MesureTexte& mesure) {
  assert(texte.sorte == SorteForme::Texte && texte.points.size() == 1);
  const f64 largeur = mesure.Largeur(texte.texte, texte.hauteur, texte.gras);
  const f64 montee = MonteeTexte * texte.hauteur, descente = DescenteTexte * texte.hauteur;
  const f64 avant = texte.cote == Cote::Gauche ? 0 : texte.cote == Cote::Droite ? largeur : largeur / 2;
  const PointForme p = texte.points.front();
  if (texte.debout) return {p.x - montee, p.y - (largeur - avant), p.x + descente, p.y + avant};
  return {p.x - avant, p.y - montee, p.x - avant + largeur, p.y + descente};
}

bool Contient(const std::vector<PointForme>& polygone, PointForme p) {
  assert(polygone.size() >= 3);
  bool dedans = false;
  for (std::size_t i = 0, j = polygone.size() - 1; i < polygone.size(); j = i++) {
    const PointForme a = polygone[i], b = polygone[j];
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) dedans = !dedans;
  }
  return dedans;
}

f64 Aire(const std::vector<PointForme>& polygone) {
  assert(polygone.size() >= 3);
  f64 double_ = 0;
  for (std::size_t i = 0, j = polygone.size() - 1; i < polygone.size(); j = i++)
    double_ += polygone[j].x * polygone[i].y - polygone[i].x * polygone[j].y;
  return std::abs(double_) / 2;
}

}  // namespace fenlor
