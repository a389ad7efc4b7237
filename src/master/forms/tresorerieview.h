// `CTresorerieView`: the bank and cash accounts, with their balances.
#pragma once

#include "master/forms/comptesview.h"

namespace fenlor {

class CTresorerieView : public ComptesView {
  Q_OBJECT
 public:
  explicit CTresorerieView(ContexteUi& contexte);

 protected:
  std::unique_ptr<DialogFiche> Forme(Position position) override;

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
