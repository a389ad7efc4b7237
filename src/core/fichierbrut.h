// Data files read as plain files: without keys, without opening the store's own, whoever has them open.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/refus.h"
#include "store/fichierdat.h"
#include "store/qvapi.h"

namespace fenlor {

/// A plain file of the store open for reading, closed with the object. The store outlives it.
class FichierBrut {
 public:
  FichierBrut(QVAPI& magasin, const std::string& chemin);
  ~FichierBrut();
  FichierBrut(const FichierBrut&) = delete;
  FichierBrut& operator=(const FichierBrut&) = delete;

  bool EstOuvert() const { return m_fichier >= 0; }
  int Poignee() const { return m_fichier; }

 private:
  QVAPI& m_magasin;
  int m_fichier;
};

/// What the newer legible copy of the header says; that of an empty file of today when none is legible (its
/// `id` is 0). Leaves the file behind the header. False: the disk did not answer.
bool LitEntete(QVAPI& magasin, int fichier, EnteteDat& entete);

/// Records of a data file of the practice, any exercice's, slot after slot, a few at a time. It sees what is
/// durable and what was written since; nothing is locked, nothing is changed.
class LecteurRecs {
 public:
  /// `dossier`: that of the exercice, or of the practice for its own files. The first byte of a record is as
  /// stored.
  LecteurRecs(QVAPI& magasin, const std::string& dossier, u16 numFichier);

  /// Hands the records of the next slots to `suite`, good for that call alone. False at the end, or when the
  /// file cannot be read (`Erreur`).
  bool Lit(u32 emplacements, const std::function<void(Position, const void*)>& suite);
  /// One record; null when there is none.
  const void* LitUn(Position position);
  /// Slots, deleted ones included.
  u32 Nombre() const { return m_nombre; }
  /// The store's reason (`QVErreurTexte`), 0 for none.
  int Erreur() const { return m_erreur; }
  const std::string& Chemin() const { return m_chemin; }

 private:
  bool Remplit(Position premiere, u32 nombre);

  QVAPI& m_magasin;
  const u16 m_numero;
  const std::string m_chemin;
  FichierBrut m_fichier;
  EnteteDat m_entete;
  u32 m_nombre = 0;
  Position m_prochaine = 1;
  int m_erreur = 0;
  std::vector<u8> m_tampon;
};

}  // namespace fenlor
