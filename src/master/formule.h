// The formula of a heading: a sum of terms, each the code of another heading or the
// name of a variable, such as "10+11-&AMORT".
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fenlor {

struct TermeFormule {
  std::string texte;  ///< without blanks; empty where two signs follow each other
  char signe = '+';   ///< '+' or '-'
};
/// Terms from left to right; none for a blank formula.
std::vector<TermeFormule> TermesFormule(std::string_view formule);
/// One term is exactly this text.
bool FormuleUtilise(std::string_view formule, std::string_view terme);
/// Code of the heading that a term names: the term as it stands, filled up with blanks to three
/// characters. Empty for a longer one, which is a variable, and for an empty one.
std::string RubriqueDuTerme(std::string_view terme);

/// One of the five variables that a formula may name, exactly.
bool EstVariable(std::string_view terme);

/// Formula of a heading by its code; empty when there is none, or a manual amount instead.
using SourceFormules = std::function<std::string(const std::string& code)>;
/// The shortest way from a heading through the formulas back to itself, both ends named;
/// empty when there is none. Whoever computes a heading asks first: one with a loop is worth 0.
std::vector<std::string> BoucleDeFormule(const std::string& code, const SourceFormules& formules);

}  // namespace fenlor
