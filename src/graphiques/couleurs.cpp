#include "graphiques/couleurs.h"

#include <cassert>
#include <cmath>
#include <cstdio>

namespace fenlor {

namespace {

Rvb Melange(Rvb de, Rvb vers, f64 part) {
  assert(part >= 0 && part <= 1);
  const auto canal = [part](u8 a, u8 b) { return static_cast<u8>(std::lround(a + (b - a) * part)); };
  return {canal(de.rouge, vers.rouge), canal(de.vert, vers.vert), canal(de.bleu, vers.bleu)};
}

Rvb Teinte(const ThemeGraphique& theme, u8 teinte) {
  switch (teinte) {
    case TeinteFond:
      return theme.fond;
    case TeinteTexte:
      return theme.texte;
    case TeinteAxe:
      return Melange(theme.fond, theme.texte, 0.6);
    case TeinteGrille:
      return Melange(theme.fond, theme.texte, 0.18);
    case TeinteParoi:
      return Melange(theme.fond, theme.texte, 0.06);
    default:
      assert(teinte >= TeinteSerie);
      return CouleursSerie[static_cast<std::size_t>(teinte - TeinteSerie) % CouleursSerie.size()];
  }
}

}  // namespace

Rvb Couleur(const ThemeGraphique& theme, Encre encre) {
  assert(encre.lumiere >= -100 && encre.lumiere <= 100);
  const Rvb pure = Teinte(theme, encre.teinte);
  const Rvb vers = encre.lumiere < 0 ? Rvb{0, 0, 0} : Rvb{255, 255, 255};
  return Melange(pure, vers, std::abs(encre.lumiere) / 100.0);
}

std::string EnHexa(Rvb couleur) {
  char texte[8];
  std::snprintf(texte, sizeof texte, "#%02x%02x%02x", couleur.rouge, couleur.vert, couleur.bleu);
  return texte;
}

}  // namespace fenlor
