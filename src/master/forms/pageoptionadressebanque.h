// `CPageOptionAdresseBanque`: name, address and account number of each bank account.
#pragma once

#include "master/options.h"
#include "ui/cznsheet.h"
#include "ui/editeurs.h"
#include "ui/listeeditee.h"

namespace fenlor {

class CPageOptionAdresseBanque : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionAdresseBanque(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  ListeEditee::Permis Permis(int ligne) const;
  void Saisit();
  void Supprime();
  std::vector<AdresseBanque> m_banques;
  ListeEditee m_liste;
  QCheckBox m_especes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
