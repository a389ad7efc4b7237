// `CDialogAutoList`: the models of the open exercice.
#pragma once

#include <functional>
#include <vector>

#include "store/enregistrements.h"
#include "ui/czndialog.h"
#include "ui/suitefiches.h"

namespace fenlor {

class ListeEditee;

class CDialogAutoList : public CZNDialog, public SuiteFiches {
  Q_OBJECT
 public:
  /// `imprime` prints the forecast.
  CDialogAutoList(ContexteUi& contexte, std::function<void()> imprime, QWidget* parent = nullptr);
  ~CDialogAutoList() override;

  Position Voisin(int pas) const override;
  void VaVers(int pas) override;
  void Remplace(Position position) override;

 protected:
  /// The keys are those of the list.
  void showEvent(QShowEvent* evenement) override;

 private:
  void DeclareListe();
  /// Reads the models anew and selects one by its number; 0: none.
  void Charge(Position choisie);
  void Ajoute();
  void Modifie();
  void Supprime();
  void Saisit(Position position);
  void Prevoit();

  const std::function<void()> m_imprime;
  std::vector<EcrituresAuto> m_modeles;
  ListeEditee* m_liste = nullptr;
  FinDesLiens m_finLiens{*this};
};

/// The command: the list, and the walk of today when it is closed.
void CommandeAutomatiques(ContexteUi& contexte, const std::function<void()>& imprime);

}  // namespace fenlor
