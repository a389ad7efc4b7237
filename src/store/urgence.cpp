#include "store/urgence.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <new>

namespace fenlor {

namespace {

constexpr char MessagePage[] =
    "ne peut plus être lu : un autre programme l'a raccourci, ou le disque est défaillant. Fenlor "
    "s'arrête.\n";
constexpr char MessageMemoire[] = "Erreur 3442 : plus assez de mémoire. Fenlor s'arrête.\n";

char cheminNote[4096];

// Only what a signal handler may call from here on.

void Ecrit(int flux, const char* texte, std::size_t taille) {
  while (taille > 0) {
    const ssize_t n = ::write(flux, texte, taille);
    if (n <= 0) return;
    texte += n;
    taille -= static_cast<std::size_t>(n);
  }
}

[[noreturn]] void Finit(const char* texte, std::size_t taille) {
  Ecrit(STDERR_FILENO, texte, taille);
  if (cheminNote[0]) {
    const int note = ::open(cheminNote, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (note >= 0) Ecrit(note, texte, taille);
  }
  ::_exit(1);
}

std::uintptr_t LitHexa(const char*& place) {
  std::uintptr_t valeur = 0;
  for (;; ++place) {
    const char c = *place;
    if (c >= '0' && c <= '9')
      valeur = valeur << 4 | static_cast<unsigned>(c - '0');
    else if (c >= 'a' && c <= 'f')
      valeur = valeur << 4 | static_cast<unsigned>(c - 'a' + 10);
    else
      return valeur;
  }
}

/// Puts the line "debut-fin ... chemin" of the mapping that holds the address into `ligne`; the path in it,
/// or null.
const char* FichierDe(std::uintptr_t adresse, char* ligne, std::size_t capacite) {
  const int cartes = ::open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
  if (cartes < 0) return nullptr;
  std::size_t n = 0;
  for (char c; ::read(cartes, &c, 1) == 1;) {
    if (c != '\n') {
      if (n + 1 < capacite) ligne[n++] = c;
      continue;
    }
    ligne[n] = 0;
    n = 0;
    const char* place = ligne;
    const std::uintptr_t debut = LitHexa(place);
    const std::uintptr_t fin = *place == '-' ? LitHexa(++place) : 0;
    if (adresse >= debut && adresse < fin) return std::strchr(place, '/');
  }
  return nullptr;
}

void SurPageIllisible(int, siginfo_t* info, void*) {
  // Two helpers may meet the same damage: one tells it, the other waits for the end.
  static std::atomic_flag dite = ATOMIC_FLAG_INIT;
  while (dite.test_and_set()) ::pause();
  static char ligne[4608], texte[5120];
  const char* fichier = FichierDe(reinterpret_cast<std::uintptr_t>(info->si_addr), ligne, sizeof ligne);
  std::size_t n = 0;
  for (const char* morceau : {"Erreur 3441 : le fichier ", fichier ? fichier : "?", " ", MessagePage}) {
    const std::size_t taille = std::strlen(morceau);
    std::memcpy(texte + n, morceau, taille);
    n += taille;
  }
  Finit(texte, n);
}

/// Whoever can do without the memory has caught its lack before.
[[noreturn]] void SansIssue() {
  try {
    if (const std::exception_ptr cause = std::current_exception()) std::rethrow_exception(cause);
  } catch (const std::bad_alloc&) {
    Finit(MessageMemoire, sizeof MessageMemoire - 1);
  } catch (...) {
  }
  std::abort();
}

}  // namespace

void InstalleUrgences(const std::string& note) {
  if (note.size() < sizeof cheminNote) std::memcpy(cheminNote, note.c_str(), note.size() + 1);
  struct sigaction action {};
  action.sa_sigaction = SurPageIllisible;
  action.sa_flags = SA_SIGINFO;
  sigaction(SIGBUS, &action, nullptr);
  std::signal(SIGXFSZ, SIG_IGN);
  std::set_terminate(SansIssue);
}

std::string PrendNote(const std::string& note) {
  std::ifstream flux(note, std::ios::binary);
  const std::string texte{std::istreambuf_iterator<char>(flux), {}};
  if (flux.is_open()) ::unlink(note.c_str());
  return texte;
}

}  // namespace fenlor
