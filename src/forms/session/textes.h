// Texts of forms/session/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrPasDExercice{3072, "Il n'y a pas d'exercices !"};

// Questions
/// name
inline constexpr TexteFixe QuestionReconstruire{3500,
    "Un fichier de l'exercice %s est endommagé.\n\nFaut-il reconstruire ses clés d'accès et ouvrir "
    "l'exercice ensuite ?"};

// Preferences and positions of windows
inline constexpr TexteFixe InfoReconstruction{5707,
    "Des fichiers ont été corrigés pendant la reconstruction :\n\n%s"};
// clang-format on

}  // namespace fenlor
