#include "pages/formatetat.h"

#include <algorithm>
#include <cassert>
#include <charconv>

namespace fenlor {

namespace {

constexpr std::size_t largeurMax = 512;

struct Conversion {
  std::size_t taille = 0;  ///< bytes behind the "%", 0 when none begins there
  std::size_t largeur = 0;
  int precision = -1;
  bool aGauche = false;
  bool zeros = false;
};

std::size_t Chiffres(std::string_view texte, std::size_t& i) {
  std::size_t valeur = 0;
  for (; i < texte.size() && texte[i] >= '0' && texte[i] <= '9'; ++i)
    valeur = std::min(largeurMax, valeur * 10 + static_cast<std::size_t>(texte[i] - '0'));
  return valeur;
}

Conversion LitConversion(std::string_view texte) {
  Conversion c;
  std::size_t i = 0;
  for (; i < texte.size() && (texte[i] == '-' || texte[i] == '0'); ++i)
    (texte[i] == '-' ? c.aGauche : c.zeros) = true;
  c.largeur = Chiffres(texte, i);
  if (i < texte.size() && texte[i] == '.') {
    ++i;
    c.precision = static_cast<int>(Chiffres(texte, i));
  }
  const bool longue = i < texte.size() && texte[i] == 'l';
  if (longue) ++i;
  if (i >= texte.size()) return c;
  assert(c.largeur <= largeurMax && c.precision <= static_cast<int>(largeurMax));
  const char lettre = texte[i];
  if (lettre == 'd' || lettre == 'u' || (!longue && (lettre == 's' || lettre == 'c'))) c.taille = i + 1;
  return c;
}

}  // namespace

void ArgumentEtat::Ajoute(std::string& sortie, std::size_t largeur, int precision, bool aGauche,
                          bool zeros) const {
  char chiffres[24];
  std::string_view texte = m_texte;
  if (m_genre == Genre::Nombre) {
    const auto fin = std::to_chars(chiffres, chiffres + sizeof chiffres, m_nombre).ptr;
    texte = {chiffres, static_cast<std::size_t>(fin - chiffres)};
  } else if (m_genre == Genre::Caractere) {
    chiffres[0] = static_cast<char>(m_nombre);
    texte = {chiffres, 1};
  } else if (precision >= 0) {
    texte = texte.substr(0, static_cast<std::size_t>(precision));
  }
  const std::size_t manque = largeur > texte.size() ? largeur - texte.size() : 0;
  if (aGauche) {
    sortie.append(texte).append(manque, ' ');
  } else if (zeros && m_genre == Genre::Nombre) {
    if (m_nombre < 0) sortie += '-';
    sortie.append(manque, '0').append(texte.substr(m_nombre < 0 ? 1 : 0));
  } else {
    sortie.append(manque, ' ').append(texte);
  }
}

void RemplitEtat(std::string& sortie, std::string_view format, std::span<const ArgumentEtat> arguments) {
  auto suivant = arguments.begin();
  while (!format.empty()) {
    const std::size_t pourcent = std::min(format.find('%'), format.size());
    sortie.append(format.substr(0, pourcent));
    format.remove_prefix(pourcent);
    if (format.empty()) return;
    format.remove_prefix(1);
    if (!format.empty() && format[0] == '%') {
      sortie += '%';
      format.remove_prefix(1);
    } else if (const Conversion c = LitConversion(format); c.taille) {
      if (suivant != arguments.end()) (suivant++)->Ajoute(sortie, c.largeur, c.precision, c.aGauche, c.zeros);
      assert(c.taille <= format.size());
      format.remove_prefix(c.taille);
    } else {
      sortie += '%';
    }
  }
}

std::string EchappeEtat(std::string_view texte) {
  std::string sortie;
  for (const char c : texte) sortie.append(c == '\\' ? 2 : 1, c);
  return sortie;
}

}  // namespace fenlor
