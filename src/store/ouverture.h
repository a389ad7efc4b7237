// An indexed file of the store held open.
#pragma once

#include <utility>

#include "store/qvapi.h"

namespace fenlor {

class Ouverture {
 public:
  /// Holds nothing.
  Ouverture() = default;
  /// Opens by file number in a directory, by default that of the open exercice, or of
  /// the practice for the files it owns. Nothing is held when the store refuses:
  /// `QVFileErrorCode` says why. To be made before a unit of work begins: a file
  /// cannot change its place inside one.
  Ouverture(QVAPI& magasin, u16 numFichier, const std::string& dossier = {})
      : m_magasin(&magasin), m_numero(numFichier), m_poignee(magasin.OpenFichier(numFichier, dossier)) {}
  /// Closes; the error of the work done meanwhile stays the store's last one.
  ~Ouverture() {
    if (m_poignee == 0) return;
    const int erreur = m_magasin->QVFileErrorCode();
    if (!m_magasin->CloseFichier(m_numero, m_poignee) && erreur != 0) m_magasin->PoseErreur(erreur);
  }
  Ouverture(Ouverture&& autre) noexcept { *this = std::move(autre); }
  Ouverture& operator=(Ouverture&& autre) noexcept {
    std::swap(m_magasin, autre.m_magasin);
    std::swap(m_numero, autre.m_numero);
    std::swap(m_poignee, autre.m_poignee);
    return *this;
  }
  explicit operator bool() const { return m_poignee != 0; }
  u32 Poignee() const { return m_poignee; }

 private:
  QVAPI* m_magasin = nullptr;
  u16 m_numero = 0;
  u32 m_poignee = 0;
};

}  // namespace fenlor
