// The open windows at the end of the menu "Fenêtre".
#pragma once

#include <QObject>

class QAction;
class QMdiArea;
class QMenu;

namespace fenlor {

/// Makes the list anew whenever the menu opens: a line for each window in the order of their opening, the
/// active one marked, the first nine with their number as access key. A line brings its window forward.
class ListeFenetres : public QObject {
  Q_OBJECT
 public:
  /// `menu` owns it; `zone` outlives the menu.
  ListeFenetres(QMenu& menu, QMdiArea& zone);

 private:
  void Remplit();
  QMenu& m_menu;
  QMdiArea& m_zone;
  QList<QAction*> m_lignes;
};

}  // namespace fenlor
