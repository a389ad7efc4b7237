// Texts of ctl/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrEcritureFichier{3022, "Erreur lors de l'écriture dans un fichier."};
inline constexpr TexteFixe ErrCodeLecture{3052, "Erreur %d en lecture de :\n%s."};
inline constexpr TexteFixe ErrFinDeFichier{3066, "Fin de fichier rencontrée en lecture !"};

// Refusals
inline constexpr TexteFixe ErrLigneIllisible{3200, "Ligne %s : %s"};  ///< a line of JSON that cannot be read
inline constexpr TexteFixe ErrChampManquant{3204, "Le champ \"%s\" est obligatoire."};
/// this fenlorctl writes no PDF
inline constexpr TexteFixe ErrSansPdf{3270, "Ce fenlorctl est construit sans PDF."};

// Warnings
inline constexpr TexteFixe AvisRienDuTout{
    3595, "Aucune ligne n'est enregistrée : elles forment un seul tout."};
// clang-format on

}  // namespace fenlor
