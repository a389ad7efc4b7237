// `CPlanComptableView`: all accounts of the exercice, in order of their number.
#pragma once

#include "master/forms/comptesview.h"

namespace fenlor {

class CPlanComptableView : public ComptesView {
  Q_OBJECT
 public:
  explicit CPlanComptableView(ContexteUi& contexte);

 protected:
  std::unique_ptr<DialogFiche> Forme(Position position) override;

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
