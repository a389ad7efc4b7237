// What several floors refuse of a value that is typed.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off
inline constexpr TexteFixe ErrDateAvantEuro{3018, "La date doit être supèrieure au 1er Janvier 1999"};
inline constexpr TexteFixe ErrDateIncorrecte{3104, "La date est incorrecte."};
inline constexpr TexteFixe ErrMontantNul{3106, "Le montant est égal à zéro."};
inline constexpr TexteFixe ErrCompteTvaIntrouvable{3107, "Le compte de T.V.A. à %s%% est introuvable !"};
inline constexpr TexteFixe ErrSansCompteChoisi{3112, "Sélectionnez un ou plusieurs comptes"};
inline constexpr TexteFixe ErrComparaisonUnCompte{3113,
    "Sélectionnez plusieurs comptes pour faire une comparaison"};
inline constexpr TexteFixe ErrCompteObligatoire{3119, "Le compte est obligatoire !"};
inline constexpr TexteFixe ErrTexteTropLong{3206, "Le champ \"%s\" est trop long : %s caractères au plus."};
/// what was typed; smallest, largest
inline constexpr TexteFixe ErrMontantBornes{3401, "\"%s\" est hors des limites de ce champ : de %s à %s."};
// clang-format on

}  // namespace fenlor
