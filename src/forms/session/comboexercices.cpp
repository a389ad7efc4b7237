#include "forms/session/comboexercices.h"

#include <QKeyEvent>
#include <QPointer>
#include <QWheelEvent>

#include "forms/session/lignesexercices.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

CComboExercices::CComboExercices(QWidget* parent) : QComboBox(parent) {
  setObjectName(u"comboExercices"_s);
  setAccessibleName(u"Exercice"_s);
  setToolTip(u"Exercice ouvert"_s);
  setPlaceholderText(u"Aucun exercice"_s);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
  setMinimumContentsLength(18);
  connect(this, &QComboBox::activated, this, &CComboExercices::Choisit);
}

void CComboExercices::Remplit(CFenlorApp& app) {
  m_app = &app;
  clear();
  for (const LigneExercice& ligne : LignesExercices(app)) {
    addItem(ImageExercice(ligne.cloture), Q(ligne.texteCombo), Q(ligne.nom));
    setItemData(count() - 1, LigneParlee(ligne), Qt::AccessibleTextRole);
    if (ligne.cloture) setItemData(count() - 1, u"Exercice clôturé"_s, Qt::ToolTipRole);
  }
  Selectionne();
}

void CComboExercices::Selectionne() {
  setCurrentIndex(m_app && !m_app->NomExercice.empty() ? findData(Q(m_app->NomExercice)) : -1);
}

void CComboExercices::Choisit(int ligne) {
  if (!m_app || ligne < 0) return;
  const std::string nom = De1252(itemData(ligne).toString());
  const QPointer<CComboExercices> vivant(this);
  if (m_action && nom != m_app->NomExercice) m_action(nom);
  if (vivant) Selectionne();
}

void CComboExercices::wheelEvent(QWheelEvent* evenement) { evenement->ignore(); }

void CComboExercices::keyPressEvent(QKeyEvent* evenement) {
  switch (evenement->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
      evenement->ignore();
      return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      showPopup();
      return;
    default:
      if (evenement->text().isEmpty() || evenement->key() == Qt::Key_Space) {
        QComboBox::keyPressEvent(evenement);
      } else if (evenement->text().at(0).isPrint()) {
        showPopup();
      } else {
        evenement->ignore();
      }
  }
}

}  // namespace fenlor
