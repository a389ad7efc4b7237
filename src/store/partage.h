// Work of one call shared among helpers, as many as the machine has processors for. The store is used from
// one thread and stays so: helpers live inside one operation, which returns when the last of them ended.
// They read what nobody changes meanwhile (slots of a file, keys, their own part) and write their own part
// alone; they call nobody's callback, tell no error and touch no unit of work.
#pragma once

#include <algorithm>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace fenlor {

constexpr unsigned PartsMax = 4;

/// Parts into which work of `octets` bytes is worth cutting: 1 for what is done before a helper has started.
inline unsigned NombreParts(unsigned long long octets) {
  constexpr unsigned long long seuil = 4u << 20;
  return octets < seuil ? 1 : std::clamp(std::thread::hardware_concurrency(), 1u, PartsMax);
}

/// `travail(part)` for the parts 0 to `parts` - 1, the last one in this thread; without helpers all of them.
/// What one of them throws is thrown when all have ended.
template <class Travail>
void Partage(unsigned parts, Travail&& travail) {
  std::vector<std::exception_ptr> jetees(parts);
  const auto fait = [&](unsigned part) {
    try {
      travail(part);
    } catch (...) {
      jetees[part] = std::current_exception();
    }
  };
  std::vector<std::thread> aides;
  aides.reserve(parts);
  unsigned lances = 0;
  try {
    for (; lances + 1 < parts; ++lances) aides.emplace_back(fait, lances);
  } catch (const std::system_error&) {
    // The system has no thread to give: the work is done all the same.
  }
  for (; lances < parts; ++lances) fait(lances);
  for (std::thread& aide : aides) aide.join();
  for (const std::exception_ptr& jetee : jetees)
    if (jetee) std::rethrow_exception(jetee);
}

/// First and behind the last of `nombre` things in a part, whole multiples of `grain` but at the end.
struct Tranche {
  unsigned long long debut, fin;
};
inline Tranche TrancheDe(unsigned part, unsigned parts, unsigned long long nombre, unsigned long long grain) {
  const unsigned long long grains = (nombre + grain - 1) / grain;
  return {std::min(nombre, grains * part / parts * grain),
          std::min(nombre, grains * (part + 1) / parts * grain)};
}

}  // namespace fenlor
