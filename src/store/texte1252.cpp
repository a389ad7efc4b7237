#include "store/texte1252.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>
#include <utility>

#include "store/enregistrements.h"

namespace fenlor {

namespace {

// Characters of the bytes 80 to 9F; all others are their own code point.
constexpr std::array<u16, 32> Hauts = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr std::array<u8, 256> TableMajuscules = [] {
  std::array<u8, 256> table{};
  for (unsigned c = 0; c < 256; ++c) {
    const bool accentue = c >= 0xE0 && c <= 0xFE && c != 0xF7;
    table[c] = static_cast<u8>((c >= 'a' && c <= 'z') || accentue ? c - 32 : c);
  }
  table[0x9A] = 0x8A;
  table[0x9C] = 0x8C;
  table[0x9E] = 0x8E;
  table[0xFF] = 0x9F;
  return table;
}();

/// One or two capitals without accent for each byte.
constexpr std::array<std::array<char, 2>, 256> TableBases = [] {
  // Of the upper case from C0 on; "?" stands for what is no letter, or for two.
  constexpr std::string_view Bases = "AAAAAA?CEEEEIIIIDNOOOOO?OUUUUY";
  constexpr u8 Premier = 0xC0;
  std::array<std::array<char, 2>, 256> table{};
  for (unsigned c = 0; c < 256; ++c) {
    const u8 haute = TableMajuscules[c];
    const unsigned rang = haute - unsigned{Premier};
    const bool base = haute >= Premier && rang < Bases.size() && Bases[rang] != '?';
    table[c] = {base ? Bases[rang] : static_cast<char>(haute), 0};
  }
  for (const auto& [octet, lettres] :
       {std::pair{0x8C, "OE"}, {0xC6, "AE"}, {0xDF, "SS"}, {0x8A, "S"}, {0x8E, "Z"}, {0x9F, "Y"}})
    for (unsigned c = 0; c < 256; ++c)
      if (TableMajuscules[c] == octet) table[c] = {lettres[0], lettres[1]};
  return table;
}();

int Octet(u32 point) {
  if (point < 0x80 || (point >= 0xA0 && point <= 0xFF)) return static_cast<int>(point);
  for (std::size_t i = 0; i < Hauts.size(); ++i) {
    if (Hauts[i] == point) return static_cast<int>(0x80 + i);
  }
  return -1;
}

}  // namespace

unsigned LitPoint(std::string_view utf8, std::size_t i, char32_t& point) {
  const auto octet = [&](std::size_t k) { return static_cast<u8>(utf8[k]); };
  const u8 tete = octet(i);
  if (tete < 0x80) {
    point = tete;
    return 1;
  }
  const unsigned longueur = tete >= 0xF0 ? 4 : tete >= 0xE0 ? 3 : 2;
  if (tete < 0xC2 || tete > 0xF4 || utf8.size() - i < longueur) return 0;
  point = tete & (0x7Fu >> longueur);
  for (unsigned k = 1; k < longueur; ++k) {
    if ((octet(i + k) & 0xC0) != 0x80) return 0;
    point = (point << 6) | (octet(i + k) & 0x3Fu);
  }
  constexpr u32 Minimum[5] = {0, 0, 0x80, 0x800, 0x10000};
  const bool substitut = point >= 0xD800 && point <= 0xDFFF;
  return point < Minimum[longueur] || substitut || point > 0x10FFFF ? 0 : longueur;
}

/// Eight at a time.
std::size_t LongueurAscii(std::string_view texte) {
  constexpr u64 hauts = 0x8080808080808080;
  std::size_t n = 0;
  for (u64 mot; n + sizeof mot <= texte.size(); n += sizeof mot) {
    std::memcpy(&mot, texte.data() + n, sizeof mot);
    if (mot & hauts) break;
  }
  while (n < texte.size() && !(texte[n] & 0x80)) ++n;
  return n;
}

std::string VersUtf8(std::string_view texte) {
  std::string sortie;
  sortie.reserve(texte.size() + texte.size() / 8);
  while (!texte.empty()) {
    const std::size_t bas = LongueurAscii(texte);
    sortie.append(texte.substr(0, bas));
    if (bas == texte.size()) break;
    const u8 octet = static_cast<u8>(texte[bas]);
    texte.remove_prefix(bas + 1);
    const u32 point = octet <= 0x9F ? Hauts[octet - 0x80] : octet;
    if (point < 0x800) {
      sortie += static_cast<char>(0xC0 | (point >> 6));
      sortie += static_cast<char>(0x80 | (point & 0x3F));
    } else {
      sortie += static_cast<char>(0xE0 | (point >> 12));
      sortie += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
      sortie += static_cast<char>(0x80 | (point & 0x3F));
    }
  }
  return sortie;
}

std::optional<std::string> DepuisUtf8(std::string_view utf8) {
  std::string sortie;
  sortie.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    char32_t point = 0;
    const unsigned longueur = LitPoint(utf8, i, point);
    if (longueur == 0) return std::nullopt;
    const int octet = Octet(point);
    if (octet < 0) return std::nullopt;
    sortie += static_cast<char>(octet);
    i += longueur;
  }
  return sortie;
}

std::string operator""_w(const char* utf8, std::size_t taille) {
  std::optional<std::string> texte = DepuisUtf8({utf8, taille});
  assert(texte && "literal outside Windows-1252");
  return texte ? *std::move(texte) : std::string();
}

char Majuscule(char c) { return static_cast<char>(TableMajuscules[static_cast<u8>(c)]); }

std::string EnMajuscules(std::string_view texte) {
  std::string sortie(texte);
  std::transform(sortie.begin(), sortie.end(), sortie.begin(), Majuscule);
  return sortie;
}

int CompareSansCasse(std::string_view a, std::string_view b) {
  const std::size_t commun = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < commun; ++i) {
    const int x = TableMajuscules[static_cast<u8>(a[i])];
    const int y = TableMajuscules[static_cast<u8>(b[i])];
    if (x != y) return x - y;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

void AjouteSansAccents(std::string& sortie, std::string_view texte) {
  for (const char c : texte) {
    const auto& [premiere, seconde] = TableBases[static_cast<u8>(c)];
    sortie += premiere;
    if (seconde) sortie += seconde;
  }
}

std::string CleAlphabetique(std::string_view texte) {
  std::string cle;
  AjouteSansAccents(cle, texte);
  // Behind the letters, below any of them: what tells equal ones apart.
  return cle + '\0' + EnMajuscules(texte);
}

}  // namespace fenlor
