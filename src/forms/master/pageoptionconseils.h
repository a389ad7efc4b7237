// `CPageOptionAssociation`, the approved association that the practitioner belongs to, and
// `CPageOptionComptable`, the accountant or adviser.
#pragma once

#include "ui/cznsheet.h"
#include "ui/editeurs.h"

namespace fenlor {

class CPageOptionAssociation : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionAssociation(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  EditeurTexteLong m_identification;
  EditeurTexte m_numero, m_annee;
  FinDesLiens m_finLiens{*this};
};

class CPageOptionComptable : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionComptable(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  EditeurTexteLong m_identification;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
