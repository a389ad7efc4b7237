// A list with the buttons "&Ajouter...", "&Modifier..." and "&Supprimer" below it.
#pragma once

#include <QWidget>
#include <functional>

#include "ui/findesliens.h"
#include "ui/tableliste.h"

class QPushButton;

namespace fenlor {

/// Ins, Enter, double click and Del do what the buttons do. Rows keep their order, so
/// that a row of the list is an index of the caller's own. The list bears the name
/// "liste", the buttons "ajouter", "modifier" and "supprimer".
class ListeEditee : public QWidget {
  Q_OBJECT
 public:
  /// What may be done with a row; -1: none is selected.
  struct Permis {
    bool ajoute = false, modifie = false, supprime = false;
  };
  struct Actions {
    std::function<void()> ajoute, modifie, supprime;
    std::function<Permis(int ligne)> permis;
  };

  /// `nom` is read aloud for the list. `Table().Suit` says what it shows.
  ListeEditee(ContexteUi& contexte, const QString& nom, Actions actions, QWidget* parent = nullptr);

  CZNListCtrl& Table() { return *m_table; }
  /// Takes the rows anew, and selects one of them; the nearest when it is beyond the end.
  void Relit(int choisie);
  /// Buttons follow the selection; called by the list itself.
  void ActualiseBoutons();

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  QPushButton* Bouton(const QString& texte, const char* nom, const std::function<void()>& action);
  Actions m_actions;
  CZNListCtrl* m_table;
  QPushButton *m_ajouter, *m_modifier, *m_supprimer;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
