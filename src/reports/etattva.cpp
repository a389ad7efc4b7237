#include "reports/etattva.h"

#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

void CEtatTVADoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::Periode, TitreEtatTva)) return;
  SetEtatEntete(EnteteEtatTva[(AfficheDouble() ? 1u : 0u)]);
  SetEtatPied(PiedBalance);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  Travail travail(*this, AvancementEtatTva, livres.NombreLignes() + livres.NombreComptes());
  livres.ComptesDuType(Tva, [&](const Plan& plan) {
    EcritCompte(livres, travail, plan);
    travail.Pas();
  });
}

void CEtatTVADoc::EcritCompte(LivresEtat& livres, Travail& travail, const Plan& plan) {
  const unsigned rang = AfficheDouble() ? 1 : 0;
  EtatPrintf(CompteEtatTva, {livres.CompteCourt(plan), EchappeEtat(fenlor::LitTexte(plan.Designation)),
                             StrDate(m_criteres.du), StrDate(m_criteres.au)});
  EcritEtat("\\H");
  const FormatEtat rangee(RangeeEtatTva[rang]);
  Tableau tableau;
  livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), m_criteres.du, m_criteres.au, [&](const Line& l) {
    EcritLigne(rangee, l, NomDeLigne(l), tableau);
    travail.Pas();
  });
  EcritTotaux(TotalEtatTva[rang], tableau.total);
  EcritEtat("\\X");
}

}  // namespace fenlor
