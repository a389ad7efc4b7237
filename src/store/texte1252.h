// Texts inside store, core and rules are Windows-1252 bytes; the outside world
// is UTF-8. The five bytes that Windows-1252 leaves free (81, 8D, 8F, 90, 9D)
// map to the control characters of the same number, so that any byte survives
// the way out and back.
#pragma once

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace fenlor {

/// Windows-1252 to UTF-8. Total.
std::string VersUtf8(std::string_view texte);

/// UTF-8 to Windows-1252; nothing for malformed UTF-8 or a character that the
/// code page lacks.
std::optional<std::string> DepuisUtf8(std::string_view utf8);

/// Length of the UTF-8 sequence at `place`, its code in `point`; 0 when it is malformed.
unsigned LitPoint(std::string_view utf8, std::size_t place, char32_t& point);
/// How many bytes of plain ASCII a text begins with.
std::size_t LongueurAscii(std::string_view texte);

/// A literal of the UTF-8 source as Windows-1252. Asserts that it can be held.
std::string operator""_w(const char* utf8, std::size_t taille);

/// Text of a fixed array: up to its NUL or its end.
template <std::size_t N>
std::string LitTexte(const char (&champ)[N]) {
  return std::string(champ, strnlen(champ, N));
}

/// Copies a text into a fixed array, cut to fit, the rest zeroed.
template <std::size_t N>
void PoseTexte(char (&champ)[N], std::string_view texte) {
  const std::size_t n = texte.size() < N - 1 ? texte.size() : N - 1;
  if (n) std::memcpy(champ, texte.data(), n);
  std::memset(champ + n, 0, N - n);
}

/// Upper case of Windows-1252, accents included.
char Majuscule(char c);
std::string EnMajuscules(std::string_view texte);
/// Compare without regard to case: negative, 0, positive.
int CompareSansCasse(std::string_view a, std::string_view b);
/// Appends what a search compares: capitals without accents; a ligature is two letters.
void AjouteSansAccents(std::string& sortie, std::string_view texte);
/// What a list is sorted by: an accented letter stands beside its base letter, and behind it where that is
/// all that tells two texts apart; case does not count.
std::string CleAlphabetique(std::string_view texte);

}  // namespace fenlor
