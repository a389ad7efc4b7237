// A page of options whose value is settings of the practice (`master/lotreglages.h`): its fields bear the
// names of the value's table, which gives their limits.
#pragma once

#include "master/options.h"
#include "ui/champsfiche.h"
#include "ui/cznsheet.h"
#include "ui/editeurs.h"
#include "ui/preferences.h"

namespace fenlor {

template <class Options>
class PageOptions : public CZNPage {
 public:
  using CZNPage::CZNPage;
  bool Charge() override {
    Montre(LitOptions<Options>(App()));
    return true;
  }
  bool Enregistre() override { return EcritOptions(App(), Saisie()) || DitEchecReglages(App()); }

 protected:
  Formulaire Champs() { return Formulaire(*this, &Options::Table); }
  void Montre(const Options& options) { MontreChamps(*this, Options::Table, &options); }
  Options Saisie() const {
    Options options;
    LitChamps(*this, Options::Table, &options);
    return options;
  }

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
