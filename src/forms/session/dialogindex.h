// `CDialogIndex`: the choice of the files of which the keys are made anew.
#pragma once

#include <QCheckBox>
#include <QListWidget>

#include "ui/czndialog.h"

namespace fenlor {

class CDialogIndex : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogIndex(ContexteUi& contexte, QWidget* parent = nullptr);

 protected:
  /// Rebuilds what is checked, its windows closed meanwhile. After a stop the form stays, with
  /// the files that were not reached still checked.
  bool Enregistre() override;

 private:
  QListWidget m_fichiers;
  QCheckBox m_choisir;
  Qt::CheckState m_marque = Qt::Unchecked;  ///< of the row that the mouse went down on
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
