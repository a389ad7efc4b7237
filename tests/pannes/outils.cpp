#include "pannes/outils.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "outils/systemesanssynchro.h"

extern char** environ;

namespace fs = std::filesystem;

namespace fenlor::pannes {

Resultat Ctl(const std::vector<std::string>& arguments, const std::string& entree, Systeme* systeme,
             const std::string& programmes) {
  std::istringstream in(entree);
  std::ostringstream out, err;
  // Syncs change nothing for a process that is not killed; they only take time.
  SystemeSansSynchro sansSynchro;
  OptionsCtl options;
  options.magasin.systeme = systeme ? systeme : &sansSynchro;
  options.magasin.tailleReprise = 256 << 10;
  options.pathProgrammes = programmes;
  Resultat r;
  r.statut = ExecuteCtl(arguments, in, out, err, options);
  r.sortie = out.str();
  r.erreurs = err.str();
  return r;
}

Enfant::Enfant(const std::vector<std::string>& arguments, const std::string& fichierEntree,
               const std::string& nom) {
  const std::string programme = (fs::read_symlink("/proc/self/exe").parent_path() / nom).string();
  int tube[2];
  if (pipe2(tube, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, fichierEntree.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, tube[1], 1);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  std::vector<std::string> tous = arguments;
  tous.insert(tous.begin(), programme);
  std::vector<char*> argv;
  for (auto& a : tous) argv.push_back(a.data());
  argv.push_back(nullptr);
  const int rc = posix_spawn(&m_pid, programme.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(tube[1]);
  m_tube = tube[0];
  if (rc != 0) throw std::runtime_error("cannot run " + programme);
}

Enfant::~Enfant() {
  if (m_pid) {
    Tue();
    waitpid(m_pid, nullptr, 0);
  }
  close(m_tube);
}

void Enfant::Ecoute(long microsecondes) {
  using namespace std::chrono;
  const auto fin = steady_clock::now() + std::chrono::microseconds(microsecondes);
  while (!m_fin) {
    const auto reste = duration_cast<nanoseconds>(fin - steady_clock::now()).count();
    if (microsecondes >= 0 && reste <= 0) return;
    pollfd p{m_tube, POLLIN, 0};
    const timespec attente{reste / 1'000'000'000, reste % 1'000'000'000};
    if (ppoll(&p, 1, microsecondes < 0 ? nullptr : &attente, nullptr) <= 0) continue;
    char tampon[65536];
    const ssize_t n = read(m_tube, tampon, sizeof tampon);
    if (n <= 0)
      m_fin = true;
    else
      m_sortie.append(tampon, static_cast<std::size_t>(n));
  }
}

void Enfant::Tue() { kill(m_pid, SIGKILL); }

Resultat Enfant::Attend() {
  Ecoute(-1);
  int etat = 0;
  waitpid(m_pid, &etat, 0);
  m_pid = 0;
  return {WIFSIGNALED(etat) ? 128 + WTERMSIG(etat) : WEXITSTATUS(etat), m_sortie, {}};
}

Resultat Chasse::Lance(const std::vector<std::string>& arguments, const std::string& fichierEntree,
                       const std::string& nom) {
  Enfant enfant(arguments, fichierEntree, nom);
  enfant.Ecoute(500 + static_cast<long>(m_hasard() % static_cast<unsigned>(m_duree)));
  const bool fini = enfant.Fini();
  enfant.Tue();
  const Resultat r = enfant.Attend();
  tues += r.statut == 128 + SIGKILL;
  m_duree = fini ? m_duree * 9 / 10 + 100 : Assez() ? m_duree * 2 : m_duree * 11 / 10 + 100;
  return r;
}

Resultat Chasse::LanceEntiere(const std::vector<std::string>& arguments, const std::string& fichierEntree) {
  using namespace std::chrono;
  const auto debut = steady_clock::now();
  const Resultat r = Enfant(arguments, fichierEntree).Attend();
  m_duree = duration_cast<microseconds>(steady_clock::now() - debut).count() + 1;
  return r;
}

std::optional<std::vector<Json>> LignesJson(const std::string& texte) {
  std::vector<Json> objets;
  std::istringstream flux(texte);
  for (std::string ligne; std::getline(flux, ligne);) {
    Json objet = Json::parse(ligne, nullptr, false);
    if (!objet.is_object()) return std::nullopt;
    objets.push_back(std::move(objet));
  }
  return objets;
}

Comptes LitComptes(const std::string& cabinet) {
  const Resultat r = Ctl({"--cabinet", cabinet, "exporter", "COMPTES"});
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  Comptes c;
  const auto lignes = LignesJson(r.sortie);
  if (lignes) {
    for (const Json& compte : *lignes) {
      const int type = compte.value("Type", -1);
      std::string* place = type == Recette                          ? &c.recette
                           : type == Depense                        ? &c.depense
                           : type != Tresorerie                     ? nullptr
                           : compte.value("TypeTresorerie", 0) == 1 ? &c.banque
                                                                    : &c.caisse;
      if (place && place->empty()) *place = compte.value("Compte", "");
    }
  }
  EXPECT_FALSE(c.recette.empty() || c.depense.empty() || c.banque.empty() || c.caisse.empty());
  return c;
}

JournalLu LitJournal(const std::string& cabinet) {
  const Resultat r = Ctl({"--cabinet", cabinet, "exporter", "JOURNAL"});
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  const auto lignes = LignesJson(r.sortie);
  EXPECT_TRUE(lignes) << "exporter printed something that is no JSON";
  JournalLu journal;
  if (lignes) {
    for (const Json& ligne : *lignes) journal[ligne.value("Mouvement", 0u)].push_back(ligne);
  }
  for (auto& [mouvement, toutes] : journal) {
    std::stable_sort(toutes.begin(), toutes.end(),
                     [](const Json& a, const Json& b) { return a.value("Rang", 0u) < b.value("Rang", 0u); });
  }
  return journal;
}

std::string Anomalie(const std::vector<Json>& lignes) {
  f64 franc = 0, euro = 0;
  u32 rang = 0;
  for (const Json& l : lignes) {
    if (l.value("Rang", 999u) != rang++) return "Rang " + l.dump();
    for (const char* nom : {"Libelle", "Date", "Journal", "Genre", "Ligne", "Validee"}) {
      if (l.value(nom, Json()) != lignes.front().value(nom, Json()))
        return std::string(nom) + " differs: " + l.dump();
    }
    const f64 signe = l.value("Sens", 0u) ? 1 : -1;
    franc += signe * l.value("MontantFranc", 0.0);
    euro += signe * l.value("MontantEuro", 0.0);
  }
  if (std::abs(euro) > 0.005) return "unbalanced by " + std::to_string(euro) + " Euro";
  if (std::abs(franc) > 0.005 * static_cast<f64>(lignes.size()) + 0.02)
    return "unbalanced by " + std::to_string(franc) + " Franc";
  return {};
}

f64 MontantTresorerie(const std::vector<Json>& lignes) {
  f64 somme = 0;
  for (const Json& l : lignes) {
    if (l.value("TypeCompte", -1) == Tresorerie) somme += l.value("MontantEuro", 0.0);
  }
  return somme;
}

std::string LigneSaisie(const Comptes& comptes, bool recette, const std::string& libelle, f64 ttc,
                        f64 professionnel) {
  Json ligne = {{"journal", recette ? "recettes" : "depenses"},
                {"date", "15/03/2003"},
                {"compte", recette ? comptes.recette : comptes.depense},
                {"libelle", libelle},
                {"ttc", ttc},
                {"tresorerie", comptes.banque},
                {"paiement", "cheque"}};
  if (!recette) ligne["professionnel"] = professionnel;  // a receipt's is its account's
  return ligne.dump() + "\n";
}

void Recopie(const std::string& de, const std::string& vers) {
  fs::remove_all(vers);
  fs::create_directories(fs::path(vers).parent_path());
  fs::copy(de, vers, fs::copy_options::recursive);
}

void CreeCabinet(const std::string& cabinet) {
  const Resultat r = Ctl({"--cabinet", cabinet, "creer", "--exercice", "2003", "--euro", "--tva"});
  ASSERT_EQ(r.statut, 0) << r.erreurs;
}

void Verifie(const std::string& cabinet) {
  const Resultat r = Ctl({"--cabinet", cabinet, "verifier"});
  EXPECT_EQ(r.statut, 0) << r.sortie << r.erreurs;
}

unsigned Nombre(const char* variable, unsigned defaut) {
  const char* texte = std::getenv(variable);
  return texte ? static_cast<unsigned>(std::strtoul(texte, nullptr, 10)) : defaut;
}

}  // namespace fenlor::pannes
