// `CRubriqueView`: the headings of the fiscal statement, in order of their code.
#pragma once

#include "master/rubriques.h"
#include "ui/fichesview.h"

namespace fenlor {

class CRubriqueView : public FichesView {
  Q_OBJECT
 public:
  explicit CRubriqueView(ContexteUi& contexte);

 protected:
  std::vector<Position> Positions() override;
  std::unique_ptr<DialogFiche> Forme(Position position) override;
  Refus SupprimeFiche(Position position) override;

 private:
  CRubriques m_rubriques;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
