// `CDialogAbort`: the progress window.
#pragma once

#include <QDialog>

#include "ui/findesliens.h"
class QLabel;
class QProgressBar;

namespace fenlor {

/// Modeless (`objectName` "DialogAbort", parts "texte", "barre", "pourcent", "annuler"); the one who
/// opens it disables the owner. The user cannot close it; "A&nnuler", when it has that button, only
/// asks the work to stop.
class CDialogAbort : public QDialog {
  Q_OBJECT
 public:
  CDialogAbort(const QString& titre, bool annulable, QWidget* parent);
  /// Makes room for the text; the window grows and does not shrink again.
  void PoseTexte(const QString& texte);
  void MontreBarre(bool visible);
  void PosePourcent(unsigned pourcent);
  bool Arrete() const { return m_arrete; }  ///< "A&nnuler" was pressed

 protected:
  void reject() override;  ///< Escape is the button, when there is one
  void closeEvent(QCloseEvent* evenement) override;

 private:
  QLabel* m_texte;
  QLabel* m_pourcent;
  QProgressBar* m_barre;
  bool m_annulable;
  bool m_arrete = false;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
