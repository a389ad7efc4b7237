#include "app/mdichildframe.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <algorithm>

#include "ui/positionfenetre.h"

namespace fenlor {

CMDIChildFrame::CMDIChildFrame(Vue* vue, QWidget* parent) : QMdiSubWindow(parent), m_vue(vue) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWidget(vue);
  setWindowIcon(vue->windowIcon());
}

void CMDIChildFrame::Montre(bool agrandie) {
  const QSize zone = mdiArea() ? mdiArea()->viewport()->size() : QSize();
  const auto position = LitPosition(m_vue->App(), m_vue->Titre());
  const int pas = fontMetrics().height();
  if (position) {
    // Reports share one place in the settings: the next one opens a step aside.
    QRect place = AjustePosition(position->rect, zone, minimumSizeHint());
    while (EstPris(place.topLeft()) && place.width() > zone.width() / 2) {
      const QPoint cote(place.right() + pas < zone.width() ? pas : 0,
                        place.bottom() + pas < zone.height() ? pas : 0);
      if (cote.isNull())
        place.adjust(pas, pas, 0, 0);
      else
        place.translate(cote);
    }
    if (place.topLeft() != position->rect.topLeft()) m_decalee = place;
    setGeometry(place);
  } else {
    // In steps, like cards; back to the corner when the next one would leave the area.
    const QSize taille =
        zone.boundedTo(sizeHint().expandedTo({zone.width() * 19 / 20, zone.height() * 3 / 4}));
    const int rang = mdiArea() ? static_cast<int>(mdiArea()->subWindowList().size()) - 1 : 0;
    const int colonnes = std::max((zone.width() - taille.width()) / pas + 1, 1);
    const int lignes = std::max((zone.height() - taille.height()) / pas + 1, 1);
    setGeometry(QRect(QPoint(pas * (rang % colonnes), pas * (rang % lignes)), taille));
  }
  // The first of a session that was never placed uses the whole window.
  const bool premiere = !mdiArea() || mdiArea()->subWindowList().size() == 1;
  if (agrandie || (position ? position->agrandie : premiere))
    showMaximized();
  else
    show();
}

bool CMDIChildFrame::EstPris(QPoint coin) const {
  const QList<QMdiSubWindow*> voisines = mdiArea() ? mdiArea()->subWindowList() : QList<QMdiSubWindow*>();
  return std::any_of(voisines.begin(), voisines.end(), [&](const QMdiSubWindow* autre) {
    return autre != this && autre->isVisible() && autre->pos() == coin;
  });
}

void CMDIChildFrame::closeEvent(QCloseEvent* evenement) {
  if (!m_vue->PeutFermer()) {
    evenement->ignore();
    return;
  }
  PositionFenetre position{geometry(), isMaximized()};
  if (isMaximized() || isMinimized() || geometry() == m_decalee) {
    // The place it goes back to is not told by the toolkit: the one in the settings stays. So it does for one
    // that only stepped aside.
    const auto ancienne = LitPosition(m_vue->App(), m_vue->Titre());
    const QSize zone = mdiArea() ? mdiArea()->viewport()->size() : size();
    position.rect = ancienne ? ancienne->rect : QRect(QPoint(0, 0), zone * 2 / 3);
  }
  EcritPosition(m_vue->App(), m_vue->Titre(), position);
  QMdiSubWindow::closeEvent(evenement);
}

}  // namespace fenlor
