// The arithmetic of the calculator: decimal, so that 0,1 + 0,2 is 0,3 and a cent is
// never lost, and the keys of a desk calculator that print a tape. No Qt, no clock, no locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/texte.h"
#include "store/enregistrements.h"

namespace fenlor {

/// A decimal number: at most 18 significant digits, at most 18 of them behind the
/// point. What does not fit is rounded, halves away from zero.
class Decimal {
 public:
  constexpr Decimal() = default;
  Decimal(i64 entier);  // NOLINT: whole numbers are decimals

  /// Digits with an optional sign and "," or "." as the point: "-1234,5", ",5", "12,".
  /// Nothing for another text, or for more than 18 digits.
  static std::optional<Decimal> Lit(std::string_view texte);
  /// As people copy numbers: blanks (no-break ones too, UTF-8), a currency behind, and
  /// separators of thousands are dropped. "1 234,50 €", "1.234,50", "1,234.50", "12.5".
  static std::optional<Decimal> LitColle(std::string_view utf8);
  /// The nearest number of two decimals. Nothing outside what a decimal holds.
  static std::optional<Decimal> DeMontant(f64 montant);

  f64 Montant() const;  ///< the nearest double
  /// Rounded to `chiffres` significant digits, without grouping: "-1234,5".
  std::string Texte(char separateur = ',', unsigned chiffres = 15) const;
  bool EstNul() const { return m_valeur == 0; }
  bool operator==(const Decimal&) const = default;

  Decimal operator-() const;
  // Nothing when the result does not fit, or on a division by zero.
  static std::optional<Decimal> Ajoute(const Decimal& a, const Decimal& b);
  static std::optional<Decimal> Retire(const Decimal& a, const Decimal& b);
  static std::optional<Decimal> Multiplie(const Decimal& a, const Decimal& b);
  static std::optional<Decimal> Divise(const Decimal& a, const Decimal& b);

 private:
  __extension__ typedef __int128 Large;
  static std::optional<Decimal> Fait(Large valeur, int decimales);
  i64 m_valeur = 0;
  int m_decimales = 0;  ///< no zero stands at the end of the decimals
};

enum class Touche {
  Chiffre0,
  Chiffre1,
  Chiffre2,
  Chiffre3,
  Chiffre4,
  Chiffre5,
  Chiffre6,
  Chiffre7,
  Chiffre8,
  Chiffre9,
  Virgule,
  Signe,
  Efface,
  CE,
  C,
  Plus,
  Moins,
  Fois,
  Divise,
  Egal,
  Pourcent,
  MPlus,
  MMoins,
  MR,
  MC,
};

/// A desk calculator. Operations run in the order in which they are typed
/// (2 + 3 × 4 = 20); "=" again repeats the last one; a percentage is of the number
/// before it and ends the operation: 200 + 10 % is 220, 200 × 10 % is 20.
class Calcul {
 public:
  static constexpr unsigned ChiffresMax = 15;

  /// A line of the tape: a number and what was done with it ("+", "=", "M+", "10 %" is "% +").
  struct Ligne {
    std::string nombre;
    std::string signe;  ///< UTF-8; empty for the first number
    bool operator==(const Ligne&) const = default;
  };

  void Appuie(Touche touche);
  /// A number from elsewhere (pasted, converted) takes the place of the one shown.
  void Pose(const Decimal& valeur);
  /// The same as the result of a conversion, which the tape tells: "100 F", "15,24 €".
  void Convertit(const Decimal& valeur, const std::string& de, const std::string& vers);
  /// Division by zero, or a number too large: shows nothing else until the next key.
  void Echoue();

  bool Erreur() const { return m_erreur; }
  /// What is shown: the number as it is being typed, or a result, "," as its point; empty
  /// on an error.
  std::string Affichage() const;
  const Decimal& Valeur() const { return m_valeur; }
  /// "+", "-", "×", "÷" while an operation waits for its second number, else empty.
  std::string Operation() const;
  bool MemoirePleine() const { return !m_memoire.EstNul(); }
  const Decimal& Memoire() const { return m_memoire; }
  /// Nothing typed, nothing waiting, 0 shown: "C" would change nothing.
  bool EstVide() const;
  const std::vector<Ligne>& Bande() const { return m_bande; }

 private:
  void Chiffre(char chiffre);
  void Operateur(char operateur);
  void Pourcent();
  void Egal();
  void Memorise(int signe);
  /// `m_valeur` becomes `gauche operateur droite`; false after `Echoue`.
  bool Applique(const Decimal& gauche, char operateur, const Decimal& droite);
  void Resultat(const Decimal& valeur);
  void Note(const std::string& nombre, const std::string& signe);
  void NotePremier();

  Decimal m_valeur;       ///< shown
  std::string m_saisie;   ///< as typed, empty when a result is shown
  bool m_fraiche = true;  ///< the number shown was not used yet: it stands on no tape
  char m_operateur = 0;   ///< waiting, 0 for none
  Decimal m_gauche;
  bool m_droite = false;  ///< the second number was given
  char m_repete = 0;      ///< of the last "=", for the next one
  Decimal m_repeteValeur;
  Decimal m_memoire;
  bool m_erreur = false;
  std::vector<Ligne> m_bande;  ///< the last lines
};

}  // namespace fenlor
