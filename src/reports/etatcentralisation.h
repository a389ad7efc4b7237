// `CEtatCentralisationDoc`: the twelve months of one account, or of each one, over the whole exercice.
#pragma once

#include <array>

#include "reports/livresetat.h"
#include "reports/totauxetat.h"

namespace fenlor {

class CEtatCentralisationDoc : public CEtatTotaux {
 public:
  using CEtatTotaux::CEtatTotaux;

 protected:
  void BuildEtat() override;

 private:
  /// January to December: a month of a longer exercice's second year joins that of the first.
  using MoisCentralises = std::array<SommesEtat, 12>;

  void EcritCompte(LivresEtat& livres, Travail& travail, const Plan& plan);
  void EcritTableau(const MoisCentralises& mois);
};

}  // namespace fenlor
