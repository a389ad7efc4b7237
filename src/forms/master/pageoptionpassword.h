// `CPageOptionPassword`: changes the password of the practice.
#pragma once

#include "master/options.h"
#include "ui/cznsheet.h"
#include "ui/editeurs.h"

namespace fenlor {

class CPageOptionPassword : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionPassword(ContexteUi& contexte);
  bool Charge() override;
  bool Controle() override;
  bool Enregistre() override;

 private:
  SaisieMotDePasse Valeur() const;
  EditeurTexte m_ancien, m_nouveau, m_verification;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
