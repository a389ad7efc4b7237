// The keys of the files by index, counted from the first key of the file, as `DefinitionCle` gives them;
// named for the fields that lead their texts (definitions.h).
#pragma once

#include "store/enregistrements.h"

namespace fenlor {

/// COMPTES:
constexpr u32 IndicePlanCompte = 0, IndicePlanCode = 1, IndicePlanRubrique = 2, IndicePlanType = 3;
/// RUBRIQUE:
constexpr u32 IndiceRubriqueCode = 0, IndiceRubriqueType = 1, IndiceRubriqueLigne = 3;
/// JOURNAL, in one journal:
constexpr u32 IndiceJournalDate = 0, IndiceJournalCompte = 1;
/// JOURNAL, in all of them:
constexpr u32 IndiceCompteDate = 2, IndiceDateCompte = 3;
/// Immo:
constexpr u32 IndiceImmoNumero = 1;

}  // namespace fenlor
