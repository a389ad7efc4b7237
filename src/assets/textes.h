// Texts of assets/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// The register
inline constexpr TexteFixe TitreRegistre{5940, "Registre des immobilisations"};
inline constexpr TexteFixe MotRebut{5941, "Rebut"};
/// letter of the kind, rate
inline constexpr TexteFixe FormatTauxRegistre{5942, "%s %s%%"};
/// year
inline constexpr TexteFixe FormatAnneeRegistre{5943, "Année %d"};

// clang-format on

}  // namespace fenlor
