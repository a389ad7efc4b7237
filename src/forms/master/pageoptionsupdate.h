// `CPageOptionsUpdate`: when the user is reminded of updates.
#pragma once

#include <QRadioButton>
#include <QSpinBox>

#include "master/options.h"
#include "ui/cznsheet.h"
#include "ui/editeurs.h"

namespace fenlor {

class CPageOptionsUpdate : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionsUpdate(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  QRadioButton m_demarrage, m_finSession, m_jamais;
  QSpinBox m_jours;
  EditeurTexte m_application;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
