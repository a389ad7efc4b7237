// `CDialogTresorerie`: a bank or cash account.
#pragma once

#include "forms/master/champscompte.h"
#include "forms/master/dialogcompte.h"

namespace fenlor {

/// A new account gets the next free number of its kind, and another one when the bank
/// box changes.
class CDialogTresorerie : public DialogCompte {
  Q_OBJECT
 public:
  /// `vue` may be null; `position` 0 adds.
  CDialogTresorerie(ContexteUi& contexte, SuiteFiches* vue, Position position, QWidget* parent = nullptr);

 protected:
  void Montre() override;
  FicheCompte Nouvelle() override;

 private:
  void ProposeNumero();
  ChampsTresorerie m_tresorerie;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
