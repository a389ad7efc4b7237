#include "master/utilisationcompte.h"

#include <algorithm>
#include <cassert>

#include "core/btfiles.h"
#include "core/valeurs.h"
#include "master/comptesparticuliers.h"
#include "master/textes.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

bool EstParticulier(CFenlorApp& app, const std::string& compte) {
  const ComptesParticuliers comptes = LitComptesParticuliers(app);
  return std::find(comptes.begin(), comptes.end(), compte) != comptes.end();
}

/// Long number of the first account that takes its VAT there.
std::string CompteAvecTva(CFenlorApp& app, const std::string& compte) {
  CPlan plan(app, app.PathExercice);
  std::string trouve;
  if (plan.OpenFile())
    app.Magasin.QVParcoursCle(plan.NumCle, {}, {}, [&](Position, const void* rec) {
      const Plan& autre = *static_cast<const Plan*>(rec);
      if (LitTexte(autre.CompteTVA) == compte) trouve = LitTexte(autre.Compte);
      return trouve.empty();
    });
  return trouve;
}

bool AOperationsBancaires(CFenlorApp& app, const std::string& compte) {
  CBanques banques(app, app.PathExercice);
  PoseTexte(banques.Rec->Compte, compte);
  return banques.OpenFile() && banques.Browse(0) && LitTexte(banques.Rec->Compte) == compte;
}

bool AEcritureAutomatique(CFenlorApp& app, const std::string& compte) {
  QVAPI& magasin = app.Magasin;
  const Ouverture fichier(magasin, FichierAuto);
  bool trouve = false;
  const u32 nombre = fichier ? magasin.GetEcrituresAutoRec(fichier.Poignee()) : 0;
  for (u32 i = 1; i <= nombre && !trouve; ++i) {
    EcrituresAuto ecriture{};
    trouve = magasin.ReadEcrituresAuto(i, ecriture, fichier.Poignee()) &&
             (LitTexte(ecriture.Tresorerie) == compte || LitTexte(ecriture.Compte) == compte ||
              LitTexte(ecriture.CompteTaxe) == compte);
  }
  return trouve;
}

}  // namespace

std::string UtilisationCompte(CFenlorApp& app, const std::string& compte) {
  assert(!compte.empty());
  if (EstParticulier(app, compte)) return Texte(MotComptesParticuliers);
  if (const std::string autre = CompteAvecTva(app, compte); !autre.empty())
    return TexteFormat(FormatCompteAvecTva, {app.NumeroCourt(autre)});
  if (AOperationsBancaires(app, compte)) return Texte(MotOperationsBancaires);
  if (AEcritureAutomatique(app, compte)) return Texte(MotEcritureAutomatique);
  return {};
}

}  // namespace fenlor
