// A report whose length a test chooses, and the practice of the tests of printing.
#pragma once

#include "forms/journal/formesjournal.h"
#include "reports/etatcomptable.h"
#include "reports/textes.h"

namespace fenlor::test {

/// Sections of ten lines with every style, alignment and rule; `Vivants` counts those that live.
class EtatDeTest : public CEtatComptable {
 public:
  EtatDeTest(CFenlorApp& app, DemandeurCriteres& demandeur, unsigned lignes, bool paysage = false,
             bool demande = false)
      : CEtatComptable(app, demandeur), m_lignes(lignes), m_tourne(paysage), m_demande(demande) {
    ++Vivants;
  }
  ~EtatDeTest() override { --Vivants; }
  static inline int Vivants = 0;

 protected:
  void BuildEtat() override {
    if (m_demande && !DemandeCriteres(FormeCriteres::Periode, TitrePlanComptable)) return;
    PoseTitre("Etat d'été"_w);
    SetEtatPaysage(m_tourne);
    SetEtatEntete("\\0\\M000\\N000\\BDate\\T020Libellé\\R120Débit\\R144Crédit\\L\\0\n\\S002\n"_w);
    SetEtatPied("\\0\\M000\\N000\\3\\Ià suivre"_w);
    EtatPrintf("\\H");
    for (unsigned i = 1; i <= m_lignes; ++i) {
      const char* style = i % 10 == 0 ? "\\B\\U" : i % 7 == 0 ? "\\I" : "";
      EtatPrintf("\\M000\\N000%s%02d/03/2003\\T020Consultation n° %d, 23 €\\R120%d,00\\R144%s\\L\\0\n"_w,
                 {style, i % 28 + 1, i, i, i % 3 ? "" : "1 234,56"});
    }
    EtatPrintf("\\X\\M000\\S001\\BTotal :\\R144%d lignes\\0\n", {m_lignes});
  }

 private:
  unsigned m_lignes;
  bool m_tourne, m_demande;
};

class EtatsUiTest : public FormesJournal {
 protected:
  void SetUp() override {
    FormesJournal::SetUp();
    App().Reglages.EcritIni("Activite", "Identification", "Docteur Hélène Garnier\r\nCabinet du Port"_w);
  }
};

}  // namespace fenlor::test
