// The parts that the table of texts is made of. Internal to core/.
#pragma once

#include <cstddef>
#include <span>

namespace fenlor {

struct LigneTexte {
  unsigned numero;
  const char* utf8;
};
/// In ascending order of the numbers.
using TableTextes = std::span<const LigneTexte>;

constexpr bool EnOrdre(TableTextes table) {
  for (std::size_t i = 1; i < table.size(); ++i)
    if (table[i - 1].numero >= table[i].numero) return false;
  return true;
}

/// Errors, refusals and questions; titles, words, keys of settings and formats; strings of the reports.
constexpr unsigned PremierMot = 5000, PremierTexteEtat = 7000;
TableTextes TextesMessages();
TableTextes TextesMots();
TableTextes TextesEtats();

}  // namespace fenlor
