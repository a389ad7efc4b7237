// A field of a packed record told by a pointer to it: where such a field stands is aligned for nothing.
#pragma once

#include "store/octets.h"

namespace fenlor {

template <class Rec, class T>
T LitMembre(const Rec& rec, T Rec::*membre) {
  return LitValeur<T>(reinterpret_cast<const char*>(&(rec.*membre)));
}

template <class Rec, class T>
void PoseMembre(Rec& rec, T Rec::*membre, T valeur) {
  PoseValeur(reinterpret_cast<char*>(&(rec.*membre)), valeur);
}

}  // namespace fenlor
