// A list with the buttons that add, change and remove its rows.
#pragma once

#include <QWidget>
#include <functional>

#include "ui/findesliens.h"
#include "ui/tableliste.h"

class QAbstractButton;
class QHBoxLayout;

namespace fenlor {

/// Ins, Enter, double click and Del do what the buttons do. Rows keep their order;
/// what the caller is told is an index of its own (`TableListe::RangDe`). The buttons bear the names
/// "ajouter", "modifier" and "supprimer".
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
  /// A list of a page is named "liste" and has its buttons below. The list of the lines of an entry is named
  /// "lignes" and has tools, with their words above it or as pictures below, and a context menu; several rows
  /// can be selected; the keys do their work while the tools are disabled: the caller tells why not. A list
  /// of records is named "liste" and has tools with their words above it and a context menu; what a tool may
  /// not do a key does not.
  enum class Genre { Page, LignesEnGrand, LignesEnPetit, Fiches };

  /// `nom` is read aloud for the list. `Table().Suit` says what it shows.
  ListeEditee(ContexteUi& contexte, Genre genre, const QString& nom, Actions actions,
              QWidget* parent = nullptr);

  CZNListCtrl& Table() { return *m_table; }
  /// At the right end of the buttons.
  void AjouteAuBout(QWidget& widget);
  /// Takes the rows anew, and selects one of them; the nearest when it is beyond the end. Below 0 a page
  /// selects its first one, lines none.
  void Relit(int choisie);
  /// Buttons follow the selection; called by the list itself.
  void ActualiseBoutons();

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  bool AvecOutils() const { return m_genre != Genre::Page; }
  bool EnLignes() const { return AvecOutils() && m_genre != Genre::Fiches; }
  QAbstractButton* Bouton(const char* nom, const QString& texte, const QString& astuce, const QString& touche,
                          const std::function<void()>& action);
  QAbstractButton* Outil(const QString& texte, const QString& astuce, const QString& touche);
  void Active();
  void MontreMenu(const QPoint& place);
  const Genre m_genre;
  Actions m_actions;
  CZNListCtrl* m_table;
  QHBoxLayout* m_boutons;
  QAbstractButton *m_ajouter, *m_modifier, *m_supprimer;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
