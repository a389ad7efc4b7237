#include "store/systeme.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <limits>

#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u64 OffsetMaximal = static_cast<u64>(std::numeric_limits<off_t>::max());

bool DepasseOffset(u64 offset, u64 taille) {
  return offset > OffsetMaximal || taille > OffsetMaximal - offset;
}

void Remplit(const struct stat& s, Empreinte& empreinte) {
  empreinte.noeud = s.st_ino;
  empreinte.taille = static_cast<u64>(s.st_size);
  empreinte.secondes = s.st_mtim.tv_sec;
  empreinte.nanosecondes = s.st_mtim.tv_nsec;
  empreinte.liens = s.st_nlink;
}

class FichierPosix : public Fichier {
 public:
  explicit FichierPosix(int descripteur) : m_descripteur(descripteur) { assert(descripteur >= 0); }
  ~FichierPosix() override { ::close(m_descripteur); }
  FichierPosix(const FichierPosix&) = delete;
  FichierPosix& operator=(const FichierPosix&) = delete;

  int Lit(void* tampon, std::size_t taille, u64 offset, std::size_t& lus) override {
    assert(tampon || taille == 0);
    lus = 0;
    if (DepasseOffset(offset, taille)) return EINVAL;
    while (lus < taille) {
      const ssize_t n = ::pread(m_descripteur, static_cast<char*>(tampon) + lus, taille - lus,
                                static_cast<off_t>(offset + lus));
      if (n < 0) {
        if (errno == EINTR) continue;
        return errno;
      }
      if (n == 0) break;
      lus += static_cast<std::size_t>(n);
    }
    return 0;
  }

  int Ecrit(const void* tampon, std::size_t taille, u64 offset) override {
    assert(tampon || taille == 0);
    if (DepasseOffset(offset, taille)) return EFBIG;
    std::size_t faits = 0;
    while (faits < taille) {
      const ssize_t n = ::pwrite(m_descripteur, static_cast<const char*>(tampon) + faits, taille - faits,
                                 static_cast<off_t>(offset + faits));
      if (n < 0) {
        if (errno == EINTR) continue;
        return errno;
      }
      if (n == 0) return EIO;
      faits += static_cast<std::size_t>(n);
    }
    assert(faits == taille);
    return 0;
  }

  int Synchronise() override {
    while (::fdatasync(m_descripteur) != 0) {
      if (errno != EINTR) return errno;
    }
    return 0;
  }

  int Tronque(u64 taille) override {
    if (taille > OffsetMaximal) return EFBIG;
    while (::ftruncate(m_descripteur, static_cast<off_t>(taille)) != 0) {
      if (errno != EINTR) return errno;
    }
    return 0;
  }

  int Reserve(u64 debut, u64 fin) override {
    if (fin <= debut) return 0;
    if (fin > OffsetMaximal) return EFBIG;
    int erreur;
    do {
      erreur = ::posix_fallocate(m_descripteur, static_cast<off_t>(debut), static_cast<off_t>(fin - debut));
    } while (erreur == EINTR);
    return erreur == EOPNOTSUPP || erreur == EINVAL ? Reecrit(debut, fin) : erreur;
  }

  int Mesure(Empreinte& empreinte) override {
    struct stat s;
    if (::fstat(m_descripteur, &s) != 0) return errno;
    Remplit(s, empreinte);
    return 0;
  }

  int Descripteur() const override { return m_descripteur; }

 private:
  // Where the file system cannot reserve, writing what is read there (zeroes in
  // a hole and past the end) is what makes it give the space.
  int Reecrit(u64 debut, u64 fin) {
    assert(debut < fin);
    std::vector<char> bloc(static_cast<std::size_t>(std::min<u64>(fin - debut, 1u << 16)));
    for (u64 place = debut; place < fin;) {
      const std::size_t n = static_cast<std::size_t>(std::min<u64>(fin - place, bloc.size()));
      std::size_t lus = 0;
      if (const int erreur = Lit(bloc.data(), n, place, lus)) return erreur;
      std::fill(bloc.begin() + static_cast<std::ptrdiff_t>(lus), bloc.end(), '\0');
      if (const int erreur = Ecrit(bloc.data(), n, place)) return erreur;
      place += n;
    }
    return 0;
  }

  int m_descripteur;
};

}  // namespace

int SystemePosix::Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) {
  fichier.reset();
  int drapeaux = O_CLOEXEC;
  if (mode == Lecture) drapeaux |= O_RDONLY;
  if (mode == LectureEcriture) drapeaux |= O_RDWR;
  if (mode == Creation) drapeaux |= O_RDWR | O_CREAT | O_TRUNC;
  int descripteur;
  do {
    descripteur = ::open(chemin.c_str(), drapeaux, 0600);
  } while (descripteur < 0 && errno == EINTR);
  if (descripteur < 0) return errno;
  fichier = std::make_unique<FichierPosix>(descripteur);
  return 0;
}

int SystemePosix::Mesure(const std::string& chemin, Empreinte& empreinte) {
  struct stat s;
  if (::stat(chemin.c_str(), &s) != 0) return errno;
  Remplit(s, empreinte);
  return 0;
}

int SystemePosix::Renomme(const std::string& de, const std::string& vers) {
  assert(!de.empty() && !vers.empty());
  return ::rename(de.c_str(), vers.c_str()) == 0 ? 0 : errno;
}

int SystemePosix::Supprime(const std::string& chemin) {
  assert(!chemin.empty());
  return ::unlink(chemin.c_str()) == 0 ? 0 : errno;
}

int SystemePosix::SynchroniseDossier(const std::string& dossier) {
  int descripteur;
  do {
    descripteur = ::open(dossier.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  } while (descripteur < 0 && errno == EINTR);
  if (descripteur < 0) return errno;
  int erreur = 0;
  while (::fsync(descripteur) != 0) {
    if (errno == EINTR) continue;
    // Some network and removable file systems have no such operation: their
    // names are as durable as they will ever be.
    erreur = errno == EINVAL || errno == ENOSYS ? 0 : errno;
    break;
  }
  ::close(descripteur);
  return erreur;
}

int SystemePosix::CreeDossier(const std::string& dossier) {
  return ::mkdir(dossier.c_str(), 0700) == 0 ? 0 : errno;
}

int SystemePosix::SupprimeDossier(const std::string& dossier) {
  return ::rmdir(dossier.c_str()) == 0 ? 0 : errno;
}

int SystemePosix::Liste(const std::string& dossier, std::vector<std::string>& noms) {
  noms.clear();
  DIR* flux = ::opendir(dossier.c_str());
  if (!flux) return errno;
  int erreur = 0;
  for (;;) {
    errno = 0;
    const dirent* entree = ::readdir(flux);
    if (!entree) {
      erreur = errno;
      break;
    }
    std::string nom = entree->d_name;
    if (nom != "." && nom != "..") noms.push_back(std::move(nom));
  }
  ::closedir(flux);
  return erreur;
}

int Fichier::Tient(u64 taille) {
  Empreinte empreinte;
  if (const int erreur = Mesure(empreinte)) return erreur;
  return empreinte.liens == 0 || empreinte.taille < taille ? ErrAltere : 0;
}

bool Systeme::Existe(const std::string& chemin) {
  Empreinte empreinte;
  const int erreur = Mesure(chemin, empreinte);
  return erreur != ENOENT && erreur != ENOTDIR;
}

std::string Joint(const std::string& dossier, const std::string& nom) {
  if (dossier.empty()) return nom;
  return dossier.back() == '/' ? dossier + nom : dossier + '/' + nom;
}

std::string DossierDe(const std::string& chemin) {
  const std::size_t place = chemin.rfind('/');
  if (place == std::string::npos) return ".";
  return place == 0 ? "/" : chemin.substr(0, place);
}

std::string TexteErreurSysteme(int erreur) {
  switch (erreur) {
    case 0:
      return {};
    case ENOSPC:
      return "Aucun espace disponible sur le périphérique"_w;
    case EDQUOT:
      return "Quota de disque dépassé"_w;
    case EACCES:
      return "Accès refusé"_w;
    case EPERM:
      return "Opération non permise"_w;
    case EROFS:
      return "Le système de fichiers est en lecture seule"_w;
    case EIO:
      return "Erreur d'entrée ou de sortie du disque"_w;
    case ENOENT:
      return "Fichier ou répertoire introuvable"_w;
    case EEXIST:
      return "Le fichier existe déjà"_w;
    case ENOTDIR:
      return "Un élément du chemin n'est pas un répertoire"_w;
    case EISDIR:
      return "Est un répertoire"_w;
    case EMFILE:
      return "Trop de fichiers ouverts par le programme"_w;
    case ENFILE:
      return "Trop de fichiers ouverts par le système"_w;
    case EFBIG:
      return "Fichier trop volumineux"_w;
    case ENOMEM:
      return "Plus assez de mémoire"_w;
    case EBUSY:
      return "Fichier ou périphérique occupé"_w;
    case ENAMETOOLONG:
      return "Nom de fichier trop long"_w;
    case ENOTEMPTY:
      return "Le répertoire n'est pas vide"_w;
    case ELOOP:
      return "Trop de liens symboliques"_w;
    case EINVAL:
      return "Argument invalide"_w;
  }
  return "erreur système "_w + std::to_string(erreur);
}

}  // namespace fenlor
