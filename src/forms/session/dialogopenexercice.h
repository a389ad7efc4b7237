// `CDialogOpenExercice`: the choice among the exercices of the practice.
#pragma once

#include <QListWidget>
#include <string>

#include "ui/czndialog.h"

namespace fenlor {

class CDialogOpenExercice : public CZNDialog {
  Q_OBJECT
 public:
  /// `motDePasse`: a choice is confirmed with the practice's password. `destination`
  /// receives the name on OK, and outlives the form. The exercice is not opened.
  CDialogOpenExercice(ContexteUi& contexte, bool motDePasse, std::string& destination,
                      QWidget* parent = nullptr);
  /// Refused with 3072, without a window, when there is no exercice.
  int exec() override;

 protected:
  /// Notes the name in the settings too, so that the next start opens it.
  bool Enregistre() override;

 private:
  void Remplit();
  bool m_avecMotDePasse;
  std::string& m_destination;
  QListWidget m_liste;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
