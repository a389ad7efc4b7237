// `CSheetOptions`: the options of the practice and of the open exercice, on eight pages.
#pragma once

#include "ui/cznsheet.h"

namespace fenlor {

class CSheetOptions : public CZNSheet {
  Q_OBJECT
 public:
  explicit CSheetOptions(ContexteUi& contexte, QWidget* parent = nullptr);

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
