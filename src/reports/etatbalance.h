// `CEtatBalanceDoc`: every account with its totals as they stand, by class, the first character of
// its number. Classes up to 5 close with a total of the balance sheet, the others with one of the
// income statement.
#pragma once

#include <optional>

#include "reports/livresetat.h"
#include "reports/totauxetat.h"

namespace fenlor {

class CEtatBalanceDoc : public CEtatTotaux {
 public:
  using CEtatTotaux::CEtatTotaux;

 protected:
  void BuildEtat() override;

 private:
  void EcritCompte(const LivresEtat& livres, const Plan& plan);
  void FermeClasse();

  std::optional<char> m_classe;  ///< in hand
  bool m_classeEcrite = false;   ///< with its heading: it has an account that is listed
  SommesEtat m_sommesClasse, m_sommesSection, m_sommes;
};

}  // namespace fenlor
