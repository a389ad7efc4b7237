#include "forms/reports/peripheriqueqt.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "pages/miseenpage.h"
#include "store/texte1252.h"
#include "ui/couleurs.h"
#include "ui/facesfixes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr i32 dixiemesParPouce = 254;
constexpr i32 pointsBrouillon = 10;
constexpr int tailleModele = 1000;  ///< pixels, to learn the proportions of a face
constexpr qreal trait = 6;          ///< of one unit of thickness

i32 Unites(qreal millimetres) {
  return static_cast<i32>(std::lround(millimetres * 10)) * UnitesPeripherique / dixiemesParPouce;
}

const std::array<QChar, 256>& Caracteres() {
  static const std::array<QChar, 256> table = [] {
    std::array<QChar, 256> t;
    for (unsigned i = 0; i < t.size(); ++i)
      t[i] = QString::fromStdString(VersUtf8(std::string(1, static_cast<char>(i)))).front();
    return t;
  }();
  return table;
}

QString EnQString(std::string_view texte) {
  QString sortie(static_cast<qsizetype>(texte.size()), Qt::Uninitialized);
  std::transform(texte.begin(), texte.end(), sortie.begin(),
                 [](char c) { return Caracteres()[static_cast<unsigned char>(c)]; });
  return sortie;
}

}  // namespace

PeripheriqueQt::PeripheriqueQt(const QPageLayout& feuille) {
  const QRectF place = feuille.paintRect(QPageLayout::Millimeter);
  m_largeur = Unites(place.width());
  m_hauteur = Unites(place.height());
}

void PeripheriqueQt::Prepare(PoliceQt& police, const QString& face, i32 hauteur, bool gras, bool italique,
                             bool souligne) {
  QFont fonte(face);
  fonte.setBold(gras);
  fonte.setItalic(italique);
  fonte.setUnderline(souligne);
  fonte.setKerning(false);
  fonte.setHintingPreference(QFont::PreferNoHinting);
  fonte.setPixelSize(tailleModele);
  const QFontMetricsF modele(fonte);
  const qreal cellule = modele.ascent() + modele.descent();
  const int pixels = std::max(1, static_cast<int>(hauteur * tailleModele / cellule));
  fonte.setPixelSize(pixels);
  police.fonte = fonte;
  police.hauteur = hauteur;
  police.montee = modele.ascent() * hauteur / cellule;
  police.etroitesse = 1;
  for (unsigned i = 0; i < police.avances.size(); ++i)
    police.avances[i] = static_cast<float>(modele.horizontalAdvance(Caracteres()[i]) * pixels / tailleModele);
  police.avances[BlancFin] = police.avances['0'] / 3;
  if (face == FaceFixe()) Resserre(police);
}

void PeripheriqueQt::Resserre(PoliceQt& police) const {
  const qreal colonne = m_largeur / ColonnesPage;
  police.etroitesse = std::min(1.0, colonne / std::max(1.0f, police.avances['0']));
  for (float& avance : police.avances) avance *= static_cast<float>(police.etroitesse);
}

void PeripheriqueQt::FaitPolice(unsigned style, const PoliceEtat& police) {
  Prepare(m_polices[style % NbStyles], FaceImprimee(EnQString(police.face)), police.hauteur,
          police.poids >= 600, police.italique, police.souligne);
}

void PeripheriqueQt::FaitPoliceBrouillon() {
  Prepare(m_polices[0], FaceFixe(), pointsBrouillon * UnitesPeripherique / pointsParPouce, false, false,
          false);
  std::fill(m_polices.begin() + 1, m_polices.end(), m_polices[0]);
}

Etendue PeripheriqueQt::Mesure(unsigned style, std::string_view texte) const {
  const PoliceQt& police = Fonte(style);
  float largeur = 0;
  for (const char c : texte) largeur += police.avances[static_cast<unsigned char>(c)];
  return {static_cast<i32>(std::ceil(largeur)), police.hauteur};
}

void PeripheriqueQt::DessineTexte(unsigned style, const Rectangle& cadre, Alignement alignement,
                                  std::string_view texte) {
  if (!m_peintre || texte.empty() || cadre.droite <= cadre.gauche || cadre.bas <= cadre.haut) return;
  const PoliceQt& police = Fonte(style);
  const i32 place = cadre.droite - cadre.gauche, largeur = Mesure(style, texte).largeur;
  const i32 reste = std::max(0, place - largeur);
  i32 x = cadre.gauche;
  if (alignement == Alignement::Droite) x += reste;
  if (alignement == Alignement::Centre) x += reste / 2;
  m_peintre->save();
  m_peintre->setPen(NoirEncre());
  m_peintre->setFont(police.fonte);
  m_peintre->translate(x, cadre.haut + police.montee);
  m_peintre->scale(police.etroitesse * std::min(1.0, place / std::max(1.0, qreal(largeur))), 1);
  // The narrow blank is no character of the face.
  for (qreal debut = 0; !texte.empty();) {
    const std::size_t n = std::min(texte.find(BlancFin), texte.size());
    const std::string_view morceau = texte.substr(0, n);
    m_peintre->drawText(QPointF(debut, 0), EnQString(morceau));
    texte.remove_prefix(std::min(n + 1, texte.size()));
    for (const char c : morceau) debut += police.avances[static_cast<unsigned char>(c)] / police.etroitesse;
    debut += police.avances[BlancFin] / police.etroitesse;
  }
  m_peintre->restore();
}

void PeripheriqueQt::Remplit(const Rectangle& cadre, Ton ton) {
  if (!m_peintre) return;
  const qreal pixel = 1 / std::max(1e-6, m_peintre->combinedTransform().m22());
  m_peintre->fillRect(QRectF(cadre.gauche, cadre.haut, cadre.droite - cadre.gauche,
                             std::max(pixel, qreal(cadre.bas - cadre.haut))),
                      ton == Ton::Bande ? TeinteBande() : GrisFilet());
}

void PeripheriqueQt::DessineTrait(i32 gauche, i32 droite, i32 y, i32 epaisseur) {
  if (!m_peintre || droite <= gauche) return;
  const qreal pixel = 1 / std::max(1e-6, m_peintre->combinedTransform().m22());
  QPen plume(NoirEncre(), std::max(trait * std::max(1, epaisseur), pixel));
  plume.setCapStyle(Qt::FlatCap);
  m_peintre->setPen(plume);
  m_peintre->drawLine(QPointF(gauche, y), QPointF(droite, y));
}

}  // namespace fenlor
