// Texts of forms/reports/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Printing and preview
inline constexpr TexteFixe ErrPdf{6430, "Le fichier PDF n'a pas pu être écrit.\n%s : %s"};  ///< path, reason
/// name of the printer
inline constexpr TexteFixe ErrImpression{6431, "L'impression n'a pas pu se faire sur %s."};
inline constexpr TexteFixe AvancementPdf{6432, "\nEcriture du fichier PDF\n\nen cours..."};
inline constexpr TexteFixe AvancementImpression{6433, "\nImpression\n\nen cours..."};
inline constexpr TexteFixe TitreApercu{6434, "Aperçu avant impression"};  ///< section of the window's place
inline constexpr TexteFixe FormatTitreApercu{6435, "%s - Aperçu avant impression"};  ///< report
inline constexpr TexteFixe FormatPageApercu{6436, "Page %u / %u"};  ///< page, pages
inline constexpr TexteFixe FormatPagesApercu{6437, "Pages %u et %u / %u"};  ///< first, last, pages
inline constexpr TexteFixe CleMiseEnPage{6438, "Mise en page"};
/// paper, orientation, four margins in tenths of a millimetre
inline constexpr TexteFixe FormatMiseEnPage{6439, "%s, %d, %d, %d, %d, %d"};
inline constexpr TexteFixe TitreExportPdf{6440, "Exporter en PDF"};
inline constexpr TexteFixe FormatPdfEcrit{6744, "%s est écrit dans %s"};  ///< file, folder
inline constexpr TexteFixe FiltrePdf{6441, "Documents PDF (*.pdf)"};

// Form of the criteria
/// by `GenreEtat`
inline constexpr TexteFixe MotGenre[] = {
    {7300, "RECETTE"},
    {7301, "DEPENSE"},
    {7302, "OD"},
    {7303, "Toutes"},
};
/// by the bit of `MasqueComptes`
inline constexpr TexteFixe MotGroupeComptes[] = {
    {7304, "RECETTES"},
    {7305, "DEPENSES"},
    {7306, "TRESORERIE"},
    {7307, "TVA"},
    {7308, "AUTRES COMPTES"},
};
inline constexpr TexteFixe FormatCompteChoisi{7309, "%s %s"};  ///< short number, designation
// clang-format on

}  // namespace fenlor
