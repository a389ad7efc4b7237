// Sorting of many composed keys at once.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

/// Puts keys in the order of their texts, bytewise, then of their positions. The texts outlive the call.
void TrieCles(std::vector<std::pair<std::string_view, u32>>& cles);

}  // namespace fenlor
