// `CSheetProperties`: what the open exercice is and how large its files are.
#pragma once

#include "ui/cznsheet.h"

namespace fenlor {

/// Read only; one page, "Exercice".
class CSheetProperties : public CZNSheet {
  Q_OBJECT
 public:
  explicit CSheetProperties(ContexteUi& contexte, QWidget* parent = nullptr);

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
