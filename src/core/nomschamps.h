// The fields of the forms of entries, accounts and headings, as their labels name them.
#pragma once

#include <string>
#include <string_view>

namespace fenlor {

/// "T.T.C." for "ttc": the label of the field that a rule points at. The word itself when no label is known.
std::string NomChamp(std::string_view champ);

}  // namespace fenlor
