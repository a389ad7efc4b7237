#include "master/formule.h"

#include <algorithm>
#include <cassert>
#include <map>

#include "core/valeurs.h"
#include "master/textes.h"

namespace fenlor {

std::vector<TermeFormule> TermesFormule(std::string_view formule) {
  std::vector<TermeFormule> termes;
  std::string reste = CompacteTexte(formule);
  while (!reste.empty()) {
    TermeFormule terme;
    reste = TermeSuivant(reste, terme.texte, terme.signe);
    assert(terme.signe == '+' || terme.signe == '-');
    termes.push_back(std::move(terme));
  }
  return termes;
}

bool FormuleUtilise(std::string_view formule, std::string_view terme) {
  const std::vector<TermeFormule> termes = TermesFormule(formule);
  return std::any_of(termes.begin(), termes.end(), [&](const auto& t) { return t.texte == terme; });
}

std::string RubriqueDuTerme(std::string_view terme) {
  constexpr std::size_t longueur = 3;
  if (terme.empty() || terme.size() > longueur) return {};
  std::string code(terme);
  code.resize(longueur, ' ');
  return code;
}

bool EstVariable(std::string_view terme) {
  constexpr TexteFixe variables[] = {VariableFraisKm, VariableAmortissements, VariablePlusValues,
                                     VariableMoinsValues, VariableImmobilisations};
  return std::any_of(std::begin(variables), std::end(variables),
                     [&](const TexteFixe& variable) { return Texte(variable) == terme; });
}

std::vector<std::string> BoucleDeFormule(const std::string& code, const SourceFormules& formules) {
  std::map<std::string, std::string> venuDe;
  std::vector<std::string> atteintes{code};
  for (std::size_t i = 0; i < atteintes.size(); ++i) {
    const std::string depuis = atteintes[i];
    for (const TermeFormule& terme : TermesFormule(formules(depuis))) {
      const std::string vers = RubriqueDuTerme(terme.texte);
      if (vers.empty() || !venuDe.emplace(vers, depuis).second) continue;
      if (vers != code) {
        atteintes.push_back(vers);
        continue;
      }
      std::vector<std::string> boucle{code};
      for (std::string pas = depuis; pas != code; pas = venuDe[pas]) boucle.push_back(pas);
      boucle.push_back(code);
      std::reverse(boucle.begin(), boucle.end());
      assert(boucle.size() > 1 && boucle.front() == code && boucle.back() == code);
      return boucle;
    }
  }
  return {};
}

}  // namespace fenlor
