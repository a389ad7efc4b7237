#include "forms/journal/month.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <algorithm>
#include <cassert>

#include "core/valeurs.h"
#include "forms/journal/textes.h"
#include "ui/preferences.h"
#include "ui/roleaccessible.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr int largeurCellule = 60, hauteurCellule = 25, haut = 6;
constexpr int recouvrement = 12;  ///< of two neighbours: the tabs slant
constexpr int marge = 12;         ///< before the first one

QString Abrege(Date mois) { return Q(ChampTexte(Mois(mois) - 1, Texte(MoisAbreges), '|')); }
QString NomEntier(Date mois) {
  return TexteQ(FormatMoisJournal, {NomMois(Mois(mois)), std::to_string(Annee(mois))});
}

}  // namespace

CMonth::CMonth(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::TabFocus);
  DonneRole(*this, QAccessible::PageTabList);
  setAccessibleName(QStringLiteral("Mois"));
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CMonth::PoseMois(const std::vector<Date>& mois) {
  const Date montre = PremierJour();
  m_cellules.clear();
  m_courant = m_surligne = -1;
  m_presse = false;
  for (const Date premier : mois) {
    Cellule cellule;
    GetMonth(premier, cellule.premier, cellule.dernier);
    if (cellule.premier == montre) m_courant = static_cast<int>(m_cellules.size());
    m_cellules.push_back(cellule);
  }
  Mesure();
  Montre(std::max(m_courant, 0));
}

void CMonth::PoseDessin(const QFont& police, const QColor& fond, const QColor& bordure) {
  m_fond = fond;
  m_bordure = bordure;
  setFont(police);
  Mesure();
}

Date CMonth::PremierJour() const {
  return m_courant < 0 ? 0 : m_cellules[static_cast<std::size_t>(m_courant)].premier;
}

void CMonth::Montre(int indice) {
  m_courant = std::min(std::max(indice, 0), static_cast<int>(m_cellules.size()) - 1);
  setAccessibleName(m_courant < 0 ? QStringLiteral("Mois") : NomEntier(PremierJour()));
  Surligne(m_courant);
}

void CMonth::Choisit(int indice) {
  const int avant = m_courant;
  Montre(indice);
  if (m_courant != avant) Q_EMIT MoisChange(m_courant, PremierJour());
}

/// A wide font widens all tabs alike.
void CMonth::Mesure() {
  QFont grasse = font();
  grasse.setBold(true);
  const QFontMetrics mesure(grasse);
  int texte = 0;
  for (const Cellule& cellule : m_cellules)
    texte = std::max(texte, mesure.horizontalAdvance(Abrege(cellule.premier)));
  const int largeur = std::max(largeurCellule, texte + 2 * recouvrement);
  int gauche = marge;
  for (Cellule& cellule : m_cellules) {
    cellule.gauche = gauche;
    cellule.haut = haut;
    cellule.largeur = largeur;
    cellule.hauteur = std::max(hauteurCellule, haut + mesure.height() + 2);
    gauche += largeur - recouvrement;
  }
  updateGeometry();
  MetEnVue();
}

QSize CMonth::sizeHint() const {
  if (m_cellules.empty()) return {marge, hauteurCellule};
  const Cellule& derniere = m_cellules.back();
  return {derniere.gauche + derniere.largeur, derniere.hauteur};
}

QSize CMonth::minimumSizeHint() const {
  if (m_cellules.empty()) return sizeHint();
  return {marge + 2 * m_cellules.front().largeur, m_cellules.front().hauteur};
}

/// The highlighted tab and one neighbour on each side are seen, and no more is hidden than must be.
void CMonth::MetEnVue() {
  const int trop = std::max(sizeHint().width() - width(), 0);
  if (m_surligne >= 0) {
    const auto dernier = static_cast<int>(m_cellules.size()) - 1;
    assert(m_surligne <= dernier);
    const Cellule& avant = m_cellules[static_cast<std::size_t>(std::max(m_surligne - 1, 0))];
    const Cellule& apres = m_cellules[static_cast<std::size_t>(std::min(m_surligne + 1, dernier))];
    m_decalage = std::max(m_decalage, apres.gauche + apres.largeur - width());
    m_decalage = std::min(m_decalage, avant.gauche - marge);
  }
  m_decalage = std::clamp(m_decalage, 0, trop);
  update();
}

void CMonth::Surligne(int indice) {
  m_surligne = indice;
  if (!m_presse) MetEnVue();
  update();
}

QRect CMonth::Place(int indice) const {
  const Cellule& c = m_cellules[static_cast<std::size_t>(indice)];
  return {c.gauche - m_decalage, c.haut, c.largeur, c.hauteur - c.haut};
}

int CMonth::CelluleA(const QPoint& point) const {
  const auto contient = [&](int indice) {
    const QRect place = Place(indice);
    return point.x() >= place.left() && point.x() < place.left() + place.width() && point.y() >= haut &&
           point.y() <= m_cellules.front().hauteur;
  };
  // Where two overlap, each has its half; the shown one lies on top.
  if (m_courant >= 0 && contient(m_courant)) return m_courant;
  for (int i = 0; i < static_cast<int>(m_cellules.size()); ++i) {
    const bool suivante = i + 1 < static_cast<int>(m_cellules.size());
    if (contient(i) && (!suivante || point.x() < Place(i + 1).left() + recouvrement / 2)) return i;
  }
  return -1;
}

void CMonth::mousePressEvent(QMouseEvent* evenement) {
  const int indice = evenement->button() == Qt::LeftButton ? CelluleA(evenement->pos()) : -1;
  if (indice < 0) return evenement->ignore();
  m_presse = true;
  Surligne(indice);
}

void CMonth::mouseMoveEvent(QMouseEvent* evenement) {
  if (!m_presse) return;
  const int indice = CelluleA(evenement->pos());
  Surligne(indice < 0 ? m_courant : indice);
}

void CMonth::mouseReleaseEvent(QMouseEvent* evenement) {
  if (!m_presse || evenement->button() != Qt::LeftButton) return;
  m_presse = false;
  const int indice = CelluleA(evenement->pos());
  Choisit(indice < 0 ? m_courant : indice);
}

void CMonth::keyPressEvent(QKeyEvent* evenement) {
  switch (evenement->key()) {
    case Qt::Key_Left:
      return Choisit(m_courant - 1);
    case Qt::Key_Right:
      return Choisit(m_courant + 1);
    case Qt::Key_Home:
      return Choisit(0);
    case Qt::Key_End:
      return Choisit(static_cast<int>(m_cellules.size()) - 1);
    case Qt::Key_Escape:
      if (m_presse) {
        m_presse = false;
        return Surligne(m_courant);
      }
      break;
    default:
      break;
  }
  QWidget::keyPressEvent(evenement);
}

void CMonth::focusInEvent(QFocusEvent* evenement) {
  QWidget::focusInEvent(evenement);
  update();
}

void CMonth::focusOutEvent(QFocusEvent* evenement) {
  QWidget::focusOutEvent(evenement);
  m_presse = false;
  Surligne(m_courant);
}

void CMonth::resizeEvent(QResizeEvent* evenement) {
  QWidget::resizeEvent(evenement);
  MetEnVue();
}

void CMonth::changeEvent(QEvent* evenement) {
  QWidget::changeEvent(evenement);
  if (evenement->type() == QEvent::FontChange) Mesure();
}

bool CMonth::event(QEvent* evenement) {
  if (evenement->type() != QEvent::ToolTip) return QWidget::event(evenement);
  const auto& demande = static_cast<const QHelpEvent&>(*evenement);
  if (const int indice = CelluleA(demande.pos()); indice >= 0)
    QToolTip::showText(demande.globalPos(), NomEntier(m_cellules[static_cast<std::size_t>(indice)].premier),
                       this, Place(indice));
  else
    QToolTip::hideText();
  return true;
}

void CMonth::DessineOnglet(QPainter& peintre, int indice) const {
  const bool choisi = indice == m_surligne;
  const QRectF place = QRectF(Place(indice)).adjusted(0.5, choisi ? -1.5 : 0.5, -0.5, 0.5);
  QPainterPath contour(place.bottomLeft());
  const double pente = recouvrement / 2.0;
  contour.cubicTo(place.bottomLeft() + QPointF(pente, 0), place.topLeft() + QPointF(pente, 0),
                  place.topLeft() + QPointF(recouvrement, 0));
  contour.lineTo(place.topRight() - QPointF(recouvrement, 0));
  contour.cubicTo(place.topRight() - QPointF(pente, 0), place.bottomRight() - QPointF(pente, 0),
                  place.bottomRight());
  const QColor bouton = palette().color(QPalette::Button);
  const QColor fond = choisi && m_fond.isValid() ? m_fond : bouton;
  peintre.setRenderHint(QPainter::Antialiasing);
  peintre.setBrush(fond);
  peintre.setPen(m_bordure.isValid() ? Lisible(m_bordure, fond, contrasteTrait)
                                     : palette().color(QPalette::Mid));
  peintre.drawPath(contour);
  QFont police = font();
  police.setBold(choisi);
  peintre.setFont(police);
  peintre.setPen(Lisible(palette().color(choisi ? QPalette::Text : QPalette::ButtonText), fond));
  const QString texte = Abrege(m_cellules[static_cast<std::size_t>(indice)].premier);
  peintre.drawText(place, Qt::AlignCenter, texte);
  if (choisi && hasFocus()) {
    const int largeur = peintre.fontMetrics().horizontalAdvance(texte);
    const double y = place.bottom() - 2.5;
    peintre.drawLine(QPointF(place.center().x() - largeur / 2.0, y),
                     QPointF(place.center().x() + largeur / 2.0, y));
  }
}

void CMonth::paintEvent(QPaintEvent*) {
  QPainter peintre(this);
  for (int i = static_cast<int>(m_cellules.size()) - 1; i >= 0; --i)
    if (i != m_surligne) DessineOnglet(peintre, i);
  if (m_surligne >= 0) DessineOnglet(peintre, m_surligne);
}

}  // namespace fenlor
