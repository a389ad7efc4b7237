// `CDialogValidation`: the drafts of a period made final.
#pragma once

#include <QCheckBox>
#include <QRadioButton>

#include "forms/journal/bornesmontants.h"
#include "forms/session/champsperiode.h"
#include "journal/traitements.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class CDialogValidation : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogValidation(ContexteUi& contexte, QWidget* parent = nullptr);
  ~CDialogValidation() override;

 protected:
  bool Enregistre() override;

 private:
  void DeclareJournal(Formulaire& formulaire);
  void DeclareEcritures(Formulaire& formulaire);
  void DeclareDebug(Formulaire& formulaire);
  /// Each "all" box opens or closes its group.
  void Permet();
  DemandeValidation Lit() const;

  QCheckBox m_tousJournaux, m_toutes;
  EditeurChoix m_journal;
  QCheckBox m_pointees, m_remises, m_rapprochees;
  BornesMontants m_montants;
  ChampsPeriode m_periode;
  QRadioButton m_valider, m_devalider, m_delier;  ///< shown in debug mode
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
