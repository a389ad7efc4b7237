// The shortcuts of the commands: the table in force, and the form that changes it.
#pragma once

#include <QKeySequence>
#include <QKeySequenceEdit>
#include <map>

#include "app/listecommandes.h"
#include "ui/czndialog.h"

class QPushButton;

namespace fenlor {

using TableRaccourcis = std::map<unsigned, QKeySequence>;

/// Defaults of the command table: an entry for each row, empty for none.
TableRaccourcis RaccourcisParDefaut();
/// The defaults, overridden by section "Raccourcis" (key: number of the command;
/// value: portable text, "-" for none). An entry that is no single key, is a key that forms
/// need, or is taken already, does not count: a default wins over an intruder, the earlier row of the
/// table over the later one. No two commands share a key.
TableRaccourcis LitRaccourcis(CFenlorApp& app);
/// Writes what differs from the defaults and removes what does not, in one replacement of the
/// file. Entries of commands that this version does not know stay. True without an open practice.
bool EcritRaccourcis(CFenlorApp& app, const TableRaccourcis& table);

/// False for the keys that fields and menus live on: Enter, Escape, Tab, arrows,
/// Alt with a letter, and any key that types a character.
bool RaccourciPermis(const QKeySequence& touche);
/// The command that has this key; 0 when it is free.
unsigned TrouveRaccourci(const TableRaccourcis& table, const QKeySequence& touche);

/// Shows the key that is pressed. Tab, Enter and Escape, and the access keys of the
/// form, stay those of the form.
class SaisieTouche : public QKeySequenceEdit {
  Q_OBJECT
 public:
  using QKeySequenceEdit::QKeySequenceEdit;

 protected:
  bool event(QEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
};

/// All commands that work, with their keys. OK writes the table; whoever opened the form then
/// applies it.
class CDialogRaccourcis : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogRaccourcis(ContexteUi& contexte, QWidget* parent = nullptr);
  const TableRaccourcis& Table() const { return m_table; }

 protected:
  bool Enregistre() override;
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  void Affecte();
  void Pose(unsigned numero, const QKeySequence& touche);
  /// The same, unless another command has the key: told.
  void PoseLibre(unsigned numero, const QKeySequence& touche);
  void MontreChoix();
  void ActualiseBoutons();

  TableRaccourcis m_table;
  TableRaccourcis m_defauts = RaccourcisParDefaut();
  CListeCommandes* m_liste;
  SaisieTouche* m_touche;
  QPushButton* m_affecter;
  QPushButton* m_supprimer;
  QPushButton* m_defaut;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
