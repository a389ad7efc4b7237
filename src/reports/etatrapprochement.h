// `CEtatRapprochementDoc`: the treasury lines of a period that are reconciled, by the date of the line.
#pragma once

#include "reports/totauxetat.h"

namespace fenlor {

class CEtatRapprochementDoc : public CEtatTotaux {
 public:
  using CEtatTotaux::CEtatTotaux;

 protected:
  void BuildEtat() override;
  /// Receipts at debit, expenses at credit; the last two empty in one currency.
  ColonnesEtat Colonnes(const SommesEtat& sommes) const override;
};

}  // namespace fenlor
