// `CDialogPassword`: asks for the practice's password and opens the practice.
#pragma once

#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class CDialogPassword : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogPassword(ContexteUi& contexte, QWidget* parent = nullptr);
  /// Accepted at once, without a window, when the practice has no password.
  int exec() override;

 protected:
  /// Opens the practice of `PathCabinet`; 3074 and an empty field for a wrong password.
  bool Enregistre() override;

 private:
  EditeurTexte m_motDePasse;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
