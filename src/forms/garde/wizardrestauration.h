// The assistant of a restoration: which archive, its password, which of its exercices, and what came of it.
#pragma once

#include "forms/garde/wizardgarde.h"
#include "garde/blocsauvegarde.h"
#include "garde/inventaire.h"
#include "garde/restauration.h"

namespace fenlor {

class CWizardRestauration : public CWizardGarde {
  Q_OBJECT
 public:
  CWizardRestauration(ContexteUi& contexte, const BlocSauvegarde& bloc, QWidget* parent = nullptr);
  /// Pages: the archive, its password when it is locked, the exercices, the outcome.
  int nextId() const override;

  DemandeRestauration Demande;  ///< as the pages filled it
  ArchiveLue Archive;           ///< that was chosen
  RestaurationFaite Faite;      ///< once it was made

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
