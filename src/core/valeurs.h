// The value conventions of the whole program: how texts, amounts, account and
// heading codes are read, rounded and shown. Pure functions on Windows-1252 text;
// what depends on the session (decimal separator, VAT, preferences) is an argument.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/dates.h"
#include "store/enregistrements.h"

namespace fenlor {

// -- Texts

/// True when no byte lies in 33 to 127: an accented letter alone counts as blank.
bool EstVide(std::string_view texte);
/// Tabs become blanks; no blank at either end, single blanks inside.
std::string CompacteTexte(std::string_view texte);
/// n-th field, from 0, of a separated text, compacted; empty when there are fewer.
std::string ChampTexte(unsigned n, std::string_view texte, char separateur);
/// Number of fields: separators plus 1, 0 for an empty text.
unsigned ComptePartie(std::string_view texte, char separateur);
/// Each pair of characters `\n` becomes CR LF, and back.
std::string DecodeRetours(std::string_view texte);
std::string EncodeRetours(std::string_view texte);

// -- Small numbers: digits up to the first other character, held within the type

int TexteVersEntier(std::string_view texte);
i32 TexteVersLong(std::string_view texte);
std::string EntierVersTexte(int valeur);  ///< empty for 0

// -- Rounding and comparing

/// floor(value x 10^d + 0.5) / 10^d on doubles, d held within 0 to 5: a half goes
/// upward, so -2.5 gives -2 at 0 decimals.
f64 Arrondi(f64 valeur, int decimales);
f64 Arrondi2(f64 valeur);
/// Amount without tax at a rate in percent; the rounded amount itself when the
/// exercice is not subject to VAT or the rate is not above 0.
f64 MontantHT(f64 montant, f64 taux, bool tva);
/// 0 equal, 1 when a >= b, -1 otherwise. No tolerance.
int CompareMontants(f64 a, f64 b);
/// Bytewise on the long forms: 0, 1 or -1.
int CompareComptes(const std::string& a, const std::string& b);

// -- Reading amounts

/// Number at the beginning of a text of at most 80 characters, with `separateur`
/// or "." as its point; 0 for a longer text or one that begins otherwise.
f64 TexteVersMontant(std::string_view texte, char separateur = ',');

/// What a person typed or pasted as an amount, as `TexteVersMontant` reads it: an optional sign, digits, at
/// most one "." and more digits. Around it blanks may stand and "€" or "F" behind; whole groups of three
/// digits may be set apart by blanks or by the separator that is not the decimal one. A single point or
/// separator is the decimal one, several alike set groups apart. Empty for a blank text, none for any
/// other: nothing of what was typed is ever left out.
std::optional<std::string> NormeMontant(std::string_view texte, char separateur = ',');

// -- Showing amounts. All are empty for exactly 0 and group no thousands.

std::string FormatMontant(f64 valeur, int decimales, char separateur = ',');
std::string FormatMontantEuro(f64 valeur, int decimales, char separateur = ',');  ///< and " €"
/// For an input field; with `zeroDansBoite` 0 shows as "0.00", with a point.
std::string FormatSaisie(f64 valeur, int decimales, bool zeroDansBoite, char separateur = ',');
/// A negative value as "D " and its opposite.
std::string FormatSoldeSaisie(f64 valeur, int decimales, bool zeroDansBoite, char separateur = ',');
std::string FormatFranc(f64 valeur);       ///< "1234,50 F", "-1234,50 F"
std::string FormatEuro(f64 valeur);        ///< "1234,50 €"
std::string FormatSoldeFranc(f64 valeur);  ///< "D 12,50 F" for -12.5
std::string FormatSoldeEuro(f64 valeur);

// -- Codes

/// Heading code: the first 3 characters in upper case, other characters than
/// letters and digits made blanks, padded to 3; empty for a blank text.
std::string NormaliseRubrique(std::string_view texte);
/// First term of a heading's formula and its sign ('+' or '-', '+' when none is
/// written); returns what follows the term. Blanks are dropped.
std::string TermeSuivant(std::string_view formule, std::string& terme, char& signe);

// -- Periods

/// Days between two dates in months of 30 days, the 31st being the 30th, the last one
/// included when `au` is not before `du`. The years play no part but in that test.
int Jours360(Date du, Date au);
/// Months from one date to another, both included, without regard to the years.
int MoisEntre(Date du, Date au);

// -- Fonts

/// A font setting: "face, size, colour, bold, italic, underline, strikeout".
struct Police {
  std::string face;
  int taille = 8;
  std::optional<i32> couleur;  ///< red in the low byte; none: the desktop's text colour
  bool gras = false;
  bool italique = false;
  bool souligne = false;
  bool barre = false;

  int Poids() const { return gras ? 700 : 400; }
};

/// n-th field of a font setting, compacted.
std::string PolicePartie(std::string_view texte, unsigned n);
/// `couleurSysteme`: the preference that replaces the setting's own colour.
Police LitPolice(std::string_view texte, bool couleurSysteme);

// -- Kilometre scale

/// Allowance for a distance: up to the lower bound the first rate, up to the upper
/// bound the second and the fixed part without its decimals, the third beyond. The
/// scale is in texts as the settings hold it. Not rounded.
f64 TarifKm(f64 km, std::string_view borneInf, std::string_view borneSup, std::string_view fixe,
            std::string_view coefInf, std::string_view coefMilieu, std::string_view coefSup,
            char separateur = ',');

}  // namespace fenlor
