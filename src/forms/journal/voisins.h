// The entries beside the one that a form shows.
#pragma once

#include <functional>

#include "forms/journal/ecritures.h"

namespace fenlor {

/// Noted while the entry still stands in the selected row: saving it may give it another place in the list,
/// or take it out, and the neighbours are those it had.
class VoisinsEcriture {
 public:
  /// The nearest on each side that the form can show; none without a list or a selected row.
  void Note(const ListeEcritures* liste, const std::function<bool(u32)>& convient);
  /// Before (-1) or after (1); 0 for none.
  u32 De(int pas) const { return pas < 0 ? m_avant : m_apres; }

 private:
  u32 m_avant = 0, m_apres = 0;
};

/// Selects the row of an entry, as far as the list has it.
void ChoisitEcriture(ListeEcritures& liste, u32 mouvement);

}  // namespace fenlor
