#include "core/valeurs.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::string_view symboleEuro = "\x80";
constexpr std::size_t tailleMontantMax = 80;
constexpr std::string_view blancs = " \xA0\t\r\n";

bool EstChiffre(char c) { return c >= '0' && c <= '9'; }
bool EstEspace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool EstAlphanumerique(char c) { return EstChiffre(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

i32 LitEntier(std::string_view texte) {
  std::size_t i = 0;
  while (i < texte.size() && EstEspace(texte[i])) ++i;
  const bool negatif = i < texte.size() && texte[i] == '-';
  if (i < texte.size() && (texte[i] == '-' || texte[i] == '+')) ++i;
  constexpr i64 borne = i64{std::numeric_limits<i32>::max()} + 1;
  i64 valeur = 0;
  for (; i < texte.size() && EstChiffre(texte[i]); ++i)
    valeur = std::min(borne, valeur * 10 + (texte[i] - '0'));
  if (negatif) return static_cast<i32>(-valeur);
  return static_cast<i32>(std::min(valeur, borne - 1));
}

/// "%.*f" whatever the locale.
std::string Decimal(f64 valeur, int decimales) {
  const int precision = std::max(decimales, 0);
  std::string texte(static_cast<std::size_t>(std::numeric_limits<f64>::max_exponent10 + 8 + precision), '\0');
  const auto fin =
      std::to_chars(texte.data(), texte.data() + texte.size(), valeur, std::chars_format::fixed, precision);
  assert(fin.ec == std::errc());  // room for the largest number
  texte.resize(static_cast<std::size_t>(fin.ptr - texte.data()));
  return texte;
}

/// The platform's number format: the value written with six decimals, those
/// digits rounded to two, halves away from zero, so that 2.675 gives "2,68".
std::string DeuxDecimales(f64 valeur) {
  if (!std::isfinite(valeur)) return Decimal(valeur, 2);
  // The six decimals are those of the exact product: where the computed one, which misses it by less than
  // an eighth, is not near a half, both round to the same whole number.
  constexpr f64 exacts = 1125899906842624;  // 2 to the 50th
  const f64 millioniemes = std::fabs(valeur) * 1e6, entiers = std::nearbyint(millioniemes);
  if (millioniemes < exacts && std::fabs(millioniemes - entiers) < 0.25) {
    const u64 centimes = (static_cast<u64>(entiers) + 5000) / 10000;
    char texte[24];
    char* place = texte;
    if (valeur < 0 && centimes > 0) *place++ = '-';
    place = std::to_chars(place, texte + sizeof texte, centimes / 100).ptr;
    *place++ = ',';
    *place++ = static_cast<char>('0' + centimes / 10 % 10);
    *place++ = static_cast<char>('0' + centimes % 10);
    return std::string(texte, place);
  }
  std::string texte = Decimal(std::fabs(valeur), 6);
  assert(texte.size() >= 8 && texte[texte.size() - 7] == '.');
  const bool monte = texte[texte.size() - 4] >= '5';
  texte.resize(texte.size() - 4);
  if (monte) {
    auto chiffre = texte.rbegin();
    for (; chiffre != texte.rend(); ++chiffre) {
      if (*chiffre == '.') continue;
      if (*chiffre != '9') break;
      *chiffre = '0';
    }
    if (chiffre == texte.rend())
      texte.insert(0, 1, '1');
    else
      ++*chiffre;
  }
  assert(texte[texte.size() - 3] == '.');
  texte[texte.size() - 3] = ',';
  const bool nul = texte.find_first_not_of("0,") == std::string::npos;
  return valeur < 0 && !nul ? "-" + texte : texte;
}

std::string FormatMonnaie(f64 valeur, std::string_view symbole) {
  if (valeur == 0) return {};
  return DeuxDecimales(valeur).append(" ").append(symbole);
}

std::string PoseSeparateur(std::string texte, char separateur) {
  std::replace(texte.begin(), texte.end(), '.', separateur);
  return texte;
}

/// The text without blanks around it and without the currency behind it.
std::string SansMonnaie(std::string_view texte) {
  const auto rogne = [&texte] {
    texte.remove_prefix(std::min(texte.find_first_not_of(blancs), texte.size()));
    texte.remove_suffix(texte.size() - (texte.find_last_not_of(blancs) + 1));
  };
  rogne();
  if (texte.ends_with(symboleEuro) || texte.ends_with('F')) texte.remove_suffix(1);
  rogne();
  return std::string(texte);
}

/// Takes the marks between groups of three digits out; false when what stands there is no such number. Empty
/// is one.
bool OteGroupes(std::string& entiers, std::string_view separateurs) {
  const std::size_t marque = entiers.find_first_not_of("0123456789");
  if (marque == std::string::npos) return true;
  const char signe = entiers[marque];
  constexpr std::size_t groupe = 3;
  const bool connue = separateurs.find(signe) != std::string_view::npos || signe == ' ' || signe == '\xA0';
  if (!connue || marque == 0 || marque > groupe) return false;
  std::string chiffres = entiers.substr(0, marque);
  for (std::size_t i = marque; i < entiers.size(); i += groupe + 1) {
    const std::string suite = entiers.substr(i + 1, groupe);
    if (entiers[i] != signe || suite.size() != groupe || !std::all_of(suite.begin(), suite.end(), EstChiffre))
      return false;
    chiffres += suite;
  }
  assert(chiffres.size() < entiers.size());
  entiers = chiffres;
  return true;
}

}  // namespace

bool EstVide(std::string_view texte) {
  return std::none_of(texte.begin(), texte.end(), [](char c) { return static_cast<signed char>(c) > 32; });
}

std::string CompacteTexte(std::string_view texte) {
  std::string resultat;
  resultat.reserve(texte.size());
  for (char c : texte) {
    if (c != ' ' && c != '\t')
      resultat += c;
    else if (!resultat.empty() && resultat.back() != ' ')
      resultat += ' ';
  }
  if (!resultat.empty() && resultat.back() == ' ') resultat.pop_back();
  assert(resultat.size() <= texte.size());
  return resultat;
}

std::string ChampTexte(unsigned n, std::string_view texte, char separateur) {
  for (; n > 0; --n) {
    const std::size_t place = texte.find(separateur);
    if (place == std::string_view::npos) return {};
    texte.remove_prefix(place + 1);
  }
  return CompacteTexte(texte.substr(0, texte.find(separateur)));
}

unsigned ComptePartie(std::string_view texte, char separateur) {
  if (texte.empty()) return 0;
  return static_cast<unsigned>(std::count(texte.begin(), texte.end(), separateur)) + 1;
}

std::string DecodeRetours(std::string_view texte) {
  std::string resultat;
  resultat.reserve(texte.size());
  for (std::size_t i = 0; i < texte.size(); ++i) {
    if (texte.substr(i, 2) == "\\n") {
      resultat += "\r\n";
      ++i;
    } else {
      resultat += texte[i];
    }
  }
  return resultat;
}

std::string EncodeRetours(std::string_view texte) {
  std::string resultat;
  resultat.reserve(texte.size());
  for (std::size_t i = 0; i < texte.size(); ++i) {
    if (texte.substr(i, 2) == "\r\n") {
      resultat += "\\n";
      ++i;
    } else {
      resultat += texte[i];
    }
  }
  return resultat;
}

int TexteVersEntier(std::string_view texte) { return LitEntier(texte); }
i32 TexteVersLong(std::string_view texte) { return LitEntier(texte); }
std::string EntierVersTexte(int valeur) { return valeur == 0 ? std::string() : std::to_string(valeur); }

f64 Arrondi(f64 valeur, int decimales) {
  constexpr f64 puissances[] = {1, 10, 100, 1000, 10000, 100000};
  const f64 p = puissances[std::clamp(decimales, 0, 5)];
  return std::floor(valeur * p + 0.5) / p;
}

f64 Arrondi2(f64 valeur) { return Arrondi(valeur, 2); }

f64 MontantHT(f64 montant, f64 taux, bool tva) {
  return tva && taux > 0 ? Arrondi2(montant / (taux * 0.01 + 1.0)) : Arrondi2(montant);
}

int CompareMontants(f64 a, f64 b) {
  if (a == b) return 0;
  return a >= b ? 1 : -1;
}

int CompareComptes(const std::string& a, const std::string& b) {
  const int ordre = QVAPI::GetLongCompte(a).compare(QVAPI::GetLongCompte(b));
  return ordre == 0 ? 0 : ordre > 0 ? 1 : -1;
}

f64 TexteVersMontant(std::string_view texte, char separateur) {
  if (texte.size() > tailleMontantMax) return 0;
  std::string copie(texte);
  if (const std::size_t place = copie.find(separateur); place != std::string::npos) copie[place] = '.';

  std::size_t debut = 0;
  while (debut < copie.size() && EstEspace(copie[debut])) ++debut;
  const bool negatif = debut < copie.size() && copie[debut] == '-';
  if (debut < copie.size() && (copie[debut] == '-' || copie[debut] == '+')) ++debut;
  if (debut >= copie.size() || (!EstChiffre(copie[debut]) && copie[debut] != '.')) return 0;

  f64 valeur = 0;
  const auto lu = std::from_chars(copie.data() + debut, copie.data() + copie.size(), valeur);
  if (lu.ec != std::errc()) return 0;
  return negatif ? -valeur : valeur;
}

std::optional<std::string> NormeMontant(std::string_view texte, char separateur) {
  if (texte.size() > tailleMontantMax) return std::nullopt;
  std::string signe, corps = SansMonnaie(texte);
  if (corps.empty())
    return texte.find_first_not_of(blancs) == std::string_view::npos ? std::optional<std::string>{""}
                                                                     : std::nullopt;
  if (corps[0] == '-' || corps[0] == '+') {
    if (corps[0] == '-') signe = "-";
    corps.erase(0, corps.find_first_not_of(blancs, 1));
  }
  const std::string virgules = std::string(".,") + separateur;
  std::size_t virgule = corps.find_last_of(virgules);
  if (virgule != std::string::npos && std::count(corps.begin(), corps.end(), corps[virgule]) > 1)
    virgule = std::string::npos;  // several alike
  const std::string decimales = virgule == std::string::npos ? "" : corps.substr(virgule + 1);
  std::string entiers = corps.substr(0, virgule);
  if (!OteGroupes(entiers, virgules) || !std::all_of(decimales.begin(), decimales.end(), EstChiffre) ||
      entiers.size() + decimales.size() == 0)
    return std::nullopt;
  assert(entiers.find_first_not_of("0123456789") == std::string::npos);
  return signe + entiers + (decimales.empty() ? "" : "." + decimales);
}

std::string FormatMontant(f64 valeur, int decimales, char separateur) {
  return valeur == 0 ? std::string() : PoseSeparateur(Decimal(valeur, decimales), separateur);
}

std::string FormatMontantEuro(f64 valeur, int decimales, char separateur) {
  if (valeur == 0) return {};
  return FormatMontant(valeur, decimales, separateur).append(" ").append(symboleEuro);
}

std::string FormatSaisie(f64 valeur, int decimales, bool zeroDansBoite, char separateur) {
  return valeur == 0 && zeroDansBoite ? "0.00" : FormatMontant(valeur, decimales, separateur);
}

std::string FormatSoldeSaisie(f64 valeur, int decimales, bool zeroDansBoite, char separateur) {
  if (valeur < 0) return "D " + FormatSaisie(-valeur, decimales, zeroDansBoite, separateur);
  return FormatSaisie(valeur, decimales, zeroDansBoite, separateur);
}

std::string FormatFranc(f64 valeur) { return FormatMonnaie(valeur, "F"); }
std::string FormatEuro(f64 valeur) { return FormatMonnaie(valeur, symboleEuro); }

std::string FormatSoldeFranc(f64 valeur) {
  return valeur < 0 ? "D " + FormatFranc(-valeur) : FormatFranc(valeur);
}

std::string FormatSoldeEuro(f64 valeur) {
  return valeur < 0 ? "D " + FormatEuro(-valeur) : FormatEuro(valeur);
}

std::string NormaliseRubrique(std::string_view texte) {
  if (EstVide(texte)) return {};
  std::string code(3, ' ');
  for (std::size_t i = 0; i < std::min<std::size_t>(3, texte.size()); ++i)
    if (EstAlphanumerique(texte[i])) code[i] = Majuscule(texte[i]);
  return code;
}

std::string TermeSuivant(std::string_view formule, std::string& terme, char& signe) {
  std::string reste(formule);
  std::erase(reste, ' ');
  const bool ecrit = !reste.empty() && (reste[0] == '+' || reste[0] == '-');
  signe = ecrit ? reste[0] : '+';
  if (ecrit) reste.erase(0, 1);
  const std::size_t fin = std::min(reste.find_first_of("+-"), reste.size());
  assert(fin > 0 || reste.empty() || ecrit);  // each call takes something away
  terme = reste.substr(0, fin);
  return reste.substr(fin);
}

int Jours360(Date du, Date au) {
  const auto plafonnee = [](Date date) {
    return FaitDate(std::min(Jour(date), 30u), Mois(date), Annee(date));
  };
  du = plafonnee(du);
  au = plafonnee(au);
  const int mois = (static_cast<int>(Mois(au)) - static_cast<int>(Mois(du))) * 30;
  const int jours = static_cast<int>(Jour(au)) - static_cast<int>(Jour(du));
  return au >= du ? mois + jours + 1 : -mois - jours;
}

int MoisEntre(Date du, Date au) { return static_cast<int>(Mois(au)) - static_cast<int>(Mois(du)) + 1; }

std::string PolicePartie(std::string_view texte, unsigned n) { return ChampTexte(n, texte, ','); }

Police LitPolice(std::string_view texte, bool couleurSysteme) {
  const auto coche = [&](unsigned n) { return PolicePartie(texte, n) == "1"; };
  Police police;
  police.face = PolicePartie(texte, 0);
  if (EstVide(police.face)) police.face = "Helv";
  if (const int taille = TexteVersEntier(PolicePartie(texte, 1)); taille != 0) police.taille = taille;
  const std::string couleur = PolicePartie(texte, 2);
  if (!couleurSysteme && !EstVide(couleur)) police.couleur = TexteVersLong(couleur);
  police.gras = coche(3);
  police.italique = coche(4);
  police.souligne = coche(5);
  police.barre = coche(6);
  return police;
}

f64 TarifKm(f64 km, std::string_view borneInf, std::string_view borneSup, std::string_view fixe,
            std::string_view coefInf, std::string_view coefMilieu, std::string_view coefSup,
            char separateur) {
  const auto nombre = [separateur](std::string_view texte) { return TexteVersMontant(texte, separateur); };
  if (nombre(borneInf) >= km) return nombre(coefInf) * km;
  if (nombre(borneSup) >= km) return nombre(coefMilieu) * km + std::trunc(nombre(fixe));
  return nombre(coefSup) * km;
}

}  // namespace fenlor
