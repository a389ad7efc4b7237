// `CPlanView`: the accounts of receipts, or those of expenses.
#pragma once

#include "master/forms/comptesview.h"

namespace fenlor {

class CPlanView : public ComptesView {
  Q_OBJECT
 public:
  /// `type` is `Recette` or `Depense`.
  CPlanView(ContexteUi& contexte, i16 type);

 protected:
  std::unique_ptr<DialogFiche> Forme(Position position) override;

 private:
  const i16 m_type;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
