// Texts of pages/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrFichierTemporaire{3109, "Création du fichier temporaire impossible."};
/// nothing to show: name of the report
inline constexpr TexteFixe ErrEtatAbsent{3271, "L'état %s n'a pas pu être construit."};

// Report engine
/// markup of a page's title: name, company
inline constexpr TexteFixe EtatTitreIdentite{6300, "\\I\\B%s    \\0\\I%s\n\\S001\n"};
/// date, title, page, pages
inline constexpr TexteFixe EtatTitrePage{6301, "\\L\\0\\1%s\\2\\B\\U %s \\3\\0Page %u / %u\n\n"};
inline constexpr TexteFixe EtatSansTexte{6302, "*** Il n'y a pas de texte à imprimer !\n"};
inline constexpr TexteFixe ErrEtatPlacement{6303, "Erreur placement"};
inline constexpr TexteFixe ErrEtatLecture{6304, "Erreur de lecture du fichier temporaire."};
inline constexpr TexteFixe ErrEtatMemoire{6305, "Erreur allocation mémoire."};
/// the store's words
inline constexpr TexteFixe ErrEtatEcriture{6306,
    "L'état n'a pas pu être construit jusqu'au bout.\nLe fichier temporaire n'a pas pu être écrit : "
    "%s"};
// clang-format on

}  // namespace fenlor
