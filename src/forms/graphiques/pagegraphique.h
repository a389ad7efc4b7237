// A chart as a page, for the preview, a printer or a PDF file.
#pragma once

#include "core/fenlorapp.h"
#include "forms/reports/pagesdessinees.h"
#include "graphiques/dessin.h"

namespace fenlor {

/// One page; the series outlives it.
class PageGraphique : public PagesDessinees {
 public:
  PageGraphique(const SerieGraphique& serie, GenreGraphique genre, TaillePapier taille);

  bool Prepare(const QPageLayout& feuille) override;
  const QPageLayout& Feuille() const override { return m_feuille; }
  u32 NombrePages() const override { return 1; }
  bool DessinePage(QPainter& peintre, qreal unitesParPouce, u32 n) override;

 private:
  const SerieGraphique& m_serie;
  const GenreGraphique m_genre;
  const TaillePapier m_taille;
  QPageLayout m_feuille;
};

/// A chart on a page of its own as a PDF file, or into an open file when `fichier` is empty (`EcritPdf`).
/// Needs a QGuiApplication, the offscreen platform is enough.
bool EcritPdfGraphique(CFenlorApp& app, const SerieGraphique& serie, GenreGraphique genre,
                       const std::string& fichier, int descripteur,
                       TaillePapier taille = TaillePapier::Proportionnelle);

}  // namespace fenlor
