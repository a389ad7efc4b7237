// `CEtatAmortissementsDoc`: annex "Immobilisations et amortissements". Every asset with the real depreciation
// of the year in which the period ends, and of the years before it. Franc in whole units. Stopped, it shows
// what was written so far, with the sums of that.
#pragma once

#include "assets/annuites.h"
#include "reports/etatbiens.h"

namespace fenlor {

class CEtatAmortissementsDoc : public CEtatBiens {
 public:
  using CEtatBiens::CEtatBiens;

 protected:
  void BuildEtat() override;

 private:
  void EcritBien(u32 rang, const Immobilisation& immo);
  void EcritTotal();

  MontantDouble m_valeurs, m_anterieurs, m_annee;
};

}  // namespace fenlor
