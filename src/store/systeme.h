// The operating system as the store sees it: every access to a disk file goes
// through this interface, so that tests can put a failing or a crashing disk
// in its place. Each operation returns errno's value, 0 when it succeeded.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

/// Identity of a file's content: changes whenever somebody writes the file.
struct Empreinte {
  u64 noeud = 0;
  u64 taille = 0;
  i64 secondes = 0;
  i64 nanosecondes = 0;
  u64 liens = 0;  ///< names that the file has
  bool operator==(const Empreinte&) const = default;
};

/// An open file. Closed by its destructor.
class Fichier {
 public:
  virtual ~Fichier() = default;
  /// Reads exactly `taille` bytes, or fewer at the end of the file: `lus` tells.
  virtual int Lit(void* tampon, std::size_t taille, u64 offset, std::size_t& lus) = 0;
  /// Writes all bytes or fails; a short write is gone on with.
  virtual int Ecrit(const void* tampon, std::size_t taille, u64 offset) = 0;
  /// Makes data and size durable (fdatasync).
  virtual int Synchronise() = 0;
  virtual int Tronque(u64 taille) = 0;
  /// Reserves disk space for bytes `debut` to `fin`, so that writing them cannot
  /// meet a full disk; the file grows and the new bytes read as 0.
  virtual int Reserve(u64 debut, u64 fin) = 0;
  virtual int Mesure(Empreinte& empreinte) = 0;
  /// Descriptor for a read-only mapping of the file.
  virtual int Descripteur() const = 0;
  /// ErrAltere when the file has lost its name or is shorter than `taille`.
  int Tient(u64 taille);
};

class Systeme {
 public:
  enum Ouverture { Lecture, LectureEcriture, Creation /**< new or emptied, 0600 */ };

  virtual ~Systeme() = default;
  virtual int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) = 0;
  virtual int Mesure(const std::string& chemin, Empreinte& empreinte) = 0;
  virtual int Renomme(const std::string& de, const std::string& vers) = 0;
  virtual int Supprime(const std::string& chemin) = 0;
  /// Makes the names in a directory durable.
  virtual int SynchroniseDossier(const std::string& dossier) = 0;
  /// Creates one directory, readable by its owner alone (0700).
  virtual int CreeDossier(const std::string& dossier) = 0;
  virtual int SupprimeDossier(const std::string& dossier) = 0;
  /// Names in a directory, without "." and "..".
  virtual int Liste(const std::string& dossier, std::vector<std::string>& noms) = 0;

  /// False only when nothing bears that name: a disk that does not answer says
  /// nothing about a file, which must then not be made anew.
  bool Existe(const std::string& chemin);
};

/// The real one. It holds no state.
class SystemePosix : public Systeme {
 public:
  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override;
  int Mesure(const std::string& chemin, Empreinte& empreinte) override;
  int Renomme(const std::string& de, const std::string& vers) override;
  int Supprime(const std::string& chemin) override;
  int SynchroniseDossier(const std::string& dossier) override;
  int CreeDossier(const std::string& dossier) override;
  int SupprimeDossier(const std::string& dossier) override;
  int Liste(const std::string& dossier, std::vector<std::string>& noms) override;
};

/// Another one, which refuses (EROFS) to change anything in a folder once it was told to: a practice that is
/// opened to be read stays as it is, whatever the disk would allow.
class SystemeGarde : public Systeme {
 public:
  /// `systeme` outlives the object.
  explicit SystemeGarde(Systeme& systeme) : m_systeme(systeme) {}
  /// Empty: everything may be changed.
  void Garde(const std::string& dossier);

  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override;
  int Mesure(const std::string& chemin, Empreinte& empreinte) override;
  int Renomme(const std::string& de, const std::string& vers) override;
  int Supprime(const std::string& chemin) override;
  int SynchroniseDossier(const std::string& dossier) override;
  int CreeDossier(const std::string& dossier) override;
  int SupprimeDossier(const std::string& dossier) override;
  int Liste(const std::string& dossier, std::vector<std::string>& noms) override;

 private:
  bool EstGarde(const std::string& chemin) const;
  Systeme& m_systeme;
  std::string m_dossier;
};

/// "dossier/nom".
std::string Joint(const std::string& dossier, const std::string& nom);
/// Everything before the last separator; "." when there is none.
std::string DossierDe(const std::string& chemin);

/// French text of an errno value, Windows-1252: "Aucun espace disponible sur le
/// périphérique" for ENOSPC. Independent of the locale.
std::string TexteErreurSysteme(int erreur);

}  // namespace fenlor
