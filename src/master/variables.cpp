// The entries behind the headings whose formula uses a variable.
#include <functional>
#include <set>

#include "core/textes.h"
#include "master/formule.h"
#include "master/rubriques.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleJournalCompte = 2;

bool CodesUtilisant(CFenlorApp& app, const std::string& variable, std::vector<std::string>& codes) {
  CRubriques rubriques(app, app.PathExercice);
  return rubriques.OpenFile() &&
         app.Magasin.QVParcoursCle(rubriques.NumCle, {}, {}, [&](Position, const void* rec) {
           const Rubrique& rubrique = *static_cast<const Rubrique*>(rec);
           if (FormuleUtilise(LitTexte(rubrique.Formule), variable))
             codes.push_back(LitTexte(rubrique.Rubrique));
           return true;
         });
}

/// Hands over the entry of each line in the accounts of the headings, in order of code and account,
/// until `suite` says false. False on a failure.
bool Parcourt(CFenlorApp& app, const std::string& variable, const std::function<bool(u32)>& suite) {
  std::vector<std::string> codes;
  if (!CodesUtilisant(app, variable, codes)) return false;
  CLines lignes(app, app.PathExercice);
  if (!lignes.OpenFile()) return false;
  const auto cle = static_cast<u16>(lignes.NumCle + CleJournalCompte);
  bool continuer = true;
  for (const std::string& code : codes)
    for (const CompteAssocie& compte : ComptesAssocies(app, code)) {
      std::string debut = compte.compte;
      debut.resize(sizeof Line{}.Compte - 1, ' ');
      const bool lu = app.Magasin.QVParcoursCle(cle, debut, debut + '\xFF', [&](Position, const void* rec) {
        return continuer = suite(static_cast<const Line*>(rec)->Mouvement);
      });
      if (!lu || !continuer) return lu;
    }
  return true;
}

bool Ecritures(CFenlorApp& app, const std::string& variable, std::set<u32>& mouvements) {
  return Parcourt(app, variable, [&](u32 mouvement) {
    mouvements.insert(mouvement);
    return true;
  });
}

}  // namespace

bool RubriqueVariableEcritures(CFenlorApp& app, const std::string& variable) {
  bool trouve = false;
  Parcourt(app, variable, [&](u32) {
    trouve = true;
    return false;
  });
  return trouve;
}

u32 CompteEcrituresVariable(CFenlorApp& app, const std::string& variable) {
  std::set<u32> mouvements;
  Ecritures(app, variable, mouvements);
  return static_cast<u32>(mouvements.size());
}

bool SupprimeEcrituresVariable(CFenlorApp& app, const std::string& variable) {
  if (app.Reglages.IsExerciceCloture()) return app.ReportErreur(3056);
  CLines lignes(app, app.PathExercice);
  CPlan plan(app, app.PathExercice);
  std::set<u32> mouvements;
  if (!lignes.OpenFile() || !plan.OpenFile() || !Ecritures(app, variable, mouvements)) return false;
  QVAPI::Unite unite(app.Magasin);
  for (const u32 mouvement : mouvements)
    if (!app.Magasin.RemoveMouvements(app.PathExercice, mouvement)) return false;
  if (unite.Valide()) return true;
  return app.ReportErreur(ErrMagasin, {app.Magasin.QVErreurTexte(app.Magasin.QVFileErrorCode())});
}

}  // namespace fenlor
