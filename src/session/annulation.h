// Taking back what was done since the exercice was opened: what a unit is called in the menu, and which one
// may not be taken back. The store knows how (`QVAPI::QVReprend`).
#pragma once

#include <span>
#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

enum class Sens { Annuler, Retablir };

/// From here on units are kept, with names: "suppression de « Consultation », 20,00 €".
void SuitReprises(CFenlorApp& app);

/// "Annuler : suppression de..." without the first word, Windows-1252; empty: there is nothing.
std::string NomReprise(CFenlorApp& app, Sens sens);

/// Takes the last unit back (does it again) as a new unit. Refused, in this order: an exercice that is closed
/// (3056), nothing there (3570), one that is not kept any more (3576), an entry that is validated now or
/// would be (3571), data that were changed since (3572), the store (3214).
Refus Reprend(CFenlorApp& app, Sens sens);
/// There is one, and what it changed is kept.
bool EstGardee(CFenlorApp& app, Sens sens);

/// The word with which the name of every deletion begins.
std::string MotSuppression();

/// The name of a unit by what it changed.
std::string NomUnite(CFenlorApp& app, std::span<const EcartUnite> ecarts);

}  // namespace fenlor
