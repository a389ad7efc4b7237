// The device that paints nothing and remembers everything: for tests, and for reports
// as text. Its only font is of fixed width, 0.6 of the height, at any resolution, and a column of the page at
// most, as the print font's.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "pages/peripherique.h"

namespace fenlor {

/// A run of text, or a rule: then `texte` is empty and `cadre` its place.
struct ElementPage {
  u32 page = 0;
  bool trait = false;
  Rectangle cadre;
  Alignement alignement = Alignement::Gauche;
  unsigned style = 0;                     ///< StyleEtat
  std::string texte;                      ///< Windows-1252
  std::optional<Ton> ton = std::nullopt;  ///< a rule or a rectangle that is not black
  bool operator==(const ElementPage&) const = default;
};

class Enregistreur : public Peripherique {
 public:
  Enregistreur(i32 largeur, i32 hauteur, i32 unitesParPouce)
      : m_largeur(largeur), m_hauteur(hauteur), m_unites(unitesParPouce) {}
  /// A sheet of A4 with margins of 10 millimetres.
  static Enregistreur A4(i32 unitesParPouce = UnitesPeripherique, bool paysage = false);

  u32 Page = 1;                       ///< noted in what is drawn from now on
  std::vector<ElementPage> Elements;  ///< in drawing order; the caller may empty it

  i32 Largeur() const override { return m_largeur; }
  i32 Hauteur() const override { return m_hauteur; }
  i32 UnitesParPouce() const override { return m_unites; }
  void FaitPolice(unsigned style, const PoliceEtat& police) override;
  /// 10 points, and no run has a style.
  void FaitPoliceBrouillon() override;
  i32 HauteurPolice(unsigned style) const override { return m_polices[style % NbStyles].hauteur; }
  /// The style that a run is noted with.
  unsigned StyleDessine(unsigned style) const { return m_brouillon ? 0 : style; }
  Etendue Mesure(unsigned style, std::string_view texte) const override;
  void DessineTexte(unsigned style, const Rectangle& cadre, Alignement alignement,
                    std::string_view texte) override;
  void DessineTrait(i32 gauche, i32 droite, i32 y, i32 epaisseur) override;
  void Remplit(const Rectangle& cadre, Ton ton) override;

 private:
  i32 m_largeur;
  i32 m_hauteur;
  i32 m_unites;
  bool m_brouillon = false;
  std::array<PoliceEtat, NbStyles> m_polices;
};

}  // namespace fenlor
