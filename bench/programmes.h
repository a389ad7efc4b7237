// Other programs, run by a measure.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "mesures.h"

extern char** environ;

namespace fenlor::bench {

inline std::string Moi() { return std::filesystem::read_symlink("/proc/self/exe").string(); }

/// Runs a program and returns its standard output; ends the benchmark when it fails.
inline std::string Lance(const std::vector<std::string>& arguments, const std::string& entree = "/dev/null",
                         const std::string& sortie = {}) {
  int tube[2];
  if (pipe(tube) != 0) Echec("pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, entree.c_str(), O_RDONLY, 0);
  if (sortie.empty())
    posix_spawn_file_actions_adddup2(&actions, tube[1], 1);
  else
    posix_spawn_file_actions_addopen(&actions, 1, sortie.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addclose(&actions, tube[0]);
  posix_spawn_file_actions_addclose(&actions, tube[1]);
  std::vector<char*> argv;
  for (const auto& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  pid_t enfant = 0;
  if (posix_spawn(&enfant, argv[0], &actions, nullptr, argv.data(), environ) != 0)
    Echec("cannot run " + arguments[0]);
  posix_spawn_file_actions_destroy(&actions);
  close(tube[1]);
  std::string texte;
  char tampon[4096];
  for (ssize_t n; (n = read(tube[0], tampon, sizeof tampon)) > 0;)
    texte.append(tampon, static_cast<std::size_t>(n));
  close(tube[0]);
  int etat = 0;
  waitpid(enfant, &etat, 0);
  if (!WIFEXITED(etat) || WEXITSTATUS(etat) != 0) Echec(arguments[0] + " failed");
  return texte;
}

inline std::string Fenlorctl() { return (std::filesystem::path(Moi()).parent_path() / "fenlorctl").string(); }

/// A program that answers each line of its input with one of its output.
class Repondeur {
 public:
  explicit Repondeur(const std::vector<std::string>& arguments) {
    int vers[2], retour[2];
    if (pipe2(vers, O_CLOEXEC) != 0 || pipe2(retour, O_CLOEXEC) != 0) Echec("pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, vers[0], 0);
    posix_spawn_file_actions_adddup2(&actions, retour[1], 1);
    std::vector<char*> argv;
    for (const auto& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    if (posix_spawn(&m_enfant, argv[0], &actions, nullptr, argv.data(), environ) != 0)
      Echec("cannot run " + arguments[0]);
    posix_spawn_file_actions_destroy(&actions);
    close(vers[0]);
    close(retour[1]);
    m_entree = vers[1];
    m_sortie = retour[0];
  }
  ~Repondeur() {
    close(m_entree);
    close(m_sortie);
    waitpid(m_enfant, nullptr, 0);
  }
  /// Ends it as a failing machine does.
  void Tue() { kill(m_enfant, SIGKILL); }
  Repondeur(const Repondeur&) = delete;
  Repondeur& operator=(const Repondeur&) = delete;
  /// The answer, its end included.
  std::string operator()(const std::string& ligne) {
    if (write(m_entree, ligne.data(), ligne.size()) != static_cast<ssize_t>(ligne.size())) Echec("write");
    std::string texte;
    char tampon[4096];
    while (texte.empty() || texte.back() != '\n') {
      const ssize_t n = read(m_sortie, tampon, sizeof tampon);
      if (n <= 0) Echec("no answer");
      texte.append(tampon, static_cast<std::size_t>(n));
    }
    return texte;
  }

 private:
  pid_t m_enfant = 0;
  int m_entree = -1, m_sortie = -1;
};

}  // namespace fenlor::bench
