// `CEtatExtraitDoc`: the lines of one account, or of each account, in a period. Accounts without lines are
// there too.
#pragma once

#include "reports/etatdecompte.h"

namespace fenlor {

class CEtatExtraitDoc : public CEtatDeCompte {
 public:
  using CEtatDeCompte::CEtatDeCompte;

 protected:
  void BuildEtat() override;

 private:
  void EcritCompte(LivresEtat& livres, Travail& travail, const FormatsCompte& formats, const Plan& plan);
};

}  // namespace fenlor
