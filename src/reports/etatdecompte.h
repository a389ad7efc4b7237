// What the extract and the general ledger share: an account's heading, its rows, and sums in the display
// that was chosen.
#pragma once

#include "reports/livresetat.h"
#include "reports/totauxetat.h"

namespace fenlor {

class CEtatDeCompte : public CEtatTotaux {
 public:
  using CEtatTotaux::CEtatTotaux;

 protected:
  bool Montant() const { return m_criteres.affichage == AffichageMontant; }

  // False: the text could not be written.
  /// Kind, number, designation and period, and the column headings. `tva`: what a VAT account is called.
  bool EcritTete(const Plan& plan, unsigned tva);
  /// A row; `sommes` gets the line's amounts.
  bool EcritRangee(const FormatEtat& format, const Line& ligne, SommesEtat& sommes);
  bool EcritSommes(const FormatEtat& format, const SommesEtat& sommes);

 private:
  std::string m_tampon;
};

}  // namespace fenlor
