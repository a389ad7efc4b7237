// The start page: what the main window shows while no document window is open.
// It says what to do next, with the commands that make sense now.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "app/panneausituation.h"
#include "ui/fenetres.h"

class QAction;
class QBoxLayout;
class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace fenlor {

class PageAccueil : public QWidget {
  Q_OBJECT
 public:
  /// `action` gives the action of a command's number, null when it does not exist; `ouvre` goes where a
  /// figure leads to.
  PageAccueil(ContexteUi& contexte, std::function<QAction*(unsigned)> action,
              std::function<void(const Destination&)> ouvre, QWidget* parent = nullptr);
  /// Title, sentence and commands for the session as it is.
  void Actualise();

 protected:
  void resizeEvent(QResizeEvent* evenement) override;

 private:
  /// Commands beside the money, or below it where there is no room.
  void Dispose();
  void Montre(const QString& titre, const QString& phrase, const std::vector<unsigned>& commandes);
  ContexteUi& m_contexte;
  std::function<QAction*(unsigned)> m_action;
  QLabel* m_titre;
  QLabel* m_phrase;
  QScrollArea* m_defile;
  QBoxLayout* m_colonnes;
  QVBoxLayout* m_boutons;
  PanneauSituation* m_situation;
};

}  // namespace fenlor
