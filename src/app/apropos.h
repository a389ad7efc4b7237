// `CDialogAbout`: what the program is.
#pragma once

#include "ui/czndialog.h"

namespace fenlor {

class CDialogAbout : public CZNDialog {
  Q_OBJECT
 public:
  CDialogAbout(ContexteUi& contexte, QWidget* parent);

 private:
  FinDesLiens m_finLiens{*this};
};

/// "5.0.235"
QString TexteVersion();
/// How the program was started, as a person reads it: "autonome", "Tessamaris".
QString NomEdition(const CFenlorApp& app);

}  // namespace fenlor
