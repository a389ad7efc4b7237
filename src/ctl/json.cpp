#include "ctl/json.h"

#include <cassert>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/erreurssaisie.h"
#include "ctl/textes.h"
#include "journal/textes.h"
#include "session/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

bool EstBlanche(const std::string& ligne) { return ligne.find_first_not_of(" \t\r") == std::string::npos; }

/// Offset of the first byte that is not UTF-8; npos when all is well.
std::size_t FauteUtf8(std::string_view texte) {
  std::size_t i = 0;
  while (i < texte.size()) {
    const auto c = static_cast<unsigned char>(texte[i]);
    if (c < 0x80) {
      ++i;
      continue;
    }
    const std::size_t suite = c >= 0xC2 && c <= 0xDF   ? 1
                              : c >= 0xE0 && c <= 0xEF ? 2
                              : c >= 0xF0 && c <= 0xF4 ? 3
                                                       : 0;
    if (suite == 0 || texte.size() - i <= suite) return i;
    for (std::size_t k = 1; k <= suite; ++k) {
      const auto d = static_cast<unsigned char>(texte[i + k]);
      unsigned char bas = 0x80, haut = 0xBF;
      if (k == 1) {
        if (c == 0xE0) bas = 0xA0;
        if (c == 0xED) haut = 0x9F;
        if (c == 0xF0) bas = 0x90;
        if (c == 0xF4) haut = 0x8F;
      }
      if (d < bas || d > haut) return i;
    }
    i += suite + 1;
  }
  return std::string_view::npos;
}

/// Deepest nesting of brackets outside texts.
unsigned Profondeur(std::string_view texte) {
  unsigned profondeur = 0, maximum = 0;
  bool dansTexte = false;
  for (std::size_t i = 0; i < texte.size(); ++i) {
    const char c = texte[i];
    if (dansTexte) {
      if (c == '\\')
        ++i;
      else if (c == '"')
        dansTexte = false;
    } else if (c == '"') {
      dansTexte = true;
    } else if (c == '{' || c == '[') {
      maximum = std::max(maximum, ++profondeur);
    } else if ((c == '}' || c == ']') && profondeur > 0) {
      --profondeur;
    }
  }
  return maximum;
}

Refus Illisible(u32 numero, const std::string& raison) {
  return Refus(ErrLigneIllisible, "", {std::to_string(numero), raison});
}

Refus RefusLigneTropLongue(u32 numero) {
  return Illisible(numero, "plus de "_w + std::to_string(TailleLigneMax) + " octets."_w);
}

}  // namespace

Refus RefusChamp(const std::string& nom, const std::string& raison) {
  return Refus(ErrChampInvalide, "", {nom, raison});
}

namespace raison {

std::string TexteAttendu() { return "un texte est attendu."_w; }
std::string NombreAttendu() { return "un nombre est attendu."_w; }
std::string EntierAttendu(i64 minimum, i64 maximum) {
  return "un entier de "_w + std::to_string(minimum) + " à "_w + std::to_string(maximum) + " est attendu."_w;
}
std::string CaractereImpossible() { return "un caractère ne peut pas être enregistré (Windows-1252)."_w; }

}  // namespace raison

std::optional<i64> EntierJson(const Json& valeur, i64 minimum, i64 maximum) {
  assert(minimum <= maximum);
  if (!valeur.is_number_integer()) return std::nullopt;
  if (valeur.is_number_unsigned() && valeur.get<u64>() > u64{std::numeric_limits<i64>::max()})
    return std::nullopt;
  const i64 entier = valeur.get<i64>();
  if (entier < minimum || entier > maximum) return std::nullopt;
  return entier;
}

LecteurLignes::LecteurLignes(std::istream& entree, const std::string& source)
    : m_entree(source == "-" ? entree : m_fichier) {
  if (source != "-") m_fichier.open(source, std::ios::binary);
}

bool LecteurLignes::Suivante(Json& objet, Refus& refus) {
  std::string ligne;
  bool tropLongue = false;
  if (!Suivante(ligne, tropLongue)) return false;
  refus = tropLongue ? RefusLigneTropLongue(m_numero) : LitObjet(ligne, m_numero, objet);
  return true;
}

bool LecteurLignes::Suivante(std::string& ligne, bool& tropLongue) {
  constexpr int fin = std::char_traits<char>::eof();
  std::streambuf* tampon = m_entree.rdbuf();
  for (;;) {
    ligne.clear();
    tropLongue = false;
    bool lu = false;
    int c = fin;
    errno = 0;
    try {
      while ((c = tampon->sbumpc()) != fin) {
        lu = true;
        if (c == '\n') break;
        if (ligne.size() < TailleLigneMax)
          ligne.push_back(static_cast<char>(c));
        else
          tropLongue = true;
      }
    } catch (const std::exception&) {
      m_erreur = errno != 0 ? errno : EIO;
      return false;
    }
    if (!lu) return false;
    ++m_numero;
    if (!ligne.empty() && ligne.back() == '\r') ligne.pop_back();
    if (tropLongue || !EstBlanche(ligne)) return true;
    if (c == fin) return false;
  }
}

Refus LitObjet(const std::string& ligne, u32 numero, Json& objet) {
  // The parser would take a NUL for the end of the line.
  if (const std::size_t nul = ligne.find('\0'); nul != std::string::npos)
    return Illisible(numero, "le texte JSON est incorrect au caractère "_w + std::to_string(nul + 1) + "."_w);
  const std::size_t faute = FauteUtf8(ligne);
  if (faute != std::string_view::npos)
    return Illisible(numero, "l'octet "_w + std::to_string(faute + 1) + " n'est pas de l'UTF-8."_w);
  if (Profondeur(ligne) > ProfondeurMax)
    return Illisible(numero, "plus de "_w + std::to_string(ProfondeurMax) + " niveaux imbriqués."_w);
  try {
    objet = Json::parse(ligne);
  } catch (const Json::parse_error& e) {
    return Illisible(numero, "le texte JSON est incorrect au caractère "_w + std::to_string(e.byte) + "."_w);
  } catch (const Json::exception&) {
    return Illisible(numero, "un nombre dépasse les limites."_w);
  }
  if (!objet.is_object()) return Illisible(numero, "un objet JSON est attendu."_w);
  return {};
}

LecteurChamps::LecteurChamps(const Json& objet, Refus& refus, std::string prefixe)
    : m_objet(objet), m_refus(refus), m_prefixe(std::move(prefixe)) {}

const Json* LecteurChamps::Trouve(const char* nom) {
  assert(nom && *nom);
  m_noms.push_back(nom);
  const auto it = m_objet.find(nom);
  if (it == m_objet.end()) return nullptr;
  ++m_trouves;
  return &*it;
}

bool LecteurChamps::Invalide(const std::string& nom, const std::string& raison) {
  if (!m_refus) m_refus = RefusChamp(m_prefixe + nom, raison);
  return false;
}

bool LecteurChamps::Manquant(const std::string& nom) {
  if (!m_refus) m_refus = Refus(ErrChampManquant, "", {m_prefixe + nom});
  return false;
}

bool LecteurChamps::Texte(const char* nom, std::size_t longueurMax, std::optional<std::string>& valeur) {
  const Json* champ = Trouve(nom);
  if (!champ) return true;
  if (!champ->is_string()) return Invalide(nom, raison::TexteAttendu());
  auto texte = DepuisUtf8(champ->get_ref<const std::string&>());
  if (!texte) return Invalide(nom, raison::CaractereImpossible());
  for (const char c : *texte)
    if (static_cast<unsigned char>(c) < 32) return Invalide(nom, "un caractère de contrôle est interdit."_w);
  if (texte->size() > longueurMax) {
    if (!m_refus) m_refus = Refus(ErrTexteTropLong, "", {m_prefixe + nom, std::to_string(longueurMax)});
    return false;
  }
  valeur = std::move(*texte);
  return true;
}

bool LecteurChamps::Montant(const char* nom, std::optional<f64>& valeur) {
  const Json* champ = Trouve(nom);
  if (!champ) return true;
  if (!champ->is_number()) return Invalide(nom, raison::NombreAttendu());
  valeur = champ->get<f64>();
  return true;
}

bool LecteurChamps::Entier(const char* nom, i64 minimum, i64 maximum, std::optional<i64>& valeur) {
  const Json* champ = Trouve(nom);
  if (!champ) return true;
  valeur = EntierJson(*champ, minimum, maximum);
  return valeur ? true : Invalide(nom, raison::EntierAttendu(minimum, maximum));
}

bool LecteurChamps::Booleen(const char* nom, std::optional<bool>& valeur) {
  const Json* champ = Trouve(nom);
  if (!champ) return true;
  if (!champ->is_boolean()) return Invalide(nom, "true ou false est attendu."_w);
  valeur = champ->get<bool>();
  return true;
}

bool LecteurChamps::Mot(const char* nom, std::initializer_list<const char*> mots,
                        std::optional<std::size_t>& valeur) {
  const Json* champ = Trouve(nom);
  if (!champ) return true;
  std::string attendus;
  std::size_t indice = 0;
  for (const char* mot : mots) {
    if (champ->is_string() && CompareSansCasse(champ->get_ref<const std::string&>(), mot) == 0) {
      valeur = indice;
      return true;
    }
    attendus += (indice++ ? ", " : "") + std::string(mot);
  }
  return Invalide(nom, "valeurs possibles : "_w + attendus + "."_w);
}

bool LecteurChamps::Liste(const char* nom, const Json*& valeur) {
  valeur = Trouve(nom);
  if (!valeur) return true;
  if (!valeur->is_array()) return Invalide(nom, "une liste est attendue."_w);
  for (const Json& element : *valeur)
    if (!element.is_object()) return Invalide(nom, "une liste d'objets est attendue."_w);
  return true;
}

bool LecteurChamps::RienDautre() {
  if (m_refus) return false;
  assert(m_trouves <= m_noms.size() && m_trouves <= m_objet.size());
  if (m_trouves == m_objet.size()) return true;
  for (const auto& [cle, valeur] : m_objet.items()) {
    bool connu = false;
    for (const char* nom : m_noms) connu = connu || cle == nom;
    if (connu) continue;
    const auto texte = DepuisUtf8(cle.substr(0, 80));
    m_refus = Refus(ErrChampInconnu, "", {m_prefixe + texte.value_or("?")});
    return false;
  }
  return true;
}

void AjouteTexteJson(std::string& sortie, std::string_view texte) {
  static constexpr char chiffres[] = "0123456789abcdef", lettres[] = "\"\\nrt";
  static constexpr std::string_view courts = "\"\\\n\r\t";
  sortie.push_back('"');
  std::size_t debut = 0;
  const auto verse = [&](std::size_t fin) {
    if (fin > debut) sortie += VersUtf8(texte.substr(debut, fin - debut));
  };
  for (std::size_t i = 0; i < texte.size(); ++i) {
    const auto c = static_cast<unsigned char>(texte[i]);
    if (c >= 32 && c != '"' && c != '\\' && c != 127) continue;
    verse(i);
    debut = i + 1;
    sortie.push_back('\\');
    if (const std::size_t court = courts.find(texte[i]); court != std::string_view::npos) {
      sortie.push_back(lettres[court]);
    } else {
      sortie += "u00";
      sortie.push_back(chiffres[c >> 4]);
      sortie.push_back(chiffres[c & 15]);
    }
  }
  verse(texte.size());
  sortie.push_back('"');
}

void AjouteNombreJson(std::string& sortie, f64 nombre) {
  if (!std::isfinite(nombre)) {
    sortie += "null";
    return;
  }
  // "-0" would read back as the integer 0.
  if (nombre == 0 && std::signbit(nombre)) {
    sortie += "-0.0";
    return;
  }
  char tampon[400];
  const auto [fin, erreur] = std::to_chars(tampon, tampon + sizeof tampon, nombre);
  sortie.append(tampon, erreur == std::errc() ? fin : tampon);
}

void AjouteEntierJson(std::string& sortie, i64 nombre) {
  char tampon[24];
  const auto fin = std::to_chars(tampon, tampon + sizeof tampon, nombre).ptr;
  sortie.append(tampon, fin);
}

void LigneJson::Nom(const char* nom) {
  assert(nom && *nom);
  assert(!m_texte.empty());  // not yet ended
  if (m_texte.size() > 1) m_texte.push_back(',');
  m_texte += '"';
  m_texte += nom;
  m_texte += "\":";
}

LigneJson& LigneJson::Texte(const char* nom, std::string_view texte) {
  Nom(nom);
  AjouteTexteJson(m_texte, texte);
  return *this;
}

LigneJson& LigneJson::Nombre(const char* nom, f64 nombre) {
  Nom(nom);
  AjouteNombreJson(m_texte, nombre);
  return *this;
}

LigneJson& LigneJson::Entier(const char* nom, i64 nombre) {
  Nom(nom);
  AjouteEntierJson(m_texte, nombre);
  return *this;
}

LigneJson& LigneJson::Booleen(const char* nom, bool valeur) {
  Nom(nom);
  m_texte += valeur ? "true" : "false";
  return *this;
}

LigneJson& LigneJson::Nombres(const char* nom, const std::vector<f64>& nombres) {
  Nom(nom);
  m_texte.push_back('[');
  for (std::size_t i = 0; i < nombres.size(); ++i) {
    if (i) m_texte.push_back(',');
    AjouteNombreJson(m_texte, nombres[i]);
  }
  m_texte.push_back(']');
  return *this;
}

LigneJson& LigneJson::Objets(const char* nom, const std::vector<LigneJson>& objets) {
  Nom(nom);
  m_texte.push_back('[');
  for (std::size_t i = 0; i < objets.size(); ++i) m_texte += (i ? "," : "") + objets[i].m_texte + '}';
  m_texte.push_back(']');
  return *this;
}

std::string LigneJson::Fin() {
  assert(!m_texte.empty());
  m_texte += "}\n";
  return std::move(m_texte);
}

}  // namespace fenlor
