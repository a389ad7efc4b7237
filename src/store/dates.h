// Calendar arithmetic on packed dates (enregistrements.h). Pure functions; the
// clock is `QVAPI::Today`.
#pragma once

#include <string>

#include "store/enregistrements.h"

namespace fenlor {

/// Time of day: hours in bits 15..8, minutes in bits 7..0.
using Heure = u32;

constexpr Date FaitDate(unsigned jour, unsigned mois, unsigned annee) {
  return (annee << 16) | (mois << 8) | jour;
}
constexpr unsigned Annee(Date date) { return date >> 16; }
constexpr unsigned Mois(Date date) { return (date >> 8) & 0xFF; }
constexpr unsigned Jour(Date date) { return date & 0xFF; }

/// Packed date of "JJ/MM/AAAA". Day and month may have one digit. The calendar
/// is not checked: 31/02/2003 gives its packed value, which IsDateOk refuses.
/// 0 for a blank text, a year that has not four digits, or any other text.
Date GetDate(const std::string& texte);
/// "JJ/MM/AAAA"; empty for 0.
std::string StrDate(Date date);
/// Long form for the status bar: "samedi 15 mars 2003"; empty for 0.
std::string StrLDate(Date date);
/// 8 digits, year first: "20030315"; "00000000" for 0, so that keys sort.
std::string StrSDate(Date date);
/// "14:05".
std::string StrHHMM(Heure heure);
/// "Janvier 2003"; empty for a month outside 1 to 12.
std::string StrMonth(Date date);
/// True for a real calendar date (Gregorian) of the years 1 to 9999.
bool IsDateOk(Date date);
Date NextDate(Date date);
Date PrevDate(Date date);
/// First day of the next month.
Date NextMonth(Date date);
/// Days in the date's month; 0 for a month outside 1 to 12.
unsigned GetNbJours(Date date);
/// Bounds of the date's week, Monday to Sunday.
void GetWeek(Date date, Date& premier, Date& dernier);
/// Bounds of the date's month.
void GetMonth(Date date, Date& premier, Date& dernier);
/// Same day and month `annees` years later (or earlier when negative); the
/// result is not checked (29/02).
Date DecaleAnnees(Date date, int annees);
/// Day of the week, 0 Monday to 6 Sunday.
unsigned JourSemaine(Date date);

/// Name of a month, "Janvier" to "Décembre" (Windows-1252); empty outside 1 to 12.
std::string NomMois(unsigned mois);

/// Next due date after `courante` of a schedule that began at `reference`.
/// Codes: 1 once (0: there is none), 2 week, 3 two weeks, 4 twice a month (the
/// reference's day and fifteen days off it), 5 four weeks, 6 month, 7 two
/// months, 8 quarter, 9 half-year. Monthly steps keep the reference's day, or
/// the month's last one where it is shorter. 0 for an unknown code.
Date GetNextDateEcrituresAuto(Date reference, Date courante, int periodicite);
/// Text of a schedule code (Windows-1252), empty outside 1 to 9.
std::string GetPeriodiciteString(int periodicite);

}  // namespace fenlor
