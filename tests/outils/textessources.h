// All texts of the program, read from the headers that hold them.
#pragma once

#include <string>
#include <vector>

namespace fenlor::test {

struct TexteSource {
  unsigned numero = 0;
  std::string utf8;
  bool detruit = false;
  std::string fichier;
};
std::vector<TexteSource> TextesDesSources();

}  // namespace fenlor::test
