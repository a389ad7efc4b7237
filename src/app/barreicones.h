// The icon bar: big buttons that the user chooses, on any side of the main window
// or floating; and where all bars stood.
#pragma once

#include <QToolBar>
#include <functional>
#include <vector>

#include "ui/fenetres.h"
#include "ui/findesliens.h"

class QMainWindow;

namespace fenlor {

/// Action of a command; null for one that has no work yet.
using FournitAction = std::function<QAction*(unsigned numero)>;

/// What the icon bar holds and how it looks.
struct ContenuBarre {
  std::vector<unsigned> Commandes;  ///< 0 is a separator
  int Taille = 32;                  ///< of the pictures: 16, 24, 32 or 48
  Qt::ToolButtonStyle Textes = Qt::ToolButtonTextUnderIcon;

  bool operator==(const ContenuBarre&) const = default;
};

ContenuBarre ContenuParDefaut();
/// From section "Barre d'outils-Bar0". A value that is damaged, or missing, is the default one. Numbers
/// that this version does not know stay in the list.
ContenuBarre LitContenuBarre(CFenlorApp& app);
/// In one replacement of the file. True without an open practice, where nothing is kept.
bool EcritContenuBarre(CFenlorApp& app, const ContenuBarre& contenu);

class CBarreIcones : public QToolBar {
  Q_OBJECT
 public:
  /// `action` is asked whenever the bar is filled; what it returns outlives the bar.
  CBarreIcones(ContexteUi& contexte, FournitAction action, QWidget* parent = nullptr);

  /// Reads the settings and makes the buttons.
  void Charge();
  /// Writes the settings; a failure is told.
  bool Enregistre();
  const ContenuBarre& Contenu() const { return m_contenu; }
  /// Shows another content; keeps nothing.
  void Pose(ContenuBarre contenu);
  /// The form that chooses the commands; its result is shown and kept.
  void Personnalise();

 protected:
  void contextMenuEvent(QContextMenuEvent* evenement) override;
  void changeEvent(QEvent* evenement) override;

 private:
  void Aligne();  ///< buttons that stand in a column are of one width
  ContexteUi& m_contexte;
  FournitAction m_action;
  ContenuBarre m_contenu;
  FinDesLiens m_finLiens{*this};
};

/// Places and visibility of the window's tool bars and of its status bar, in
/// section "Barre d'outils". Nothing is written when nothing changed, or without an open practice; a failure
/// is not told, for the window is closing.
void SauveBarres(const QMainWindow& fenetre, CFenlorApp& app);
/// False, and nothing moved, when nothing usable is kept. A bar that floated on a
/// screen which is gone comes back to the window.
bool RestaureBarres(QMainWindow& fenetre, CFenlorApp& app);

}  // namespace fenlor
