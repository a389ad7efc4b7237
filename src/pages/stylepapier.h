// How a report looks on paper: one table for each style, which the page setup, the pagination and the
// interpreter read. No report knows it, and its markup is the same for all of them (docs/MARKUP.md).
#pragma once

#include <string_view>

#include "core/fenlorapp.h"

namespace fenlor {

enum class StylePapier {
  Classique,  ///< wherever the setting is missing
  Soignee,    ///< what a new practice has
};

struct DessinPapier {
  const char* face;  ///< of the print font when the settings name none; `FaceImprimee` knows them
  i32 points;        ///< its size
  i32 interligne;    ///< height of a line, percent of the font's; 0: the font's and one unit
  i32 etroitesse;    ///< the narrowest that a label is drawn before it is cut, percent of its width
  i32 filet;         ///< thickness of every rule, in units, in grey; 0: black, as thick as the report says
  bool bandes;       ///< a tint behind headings and totals: bold lines beside a rule
  bool milliers;     ///< amounts are grouped by thousands with `BlancFin`
  bool aligne;  ///< what a "\\R" behind the position only begins ends at its column instead; no blank behind
                ///< it
  bool titresSuivis;  ///< no heading alone at the foot of a page
  bool mesure;        ///< columns make room for what stands in them on the page (mesurecolonnes.cpp)
};

inline const DessinPapier& DessinDe(StylePapier style) {
  static constexpr DessinPapier dessins[] = {
      {"Courier", 10, 0, 85, 0, false, false, false, false, false},
      {"Sans Serif", 9, 125, 100, 7, true, true, true, true, true},
  };
  return dessins[static_cast<std::size_t>(style)];
}

/// The practice's.
StylePapier LitStylePapier(const CFenlorApp& app);
/// False when the settings could not be written.
bool EcritStylePapier(CFenlorApp& app, StylePapier style);

}  // namespace fenlor
