// `CDialogNewExercice`: the period and the options of a new exercice.
#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <string>

#include "session/exercices.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class CDialogNewExercice : public CZNDialog {
  Q_OBJECT
 public:
  /// On OK the exercice was created and is open, the frame shows it, and `destination`, which
  /// outlives the form, holds its name; blank when it was created and could not be opened. With
  /// `nomImpose` the name is fixed, whatever the period.
  CDialogNewExercice(ContexteUi& contexte, std::string& destination, QWidget* parent = nullptr,
                     const std::string& nomImpose = {});

 protected:
  /// Closes all windows first: what they show goes.
  bool Enregistre() override;

 private:
  void Construit();
  /// The boxes as the user set them.
  void LitCases();
  /// Applies a rule to what the form holds, then shows the outcome.
  template <class Regle>
  void Applique(Regle regle);
  void Montre();
  void QuitteDate(EditeurDate& editeur);
  void Pointe(const Refus& refus) override;

  std::string& m_destination;
  std::string m_nomImpose;
  FormulaireExercice m_formulaire;
  QRadioButton m_annuel, m_periode;
  EditeurTexte m_annee;
  EditeurDate m_debut, m_fin;
  QCheckBox m_tva, m_euro, m_double;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
