// The list of lines in a form of entries: tool bar above, context menu, keys.
#pragma once

#include <QWidget>
#include <functional>

#include "ui/findesliens.h"
#include "ui/tableliste.h"

class QHBoxLayout;
class QToolButton;

namespace fenlor {

/// Several rows can be selected. Ins, Enter, double click and Del do what the tool bar does, and do it
/// too while it is disabled: the caller tells why not. The list bears the name "lignes", the tools
/// "ajouter", "modifier" and "supprimer".
class ListeLignes : public QWidget {
  Q_OBJECT
 public:
  struct Actions {
    std::function<void()> ajoute, modifie, supprime;
  };
  /// `nom` is read aloud for the list. `Table().Suit` says what it shows.
  ListeLignes(ContexteUi& contexte, const QString& nom, Actions actions, QWidget* parent = nullptr);

  CZNListCtrl& Table() { return *m_table; }
  /// A value at the right end of the tool bar.
  void AjouteValeur(const QString& libelle, QWidget& valeur, const char* nom);
  /// Takes the rows anew and selects one; the nearest when it is beyond the end, none below 0.
  void Relit(int choisie);
  /// Tools; change and delete need a selection besides.
  void Permet(bool permis);

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  QToolButton* Outil(const QString& texte, const QString& astuce, const char* nom,
                     std::function<void()> action);
  void Active();
  void ActualiseOutils();
  void MontreMenu(const QPoint& place);
  Actions m_actions;
  CZNListCtrl* m_table;
  QHBoxLayout* m_barre;
  QToolButton *m_ajouter, *m_modifier, *m_supprimer;
  bool m_permis = true;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
