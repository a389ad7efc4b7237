// Labels that were typed for an account before.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

struct LibelleConnu {
  std::string libelle;
  unsigned fois = 0;  ///< lines that bear it
  Date date = 0;      ///< of the last one
  u32 mouvement = 0;  ///< its entry
};

/// Of the lines of an account (long form) in a journal; most used first, later ones before earlier ones.
/// Empty without account, and where the books cannot be read.
std::vector<LibelleConnu> LibellesConnus(CFenlorApp& app, i16 journal, const std::string& compte);
/// Null for a label that is not among them.
const LibelleConnu* ConnuDe(const std::vector<LibelleConnu>& connus, const std::string& libelle);

/// Labels that hold all words of a text, accents and case aside, each once: those that begin with the text
/// before the others, and of these the known ones, in their order, before those of the list.
std::vector<std::string> LibellesProposes(const std::vector<LibelleConnu>& connus,
                                          const std::vector<std::string>& liste, const std::string& texte,
                                          std::size_t auPlus);

}  // namespace fenlor
