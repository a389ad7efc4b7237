// `CDialogColonnes`: which columns of a list show, and in which order.
#pragma once

#include <QListWidget>
#include <QPushButton>

#include "ui/czndialog.h"
#include "ui/tableliste.h"

namespace fenlor {

/// Space shows and hides a column, Alt with up and down moves it.
class CDialogColonnes : public CZNDialog {
  Q_OBJECT
 public:
  /// `table` permits it (`TableListe::PermetColonnes`), and outlives the form.
  CDialogColonnes(ContexteUi& contexte, TableListe& table, QWidget* parent = nullptr);

 protected:
  bool Enregistre() override;

 private:
  void Remplit(const std::vector<TableListe::ColonneRangee>& colonnes);
  std::vector<TableListe::ColonneRangee> Lues() const;
  void Deplace(int pas);
  void ActualiseBoutons();

  TableListe& m_table;
  QListWidget m_liste;
  QPushButton m_monter, m_descendre, m_defaut;
  bool m_origine = false;  ///< the widths go, too
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
