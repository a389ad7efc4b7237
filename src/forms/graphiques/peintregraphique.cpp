#include "forms/graphiques/peintregraphique.h"

#include <QImage>
#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <cmath>

#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr int tailleModele = 200;  ///< pixels, to learn the proportions of a face
constexpr qreal traitChoisi = 3;

QString EnQString(std::string_view texte) { return QString::fromStdString(VersUtf8(texte)); }

QColor EnCouleur(Rvb rvb) { return QColor::fromRgb(rvb.rouge, rvb.vert, rvb.bleu); }

QFont Modele(QFont fonte, bool gras) {
  fonte.setPixelSize(tailleModele);
  fonte.setHintingPreference(QFont::PreferNoHinting);
  fonte.setKerning(false);
  fonte.setBold(gras);
  return fonte;
}

QPolygonF Polygone(const Forme& forme) {
  QPolygonF polygone;
  polygone.reserve(static_cast<qsizetype>(forme.points.size()));
  for (const PointForme& p : forme.points) polygone << QPointF(p.x, p.y);
  return polygone;
}

void PeintTexte(QPainter& peintre, const Forme& forme, const MesureQt& mesure, const QColor& couleur) {
  const qreal largeur = mesure.Largeur(forme.texte, forme.hauteur, forme.gras);
  const qreal avant = forme.cote == Cote::Gauche ? 0 : forme.cote == Cote::Droite ? largeur : largeur / 2;
  peintre.save();
  peintre.setPen(couleur);
  peintre.setFont(mesure.Fonte(forme.hauteur, forme.gras));
  peintre.translate(forme.points.front().x, forme.points.front().y);
  if (forme.debout) peintre.rotate(-90);
  peintre.drawText(QPointF(-avant, 0), EnQString(forme.texte));
  peintre.restore();
}

/// A line of hardly more than a pixel is one pixel wide: Qt paints that several times as fast.
qreal Epaisseur(const QPainter& peintre, qreal voulue) {
  constexpr qreal aPeine = 1.5, dessous = 1 - 1e-9;
  const qreal pixels = voulue * peintre.deviceTransform().m11();
  return pixels > 1 && pixels < aPeine ? voulue / pixels * dessous : voulue;
}

}  // namespace

MesureQt::MesureQt(const QFont& fonte)
    : m_fonte(Modele(fonte, false)), m_maigre(m_fonte), m_gras(Modele(fonte, true)) {}

f64 MesureQt::Largeur(std::string_view texte, f64 hauteur, bool gras) const {
  return (gras ? m_gras : m_maigre).horizontalAdvance(EnQString(texte)) * hauteur / tailleModele;
}

QFont MesureQt::Fonte(f64 hauteur, bool gras) const {
  QFont fonte = m_fonte;
  fonte.setBold(gras);
  fonte.setPixelSize(std::max(1, static_cast<int>(std::lround(hauteur))));
  return fonte;
}

ThemeGraphique ThemeDe(const QPalette& palette) {
  const auto rvb = [](const QColor& c) {
    return Rvb{static_cast<u8>(c.red()), static_cast<u8>(c.green()), static_cast<u8>(c.blue())};
  };
  return {rvb(palette.color(QPalette::Base)), rvb(palette.color(QPalette::Text))};
}

void PeintGraphique(QPainter& peintre, const DessinGraphique& dessin, const MesureQt& mesure,
                    const ThemeGraphique& theme, int choisi) {
  peintre.save();
  peintre.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  const QColor axe = EnCouleur(Couleur(theme, {TeinteAxe})), texte = EnCouleur(theme.texte);
  for (const Forme& forme : dessin.formes) {
    const QColor couleur = EnCouleur(Couleur(theme, forme.encre));
    const bool choisie = choisi >= 0 && forme.point == choisi;
    switch (forme.sorte) {
      case SorteForme::Texte:
        PeintTexte(peintre, forme, mesure, couleur);
        break;
      case SorteForme::Ligne:
        peintre.setPen(QPen(couleur, Epaisseur(peintre, forme.epaisseur), Qt::SolidLine, Qt::RoundCap));
        peintre.drawLine(QPointF(forme.points[0].x, forme.points[0].y),
                         QPointF(forme.points[1].x, forme.points[1].y));
        break;
      case SorteForme::Polygone:
        peintre.setPen(forme.bord || choisie
                           ? QPen(choisie ? texte : axe,
                                  Epaisseur(peintre, forme.epaisseur * (choisie ? traitChoisi : 1)),
                                  Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin)
                           : QPen(Qt::NoPen));
        peintre.setBrush(couleur);
        peintre.drawPolygon(Polygone(forme));
        break;
    }
  }
  peintre.restore();
}

QImage ImageGraphique(const SerieGraphique& serie, GenreGraphique genre, QSize taille, qreal echelle,
                      const QFont& fonte, const ThemeGraphique& theme) {
  QImage image((QSizeF(taille) * echelle).toSize(), QImage::Format_RGB32);
  image.fill(EnCouleur(theme.fond));
  QPainter peintre(&image);
  peintre.scale(echelle, echelle);
  const MesureQt mesure(fonte);
  const f64 hauteur = QFontInfo(fonte).pixelSize();
  PeintGraphique(peintre,
                 DessineGraphique(serie, genre, PlaceEcran(taille.width(), taille.height(), hauteur), mesure),
                 mesure, theme);
  return image;
}

}  // namespace fenlor
