// The commands by menu, with a search field: shared by the forms that let a
// user choose one.
#pragma once

#include <QIcon>
#include <QWidget>
#include <functional>

#include "app/commandes.h"
#include "ui/findesliens.h"

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace fenlor {

/// Lower case without accents, so that "reglages" finds "Réglages".
QString SansAccents(const QString& texte);
/// Text of the row without access key and without "...".
QString NomCommande(const Commande& commande);
/// "Fichier" of `Menu::Fichier`; "Autres" for a command that stands in no menu.
QString NomMenu(Menu menu);

/// Picture of a list's row; on a selected one it is drawn in the colour of its text,
/// so that it does not sink into the background.
QIcon ImageDeLigne(const char* nom, const QWidget& liste, int cote);

class CListeCommandes : public QWidget {
  Q_OBJECT
 public:
  /// Rows that `retenue` takes, in the order of the menus. With `raccourcis` there is a second
  /// column. The search field is named "recherche", the list "commandes".
  CListeCommandes(const std::function<bool(const Commande&)>& retenue, bool raccourcis,
                  QWidget* parent = nullptr);

  QSize sizeHint() const override;

  unsigned Choisie() const;  ///< 0 when none is
  void PoseRaccourci(unsigned numero, const QString& texte);
  /// Shows the rows that hold all words of the text, whatever case and accents.
  void Filtre(const QString& texte);
  QTreeWidget& Table() { return *m_table; }
  QLineEdit& Recherche() { return *m_recherche; }

 Q_SIGNALS:
  void ChoixChange();
  void Activee();  ///< double click on a row

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  QTreeWidgetItem* Ligne(unsigned numero) const;
  QLineEdit* m_recherche;
  QTreeWidget* m_table;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
