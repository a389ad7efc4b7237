#include "forms/graphiques/pagegraphique.h"

#include <QGuiApplication>
#include <QPainter>

#include "core/valeurs.h"
#include "forms/graphiques/peintregraphique.h"
#include "forms/reports/ecritpdf.h"
#include "pages/page.h"

namespace fenlor {

PageGraphique::PageGraphique(const SerieGraphique& serie, GenreGraphique genre, TaillePapier taille)
    : m_serie(serie), m_genre(genre), m_taille(taille), m_feuille(FeuilleParDefaut()) {}

bool PageGraphique::Prepare(const QPageLayout& feuille) {
  m_feuille = feuille;
  return true;
}

bool PageGraphique::DessinePage(QPainter& peintre, qreal unitesParPouce, u32 n) {
  if (n != 1) return false;
  // In the units of the reports' pages, whatever the device counts in.
  const QRectF place = m_feuille.paintRect(QPageLayout::Inch);
  const qreal echelle = unitesParPouce / UnitesPeripherique;
  peintre.save();
  peintre.scale(echelle, echelle);
  const MesureQt mesure(QGuiApplication::font());
  const PlaceGraphique feuille =
      PlaceFeuille(place.width() * UnitesPeripherique, place.height() * UnitesPeripherique, m_taille);
  PeintGraphique(peintre, DessineGraphique(m_serie, m_genre, feuille, mesure), mesure, {});
  peintre.restore();
  return true;
}

bool EcritPdfGraphique(CFenlorApp& app, const SerieGraphique& serie, GenreGraphique genre,
                       const std::string& fichier, int descripteur, TaillePapier taille) {
  PageGraphique page(serie, genre, taille);
  page.Prepare(FeuilleParDefaut());
  const std::string titre = CompacteTexte(serie.titre), auteur = LitIdentiteEtat(app).nom;
  return fichier.empty() ? EcritPdf(app, page, titre, auteur, descripteur)
                         : EcritPdf(app, page, titre, auteur, fichier);
}

}  // namespace fenlor
