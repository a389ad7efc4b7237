// Rules of the accounts: receipts and expenses, treasury, and the whole chart.
// What a form holds is one value; saving runs the checks of that form in their
// order and replaces the record in one unit of work.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/colonneliste.h"
#include "core/fiche.h"

namespace fenlor {

/// Which form an account is edited in. Checks, their order and their texts differ.
enum class FormeCompte { RecettesDepenses, Tresorerie, PlanComptable };
/// Which accounts a list shows; a form stands behind each.
enum class ListeComptes { Recettes, Depenses, Tresorerie, PlanComptable };
FormeCompte FormeDe(ListeComptes liste);
i16 TypeDe(ListeComptes liste);  ///< of its accounts, -1: any
ListeComptes ListeDuType(i16 type);

/// What a form holds of an account. Texts as typed, Windows-1252; amounts in the
/// exercice's currency.
struct FicheCompte {
  Position position = 0;  ///< of the record, 0 for a new account
  std::string code;
  std::string compte;  ///< any form; stored as the long one
  std::string designation;
  i16 type = 1;                             ///< TypeCompte
  std::string rubrique;                     ///< code of the heading, empty for none
  std::string compteTVA;                    ///< long number of the VAT account, empty for none
  f64 tauxTVA = 0;                          ///< percent; typed for type 3 alone, else that of `compteTVA`
  f64 partPro = 100;                        ///< percent
  bool banque = true;                       ///< treasury: bank account, else cash
  f64 debitInitial = 0, creditInitial = 0;  ///< treasury: one of them is 0
  FormeCompte forme = FormeCompte::RecettesDepenses;  ///< where it is typed; no part of the record
  static const TableFiche Table;
};

/// Derived figures of an account in one currency; solde is credit minus debit.
struct SoldesCompte {
  f64 debit = 0, credit = 0, solde = 0;
  f64 initial = 0, reel = 0, rapproche = 0;         ///< treasury
  f64 professionnel = 0, ht = 0, tva = 0, ttc = 0;  ///< receipts and expenses
};
SoldesCompte SoldesDe(const Plan& compte, bool euro);
/// Any of the four totals is not 0: number and type are fixed, and it cannot be deleted.
bool ADesMouvements(const Plan& compte);

/// A form for a new account: type, bank box, proposed number of a treasury account.
FicheCompte NouvelleFiche(CFenlorApp& app, FormeCompte forme, i16 type);
Refus LitFiche(CFenlorApp& app, Position position, FicheCompte& fiche);
/// With the record itself, for its totals.
Refus LitFiche(CFenlorApp& app, Position position, FicheCompte& fiche, Plan& compte);
/// The personal distribution account: the system's own, read only in its form.
bool EstComptePersonnel(CFenlorApp& app, const std::string& compte);
/// First number "radical n" that is not `pris` (long form), short form; empty: none. A blank radical is
/// written back with its default.
std::string ProposeNumero(CFenlorApp& app, const TexteFixe& cle, const TexteFixe& defaut,
                          const std::function<bool(const std::string& compte)>& pris);
std::string ProposeNumeroTresorerie(CFenlorApp& app, bool banque);
/// Class rule on the long number: 5 treasury, 7 receipts, 6 expenses, 4 VAT, another one the rest.
bool ClasseJuste(i16 type, const std::string& compte);

/// Leaving the code or number field: refused when another account has it. A code
/// is compared without blanks around it and without regard to case, as quick entry looks it up.
/// Saving does not look for a code again: whoever saves without leaving the field asks before.
Refus ControleCode(CFenlorApp& app, const FicheCompte& fiche);
Refus ControleNumero(CFenlorApp& app, const FicheCompte& fiche);
/// Why a form would not let the field (its name in the table) be typed as it is: what accounts of another
/// type have, or what its list does not offer. Empty: it would.
std::string FauteChamp(CFenlorApp& app, const FicheCompte& fiche, std::string_view champ);
/// All checks of the form in their order, then delete and add in one unit; nothing is
/// written on a closed exercice, which is a success. `fiche.position` becomes the new one.
/// What the form does not hold of the record stays, the totals above all. A `compteTVA` that is
/// no VAT account counts as none. A bank's name and address follow its code.
///
/// Refused besides, as the forms prevent it in their fields: the personal distribution account
/// in its receipts and expenses form (3254); a text longer than its field (3206); another number
/// or type of an account that has movements (3253) or that special accounts, the VAT of other
/// accounts, bank operations or automatic entries name (3252); another rate of a VAT account
/// that has movements (3100, "taux"); the number of another account, which the record would
/// replace (3070, 3092); an opening balance beyond what the store takes in either currency (3401); a
/// treasury code that is a section of the settings or an exercice (3250).
Refus EnregistreFiche(CFenlorApp& app, FicheCompte& fiche);
/// Closed exercice, movements, what else names the account (3251, as for 3252), then the
/// question. Nothing to do for position 0. The settings of a bank stay.
Refus SupprimeFiche(CFenlorApp& app, const FicheCompte& fiche);

/// A row of the list of headings of a side (all of them for a type other than receipts and
/// expenses), and of the list of VAT accounts.
struct ChoixRubrique {
  std::string code;   ///< three characters
  std::string texte;  ///< as the list shows it
};
std::vector<ChoixRubrique> RubriquesDuType(CFenlorApp& app, i16 type);
struct ChoixTVA {
  std::string compte;  ///< long number
  std::string texte;   ///< "19,60% TVA01 4451"
  f64 taux = 0;
};
std::vector<ChoixTVA> ChoixComptesTVA(CFenlorApp& app);

/// In order of their number.
std::vector<Position> PositionsComptes(CFenlorApp& app, ListeComptes liste);
/// Columns of a list, in both currencies or one as the session's `AfficherDouble` says now. Single display:
/// Franc when the exercice's name as a number is below 2002, Euro otherwise. Used while `app` lives.
TableColonnes<Plan> ColonnesComptes(CFenlorApp& app, ListeComptes liste);

}  // namespace fenlor
