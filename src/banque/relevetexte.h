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

/// An amount with its sign, in cents: sign before or behind, or in round brackets below 0; groups set apart
/// by blanks, "'" or the other separator; a currency sign. `decimale` 0: either, and none where a single one
/// with three digits behind it may be both. None when anything else is there, or a part of a cent.
std::optional<i64> LitCentimes(std::string_view texte, char decimale = 0);
/// The decimal sign that amounts of one file have in common; 0 when they show none, or both.
char DecimaleDes(const std::vector<std::string>& montants);
/// A day of the years 1970 to 2099: digits in three groups, or 6 or 8 of them; what follows a blank or "T" (a
/// time) is not looked at. Years of two digits are those from 1970 on. 0 for any other.
Date LitJour(std::string_view texte, OrdreDate ordre);
/// The order that reads most days of one file; where orders read as many, the French one, then the year in
/// front, which has four digits there.
OrdreDate OrdreDes(const std::vector<std::string>& jours);
/// Single blanks, no control characters, at most 80 characters.
std::string LibelleNet(std::string_view texte);
/// What two writings of one label have in common: letters and digits alone, capitals, no accents.
std::string LibelleNu(std::string_view texte);
/// Of the parts that say anything new, in their order.
std::string LibelleDe(std::initializer_list<std::string_view> parties);
/// Adds an operation after its checks: an amount of nothing, or beyond what the books hold, is a complaint;
/// an id that only says that there is none is dropped.
void AjouteOperation(LectureReleve& lecture, Releve& releve, OperationBanque operation, i64 centimes);

}  // namespace fenlor
