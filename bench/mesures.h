// Clocks, medians and the table that the benchmark prints.
#pragma once

#include <errno.h>
#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace fenlor::bench {

inline double Secondes(clockid_t horloge) {
  timespec t{};
  clock_gettime(horloge, &t);
  return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

/// Seconds of wall clock that `travail` took.
template <class Travail>
double Duree(Travail&& travail) {
  const double debut = Secondes(CLOCK_MONOTONIC);
  travail();
  return Secondes(CLOCK_MONOTONIC) - debut;
}

/// Seconds of processor time of the whole process: what the system does for it counts.
template <class Travail>
double TempsProcesseur(Travail&& travail) {
  const double debut = Secondes(CLOCK_PROCESS_CPUTIME_ID);
  travail();
  return Secondes(CLOCK_PROCESS_CPUTIME_ID) - debut;
}

inline double Mediane(std::vector<double> valeurs) {
  std::sort(valeurs.begin(), valeurs.end());
  return valeurs.empty() ? 0 : valeurs[valeurs.size() / 2];
}

/// A directory of this run's own below the system's temporary one; not made yet.
inline std::string DossierDuBanc() {
  return (std::filesystem::temp_directory_path() /
          (program_invocation_short_name + ("." + std::to_string(getpid()))))
      .string();
}

/// Copies a practice for one run and syncs it: what the copying left to write is not the run's.
inline void RecopieCabinet(const std::string& modele, const std::string& cabinet) {
  std::filesystem::remove_all(cabinet);
  std::filesystem::copy(modele, cabinet, std::filesystem::copy_options::recursive);
  for (const auto& entree : std::filesystem::recursive_directory_iterator(cabinet)) {
    const int fichier = entree.is_regular_file() ? open(entree.path().c_str(), O_RDWR | O_CLOEXEC) : -1;
    if (fichier < 0) continue;
    fsync(fichier);
    close(fichier);
  }
}

/// The number at a place of the command line, or its default; ends the program with `usage` when it is none.
inline unsigned Argument(int argc, char** argv, int place, unsigned defaut, const char* usage) {
  if (argc <= place) return defaut;
  const unsigned lu = static_cast<unsigned>(std::strtoul(argv[place], nullptr, 10));
  if (lu != 0) return lu;
  std::fprintf(stderr, "%s %s\n", program_invocation_short_name, usage);
  std::exit(2);
}

/// Ends the benchmark: a measure of something that failed is worth nothing.
[[noreturn]] inline void Echec(const std::string& texte) {
  std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, texte.c_str());
  std::exit(1);
}

/// How far the true middle may be from the median of these values, in 95 runs of a hundred.
inline double Marge(std::vector<double> valeurs) {
  std::sort(valeurs.begin(), valeurs.end());
  const std::size_t n = valeurs.size();
  return n < 4 ? 0 : 1.57 * (valeurs[n * 3 / 4] - valeurs[n / 4]) / std::sqrt(static_cast<double>(n));
}

/// Two works timed in turn, the order changing from pair to pair, so that a
/// disturbance of the machine meets both. Their seconds are appended.
inline void MesurePaires(unsigned nombre, const std::function<void()>& nous,
                         const std::function<void()>& autre, std::vector<double>& tempsNous,
                         std::vector<double>& tempsAutre) {
  for (unsigned i = 0; i < nombre; ++i) {
    if (i % 2 == 0) tempsNous.push_back(Duree(nous));
    tempsAutre.push_back(Duree(autre));
    if (i % 2 == 1) tempsNous.push_back(Duree(nous));
  }
}

/// The same, summed up.
struct Paires {
  double nous = 0;     ///< median, seconds
  double autre = 0;    ///< median, seconds
  double rapport = 0;  ///< median of autre / nous over the pairs
};
inline Paires MesurePaires(unsigned nombre, const std::function<void()>& nous,
                           const std::function<void()>& autre) {
  std::vector<double> a, b, rapports;
  MesurePaires(nombre, nous, autre, a, b);
  for (unsigned i = 0; i < nombre; ++i) rapports.push_back(b[i] / a[i]);
  return {Mediane(a), Mediane(b), Mediane(rapports)};
}

/// One row: what, ours, the limit or the rival, the figure that is judged, its bar.
class Tableau {
 public:
  void Titre(const std::string& texte) { std::printf("\n%s\n", texte.c_str()); }
  /// `auMoins`: the figure must reach the bar; otherwise it must stay at or below it.
  /// A bar of 0 judges nothing.
  void Ligne(const char* mesure, const std::string& nous, const std::string& autre, double chiffre,
             const char* unite, double barre, bool auMoins) {
    const bool tenue = barre == 0 || (auMoins ? chiffre >= barre : chiffre <= barre);
    if (!tenue) ++m_manquees;
    std::printf("%-44s %14s %14s %9.2f%-6s", mesure, nous.c_str(), autre.c_str(), chiffre, unite);
    if (barre != 0) std::printf(" %s %g %s", auMoins ? ">=" : "<=", barre, tenue ? "ok" : "MISSED");
    std::printf("\n");
    std::fflush(stdout);
  }
  void EnTete() { std::printf("%-44s %14s %14s %15s bar\n", "measure", "ours", "limit/rival", "figure"); }
  unsigned Manquees() const { return m_manquees; }

 private:
  unsigned m_manquees = 0;
};

inline std::string EnTemps(double secondes) {
  char texte[40];
  if (secondes < 1e-3)
    std::snprintf(texte, sizeof texte, "%.2f us", secondes * 1e6);
  else if (secondes < 1)
    std::snprintf(texte, sizeof texte, "%.3f ms", secondes * 1e3);
  else
    std::snprintf(texte, sizeof texte, "%.2f s", secondes);
  return texte;
}

}  // namespace fenlor::bench
