// `CRubriqueView`: the headings of the fiscal statement, in order of their code.
#pragma once

#include "forms/master/dialogrubrique.h"
#include "ui/fichesview.h"

namespace fenlor {

class CRubriqueView : public ListeDeFiches<CDialogRubrique, CRubriques> {
  Q_OBJECT
 public:
  explicit CRubriqueView(ContexteUi& contexte);

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
