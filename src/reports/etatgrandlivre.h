// `CEtatGrandLivreDoc`: all accounts with their lines of a period, a total after each month and one for the
// account. Accounts without lines are there too.
#pragma once

#include "reports/etatdecompte.h"

namespace fenlor {

class CEtatGrandLivreDoc : public CEtatDeCompte {
 public:
  using CEtatDeCompte::CEtatDeCompte;

 protected:
  void BuildEtat() override;

 private:
  void EcritCompte(LivresEtat& livres, Travail& travail, const FormatsCompte& formats, const Plan& plan);
};

}  // namespace fenlor
