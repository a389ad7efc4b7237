// The commands of fenlorctl. Each gets an opened context, does its work through
// the rules, tells refusals on the context and returns a StatutCtl.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ctl/contexte.h"

namespace fenlor {

struct OptionsCreer {
  std::string debut, fin;  ///< "JJ/MM/AAAA", empty: the year that the name tells
  bool euro = false;
  bool franc = false;
  bool tva = false;
};
/// Creates the exercice `Globales.exercice`, the practice's directory too.
int CommandeCreer(Contexte& contexte, const OptionsCreer& options);
int CommandeExercices(Contexte& contexte);

struct OptionsSaisir {
  std::string fichier = "-";
  bool tout = false;
};
int CommandeSaisir(Contexte& contexte, const OptionsSaisir& options);

struct OptionsEchange {
  std::string nom;           ///< store name: "JOURNAL"
  std::string source = "-";  ///< input of the import
  int cle = -1;              ///< key of the export, from 0; -1: file order
};
int CommandeExporter(Contexte& contexte, const OptionsEchange& options);
int CommandeImporter(Contexte& contexte, const OptionsEchange& options);

int CommandeBalance(Contexte& contexte);
int CommandeRecalculer(Contexte& contexte, bool euros);
int CommandeVerifier(Contexte& contexte);
/// `fichiers`: store names, empty for all.
int CommandeReconstruire(Contexte& contexte, const std::vector<std::string>& fichiers);

int CommandeDemo(Contexte& contexte);

/// Texts as typed, in UTF-8; none: not given.
struct OptionsCompte {
  std::string action;  ///< "ajouter", "modifier", "supprimer", "lister"; empty: none
  std::string numero;  ///< the account that is modified or deleted
  std::string forme;   ///< "recettes", "depenses", "tresorerie", "plan"; empty: that of the account
  std::optional<std::string> type, code, compte, designation, rubrique, tva;
  std::optional<std::string> taux, partPro, debitInitial, creditInitial;  ///< numbers
  bool banque = false;
  bool caisse = false;
};
/// Adds, changes or deletes one account through the checks of its form, or lists a window's rows.
int CommandeCompte(Contexte& contexte, const OptionsCompte& options);

/// Texts as typed, in UTF-8; none: not given.
struct OptionsRubrique {
  std::string action;    ///< "ajouter", "modifier", "supprimer", "lister"; empty: none
  std::string rubrique;  ///< code of the heading that is modified or deleted
  std::optional<std::string> code, designation, ligne, type, formule;
  std::optional<std::string> montant;  ///< a number; makes the heading manual, as a formula makes it automatic
};
/// The same for one heading of the fiscal statement.
int CommandeRubrique(Contexte& contexte, const OptionsRubrique& options);

}  // namespace fenlor
