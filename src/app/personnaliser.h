// The form that fills the icon bar, and what it shares with the bar's own menu.
#pragma once

#include <array>

#include "app/barreicones.h"
#include "app/listecommandes.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

class QListWidget;
class QPushButton;

namespace fenlor {

inline constexpr std::array<int, 4> taillesIcones = {16, 24, 32, 48};
inline constexpr std::array<const char*, 4> nomsTailles = {"&Petites", "&Moyennes", "&Grandes",
                                                           "&Très grandes"};
struct NomTextes {
  Qt::ToolButtonStyle style;
  const char* texte;
};
inline constexpr std::array<NomTextes, 3> nomsTextes = {{{Qt::ToolButtonTextUnderIcon, "&Sous l'image"},
                                                         {Qt::ToolButtonTextBesideIcon, "A &côté de l'image"},
                                                         {Qt::ToolButtonIconOnly, "Sa&ns texte"}}};

/// At the left the commands that work, at the right what the bar holds. Ins adds,
/// Del removes, Alt with up and down moves; the right list can be sorted with the mouse. Commands
/// of the bar that have no action are not shown, and keep their place.
class CDialogPersonnaliser : public CZNDialog {
  Q_OBJECT
 public:
  CDialogPersonnaliser(ContexteUi& contexte, const ContenuBarre& contenu, FournitAction action,
                       QWidget* parent = nullptr);
  /// What the form shows, the hidden commands among it.
  ContenuBarre Contenu() const;

 private:
  void Relie(const QPushButton& separateur, const QPushButton& defaut);
  void Remplit(const ContenuBarre& contenu);
  void Insere(unsigned numero);
  void Ajoute();
  void Retire();
  void Deplace(int pas);
  void ActualiseBoutons();
  int LigneDe(unsigned numero) const;
  int Voisine(int ligne, int pas) const;  ///< the shown row before or after; -1 when there is none

  FournitAction m_action;
  CListeCommandes* m_disponibles;
  QListWidget* m_contenu;
  QPushButton* m_ajouter;
  QPushButton* m_retirer;
  QPushButton* m_monter;
  QPushButton* m_descendre;
  EditeurChoix* m_taille;
  EditeurChoix* m_textes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
