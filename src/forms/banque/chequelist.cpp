#include "forms/banque/chequelist.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace fenlor {

namespace {

enum Colonne { ColonneRemis, ColonneImprime, ColonnesMarques };

}  // namespace

CChequeList::CChequeList(ContexteUi& contexte, QWidget* parent) : CZNListCtrl(contexte, parent) {
  m_margeAutres = 3;
}

/// The columns of the ticks are as wide as their table says in pixels, or as their title or box needs; the
/// others share what is left by percent.
void CChequeList::Ajuste() {
  const auto& titres = Modele().Titres();
  if (titres.size() <= ColonnesMarques) return;
  std::vector<int> largeurs;
  int libre = viewport()->width(), parts = 0;
  for (std::size_t i = 0; i < titres.size(); ++i) {
    if (i >= ColonnesMarques) {
      parts += titres[i].largeur;
      continue;
    }
    const int titre = header()->fontMetrics().horizontalAdvance(titres[i].texte);
    largeurs.push_back(
        std::max({titres[i].largeur, titre + 2 * Marge(static_cast<int>(i)) + 1, fontMetrics().height()}));
    libre -= largeurs.back();
  }
  int reste = std::max(libre, 0);
  for (std::size_t i = ColonnesMarques; i < titres.size(); ++i) {
    largeurs.push_back(i + 1 == titres.size() ? reste : std::max(libre, 0) * titres[i].largeur / parts);
    reste -= largeurs.back();
  }
  PlaceColonnes(largeurs);
}

void CChequeList::drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  CZNListCtrl::drawRow(peintre, option, index);
  const bool choisie = selectionModel()->isSelected(index);
  const QPalette::ColorGroup groupe = !isEnabled()                     ? QPalette::Disabled
                                      : hasFocus() && isActiveWindow() ? QPalette::Active
                                                                       : QPalette::Inactive;
  peintre->setPen(palette().color(groupe, choisie ? QPalette::HighlightedText : QPalette::Text));
  for (const int colonne : {ColonneRemis, ColonneImprime}) {
    const QRect cellule(columnViewportPosition(colonne), option.rect.y(), columnWidth(colonne),
                        option.rect.height());
    const int cote = std::min(cellule.width(), cellule.height()) - 4;
    QRect boite(0, 0, cote, cote);
    boite.moveCenter(cellule.center());
    peintre->drawRect(boite);
  }
}

bool CChequeList::Coche(const QMouseEvent& evenement) {
  const QModelIndex index = indexAt(evenement.pos());
  if (evenement.button() != Qt::LeftButton || !index.isValid() || index.column() >= ColonnesMarques)
    return false;
  const Action& action = index.column() == ColonneRemis ? m_remis : m_imprime;
  if (action) action(RangDe(index.row()));
  return true;
}

void CChequeList::mousePressEvent(QMouseEvent* evenement) {
  CZNListCtrl::mousePressEvent(evenement);
  Coche(*evenement);
}

void CChequeList::mouseDoubleClickEvent(QMouseEvent* evenement) {
  if (!Coche(*evenement)) CZNListCtrl::mouseDoubleClickEvent(evenement);
}

void CChequeList::keyPressEvent(QKeyEvent* evenement) {
  const bool simple = !(evenement->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
  const int ligne = RangChoisi();
  if (!simple || (evenement->key() != Qt::Key_Space && evenement->key() != Qt::Key_I))
    return CZNListCtrl::keyPressEvent(evenement);
  const Action& action = evenement->key() == Qt::Key_Space ? m_remis : m_imprime;
  if (ligne >= 0 && action) action(ligne);
}

}  // namespace fenlor
