#include <algorithm>
#include <cassert>
#include <set>

#include "store/magasincles.h"
#include "store/qvapi.h"

namespace fenlor {

namespace {

class ClesMemoire : public MagasinCles {
 public:
  explicit ClesMemoire(const DescriptionCles& cles) : m_cles(cles) {}

  int Ajoute(unsigned cle, std::string_view texte, u32 position) override {
    assert(cle < m_cles.nombre && position > 0);
    auto& entrees = m_entrees[cle];
    if (!m_cles.doubles[cle]) {
      const auto place = entrees.lower_bound({std::string(texte), 0});
      if (place != entrees.end() && place->first == texte) return ErrCleDouble;
    }
    return entrees.insert({std::string(texte), position}).second ? 0 : ErrCleDouble;
  }

  int AjouteNeuve(unsigned cle, std::string_view texte, u32 position) override {
    return Ajoute(cle, texte, position) == 0 ? 0 : ErrCles;
  }

  int Supprime(unsigned cle, std::string_view texte, u32 position) override {
    return m_entrees[cle].erase({std::string(texte), position}) ? 0 : ErrCleAbsente;
  }

  bool Borne(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) override {
    return Donne(cle, m_entrees[cle].lower_bound({std::string(texte), position}), trouvee);
  }
  bool Apres(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) override {
    return Donne(cle, m_entrees[cle].upper_bound({std::string(texte), position}), trouvee);
  }
  bool Avant(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) override {
    auto place = m_entrees[cle].lower_bound({std::string(texte), position});
    if (place == m_entrees[cle].begin()) return false;
    return Donne(cle, --place, trouvee);
  }
  bool Dernier(unsigned cle, EntreeCle& trouvee) override {
    if (m_entrees[cle].empty()) return false;
    return Donne(cle, std::prev(m_entrees[cle].end()), trouvee);
  }
  void Parcours(unsigned cle, std::string_view debut, FonctionParcours suite) override {
    const auto& entrees = m_entrees[cle];
    for (auto place = entrees.lower_bound({std::string(debut), 0}); place != entrees.end(); ++place) {
      if (!suite(place->first, place->second)) return;
    }
  }
  int ParcoursAPart(unsigned cle, FonctionParcours suite) const override {
    for (const auto& [texte, position] : m_entrees[cle])
      if (!suite(texte, position)) break;
    return 0;
  }
  u64 Nombre(unsigned cle) override { return m_entrees[cle].size(); }

  int Charge(unsigned cle, const ClesComposees& triees) override {
    assert(cle < m_cles.nombre && std::is_sorted(triees.begin(), triees.end()));
    auto& entrees = m_entrees[cle];
    entrees.clear();
    for (const auto& [texte, position] : triees)
      entrees.emplace_hint(entrees.end(), std::string(texte), position);
    return entrees.size() == triees.size() ? 0 : ErrCles;
  }
  int Engage(bool) override { return 0; }
  int Erreur() const override { return 0; }

 private:
  using Entrees = std::set<std::pair<std::string, u32>>;
  bool Donne(unsigned cle, Entrees::iterator place, EntreeCle& trouvee) {
    if (place == m_entrees[cle].end()) return false;
    assert(cle < m_cles.nombre);
    trouvee.texte = place->first;
    trouvee.position = place->second;
    return true;
  }
  DescriptionCles m_cles;
  Entrees m_entrees[8];
};

}  // namespace

int FabriqueMemoire::Ouvre(const std::string&, bool, const DescriptionCles& cles,
                           std::unique_ptr<MagasinCles>& magasin) {
  magasin = std::make_unique<ClesMemoire>(cles);
  return 0;
}

int FabriqueMemoire::OuvreEnLecture(const std::string&, const DescriptionCles&,
                                    std::unique_ptr<MagasinCles>&) {
  return ErrCles;
}

}  // namespace fenlor
