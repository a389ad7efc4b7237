// Page "Couleurs" of the preferences: rules, rows and background of the journals.
#pragma once

#include <QCheckBox>
#include <array>

#include "ui/boutoncouleur.h"
#include "ui/cznsheet.h"

namespace fenlor {

class CPagePrefCouleurs : public CZNPage {
  Q_OBJECT
 public:
  explicit CPagePrefCouleurs(ContexteUi& contexte);
  bool Charge() override;
  /// With the system's colours the four keys stay as they are in the file.
  bool Enregistre() override;

 private:
  QCheckBox m_systeme;
  std::array<BoutonCouleur, 4> m_couleurs;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
