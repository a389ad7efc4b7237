// Texts of forms/assets/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

inline constexpr TexteFixe TitreAcquisition{6470, "Acquisition"};
/// name of the asset
inline constexpr TexteFixe TitreModificationAcquisition{6471, "Modification de : %s"};
inline constexpr TexteFixe TitreCession{6472, "Cession"};
inline constexpr TexteFixe TitreDetail{6473, "Détail des amortissements"};
inline constexpr TexteFixe TitreAmortissement{6474, "Amortissement"};
inline constexpr TexteFixe MotAucuneTva{6475, "(aucun)"};
inline constexpr TexteFixe VideRegistre{6476, "Aucune immobilisation.\nAjouter (Inser) en inscrit une."};

// clang-format on

}  // namespace fenlor
