// The editor of a number with a step.
#pragma once

#include "ui/editeurs.h"

namespace fenlor {

/// A number between two limits; the arrow keys go up and down by a step.
class EditeurPas : public EditeurMontant {
  Q_OBJECT
 public:
  EditeurPas(const Parametres& reglages, f64 minimum, f64 maximum, f64 pas, int decimales);

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  const f64 m_minimum, m_maximum, m_pas;
};

}  // namespace fenlor
