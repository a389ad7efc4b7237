#include "forms/assets/enteteregistre.h"

#include <QPainter>
#include <algorithm>

#include "assets/ligneregistre.h"
#include "ui/textecoupe.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lignesTitre = 3, marge = 3, interligneTitre = 2;

constexpr struct {
  const char16_t* titre;
  ChampRegistre premiere, derniere;
} bandes[] = {
    {u"A C Q U I S I T I O N S", ChampRegistre::DateAchat, ChampRegistre::Valeur},
    {u"A M O R T I S S E M E N T S", ChampRegistre::Taux, ChampRegistre::Residuelle},
    {u"C E S S I O N S", ChampRegistre::DateCession, ChampRegistre::Resultat},
};

}  // namespace

EnteteRegistre::EnteteRegistre(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setSectionsClickable(false);
  setSectionsMovable(false);
  setHighlightSections(false);
  setStretchLastSection(false);
  setMinimumSectionSize(1);
  setSectionResizeMode(Fixed);
}

int EnteteRegistre::HauteurLigne() const {
  return std::max(fontMetrics().height() + interligneTitre, style()->pixelMetric(QStyle::PM_ScrollBarExtent));
}

QSize EnteteRegistre::sizeHint() const {
  return {QHeaderView::sizeHint().width(), (1 + lignesTitre) * HauteurLigne() + 2};
}

int EnteteRegistre::LargeurTitre(const QString& titre) const {
  int largeur = 0;
  for (const QString& ligne : titre.split(u'\n'))
    largeur = std::max(largeur, fontMetrics().horizontalAdvance(ligne));
  return largeur + 2 * marge + 1;
}

QRect EnteteRegistre::Etendue(int premiere, int derniere) const {
  const int gauche = sectionViewportPosition(premiere);
  const int droite = sectionViewportPosition(derniere) + sectionSize(derniere);
  return {gauche, 0, droite - gauche, viewport()->height()};
}

QRect EnteteRegistre::PlaceBarre() const {
  const QRect annees = Etendue(premiereAnnee, derniereAnnee).intersected(viewport()->rect());
  return {annees.left(), 2 * HauteurLigne() + 1, annees.width() - 1, HauteurLigne()};
}

/// In the middle of what can be seen of the place; nothing where no word of it would be left.
void EnteteRegistre::DessineTitre(QPainter& peintre, const QRect& place, const QString& titre) const {
  constexpr int lettres = 6;
  const QRect vue = place.intersected(viewport()->rect()).adjusted(marge, 0, -marge, 0);
  const QString coupe = ClipText(titre, std::max(vue.width(), 0), 0, peintre.fontMetrics());
  if (coupe.size() >= lettres) peintre.drawText(vue, Qt::AlignCenter, coupe);
}

void EnteteRegistre::DessineBande(QPainter& peintre, const QString& titre, int premiere, int derniere) const {
  const int ligne = HauteurLigne();
  const QRect bande = Etendue(premiere, derniere);
  DessineTitre(peintre, {bande.left(), 0, bande.width(), ligne}, titre);
  peintre.drawLine(bande.left(), ligne, bande.right(), ligne);
  peintre.drawLine(bande.right(), 0, bande.right(), ligne);
}

void EnteteRegistre::paintEvent(QPaintEvent*) {
  QPainter peintre(viewport());
  peintre.fillRect(viewport()->rect(), palette().button());
  peintre.setPen(palette().color(QPalette::ButtonText));
  const int ligne = HauteurLigne(), bas = viewport()->height() - 1;
  for (const auto& bande : bandes)
    DessineBande(peintre, QString::fromUtf16(bande.titre), Colonne(bande.premiere), Colonne(bande.derniere));
  for (int colonne = 0; colonne < count(); ++colonne) {
    QRect place = Etendue(colonne, colonne);
    const bool annee = colonne >= premiereAnnee && colonne <= derniereAnnee;
    place.setTop(annee ? lignesTitre * ligne + 1 : ligne + 1);
    const QString titre = model()->headerData(colonne, Qt::Horizontal).toString();
    peintre.drawText(place.adjusted(marge, 0, -marge - 1, 0), Qt::AlignCenter, titre);
    const bool separe = !annee || colonne == derniereAnnee;
    peintre.drawLine(place.right(), separe ? ligne : place.top(), place.right(), bas);
  }
  const QRect annees = Etendue(premiereAnnee, derniereAnnee);
  DessineTitre(peintre, {annees.left(), ligne, annees.width(), ligne}, u"Détail des Amortissements"_s);
  peintre.drawLine(annees.left(), lignesTitre * ligne, annees.right(), lignesTitre * ligne);
  peintre.drawLine(0, bas, viewport()->width(), bas);
}

}  // namespace fenlor
