// What a person typed to find something: words, each of which may be a text, an amount, a date. Accents and
// case count nowhere.
#pragma once

#include <cassert>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

/// How well a word fits a text or a value; the better the higher.
enum Force : u8 {
  ForceAucune = 0,
  ForceDedans = 1,  ///< inside a word, or in a text that stands beside the thing
  ForceDebut = 2,   ///< the beginning of a word, a number or a code
  ForceExacte = 3,  ///< the whole text, code, amount or day
};

/// A day, a month, a year, of which some are left open (0).
struct DateCherchee {
  unsigned jour = 0, mois = 0, annee = 0;
  bool Convient(Date date) const;
};

struct MotCherche {
  std::string plie;            ///< as `AjouteSansAccents`
  std::optional<i64> montant;  ///< in cents, not negative; without cents typed: whole units
  bool avecCentimes = false;
  std::vector<DateCherchee> dates;   ///< what it may mean as a date
  Force forceMontant = ForceExacte;  ///< of an amount: less before the name of a month

  bool Montant(i64 centimes) const;
  /// A whole day exactly, a month or a year as `ForceDebut`.
  Force SurDate(Date date) const;
};

class Requete {
 public:
  /// More words than these are not looked for: `Trop`.
  static constexpr std::size_t MotsAuPlus = 32;

  /// Windows-1252. One or two digits before the name of a month may also mean its day ("12 mars 2003").
  explicit Requete(std::string_view texte = {});

  const std::vector<MotCherche>& Mots() const { return m_mots; }
  bool Vide() const { return m_mots.empty(); }
  bool Trop() const { return m_trop; }
  bool AvecMontant() const;

 private:
  std::vector<MotCherche> m_mots;
  bool m_trop = false;
};

/// How each word of a query fits one thing, two bits a word: made text by text, in any order.
class Accord {
 public:
  Accord() = default;
  void Note(std::size_t mot, Force force);
  void Ajoute(const Accord& autre);
  Force De(std::size_t mot) const {
    assert(mot < Requete::MotsAuPlus);
    return static_cast<Force>(m_forces >> (2 * mot) & 3);
  }
  bool Aucun() const { return m_forces == 0; }
  /// Every word fits.
  bool Entier(const Requete& requete) const;
  /// From 1 to 100 when it is whole.
  unsigned Note(const Requete& requete) const;

 private:
  u64 m_forces = 0;
};

/// Compares words with texts; keeps its buffer, for it folds very many of them.
class Comparateur {
 public:
  /// The query outlives it.
  explicit Comparateur(const Requete& requete) : m_requete(requete) {}
  /// Words anywhere in a text, at most with that force.
  void Texte(std::string_view texte, Accord& accord, Force auPlus = ForceExacte);
  /// Words that begin a code or an account number, or are it.
  void Code(std::string_view code, Accord& accord);

 private:
  const Requete& m_requete;
  std::string m_plie;
};

}  // namespace fenlor
