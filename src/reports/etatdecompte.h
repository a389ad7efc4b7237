// What the extract and the general ledger share: an account's heading.
#pragma once

#include "core/texte.h"
#include "reports/livresetat.h"
#include "reports/totauxetat.h"

namespace fenlor {

class CEtatDeCompte : public CEtatTotaux {
 public:
  using CEtatTotaux::CEtatTotaux;

 protected:
  /// Kind, number, designation and period, and the column headings. `tva`: what a VAT account is called.
  void EcritTete(const LivresEtat& livres, const Plan& plan, const TexteFixe& tva);
};

}  // namespace fenlor
