// What names an account without being an entry of it: deleting or renumbering the
// account would leave it without its account.
#pragma once

#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// In words, the first found of: the special accounts, the VAT of another account, bank
/// operations waiting for their entry, automatic entries. Empty: nothing does.
std::string UtilisationCompte(CFenlorApp& app, const std::string& compte);

}  // namespace fenlor
