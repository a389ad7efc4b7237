#include "garde/manifeste.h"

#include <algorithm>
#include <cassert>
#include <nlohmann/json.hpp>
#include <set>

#include "store/definitions.h"
#include "store/exercices.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using Json = nlohmann::json;

constexpr const char* Chiffres = "0123456789abcdef";

bool DepuisHexa(std::string_view texte, Sha256& somme) {
  if (texte.size() != 2 * somme.size()) return false;
  const auto chiffre = [](char c) {
    return c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
  };
  for (std::size_t i = 0; i < somme.size(); ++i) {
    const int haut = chiffre(texte[2 * i]), bas = chiffre(texte[2 * i + 1]);
    if (haut < 0 || bas < 0) return false;
    somme[i] = static_cast<u8>(haut * 16 + bas);
  }
  return true;
}

/// Reads the fields of one object; the first that fails is told.
class Lecteur {
 public:
  Lecteur(const Json& objet, std::string& faute) : m_objet(objet), m_faute(faute) {
    if (!objet.is_object()) Echec("un objet manque");
  }
  const Json* Champ(const char* nom) {
    if (!m_faute.empty()) return nullptr;
    const auto place = m_objet.find(nom);
    if (place == m_objet.end()) return Echec(std::string("le champ ") + nom + " manque");
    return &*place;
  }
  void Texte(const char* nom, std::string& texte) {
    const Json* champ = Champ(nom);
    if (!champ) return;
    const std::optional<std::string> lu =
        champ->is_string() ? DepuisUtf8(champ->get_ref<const std::string&>()) : std::nullopt;
    if (!lu || lu->size() > 255 || std::any_of(lu->begin(), lu->end(), [](char c) { return u8(c) < 32; }))
      Echec(std::string("le champ ") + nom + " n'est pas un texte");
    else
      texte = *lu;
  }
  template <class Nombre>
  void Entier(const char* nom, u64 maximum, Nombre& nombre) {
    const Json* champ = Champ(nom);
    if (!champ) return;
    if (!champ->is_number_unsigned() || champ->get<u64>() > maximum)
      Echec(std::string("le champ ") + nom + " est hors limites");
    else
      nombre = static_cast<Nombre>(champ->get<u64>());
  }
  void Booleen(const char* nom, bool& valeur) {
    const Json* champ = Champ(nom);
    if (champ && !champ->is_boolean())
      Echec(std::string("le champ ") + nom + " n'est pas un booléen"_w);
    else if (champ)
      valeur = champ->get<bool>();
  }
  /// The elements of an array, none when it is wrong.
  const Json& Liste(const char* nom) {
    static const Json vide = Json::array();
    const Json* champ = Champ(nom);
    if (!champ) return vide;
    if (champ->is_array() && champ->size() <= NbPiecesMax) return *champ;
    Echec(std::string("la liste ") + nom + " est fausse");
    return vide;
  }
  const Json* Echec(const std::string& faute) {
    assert(!faute.empty());
    if (m_faute.empty()) m_faute = faute;
    return nullptr;
  }

 private:
  const Json& m_objet;
  std::string& m_faute;
};

void LitExercice(const Json& objet, ExerciceArchive& exercice, std::string& faute) {
  Lecteur lecteur(objet, faute);
  lecteur.Texte("nom", exercice.nom);
  lecteur.Texte("debut", exercice.debut);
  lecteur.Texte("fin", exercice.fin);
  lecteur.Texte("cloture", exercice.cloture);
  lecteur.Entier("ecritures", 0xFFFFFFFFu, exercice.ecritures);
  if (faute.empty() && !NomExerciceCorrect(exercice.nom)) lecteur.Echec("un nom d'exercice est faux");
}

void LitPiece(const Json& objet, PieceArchive& piece, std::string& faute) {
  Lecteur lecteur(objet, faute);
  std::string somme;
  lecteur.Texte("nom", piece.nom);
  lecteur.Entier("taille", TaillePieceMax, piece.taille);
  lecteur.Texte("sha256", somme);
  if (faute.empty() && !DepuisHexa(somme, piece.somme)) lecteur.Echec("une somme est fausse");
}

/// The names together: each of a file of a practice, once, of an exercice that the list tells.
std::string ControleNoms(const Manifeste& manifeste) {
  assert(manifeste.pieces.size() <= NbPiecesMax);
  std::set<std::string> exercices, pieces;
  for (const ExerciceArchive& e : manifeste.exercices)
    if (!exercices.insert(e.nom).second) return "l'exercice " + e.nom + " y est deux fois";
  for (const PieceArchive& piece : manifeste.pieces) {
    std::string exercice;
    if (!NomDePiece(piece.nom, exercice))
      return "le nom \xAB " + piece.nom + " \xBB n'est pas celui d'un fichier de livres";
    if (!exercice.empty() && !exercices.count(exercice)) return "l'exercice " + exercice + " manque";
    if (!pieces.insert(piece.nom).second) return "le fichier " + piece.nom + " y est deux fois";
  }
  return {};
}

}  // namespace

std::string EnHexa(const Sha256& somme) {
  std::string texte;
  for (const u8 octet : somme) {
    texte += Chiffres[octet >> 4];
    texte += Chiffres[octet & 15];
  }
  return texte;
}

u64 Manifeste::Octets() const {
  u64 total = 0;
  for (const PieceArchive& piece : pieces) total += piece.taille;
  return total;
}

bool NomDePiece(std::string_view nom, std::string& exercice) {
  exercice.clear();
  if (nom == FichierReglages) return true;
  const std::size_t barre = nom.find('/');
  std::string_view fichier = nom;
  if (barre != std::string_view::npos) {
    if (!NomExerciceCorrect(std::string(nom.substr(0, barre)))) return false;
    exercice = nom.substr(0, barre);
    fichier = nom.substr(barre + 1);
  }
  constexpr std::string_view extension = ".dat";
  if (fichier.size() <= extension.size() || fichier.substr(fichier.size() - extension.size()) != extension)
    return false;
  fichier.remove_suffix(extension.size());
  if (fichier == "TEXTES" || fichier == "SCEAU" || fichier == "CORBEILLE") return !exercice.empty();
  const DefinitionFichier* definition = DefinitionNom(fichier);
  return definition && definition->nom == fichier && definition->duCabinet == exercice.empty();
}

std::string EcritManifeste(const Manifeste& manifeste) {
  Json json = {{"forme", 1},
               {"cabinet", VersUtf8(manifeste.cabinet)},
               {"date", manifeste.date},
               {"heure", manifeste.heure},
               {"complet", manifeste.complet},
               {"exercices", Json::array()},
               {"pieces", Json::array()}};
  for (const ExerciceArchive& e : manifeste.exercices)
    json["exercices"].push_back({{"nom", e.nom},
                                 {"debut", e.debut},
                                 {"fin", e.fin},
                                 {"cloture", e.cloture},
                                 {"ecritures", e.ecritures}});
  for (const PieceArchive& piece : manifeste.pieces)
    json["pieces"].push_back({{"nom", piece.nom}, {"taille", piece.taille}, {"sha256", EnHexa(piece.somme)}});
  const std::string texte = json.dump(1);
  assert(texte.size() <= TailleManifesteMax);
  return texte;
}

std::string LitManifeste(std::string_view json, Manifeste& manifeste) {
  manifeste = {};
  if (json.size() > TailleManifesteMax) return "le manifeste est trop long";
  const Json objet = Json::parse(json.begin(), json.end(), nullptr, false);
  if (objet.is_discarded()) return "le manifeste est illisible";
  std::string faute;
  Lecteur lecteur(objet, faute);
  u32 forme = 0;
  lecteur.Entier("forme", 1, forme);
  lecteur.Texte("cabinet", manifeste.cabinet);
  lecteur.Texte("date", manifeste.date);
  lecteur.Texte("heure", manifeste.heure);
  lecteur.Booleen("complet", manifeste.complet);
  for (const Json& exercice : lecteur.Liste("exercices"))
    LitExercice(exercice, manifeste.exercices.emplace_back(), faute);
  for (const Json& piece : lecteur.Liste("pieces")) LitPiece(piece, manifeste.pieces.emplace_back(), faute);
  return faute.empty() ? ControleNoms(manifeste) : faute;
}

}  // namespace fenlor
