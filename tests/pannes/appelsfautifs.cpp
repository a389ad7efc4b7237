// A library to load in front of a program (LD_PRELOAD): its calls of the system that touch files below
// FENLOR_APPEL_DOSSIER, or its standard output, are counted, and the one of the number FENLOR_APPEL (from 1)
// fails, with FENLOR_APPEL_TOUJOURS all those behind it too. FENLOR_APPEL_COMPTE names a file that gets the
// count.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <bitset>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

std::bitset<1024> suivis;  // descriptors of files below the folder
long compte = 0;

const char* Variable(const char* nom) {
  const char* valeur = std::getenv(nom);
  return valeur && *valeur ? valeur : nullptr;
}

bool Passe() {
  static const char* texte = Variable("FENLOR_APPEL");
  static const long rang = texte ? std::atol(texte) : 0;
  static const bool toujours = Variable("FENLOR_APPEL_TOUJOURS") != nullptr;
  ++compte;
  return rang > 0 && (compte == rang || (toujours && compte > rang));
}

bool Dessous(const char* chemin) {
  static const char* dossier = Variable("FENLOR_APPEL_DOSSIER");
  return dossier && chemin && std::strstr(chemin, dossier);
}

bool Suivi(int descripteur) {
  return descripteur == STDOUT_FILENO || (descripteur >= 0 && descripteur < 1024 && suivis[descripteur]);
}

template <class F>
F* Vrai(const char* nom) {
  return reinterpret_cast<F*>(dlsym(RTLD_NEXT, nom));
}

__attribute__((destructor)) void Rend() {
  const char* nom = Variable("FENLOR_APPEL_COMPTE");
  if (!nom) return;
  if (std::FILE* fichier = std::fopen(nom, "w")) {
    std::fprintf(fichier, "%ld\n", compte);
    std::fclose(fichier);
  }
}

}  // namespace

#define FAUTE(condition, erreur, echec) \
  if ((condition) && Passe()) return errno = (erreur), (echec)

extern "C" {
int open(const char* chemin, int mode, ...) {
  va_list suite;
  va_start(suite, mode);
  const mode_t droits = va_arg(suite, unsigned);
  va_end(suite);
  const bool suivi = Dessous(chemin);
  FAUTE(suivi, mode & O_CREAT ? ENOSPC : EMFILE, -1);
  const int descripteur = Vrai<int(const char*, int, ...)>("open")(chemin, mode, droits);
  if (descripteur >= 0 && descripteur < 1024) suivis[descripteur] = suivi;
  return descripteur;
}
DIR* opendir(const char* chemin) {
  FAUTE(Dessous(chemin), EMFILE, nullptr);
  return Vrai<decltype(opendir)>("opendir")(chemin);
}
int unlink(const char* chemin) {
  FAUTE(Dessous(chemin), EACCES, -1);
  return Vrai<decltype(unlink)>("unlink")(chemin);
}
int rmdir(const char* chemin) {
  FAUTE(Dessous(chemin), EACCES, -1);
  return Vrai<decltype(rmdir)>("rmdir")(chemin);
}
int fsync(int d) {
  FAUTE(Suivi(d), EIO, -1);
  return Vrai<decltype(fsync)>("fsync")(d);
}
int fdatasync(int d) {
  FAUTE(Suivi(d), EIO, -1);
  return Vrai<decltype(fdatasync)>("fdatasync")(d);
}
ssize_t pread(int d, void* tampon, size_t taille, off_t place) {
  FAUTE(Suivi(d), EIO, -1);
  return Vrai<decltype(pread)>("pread")(d, tampon, taille, place);
}
ssize_t pwrite(int d, const void* tampon, size_t taille, off_t place) {
  FAUTE(Suivi(d), ENOSPC, -1);
  return Vrai<decltype(pwrite)>("pwrite")(d, tampon, taille, place);
}
int ftruncate(int d, off_t taille) {
  FAUTE(Suivi(d), EIO, -1);
  return Vrai<decltype(ftruncate)>("ftruncate")(d, taille);
}
int posix_fallocate(int d, off_t debut, off_t taille) {
  FAUTE(Suivi(d), 0, ENOSPC);
  return Vrai<decltype(posix_fallocate)>("posix_fallocate")(d, debut, taille);
}
void* mmap(void* a, size_t taille, int protection, int mode, int d, off_t place) {
  FAUTE(d >= 0 && Suivi(d), ENOMEM, MAP_FAILED);
  return Vrai<decltype(mmap)>("mmap")(a, taille, protection, mode, d, place);
}
off_t lseek(int d, off_t place, int depuis) {
  FAUTE(d != STDOUT_FILENO && Suivi(d), EIO, -1);
  return Vrai<decltype(lseek)>("lseek")(d, place, depuis);
}
int close(int d) {
  if (d >= 0 && d < 1024) suivis[d] = false;
  return Vrai<decltype(close)>("close")(d);
}
ssize_t read(int d, void* tampon, size_t taille) {
  FAUTE(Suivi(d), EIO, -1);
  return Vrai<decltype(read)>("read")(d, tampon, taille);
}
ssize_t write(int d, const void* tampon, size_t taille) {
  FAUTE(Suivi(d), ENOSPC, -1);
  return Vrai<decltype(write)>("write")(d, tampon, taille);
}
ssize_t writev(int d, const iovec* morceaux, int nombre) {
  FAUTE(Suivi(d), ENOSPC, -1);
  return Vrai<decltype(writev)>("writev")(d, morceaux, nombre);
}
ssize_t pwritev(int d, const iovec* morceaux, int nombre, off_t place) {
  FAUTE(Suivi(d), ENOSPC, -1);
  return Vrai<decltype(pwritev)>("pwritev")(d, morceaux, nombre, place);
}
int flock(int d, int mode) {
  FAUTE(Suivi(d), ENOLCK, -1);
  return Vrai<decltype(flock)>("flock")(d, mode);
}
int mkdir(const char* chemin, mode_t mode) {
  FAUTE(Dessous(chemin), ENOSPC, -1);
  return Vrai<decltype(mkdir)>("mkdir")(chemin, mode);
}
int rename(const char* de, const char* vers) {
  FAUTE(Dessous(de), ENOSPC, -1);
  return Vrai<decltype(rename)>("rename")(de, vers);
}
int stat(const char* chemin, struct stat* s) {
  FAUTE(Dessous(chemin), EIO, -1);
  return Vrai<int(const char*, struct stat*)>("stat")(chemin, s);
}
int fstat(int d, struct stat* s) {
  FAUTE(d != STDOUT_FILENO && Suivi(d), EIO, -1);
  return Vrai<int(int, struct stat*)>("fstat")(d, s);
}
void* mremap(void* a, size_t de, size_t vers, int mode, ...) {
  FAUTE(mode == MREMAP_MAYMOVE && de >= size_t{16} << 20, ENOMEM, MAP_FAILED);
  return Vrai<void*(void*, size_t, size_t, int, ...)>("mremap")(a, de, vers, mode);
}
}
