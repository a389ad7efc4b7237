// `CDialogPlanComptable`: an account of any type.
#pragma once

#include "forms/master/champscompte.h"
#include "forms/master/dialogcompte.h"

class QStackedWidget;

namespace fenlor {

/// What can be typed follows the type of the account.
class CDialogPlanComptable : public DialogCompte {
  Q_OBJECT
 public:
  /// `vue` may be null; `position` 0 adds.
  CDialogPlanComptable(ContexteUi& contexte, SuiteFiches* vue, Position position, QWidget* parent = nullptr);

 protected:
  void Montre() override;
  void Vide() override;
  i16 Type() const override { return static_cast<i16>(m_type.currentIndex()); }

 private:
  void DeclareTaxe(Formulaire& formulaire);
  /// VAT list, rate or nothing, in the same place.
  void MontreTaxe(i16 type);
  void ChangeType();
  void MontreType(const FicheCompte& fiche);
  EditeurChoix m_type;
  ChampsTresorerie m_tresorerie;
  ChampsAffectation m_affectation;
  EditeurMontant m_taux;
  QStackedWidget* m_taxe;  ///< of the form, which outlives its fields
  QLabel* m_libelleTaxe = nullptr;
  ChampsRepartition m_repartition;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
