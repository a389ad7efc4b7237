// A chart on its way to a preview or a printer.
#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>

#include "forms/graphiques/pagegraphique.h"
#include "ui/fenetres.h"

namespace fenlor {

class CZNPreviewView;
class Impressions;

/// Holds what is printed, whatever becomes of the chart's window. It goes with its preview, or by itself when
/// the print is through.
class ImpressionGraphique : public QObject {
  Q_OBJECT
 public:
  ImpressionGraphique(ContexteUi& contexte, Impressions& impressions, SerieGraphique serie,
                      GenreGraphique genre, TaillePapier taille);

  /// The print dialog, then the printer. False when it was cancelled or failed (told).
  bool Imprime();
  /// Shows the preview, which owns this object from here on.
  void MontreApercu();

 Q_SIGNALS:
  void ApercuFini();

 private:
  ContexteUi& m_contexte;
  Impressions& m_impressions;
  const SerieGraphique m_serie;
  const GenreGraphique m_genre;
  const TaillePapier m_taille;
  PageGraphique m_page;
  QPointer<CZNPreviewView> m_apercu;
};

/// "Evolution-du-compte-706-Honoraires-2003"
QString NomFichierGraphique(const CFenlorApp& app, const SerieGraphique& serie);
/// What is exported. Without a picture there is only PDF to choose.
struct ExportGraphique {
  const SerieGraphique& serie;
  GenreGraphique genre;
  TaillePapier papier = TaillePapier::Proportionnelle;  ///< of a PDF
  QImage image = {};
  QSize taille = {};  ///< of an SVG
};
/// Asks for a file and writes the chart to it, as PNG, SVG or PDF by the end of its name.
void ExporteGraphique(ContexteUi& contexte, Impressions& impressions, const ExportGraphique& quoi);

}  // namespace fenlor
