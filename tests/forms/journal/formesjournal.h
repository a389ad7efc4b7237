// What the tests of forms over a practice share: the practice, the forms shown, their fields by name.
#pragma once

#include "forms/journal/ecritures.h"
#include "journal/cabinetmedical.h"
#include "outils/uidetest.h"

namespace fenlor::test {

/// Rows of a journal window, without the window.
struct Rangees : ListeEcritures {
  std::vector<u32> ecritures;
  int choisie = 0;
  explicit Rangees(std::vector<u32> entrees = {}) : ecritures(std::move(entrees)) {}
  int GetEcrCount() const override { return static_cast<int>(ecritures.size()); }
  int GetEcrSel() const override { return choisie; }
  u32 GetEcrId(int ligne) const override {
    return ligne >= 0 && ligne < GetEcrCount() ? ecritures[static_cast<std::size_t>(ligne)] : 0;
  }
  void SelectPrev() override { choisie = std::max(choisie - 1, 0); }
  void SelectNext() override { choisie = std::min(choisie + 1, GetEcrCount() - 1); }
  void RefreshJournal() override {}
};

class FormesJournal : public CabinetMedical {
 public:
  using CabinetMedical::CabinetMedical;

 protected:
  CadreDeTest Cadre;
  Preferences Dessin;
  ContexteUi Ui{App(), Cadre, Dessin};
  Robot robot;

  void SetUp() override {
    Installe();
    ChargePreferences(Dessin, App(), QApplication::palette());
  }
  static void Montre(QDialog& f) {
    MontreFenetre(f);
    VerifieFormulaire(f);
  }
};

}  // namespace fenlor::test
