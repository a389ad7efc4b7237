// bench_accueil [RUNS [ENTRIES]]
// Reads and lays out the money of the start page over so many entries (15000) of four lines each, in
// processor time, beside a walk over the same lines. Offscreen, unless QT_QPA_PLATFORM says otherwise. The
// practice is made through the store in a temporary directory, removed at the end unless something fails. The
// bar: 20 ms; the status is 1 when it is missed, unless the size is another one.
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "app/panneausituation.h"
#include "classeur.h"
#include "dialoguemuet.h"
#include "fenetresbanc.h"
#include "mesures.h"

namespace fenlor::bench {

namespace {

constexpr unsigned EcrituresBarre = 15'000;
constexpr double BarreMs = 20;

int Principal(unsigned tours, unsigned ecritures) {
  const std::string dossier =
      (std::filesystem::temp_directory_path() / ("bench_accueil." + std::to_string(getpid()))).string();
  std::vector<double> page, marche;
  {
    Classeur classeur(dossier);
    classeur.Remplit(ecritures);
    QVAPI& magasin = classeur.Magasin();
    DialogueMuet dialogue;
    CFenlorApp app(magasin, dialogue);
    app.PathCabinet = dossier;
    app.NomExercice = magasin.NomExercice();
    app.PathExercice = magasin.PathExercice();
    SansCadre cadre;
    Preferences dessin;
    ContexteUi ui{app, cadre, dessin};
    QWidget fenetre;
    fenetre.resize(900, 700);
    PanneauSituation panneau(
        ui, [](const Destination&) {}, &fenetre);
    panneau.resize(900, 700);
    fenetre.show();
    u64 vues = 0;
    const auto processeur = [](const auto& travail) {
      const double debut = Secondes(CLOCK_PROCESS_CPUTIME_ID);
      travail();
      return (Secondes(CLOCK_PROCESS_CPUTIME_ID) - debut) * 1e3;
    };
    for (unsigned tour = 0; tour <= tours; ++tour) {
      const double a = processeur([&] {
        panneau.Actualise();
        panneau.repaint();
        QApplication::processEvents();
      });
      const double b = processeur([&] {
        magasin.QVParcours(FichierJournal, [&](Position, const void* rec) {
          vues += static_cast<const Line*>(rec)->Rang;
          return true;
        });
      });
      if (tour == 0) continue;  // warms the caches
      page.push_back(a);
      marche.push_back(b);
    }
    if (vues == 0 || panneau.isHidden()) Echec("nothing was read");
    std::printf("%u entries, %u lines; processor time, medians of %u runs\n", ecritures,
                magasin.QVNumberOfRec(FichierJournal), tours);
  }
  std::filesystem::remove_all(dossier);
  std::printf("start page %8.3f ms   walk %8.3f ms   ratio %5.2f\n", Mediane(page), Mediane(marche),
              Mediane(page) / Mediane(marche));
  if (ecritures != EcrituresBarre) return 0;
  std::printf("bar: %g ms: %s\n", BarreMs, Mediane(page) <= BarreMs ? "ok" : "MISSED");
  return Mediane(page) <= BarreMs ? 0 : 1;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const auto nombre = [&](int place, unsigned defaut) {
    const unsigned lu = argc > place ? static_cast<unsigned>(std::strtoul(argv[place], nullptr, 10)) : defaut;
    if (lu == 0) std::exit(2);
    return lu;
  };
  return fenlor::bench::Principal(nombre(1, 11), nombre(2, fenlor::bench::EcrituresBarre));
}
