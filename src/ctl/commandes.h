// The commands of fenlorctl. Each gets an opened context, does its work through
// the rules, tells refusals on the context and returns a StatutCtl.
#pragma once

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

}  // namespace fenlor
