// The child window around a document view.
#pragma once

#include <QMdiSubWindow>

#include "ui/vue.h"

namespace fenlor {

/// Owns its view. Comes back where it was left (section of the view's title) and
/// notes its place when it closes.
class CMDIChildFrame : public QMdiSubWindow {
  Q_OBJECT
 public:
  explicit CMDIChildFrame(Vue* vue, QWidget* parent = nullptr);

  Vue& Contenu() { return *m_vue; }
  /// Position and size from the settings, then shown; maximised when it was, or when
  /// `agrandie` says that the windows beside it are, or when it is the first and has no place yet.
  void Montre(bool agrandie);

 protected:
  void closeEvent(QCloseEvent* evenement) override;

 private:
  bool EstPris(QPoint coin) const;  ///< by another window

  Vue* m_vue;
  QRect m_decalee;  ///< where it stepped aside of another one
};

}  // namespace fenlor
