// `CEtatPMVDoc`: annex of the gains and losses on the disposals after the first day of the period and up to
// its last one, by the theoretical depreciation up to that day. Its rows are in Franc before 1999, in Euro
// from then on; with the double display always in Franc too. The sums are those of whole units: each figure
// loses its decimals first.
#pragma once

#include "reports/etatbiens.h"

namespace fenlor {

class CEtatPMVDoc : public CEtatBiens {
 public:
  using CEtatBiens::CEtatBiens;

 protected:
  void BuildEtat() override;

 private:
  bool EnFrancAussi() const;
  bool EnEuroAussi() const;
  void EcritCession(u32 rang, const Immobilisation& immo);
  void EcritTotal();

  PlusValue m_total;
};

}  // namespace fenlor
