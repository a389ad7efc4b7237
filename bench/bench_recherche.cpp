// bench_recherche [RUNS [ENTRIES]]
// Searches so many entries (60000) of four lines each as the find box does at a key, in processor time,
// beside a plain scan of the same records where the store has them mapped. The practice is made through the
// store in a temporary directory, removed at the end unless something fails. The bar: first results within
// 50 ms of processor time; the status is 1 when it is missed, unless the size is another one.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "classeur.h"
#include "dialoguemuet.h"
#include "mesures.h"
#include "recherche/recherche.h"

namespace fenlor::bench {

namespace {

constexpr unsigned EcrituresBarre = 60'000;
constexpr double BarreMs = 50;
constexpr std::size_t ecrituresMontrees = 100;

int Principal(unsigned tours, unsigned ecritures) {
  const std::string dossier =
      (std::filesystem::temp_directory_path() / ("bench_recherche." + std::to_string(getpid()))).string();
  double pire = 0;
  {
    Classeur classeur(dossier);
    classeur.Remplit(ecritures);
    QVAPI& magasin = classeur.Magasin();
    DialogueMuet dialogue;
    CFenlorApp app(magasin, dialogue);
    app.NomExercice = magasin.NomExercice();
    app.PathExercice = magasin.PathExercice();
    u64 vues = 0;
    const auto scan = [&] {
      magasin.QVParcours(FichierJournal, [&](Position, const void* rec) {
        const Line& ligne = *static_cast<const Line*>(rec);
        for (unsigned i = 0; i < sizeof ligne; i += 64) vues += reinterpret_cast<const u8*>(rec)[i];
        return true;
      });
    };
    std::printf("%u entries, %u lines; processor time, medians of %u runs\n", ecritures,
                magasin.QVNumberOfRec(FichierJournal), tours);
    for (const char* mots :
         {"e", "ecr", "zzzz", "512", "250", "250,00", "12/03", "12 mars", "ecr 250 mars bq"}) {
      std::vector<double> recherche, plat;
      std::size_t trouvees = 0;
      for (unsigned tour = 0; tour <= tours; ++tour) {
        const double a = 1e3 * TempsProcesseur([&] {
                           Recherche r(app, Requete(mots), {false, ecrituresMontrees});
                           while (r.Avance(8192)) continue;
                           vues += r.Trouvailles().size();
                           trouvees = r.NbEcritures();
                           if (r.Echec()) Echec("the books cannot be read");
                         });
        const double b = 1e3 * TempsProcesseur(scan);
        if (tour == 0) continue;  // warms the caches
        recherche.push_back(a);
        plat.push_back(b);
      }
      pire = std::max(pire, Mediane(recherche));
      std::printf("%-18s %7zu found  search %8.3f ms   plain scan %8.3f ms   ratio %5.2f\n", mots, trouvees,
                  Mediane(recherche), Mediane(plat), Mediane(recherche) / Mediane(plat));
    }
    if (vues == 0) Echec("nothing was read");
  }
  std::filesystem::remove_all(dossier);
  if (ecritures != EcrituresBarre) return 0;
  std::printf("bar: the slowest within %g ms: %s\n", BarreMs, pire <= BarreMs ? "ok" : "MISSED");
  return pire <= BarreMs ? 0 : 1;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  const auto nombre = [&](int place, unsigned defaut) {
    if (argc <= place) return defaut;
    const unsigned lu = static_cast<unsigned>(std::strtoul(argv[place], nullptr, 10));
    if (lu == 0) {
      std::fprintf(stderr, "bench_recherche [RUNS [ENTRIES]]\n");
      std::exit(2);
    }
    return lu;
  };
  return fenlor::bench::Principal(nombre(1, 11), nombre(2, fenlor::bench::EcrituresBarre));
}
