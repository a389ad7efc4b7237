#include "reports/etatrapprochement.h"

#include "reports/livresetat.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

void CEtatRapprochementDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::Periode, TitreEtatRapprochement)) return;
  SetEtatEntete(EnteteRapprochement[(AfficheDouble() ? 1u : 0u)]);
  SetEtatPied(PiedCentralisation);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  Travail travail(*this, AvancementRapprochement, livres.NombreLignes());
  EtatPrintf(PeriodeCentralisation, {StrDate(m_criteres.du), StrDate(m_criteres.au)});
  EcritEtat("\\H");
  const FormatEtat rangee(RangeeRapprochement);
  Tableau tableau;
  livres.LignesDatees(m_criteres.du, m_criteres.au, [&](const Line& l) {
    if (l.TypeCompte == Tresorerie && l.Rapprochee)
      EcritLigne(rangee, l, fenlor::LitTexte(l.Libelle), tableau);
    travail.Pas();
  });
  EcritTotaux(TotalRapprochement, tableau.total);
  EcritEtat("\\X");
}

ColonnesEtat CEtatRapprochementDoc::Colonnes(const SommesEtat& sommes) const {
  ColonnesEtat colonnes = ColonnesTotaux(sommes);
  if (!AfficheDouble()) colonnes[2] = colonnes[3] = {};
  return colonnes;
}

}  // namespace fenlor
