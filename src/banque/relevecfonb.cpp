// CFONB: records of 120 characters, with or without ends of line.
//
//   place  length  of all records                      place  length  of 04 alone
//       0       2  01 old balance, 04 operation,          42       6  value date, JJMMAA
//                  05 more of its label, 07 new balance   48      31  label
//       2       5  bank                                   81       7  number of the operation
//      11       5  branch                                104      16  reference
//      16       3  currency
//      19       1  decimals of the amount
//      21      11  account                                         of 05 alone
//      34       6  date, JJMMAA                           48      70  more of the label
//      90      14  amount, the last digit bears the sign
#include <algorithm>
#include <cassert>

#include "banque/relevetexte.h"
#include "banque/textes.h"

namespace fenlor {

namespace {

constexpr std::size_t TailleLigne = 120;

/// Last digit and sign: "{" and A to I are 0 to 9 above nothing, "}" and J to R below. The two
/// braces stand as "é" and "è" in the French alphabet of 7 bits.
std::optional<int> DernierChiffre(char c, bool& negatif) {
  if (c >= '0' && c <= '9') return c - '0';
  negatif = c == '}' || c == '\xE8' || (c >= 'J' && c <= 'R');
  if (c == '{' || c == '}' || c == '\xE9' || c == '\xE8') return 0;
  if (c >= 'A' && c <= 'I') return c - 'A' + 1;
  if (c >= 'J' && c <= 'R') return c - 'J' + 1;
  return {};
}

/// Cents of the 14 characters; none when they are no number or hold parts of a cent.
std::optional<i64> Montant(std::string_view champ, char decimales) {
  assert(champ.size() == 14);
  const int nombre = decimales == ' ' ? 2 : decimales - '0';
  if (nombre < 0 || nombre > 6) return {};
  bool negatif = false;
  const auto dernier = DernierChiffre(champ.back(), negatif);
  if (!dernier) return {};
  i64 valeur = 0;
  for (const char c : champ.substr(0, 13)) {
    if (c != ' ' && (c < '0' || c > '9')) return {};
    valeur = valeur * 10 + (c == ' ' ? 0 : c - '0');
  }
  valeur = valeur * 10 + *dernier;
  for (int i = nombre; i < 2; ++i) valeur *= 10;
  for (int i = nombre; i > 2; --i) {
    if (valeur % 10 != 0) return {};
    valeur /= 10;
  }
  return negatif ? -valeur : valeur;
}

class LecteurCfonb {
 public:
  explicit LecteurCfonb(LectureReleve& lecture) : m_lecture(lecture) {}

  void Ligne(u32 rang, std::string_view brute) {
    if (brute.find_first_not_of(" \x1A") == std::string_view::npos) return;
    if (brute.size() > TailleLigne && brute.find_first_not_of(' ', TailleLigne) != std::string_view::npos)
      return Refuse(rang, PlainteLigneLongue);
    std::string ligne(brute.substr(0, TailleLigne));
    ligne.resize(TailleLigne, ' ');
    const std::string_view genre = std::string_view(ligne).substr(0, 2);
    assert(ligne.size() == TailleLigne);
    if (genre == "04") return Operation(rang, ligne);
    if (genre == "05") return Suite(rang, ligne);
    if (genre == "07") return Solde(rang, ligne);
    if (genre != "01") return Refuse(rang, PlainteInconnu, {std::string(LibelleNet(genre))});
    Termine();
    CompteDe(ligne);
  }

  void Termine() {
    if (!m_ouverte) return;
    m_ouverte = false;
    AjouteOperation(m_lecture, m_lecture.Compte(m_numero, m_operation.monnaie), m_operation, m_centimes);
  }

 private:
  static std::string Champ(std::string_view ligne, std::size_t place, std::size_t taille) {
    assert(place + taille <= ligne.size());
    return LibelleNet(ligne.substr(place, taille));
  }
  static Date Jour(std::string_view ligne, std::size_t place) {
    return LitJour(ligne.substr(place, 6), OrdreDate::JourMoisAnnee);
  }
  void Refuse(u32 rang, const TexteFixe& raison, std::initializer_list<std::string> arguments = {}) {
    m_lecture.Plainte(rang, raison, arguments);
  }
  Releve& CompteDe(std::string_view ligne) {
    m_numero = LibelleDe({Champ(ligne, 2, 5) + ' ' + Champ(ligne, 11, 5) + ' ' + Champ(ligne, 21, 11)});
    return m_lecture.Compte(m_numero, Champ(ligne, 16, 3));
  }

  void Operation(u32 rang, std::string_view ligne) {
    Termine();
    CompteDe(ligne);
    if (!m_lecture.Place(rang)) return;
    m_operation = {};
    m_operation.rang = rang;
    m_operation.date = Jour(ligne, 34);
    if (m_operation.date == 0) return Refuse(rang, PlainteDate, {Champ(ligne, 34, 6)});
    m_operation.dateValeur = Jour(ligne, 42);
    const auto centimes = Montant(ligne.substr(90, 14), ligne[19]);
    if (!centimes) return Refuse(rang, PlainteMontant, {Champ(ligne, 90, 14)});
    m_centimes = *centimes;
    m_operation.monnaie = Champ(ligne, 16, 3);
    m_operation.libelle = Champ(ligne, 48, 31);
    const std::string numero = Champ(ligne, 81, 7), reference = Champ(ligne, 104, 16);
    if (numero.find_first_not_of('0') != std::string::npos) m_operation.id = numero;
    if (reference.find_first_not_of('0') != std::string::npos)
      m_operation.id += (m_operation.id.empty() ? "" : " ") + reference;
    m_ouverte = true;
  }

  void Suite(u32 rang, std::string_view ligne) {
    // Behind an operation that was refused there is nothing to add to, and its own complaint stands.
    if (m_ouverte)
      m_operation.libelle = LibelleDe({m_operation.libelle, ligne.substr(48, 70)});
    else if (m_lecture.plaintes.empty())
      Refuse(rang, PlainteInconnu, {"05"});
  }

  void Solde(u32 rang, std::string_view ligne) {
    Termine();
    Releve& releve = CompteDe(ligne);
    const auto solde = Montant(ligne.substr(90, 14), ligne[19]);
    const Date date = Jour(ligne, 34);
    if (!solde || date == 0) return Refuse(rang, PlainteSolde, {Champ(ligne, 90, 14)});
    if (date < releve.dateSolde) return;
    releve.solde = solde;
    releve.dateSolde = date;
  }

  LectureReleve& m_lecture;
  std::string m_numero;
  OperationBanque m_operation;
  i64 m_centimes = 0;
  bool m_ouverte = false;  ///< an operation waits for more of its label
};

}  // namespace

void LitCfonb(std::string_view octets, LectureReleve& lecture) {
  const std::string texte = EnWindows1252(EnUtf8(octets, DevineJeu(octets)));
  LecteurCfonb lecteur(lecture);
  u32 rang = 0;
  if (texte.find_first_of("\r\n") == std::string::npos) {
    for (std::size_t i = 0; i < texte.size(); i += TailleLigne)
      lecteur.Ligne(++rang, std::string_view(texte).substr(i, TailleLigne));
  } else {
    std::string_view reste = texte;
    for (std::string_view ligne; LigneSuivante(reste, ligne);) lecteur.Ligne(++rang, ligne);
  }
  lecteur.Termine();
}

}  // namespace fenlor
