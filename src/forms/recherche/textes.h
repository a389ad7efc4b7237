// Texts of the find box.
#pragma once

#include "core/texte.h"

namespace fenlor {

inline constexpr TexteFixe RechercheVide{
    6710, "Un mot d'un libellé, un montant, une date, un compte,\nune commande, un état, une page d'aide"};
inline constexpr TexteFixe RechercheRien{6711, "Rien n'a tous ces mots"};
inline constexpr TexteFixe FormatTrouvees{6713, "%s écritures ; les %s meilleures sont dans la liste"};
inline constexpr TexteFixe FormatToutesTrouvees{6714, "%s écritures"};
inline constexpr TexteFixe UneTrouvee{6715, "Une écriture"};
inline constexpr TexteFixe MotEcriture{6716, "Écriture"};
inline constexpr TexteFixe MotCompte{6717, "Compte"};
inline constexpr TexteFixe MotRubrique{6718, "Rubrique"};
inline constexpr TexteFixe TropDeMots{6719, "Trop de mots"};
inline constexpr TexteFixe ColonneQuoi{6720, "Quoi"};
inline constexpr TexteFixe ColonneOu{6721, "Où"};

}  // namespace fenlor
