// What stands behind an open form is left alone, whoever asks.
#pragma once

#include <QObject>

class QDialog;
class QWidget;

namespace fenlor {

/// A form is open, or on its way out, that this window does not belong to; or it is disabled while work runs.
bool DerriereModale(const QWidget& fenetre);

/// A form stands before all others from here on until its loop has ended, also after it was hidden: what
/// was queued together with the key that closed it comes before whoever opened it goes on.
class FormeEnCours {
 public:
  explicit FormeEnCours(QWidget& forme);
  ~FormeEnCours();
  FormeEnCours(const FormeEnCours&) = delete;
  FormeEnCours& operator=(const FormeEnCours&) = delete;
};

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
