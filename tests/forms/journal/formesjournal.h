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

  void SetUp() override {
    Installe();
    ChargePreferences(Dessin, App(), QApplication::palette());
  }
  static void Montre(QDialog& f) {
    MontreFenetre(f);
    VerifieFormulaire(f);
  }
  static std::string Focus(QDialog& f) {
    return f.focusWidget() ? f.focusWidget()->objectName().toStdString() : "";
  }
  static QAbstractButton& Case(QDialog& f, const char* nom) { return Trouve<QAbstractButton>(f, nom); }
  static QLineEdit& Champ(QDialog& f, const char* nom) { return Trouve<QLineEdit>(f, nom); }
  static QComboBox& Liste(QDialog& f, const std::string& nom) { return Trouve<QComboBox>(f, nom.c_str()); }
  static void Choisit(QDialog& f, const char* nom, int rang) {
    Liste(f, nom).setCurrentIndex(rang);
    if (rang >= 0) Q_EMIT Liste(f, nom).activated(rang);
  }
  static void Ok(QDialog& f) { Clique(Case(f, "ok")); }
  static bool Actif(QDialog& f, const char* nom) { return Trouve<QWidget>(f, nom).isEnabled(); }
};

}  // namespace fenlor::test
