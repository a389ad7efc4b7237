// `CSheetOptions`: the options of the practice and of the open exercice, on eight pages.
#pragma once

#include "ui/cznsheet.h"

namespace fenlor {

class CPageOptionActivite;
class CPageOptionTVA;

class CSheetOptions : public CZNSheet {
  Q_OBJECT
 public:
  explicit CSheetOptions(ContexteUi& contexte, QWidget* parent = nullptr);

 protected:
  /// The windows show the accounts as they are now.
  void Apres() override;

 private:
  CPageOptionActivite* m_activite;
  CPageOptionTVA* m_tva;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
