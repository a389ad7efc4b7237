// `CDialogAdresseBanque`: name, address and account number of a bank.
#pragma once

#include "master/options.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

/// Edits a value; writes nothing.
class CDialogAdresseBanque : public CZNDialog {
  Q_OBJECT
 public:
  CDialogAdresseBanque(ContexteUi& contexte, const AdresseBanque& banque, QWidget* parent = nullptr);
  AdresseBanque Valeur() const;

 private:
  Lecture m_code;
  EditeurTexteLong m_identification;
  EditeurTexte m_compte;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
