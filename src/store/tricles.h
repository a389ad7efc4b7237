// Sorting of many composed keys at once.
#pragma once

#include <string_view>
#include <utility>

#include "store/enregistrements.h"
#include "store/pagesgrandes.h"

namespace fenlor {

/// Texts and positions, of a whole file.
using ClesComposees = GrandVecteur<std::pair<std::string_view, u32>>;

/// Puts keys in the order of their texts, bytewise, then of their positions. The texts outlive the call.
void TrieCles(ClesComposees& cles);

}  // namespace fenlor
