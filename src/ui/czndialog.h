// The base of every form.
#pragma once

#include <QDialog>
#include <QStringList>
#include <initializer_list>
#include <string>

#include "core/refus.h"
#include "ui/fenetres.h"
#include "ui/findesliens.h"
#include "ui/formulaire.h"

class QHBoxLayout;
class QPushButton;

namespace fenlor {

class EditeurMontant;

/// A modal form. `objectName` is its class name without "C" ("DialogPassword"); F1
/// shows the help page of that name. Enter goes from field to field when the
/// preference "Entrée" says so, else it is the default button; Escape cancels. The
/// form opens in the middle of its parent (without one: the open form, or the main
/// window), no larger than the screen; fields that would not fit scroll. It outlives its parent:
/// when that one dies the form is cancelled. A subclass ends with a `FinDesLiens`.
class CZNDialog : public QDialog {
  Q_OBJECT
 public:
  /// Buttons of a form that edits something.
  enum class Mode {
    Simple,        ///< "&Ok", "A&nnuler"
    Ajout,         ///< "&Enregistrer", "&Fermer": saves and clears itself for the next one
    Modification,  ///< "&Ok", "A&nnuler", and "&Précédent", "&Suivant" when `Voisin` is used
    Consultation,  ///< "&Fermer" alone: nothing is saved
  };

  CZNDialog(ContexteUi& contexte, const QString& titre, const char* nom, QWidget* parent = nullptr);

  CFenlorApp& App() { return m_contexte.App; }
  ContexteUi& Contexte() { return m_contexte; }
  /// Runs the form; true when it ended with OK.
  bool Execute() { return exec() == Accepted; }
  /// Name of the button of `AjouteIssuesEtat` that ended the form; empty: Ok.
  const QString& Issue() const { return m_issue; }
  int exec() override;
  /// What was typed before the end was seen counts for nothing.
  void done(int resultat) override;
  /// Focus to a field, its text selected (but not that of several lines); opens the page that it stands on.
  static void Focalise(QWidget& champ);
  /// The same by the name given to the `Formulaire`; does nothing for an unknown one, or none.
  static void Focalise(const QWidget& parent, const char* nom);

 public Q_SLOTS:
  /// The OK button: the field that has the focus is left (so that it is normalised, and
  /// its `SurDepart` runs: one that takes the focus back refuses), `Enregistre`, then the end
  /// or the next record.
  void accept() override;
  void reject() override;

 protected:
  /// The zone above the buttons, for `Formulaire`.
  QWidget& Zone() { return *m_zone; }
  /// Adds the buttons, with `voisins` also "&Précédent", "&Suivant" and "&Aide". To be called
  /// last, so that they come last in the tab order.
  void Boutons(Mode mode, bool voisins = false);
  /// "&Aide", for a form whose `Boutons` have none. It has the first letter that no field of the form needs.
  void AjouteAide();
  /// A further button at the left of the others; before or after `Boutons`.
  QPushButton& AjouteBouton(const QString& texte, const char* nom);

  /// "&Aperçu", "&Imprimer", "&PDF...": each of them ends the form as Ok does, or would. After `Boutons`.
  void AjouteIssuesEtat();

  /// Name of its help page.
  virtual QString PageAide() const { return objectName(); }
  /// Checks and writes; false after a refusal that has been told.
  virtual bool Enregistre() { return true; }
  /// After a save in mode `Ajout`: clears the fields for the next record.
  virtual void Vide() {}
  /// "&Précédent" (-1), "&Suivant" (+1): shows the neighbour's record. Called after a
  /// successful `Enregistre` when something changed (`Modifie`), else at once.
  virtual void Voisin(int /*pas*/) {}
  /// A field no longer holds what stood there when the form was shown, or after the
  /// last save or neighbour. A form with a list that is edited adds its own.
  virtual bool Modifie() const;

  /// Reports the error, then gives the focus to the field, its text selected.
  /// Returns false, so that a check is `return Refuse(...)`.
  bool Refuse(const TexteFixe& erreur, QWidget& champ, std::initializer_list<std::string> arguments = {});
  /// Tells what stopped a rule, unless the user knows, and points at its field; false. True when nothing did.
  bool Refuse(const Refus& refus);
  /// The focus for a refusal: the field of that name, if any. For a form whose fields have other names, or
  /// that shows the lines of `rang`.
  virtual void Pointe(const Refus& refus);
  /// Leaves the current field as the OK button does, and refuses the first amount that cannot be read; false
  /// when a field was refused. `accept` asks it before `Enregistre`; whoever saves from elsewhere does too.
  bool QuitteChamps();
  /// Asked before a form in mode `Ajout` that holds what was typed (`Modifie`) is closed. Escape on it, and a
  /// save that failed, keep the form.
  virtual const TexteFixe& QuestionFermer() const;
  /// The fields hold nothing that was typed: what stands in them is on disk, or was proposed.
  void OublieSaisie() { m_etat = Etat(); }
  void Focalise(const char* nom) { Focalise(*this, nom); }
  /// Inputs disabled, texts still selectable, all of it greyed and yet easy to read. Nothing can be saved
  /// any more; to be called after `Boutons`.
  void LectureSeule();
  /// `LectureSeule` in a closed exercice, with a line at the top that says why; true there.
  bool FigeSiCloture();
  /// Colours of fields that can only be read, for a form that closes them by itself.
  QPalette PaletteLecture() const;

  void keyPressEvent(QKeyEvent* evenement) override;
  void showEvent(QShowEvent* evenement) override;

 private:
  void AppliqueDessin();
  void ChoisitToucheAide();
  bool Zoome(const QKeyEvent& evenement);
  void Ajuste();
  bool Quitte(QWidget& bouton);
  void QuitteMontant(QWidget* de, const QWidget* vers);
  bool RefuseMontant(EditeurMontant& champ);
  bool ControleMontants();
  bool EnregistreAvantFermer();
  void VersVoisin(int pas, QWidget& bouton);
  void VersPremier();
  QWidget* ChampCourant() const;  ///< null while a button below has the focus
  QStringList Etat() const;
  ContexteUi& m_contexte;
  QWidget* m_zone;
  QWidget* m_raison;       ///< why nothing can be changed
  QHBoxLayout* m_boutons;  ///< the row of buttons
  QPushButton* m_defaut = nullptr;
  Mode m_mode = Mode::Simple;
  bool m_occupe = false;  ///< saving, or closed: further Enter and Escape count for nothing
  bool m_vue = false;
  bool m_lectureSeule = false;
  QString m_issue;
  QStringList m_etat;  ///< content of the fields when nothing had changed
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
