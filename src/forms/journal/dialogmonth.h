// Choice of a month: `CDialogMonth` of those of the exercice, `ZNDialogChangeMois` the month that
// entries are moved to.
#pragma once

#include <QListWidget>
#include <vector>

#include "store/dates.h"
#include "ui/czndialog.h"

namespace fenlor {

/// A list of months. Enter and a double click choose, whatever Enter does between fields.
class DialogListeMois : public CZNDialog {
  Q_OBJECT
 protected:
  using CZNDialog::CZNDialog;
  /// Once the list is filled and stands in the form.
  void Ouvre(int choisi);
  bool EstChoisi() const;
  void keyPressEvent(QKeyEvent* evenement) override;

  QListWidget m_liste;

 private:
  FinDesLiens m_finLiens{*this};
};

class CDialogMonth : public DialogListeMois {
  Q_OBJECT
 public:
  /// `choisi`: index into `MoisExercice`.
  CDialogMonth(ContexteUi& contexte, int choisi, QWidget* parent = nullptr);
  int Choisi() const { return m_liste.currentRow(); }  ///< after Ok

 public Q_SLOTS:
  /// Without a selection the form ends as if it were cancelled.
  void accept() override;

 private:
  FinDesLiens m_finLiens{*this};
};

class ZNDialogChangeMois : public DialogListeMois {
  Q_OBJECT
 public:
  /// `mois` 1 to 12.
  ZNDialogChangeMois(ContexteUi& contexte, unsigned mois, QWidget* parent = nullptr);
  unsigned Mois() const { return static_cast<unsigned>(m_liste.currentRow() + 1); }  ///< after Ok

 protected:
  bool Enregistre() override { return EstChoisi(); }

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
