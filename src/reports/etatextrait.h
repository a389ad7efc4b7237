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
  /// With "Solde progressif" the balance stands behind each line, in the currency of the year alone.
  ColonnesEtat Colonnes(const SommesEtat& sommes) const override;

 private:
  void EcritCompte(LivresEtat& livres, Travail& travail, const FormatsCompte& formats, const Plan& plan);
  void Reporte(LivresEtat& livres, const Plan& plan);
  void Ajoute(const Line& ligne);

  f64 m_soldeFranc = 0, m_soldeEuro = 0;  ///< credit less debit, up to the line at hand
};

}  // namespace fenlor
