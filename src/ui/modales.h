// What stands behind an open form is left alone, whoever asks.
#pragma once

#include <QObject>

class QDialog;
class QWidget;

namespace fenlor {

/// A modal window is open that this one does not belong to, or it is disabled while work runs.
bool DerriereModale(const QWidget& fenetre);

/// The form outlives its parent: it is closed, as by "Annuler", when that one dies.
void SurvitAuParent(QDialog& forme);

/// While it lives, windows behind an open form take no shortcut, not even one that was typed before
/// the form had the keyboard, and document windows, main window and forms there do not close.
class GardeModale : public QObject {
  Q_OBJECT
 public:
  explicit GardeModale(QObject* parent);
  /// The form that is open closes document windows itself, for its own work.
  bool Permise = false;

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;
};

}  // namespace fenlor
