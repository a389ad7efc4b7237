// Texts of graphiques/ and of the windows above it.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

/// path, reason
inline constexpr TexteFixe ErrEcritureGraphique{3580, "Le graphique n'a pas pu être écrit dans %s : %s"};

inline constexpr TexteFixe TitreComparaison{6690, " Comparaison entre plusieurs comptes "};
inline constexpr TexteFixe TitreEvolutionComptes{6691, " Evolution de plusieurs comptes "};
/// short account number, designation
inline constexpr TexteFixe TitreEvolutionCompte{6692, " Evolution du compte %s : %s "};
inline constexpr TexteFixe TexteToutNul{6693, "Aucun montant à représenter"};
inline constexpr TexteFixe TexteValeursAbsolues{6694, "Parts calculées sans le signe des montants"};
inline constexpr TexteFixe FormatPart{6695, "%s %s %%"};  ///< label, percentage
inline constexpr TexteFixe MotPartInfime{6696, "< 0,1"};
inline constexpr TexteFixe CleGenreGraphique{6697, "Type de graphique"};
// clang-format on

}  // namespace fenlor
