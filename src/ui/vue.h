// A document window as the main window sees it.
#pragma once

#include <QPoint>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/numeroscommandes.h"
#include "ui/fenetres.h"
#include "ui/findesliens.h"

namespace fenlor {

/// A command of a document window: a row of its table.
struct CommandeVue {
  unsigned numero;
  std::function<void()> execute;
  std::function<bool()> disponible = {};  ///< always when empty
  std::function<bool()> coche = {};       ///< its check mark; never when empty
};

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
  /// The view's own commands, as its table has them; one that it does not know is neither available nor
  /// checked.
  bool Connait(unsigned commande) const { return m_commandes.contains(commande); }
  bool Disponible(unsigned commande) const;
  bool Coche(unsigned commande) const;
  void Execute(unsigned commande);
  /// Prints what the window shows, or shows its preview: it knows 57607 and 57609 from here on.
  void SurImpression(const std::function<void(bool apercu)>& impression,
                     const std::function<bool()>& disponible = {});
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
  /// More rows of its table.
  void Declare(const std::vector<CommandeVue>& lignes);

  ContexteUi& m_contexte;
  bool m_suspendue = false;

 private:
  std::string m_titre;
  u32 m_bit;
  std::map<unsigned, CommandeVue> m_commandes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
