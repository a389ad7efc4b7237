// A report for the benchmarks of pages.
#pragma once

#include "pages/etatdoc.h"

namespace fenlor::bench {

/// A ledger of invented lines, with a section and a sum every forty of them.
class EtatLivre : public CEtatDoc {
 public:
  EtatLivre(CFenlorApp& app, unsigned lignes) : CEtatDoc(app), m_lignes(lignes) {}

 protected:
  void BuildEtat() override {
    SetEtatTitre("Grand livre");
    SetEtatEntete("\\M000\\BDate\\T020Libellé\\R120Débit\\R144Crédit\\0\n\\S001\n");
    SetEtatPied("\\M000\\3à reporter");
    for (unsigned i = 0; i < m_lignes; ++i) {
      if (i % 40 == 0) EtatPrintf("\\H");
      EtatPrintf("\\M000\\N000%02d/%02d/2003\\T020%s %d\\R120%s\\R144%s\\L\n",
                 {i % 28 + 1, i % 12 + 1, "Consultation du patient", i, "1234,50", ""});
      if (i % 40 == 39) EtatPrintf("\\S001\n\\BTotal\\R144%s\\0\n\\X\n", {"12345,60"});
    }
  }

 private:
  unsigned m_lignes;
};

}  // namespace fenlor::bench
