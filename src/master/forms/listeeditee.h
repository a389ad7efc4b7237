// A list with the buttons "&Ajouter...", "&Modifier..." and "&Supprimer" below it.
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

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

  /// `nom` is read aloud for the list; `colonnes` is the number of the description.
  ListeEditee(ContexteUi& contexte, const QString& nom, const TexteFixe& colonnes, Actions actions,
              QWidget* parent = nullptr);

  CZNListCtrl& Table() { return *m_table; }
  /// Fields of a row, with what would break its line or its columns replaced.
  static std::string Ligne(const std::vector<std::string>& champs);
  /// Replaces the rows, and selects one of them; the nearest when it is beyond the end.
  void Remplit(const std::vector<std::string>& lignes, int choisie);
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
