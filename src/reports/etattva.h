// `CEtatTVADoc`: the lines on each VAT account over a period. A line at debit is a receipt: tax that
// comes back; one at credit an expense: tax that is owed.
#pragma once

#include "reports/livresetat.h"
#include "reports/totauxetat.h"

namespace fenlor {

class CEtatTVADoc : public CEtatTotaux {
 public:
  using CEtatTotaux::CEtatTotaux;

 protected:
  void BuildEtat() override;

 private:
  void EcritCompte(LivresEtat& livres, Travail& travail, const Plan& plan);
};

}  // namespace fenlor
