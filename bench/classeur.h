// A practice filled with entries of four lines each (account, VAT, personal share,
// treasury), the same for every run: what the measures are taken on.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "store/qvapi.h"

namespace fenlor::bench {

constexpr unsigned LignesParEcriture = 4;

/// Opens (or makes) the practice of a directory, exercice "2003" current, its
/// journal and chart open. Ends the program on failure.
class Classeur {
 public:
  explicit Classeur(const std::string& dossier, Systeme* systeme = nullptr);

  QVAPI& Magasin() { return *m_magasin; }
  /// Entry number `i` of the series, not yet written. A year of entries comes in
  /// order of dates, as it is typed.
  EcrSimple Ecriture(unsigned i) const;
  /// Writes the entries `debut` to `fin` (excluded) of the series in one unit.
  void Ajoute(unsigned debut, unsigned fin);
  /// As Ajoute, in units of a size that memory bears.
  void Remplit(unsigned nbEcritures);

 private:
  unsigned m_parJour = 240;
  std::unique_ptr<QVAPI> m_magasin;
  std::vector<std::string> m_recettes, m_depenses, m_banques;
  std::string m_taxe, m_perso;
};

}  // namespace fenlor::bench
