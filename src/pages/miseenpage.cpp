#include "pages/miseenpage.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "core/valeurs.h"

namespace fenlor {

namespace {

constexpr std::size_t tailleReglage = 80;
constexpr i32 pointsMax = 400;

}  // namespace

ReglagePolice LitPoliceImpressions(std::string_view reglage, StylePapier style) {
  reglage = reglage.substr(0, tailleReglage);
  ReglagePolice police{DessinDe(style).face, DessinDe(style).points};
  const std::string face = ChampTexte(0, reglage, ',');
  if (!EstVide(face)) police.face = face;
  if (const int points = TexteVersEntier(ChampTexte(1, reglage, ',')); points > 0)
    police.points = std::min(points, pointsMax);
  return police;
}

MiseEnPage PreparePage(Peripherique& peripherique, const ReglagePolice& police, bool brouillon, bool portrait,
                       StylePapier style) {
  MiseEnPage page{peripherique.Largeur(), peripherique.Hauteur()};
  if (!portrait) std::swap(page.largeur, page.hauteur);
  if (brouillon) {
    peripherique.FaitPoliceBrouillon();
  } else {
    const i32 hauteur = police.points * peripherique.UnitesParPouce() / pointsParPouce;
    for (unsigned style = 0; style < NbStyles; ++style) {
      peripherique.FaitPolice(style, {police.face, std::max(1, hauteur), style & StyleGras ? 700 : 400,
                                      (style & StyleItalique) != 0, (style & StyleSouligne) != 0});
    }
  }
  page.unite = page.largeur / ColonnesPage;
  page.style = style;
  const i32 hauteur = peripherique.HauteurPolice(NbStyles - 1);
  const i32 interligne = DessinDe(style).interligne;
  page.interligne = interligne ? std::max(1, hauteur * interligne / 100) : hauteur + 1;
  assert(page.interligne > 0);
  page.lignesParPage = page.hauteur / page.interligne;
  return page;
}

}  // namespace fenlor
