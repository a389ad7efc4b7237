// `CDialogEndOfSession`: the last screen of a session, with a lamp for the age of the last backup and one for
// that of the last update.
#pragma once

#include <QCheckBox>

#include "garde/findesession.h"
#include "ui/czndialog.h"

class QPushButton;

namespace fenlor {

class CDialogEndOfSession : public CZNDialog {
  Q_OBJECT
 public:
  /// How it ends, as `exec` returns it.
  enum Fin { Terminer = 1, Annuler = 2, Sauvegarder = 537 };

  explicit CDialogEndOfSession(ContexteUi& contexte, QWidget* parent = nullptr);
  int exec() override;

 protected:
  bool Enregistre() override;

 private:
  void Ligne(Formulaire& formulaire, const char* voyant, EtatLampe etat, const char* texte,
             const QString& phrase);

  QCheckBox m_afficher;
  Fin m_fin = Terminer;
  FinDesLiens m_finLiens{*this};
};

/// Asked before the main window closes: the screen, the backup that is asked for there, the backup at the end
/// of each session. False when the program goes on.
bool PeutFermer(ContexteUi& contexte);

}  // namespace fenlor
