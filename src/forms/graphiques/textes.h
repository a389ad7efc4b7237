// Texts of forms/graphiques/.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off
inline constexpr TexteFixe TitreGraphique{6698, "Graphique"};  ///< section of the window's place
inline constexpr TexteFixe FormatTitreGraphique{6699, "Graphique : %s"};  ///< title of the chart
inline constexpr TexteFixe TitreExportGraphique{6700, "Exporter le graphique"};
inline constexpr TexteFixe FiltreExportPng{6701, "Image (*.png)"};
inline constexpr TexteFixe FiltreExportSvg{6702, "Dessin (*.svg)"};
inline constexpr TexteFixe FiltreExportPdf{6703, "Document PDF (*.pdf)"};
// clang-format on

}  // namespace fenlor
