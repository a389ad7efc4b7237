// The one place where charts are painted: on a screen, a printer, a picture, a PDF page.
#pragma once

#include <QFont>
#include <QFontMetricsF>

#include "graphiques/dessin.h"

class QImage;
class QPainter;
class QPalette;

namespace fenlor {

/// Measures with a face, by its design and never by a screen: a chart is laid out alike on all devices.
class MesureQt : public MesureTexte {
 public:
  explicit MesureQt(const QFont& fonte);
  f64 Largeur(std::string_view texte, f64 hauteur, bool gras) const override;
  /// The face at a height.
  QFont Fonte(f64 hauteur, bool gras) const;

 private:
  QFont m_fonte;
  QFontMetricsF m_maigre, m_gras;
};

/// White paper is the default theme; this is the desktop's.
ThemeGraphique ThemeDe(const QPalette& palette);

/// Paints the shapes; the units are the painter's. The shapes of the point `choisi` get a thick outline.
void PeintGraphique(QPainter& peintre, const DessinGraphique& dessin, const MesureQt& mesure,
                    const ThemeGraphique& theme, int choisi = -1);
/// The chart as a picture of that size, on paper or as the theme says; `echelle` pixels for each unit.
QImage ImageGraphique(const SerieGraphique& serie, GenreGraphique genre, QSize taille, qreal echelle,
                      const QFont& fonte, const ThemeGraphique& theme = {});

}  // namespace fenlor
