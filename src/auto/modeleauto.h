// The model of a recurring receipt or expense as its form holds it: checks, amounts, saving.
#pragma once

#include <string>
#include <vector>

#include "core/fiche.h"
#include "journal/saisie.h"

namespace fenlor {

constexpr u32 ModelesAutoMax = 400;
constexpr u32 PaiementsMax = 999;

/// A person's words for a model. Amounts are in its currency.
struct FicheAuto {
  Position position = 0;  ///< its number; 0: a new one
  i16 genre = JournalRecettes;
  std::string libelle;
  Date date = 0;
  std::string tresorerie, compte;  ///< any form
  i16 paiement = PaiementCheque;
  MontantsSaisie montants;
  bool euro = true;
  i16 periodicite = 1;
  u32 nombre = 1;  ///< of payments in all
  u32 payes = 0;   ///< of them
  bool annoncer = false;
  static const TableFiche Table;
};

/// A new model: today, in the currency of the exercice, once.
FicheAuto NouvelleAuto(CFenlorApp& app);
/// What stands in the way of one more: 3209, 3056, 3098 (there are 400).
Refus ControleAjoutAuto(CFenlorApp& app);
/// 3510: there is none of that number.
Refus LitFiche(CFenlorApp& app, Position numero, FicheAuto& fiche);
/// The first row is paid once more, and no number is asked for; any other has no end in sight.
void ChangePeriodicite(FicheAuto& fiche, i16 periodicite);
/// What was typed as the number of payments: at least one, and more than are paid.
u32 NombreTape(const FicheAuto& fiche, u32 nombre);
/// "3 / 12": how many are paid of how many.
std::string AvancementAuto(const FicheAuto& fiche);

/// Checks and saves. In order: 3209, 3056, 3098 (400 models), 3514 kind, 3104 date, 3105 account ("compte",
/// of the kind), 3106 amount, 3041 Franc after the limit, 3105 treasury account, 3512, 3513, 3206 and 3205
/// what the fields do not hold. The other currency is derived at the rate of the date, the tax is the
/// account's. A blank label takes the account's name; off a bank the mode is "Autre". `fiche.position`
/// becomes its number.
Refus EnregistreFiche(CFenlorApp& app, FicheAuto& fiche);
/// 3209, 3056, 3510, then the question.
Refus SupprimeFiche(CFenlorApp& app, const FicheAuto& fiche);
/// All of them in order of their numbers.
Refus ListeAutos(CFenlorApp& app, std::vector<EcrituresAuto>& modeles);

}  // namespace fenlor
