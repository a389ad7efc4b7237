// `CPagePrefSauvegardes`: where backups go, the one at the end of each session, and how many are kept.
#pragma once

#include <QCheckBox>
#include <QSpinBox>

#include "forms/garde/wizardgarde.h"
#include "ui/cznsheet.h"

namespace fenlor {

class CPagePrefSauvegardes : public CZNPage {
  Q_OBJECT
 public:
  explicit CPagePrefSauvegardes(ContexteUi& contexte);
  bool Charge() override;
  bool Controle() override;
  bool Enregistre() override;

 private:
  Formulaire m_formulaire;
  ChoixDossier m_dossier;
  QCheckBox m_finDeSession;
  QSpinBox m_jours, m_semaines, m_mois;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
