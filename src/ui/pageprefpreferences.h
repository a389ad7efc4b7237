// Page "Préférences" of the preferences: typing, account numbers, printing, session.
#pragma once

#include "ui/cznsheet.h"
#include "ui/editeurs.h"

namespace fenlor {

/// True unless the user does without the question before what can be taken back.
bool DemandeAvantSuppression(const CFenlorApp& app);

class CPagePrefPreferences : public CZNPage {
  Q_OBJECT
 public:
  explicit CPagePrefPreferences(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  QCheckBox m_virgule, m_entree, m_demander, m_zeros, m_brouillon, m_previsualisation, m_finDeSession;
  EditeurTexte m_chiffres;
  EditeurChoix m_style;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
