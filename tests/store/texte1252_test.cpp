#include "store/texte1252.h"

#include <gtest/gtest.h>

namespace fenlor {
namespace {

TEST(Texte1252, EveryByteComesBack) {
  std::string tous;
  for (int c = 0; c < 256; ++c) tous += static_cast<char>(c);
  const std::string utf8 = VersUtf8(tous);
  EXPECT_EQ(utf8.substr(128, 3), "€");
  EXPECT_EQ(utf8.substr(utf8.size() - 2), "ÿ");
  EXPECT_EQ(DepuisUtf8(utf8), tous);
}

TEST(Texte1252, RefusesWhatItCannotHold) {
  const char* refuses[] = {
      "\xC3",              // cut
      "a\xE2\x82",         // cut
      "\x80",              // stray
      "\xC3\x28",          // bad second byte
      "\xC0\xAF",          // overlong
      "\xE0\x80\xAF",      // overlong
      "\xED\xA0\x80",      // half of a pair
      "\xF4\x90\x80\x80",  // above the last character
      "\xFF",
      "\xC2\x80",  // a control character that the code page lacks
      "Ω",
      "😀",
  };
  for (const char* texte : refuses) EXPECT_FALSE(DepuisUtf8(texte)) << texte;
  EXPECT_EQ(DepuisUtf8("\xC2\x81"), "\x81");
  EXPECT_EQ(DepuisUtf8(""), "");
}

TEST(Texte1252, CaseKnowsAccents) {
  EXPECT_EQ(EnMajuscules("éàç œuf ÿ ž ß × ÷ µ"_w), "ÉÀÇ ŒUF Ÿ Ž ß × ÷ µ"_w);
  for (int c = 0; c < 256; ++c) {
    const char octet = static_cast<char>(c);
    EXPECT_EQ(Majuscule(Majuscule(octet)), Majuscule(octet)) << c;
  }
  EXPECT_EQ(CompareSansCasse("PRÉFÉRENCES"_w, "Préférences"_w), 0);
  EXPECT_LT(CompareSansCasse("abc", "ABCD"), 0);
  EXPECT_GT(CompareSansCasse("É"_w, "z"), 0);
  EXPECT_NE(CompareSansCasse(std::string_view("a\0b", 3), std::string_view("a\0c", 3)), 0);
}

TEST(Texte1252, AlphabeticOrder) {
  const std::string ordre[] = {"",      "aérien"_w, "Çà"_w,    "école"_w, "ecole normale",
                               "Evian", "Évian"_w,  "Œdème"_w, "OEUF",    "Œuf"_w,
                               "ÿ"_w,   "zèbre"_w,  "Žižka"_w};
  for (std::size_t i = 1; i < std::size(ordre); ++i)
    EXPECT_LT(CleAlphabetique(ordre[i - 1]), CleAlphabetique(ordre[i])) << ordre[i];
  EXPECT_EQ(CleAlphabetique("ÉVIAN"_w), CleAlphabetique("évian"_w));
}

TEST(Texte1252, ArraysAreCutAndZeroed) {
  char champ[4] = {'x', 'x', 'x', 'x'};
  EXPECT_EQ(LitTexte(champ), "xxxx");
  PoseTexte(champ, "abcdef");
  EXPECT_EQ(std::string(champ, 4), std::string("abc\0", 4));
  PoseTexte(champ, "z");
  EXPECT_EQ(std::string(champ, 4), std::string("z\0\0\0", 4));
}

}  // namespace
}  // namespace fenlor
