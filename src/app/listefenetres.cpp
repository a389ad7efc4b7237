#include "app/listefenetres.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int numerotees = 9;
}

ListeFenetres::ListeFenetres(QMenu& menu, QMdiArea& zone) : QObject(&menu), m_menu(menu), m_zone(zone) {
  connect(&menu, &QMenu::aboutToShow, this, &ListeFenetres::Remplit);
}

void ListeFenetres::Remplit() {
  qDeleteAll(m_lignes);
  m_lignes.clear();
  const QList<QMdiSubWindow*> fenetres = m_zone.subWindowList(QMdiArea::CreationOrder);
  if (fenetres.isEmpty()) return;
  m_lignes += m_menu.addSeparator();
  int rang = 0;
  for (QMdiSubWindow* fenetre : fenetres) {
    QString titre = fenetre->windowTitle();
    titre.replace(u"&"_s, u"&&"_s);
    if (++rang <= numerotees) titre.prepend(u"&%1 "_s.arg(rang));
    QAction* ligne = m_menu.addAction(fenetre->windowIcon(), titre);
    ligne->setCheckable(true);
    ligne->setChecked(fenetre == m_zone.activeSubWindow());
    connect(ligne, &QAction::triggered, &m_zone, [zone = &m_zone, fenetre = QPointer(fenetre)] {
      if (fenetre) zone->setActiveSubWindow(fenetre);
    });
    m_lignes += ligne;
  }
}

}  // namespace fenlor
