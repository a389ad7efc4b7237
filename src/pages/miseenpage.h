// Page setup: fonts, grid and lines of a report on a device.
#pragma once

#include <string>
#include <string_view>

#include "pages/peripherique.h"
#include "pages/stylepapier.h"

namespace fenlor {

constexpr i32 pointsParPouce = 72;

constexpr i32 ColonnesPage = 144;

struct ReglagePolice {
  std::string face = "Courier";
  i32 points = 10;
};

/// Reads the setting of the print font, "name, size": 80 bytes of it at most. A blank
/// name and a size that is missing, 0 or below are those of the style; one above 400 is 400.
ReglagePolice LitPoliceImpressions(std::string_view reglage, StylePapier style = StylePapier::Classique);

/// The grid of a page, in units of the device.
struct MiseEnPage {
  i32 largeur = 0;
  i32 hauteur = 0;
  i32 unite = 0;       ///< width of one of the 144 columns
  i32 interligne = 1;  ///< height of a line
  i32 lignesParPage = 0;
  StylePapier style = StylePapier::Classique;
};

/// Makes the device's fonts and measures it. The font height is points times units per
/// inch over 72, cut. In draft mode the device takes its own plain font for all styles.
/// Without `portrait` the device's sheet is one that is yet to be turned: width and
/// height are exchanged.
MiseEnPage PreparePage(Peripherique& peripherique, const ReglagePolice& police, bool brouillon,
                       bool portrait = true, StylePapier style = StylePapier::Classique);

}  // namespace fenlor
