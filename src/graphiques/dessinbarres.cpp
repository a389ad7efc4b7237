#include "graphiques/dessinateur.h"

namespace fenlor {

namespace {

constexpr f64 PartBarre = 0.7;  ///< of its slot
constexpr f64 ReculBarre = 0.5;

}  // namespace

void DessineBarres(Dessinateur& dessin, Repere::Sens sens, bool relief) {
  Repere repere(dessin, sens, relief ? ReculBarre : 0);
  const std::size_t nombre = dessin.Nombre();
  for (std::size_t n = 0; n < nombre; ++n) {
    // Bodies reach back to the right and upward: the left one, and the lower one, lies behind.
    const std::size_t i = sens == Repere::Sens::Vertical ? n : nombre - 1 - n;
    const f64 valeur = dessin.Valeur(i);
    if (valeur != 0)
      dessin.Corps(repere.Barre(i, PartBarre), repere.Profondeur(), EncreValeur(valeur), static_cast<int>(i));
  }
  repere.LigneZero();
}

}  // namespace fenlor
