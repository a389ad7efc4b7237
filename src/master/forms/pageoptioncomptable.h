// `CPageOptionComptable`: the accountant or adviser.
#pragma once

#include "ui/cznsheet.h"
#include "ui/editeurs.h"

namespace fenlor {

class CPageOptionComptable : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionComptable(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  EditeurTexteLong m_identification;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
