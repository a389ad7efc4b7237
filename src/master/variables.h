// The entries behind the headings whose formula uses a variable, such as "&FRAISKM": a term is exactly that
// name, whatever the heading's mode; with them the headings that this formula adds up, those that theirs add
// up, and so on. A manual heading stops the way, a term with a minus is none. Their entries are those with a
// line in an account that names one of them.
#pragma once

#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// Number of entries, each counted once.
u32 CompteEcrituresVariable(CFenlorApp& app, const std::string& variable);
/// Deletes them all with their other lines, validated and reconciled ones too, in one unit of work.
/// Nothing is deleted when the store refused or the exercice is closed (3056).
Refus SupprimeEcrituresVariable(CFenlorApp& app, const std::string& variable);

}  // namespace fenlor
