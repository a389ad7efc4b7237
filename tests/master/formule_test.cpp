#include "master/formule.h"

#include <gmock/gmock.h>

#include <map>

namespace fenlor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Formule, TermesDansLeurOrdre) {
  const struct {
    const char* formule;
    std::vector<std::string> termes;
  } cas[] = {
      {"01+02-03", {"+01", "+02", "-03"}},
      {" - 01 +\t&FRAISKM ", {"-01", "+&FRAISKM"}},
      {"23A", {"+23A"}},
      {"A--B", {"+A", "-", "-B"}},
      {"&AMORT-", {"+&AMORT", "-"}},
      {" \t ", {}},
  };
  for (const auto& c : cas) {
    std::vector<std::string> termes;
    for (const TermeFormule& t : TermesFormule(c.formule)) termes.push_back(t.signe + t.texte);
    EXPECT_EQ(termes, c.termes) << c.formule;
  }
  EXPECT_TRUE(FormuleUtilise("23A + &FRAIS KM", "&FRAISKM"));
  EXPECT_FALSE(FormuleUtilise("23A+&FRAISKM2", "&FRAISKM"));
  EXPECT_EQ(RubriqueDuTerme("1"), "1  ");
  EXPECT_EQ(RubriqueDuTerme("&AMORT"), "");
}

TEST(Formule, LaBoucleLaPlusCourte) {
  const std::map<std::string, std::string> formules{
      {"A  ", "B+C"}, {"B  ", "D-&AMORT"}, {"C  ", "A"}, {"D  ", "C+D"}, {"E  ", "D+A"}};
  const auto boucle = [&](const std::string& code) {
    return BoucleDeFormule(code,
                           [&](const std::string& c) { return formules.count(c) ? formules.at(c) : ""; });
  };
  EXPECT_THAT(boucle("A  "), ElementsAre("A  ", "C  ", "A  "));
  EXPECT_THAT(boucle("B  "), ElementsAre("B  ", "D  ", "C  ", "A  ", "B  "));
  EXPECT_THAT(boucle("D  "), ElementsAre("D  ", "D  "));
  EXPECT_THAT(boucle("E  "), IsEmpty()) << "leads into loops, not back to itself";
  EXPECT_THAT(boucle("Z  "), IsEmpty());
}

}  // namespace
}  // namespace fenlor
