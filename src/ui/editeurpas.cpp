#include "ui/editeurpas.h"

#include <QKeyEvent>
#include <algorithm>

namespace fenlor {

EditeurPas::EditeurPas(const Parametres& reglages, f64 minimum, f64 maximum, f64 pas, int decimales)
    : EditeurMontant(reglages), m_minimum(minimum), m_maximum(maximum), m_pas(pas) {
  PoseDecimales(decimales);
  PoseBornes(minimum, maximum);
}

void EditeurPas::keyPressEvent(QKeyEvent* evenement) {
  const bool monte = evenement->key() == Qt::Key_Up;
  if (isReadOnly() || (!monte && evenement->key() != Qt::Key_Down))
    return EditeurMontant::keyPressEvent(evenement);
  evenement->accept();
  if (Refus() != 0) return;
  Pose(std::clamp(Valeur() + (monte ? m_pas : -m_pas), m_minimum, m_maximum));
  selectAll();
  Q_EMIT textEdited(text());
}

}  // namespace fenlor
