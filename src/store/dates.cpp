#include "store/dates.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>

#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned AnneeMaximale = 9999;

bool Bissextile(unsigned annee) { return (annee % 4 == 0 && annee % 100 != 0) || annee % 400 == 0; }

unsigned JoursDuMois(unsigned annee, unsigned mois) {
  constexpr std::array<u8, 13> Jours = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (mois < 1 || mois > 12) return 0;
  return Jours[mois] + (mois == 2 && Bissextile(annee) ? 1u : 0u);
}

// Days since 01/01/0001 and back. The year is counted from March, so that the
// leap day comes last.
i64 NumeroJour(Date date) {
  const i64 mois = (static_cast<i64>(Mois(date)) + 9) % 12;
  const i64 annee = static_cast<i64>(Annee(date)) - (Mois(date) <= 2 ? 1 : 0);
  return 365 * annee + annee / 4 - annee / 100 + annee / 400 + (153 * mois + 2) / 5 + Jour(date) - 307;
}

Date DateDuNumero(i64 numero) {
  const i64 jours = numero + 306;
  const i64 siecle = (4 * jours + 3) / 146097;
  const i64 dansSiecle = jours - 146097 * siecle / 4;
  const i64 annee = (4 * dansSiecle + 3) / 1461;
  const i64 dansAnnee = dansSiecle - 1461 * annee / 4;
  const i64 mois = (5 * dansAnnee + 2) / 153;
  const i64 jour = dansAnnee - (153 * mois + 2) / 5 + 1;
  assert(jour >= 1 && jour <= 31 && mois >= 0 && mois <= 11);
  const i64 anneeCivile = 100 * siecle + annee + (mois >= 10 ? 1 : 0);
  return FaitDate(static_cast<unsigned>(jour), static_cast<unsigned>(mois < 10 ? mois + 3 : mois - 9),
                  static_cast<unsigned>(anneeCivile));
}

// The wanted day of a month counted from January of the year 0, or its last one.
Date JourDuMois(unsigned rangMois, unsigned jour) {
  const unsigned annee = rangMois / 12, mois = rangMois % 12 + 1;
  return annee > AnneeMaximale ? 0 : FaitDate(std::min(jour, JoursDuMois(annee, mois)), mois, annee);
}

unsigned RangMois(Date date) { return Annee(date) * 12 + Mois(date) - 1; }

Date ApresParJours(Date reference, Date courante, i64 pas) {
  assert(pas > 0 && courante >= reference);
  const i64 debut = NumeroJour(reference);
  const i64 ecoules = std::max<i64>(NumeroJour(courante) - debut, 0);
  const Date suivante = DateDuNumero(debut + (ecoules / pas + 1) * pas);
  return IsDateOk(suivante) ? suivante : 0;
}

Date ApresParMois(Date reference, Date courante, unsigned pas) {
  assert(pas > 0 && RangMois(courante) >= RangMois(reference));
  const unsigned debut = RangMois(reference);
  unsigned rang = debut + (RangMois(courante) - debut) / pas * pas;
  Date date = JourDuMois(rang, Jour(reference));
  while (date != 0 && date <= courante) date = JourDuMois(rang += pas, Jour(reference));
  return date;
}

Date ApresDeuxParMois(Date reference, Date courante) {
  assert(IsDateOk(reference) && courante >= reference);
  const unsigned jour = Jour(reference);
  const unsigned autre = jour > 15 ? jour - 15 : jour + 15;
  for (unsigned rang = RangMois(courante);; ++rang) {
    for (const unsigned j : {std::min(jour, autre), std::max(jour, autre)}) {
      const Date date = JourDuMois(rang, j);
      if (date == 0 || date > courante) return date;
    }
  }
}

unsigned Chiffre(char c) { return static_cast<unsigned>(static_cast<unsigned char>(c)) - '0'; }

}  // namespace

Date GetDate(const std::string& texte) {
  std::size_t place = 0;
  const auto nombre = [&](std::size_t maximum, unsigned& valeur) {
    const std::size_t debut = place;
    for (valeur = 0; place < texte.size() && place - debut < maximum && Chiffre(texte[place]) <= 9; ++place) {
      valeur = valeur * 10 + Chiffre(texte[place]);
    }
    return place - debut;
  };
  const auto barre = [&] { return place < texte.size() && texte[place++] == '/'; };
  unsigned jour, mois, annee;
  if (nombre(2, jour) == 0 || !barre() || nombre(2, mois) == 0 || !barre()) return 0;
  if (nombre(4, annee) != 4 || place != texte.size()) return 0;
  return FaitDate(jour, mois, annee);
}

namespace {

constexpr std::size_t TailleMax = 16;  ///< of a date as text: three digits, three, five, and the bars

/// A part of a date, two digits at least; behind it.
char* Pose(char* place, unsigned nombre) {
  if (nombre > 99) return std::to_chars(place, place + 5, nombre).ptr;
  *place++ = static_cast<char>('0' + nombre / 10);
  *place++ = static_cast<char>('0' + nombre % 10);
  return place;
}

char* PoseAnnee(char* place, unsigned annee) {
  assert(annee <= 0xFFFF);
  return annee > AnneeMaximale ? Pose(place, annee) : Pose(Pose(place, annee / 100), annee % 100);
}

}  // namespace

std::string StrDate(Date date) {
  if (date == 0) return {};
  char texte[TailleMax];
  char* fin = Pose(texte, Jour(date));
  *fin++ = '/';
  fin = Pose(fin, Mois(date));
  *fin++ = '/';
  return {texte, PoseAnnee(fin, Annee(date))};
}

std::string StrLDate(Date date) {
  if (!IsDateOk(date)) return StrDate(date);
  static constexpr const char* Jours[] = {"lundi",    "mardi",  "mercredi", "jeudi",
                                          "vendredi", "samedi", "dimanche"};
  static constexpr const char* Longs[] = {"janvier",   "février", "mars",     "avril",
                                          "mai",       "juin",    "juillet",  "août",
                                          "septembre", "octobre", "novembre", "décembre"};
  return std::string(Jours[JourSemaine(date)]) + ' ' + std::to_string(Jour(date)) + ' ' +
         DepuisUtf8(Longs[Mois(date) - 1]).value() + ' ' + std::to_string(Annee(date));
}

std::string StrSDate(Date date) {
  char texte[TailleMax];
  return {texte, Pose(Pose(PoseAnnee(texte, Annee(date)), Mois(date)), Jour(date))};
}

std::string StrHHMM(Heure heure) {
  char texte[32];
  std::snprintf(texte, sizeof texte, "%02u:%02u", (heure >> 8) & 0xFF, heure & 0xFF);
  return texte;
}

std::string StrMonth(Date date) {
  const std::string nom = NomMois(Mois(date));
  return nom.empty() ? nom : nom + ' ' + std::to_string(Annee(date));
}

bool IsDateOk(Date date) {
  return Annee(date) >= 1 && Annee(date) <= AnneeMaximale && Jour(date) >= 1 &&
         Jour(date) <= GetNbJours(date);
}

Date NextDate(Date date) {
  if (date == 0) return 0;
  return Jour(date) < GetNbJours(date) ? date + 1 : NextMonth(date);
}

Date PrevDate(Date date) {
  if (date == 0) return 0;
  if (Jour(date) > 1) return (date & ~0xFFu) | std::min(Jour(date) - 1, std::max(GetNbJours(date), 1u));
  if (Mois(date) > 1) return FaitDate(JoursDuMois(Annee(date), Mois(date) - 1), Mois(date) - 1, Annee(date));
  return Annee(date) == 0 ? 0 : FaitDate(31, 12, Annee(date) - 1);
}

Date NextMonth(Date date) {
  if (date == 0) return 0;
  if (Mois(date) < 12) return FaitDate(1, Mois(date) + 1, Annee(date));
  return Annee(date) == 0xFFFF ? 0 : FaitDate(1, 1, Annee(date) + 1);
}

unsigned GetNbJours(Date date) { return JoursDuMois(Annee(date), Mois(date)); }

void GetWeek(Date date, Date& premier, Date& dernier) {
  premier = dernier = date;
  if (!IsDateOk(date)) return;
  premier = DateDuNumero(NumeroJour(date) - JourSemaine(date));
  dernier = DateDuNumero(NumeroJour(date) + 6 - JourSemaine(date));
}

void GetMonth(Date date, Date& premier, Date& dernier) {
  premier = dernier = date;
  if (GetNbJours(date) == 0) return;
  premier = (date & ~0xFFu) | 1;
  dernier = (date & ~0xFFu) | GetNbJours(date);
}

Date DecaleAnnees(Date date, int annees) {
  const i64 annee = static_cast<i64>(Annee(date)) + annees;
  return date == 0 || annee < 0 || annee > 0xFFFF
             ? 0
             : FaitDate(Jour(date), Mois(date), static_cast<unsigned>(annee));
}

unsigned JourSemaine(Date date) { return static_cast<unsigned>((NumeroJour(date) % 7 + 7) % 7); }

std::string NomMois(unsigned mois) {
  switch (mois) {
    case 1:
      return "Janvier";
    case 2:
      return "Février"_w;
    case 3:
      return "Mars";
    case 4:
      return "Avril";
    case 5:
      return "Mai";
    case 6:
      return "Juin";
    case 7:
      return "Juillet";
    case 8:
      return "Aout";
    case 9:
      return "Septembre";
    case 10:
      return "Octobre";
    case 11:
      return "Novembre";
    case 12:
      return "Décembre"_w;
  }
  return {};
}

Date GetNextDateEcrituresAuto(Date reference, Date courante, int periodicite) {
  if (periodicite <= 1 || periodicite > 9 || !IsDateOk(reference)) return 0;
  if (courante < reference) return reference;
  switch (periodicite) {
    case 2:
      return ApresParJours(reference, courante, 7);
    case 3:
      return ApresParJours(reference, courante, 14);
    case 4:
      return ApresDeuxParMois(reference, courante);
    case 5:
      return ApresParJours(reference, courante, 28);
    case 6:
      return ApresParMois(reference, courante, 1);
    case 7:
      return ApresParMois(reference, courante, 2);
    case 8:
      return ApresParMois(reference, courante, 3);
    default:
      return ApresParMois(reference, courante, 6);
  }
}

std::string GetPeriodiciteString(int periodicite) {
  switch (periodicite) {
    case 1:
      return "Unique";
    case 2:
      return "Semaine";
    case 3:
      return "Deux semaines";
    case 4:
      return "Deux fois / mois";
    case 5:
      return "Quatre semaines";
    case 6:
      return "Mensuelle";
    case 7:
      return "Deux mois";
    case 8:
      return "Trimestrielle";
    case 9:
      return "Bi-annelle";
  }
  return {};
}

}  // namespace fenlor
