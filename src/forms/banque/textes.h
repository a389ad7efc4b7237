// What the windows of the bank say.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Questions
inline constexpr TexteFixe QuestionAbandonneOperation{3458,
    "L'opération en cours de saisie n'est pas enregistrée.\n\nFaut-il l'abandonner ?", Detruit};
// clang-format on

}  // namespace fenlor
