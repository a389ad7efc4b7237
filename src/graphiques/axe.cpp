#include "graphiques/axe.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "core/valeurs.h"

namespace fenlor {

namespace {

constexpr f64 cent = 0.01;
constexpr std::size_t groupe = 3;
constexpr char blancDur = '\xA0';
constexpr f64 tolerance = 1e-9;  ///< of a quotient that should be whole

f64 PasRond(f64 brut) {
  assert(std::isfinite(brut) && brut > 0);
  if (brut <= cent) return cent;
  const f64 puissance = std::pow(10, std::floor(std::log10(brut) + tolerance));
  for (const f64 facteur : {1.0, 2.0, 5.0})
    if (facteur * puissance >= brut * (1 - tolerance)) return facteur * puissance;
  return 10 * puissance;
}

const char* Symbole(bool euro) { return euro ? " \x80" : " F"; }

}  // namespace

EchelleAxe FaitEchelle(f64 minimum, f64 maximum, unsigned intervalles) {
  assert(minimum <= maximum && std::isfinite(maximum - minimum));
  const f64 bas = std::min(0.0, minimum), haut = std::max(0.0, maximum);
  if (bas == haut) return {};
  EchelleAxe echelle;
  echelle.pas = PasRond((haut - bas) / std::max(1u, intervalles));
  echelle.premier = static_cast<i64>(std::floor(bas / echelle.pas + tolerance));
  echelle.dernier = static_cast<i64>(std::ceil(haut / echelle.pas - tolerance));
  assert(echelle.premier <= 0 && echelle.dernier >= 0 && echelle.premier < echelle.dernier);
  return echelle;
}

std::string TexteGraduation(f64 valeur, f64 pas, bool euro) {
  assert(pas > 0 && std::isfinite(valeur));
  const int decimales = pas < 1 - tolerance ? 2 : 0;
  std::string texte = valeur == 0 ? "0" : FormatMontant(valeur, decimales);
  const std::size_t debut = texte.front() == '-' ? 1 : 0;
  std::size_t fin = std::min(texte.find(','), texte.size());
  for (; fin > debut + groupe; fin -= groupe) texte.insert(fin - groupe, 1, blancDur);
  return texte + Symbole(euro);
}

std::string TexteValeur(f64 valeur, bool euro) {
  // What is left of a sum of cents may be less than one.
  const f64 arrondie = Arrondi2(valeur);
  if (arrondie == 0) return std::string("0,00") + Symbole(euro);
  return euro ? FormatEuro(arrondie) : FormatFranc(arrondie);
}

}  // namespace fenlor
