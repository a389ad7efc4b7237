// VAT accounts of the options: a list that is edited in memory and applied to the
// chart as a whole when the options are saved.
#pragma once

#include <string>
#include <vector>

#include "master/options.h"

namespace fenlor {

struct LigneTva {
  Position position = 0;  ///< of the account's record, 0 for a row that was added
  std::string compte;     ///< long form
  f64 taux = 0;           ///< percent
};

/// `Plan` records of type 3 in number order.
std::vector<LigneTva> LitComptesTva(CFenlorApp& app);
/// Number for a new account, short form: "RadicalTVA" and n, the first that no row holds
/// and no other account. The default radical is written back when none is set.
std::string ProposeCompteTva(CFenlorApp& app, const std::vector<LigneTva>& lignes);
/// 3070 ("compte") when a row or an account holds the number. An account that was
/// only taken out of the list may be listed again.
Refus ControleNumeroTva(CFenlorApp& app, const std::vector<LigneTva>& lignes, const std::string& compte);
/// A row to be added: 3071 ("compte") no number, 3070, 3069 ("taux") no rate.
Refus ControleAjoutTva(CFenlorApp& app, const std::vector<LigneTva>& lignes, const LigneTva& saisie);
/// The new rate of a row: 3069 ("taux").
Refus ControleTauxTva(f64 taux);
/// 3100 when a row's account has movements; 0 for a row that was added.
Refus ControleModificationTva(CFenlorApp& app, const LigneTva& ligne);
/// 3096 likewise.
Refus ControleSuppressionTva(CFenlorApp& app, const LigneTva& ligne);

/// Makes the chart follow the list, as one unit: deletes the VAT accounts that
/// are no longer listed, makes those that are missing, changes rates that differ.
/// What met movements since it was listed is refused (3096, 3100). In a closed
/// exercice nothing is done, which is a success. `comptes`: accounts that were deleted, made and changed,
/// 0 after a refusal, which leaves the chart as it was.
Refus AppliqueComptesTva(CFenlorApp& app, const std::vector<LigneTva>& lignes, unsigned& comptes);

}  // namespace fenlor
