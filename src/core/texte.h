// What a user reads. Every message, title, word and format is one constant with its number, in the `textes.h`
// of the lowest floor that uses it (`core/textes.h`, `core/erreurs.h` and `core/cles.h` for what several
// floors share). The numbers 3000 to 3121 are the error table, 3200 to 3299 this system's further refusals,
// those from 3300 on questions.
#pragma once

#include <initializer_list>
#include <string>

namespace fenlor {

/// A text of the program, UTF-8. Counts as its number where a number is wanted.
struct TexteFixe {
  unsigned numero = 0;
  const char* utf8 = "";
  bool detruit = false;  ///< a question whose yes takes away what nobody brings back: Enter answers no
  constexpr operator unsigned() const { return numero; }
};
inline constexpr bool Detruit = true;

/// The text as it stands, Windows-1252.
std::string Texte(const TexteFixe& texte);

/// Fills a format with arguments in order: %s, %d, %ld, %u, %%. Texts are taken as they are; numbers are
/// given as text by the caller.
std::string TexteFormat(const TexteFixe& format, std::initializer_list<std::string> arguments);
std::string RemplitFormat(const std::string& format, std::initializer_list<std::string> arguments);

}  // namespace fenlor
