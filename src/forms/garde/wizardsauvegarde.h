// The assistant of a backup: where to, behind which password, and what came of it.
#pragma once

#include "forms/garde/wizardgarde.h"
#include "garde/blocsauvegarde.h"
#include "garde/sauvegarde.h"

namespace fenlor {

class CWizardSauvegarde : public CWizardGarde {
  Q_OBJECT
 public:
  /// `complet`: the whole practice is proposed, not the open exercice alone.
  CWizardSauvegarde(ContexteUi& contexte, const BlocSauvegarde& bloc, bool complet = false,
                    QWidget* parent = nullptr);

  DemandeSauvegarde Demande;          ///< as the pages filled it
  SauvegardeFaite Faite;              ///< once it was made
  std::vector<std::string> Retirees;  ///< older ones that the keeping removed

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
