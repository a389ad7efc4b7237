// `CPrefPropertySheet`: the preferences, on three pages "Préférences",
// "Couleurs", "Polices", saved in that order. They belong to the practice. Pages of
// subjects may come behind them.
#pragma once

#include "ui/cznsheet.h"

namespace fenlor {

class CPrefPropertySheet : public CZNSheet {
  Q_OBJECT
 public:
  explicit CPrefPropertySheet(ContexteUi& contexte, QWidget* parent = nullptr,
                              const std::vector<CZNPage*>& suivantes = {});

 protected:
  /// `ChargePreferences`, then every window is refreshed.
  void Apres() override;

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
