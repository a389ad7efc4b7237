#include "journal/libellesconnus.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <set>
#include <tuple>

#include "core/btfiles.h"
#include "core/valeurs.h"
#include "journal/choixcomptes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

std::vector<LibelleConnu> LibellesConnus(CFenlorApp& app, i16 journal, const std::string& compte) {
  if (compte.empty() || app.PathExercice.empty()) return {};
  CLines lignes(app, app.PathExercice);
  if (!lignes.OpenFile()) return {};
  std::map<std::string, LibelleConnu, std::less<>> vus;
  const std::string debut = MakeJournalKey2(static_cast<unsigned>(journal), compte, 0, 0, 0, 0);
  const auto suite = [&](Position, const void* rec) {
    const Line& ligne = *static_cast<const Line*>(rec);
    if (ligne.Journal != journal || std::string_view(ligne.Compte, strnlen(ligne.Compte, 11)) != compte)
      return false;
    const std::string_view libelle(ligne.Libelle, strnlen(ligne.Libelle, sizeof ligne.Libelle));
    if (EstVide(libelle)) return true;
    auto connu = vus.find(libelle);
    if (connu == vus.end()) connu = vus.emplace(libelle, LibelleConnu{std::string(libelle)}).first;
    ++connu->second.fois;
    // The walk goes by date and number: the last one met is the last one.
    connu->second.date = ligne.Date;
    connu->second.mouvement = ligne.Mouvement;
    return true;
  };
  app.Magasin.QVParcoursCle(static_cast<u16>(lignes.NumCle + IndiceJournalCompte), debut, {}, suite);
  std::vector<LibelleConnu> connus;
  for (auto& [libelle, connu] : vus) connus.push_back(std::move(connu));
  std::stable_sort(connus.begin(), connus.end(), [](const LibelleConnu& a, const LibelleConnu& b) {
    return std::tuple(a.fois, a.date, a.mouvement) > std::tuple(b.fois, b.date, b.mouvement);
  });
  return connus;
}

const LibelleConnu* ConnuDe(const std::vector<LibelleConnu>& connus, const std::string& libelle) {
  const auto trouve = std::find_if(connus.begin(), connus.end(), [&](const LibelleConnu& connu) {
    return CompareSansCasse(connu.libelle, libelle) == 0;
  });
  return trouve == connus.end() ? nullptr : &*trouve;
}

std::vector<std::string> LibellesProposes(const std::vector<LibelleConnu>& connus,
                                          const std::vector<std::string>& liste, const std::string& texte,
                                          std::size_t auPlus) {
  std::string debut;
  AjouteSansAccents(debut, CompacteTexte(texte));
  std::vector<std::string> debuts, autres;
  std::set<std::string> pris;
  const auto examine = [&](const std::string& libelle) {
    std::string plie;
    AjouteSansAccents(plie, libelle);
    if (!TousLesMots(plie, debut) || !pris.insert(plie).second) return;
    (plie.starts_with(debut) ? debuts : autres).push_back(libelle);
  };
  for (const LibelleConnu& connu : connus) examine(connu.libelle);
  for (const std::string& libelle : liste) examine(libelle);
  debuts.insert(debuts.end(), autres.begin(), autres.end());
  debuts.resize(std::min(auPlus, debuts.size()));
  return debuts;
}

}  // namespace fenlor
