// "Annuler" and "Rétablir" in the main window: their texts in the menu, their work, and the bar that offers
// to take a deletion back.
#pragma once

#include <QString>

#include "app/commandes.h"
#include "session/annulation.h"

namespace fenlor {

/// "Ann&uler : suppression de...", shortened where it is long.
QString TexteReprise(CFenlorApp& app, const Commande& commande);

/// Takes back or does again, and offers the contrary for a while.
void CommandeReprise(CMainFrame& cadre, Sens sens);

/// True for a question before a deletion that can be taken back, when the user does without it
/// (`DemandeAvantSuppression`).
bool SansDemander(CFenlorApp& app, unsigned question);

/// Looks out for deletions.
class OffreReprise {
 public:
  /// To be called when a rule is through: offers to take back what it deleted, for eight seconds.
  void Regarde(CMainFrame& cadre);
  /// What was done so far is known.
  void Passe(CFenlorApp& app);

 private:
  u64 m_version = 0;
};

}  // namespace fenlor
