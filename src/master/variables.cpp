#include "master/variables.h"

#include <cassert>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "core/erreursexercice.h"
#include "master/formule.h"
#include "master/rubriques.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Codes of the headings that use the variable, and of those that their formulas add up, in order.
bool CodesUtilisant(CFenlorApp& app, const std::string& variable, std::set<std::string>& codes) {
  assert(!variable.empty() && codes.empty());
  CRubriques rubriques(app, app.PathExercice);
  std::map<std::string, std::string> formules;
  std::vector<std::string> atteints;
  const bool lu = rubriques.OpenFile() &&
                  app.Magasin.QVParcoursCle(rubriques.NumCle, {}, {}, [&](Position, const void* rec) {
                    const Rubrique& rubrique = *static_cast<const Rubrique*>(rec);
                    const std::string code = LitTexte(rubrique.Rubrique),
                                      formule = LitTexte(rubrique.Formule);
                    const bool utilise = FormuleUtilise(formule, variable);
                    formules[code] = rubrique.Manuel && !utilise ? std::string() : formule;
                    if (utilise) atteints.push_back(code);
                    return true;
                  });
  while (!atteints.empty()) {
    const std::string code = atteints.back();
    atteints.pop_back();
    const auto formule = formules.find(code);
    if (formule == formules.end() || !codes.insert(code).second) continue;
    for (const TermeFormule& terme : TermesFormule(formule->second))
      if (terme.signe == '+') atteints.push_back(RubriqueDuTerme(terme.texte));
  }
  return lu;
}

/// The entry of each line in the accounts of the headings. False on a failure.
bool Ecritures(CFenlorApp& app, const std::string& variable, std::set<u32>& mouvements) {
  std::set<std::string> codes;
  if (!CodesUtilisant(app, variable, codes)) return false;
  CLines lignes(app, app.PathExercice);
  if (!lignes.OpenFile()) return false;
  const auto cle = static_cast<u16>(lignes.NumCle + IndiceCompteDate);
  const auto retient = [&](Position, const void* rec) {
    const u32 mouvement = static_cast<const Line*>(rec)->Mouvement;  // packed: no reference to it
    mouvements.insert(mouvement);
    return true;
  };
  for (const std::string& code : codes)
    for (const CompteAssocie& compte : ComptesAssocies(app, code)) {
      std::string debut = compte.compte;
      debut.resize(sizeof Line{}.Compte - 1, ' ');
      if (!app.Magasin.QVParcoursCle(cle, debut, debut + '\xFF', retient)) return false;
    }
  return true;
}

}  // namespace

u32 CompteEcrituresVariable(CFenlorApp& app, const std::string& variable) {
  std::set<u32> mouvements;
  Ecritures(app, variable, mouvements);
  return static_cast<u32>(mouvements.size());
}

Refus SupprimeEcrituresVariable(CFenlorApp& app, const std::string& variable) {
  if (const Refus r = app.ControleEcriture()) return r;
  CLines lignes(app, app.PathExercice);
  CPlan plan(app, app.PathExercice);
  std::set<u32> mouvements;
  if (!lignes.OpenFile() || !plan.OpenFile() || !Ecritures(app, variable, mouvements)) return EchecFichier();
  QVAPI::Unite unite(app.Magasin);
  for (const u32 mouvement : mouvements)
    if (!app.Magasin.RemoveMouvements(app.PathExercice, mouvement)) return app.EchecDit();
  return unite.Valide() ? Refus() : app.EchecMagasin();
}

}  // namespace fenlor
