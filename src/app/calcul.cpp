#include "app/calcul.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace fenlor {

namespace {

constexpr int decimalesMax = 18;
constexpr i64 limite = 1000000000000000000;  // 10^18
constexpr std::size_t lignesBande = 300;

__extension__ typedef __int128 Large;

Large Puissance(int n) {
  Large p = 1;
  while (n-- > 0) p *= 10;
  return p;
}

Large DiviseArrondi(Large a, Large b) {
  const Large quotient = a / b, reste = a % b;
  const Large double_ = (reste < 0 ? -reste : reste) * 2, diviseur = b < 0 ? -b : b;
  if (double_ < diviseur) return quotient;
  return quotient + ((a < 0) == (b < 0) ? 1 : -1);
}

std::string TexteSigne(char operateur) {
  if (operateur == '*') return "×";
  if (operateur == '/') return "÷";
  return operateur ? std::string{operateur} : std::string();
}

bool EstChiffre(char c) { return c >= '0' && c <= '9'; }

/// Decimals to drop, `surplus` of them anyhow, so that the number stays below `plafond`.
int Surplus(Large valeur, int decimales, Large plafond, int surplus) {
  while (surplus < decimales &&
         (valeur / Puissance(surplus) >= plafond || valeur / Puissance(surplus) <= -plafond))
    ++surplus;
  return surplus;
}

void OteZeros(Large& valeur, int& decimales) {
  while (decimales > 0 && valeur % 10 == 0) {
    valeur /= 10;
    --decimales;
  }
}

}  // namespace

Decimal::Decimal(i64 entier) { *this = Fait(entier, 0).value_or(Decimal()); }

std::optional<Decimal> Decimal::Fait(Large valeur, int decimales) {
  while (decimales > 0 && (decimales > decimalesMax || valeur >= limite || valeur <= -limite)) {
    // All surplus digits go at once: rounding step by step would round twice.
    const int surplus = Surplus(valeur, decimales, limite, std::max(decimales - decimalesMax, 0));
    valeur = surplus > 37 ? 0 : DiviseArrondi(valeur, Puissance(surplus));
    decimales -= surplus;
  }
  if (valeur >= limite || valeur <= -limite) return std::nullopt;
  OteZeros(valeur, decimales);
  Decimal resultat;
  resultat.m_valeur = static_cast<i64>(valeur);
  resultat.m_decimales = decimales;
  return resultat;
}

std::optional<Decimal> Decimal::Lit(std::string_view texte) {
  const bool negatif = texte.starts_with('-');
  if (negatif || texte.starts_with('+')) texte.remove_prefix(1);
  Large valeur = 0;
  int chiffres = 0, decimales = -1;
  for (const char c : texte) {
    if (EstChiffre(c)) {
      if (++chiffres > 18) return std::nullopt;
      valeur = valeur * 10 + (c - '0');
      if (decimales >= 0) ++decimales;
    } else if ((c == ',' || c == '.') && decimales < 0) {
      decimales = 0;
    } else {
      return std::nullopt;
    }
  }
  if (chiffres == 0) return std::nullopt;
  return Fait(negatif ? -valeur : valeur, std::max(decimales, 0));
}

std::optional<Decimal> Decimal::LitColle(std::string_view utf8) {
  std::string texte(utf8);
  for (const std::string_view blanc : {" ", "\t", "\r", "\n", "\u00A0", "\u202F", "\u2009", "'", "’"})
    for (std::size_t p; (p = texte.find(blanc)) != std::string::npos;) texte.erase(p, blanc.size());
  for (const std::string_view moins : {"−", "–"})
    if (texte.starts_with(moins)) texte.replace(0, moins.size(), "-");
  for (const std::string_view monnaie : {"€", "EUR", "FRF", "F"})
    if (texte.ends_with(monnaie)) {
      texte.erase(texte.size() - monnaie.size());
      break;
    }
  const auto virgules = std::count(texte.begin(), texte.end(), ',');
  const auto points = std::count(texte.begin(), texte.end(), '.');
  char milliers = 0;
  if (virgules && points)
    milliers = texte.rfind(',') > texte.rfind('.') ? '.' : ',';
  else if (virgules > 1 || points > 1)
    milliers = virgules ? ',' : '.';
  if (milliers) std::erase(texte, milliers);
  return Lit(texte);
}

std::optional<Decimal> Decimal::DeMontant(f64 montant) {
  if (!(std::fabs(montant) < 1e16)) return std::nullopt;
  char texte[64];
  const auto fin = std::to_chars(texte, texte + sizeof texte, montant, std::chars_format::fixed, 2).ptr;
  return Lit(std::string_view(texte, static_cast<std::size_t>(fin - texte)));
}

f64 Decimal::Montant() const {
  const std::string texte = Texte('.', 18);
  f64 montant = 0;
  std::from_chars(texte.data(), texte.data() + texte.size(), montant);
  return montant;
}

std::string Decimal::Texte(char separateur, unsigned chiffres) const {
  Large valeur = m_valeur;
  int decimales = m_decimales;
  const int surplus = Surplus(valeur, decimales, Puissance(static_cast<int>(chiffres)), 0);
  valeur = DiviseArrondi(valeur, Puissance(surplus));
  decimales -= surplus;
  OteZeros(valeur, decimales);
  std::string texte = std::to_string(static_cast<i64>(valeur < 0 ? -valeur : valeur));
  if (decimales > 0) {
    const auto place = static_cast<std::size_t>(decimales);
    if (texte.size() <= place) texte.insert(0, place + 1 - texte.size(), '0');
    texte.insert(texte.size() - place, 1, separateur);
  }
  return valeur < 0 ? '-' + texte : texte;
}

Decimal Decimal::operator-() const {
  Decimal oppose = *this;
  oppose.m_valeur = -m_valeur;
  return oppose;
}

std::optional<Decimal> Decimal::Ajoute(const Decimal& a, const Decimal& b) {
  const int decimales = std::max(a.m_decimales, b.m_decimales);
  return Fait(Large{a.m_valeur} * Puissance(decimales - a.m_decimales) +
                  Large{b.m_valeur} * Puissance(decimales - b.m_decimales),
              decimales);
}

std::optional<Decimal> Decimal::Retire(const Decimal& a, const Decimal& b) { return Ajoute(a, -b); }

std::optional<Decimal> Decimal::Multiplie(const Decimal& a, const Decimal& b) {
  return Fait(Large{a.m_valeur} * b.m_valeur, a.m_decimales + b.m_decimales);
}

std::optional<Decimal> Decimal::Divise(const Decimal& a, const Decimal& b) {
  if (b.EstNul()) return std::nullopt;
  Large dividende = a.m_valeur;
  int decimales = a.m_decimales - b.m_decimales;
  const Large plafond = Puissance(36);
  while (dividende != 0 && dividende < plafond / 10 && dividende > -plafond / 10) {
    dividende *= 10;
    ++decimales;
  }
  Large quotient = DiviseArrondi(dividende, b.m_valeur);
  for (; decimales < 0; ++decimales) {
    if (quotient >= limite || quotient <= -limite) return std::nullopt;
    quotient *= 10;
  }
  return Fait(quotient, decimales);
}

// ------------------------------------------------------------------------ Keys

void Calcul::Appuie(Touche touche) {
  if (m_erreur) {
    const bool recommence = touche <= Touche::Virgule || touche == Touche::C || touche == Touche::CE ||
                            touche == Touche::MR || touche == Touche::MC || touche == Touche::Efface;
    if (!recommence) return;
    m_erreur = false;
    Resultat({});
    m_operateur = m_repete = 0;
    if (touche == Touche::Efface || touche == Touche::CE) return;
  }
  switch (touche) {
    case Touche::Virgule:
      return Chiffre(',');
    case Touche::Signe:
      if (m_saisie.empty()) return Pose(-m_valeur);
      if (m_saisie.front() == '-')
        m_saisie.erase(0, 1);
      else
        m_saisie.insert(0, 1, '-');
      m_valeur = Decimal::Lit(m_saisie).value_or(Decimal());
      return;
    case Touche::Efface:
      if (m_saisie.empty()) return;
      m_saisie.pop_back();
      if (m_saisie.empty() || m_saisie == "-") m_saisie = "0";
      m_valeur = Decimal::Lit(m_saisie).value_or(Decimal());
      return;
    case Touche::CE:
      Pose({});
      return;
    case Touche::C:
      Resultat({});
      m_operateur = m_repete = 0;
      m_droite = false;
      m_fraiche = true;
      return;
    case Touche::Plus:
    case Touche::Moins:
    case Touche::Fois:
    case Touche::Divise:
      return Operateur("+-*/"[static_cast<int>(touche) - static_cast<int>(Touche::Plus)]);
    case Touche::Egal:
      return Egal();
    case Touche::Pourcent:
      return Pourcent();
    case Touche::MPlus:
      return Memorise(1);
    case Touche::MMoins:
      return Memorise(-1);
    case Touche::MR:
      return Pose(m_memoire);
    case Touche::MC:
      m_memoire = {};
      return;
    default:
      return Chiffre(static_cast<char>('0' + static_cast<int>(touche)));
  }
}

void Calcul::Chiffre(char chiffre) {
  if (m_saisie.empty()) m_saisie = "0";
  if (chiffre == ',') {
    if (m_saisie.find(',') != std::string::npos) return;
  } else if (static_cast<unsigned>(std::count_if(m_saisie.begin(), m_saisie.end(), EstChiffre)) >=
             ChiffresMax) {
    return;
  } else if (m_saisie == "0" || m_saisie == "-0") {
    m_saisie.pop_back();
  }
  m_saisie += chiffre;
  m_valeur = Decimal::Lit(m_saisie).value_or(Decimal());
  m_fraiche = true;
  if (m_operateur) m_droite = true;
}

void Calcul::Pose(const Decimal& valeur) {
  m_erreur = false;
  m_saisie.clear();
  m_valeur = valeur;
  m_fraiche = true;
  if (m_operateur) m_droite = true;
}

void Calcul::Convertit(const Decimal& valeur, const std::string& de, const std::string& vers) {
  Note(m_valeur.Texte(), de);
  Pose(valeur);
  Note(m_valeur.Texte(), vers);
  m_fraiche = false;
  m_repete = 0;
}

void Calcul::Echoue() {
  Resultat({});
  m_operateur = m_repete = 0;
  m_droite = false;
  m_erreur = true;
  Note({}, "E");
}

void Calcul::Operateur(char operateur) {
  if (m_operateur && m_droite) {
    const Decimal droite = m_valeur;
    Note(droite.Texte(), TexteSigne(m_operateur));
    if (!Applique(m_gauche, m_operateur, droite)) return;
  } else if (!m_operateur) {
    NotePremier();
  }
  m_gauche = m_valeur;
  m_operateur = operateur;
  m_droite = false;
  m_repete = 0;
  m_saisie.clear();
}

void Calcul::Egal() {
  if (m_operateur) {
    const Decimal droite = m_valeur;
    const char operateur = m_operateur;
    Note(droite.Texte(), TexteSigne(operateur));
    if (!Applique(m_gauche, operateur, droite)) return;
    m_repete = operateur;
    m_repeteValeur = droite;
  } else if (m_repete && !m_fraiche) {
    Note(m_repeteValeur.Texte(), TexteSigne(m_repete));
    if (!Applique(m_valeur, m_repete, m_repeteValeur)) return;
  } else {
    m_repete = 0;
    NotePremier();
    Resultat(m_valeur);
    return;
  }
  m_operateur = 0;
  m_droite = false;
  Note(m_valeur.Texte(), "=");
}

void Calcul::Pourcent() {
  const std::optional<Decimal> centieme = Decimal::Divise(m_valeur, 100);
  if (!centieme) return Echoue();
  if (!m_operateur) {
    Note(m_valeur.Texte(), "%");
    Resultat(*centieme);
    Note(m_valeur.Texte(), "=");
    return;
  }
  const char operateur = m_operateur;
  std::optional<Decimal> droite = centieme;
  if (operateur == '+' || operateur == '-') droite = Decimal::Multiplie(m_gauche, *centieme);
  if (!droite) return Echoue();
  Note(m_valeur.Texte(), "% " + TexteSigne(operateur));
  if (!Applique(m_gauche, operateur, *droite)) return;
  m_operateur = m_repete = 0;
  m_droite = false;
  Note(m_valeur.Texte(), "=");
}

void Calcul::Memorise(int signe) {
  if (m_operateur && m_droite) {
    Egal();
    if (m_erreur) return;
  }
  const std::optional<Decimal> somme =
      signe > 0 ? Decimal::Ajoute(m_memoire, m_valeur) : Decimal::Retire(m_memoire, m_valeur);
  if (!somme) return Echoue();
  m_memoire = *somme;
  Note(m_valeur.Texte(), signe > 0 ? "M+" : "M-");
  Resultat(m_valeur);
}

bool Calcul::Applique(const Decimal& gauche, char operateur, const Decimal& droite) {
  const std::optional<Decimal> resultat = operateur == '+'   ? Decimal::Ajoute(gauche, droite)
                                          : operateur == '-' ? Decimal::Retire(gauche, droite)
                                          : operateur == '*' ? Decimal::Multiplie(gauche, droite)
                                                             : Decimal::Divise(gauche, droite);
  static const Decimal plafond(1000000000000000);  // 10^15
  const bool tient = resultat && std::fabs(resultat->Montant()) < plafond.Montant();
  if (!tient) {
    Echoue();
    return false;
  }
  Resultat(*resultat);
  return true;
}

void Calcul::Resultat(const Decimal& valeur) {
  m_valeur = valeur;
  m_saisie.clear();
  m_fraiche = false;
}

void Calcul::Note(const std::string& nombre, const std::string& signe) {
  m_bande.push_back({nombre, signe});
  if (m_bande.size() > lignesBande) m_bande.erase(m_bande.begin());
}

void Calcul::NotePremier() {
  if (m_fraiche) Note(m_valeur.Texte(), {});
}

std::string Calcul::Affichage() const {
  if (m_erreur) return {};
  return m_saisie.empty() ? m_valeur.Texte() : m_saisie;
}

std::string Calcul::Operation() const { return TexteSigne(m_operateur); }

bool Calcul::EstVide() const {
  return !m_erreur && m_operateur == 0 && m_valeur.EstNul() && (m_saisie.empty() || m_saisie == "0");
}

}  // namespace fenlor
