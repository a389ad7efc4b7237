// A field of a packed record told by a pointer to it: where such a field stands is aligned for nothing.
#pragma once

#include <cstring>

namespace fenlor {

template <class Rec, class T>
T LitMembre(const Rec& rec, T Rec::*membre) {
  T valeur;
  std::memcpy(&valeur, reinterpret_cast<const char*>(&(rec.*membre)), sizeof valeur);
  return valeur;
}

template <class Rec, class T>
void PoseMembre(Rec& rec, T Rec::*membre, T valeur) {
  std::memcpy(reinterpret_cast<char*>(&(rec.*membre)), &valeur, sizeof valeur);
}

}  // namespace fenlor
