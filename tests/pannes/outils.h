// What the crash and damage tests share: fenlorctl in this process
// or as a child that can be killed, and the journal as `exporter` shows it.
#pragma once

#include <sys/types.h>

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <random>

#include "ctl/ctl.h"
#include "outils/cabinetdetest.h"

namespace fenlor::pannes {

using Json = nlohmann::json;
using test::DossierTemporaire;

struct Resultat {
  int statut = 0;  ///< exit status; 128 + signal when killed
  std::string sortie;
  std::string erreurs;
};

/// fenlorctl inside this process, with a small redo log. `programmes`: folder of a template.
Resultat Ctl(const std::vector<std::string>& arguments, const std::string& entree = {},
             Systeme* systeme = nullptr, const std::string& programmes = {});

/// fenlorctl, or another program beside this one, as a child whose standard input is a file.
class Enfant {
 public:
  Enfant(const std::vector<std::string>& arguments, const std::string& fichierEntree,
         const std::string& nom = "fenlorctl");
  ~Enfant();
  Enfant(const Enfant&) = delete;
  Enfant& operator=(const Enfant&) = delete;
  /// Reads what it prints for `microsecondes`, or to its end.
  void Ecoute(long microsecondes);
  void Tue();
  /// Reads to its end and waits. What it printed, how it ended.
  Resultat Attend();
  bool Fini() const { return m_fin; }
  const std::string& Sortie() const { return m_sortie; }

 private:
  pid_t m_pid = 0;
  int m_tube = -1;
  bool m_fin = false;
  std::string m_sortie;
};

/// Runs killed at any moment of the time that a whole one takes, which is learned as they go. Once enough
/// are dead they get the time to come to their end, on a slow machine, too.
class Chasse {
 public:
  Chasse(std::mt19937& hasard, unsigned voulus, long duree = 20'000)
      : voulus(voulus), m_hasard(hasard), m_duree(duree) {}
  /// One run, at its end or killed: `Enfant`.
  Resultat Lance(const std::vector<std::string>& arguments, const std::string& fichierEntree = "/dev/null",
                 const std::string& nom = "fenlorctl");
  /// One that nobody kills. It tells how long the others may take.
  Resultat LanceEntiere(const std::vector<std::string>& arguments, const std::string& fichierEntree);
  bool Assez() const { return tues >= voulus; }

  unsigned tues = 0;
  unsigned voulus;

 private:
  std::mt19937& m_hasard;
  long m_duree;  ///< microseconds
};

/// Accounts of a practice's chart that the tests enter on, as `exporter COMPTES` shows them.
struct Comptes {
  std::string recette, depense, banque, caisse;
};
Comptes LitComptes(const std::string& cabinet);

/// One JSON object for each line of a text; nothing when a line is no object.
std::optional<std::vector<Json>> LignesJson(const std::string& texte);

/// Lines of the journal by entry, in order of `Rang`.
using JournalLu = std::map<u32, std::vector<Json>>;
/// Fails the current test when it cannot be read.
JournalLu LitJournal(const std::string& cabinet);

/// Empty, or what is wrong with an entry: `Rang` not 0, 1, 2..., lines that
/// disagree, debits that are not the credits.
std::string Anomalie(const std::vector<Json>& lignes);
/// Amount of its treasury lines, in Euro.
f64 MontantTresorerie(const std::vector<Json>& lignes);

/// The line of `saisir` for one receipt or expense; `professionnel` below `ttc`
/// gives it a personal share.
std::string LigneSaisie(const Comptes& comptes, bool recette, const std::string& libelle, f64 ttc,
                        f64 professionnel);

/// Puts a copy of a practice in the place of another one.
void Recopie(const std::string& de, const std::string& vers);

/// Makes a practice with exercice "2003", in Euro, subject to VAT.
void CreeCabinet(const std::string& cabinet);

/// Fails the current test when `verifier` finds something.
void Verifie(const std::string& cabinet);

/// A number from the environment.
unsigned Nombre(const char* variable, unsigned defaut);

}  // namespace fenlor::pannes
