// The lock of a practice, "fenlor.ver": held by one session at a time, given
// back by the system when the process ends, however it ends.
#pragma once

#include <memory>
#include <string>

#include "store/systeme.h"

namespace fenlor {

class Verrou {
 public:
  /// 0, ErrOccupe (then `Detenteur` tells who), or errno.
  int Prend(Systeme& systeme, const std::string& dossier);
  void Rend();
  bool EstPris() const { return m_fichier != nullptr; }
  const std::string& Detenteur() const { return m_detenteur; }

 private:
  std::unique_ptr<Fichier> m_fichier;
  std::string m_detenteur;
};

}  // namespace fenlor
