// Rows of text as a table of aligned columns.
#pragma once

#include <algorithm>
#include <cassert>
#include <string>
#include <vector>

#include "core/texte.h"
#include "store/texte1252.h"

namespace fenlor {

class Tableau {
 public:
  void Ajoute(std::vector<std::string> colonnes) {
    assert(m_lignes.empty() || colonnes.size() <= m_lignes.front().size());
    m_largeurs.resize(std::max(m_largeurs.size(), colonnes.size()));
    for (std::size_t i = 0; i < colonnes.size(); ++i)
      m_largeurs[i] = std::max(m_largeurs[i], colonnes[i].size());
    m_lignes.push_back(std::move(colonnes));
  }
  /// UTF-8; the first `gauches` columns are aligned on the left.
  std::string Texte(std::size_t gauches) const { return Texte(std::vector<bool>(gauches, true)); }
  /// The same of the columns that say so.
  std::string Texte(const std::vector<bool>& gauches) const {
    std::string sortie;
    for (const auto& colonnes : m_lignes) {
      std::string ligne;
      for (std::size_t i = 0; i < colonnes.size(); ++i) {
        const std::string blancs(m_largeurs[i] - colonnes[i].size(), ' ');
        if (i) ligne += "  ";
        ligne += i < gauches.size() && gauches[i] ? colonnes[i] + blancs : blancs + colonnes[i];
      }
      ligne.erase(ligne.find_last_not_of(' ') + 1);
      sortie += VersUtf8(ligne) + "\n";
    }
    return sortie;
  }

 private:
  std::vector<std::vector<std::string>> m_lignes;
  std::vector<std::size_t> m_largeurs;
};

}  // namespace fenlor
