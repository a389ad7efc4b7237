// The commands at work: one QAction for each row of the table, its availability,
// and what it does. Every command is handled here, so that it works the same
// whatever document window is active.
#pragma once

#include <QHash>
#include <QObject>

#include "app/commandes.h"

class QAction;
class QMenuBar;
class QWidget;

namespace fenlor {

class CMainFrame;
class Impressions;

class Commandes : public QObject {
  Q_OBJECT
 public:
  /// Makes the actions; the frame owns this object.
  explicit Commandes(CMainFrame& cadre);

  /// Null for an unknown number and for a command without work.
  QAction* Action(unsigned numero) const { return m_actions.value(numero, nullptr); }
  /// Fills the menu bar; menus without any command are left out.
  void FaitMenus(QMenuBar& barre);
  /// The predicate of a command, now.
  bool Disponible(const Commande& commande) const;
  /// Enables and checks all actions after a change of the session or of the windows.
  void ActualiseEtats();
  /// Runs a command when it is available and no form is open.
  void Execute(unsigned numero);
  /// The reports that are open, and printing.
  Impressions& Etats() { return *m_etats; }

  // The handlers; the argument is the command's number.
  void NouvelExercice(unsigned);
  void OuvrirExercice(unsigned);
  void FermerExercice(unsigned);
  void SupprimerExercice(unsigned);
  void Proprietes(unsigned);
  void Quitter(unsigned);
  void SelectionExercice(unsigned);
  void DeLaVue(unsigned numero);
  void MiseEnPage(unsigned);
  void Etat(unsigned numero);  ///< a report of the menu
  void FraisKm(unsigned);
  void Virement(unsigned);
  void Validation(unsigned);
  void Reconstruction(unsigned);
  void Recalcul(unsigned);
  void AjustementEuro(unsigned);
  void Calculatrice(unsigned);
  void PreferencesUi(unsigned);
  void Options(unsigned);
  void Barre(unsigned numero);
  void PleinEcran(unsigned);
  void Personnaliser(unsigned);
  void Raccourcis(unsigned);
  void Fenetre(unsigned numero);  ///< one of a kind: brings forward or opens
  void Cascade(unsigned);
  void Mosaique(unsigned);
  void FenetreSuivante(unsigned);
  void FermerFenetre(unsigned);
  void FermerFenetres(unsigned);
  void Aide(unsigned);
  void Astuce(unsigned);
  void Demonstration(unsigned);
  void PageWeb(unsigned);
  void Courrier(unsigned);
  void Informations(unsigned);
  void APropos(unsigned);

 private:
  bool EstCoche(const Commande& commande) const;
  QWidget* BarreDe(unsigned numero) const;  ///< that the command shows and hides; null for others
  CMainFrame& m_cadre;
  Impressions* m_etats;
  bool m_navigateur;
  QHash<unsigned, QAction*> m_actions;
};

}  // namespace fenlor
