// `CSheetProperties`: what the open exercice is and how large its files are.
#pragma once

#include "ui/cznsheet.h"

namespace fenlor {

/// Read only; one page, "Exercice".
class CSheetProperties : public CZNSheet {
  Q_OBJECT
 public:
  explicit CSheetProperties(ContexteUi& contexte, QWidget* parent = nullptr);
  /// The sheet was left for the paper of the closure, which only a closed exercice has.
  bool AttestationVoulue() const { return m_attestation; }

 private:
  bool m_attestation = false;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
