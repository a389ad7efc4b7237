// What the rules of the bank's operations say.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Refusals
/// what was given as an account
inline constexpr TexteFixe ErrCompteNonBancaire{3450, "\"%s\" n'est pas un compte bancaire."};
inline constexpr TexteFixe ErrOperationAbsente{3451, "Cette opération bancaire n'existe plus."};

// Questions
/// date, label, amount
inline constexpr TexteFixe QuestionSupprimeOperation{3452, "Suppression de l'opération :\n%s, %s, %s",
                                                     Detruit};

// Settings of an exercice: balance of the last statement of an account, whose number stands behind
inline constexpr TexteFixe CleSoldeReleve{5925, "SoldeReleve%s"};
// clang-format on

}  // namespace fenlor
