// What stands behind an open form is left alone, whoever asks.
#pragma once

#include <QObject>
#include <QPointer>
#include <vector>

class QDialog;
class QWidget;

namespace fenlor {

/// What a new form stands over: the window of its parent, else the open form, else the main window.
QWidget* FenetreDessous(QWidget* parent, QWidget* principale);
/// The form outlives its parent: it is closed, as by "Annuler", when that one dies.
void SurvitAuParent(QDialog& forme);

/// While it lives, windows behind an open form take no shortcut, not even one that was typed before
/// the form had the keyboard, and document windows, main window and forms there do not close. Every modal
/// dialog counts, the toolkit's own (files, printing) too.
class GardeModale : public QObject {
  Q_OBJECT
 public:
  explicit GardeModale(QObject* parent);
  /// A dialog is open, or on its way out, that this window does not belong to; or it is disabled while work
  /// runs. A dialog stands before all others until its loop has ended, also after it was hidden: what was
  /// queued together with the key that closed it comes before whoever opened it goes on.
  bool Derriere(const QWidget& fenetre) const;
  /// The form that is open closes document windows itself, for its own work.
  bool Permise = false;

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  /// As the toolkit's own stack of modal windows, but for the time between the hiding and the end.
  struct EnCours {
    QPointer<QWidget> dialogue;  ///< no dialog any more while it dies
    int niveau;                  ///< of the loops around its own
    bool Dure() const;
  };
  std::vector<EnCours> m_enCours;
};

}  // namespace fenlor
