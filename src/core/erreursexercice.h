// What several floors tell of the exercice as a whole: apart, for half of all rules refuse with one of them.
#pragma once

#include "core/texte.h"

namespace fenlor {

inline constexpr TexteFixe ErrExerciceCloture{3056, "Action impossible sur un exercice cloturé"};
/// The store tells it in the same words and by the same number.
inline constexpr TexteFixe ErrCabinetEnLecture{
    3563, "Le cabinet est ouvert en lecture seule : rien ne peut y être enregistré."};
inline constexpr TexteFixe ErrAucunExercice{3209, "Aucun exercice n'est ouvert."};

}  // namespace fenlor
