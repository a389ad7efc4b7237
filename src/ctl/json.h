// JSON Lines at the edge of fenlorctl: bounded reading, strict fields, and
// writing that keeps every byte and every bit. JSON is UTF-8; the texts given
// and taken here are Windows-1252, as everywhere inside.
#pragma once

#include <fstream>
#include <initializer_list>
#include <istream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/refus.h"
#include "store/enregistrements.h"

namespace fenlor {

using Json = nlohmann::json;

/// Longest input line, and deepest nesting of one.
constexpr std::size_t TailleLigneMax = std::size_t{1} << 20;
constexpr unsigned ProfondeurMax = 8;

/// The refusal of a field: ErrChampInvalide with the reason.
Refus RefusChamp(const std::string& nom, const std::string& raison);

/// Reasons that several readers give.
namespace raison {
std::string TexteAttendu();
std::string NombreAttendu();
std::string EntierAttendu(i64 minimum, i64 maximum);
std::string CaractereImpossible();
}  // namespace raison

/// The integer of a value when it is one and lies within the bounds.
std::optional<i64> EntierJson(const Json& valeur, i64 minimum, i64 maximum);

/// Lines of a stream, numbered from 1; blank ones are counted and skipped.
class LecteurLignes {
 public:
  /// Of the stream, or of the file `source`.
  explicit LecteurLignes(std::istream& entree, const std::string& source = "-");
  /// False when the file could not be opened.
  bool Ouvert() const { return &m_entree != &m_fichier || m_fichier.is_open(); }
  /// Next line as an object, or the refusal of it. False at the end.
  bool Suivante(Json& objet, Refus& refus);
  /// Next line without its end (LF or CR LF). Of a line above TailleLigneMax
  /// only `tropLongue` is told, and the reading goes on behind it.
  bool Suivante(std::string& ligne, bool& tropLongue);
  u32 Numero() const { return m_numero; }
  /// errno value of the failure that ended the reading, 0 for the true end.
  int Erreur() const { return m_erreur; }

 private:
  std::ifstream m_fichier;
  std::istream& m_entree;
  u32 m_numero = 0;
  int m_erreur = 0;
};

/// One line as an object. Refuses text that is not UTF-8 or not JSON, nesting
/// beyond ProfondeurMax, and any value that is not an object.
Refus LitObjet(const std::string& ligne, u32 numero, Json& objet);

/// Reads the fields of one object, each at most once, then refuses what is left.
/// A reader returns false when its field is there but wrong, and leaves the
/// value empty when it is absent; the first refusal stands.
class LecteurChamps {
 public:
  /// `prefixe` stands before the names in messages ("lignes[1]."). Object and
  /// refusal outlive the reader.
  LecteurChamps(const Json& objet, Refus& refus, std::string prefixe = {});

  bool Texte(const char* nom, std::size_t longueurMax, std::optional<std::string>& valeur);
  bool Montant(const char* nom, std::optional<f64>& valeur);
  bool Entier(const char* nom, i64 minimum, i64 maximum, std::optional<i64>& valeur);
  bool Booleen(const char* nom, std::optional<bool>& valeur);
  /// One word of a list, without regard to case; its index.
  bool Mot(const char* nom, std::initializer_list<const char*> mots, std::optional<std::size_t>& valeur);
  /// An array of objects; null when absent.
  bool Liste(const char* nom, const Json*& valeur);
  /// Refuses the fields that nobody asked for.
  bool RienDautre();

  bool Invalide(const std::string& nom, const std::string& raison);
  bool Manquant(const std::string& nom);

 private:
  const Json* Trouve(const char* nom);
  const Json& m_objet;
  Refus& m_refus;
  std::string m_prefixe;
  std::vector<const char*> m_noms;
  std::size_t m_trouves = 0;
};

/// Appends a Windows-1252 text as a JSON string.
void AjouteTexteJson(std::string& sortie, std::string_view texte);
/// Appends a number that reads back as the same 64 bits; null when not finite.
void AjouteNombreJson(std::string& sortie, f64 nombre);
void AjouteEntierJson(std::string& sortie, i64 nombre);

/// Builds one line of output: {"nom":valeur,...} and its end.
class LigneJson {
 public:
  LigneJson& Texte(const char* nom, std::string_view texte);
  LigneJson& Nombre(const char* nom, f64 nombre);
  LigneJson& Entier(const char* nom, i64 nombre);
  LigneJson& Booleen(const char* nom, bool valeur);
  LigneJson& Nombres(const char* nom, const std::vector<f64>& nombres);
  LigneJson& Objets(const char* nom, const std::vector<LigneJson>& objets);
  std::string Fin();

 private:
  void Nom(const char* nom);
  std::string m_texte = "{";
};

}  // namespace fenlor
