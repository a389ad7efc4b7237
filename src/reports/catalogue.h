// The reports by name: what fenlorctl and the menus offer.
#pragma once

#include <memory>
#include <span>

#include "reports/etatcomptable.h"

namespace fenlor {

struct DefinitionEtat {
  const char* nom;    ///< "grand-livre", as fenlorctl takes it
  unsigned commande;  ///< of the menu, 0 for one that a list prints
  std::unique_ptr<CEtatComptable> (*fabrique)(CFenlorApp& app, DemandeurCriteres& demandeur);
};

/// In the order of the menu.
std::span<const DefinitionEtat> CatalogueEtats();
/// Null when there is none.
const DefinitionEtat* TrouveEtat(std::string_view nom);
const DefinitionEtat* TrouveEtat(unsigned commande);

}  // namespace fenlor
