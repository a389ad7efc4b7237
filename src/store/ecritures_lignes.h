// How the record of an entry unfolds into lines of the journal, and how it is
// made again from them. Functions on records alone: no file, no account.
//
// Lines stand in the order income or expense account, tax, personal share,
// treasury; a line without any amount is left out, and `Rang` counts those that
// stay. Receipts credit the first three and debit the treasury, expenses the
// reverse; a negative amount stands on the other side. Shares are computed in
// whole cents in each currency, so that the lines of a balanced record balance.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

/// True when the record has a personal share, so that its account is needed.
bool AvecPersonnel(const EcrSimple& rec);
bool AvecPersonnel(const EcrStandard& rec);

/// Fills `lignes`; `comptePerso` stands in for an empty `ComptePerso`. Accounts'
/// `TypeCompte` and `Designation` are left to the caller. 0, or ErrValeur (a
/// journal other than receipts and expenses, an amount out of range, a line whose
/// currencies have opposite signs), or ErrEcritureVide.
int DeplieEcriture(const EcrSimple& rec, const std::string& comptePerso, std::vector<Line>& lignes);
int DeplieEcriture(const EcrStandard& rec, std::span<const LineTresor> tresor, const std::string& comptePerso,
                   std::vector<Line>& lignes);

/// Makes the amounts of a line absolute and whole cents, turning its side for a
/// negative one. 0 or ErrValeur.
int NormaliseLigne(Line& ligne);

/// Copies `Pointee`, `Remise`, `DateRemise`, `Rapprochee` and the bank operation.
void CopieMarques(const Line& de, Line& vers);

/// Hands the marks of lines that persist (same account, same side, in order) from
/// an entry's old lines to its new ones. A line that is new to the entry is
/// neither reconciled nor on a slip, and pointed as the entry was.
void ReconduitMarques(const std::vector<Line>& anciennes, std::vector<Line>& nouvelles);

/// Record from the lines, in order of `Rang`. Precondition: there is one.
void ReplieEcriture(const std::vector<Line>& lignes, Mouvement& rec);
void ReplieEcriture(const std::vector<Line>& lignes, EcrSimple& rec);
/// The ticket stays 0; the treasury lines go to `tresor`.
void ReplieEcriture(const std::vector<Line>& lignes, EcrStandard& rec, std::vector<LineTresor>& tresor);

}  // namespace fenlor
