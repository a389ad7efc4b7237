// Rules of the entry forms: the chain of the amounts, the checks in their fixed
// order, the saving of simple and standard entries and of opérations diverses, and
// the journal's commands on one entry. Windows, fenlorctl and the automatic entries
// all save through here.
//
// Amounts are in the master currency (`euro`: Euro, else Franc); the other one is
// derived on saving at the rate of the entry's date. Nothing is written before
// every check has passed, and what is written is one unit of work. What stops a rule comes back as a `Refus`.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// The entry that was saved.
struct EcritureFaite {
  u32 mouvement = 0;
  u32 ligne = 0;
};

/// The figures under the account and T.T.C. fields, as the fields hold them.
struct MontantsSaisie {
  f64 ttc = 0;
  f64 professionnel = 0;
  f64 personnel = 0;
  f64 ht = 0;
  f64 tva = 0;
  f64 taux = 0;  ///< percent, 0 when the exercice is not subject to VAT
};

/// The whole chain: T.T.C. or the account changed.
MontantsSaisie ChaineMontants(CFenlorApp& app, const Plan& compte, f64 ttc);
/// The professional share was typed: brought down to T.T.C. in size, then the
/// steps behind it.
MontantsSaisie ChaineProfessionnel(CFenlorApp& app, const Plan& compte, f64 ttc, f64 professionnel);

struct DeuxMonnaies {
  f64 franc = 0;
  f64 euro = 0;
};

struct LigneTresorSaisie {
  std::string compte;  ///< long form
  f64 montant = 0;     ///< in the master currency
  i16 paiement = PaiementCheque;
};

/// What the form holds when "&Enregistrer" is pressed.
struct SaisieEcriture {
  i16 journal = JournalRecettes;
  i16 genre = GenreSimple;  ///< GenreStandard: `tresoreries` has the lines
  u32 mouvement = 0;        ///< 0 for a new entry
  u32 ligne = 0;            ///< of a new entry at least the next free one; 0: that, or the one the entry has
  Date date = 0;
  std::string compte;  ///< long form; empty: none chosen
  std::string libelle;
  bool euro = true;  ///< master currency
  MontantsSaisie montants;
  std::string tresorerie;  ///< simple: long form
  i16 paiement = PaiementCheque;
  std::vector<LigneTresorSaisie> tresoreries;  ///< standard
  bool validee = false;
  bool delier = false;  ///< a linked entry is saved all the same and loses its link words
};

/// Checks and saves; the first failure ends the save. `montants` are figures of the
/// chain above. In order: 3209 no exercice, 3056 closed; for an existing entry 3202
/// unknown, 3201 validated, 3103 linked, 3205 "mouvement" of another journal or kind;
/// limits of the fields 3206 and 3205; 3104 date ("date": not real, outside the
/// exercice, or another month than the existing entry's); 3105 account ("compte");
/// 3106 amount ("ttc"); a simple entry: 3105 ("tresorerie"); a standard one: 3035 no
/// lines, then for each line 3105 and 3106, then 3036 total; 3300 the treasury
/// account of a simple entry was changed; 3055 personal account; 3041 Franc too late.
///
/// An existing entry keeps the amounts that are stored as long as account, T.T.C., professional share, rate
/// and currency are those that `LitEcriture` gives; those of the other currency too unless the lines of a
/// standard entry change.
///
/// An empty label takes the account's designation. Off a bank account the payment
/// mode is "Autre" for a simple entry and "Chèque" for a treasury line.
///
/// `suite` goes on in the same unit of work once the entry is written; what it refuses undoes the entry.
using SuiteSaisie = std::function<Refus(const EcritureFaite&)>;
Refus EnregistreEcriture(CFenlorApp& app, const SaisieEcriture& saisie, EcritureFaite& faite,
                         const SuiteSaisie& suite = {});

/// One line of an opération diverse as its form holds it.
struct LigneODSaisie {
  std::string compte;   ///< long form; empty: none chosen
  std::string libelle;  ///< empty: the entry's, then the account's
  f64 debit = 0;        ///< a negative figure stands for the other side
  f64 credit = 0;
  i16 paiement = PaiementCheque;
};

struct SaisieOD {
  i16 journal = JournalOD;  ///< an existing entry keeps its own
  u32 mouvement = 0;
  u32 ligne = 0;
  Date date = 0;
  std::string libelle;
  bool euro = true;
  std::vector<LigneODSaisie> lignes;
  bool validee = false;
  /// An entry that is validated or linked is saved all the same: it takes `validee` and loses its link.
  bool forcee = false;
};

/// Credits less debits in the master currency, rounded to the cent.
f64 SoldeOD(const std::vector<LigneODSaisie>& lignes);
/// Checks and saves. In order: as above up to the date; 3032 no lines; for each line
/// 3105 account ("compte"), 3108 no amount, 3207 both sides ("debit"); 3041; 3055;
/// 3030 and 3031 deviation accounts, balanced or not; 3301 when it does not balance,
/// and then a line for the difference follows the others.
///
/// An existing entry is written anew under its number; a line whose account and side
/// it had already keeps its marks and its reconciliation, matched in order. While no account and no amount
/// changes the amounts of the other currency stay as they are stored.
Refus EnregistreOD(CFenlorApp& app, const SaisieOD& saisie, EcritureFaite& faite);

/// The personal share account exists in the chart; else 3055 is asked. Whoever answers
/// OK has let the user choose an account before: it is tested again, and asked again
/// as long as each answer brought another account. Cancel, or an OK that changed
/// nothing, refuses. Alike for the deviation accounts (3030 credit, 3031 debit) and for the
/// transit accounts of transfers (3088 receipts, 3087 expenses).
Refus CheckComptePerso(CFenlorApp& app);
Refus CheckCompteEcartCredit(CFenlorApp& app);
Refus CheckCompteEcartDebit(CFenlorApp& app);
Refus CheckCompteVireTo(CFenlorApp& app);
Refus CheckCompteVireFrom(CFenlorApp& app);

// Commands of the journal on one entry. Each asks its question and refuses an entry
// that does not exist (3202).

/// Deletes an entry, a linked one together with the parent application's record.
/// 3056 closed exercice; 3016 or 3017 validated; 3040 linked to another application.
/// A linked entry whose record is not there any more stays as it is: 3038, `dit`, for nothing is shown of it.
Refus SupprimeEcriture(CFenlorApp& app, u32 mouvement);
/// Marks an entry final, or a draft again. An entry that is so already is a success
/// without a question. A closed exercice does not matter, here and below.
Refus ValideEcriture(CFenlorApp& app, u32 mouvement, bool valide);
/// Flips the pointing mark.
Refus PointeEcriture(CFenlorApp& app, u32 mouvement);
/// Marks every bank line (cash lines too with "Especes") reconciled, or not. 3116
/// when the entry has no such line. Nothing to change is a success without a question.
Refus RapprocheEcriture(CFenlorApp& app, u32 mouvement, bool rapproche);

/// The lines of an entry that reconciling touches, and those of them that are reconciled.
struct LignesRapprochables {
  u32 nombre = 0;
  u32 rapprochees = 0;
};
LignesRapprochables CompteRapprochables(CFenlorApp& app, u32 mouvement);

/// Amount as a form's field holds it after it was left: two decimals.
f64 MontantDeChamp(f64 montant);
/// True when the amount fits the field: at most 16 characters.
bool MontantTient(f64 montant);

}  // namespace fenlor
