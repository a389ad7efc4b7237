// `CComboExercices`: the exercices in the tool bar.
#pragma once

#include <QComboBox>
#include <functional>
#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// Its selection always shows the open exercice, or none. Choosing is deliberate: the
/// wheel does nothing and the arrow keys open the list, since another exercice closes
/// all windows.
class CComboExercices : public QComboBox {
  Q_OBJECT
 public:
  explicit CComboExercices(QWidget* parent = nullptr);
  /// The lines anew, and the selection. The session outlives the combo.
  void Remplit(CFenlorApp& app);
  /// The user chose another exercice than the open one. Afterwards the selection shows
  /// what is open.
  void SurSelection(std::function<void(const std::string& nom)> action) { m_action = std::move(action); }

 protected:
  void wheelEvent(QWheelEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  void Selectionne();
  void Choisit(int ligne);
  CFenlorApp* m_app = nullptr;
  std::function<void(const std::string&)> m_action;
};

}  // namespace fenlor
