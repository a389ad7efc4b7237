// The command table: every command of the program in one place. Menus, bars, the
// shortcut editor and the completeness test read the same rows.
#pragma once

#include <span>

#include "core/numeroscommandes.h"
#include "store/enregistrements.h"

namespace fenlor {

class CMainFrame;

/// When a command can be used. The predicates are in gestioncommandes.cpp.
enum class Quand {
  Toujours,
  Exercice,        ///< an exercice is open
  SansExercice,    ///< none is open
  ExerciceVivant,  ///< and it is not closed ("Cloture")
  ComboRempli,     ///< the exercice combo has at least one line
  NavigateurWeb,   ///< the desktop has a browser
  FenetreActive,   ///< a document window is open
  ARetirer,        ///< a unit can be taken back
  ARetablir,       ///< one that was taken back can be done again
  Vue,             ///< the active document window knows it and says so
};

/// Where it stands.
enum class Menu {
  Fichier,
  Edition,
  Comptabilite,
  Etats,
  Traitements,
  Outils,
  Affichage,
  Graphique,  ///< shown while a chart is the active window
  Fenetre,
  Aide,
  Aucun
};
/// Title of a menu, UTF-8, "&" before the access key; empty for `Aucun`.
const char* TitreMenu(Menu menu);

struct Commande {
  unsigned numero;
  Menu menu;
  bool separateur;        ///< a rule stands before it
  const char* texte;      ///< UTF-8, "&" before the access key
  const char* legende;    ///< UTF-8, short, under a picture; "" where the text is short itself
  const char* image;      ///< name of the picture (ui/images.h)
  const char* raccourci;  ///< default shortcut, portable text; "" for none
  Quand quand;
  /// What it does; null while its work does not exist: it is then in no menu.
  void (*action)(CMainFrame& cadre, unsigned numero);
  const char* explication;  ///< UTF-8, for the status bar; of a command without action: why
  u32 bit = 0;              ///< document window of which one exists: its bit of the mask
  bool bascule = false;     ///< carries a check mark
};

/// All rows, in the order of the menus.
std::span<const Commande> TableCommandes();
/// Null for an unknown number.
const Commande* TrouveCommande(unsigned numero);

}  // namespace fenlor
