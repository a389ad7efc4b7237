#include "pages/formatetat.h"

#include <algorithm>
#include <cassert>
#include <charconv>

#include "pages/indexetat.h"

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
  if (largeur <= texte.size()) {
    sortie.append(texte);
    return;
  }
  const std::size_t manque = largeur - texte.size();
  if (aGauche) {
    sortie.append(texte).append(manque, ' ');
  } else if (zeros && m_genre == Genre::Nombre) {
    if (m_nombre < 0) sortie += '-';
    sortie.append(manque, '0').append(texte.substr(m_nombre < 0 ? 1 : 0));
  } else {
    sortie.append(manque, ' ').append(texte);
  }
}

bool ArgumentEtat::SansMarque() const {
  const auto marque = [](char c) { return c == '\\' || c == '\n'; };
  if (m_genre == Genre::Caractere) return !marque(static_cast<char>(m_nombre));
  return std::none_of(m_texte.begin(), m_texte.end(), marque);
}

FormatEtat::FormatEtat(std::string format) : m_format(std::move(format)) {
  const std::string_view tout = m_format;
  const auto ajoute = [&](std::size_t debut, std::size_t fin) -> Morceau& {
    m_morceaux.push_back({static_cast<u32>(debut), static_cast<u32>(fin - debut)});
    return m_morceaux.back();
  };
  std::size_t debut = 0, place = 0;
  while ((place = tout.find('%', place)) != std::string_view::npos) {
    const std::string_view suite = tout.substr(place + 1);
    if (const Conversion c = LitConversion(suite); c.taille) {
      Morceau& morceau = ajoute(debut, place);
      morceau.conversion = true;
      morceau.aGauche = c.aGauche;
      morceau.zeros = c.zeros;
      morceau.largeur = static_cast<u32>(c.largeur);
      morceau.precision = c.precision;
      debut = place += 1 + c.taille;
    } else {
      // The sign stands for itself, of two of them the first one.
      ajoute(debut, place + 1);
      debut = place += suite.starts_with('%') ? 2 : 1;
    }
  }
  ajoute(debut, tout.size());
  m_titre = CommenceEnTitre(tout);
  // A block by itself: nothing in it counts lines or closes a block, and no backslash takes along what an
  // argument brings.
  u32 lignes = 0;
  for (const Morceau& morceau : m_morceaux) {
    for (u32 i = 0; i < morceau.taille; ++i) {
      const char c = tout[morceau.debut + i];
      if (c == '\n') ++lignes;
      if (c != '\\') continue;
      if (++i == morceau.taille ||
          std::string_view("FHXPG").find(tout[morceau.debut + i]) != std::string_view::npos)
        return;
    }
  }
  if (!tout.empty()) m_lignes = lignes;
}

void FormatEtat::Remplit(std::string& sortie, std::span<const ArgumentEtat> arguments) const {
  auto suivant = arguments.begin();
  for (const Morceau& m : m_morceaux) {
    sortie.append(m_format, m.debut, m.taille);
    if (m.conversion && suivant != arguments.end())
      (suivant++)->Ajoute(sortie, m.largeur, m.precision, m.aGauche, m.zeros);
  }
}

void RemplitEtat(std::string& sortie, std::string_view format, std::span<const ArgumentEtat> arguments) {
  FormatEtat(std::string(format)).Remplit(sortie, arguments);
}

std::string EchappeEtat(std::string_view texte) {
  std::string sortie;
  for (const char c : texte) sortie.append(c == '\\' ? 2 : 1, c);
  return sortie;
}

}  // namespace fenlor
