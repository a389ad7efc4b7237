#include "outils/textessources.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>

#include "outils/cabinetdetest.h"

namespace fenlor::test {

std::vector<TexteSource> TextesDesSources() {
  // A number and the pieces of a literal, whose escapes are those of JSON.
  const std::regex texte("\\{(\\d{4}),\\s*((?:\"(?:[^\"\\\\]|\\\\.)*\"\\s*)+)(, Detruit)?\\}"),
      jointure("\"\\s*\"");
  const auto sources = std::filesystem::path(__FILE__).parent_path() / "../../src";
  std::vector<TexteSource> textes;
  for (const auto& entree : std::filesystem::recursive_directory_iterator(sources)) {
    const auto nom = entree.path().filename();
    if (nom != "textes.h" && nom != "erreurs.h" && nom != "cles.h") continue;
    const std::string contenu = LitFichier(entree.path());
    for (std::sregex_iterator i(contenu.begin(), contenu.end(), texte), fin; i != fin; ++i)
      textes.push_back(
          {static_cast<unsigned>(std::stoul((*i)[1])),
           nlohmann::json::parse(std::regex_replace((*i)[2].str(), jointure, "")).get<std::string>(),
           (*i)[3].matched, entree.path().string()});
  }
  return textes;
}

}  // namespace fenlor::test
