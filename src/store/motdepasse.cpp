#include "store/motdepasse.h"

#include <algorithm>

#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned Blanc = 32, Alphabet = 256 - Blanc;

/// Linear congruence of 32 bits; its high bits are the good ones.
class Generateur {
 public:
  explicit Generateur(u32 graine) : m_etat(graine) {}
  unsigned Suivant() {
    m_etat = m_etat * 1103517245u + 40503u;
    return m_etat >> 27;
  }

 private:
  u32 m_etat;
};

/// Rank of a character behind the blank.
unsigned Rang(char c) {
  const unsigned code = static_cast<unsigned char>(c);
  return code < Blanc ? 0 : code - Blanc;
}

std::string Normalise(std::string_view texte) {
  std::string resultat;
  for (const char c : texte) {
    if (Rang(c) != 0)
      resultat += Majuscule(c);
    else if (!resultat.empty() && resultat.back() != ' ')
      resultat += ' ';
  }
  if (!resultat.empty() && resultat.back() == ' ') resultat.pop_back();
  return resultat;
}

std::string MotDePasseClair(const std::string& stocke) {
  if (Normalise(stocke).empty()) return {};
  return Normalise(DebrouilleTexte(stocke, LongueurMotDePasse, GraineMotDePasse));
}

}  // namespace

std::string BrouilleTexte(std::string_view texte, unsigned n, u32 graine) {
  Generateur generateur(graine);
  std::string resultat(texte.substr(0, n));
  resultat.resize(n, ' ');
  for (char& c : resultat)
    c = static_cast<char>(Blanc + (Rang(Majuscule(c)) + generateur.Suivant()) % Alphabet);
  return resultat;
}

std::string DebrouilleTexte(std::string_view texte, unsigned n, u32 graine) {
  Generateur generateur(graine);
  std::string resultat(texte.substr(0, std::min<std::size_t>(n, texte.find('\0'))));
  for (char& c : resultat)
    c = static_cast<char>(Blanc + (Rang(c) + Alphabet - generateur.Suivant()) % Alphabet);
  resultat.resize(n, ' ');
  return resultat;
}

std::string MotDePasseBrouille(const std::string& motDePasse) {
  return BrouilleTexte(Normalise(motDePasse), LongueurMotDePasse, GraineMotDePasse);
}

bool MotDePasseDefini(const std::string& stocke) { return !MotDePasseClair(stocke).empty(); }

bool MotDePasseJuste(const std::string& stocke, const std::string& saisi) {
  const std::string clair = MotDePasseClair(stocke);
  return clair.empty() || clair == Normalise(saisi);
}

}  // namespace fenlor
