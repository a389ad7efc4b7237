// `CPageOptionAssociation`, the approved association that the practitioner belongs to, and
// `CPageOptionComptable`, the accountant or adviser.
#pragma once

#include "forms/master/pageoptions.h"

namespace fenlor {

class CPageOptionAssociation : public PageOptions<OptionsAssociation> {
  Q_OBJECT
 public:
  explicit CPageOptionAssociation(ContexteUi& contexte);

 private:
  EditeurTexteLong m_identification;
  EditeurTexte m_numero, m_annee;
  FinDesLiens m_finLiens{*this};
};

class CPageOptionComptable : public PageOptions<OptionsComptable> {
  Q_OBJECT
 public:
  explicit CPageOptionComptable(ContexteUi& contexte);

 private:
  EditeurTexteLong m_identification;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
