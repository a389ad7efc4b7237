// `CDialogClotureExercice`: the closure of the open exercice, which nothing takes back.
#pragma once

#include "garde/cloture.h"
#include "ui/czndialog.h"

namespace fenlor {

class CDialogClotureExercice : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogClotureExercice(ContexteUi& contexte, QWidget* parent = nullptr);
  /// Refused with 3056, without a window, on a closed exercice.
  int exec() override;

 protected:
  bool Enregistre() override;

 private:
  Refus m_refus;  ///< why the form does not open
  PropositionCloture m_proposition;
  FinDesLiens m_finLiens{*this};
};

/// The command. A closed exercice is left, and stands with its mark in the combo.
void CommandeCloture(ContexteUi& contexte);

}  // namespace fenlor
