// `CPageOptionActivite`: the practitioner, the open exercice, and the way to the table
// of Euro rates.
#pragma once

#include "forms/master/pageoptions.h"

class QPushButton;

namespace fenlor {

class CPageOptionActivite : public PageOptions<OptionsActivite> {
  Q_OBJECT
 public:
  explicit CPageOptionActivite(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  EditeurTexteLong m_identification;
  EditeurTexte m_siret, m_ape, m_activite;
  EditeurDate m_debut;
  Lecture m_exercice, m_cloture, m_du, m_au;
  QCheckBox m_tva, m_euro, m_double;
  QPushButton* m_taux;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
