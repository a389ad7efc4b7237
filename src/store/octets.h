// A value among bytes, aligned for nothing.
#pragma once

#include <cstring>

namespace fenlor {

template <class T>
T LitValeur(const void* place) {
  T valeur;
  std::memcpy(&valeur, place, sizeof valeur);
  return valeur;
}

template <class T>
void PoseValeur(void* place, T valeur) {
  std::memcpy(place, &valeur, sizeof valeur);
}

}  // namespace fenlor
