// Keys sorted by the bytes that vary, beside a sort of the texts themselves.
#include "store/tricles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace fenlor {
namespace {

TEST(TrieCles, CommeLesTextesEuxMemes) {
  std::mt19937 hasard(7);
  // Varying bytes of each key, and one length for all or not.
  for (const auto& [variables, egales] :
       {std::pair{1u, true}, {9u, true}, {20u, true}, {40u, true}, {6u, false}}) {
    std::vector<std::string> textes(500, std::string(50, '0'));
    for (std::string& texte : textes) {
      for (unsigned i = 0; i < variables; ++i) texte[i * 7 % 50] = static_cast<char>("09A\xE9"[hasard() % 4]);
      if (!egales) texte.resize(45 + hasard() % 5);
    }
    ClesComposees cles;
    for (const std::string& texte : textes) cles.emplace_back(texte, hasard() % 100);
    auto voulues = cles;
    std::sort(voulues.begin(), voulues.end());
    TrieCles(cles);
    EXPECT_EQ(cles, voulues) << variables;
  }
}

}  // namespace
}  // namespace fenlor
