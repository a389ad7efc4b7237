// bench_depart RUNS -- EMPTY_WINDOW -- PROGRAM [ARGUMENTS...]
// Starts both programs in turn, waits until each has painted its window and gone to
// sleep, and prints processor time and memory of the start, with their ratio and
// difference. Needs a display (bench/depart.sh brings one).
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

struct Depart {
  double processeur = 0;  ///< ms, user and system
  double horloge = 0;     ///< ms until asleep
  double resident = 0;    ///< MB
  double prive = 0;       ///< MB, pages of its own
};

/// Processor time so far in ms, to the microsecond; negative when the process is gone.
double Processeur(pid_t pid) {
  double total = 0;
  std::ifstream tache("/proc/" + std::to_string(pid) + "/schedstat");
  if (!(tache >> total)) return -1;
  // The main thread's own; those of the toolkit's helpers are added from their tasks.
  total = 0;
  const std::string dossier = "/proc/" + std::to_string(pid) + "/task";
  std::FILE* liste = popen(("cat " + dossier + "/*/schedstat 2>/dev/null").c_str(), "r");
  if (!liste) return -1;
  unsigned long long ns = 0, attente = 0, tranches = 0;
  while (std::fscanf(liste, "%llu %llu %llu", &ns, &attente, &tranches) == 3)
    total += static_cast<double>(ns);
  pclose(liste);
  return total / 1e6;
}

double LigneMo(pid_t pid, const char* fichier, const std::string& champ) {
  std::ifstream entree("/proc/" + std::to_string(pid) + "/" + fichier);
  std::string ligne;
  double somme = 0;
  while (std::getline(entree, ligne))
    if (ligne.starts_with(champ)) somme += std::stod(ligne.substr(champ.size())) / 1024;
  return somme;
}

Depart Mesure(const Arguments& commande) {
  const auto debut = std::chrono::steady_clock::now();
  const pid_t pid = fork();
  if (pid == 0) {
    std::vector<char*> args;
    for (const std::string& a : commande) args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    const int rien = open("/dev/null", O_RDWR);
    dup2(rien, 1);
    dup2(rien, 2);
    execv(args[0], args.data());
    _exit(127);
  }
  // Asleep: half a second without a tenth of a millisecond of work.
  Depart depart;
  double avant = -1;
  int calme = 0;
  for (int i = 0; i < 200 && calme < 5; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    if (waitpid(pid, nullptr, WNOHANG) != 0) {
      std::fprintf(stderr, "%s ended by itself\n", commande[0].c_str());
      std::exit(1);
    }
    const double temps = Processeur(pid);
    calme = temps - avant < 0.1 ? calme + 1 : 0;
    avant = temps;
  }
  const std::chrono::duration<double, std::milli> ecoule = std::chrono::steady_clock::now() - debut;
  depart.processeur = avant;
  depart.horloge = ecoule.count() - 500;
  depart.resident = LigneMo(pid, "status", "VmRSS:");
  depart.prive =
      LigneMo(pid, "smaps_rollup", "Private_Clean:") + LigneMo(pid, "smaps_rollup", "Private_Dirty:");
  kill(pid, SIGTERM);
  waitpid(pid, nullptr, 0);
  return depart;
}

Depart Mediane(std::vector<Depart> departs) {
  const auto milieu = [&](double Depart::*champ) {
    std::vector<double> valeurs;
    for (const Depart& d : departs) valeurs.push_back(d.*champ);
    std::sort(valeurs.begin(), valeurs.end());
    return valeurs[valeurs.size() / 2];
  };
  return {milieu(&Depart::processeur), milieu(&Depart::horloge), milieu(&Depart::resident),
          milieu(&Depart::prive)};
}

void Ecrit(const char* nom, const Depart& d) {
  std::printf("%-14s processor %7.1f ms   asleep after %6.0f ms   resident %6.1f MB   private %6.1f MB\n",
              nom, d.processeur, d.horloge, d.resident, d.prive);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Arguments> groupes(1);
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--") == 0)
      groupes.emplace_back();
    else
      groupes.back().push_back(argv[i]);
  }
  if (groupes.size() != 3 || groupes[0].size() != 1 || groupes[1].empty() || groupes[2].empty()) {
    std::fprintf(stderr, "bench_depart RUNS -- EMPTY_WINDOW -- PROGRAM [ARGUMENTS...]\n");
    return 2;
  }
  std::vector<Depart> vides, programmes;
  for (int i = 0, n = std::stoi(groupes[0][0]); i < n; ++i) {
    vides.push_back(Mesure(groupes[1]));
    programmes.push_back(Mesure(groupes[2]));
  }
  const Depart vide = Mediane(vides), programme = Mediane(programmes);
  Ecrit("empty window", vide);
  Ecrit("fenlor", programme);
  std::printf("processor      %.2fx an empty window\n", programme.processeur / vide.processeur);
  std::printf("memory         +%.1f MB resident, +%.1f MB private (%.2fx, %.2fx)\n",
              programme.resident - vide.resident, programme.prive - vide.prive,
              programme.resident / vide.resident, programme.prive / vide.prive);
  return 0;
}
