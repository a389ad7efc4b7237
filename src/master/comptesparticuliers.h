// The five special accounts of the books, and the list that each is chosen from.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// Their places, in the order of the form.
enum CompteParticulier { VirementRecette, VirementDepense, Perso, EcartCredit, EcartDebit };
/// Long forms; empty when none is set.
using ComptesParticuliers = std::array<std::string, EcartDebit + 1>;
ComptesParticuliers LitComptesParticuliers(CFenlorApp& app);
/// An empty one stays as it is set. All of them are written in one replacement of the
/// settings, or none: false, not told.
bool EcritComptesParticuliers(CFenlorApp& app, const ComptesParticuliers& comptes);

struct CompteListe {
  std::string compte;  ///< long form
  std::string texte;   ///< short number and name
};
/// All accounts of the open exercice in number order.
std::vector<CompteListe> ComptesAChoisir(CFenlorApp& app);

}  // namespace fenlor
