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

bool Contient(const std::vector<PointForme>& polygone, PointForme p) {
  assert(polygone.size() >= 3);
  bool dedans = false;
  for (std::size_t i = 0, j = polygone.size() - 1; i < polygone.size(); j = i++) {
    const PointForme a = polygone[i], b = polygone[j];
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) dedans = !dedans;
  }
  return dedans;
}

}  // namespace fenlor
