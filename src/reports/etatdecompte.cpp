#include "reports/etatdecompte.h"

#include <cassert>

#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

void CEtatDeCompte::EcritTete(const LivresEtat& livres, const Plan& plan, const TexteFixe& tva) {
  const unsigned nature = RangNature(plan.Type);
  assert(nature < std::size(MotNatureCompte));
  EtatPrintf(CompteEtatExtrait, {Texte(nature == Tva ? tva : MotNatureCompte[nature]),
                                 livres.CompteCourt(plan), EchappeEtat(fenlor::LitTexte(plan.Designation)),
                                 StrDate(m_criteres.du), StrDate(m_criteres.au)});
  EcritEtat("\\H");
}

}  // namespace fenlor
