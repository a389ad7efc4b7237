// The commands of every list of records.
#pragma once

namespace fenlor::test {

constexpr unsigned Ajouter = 1005, Modifier = 1006, Supprimer = 1007;

}  // namespace fenlor::test
