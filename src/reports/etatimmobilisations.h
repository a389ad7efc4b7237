// `CEtatImmobilisationsDoc`: the register of assets, landscape. It asks for nothing; real depreciation up to
// today. An asset has a row in the currency of the year, with the double display one in Franc and then one in
// Euro that names nothing, each with its years below it. Stopped, it shows what was written so far.
#pragma once

#include "reports/etatbiens.h"

namespace fenlor {

class CEtatImmobilisationsDoc : public CEtatBiens {
 public:
  using CEtatBiens::CEtatBiens;

 protected:
  void BuildEtat() override;

 private:
  void EcritBien(const Immobilisation& immo);
};

}  // namespace fenlor
