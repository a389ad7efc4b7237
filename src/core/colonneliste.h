// A column of a list of records: one row of a table that windows and fenlorctl read alike.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace fenlor {

enum class Cote { Gauche, Droite, Centre };

/// `Fiche` is what a row shows. All texts are Windows-1252.
template <class Fiche>
struct ColonneListe {
  using TexteDe = std::function<std::string(const Fiche&)>;
  using Compare = std::function<int(const Fiche&, const Fiche&)>;
  ColonneListe(std::string t, int l, TexteDe de, Cote c = Cote::Gauche, Compare ordre = nullptr,
               std::string m = {})
      : titre(std::move(t)),
        largeur(l),
        texte(std::move(de)),
        cote(c),
        compare(std::move(ordre)),
        marque(std::move(m)) {}

  std::string titre;
  int largeur;  ///< pixels in a window, percent of the list in a form
  TexteDe texte;
  Cote cote;
  Compare compare;     ///< negative, 0 or positive; none: by the texts, `CleAlphabetique`
  std::string marque;  ///< a column of marks: what one means. A text that is not empty is a mark then
};

template <class Fiche>
using TableColonnes = std::vector<ColonneListe<Fiche>>;

/// Texts of a row, one for each column.
template <class Fiche>
std::vector<std::string> Cellules(const TableColonnes<Fiche>& colonnes, const Fiche& fiche) {
  std::vector<std::string> textes;
  for (const ColonneListe<Fiche>& colonne : colonnes) textes.push_back(colonne.texte(fiche));
  return textes;
}

}  // namespace fenlor
