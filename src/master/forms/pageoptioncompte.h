// `CPageOptionCompte`: the five special accounts. A closed exercice is refused.
#pragma once

#include "master/forms/dialogcompteparticulier.h"
#include "ui/cznsheet.h"

namespace fenlor {

class CPageOptionCompte : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionCompte(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  ChampsComptesParticuliers m_champs;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
