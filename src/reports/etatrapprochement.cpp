#include "reports/etatrapprochement.h"

#include "core/textes.h"
#include "reports/livresetat.h"
#include "store/texte1252.h"

namespace fenlor {

bool CEtatRapprochementDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::Periode, TitreEtatRapprochement)) return false;
  SetEtatEntete(EnteteRapprochement + (AfficheDouble() ? 1u : 0u));
  SetEtatPied(PiedCentralisation);
  LivresEtat livres(App);
  if (!livres.Ouvre()) return false;
  Travail travail(*this, AvancementRapprochement, livres.NombreLignes());
  if (EtatPrintf(PeriodeCentralisation, {StrDate(m_criteres.du), StrDate(m_criteres.au)}) < 0 ||
      EcritEtat("\\H") < 0)
    return false;
  const FormatEtat rangee(RangeeRapprochement);
  SommesEtat total;
  Date precedente = 0;
  bool suit = true;
  const auto ligne = [&](const Line& l) {
    if (l.TypeCompte == Tresorerie && l.Rapprochee) {
      if (precedente != 0 && !MemeMois(precedente, l.DateLigne)) EcritEtat("\\F");
      precedente = l.DateLigne;
      SommesEtat sommes;
      sommes.Ajoute(l);
      total.Ajoute(sommes);
      const ColonnesEtat c = Colonnes(sommes);
      suit = EtatPrintf(rangee, {l.Ligne, StrDate(l.DateLigne), EchappeEtat(fenlor::LitTexte(l.Libelle)),
                                 c[0], c[1], c[2], c[3]}) >= 0;
    }
    return suit = suit && travail.Pas();
  };
  if (!livres.LignesDatees(m_criteres.du, m_criteres.au, ligne) || !suit) return false;
  const ColonnesEtat c = Colonnes(total);
  return EtatPrintf(TotalRapprochement, {c[0], c[1], c[2], c[3]}) >= 0 && EcritEtat("\\X") >= 0;
}

ColonnesEtat CEtatRapprochementDoc::Colonnes(const SommesEtat& sommes) const {
  ColonnesEtat colonnes = ColonnesTotaux(sommes);
  if (!AfficheDouble()) colonnes[2] = colonnes[3] = {};
  return colonnes;
}

}  // namespace fenlor
