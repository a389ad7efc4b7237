// Statements as five banks write them, in every format, of operations that are known.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "banque/releve.h"

namespace fenlor::test {

/// An operation as the bank has it, whatever the file makes of it. The label is UTF-8.
struct OperationVraie {
  Date date = 0;
  i64 centimes = 0;  ///< above 0: money that comes in
  std::string libelle, id;
};

constexpr int NbBanques = 5;

/// Operations of `jours` days from a date on, in order: some equal on one day, some that differ in the end of
/// their label alone. The amounts of two series meet nowhere.
std::vector<OperationVraie> OperationsVraies(unsigned serie, Date premier, unsigned jours);

/// The file of a bank, 0 to 4. Each has its characters, its signs, its ids or none, its way to cut labels.
std::string FabriqueReleve(FormatReleve format, int banque, const std::vector<OperationVraie>& operations,
                           i64 solde);

}  // namespace fenlor::test
