// What all readers of statements share: characters, amounts, dates and labels as banks write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "banque/releve.h"

namespace fenlor {

enum class JeuTexte : u8 { Utf8, Windows1252, Utf16 };
enum class OrdreDate : u8 { JourMoisAnnee, AnneeMoisJour, MoisJourAnnee };

/// UTF-16 by its mark or its zeroes, UTF-8 when all of it is well formed, else Windows-1252.
JeuTexte DevineJeu(std::string_view octets);
/// Well-formed UTF-8 without a mark; what is malformed is "?".
std::string EnUtf8(std::string_view octets, JeuTexte jeu);
/// Windows-1252: blanks and dashes of other kinds become plain ones, a character that has no place is "?".
std::string EnWindows1252(std::string_view utf8);
/// Takes the next line off a text, without its end (LF, CR LF or CR); false behind the last one.
bool LigneSuivante(std::string_view& texte, std::string_view& ligne);

/// An amount with its sign, in cents: sign before or behind, groups set apart by blanks, "'" or the other
/// separator, a currency sign. `decimale` 0: either, a last one with one or two digits behind it being the
/// decimal one. None when anything else is there, or a part of a cent.
std::optional<i64> LitCentimes(std::string_view texte, char decimale = 0);
/// A day of the years 1970 to 2099: digits in three groups, or 6 or 8 of them; what follows a blank or "T" (a
/// time) is not looked at. Years of two digits are those from 1970 on. 0 for any other.
Date LitJour(std::string_view texte, OrdreDate ordre);
/// Single blanks, no control characters, at most 80 characters.
std::string LibelleNet(std::string_view texte);
/// What two writings of one label have in common: letters and digits alone, capitals, no accents.
std::string LibelleNu(std::string_view texte);
/// Of the parts that say anything new, in their order.
std::string LibelleDe(std::initializer_list<std::string_view> parties);
/// Adds an operation after its checks: an amount of nothing, or beyond what the books hold, is a complaint.
void AjouteOperation(LectureReleve& lecture, Releve& releve, OperationBanque operation, i64 centimes);

}  // namespace fenlor
