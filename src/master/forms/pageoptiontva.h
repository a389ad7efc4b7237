// `CPageOptionTVA`: the VAT accounts. They change when the options are saved.
#pragma once

#include "master/optionstva.h"
#include "ui/cznsheet.h"
#include "ui/listeeditee.h"

namespace fenlor {

class CPageOptionTVA : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionTVA(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  void Ajoute();
  void Modifie();
  void Supprime();
  LigneTva& Choisie();
  std::vector<LigneTva> m_lignes;
  bool m_ouvert = false;  ///< the exercice is not closed
  ListeEditee m_liste;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
