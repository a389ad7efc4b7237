#include "reports/etattva.h"

#include "core/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

bool CEtatTVADoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::Periode, TitreEtatTva)) return false;
  SetEtatEntete(EnteteEtatTva + (AfficheDouble() ? 1u : 0u));
  SetEtatPied(PiedBalance);
  LivresEtat livres(App);
  if (!livres.Ouvre()) return false;
  Travail travail(*this, AvancementEtatTva, livres.NombreLignes() + livres.NombreComptes());
  bool suit = true;
  const auto compte = [&](const Plan& plan) {
    return suit = EcritCompte(livres, travail, plan) && travail.Pas();
  };
  return livres.ComptesDuType(Tva, compte) && suit;
}

bool CEtatTVADoc::EcritCompte(LivresEtat& livres, Travail& travail, const Plan& plan) {
  const unsigned rang = AfficheDouble() ? 1 : 0;
  if (EtatPrintf(CompteEtatTva, {livres.CompteCourt(plan), EchappeEtat(fenlor::LitTexte(plan.Designation)),
                                 StrDate(m_criteres.du), StrDate(m_criteres.au)}) < 0 ||
      EcritEtat("\\H") < 0)
    return false;
  const FormatEtat rangee(RangeeEtatTva + rang);
  SommesEtat total;
  Date precedente = 0;
  bool suit = true;
  const auto ligne = [&](const Line& l) {
    if (precedente != 0 && !MemeMois(precedente, l.DateLigne)) EcritEtat("\\F");
    precedente = l.DateLigne;
    SommesEtat sommes;
    sommes.Ajoute(l);
    total.Ajoute(sommes);
    // In one currency the format has two columns: the balances behind them are left out.
    const ColonnesEtat c = ColonnesTotaux(sommes);
    return suit = EtatPrintf(rangee,
                             {l.Ligne, StrDate(l.DateLigne), EchappeEtat(NomDeLigne(l)),
                              c[0], c[1], c[2], c[3]}) >= 0 &&
                  travail.Pas();
  };
  return livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), m_criteres.du, m_criteres.au, ligne) && suit &&
         EcritTotaux(TotalEtatTva + rang, total) && EcritEtat("\\X") >= 0;
}

}  // namespace fenlor
