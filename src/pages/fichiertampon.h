// A temporary file of the session: appended to through a buffer, read back from any
// place, gone with the object.
#pragma once

#include <string>
#include <string_view>

#include "store/qvapi.h"

namespace fenlor {

/// Takes a new name in the system's temporary directory: an empty file that its owner alone can read. Empty
/// when there can be none.
std::string NomTemporaire();

class FichierTampon {
 public:
  /// The store outlives the object.
  explicit FichierTampon(QVAPI& magasin) : m_magasin(magasin) {}
  ~FichierTampon() { Ferme(); }
  FichierTampon(const FichierTampon&) = delete;
  FichierTampon& operator=(const FichierTampon&) = delete;

  /// Makes and opens an empty file in the system's temporary directory that its owner alone can read and
  /// that has no name: nothing is left of it, however the program ends. One that was open is gone first.
  bool Cree();
  /// Closes and deletes.
  void Ferme();
  bool EstOuvert() const { return m_poignee >= 0; }
  u64 Taille() const { return m_ecrits + m_tampon.size(); }  ///< bytes appended so far

  // False from the first failure on: what the file holds is then not to be trusted.
  bool Ajoute(std::string_view octets);
  bool Vide();  ///< what is buffered goes to the disk
  /// The store's sentence on the first failure of `Ajoute` or `Vide`; empty: none.
  const std::string& Echec() const { return m_echec; }

  struct Lecture {
    bool placee = false;  ///< the offset was reached
    bool lue = false;     ///< all bytes were read
  };
  /// Reads `taille` bytes at an offset; a file that ends before that was not read, and
  /// `tampon` holds what could be had.
  Lecture Lit(u64 offset, char* tampon, u32 taille);

 private:
  bool Echoue();

  QVAPI& m_magasin;
  int m_poignee = -1;
  std::string m_tampon;
  u64 m_ecrits = 0;
  bool m_deplace = false;  ///< the file's position is not at its end
  std::string m_echec;
};

}  // namespace fenlor
