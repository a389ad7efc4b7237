// Columns that make room for what stands in them on a page.

#include <algorithm>
#include <cassert>
#include <functional>
#include <map>
#include <set>

#include "pages/miseenligne.h"

namespace fenlor {

namespace {

/// Columns that a title may be moved to stand over its texts.
constexpr i32 DecalageTitre = 5;
/// A line with fewer texts is no heading of a table.
constexpr std::size_t TitresMin = 3;

}  // namespace

void MiseEnLigne::MesureColonnes() {
  assert(m_bords.empty());
  std::map<i32, Rangee> parHauteur;
  for (Groupe& groupe : m_groupes)
    if (groupe.place.haut >= m_sansBande && groupe.Montree())
      parHauteur[groupe.place.haut].push_back(&groupe);
  std::vector<Rangee> rangees;
  for (auto& [haut, rangee] : parHauteur) {
    std::stable_sort(rangee.begin(), rangee.end(),
                     [](const Groupe* a, const Groupe* b) { return a->Cle() < b->Cle(); });
    rangees.push_back(std::move(rangee));
  }
  EcarteFigures(rangees);
  RejointTitres(rangees);
}

/// Ends of columns, from the right: each leaves room for the widest figure on its right. A column that stands
/// well stays, and so do all where a label would lose more than half of its place.
void MiseEnLigne::EcarteFigures(const std::vector<Rangee>& rangees) {
  struct Voisines {
    i32 gauche;
    i32 largeur;  ///< of the figure on the right
  };
  std::map<i32, i32, std::greater<>> fins;  // from the right: the end of a column, and where it goes
  std::multimap<i32, Voisines> voisines;    // by the end of the right one
  for (const Rangee& rangee : rangees) {
    const Groupe* avant = nullptr;
    for (const Groupe* groupe : rangee) {
      if (groupe->Colonne()) {
        fins.emplace(groupe->place.droite, groupe->place.droite);
        if (avant && avant->place.droite < groupe->place.droite)
          voisines.emplace(groupe->place.droite,
                           Voisines{avant->place.droite, static_cast<i32>(groupe->largeur)});
      }
      avant = groupe->Colonne() ? groupe : nullptr;
    }
  }
  for (const auto& [fin, voulue] : fins) {
    const auto [debut, apres] = voisines.equal_range(fin);
    for (auto v = debut; v != apres; ++v) {
      i32& gauche = fins.at(v->second.gauche);
      gauche = std::min(gauche, voulue - v->second.largeur - m_ecart);
    }
  }
  const auto tient = [&](const Groupe& label, const Groupe& figure) {
    const i64 place = fins.at(figure.place.droite) - figure.largeur - m_ecart - label.place.gauche;
    return place >= std::min<i64>(label.largeur, (figure.place.droite - label.place.gauche) / 2);
  };
  for (const Rangee& rangee : rangees)
    for (std::size_t i = 0; i + 1 < rangee.size(); ++i)
      if (!rangee[i]->Colonne() && rangee[i + 1]->Colonne() && !tient(*rangee[i], *rangee[i + 1]))
        for (auto& [fin, voulue] : fins) voulue = fin;
  for (const Rangee& rangee : rangees)
    for (Groupe* groupe : rangee) {
      if (!groupe->Colonne()) continue;
      PlaceTexte& place = groupe->place;
      const i32 debut = place.gauche, fin = fins.at(place.droite);
      const i32 bord = std::max(place.marge, fin - static_cast<i32>(groupe->largeur));
      place.droite = fin;
      place.gauche = std::min(debut, bord);
      const auto [connu, neuf] = m_bords.emplace(debut, bord);
      if (!neuf) connu->second = std::min(connu->second, bord);
    }
}

bool MiseEnLigne::EstTitre(const Rangee& rangee) const {
  return rangee.size() >= TitresMin &&
         std::all_of(rangee.begin(), rangee.end(),
                     [this](const Groupe* groupe) { return m_runs[groupe->premier].style & StyleGras; });
}

/// The report begins some titles a little before the texts under them.
void MiseEnLigne::RejointTitres(const std::vector<Rangee>& rangees) const {
  std::set<i32> debuts;
  for (const Rangee& rangee : rangees)
    for (const Groupe* groupe : rangee)
      if (!EstTitre(rangee) && groupe->AGauche()) debuts.insert(groupe->place.gauche);
  for (const Rangee& rangee : rangees) {
    for (std::size_t i = 0; i < rangee.size() && EstTitre(rangee); ++i) {
      PlaceTexte& place = rangee[i]->place;
      if (!rangee[i]->AGauche() || debuts.contains(place.gauche)) continue;
      const auto debut = debuts.upper_bound(place.gauche);
      const i32 limite = i + 1 < rangee.size() ? rangee[i + 1]->Reserve() : place.limite;
      if (debut != debuts.end() && *debut - place.gauche <= DecalageTitre * m_page.unite &&
          *debut + rangee[i]->largeur + m_ecart <= limite)
        place.gauche = *debut;
    }
  }
}

}  // namespace fenlor
