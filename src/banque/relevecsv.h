// Statements as tables of text. Every bank has its own: what the bytes propose can be changed in a form, and
// the answer is kept for each account.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "banque/relevetexte.h"

namespace fenlor {

/// What a column says. An amount is one signed column, two columns, or one and a word for the side.
enum class ColonneReleve : u8 {
  Date,
  Valeur,
  Libelle,
  Detail,
  Montant,
  Debit,
  Credit,
  Sens,
  Reference,
  Monnaie,
  Compte
};
constexpr std::size_t NbColonnesReleve = 11;

struct FormeCsv {
  JeuTexte jeu = JeuTexte::Utf8;
  char separateur = ';';
  char decimale = ',';
  OrdreDate ordre = OrdreDate::JourMoisAnnee;
  bool inverse = false;  ///< the sign is the other way round: money that goes out above 0 in one column,
                         ///< debits below 0 in two
  u32 entete = 0;        ///< rows before the first operation
  std::array<int, NbColonnesReleve> colonnes{-1, -1, -1, -1, -1, -1,
                                             -1, -1, -1, -1, -1};  ///< from 0; -1: none
  u32 titres = 0;                                                  ///< `EmpreinteTitres`

  int& operator[](ColonneReleve colonne) { return colonnes[static_cast<std::size_t>(colonne)]; }
  int operator[](ColonneReleve colonne) const { return colonnes[static_cast<std::size_t>(colonne)]; }
  /// A date and an amount can be found.
  bool Complete() const;
  bool operator==(const FormeCsv&) const = default;
};

struct LigneCsv {
  u32 rang = 0;  ///< line of the file that it begins on, from 1
  bool tropLongue = false;
  std::vector<std::string> cellules;  ///< Windows-1252, without the quotes
};

/// Rows of a text in order, until `suite` says false. Quotes hold separators and ends of line together; one
/// that never ends holds its own line alone.
void ParcoursCsv(std::string_view texte, char separateur, const std::function<bool(const LigneCsv&)>& suite);
/// The first rows as a form shows them.
std::vector<LigneCsv> PremieresLignes(std::string_view octets, const FormeCsv& forme, std::size_t nombre);

/// What the bytes look like: characters, separator, titles in French or English, then decimal sign and order
/// of dates by the rows.
FormeCsv ProposeCsv(std::string_view octets);
/// The same with characters and separator given.
FormeCsv ProposeColonnes(std::string_view octets, JeuTexte jeu, char separateur);
/// What tells the titles in front of the operations from others; 0 when there are none that name the columns.
u32 EmpreinteTitres(std::string_view octets, const FormeCsv& forme);
/// The remembered answer on another file: characters, where its operations begin and titles are its own.
FormeCsv FormePour(std::string_view octets, FormeCsv forme);

/// One line of the settings, and back; none for another text.
std::string TexteForme(const FormeCsv& forme);
std::optional<FormeCsv> FormeDepuis(std::string_view texte);

}  // namespace fenlor
