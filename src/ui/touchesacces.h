// Access keys (Alt and a letter) that act as they are pressed.
#pragma once

#include <QObject>

namespace fenlor {

/// One for the whole program, made behind the application object and alive as long as its windows. Left
/// to itself the toolkit shows a button as pressed for a tenth of a second before it acts, and whatever is
/// typed meanwhile still goes into the old record; here it acts at once. A radio button is chosen by its key
/// also when another input shares the key, which would only give it the focus. Other inputs that share a key
/// get the focus in turn.
class TouchesAcces : public QObject {
  Q_OBJECT
 public:
  TouchesAcces();

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;
};

}  // namespace fenlor
