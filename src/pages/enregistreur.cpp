#include "pages/enregistreur.h"

#include <algorithm>
#include <cassert>

#include "pages/miseenpage.h"

namespace fenlor {

namespace {

constexpr i32 largeurA4 = 1900, hauteurA4 = 2770;  // tenths of a millimetre, without margins
constexpr i32 dixiemesParPouce = 254;
constexpr i32 pointsBrouillon = 10;
constexpr i64 largeurTexteMax = 1 << 29;

}  // namespace

Enregistreur Enregistreur::A4(i32 unitesParPouce, bool paysage) {
  const i32 largeur = largeurA4 * unitesParPouce / dixiemesParPouce;
  const i32 hauteur = hauteurA4 * unitesParPouce / dixiemesParPouce;
  return paysage ? Enregistreur(hauteur, largeur, unitesParPouce)
                 : Enregistreur(largeur, hauteur, unitesParPouce);
}

void Enregistreur::FaitPolice(unsigned style, const PoliceEtat& police) {
  m_brouillon = false;
  m_polices[style % NbStyles] = police;
}

void Enregistreur::FaitPoliceBrouillon() {
  m_brouillon = true;
  m_polices.fill({{}, pointsBrouillon * m_unites / pointsParPouce});
}

Etendue Enregistreur::Mesure(unsigned style, std::string_view texte) const {
  const i32 hauteur = HauteurPolice(style);
  // In thirds of a character.
  const i64 taille =
      3 * static_cast<i64>(texte.size()) - 2 * std::count(texte.begin(), texte.end(), BlancFin);
  const i64 largeur = std::min(taille * hauteur / 5, taille * std::max(1, m_largeur / ColonnesPage) / 3);
  assert(largeur >= 0);
  return {static_cast<i32>(std::min(largeur, largeurTexteMax)), hauteur};
}

void Enregistreur::DessineTexte(unsigned style, const Rectangle& cadre, Alignement alignement,
                                std::string_view texte) {
  Elements.push_back({Page, false, cadre, alignement, StyleDessine(style), std::string(texte)});
}

void Enregistreur::DessineTrait(i32 gauche, i32 droite, i32 y, i32 epaisseur) {
  Elements.push_back(
      {Page, true, {gauche, y, droite, y + std::max(1, epaisseur)}, Alignement::Gauche, 0, {}});
}

void Enregistreur::Remplit(const Rectangle& cadre, Ton ton) {
  Elements.push_back({Page, true, cadre, Alignement::Gauche, 0, {}, ton});
}

}  // namespace fenlor
