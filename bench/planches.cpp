// planches FOLDER: every kind of chart with one point, twelve, forty, all zero, mixed signs and one huge
// value, on paper, on a dark desktop, in grey and at twice the size: contact sheets to look at.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cmath>

#include "forms/graphiques/peintregraphique.h"

namespace {

using namespace fenlor;
using namespace Qt::Literals::StringLiterals;

constexpr QSize taille(460, 330);

SerieGraphique Serie(const char* titre, int nombre, const std::function<f64(int)>& valeur) {
  constexpr const char* mois[] = {"Jan", "F\xE9v", "Mar", "Avr", "Mai", "Jui",
                                  "Jui", "Aou",    "Sep", "Oct", "Nov", "D\xE9\x63"};
  SerieGraphique serie;
  serie.titre = titre;
  for (int i = 0; i < nombre; ++i)
    serie.points.push_back({nombre == 12 ? mois[i] : std::to_string(60611 + 7 * i), valeur(i)});
  return serie;
}

std::vector<SerieGraphique> Series() {
  const auto onde = [](int i) { return 900 + 700 * std::sin(i * 0.9) + 35 * i; };
  return {Serie(" Un seul compte ", 1, [](int) { return 1234.5; }),
          Serie(" Evolution du compte 706 : Honoraires ", 12, onde),
          Serie(" Comparaison entre plusieurs comptes ", 40,
                [](int i) { return 50 + std::fmod(i * i * 37.7, 900); }),
          Serie(" Tout \xE0 z\xE9ro ", 12, [](int) { return 0; }),
          Serie(" Evolution de plusieurs comptes ", 12, [](int i) { return 800 * std::sin(i * 1.1) - 120; }),
          Serie(" Une valeur \xE9norme ", 12, [](int i) { return i == 4 ? 12345678.9 : 150.0 * i; })};
}

void Planche(const QString& chemin, qreal echelle, const ThemeGraphique& theme, bool gris) {
  const std::vector<SerieGraphique> series = Series();
  for (int moitie = 0; moitie < 2; ++moitie) {
    const QSize image = (QSizeF(taille) * echelle).toSize();
    QImage planche(image.width() * 6, image.height() * static_cast<int>(series.size()), QImage::Format_RGB32);
    QPainter peintre(&planche);
    for (int genre = 0; genre < 6; ++genre)
      for (int s = 0; s < static_cast<int>(series.size()); ++s)
        peintre.drawImage(genre * image.width(), s * image.height(),
                          ImageGraphique(series[static_cast<std::size_t>(s)],
                                         static_cast<GenreGraphique>(6 * moitie + genre), taille, echelle,
                                         QGuiApplication::font(), theme));
    peintre.end();
    if (gris) planche = planche.convertToFormat(QImage::Format_Grayscale8);
    planche.save(u"%1-%2.png"_s.arg(chemin).arg(moitie + 1));
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QString dossier = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"."_s;
  Planche(dossier + u"/clair"_s, 1, {}, false);
  Planche(dossier + u"/sombre"_s, 1, {{35, 38, 41}, {240, 240, 240}}, false);
  Planche(dossier + u"/gris"_s, 1, {}, true);
  Planche(dossier + u"/double"_s, 2, {}, false);
}
