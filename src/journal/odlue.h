// An opération diverse as its form shows it when it is opened.
#pragma once

#include <vector>

#include "journal/ecriturelue.h"

namespace fenlor {

/// A line with the marks of its record.
struct LigneODLue : LigneODSaisie {
  MarquesEcriture marques;
};

struct ODLue {
  SaisieOD saisie;  ///< all but `lignes`
  std::vector<LigneODLue> lignes;
  bool pointee = false;
  bool liee = false;  ///< made by the parent application
};

/// Reads an entry, its figures in its own currency, or in Euro when `enEuro`. Refuses one that
/// does not exist (3202) or is of another kind (3205).
Refus LitOD(CFenlorApp& app, u32 mouvement, ODLue& od, bool enEuro = false);

/// The entry's label changes: lines that bear it have no words of their own and follow it.
void SuitLibelle(std::vector<LigneODLue>& lignes, const std::string& ancien, const std::string& nouveau);

/// The lines alone, as they are saved.
std::vector<LigneODSaisie> LignesSaisies(const std::vector<LigneODLue>& lignes);

}  // namespace fenlor
