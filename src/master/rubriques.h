// Rules of the fiscal headings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/fiche.h"

namespace fenlor {

/// What the form "Fichier des rubriques" holds. Texts as typed, Windows-1252; amount in the
/// exercice's currency.
struct FicheRubrique {
  Position position = 0;  ///< 0 for a new heading
  std::string code, designation, ligne, formule;
  i16 type = 0;  ///< 0 recette, 1 dépense, 2 résultat, 3 taxe
  bool manuel = false;
  f64 montant = 0;
  static const TableFiche Table;
};

Refus LitFiche(CFenlorApp& app, Position position, FicheRubrique& fiche);

/// An account that names a heading.
struct CompteAssocie {
  Position position = 0;
  std::string compte;  ///< long number
  std::string court;   ///< short number
  std::string designation;
};
/// In order of their number; none for a blank code.
std::vector<CompteAssocie> ComptesAssocies(CFenlorApp& app, const std::string& code);

/// Leaving the code field: 3058 when another heading has the code as it would be stored.
Refus ControleCodeRubrique(CFenlorApp& app, const FicheRubrique& fiche);
/// Checks in this order: texts too long (3206), a line that is neither blank nor a number from 1 to 999
/// (3402), a code without letter or digit (3061), another heading's code, which the record would replace
/// (3058), a formula that leads back to its own heading (3260).
/// Then delete and add in one unit. Nothing is written on a closed exercice, which is a success.
/// `fiche` becomes what was written, `fiche.position` the new one. An automatic heading has no amount, a
/// manual one keeps its formula without using it. Accounts that name the old code keep it.
Refus EnregistreFiche(CFenlorApp& app, FicheRubrique& fiche);
/// What the user should know of a heading that was saved: terms of its formula that name no heading and no
/// variable (3403). They may be those of a heading that is still to come.
Refus AvisFiche(CFenlorApp& app, const FicheRubrique& fiche);
/// Closed exercice (3056), accounts that name the heading, then the question. Nothing to do for
/// position 0, which is a success.
Refus SupprimeFiche(CFenlorApp& app, const FicheRubrique& fiche);

}  // namespace fenlor
