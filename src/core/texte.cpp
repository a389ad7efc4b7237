#include "core/texte.h"

#include <cassert>

#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Length of the conversion that begins behind a "%" at `debut`, 0 when none does.
std::size_t TailleConversion(const std::string& format, std::size_t debut) {
  assert(debut <= format.size());
  std::size_t i = debut;
  if (i < format.size() && format[i] == 'l') ++i;
  if (i >= format.size()) return 0;
  const char sorte = format[i];
  return sorte == 'd' || sorte == 'u' || (sorte == 's' && i == debut) ? i + 1 - debut : 0;
}

}  // namespace

std::string Texte(const TexteFixe& texte) {
  auto octets = DepuisUtf8(texte.utf8);
  assert(octets);  // the source holds what the code page holds
  return octets.value_or(texte.utf8);
}

std::string RemplitFormat(const std::string& format, std::initializer_list<std::string> arguments) {
  std::string resultat;
  auto suivant = arguments.begin();
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      resultat += format[i];
    } else if (i + 1 < format.size() && format[i + 1] == '%') {
      resultat += '%';
      ++i;
    } else if (const std::size_t taille = TailleConversion(format, i + 1)) {
      if (suivant != arguments.end()) resultat += *suivant++;
      i += taille;
    } else {
      resultat += '%';
    }
  }
  return resultat;
}

std::string TexteFormat(const TexteFixe& format, std::initializer_list<std::string> arguments) {
  return RemplitFormat(Texte(format), arguments);
}

}  // namespace fenlor
