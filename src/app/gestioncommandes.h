// The commands at work: one QAction for each row of the table, its availability,
// and its run, which is the same whatever document window is active.
#pragma once

#include <QHash>
#include <QObject>

#include "app/commandes.h"

class QAction;
class QMenuBar;
class QWidget;

namespace fenlor {

class CMainFrame;
class Impressions;

class Commandes : public QObject {
  Q_OBJECT
 public:
  /// Makes the actions; the frame owns this object.
  explicit Commandes(CMainFrame& cadre);

  /// Null for an unknown number and for a command without work.
  QAction* Action(unsigned numero) const { return m_actions.value(numero, nullptr); }
  /// Fills the menu bar; menus without any command are left out.
  void FaitMenus(QMenuBar& barre);
  /// The predicate of a command, now.
  bool Disponible(const Commande& commande) const;
  /// Enables and checks all actions after a change of the session or of the windows.
  void ActualiseEtats();
  /// Runs a command when it is available and no form is open.
  void Execute(unsigned numero);
  /// The reports that are open, and printing.
  Impressions& Etats() { return *m_etats; }

 private:
  bool EstCoche(const Commande& commande) const;
  CMainFrame& m_cadre;
  Impressions* m_etats;
  bool m_navigateur;
  QAction* m_menuGraphique = nullptr;
  QHash<unsigned, QAction*> m_actions;
};

}  // namespace fenlor
