// bench_graphiques [RUNS]
// Makes and paints a chart of the twelve months and one of 400 accounts, of each kind, in a window of 900 x
// 600, and prints the processor time that each takes: shapes and painting. Judges the twelve months alone: 16
// ms, the time of one picture of a screen.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "forms/graphiques/peintregraphique.h"
#include "mesures.h"

namespace fenlor::bench {

namespace {

constexpr int largeur = 900, hauteur = 600;
constexpr unsigned points[] = {12, 400};
constexpr double barre = 16;  ///< ms
constexpr const char* noms[] = {"areas",  "areas 3D",  "bars across", "bars across 3D", "bars", "bars 3D",
                                "curves", "curves 3D", "scatter",     "surface",        "pie",  "pie 3D"};

SerieGraphique Serie(unsigned nombre) {
  SerieGraphique serie;
  serie.titre = " Comparaison entre plusieurs comptes ";
  for (unsigned i = 0; i < nombre; ++i)
    serie.points.push_back({std::to_string(601000 + i), 1000 * std::sin(i * 0.7) + 200});
  return serie;
}

double Peinture(const SerieGraphique& serie, GenreGraphique genre, unsigned tours) {
  std::vector<double> temps;
  const MesureQt mesure(QGuiApplication::font());
  QImage image(largeur, hauteur, QImage::Format_RGB32);
  for (unsigned tour = 0; tour < tours; ++tour) {
    const double debut = Secondes(CLOCK_PROCESS_CPUTIME_ID);
    image.fill(Qt::white);
    QPainter peintre(&image);
    const DessinGraphique dessin = DessineGraphique(serie, genre, PlaceEcran(largeur, hauteur, 13), mesure);
    if (dessin.formes.empty()) Echec("nothing was drawn");
    PeintGraphique(peintre, dessin, mesure, {});
    peintre.end();
    temps.push_back(Secondes(CLOCK_PROCESS_CPUTIME_ID) - debut);
  }
  return Mediane(temps);
}

int Principal(unsigned tours) {
  unsigned manquees = 0;
  std::printf("processor time of a chart, medians of %u runs\n%-16s %12s %12s\n", tours, "kind", "12 points",
              "400 points");
  for (int genre = 0; genre < NbGenresGraphique; ++genre) {
    double temps[2] = {};
    for (int i = 0; i < 2; ++i)
      temps[i] = 1000 * Peinture(Serie(points[i]), static_cast<GenreGraphique>(genre), tours);
    const bool tenue = temps[0] <= barre;
    manquees += !tenue;
    std::printf("%-16s %9.2f ms %9.2f ms   %s\n", noms[genre], temps[0], temps[1], tenue ? "ok" : "MISSED");
  }
  std::printf("%u of %d kinds above %g ms with 12 points\n", manquees, NbGenresGraphique, barre);
  return 0;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const unsigned tours = argc > 1 ? static_cast<unsigned>(std::strtoul(argv[1], nullptr, 10)) : 30;
  if (tours == 0) {
    std::fprintf(stderr, "bench_graphiques [RUNS]\n");
    return 2;
  }
  return fenlor::bench::Principal(tours);
}
