// `CDialogPlan`: an account of receipts or of expenses.
#pragma once

#include "forms/master/champscompte.h"
#include "forms/master/dialogcompte.h"

namespace fenlor {

/// The personal distribution account is the system's own: it can only be read here.
class CDialogPlan : public DialogCompte {
  Q_OBJECT
 public:
  /// `type` is `Recette` or `Depense`; `vue` may be null; `position` 0 adds.
  CDialogPlan(ContexteUi& contexte, SuiteFiches* vue, i16 type, Position position, QWidget* parent = nullptr);
  /// Asks for receipts or expenses, then adds accounts; true when one was made.
  static bool Nouveau(ContexteUi& contexte, QWidget* parent = nullptr);
  /// Adds accounts of one type; true when one was made.
  static bool Nouveau(ContexteUi& contexte, i16 type, QWidget* parent);

 protected:
  void Montre() override;
  void Vide() override;

 private:
  ChampsAffectation m_affectation;
  SoldesAffiches m_soldes;
  ChampsRepartition m_repartition;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
