// The command table: every command of the program in one place. Menus, bars, the
// shortcut editor and the completeness test read the same rows.
#pragma once

#include <span>

#include "store/enregistrements.h"

namespace fenlor {

class Commandes;

/// When a command can be used. The predicates are in commandes.cpp.
enum class Quand {
  Toujours,
  Exercice,        ///< an exercice is open
  ExerciceVivant,  ///< and it is not closed ("Cloture")
  ComboRempli,     ///< the exercice combo has at least one line
  NavigateurWeb,   ///< the desktop has a browser
  FenetreActive,   ///< a document window is open
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
  const char* image;      ///< name of the picture (ui/images.h)
  const char* raccourci;  ///< default shortcut, portable text; "" for none
  Quand quand;
  /// What it does; null while its work does not exist: it is then in no menu.
  void (Commandes::*action)(unsigned numero);
  const char* explication;  ///< UTF-8, for the status bar; of a command without action: why
  u32 bit = 0;              ///< document window of which one exists: its bit of the mask
  bool bascule = false;     ///< carries a check mark
};

/// All rows, in the order of the menus.
std::span<const Commande> TableCommandes();
/// Null for an unknown number.
const Commande* TrouveCommande(unsigned numero);

/// Numbers of the commands that other code names.
enum NumeroCommande : unsigned {
  CmdNouvelExercice = 1000,
  CmdOuvrirExercice = 1001,
  CmdCloture = 1002,
  CmdSauvegarder = 1003,
  CmdRestaurer = 1004,
  CmdAjouter = 1005,
  CmdModifier = 1006,
  CmdSupprimer = 1007,
  CmdBarreOutils = 1024,
  CmdBarreIcones = 1025,
  CmdReconstruction = 1042,
  CmdRecalcul = 1043,
  CmdCalculatrice = 1044,
  CmdPreferences = 1045,
  CmdPageWeb = 1058,
  CmdCourrier = 1059,
  CmdAstuce = 1060,
  CmdInformations = 1062,
  CmdFermerExercice = 1094,
  CmdRaccourcis = 1212,
  CmdOptions = 1213,
  CmdSupprimerExercice = 1240,
  CmdProprietes = 1246,
  CmdAjustementEuro = 1250,
  CmdMiseAJour = 1251,
  CmdComboExercices = 7002,
  CmdMiseEnPage = 57606,
  CmdImprimer = 57607,
  CmdApercu = 57609,
  CmdAPropos = 57664,
  // This system's own
  CmdQuitter = 9000,
  CmdDemonstration = 9001,
  CmdAide = 9002,
  CmdPersonnaliserBarre = 9003,
  CmdPleinEcran = 9004,
  CmdBarreEtat = 9005,
  CmdCopier = 9006,
  CmdCascade = 9010,
  CmdMosaique = 9011,
  CmdFermerFenetre = 9012,
  CmdFermerFenetres = 9013,
  CmdFenetreSuivante = 9014,
};

}  // namespace fenlor
