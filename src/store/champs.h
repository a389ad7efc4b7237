// The fields of every record, one row each: what fenlorctl prints and takes, and
// what docs/FORMAT.md shows. The rows of a record are in order of offset and
// cover every one of its bytes.
#pragma once

#include <span>
#include <string_view>

#include "store/enregistrements.h"

namespace fenlor {

enum class TypeChamp : u8 {
  Texte,     ///< NUL-terminated Windows-1252 text
  Compte,    ///< account number, a text of 11 bytes
  Entier16,  ///< signed
  Entier32,  ///< signed
  EntierU8,
  EntierU16,
  EntierU32,  ///< numbers and flags
  DateC,      ///< packed date, 0 for none
  Montant,    ///< f64: amounts, rates, durations
  Reserve,    ///< bytes without a meaning, kept as read
};

struct Champ {
  const char* nom;
  TypeChamp type;
  u16 offset;
  u16 taille;
};

/// Fields of an indexed file's record, by file number; empty when unknown.
std::span<const Champ> Champs(u16 numFichier);
/// Fields by record name, as the structure is called ("Line", "Plan"); empty
/// when unknown.
std::span<const Champ> ChampsDe(std::string_view enregistrement);

}  // namespace fenlor
