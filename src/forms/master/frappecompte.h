// Accounts that are found by what is typed: their code, their number, any word of their name.
#pragma once

#include <QStringList>
#include <vector>

#include "journal/choixcomptes.h"
#include "ui/choixtape.h"

namespace fenlor {

/// The rows that show these accounts under the field.
QStringList TextesProposes(const std::vector<const CompteOffert*>& proposes);
/// Types into a list with a row for each of the accounts, in their order; they outlive it.
void TapeComptes(QComboBox& choix, const std::vector<CompteOffert>& comptes,
                 ChoixTape::Inconnu inconnu = ChoixTape::Inconnu::SansChoix);

}  // namespace fenlor
