#include "banque/relevetexte.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "banque/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr char32_t Malforme = 0xFFFFFFFF;

/// The character at `place`, which moves behind it; a malformed one takes a single byte.
char32_t Suivant(std::string_view octets, std::size_t& place) {
  assert(place < octets.size());
  char32_t c = 0;
  const unsigned longueur = LitPoint(octets, place, c);
  place += std::max(longueur, 1u);
  return longueur ? c : Malforme;
}

void AjouteUtf8(std::string& texte, char32_t c) {
  assert(c <= 0x10FFFF && (c < 0xD800 || c >= 0xE000));
  const auto pose = [&](char32_t octet) { texte.push_back(static_cast<char>(octet)); };
  if (c < 0x80) return pose(c);
  if (c < 0x800) {
    pose(0xC0 | c >> 6);
  } else if (c < 0x10000) {
    pose(0xE0 | c >> 12);
    pose(0x80 | (c >> 6 & 0x3F));
  } else {
    pose(0xF0 | c >> 18);
    pose(0x80 | (c >> 12 & 0x3F));
    pose(0x80 | (c >> 6 & 0x3F));
  }
  pose(0x80 | (c & 0x3F));
}

bool ToutUtf8(std::string_view octets) {
  for (std::size_t place = LongueurAscii(octets); place < octets.size();
       place += LongueurAscii(octets.substr(place)))
    if (Suivant(octets, place) == Malforme) return false;
  return true;
}

/// UTF-16 without a mark has its zeroes on one side.
bool Zeroes(std::string_view octets, std::size_t cote) {
  assert(cote <= 1);
  const std::size_t n = std::min<std::size_t>(octets.size(), 512) & ~std::size_t{1};
  std::size_t nuls = 0, autres = 0;
  for (std::size_t i = 0; i < n; i += 2) {
    nuls += octets[i + cote] == 0;
    autres += octets[i + 1 - cote] == 0;
  }
  return n >= 4 && autres == 0 && nuls * 10 >= n / 2 * 7;
}

std::string DepuisUtf16(std::string_view octets) {
  const bool grand = octets.starts_with("\xFE\xFF") || (!octets.starts_with("\xFF\xFE") && Zeroes(octets, 0));
  std::string texte;
  texte.reserve(octets.size() / 2);
  char32_t haut = 0;
  for (std::size_t i = 0; i + 1 < octets.size(); i += 2) {
    const auto a = static_cast<unsigned char>(octets[i]), b = static_cast<unsigned char>(octets[i + 1]);
    const char32_t c = static_cast<char32_t>(grand ? a << 8 | b : b << 8 | a);
    const bool bas = c >= 0xDC00 && c < 0xE000;
    if (haut && !bas) texte.push_back('?');
    if (bas && haut)
      AjouteUtf8(texte, 0x10000 + (haut - 0xD800) * 0x400 + (c - 0xDC00));
    else if (bas)
      texte.push_back('?');
    else if ((c < 0xD800 || c >= 0xE000) && c != 0xFEFF)
      AjouteUtf8(texte, c);
    haut = c >= 0xD800 && c < 0xDC00 ? c : 0;
  }
  if (haut || octets.size() % 2) texte.push_back('?');
  return texte;
}

char Simple(char32_t c) {
  if (c == 0xA0 || c == 0x202F || c == 0x3000 || (c >= 0x2000 && c <= 0x200A)) return ' ';
  if (c == 0x2212 || c == 0x2010 || c == 0x2011) return '-';
  return 0;
}

bool Blanc(char c) { return c == ' ' || c == '\t' || c == '\xA0'; }
bool Chiffre(char c) { return c >= '0' && c <= '9'; }

std::string_view SansBlancs(std::string_view texte) {
  while (!texte.empty() && Blanc(texte.front())) texte.remove_prefix(1);
  while (!texte.empty() && Blanc(texte.back())) texte.remove_suffix(1);
  return texte;
}

/// Takes the sign at one end of the number; false: a second one.
bool PrendSigne(std::string_view& texte, int& signe) {
  for (const bool devant : {true, false}) {
    if (texte.empty()) return false;
    const char c = devant ? texte.front() : texte.back();
    if (c != '-' && c != '+') continue;
    if (signe != 0) return false;
    signe = c == '-' ? -1 : 1;
    devant ? texte.remove_prefix(1) : texte.remove_suffix(1);
    texte = SansBlancs(texte);
  }
  return !texte.empty();
}

void OteMonnaie(std::string_view& texte) {
  for (const std::string_view monnaie : {"EUR", "FRF", "\x80", "F"}) {
    if (texte.ends_with(monnaie)) texte.remove_suffix(monnaie.size());
    if (texte.starts_with(monnaie)) texte.remove_prefix(monnaie.size());
  }
  texte = SansBlancs(texte);
}

bool OteParentheses(std::string_view& texte) {
  if (texte.size() < 2 || texte.front() != '(' || texte.back() != ')') return false;
  texte = SansBlancs(texte.substr(1, texte.size() - 2));
  return true;
}

/// Whether the sign at `place` may end the whole part and may as well set a group of thousands apart.
bool DeuxSens(std::string_view texte, std::size_t place) {
  assert(place < texte.size());
  const std::string_view devant = texte.substr(0, place);
  const bool groupe = !devant.empty() && devant.find_first_not_of("0123456789") == std::string_view::npos &&
                      devant.size() <= 3 && devant.find_first_not_of('0') != std::string_view::npos;
  return groupe && texte.size() - place == 4;
}

std::size_t PlaceDecimale(std::string_view texte, char decimale) {
  const std::size_t place = texte.find_last_of(decimale ? std::string{decimale} : std::string(".,"));
  if (place == std::string_view::npos || decimale) return place;
  const bool seul = texte.find(texte[place]) == place;
  return seul ? place : std::string_view::npos;
}

/// None of the ids by which banks say that they have none.
bool Identifie(const std::string& id) {
  const std::string nu = LibelleNu(id);
  for (const std::string_view sans : {"NOTPROVIDED", "NONREF", "NOREF", "NONE", "NA"})
    if (nu == sans) return false;
  return nu.find_first_not_of('0') != std::string::npos;
}

}  // namespace

JeuTexte DevineJeu(std::string_view octets) {
  if (octets.starts_with("\xFF\xFE") || octets.starts_with("\xFE\xFF") || Zeroes(octets, 0) ||
      Zeroes(octets, 1))
    return JeuTexte::Utf16;
  return ToutUtf8(octets) ? JeuTexte::Utf8 : JeuTexte::Windows1252;
}

std::string EnUtf8(std::string_view octets, JeuTexte jeu) {
  if (jeu == JeuTexte::Utf16) return DepuisUtf16(octets);
  if (jeu == JeuTexte::Windows1252) return VersUtf8(octets);
  if (octets.starts_with("\xEF\xBB\xBF")) octets.remove_prefix(3);
  if (ToutUtf8(octets)) return std::string(octets);
  std::string texte;
  for (std::size_t place = 0; place < octets.size();) {
    const char32_t c = Suivant(octets, place);
    AjouteUtf8(texte, c == Malforme ? U'?' : c);
  }
  return texte;
}

std::string EnWindows1252(std::string_view utf8) {
  std::string texte;
  texte.reserve(utf8.size());
  for (std::size_t place = 0; place < utf8.size();) {
    const std::size_t debut = place, ascii = LongueurAscii(utf8.substr(place));
    if (ascii > 0) {
      texte.append(utf8.substr(debut, ascii));
      place += ascii;
      continue;
    }
    const char32_t c = Suivant(utf8, place);
    if (const char simple = Simple(c)) {
      texte.push_back(simple);
    } else {
      const auto octet = c == Malforme ? std::nullopt : DepuisUtf8(utf8.substr(debut, place - debut));
      const bool visible = octet && octet->size() == 1 && !(c >= 0x80 && c < 0xA0);
      texte += visible ? *octet : "?";
    }
  }
  return texte;
}

bool LigneSuivante(std::string_view& texte, std::string_view& ligne) {
  if (texte.empty()) return false;
  const std::size_t fin = std::min(texte.find_first_of("\r\n"), texte.size());
  ligne = texte.substr(0, fin);
  texte.remove_prefix(fin);
  if (!texte.empty()) texte.remove_prefix(texte.starts_with("\r\n") ? 2 : 1);
  return true;
}

std::optional<i64> LitCentimes(std::string_view texte, char decimale) {
  texte = SansBlancs(texte);
  if (texte.size() > 40) return {};
  int signe = OteParentheses(texte) ? -1 : 0;
  OteMonnaie(texte);
  if (!PrendSigne(texte, signe)) return {};
  OteMonnaie(texte);
  const std::size_t place = PlaceDecimale(texte, decimale);
  if (decimale == 0 && place != std::string_view::npos && DeuxSens(texte, place)) return {};
  const std::string_view entiers = texte.substr(0, place);
  std::string_view decimales = place == std::string_view::npos ? std::string_view() : texte.substr(place + 1);
  i64 valeur = 0;
  unsigned chiffres = 0, groupe = 0;
  bool groupes = false;
  for (const char c : entiers) {
    if (Chiffre(c)) {
      valeur = valeur * 10 + (c - '0');
      ++groupe;
      if (++chiffres > 15) return {};
      continue;
    }
    const bool separe = Blanc(c) || c == '\'' || ((c == '.' || c == ',') && c != decimale);
    if (!separe || (groupes ? groupe != 3 : groupe == 0 || groupe > 3)) return {};
    groupes = true;
    groupe = 0;
  }
  if (groupes && groupe != 3) return {};
  while (decimales.size() > 2 && decimales.back() == '0') decimales.remove_suffix(1);
  if (decimales.size() > 2 || !std::all_of(decimales.begin(), decimales.end(), Chiffre)) return {};
  if (chiffres == 0 && decimales.empty()) return {};
  for (std::size_t i = 0; i < 2; ++i) valeur = valeur * 10 + (i < decimales.size() ? decimales[i] - '0' : 0);
  assert(chiffres <= 15);
  assert(valeur >= 0);
  return signe < 0 ? -valeur : valeur;
}

char DecimaleDes(const std::vector<std::string>& montants) {
  bool virgule = false, point = false;
  for (const std::string& montant : montants) {
    // Another sign than this one cannot be the decimal one of an amount that can be read.
    const bool parVirgule = LitCentimes(montant, ',').has_value(),
               parPoint = LitCentimes(montant, '.').has_value();
    virgule = virgule || (parVirgule && !parPoint && montant.find(',') != std::string::npos);
    point = point || (parPoint && !parVirgule && montant.find('.') != std::string::npos);
  }
  return virgule == point ? '\0' : virgule ? ',' : '.';
}

OrdreDate OrdreDes(const std::vector<std::string>& jours) {
  constexpr std::size_t ordres = 3;
  std::size_t lus[ordres] = {};
  for (const std::string& jour : jours) {
    for (std::size_t o = 0; o < ordres; ++o) {
      const auto ordre = static_cast<OrdreDate>(o);
      // No bank puts a year of two digits in front: "31/02/03" is a wrong day.
      if (ordre == OrdreDate::AnneeMoisJour &&
          std::min(jour.find_first_not_of("0123456789"), jour.size()) < 4)
        continue;
      lus[o] += LitJour(jour, ordre) != 0;
    }
  }
  return static_cast<OrdreDate>(std::max_element(lus, lus + ordres) - lus);
}

Date LitJour(std::string_view texte, OrdreDate ordre) {
  texte = SansBlancs(texte);
  texte = texte.substr(0, texte.find_first_of(" T"));
  unsigned parties[3] = {}, longueurs[3] = {};
  std::size_t n = 0;
  const bool colles =
      (texte.size() == 8 || texte.size() == 6) && std::all_of(texte.begin(), texte.end(), Chiffre);
  const bool anneeDevant = ordre == OrdreDate::AnneeMoisJour;
  for (std::size_t i = 0; i < texte.size(); ++i) {
    if (!Chiffre(texte[i])) {
      if (texte[i] != '/' && texte[i] != '-' && texte[i] != '.' && texte[i] != '\'') return 0;
      if (longueurs[n] == 0 || ++n > 2) return 0;
      continue;
    }
    if (colles) {
      const std::size_t annee = texte.size() - 4;
      n = anneeDevant ? (i < annee ? 0 : 1 + (i - annee) / 2) : std::min<std::size_t>(i / 2, 2);
    }
    parties[n] = parties[n] * 10 + static_cast<unsigned>(texte[i] - '0');
    if (++longueurs[n] > 4) return 0;
  }
  if (n != 2 || longueurs[2] == 0) return 0;
  const std::size_t a = anneeDevant ? 0 : 2;
  const unsigned jour = parties[anneeDevant ? 2 : ordre == OrdreDate::MoisJourAnnee ? 1 : 0];
  const unsigned mois = parties[ordre == OrdreDate::MoisJourAnnee ? 0 : 1];
  unsigned annee = parties[a];
  if (longueurs[a] == 2) annee += annee < 70 ? 2000 : 1900;
  if (annee < 1970 || annee > 2099 || mois > 12 || jour > 31) return 0;
  const Date date = FaitDate(jour, mois, annee);
  return IsDateOk(date) ? date : 0;
}

std::string LibelleNet(std::string_view texte) {
  std::array<char, 80> net;
  std::size_t n = 0;
  for (char c : texte) {
    if (static_cast<unsigned char>(c) < 32 || c == 127 || c == '\xA0') c = ' ';
    if (c == ' ' && (n == 0 || net[n - 1] == ' ')) continue;
    net[n++] = c;
    if (n == net.size()) break;
  }
  while (n > 0 && net[n - 1] == ' ') --n;
  return {net.data(), n};
}

std::string LibelleNu(std::string_view texte) {
  const bool ascii = LongueurAscii(texte) == texte.size();
  const std::string lettres = ascii ? std::string() : CleAlphabetique(texte);
  const std::string_view source = ascii ? texte : std::string_view(lettres);
  std::string nu(source.size(), 0);
  std::size_t n = 0;
  for (const char c : source) {
    if (c == 0) break;
    if ((c >= 'A' && c <= 'Z') || Chiffre(c))
      nu[n++] = c;
    else if (c >= 'a' && c <= 'z')
      nu[n++] = static_cast<char>(c - 'a' + 'A');
  }
  nu.resize(n);
  return nu;
}

std::string LibelleDe(std::initializer_list<std::string_view> parties) {
  std::string libelle;
  for (const std::string_view partie : parties) {
    const std::string net = LibelleNet(partie);
    if (libelle.empty() || net.empty()) {
      libelle += net;
      continue;
    }
    const std::string nu = LibelleNu(net), deja = LibelleNu(libelle);
    if (!nu.empty() && deja.starts_with(nu)) continue;
    // A part that says the one before whole, and more, takes its place: a name that was cut.
    if (!deja.empty() && nu.starts_with(deja))
      libelle = net;
    else
      libelle += " " + net;
  }
  return LibelleNet(libelle);
}

void AjouteOperation(LectureReleve& lecture, Releve& releve, OperationBanque operation, i64 centimes) {
  assert(IsDateOk(operation.date));
  // Far enough from what the books hold that the other currency has its place, too.
  constexpr i64 centimesMax = static_cast<i64>(MontantMax) * 10;
  if (centimes == 0) return lecture.Plainte(operation.rang, PlainteMontantNul);
  if (centimes > centimesMax || centimes < -centimesMax)
    return lecture.Plainte(operation.rang, PlainteMontant, {std::to_string(centimes / 100)});
  operation.sens = centimes > 0;
  operation.centimes = centimes > 0 ? centimes : -centimes;
  assert(operation.centimes > 0);
  operation.libelle = LibelleNet(operation.libelle);
  if (!Identifie(operation.id)) operation.id.clear();
  releve.operations.push_back(std::move(operation));
  ++lecture.operations;
}

}  // namespace fenlor
