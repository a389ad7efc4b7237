// `CPageOptionAdresseBanque`: name, address and account number of each bank account, and the form
// of one of them.
#pragma once

#include "master/options.h"
#include "ui/cznsheet.h"
#include "ui/editeurs.h"
#include "ui/listeeditee.h"

namespace fenlor {

/// Edits a value; writes nothing.
class CDialogAdresseBanque : public CZNDialog {
  Q_OBJECT
 public:
  CDialogAdresseBanque(ContexteUi& contexte, const AdresseBanque& banque, QWidget* parent = nullptr);
  AdresseBanque Valeur() const { return m_banque; }

 protected:
  bool Enregistre() override;

 private:
  AdresseBanque m_banque;
  Lecture m_code;
  EditeurTexteLong m_identification;
  EditeurTexte m_compte;
  FinDesLiens m_finLiens{*this};
};

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
