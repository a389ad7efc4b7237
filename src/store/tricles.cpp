#include "store/tricles.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "store/definitions.h"

namespace fenlor {

namespace {

/// Fewer are sorted before their bytes are looked at.
constexpr std::size_t Peu = 64;

using Cle = ClesComposees::value_type;

/// Places of the bytes that are not the same in all keys; nothing when the keys differ in length.
std::vector<u8> Variables(const ClesComposees& cles) {
  const std::string_view premiere = cles.front().first;
  std::array<u8, TailleCleMax> differences{};
  for (const auto& [texte, position] : cles) {
    if (texte.size() != premiere.size()) return {};
    for (std::size_t i = 0; i < texte.size(); ++i)
      differences[i] |= static_cast<u8>(texte[i]) ^ static_cast<u8>(premiere[i]);
  }
  std::vector<u8> places;
  for (std::size_t i = 0; i < premiere.size(); ++i)
    if (differences[i]) places.push_back(static_cast<u8>(i));
  return places;
}

/// Sorts by the bytes that vary, gathered in numbers that stand beside each other: most of a key is padding
/// and leading zeroes, and comparing texts all over the memory is what a sort of them waits for.
template <std::size_t Mots>
void Trie(ClesComposees& cles, const std::vector<u8>& variables) {
  struct Entree {
    std::array<u64, Mots> mots{};
    Cle cle;
  };
  GrandVecteur<Entree> entrees(cles.size());
  for (std::size_t n = 0; n < cles.size(); ++n) {
    const char* texte = cles[n].first.data();
    for (std::size_t i = 0; i < variables.size(); ++i) {
      u64& mot = entrees[n].mots[i / 8];
      mot |= u64{static_cast<u8>(texte[variables[i]])} << (56 - 8 * (i % 8));
    }
    entrees[n].cle = cles[n];
  }
  std::sort(entrees.begin(), entrees.end(), [](const Entree& a, const Entree& b) {
    for (std::size_t i = 0; i < Mots; ++i)
      if (a.mots[i] != b.mots[i]) return a.mots[i] < b.mots[i];
    return a.cle.second < b.cle.second;
  });
  for (std::size_t n = 0; n < cles.size(); ++n) cles[n] = entrees[n].cle;
}

}  // namespace

void TrieCles(ClesComposees& cles) {
  if (std::is_sorted(cles.begin(), cles.end())) return;
  if (cles.size() < Peu) return std::sort(cles.begin(), cles.end());
  assert(std::all_of(cles.begin(), cles.end(), [](const Cle& c) { return c.first.size() <= TailleCleMax; }));
  const std::vector<u8> variables = Variables(cles);
  switch ((variables.size() + 7) / 8) {
    case 1:
      return Trie<1>(cles, variables);
    case 2:
      return Trie<2>(cles, variables);
    case 3:
      return Trie<3>(cles, variables);
    default:
      // Of different lengths, or a key of which nearly all varies.
      std::sort(cles.begin(), cles.end());
  }
}

}  // namespace fenlor
