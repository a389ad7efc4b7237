// A document window as the main window sees it.
#pragma once

#include <QPoint>
#include <QWidget>
#include <string>
#include <vector>

#include "ui/fenetres.h"
#include "ui/findesliens.h"

namespace fenlor {

/// The content of one child window. The main frame makes it, puts it into a child
/// frame, and tells it about commands and changes; closing the frame deletes it.
class Vue : public QWidget {
  Q_OBJECT
 public:
  /// `titre`: title of the window and name of its section in the settings, as
  /// "Comptes de recettes". `bit` is 0 for a window of which several may be open.
  Vue(ContexteUi& contexte, const std::string& titre, u32 bit);

  const std::string& Titre() const { return m_titre; }
  u32 Bit() const { return m_bit; }
  CFenlorApp& App() { return m_contexte.App; }
  ContexteUi& Contexte() { return m_contexte; }

  /// First load, once the window has its place; from here on it follows changes.
  virtual void Charge() { m_contexte.Cadre.Entre(*this); }
  /// Reloads what it shows; what is selected stays so.
  virtual void Actualise() = 0;
  /// The same, with other preferences.
  virtual void AppliqueDessin() { Actualise(); }
  /// A command of its own is at work, which shows what it changes by itself.
  bool Suspendue() const { return m_suspendue; }
  /// The view's own commands (1005 "&Ajouter...", 1006, 1007 and their like).
  virtual bool Connait(unsigned /*commande*/) const { return false; }
  virtual bool Disponible(unsigned /*commande*/) const { return false; }
  virtual void Execute(unsigned /*commande*/) {}
  /// Check mark of a command that it knows.
  virtual bool Coche(unsigned /*commande*/) const { return false; }
  /// Page of the help: "Fenetre" and the window's name without blanks.
  virtual QString PageAide() const;
  /// False keeps the window open.
  virtual bool PeutFermer() { return true; }

 Q_SIGNALS:
  /// The user asked for the menu of the view at a point of the screen: numbers of the
  /// command table, 0 a separator.
  void MenuDemande(const QPoint& global, const std::vector<unsigned>& commandes);
  /// What its commands can do, or their check marks, may have changed: another selection.
  void EtatChange();

 protected:
  ContexteUi& m_contexte;
  bool m_suspendue = false;

 private:
  std::string m_titre;
  u32 m_bit;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
