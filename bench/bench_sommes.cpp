// bench_sommes DIR ENTRIES
// A practice of so many entries of four lines. Each line of the input asks for one measure, which is answered
// with its seconds of clock and of processor: "ouverture", "parcours" of the journal in place, "sauvegarde"
// of one more entry. `bench_sommes_sans` is the same program without the sums of the slots; bench_vitesse
// asks both in turn.
#include <sched.h>

#include <functional>
#include <iostream>
#include <memory>
#include <string>

#include "classeur.h"
#include "mesures.h"

namespace fenlor::bench {

namespace {

class Livres {
 public:
  Livres(const std::string& dossier, unsigned ecritures)
      : m_dossier(dossier), m_classeur(std::make_unique<Classeur>(dossier)), m_suivante(ecritures) {
    m_classeur->Remplit(ecritures);
  }
  void Ouvre() { m_classeur = std::make_unique<Classeur>(m_dossier); }
  void Ferme() { m_classeur.reset(); }
  void Parcourt() {
    f64 somme = 0;
    m_classeur->Magasin().QVParcours(FichierJournal, [&](Position, const void* rec) {
      somme += static_cast<const Line*>(rec)->MontantEuro;
      return true;
    });
    if (somme == 0) Echec("nothing was walked");
  }
  void Sauve() {
    m_classeur->Ajoute(m_suivante, m_suivante + 1);
    ++m_suivante;
  }

 private:
  const std::string m_dossier;
  std::unique_ptr<Classeur> m_classeur;
  unsigned m_suivante;
};

/// The first processor alone, or all of them: they do not reach the disk in the same time, and both programs
/// are to be compared on one.
void Restreint(bool unSeul) {
  cpu_set_t processeurs;
  CPU_ZERO(&processeurs);
  for (unsigned i = 0; i < (unSeul ? 1u : CPU_SETSIZE); ++i) CPU_SET(i, &processeurs);
  sched_setaffinity(0, sizeof processeurs, &processeurs);
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  using namespace fenlor::bench;
  if (argc != 3) Echec("DIR ENTRIES");
  Livres livres(argv[1], Argument(argc, argv, 2, 1, "DIR ENTRIES"));
  for (std::string mesure; std::getline(std::cin, mesure);) {
    const bool ouverture = mesure == "ouverture";
    if (ouverture) livres.Ferme();
    Restreint(!ouverture);
    double processeur = 0;
    const double horloge = Duree([&] {
      processeur = TempsProcesseur([&] {
        ouverture ? livres.Ouvre() : mesure == "parcours" ? livres.Parcourt() : livres.Sauve();
      });
    });
    std::cout << horloge << ' ' << processeur << std::endl;
  }
  return 0;
}
