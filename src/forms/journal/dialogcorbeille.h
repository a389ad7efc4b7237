// `CDialogCorbeille`: the entries that were deleted in the last 90 days.
#pragma once

#include <vector>

#include "journal/corbeille.h"
#include "ui/czndialog.h"

namespace fenlor {

class CZNListCtrl;

/// "&Restaurer" enters the chosen ones again, and closes.
class CDialogCorbeille : public CZNDialog {
  Q_OBJECT
 public:
  CDialogCorbeille(ContexteUi& contexte, QWidget* parent = nullptr);
  ~CDialogCorbeille() override;

 protected:
  bool Enregistre() override;

 private:
  std::vector<Suppression> m_suppressions;
  CZNListCtrl* m_liste;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
