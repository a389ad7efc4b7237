// `CRubriqueView`: the headings of the fiscal statement, in order of their code.
#pragma once

#include "master/forms/fichesview.h"
#include "master/rubriques.h"

namespace fenlor {

class CRubriqueView : public FichesView {
  Q_OBJECT
 public:
  explicit CRubriqueView(ContexteUi& contexte);

 protected:
  std::vector<Position> Positions() override;
  bool LanceForme(Position position, Position& derniere) override;
  bool SupprimeFiche(Position position) override;

 private:
  CRubriques m_rubriques;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
