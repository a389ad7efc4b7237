#include "master/comptesparticuliers.h"

#include "core/btfiles.h"
#include "core/valeurs.h"
#include "master/lotreglages.h"
#include "master/textes.h"
#include "store/texte1252.h"

namespace fenlor {

ComptesParticuliers LitComptesParticuliers(CFenlorApp& app) {
  QVAPI& magasin = app.Magasin;
  return {magasin.GetCompteVireTo(), magasin.GetCompteVireFrom(), magasin.GetComptePerso(),
          magasin.GetCompteEcartCredit(), magasin.GetCompteEcartDebit()};
}

bool EcritComptesParticuliers(CFenlorApp& app, const ComptesParticuliers& comptes) {
  const ComptesParticuliers avant = LitComptesParticuliers(app);
  LotReglages lot(app);
  constexpr TexteFixe cles[] = {CleVirementRecette, CleVirementDepense, ClePrelevement, CleEcartCredit,
                                CleEcartDebit};
  for (std::size_t i = 0; i < comptes.size(); ++i) {
    const std::string compte = QVAPI::GetLongCompte(comptes[i]);
    if (!compte.empty() && compte != avant[i]) lot.Pose(Texte(SecComptes), Texte(cles[i]), compte);
  }
  return lot.Ecrit();
}

std::vector<CompteListe> ComptesAChoisir(CFenlorApp& app) {
  std::vector<CompteListe> comptes;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return comptes;
  app.Magasin.QVParcoursCle(plan.NumCle, {}, {}, [&](Position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    comptes.push_back({LitTexte(compte.Compte), LitTexte(compte.Designation)});
    return true;
  });
  for (CompteListe& compte : comptes) compte.texte = app.NumeroCourt(compte.compte) + ' ' + compte.texte;
  return comptes;
}

}  // namespace fenlor
