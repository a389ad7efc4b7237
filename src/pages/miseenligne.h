// The texts of the lines of a page, placed so that none touches its neighbour.
//
// What fits stands exactly where the strings put it. Where there is no room for that, a figure (a text that
// is aligned right, a number, three characters at most) is drawn narrower until it fits, after it has taken
// what is free on its left; another text is drawn narrower as far as the style of the paper lets it, and then
// ends with "…". Columns do not move, and nothing passes the margins. Where the style measures them, columns
// of figures move left first as far as the figures on the page ask for it, titles stand over the texts of
// their column, and a text may take what the figures beside it leave free on the whole page.
#pragma once

#include <algorithm>
#include <cassert>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pages/miseenpage.h"
#include "pages/peripherique.h"

namespace fenlor {

/// Puts `BlancFin` between the thousands of an amount: a run of figures and signs alone with two decimals, or
/// with none where a column ends (`colonne`).
void GroupeMilliers(std::string& run, bool colonne);

/// Where the strings put a text: neighbouring runs that differ in their style alone are one text.
struct PlaceTexte {
  i32 haut = 0, hauteur = 0;
  Alignement alignement = Alignement::Gauche;
  i32 gauche = 0;  ///< of its column
  /// The column's end: where the next one begins, the limit, or the column to end at. A text on the left that
  /// has it behind it is not drawn.
  i32 droite = 0;
  /// Aligned right to a column that lies behind: it begins at `gauche`, as one on the left.
  bool debute = false;
  i32 marge = 0, limite = 0;     ///< the margins, from the left
  bool colonneSuivante = false;  ///< `droite` is the begin of another column, which is not to be touched
};

class MiseEnLigne {
 public:
  MiseEnLigne(const MiseEnPage& page, Peripherique& peripherique)
      : m_page(page),
        m_papier(DessinDe(page.style)),
        m_ecart(std::max(1, page.unite * 3 / 4)),
        m_peripherique(peripherique) {
    m_runs.reserve(RunsParPage);
    m_groupes.reserve(RunsParPage);
    m_textes.reserve(RunsParPage * 16);
  }

  /// Begins a text with its first run, whose width is that of the device. The text's number.
  std::size_t Commence(const PlaceTexte& place, unsigned style, std::string_view run, i32 largeur);
  /// A further run of a text.
  void Continue(std::size_t texte, unsigned style, std::string_view run, i32 largeur);
  void Trait(i32 gauche, i32 droite, i32 y, i32 epaisseur);
  /// What stands above this height is no heading of a table.
  void SansBande(i32 haut) { m_sansBande = haut; }
  /// Places all texts and draws what came, in the order in which it came; then there is nothing left.
  void Dessine();

 private:
  static constexpr std::size_t Aucun = static_cast<std::size_t>(-1);
  static constexpr std::size_t RunsParPage = 512;  ///< of most pages
  struct Run {
    unsigned style = 0;
    std::size_t debut = 0, taille = 0;  ///< its text in `m_textes`
    i32 largeur = 0;
    std::size_t groupe = 0;  ///< its text, or `Aucun`: a rule in `cadre`, as thick as `largeur`
    Rectangle cadre{};
    std::size_t suivant = Aucun;  ///< run of its text
  };
  struct Groupe {
    PlaceTexte place;
    i64 largeur = 0;
    bool nombre = true;
    std::size_t premier = Aucun, dernier = Aucun;  ///< of its runs
    bool AGauche() const;
    bool Montree() const;  ///< it has a column
    i32 Cle() const;       ///< its fixed point
    i32 Reserve() const;   ///< where it begins if it keeps to its column
    bool Figure() const;
    bool Colonne() const { return place.alignement == Alignement::Droite && !AGauche(); }  ///< of figures
  };
  /// The shown texts of a line of the text, from the left.
  using Rangee = std::vector<Groupe*>;
  /// Each line of the page: its height, and whether its first text is bold. From the top down.
  using Lignes = std::vector<std::pair<i32, bool>>;
  std::string_view TexteDe(const Run& run) const {
    assert(run.debut + run.taille <= m_textes.size());
    return std::string_view(m_textes).substr(run.debut, run.taille);
  }
  // mesurecolonnes.cpp
  void MesureColonnes();
  void EcarteFigures(const std::vector<Rangee>& rangees);
  void RejointTitres(const std::vector<Rangee>& rangees) const;
  bool EstTitre(const Rangee& rangee) const;

  /// The texts of one line, from the left.
  void PlaceLigne(std::span<const std::size_t> ligne);
  /// A tint behind each bold line beside a rule, and behind its bold neighbours.
  void DessineBandes(const Lignes& lignes);
  void DessineTrait(const Rectangle& cadre, i32 epaisseur);
  i32 Borne(const Groupe& groupe, const Groupe& suivant) const;
  /// The drawn right edge.
  i32 Place(Groupe& groupe, i32 gauche, i32 droite);
  void Raccourcit(Groupe& groupe, i32 place);
  void Etend(const Groupe& groupe, i32 gauche, i32 largeur);

  const MiseEnPage m_page;
  const DessinPapier& m_papier;
  i32 m_sansBande = 0;
  i32 m_ecart;  ///< between two neighbours; two thirds of it behind a number on the left
  Peripherique& m_peripherique;
  std::string m_textes;  ///< of all runs, one behind the other
  std::vector<Run> m_runs;
  std::vector<Groupe> m_groupes;
  std::map<i32, i32>
      m_bords;  ///< of measured columns, by their begin: where their figures begin on this page
};

}  // namespace fenlor
