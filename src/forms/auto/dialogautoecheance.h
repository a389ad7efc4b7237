// `CDialogAutoEcheance`: the due dates that wait for confirmation.
#pragma once

#include <functional>
#include <vector>

#include "auto/echeances.h"
#include "ui/czndialog.h"

class QPushButton;

namespace fenlor {

class CZNListCtrl;

/// "&Enregistrer" enters the rows that are left; one that is taken away comes back with another day's walk.
class CDialogAutoEcheance : public CZNDialog {
  Q_OBJECT
 public:
  CDialogAutoEcheance(ContexteUi& contexte, std::vector<EcheanceAnnoncee> annoncees,
                      QWidget* parent = nullptr);
  ~CDialogAutoEcheance() override;

 protected:
  bool Enregistre() override;

 private:
  void Supprime();

  std::vector<EcheanceAnnoncee> m_annoncees;
  CZNListCtrl* m_liste;
  QPushButton* m_supprimer;
  FinDesLiens m_finLiens{*this};
};

/// The walk of today, and the form when something is to be confirmed. `signaler`: says so when nothing is.
/// `avant` comes before the first window, if there is one.
void CalculeEcheances(ContexteUi& contexte, bool signaler, const std::function<void()>& avant = {});
/// The command.
void CommandeEcheances(ContexteUi& contexte);

}  // namespace fenlor
