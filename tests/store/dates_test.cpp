#include "store/dates.h"

#include <gtest/gtest.h>

#include <ctime>

#include "store/texte1252.h"

namespace fenlor {
namespace {

TEST(Dates, GetDateReadsTheTextAndNothingElse) {
  const struct {
    const char* texte;
    Date attendue;
  } cas[] = {
      {"18/02/2002", 0x07D20212},
      {"1/5/2004", FaitDate(1, 5, 2004)},
      {"01/05/2004", FaitDate(1, 5, 2004)},
      {"31/02/2003", FaitDate(31, 2, 2003)},
      {"99/99/0001", FaitDate(99, 99, 1)},
      {"", 0},
      {" ", 0},
      {"15/03/03", 0},
      {"15/03/203", 0},
      {"15/03/20031", 0},
      {"15/03/2003 ", 0},
      {" 15/03/2003", 0},
      {"15-03-2003", 0},
      {"115/03/2003", 0},
      {"15//2003", 0},
      {"/03/2003", 0},
      {"15/03/", 0},
      {"15/03", 0},
      {"+1/03/2003", 0},
      {"a/b/cccc", 0},
      {"00/00/0000", 0},
  };
  for (const auto& c : cas) EXPECT_EQ(GetDate(c.texte), c.attendue) << c.texte;
  EXPECT_EQ(GetDate(std::string("15/03/2003\0", 11)), 0u);
}

TEST(Dates, TextsOfADate) {
  const Date date = FaitDate(15, 3, 2003);
  EXPECT_EQ(StrDate(date), "15/03/2003");
  EXPECT_EQ(StrSDate(date), "20030315");
  EXPECT_EQ(StrLDate(date), "samedi 15 mars 2003");
  EXPECT_EQ(StrLDate(FaitDate(1, 8, 2004)), "dimanche 1 août 2004"_w);
  EXPECT_EQ(StrMonth(FaitDate(31, 1, 2003)), "Janvier 2003");
  EXPECT_EQ(StrMonth(FaitDate(1, 12, 1999)), "Décembre 1999"_w);
  EXPECT_EQ(StrHHMM((14 << 8) | 5), "14:05");
  EXPECT_EQ(NomMois(8), "Aout");
  for (const unsigned mois : {0u, 13u, 255u}) EXPECT_EQ(NomMois(mois), "") << mois;
  EXPECT_EQ(StrDate(0) + StrLDate(0) + StrMonth(0), "");
  EXPECT_EQ(StrSDate(0), "00000000");
  EXPECT_EQ(StrMonth(FaitDate(1, 13, 2003)), "");
}

TEST(Dates, CalendarBounds) {
  const struct {
    Date date;
    bool ok;
  } cas[] = {
      {FaitDate(29, 2, 2000), true},
      {FaitDate(29, 2, 1900), false},
      {FaitDate(29, 2, 2004), true},
      {FaitDate(29, 2, 2003), false},
      {FaitDate(31, 4, 2003), false},
      {FaitDate(0, 1, 2003), false},
      {FaitDate(1, 0, 2003), false},
      {FaitDate(1, 13, 2003), false},
      {FaitDate(1, 1, 0), false},
      {FaitDate(1, 1, 1), true},
      {FaitDate(31, 12, 9999), true},
      {FaitDate(1, 1, 10000), false},
      {0, false},
  };
  for (const auto& c : cas) EXPECT_EQ(IsDateOk(c.date), c.ok) << StrDate(c.date);
  EXPECT_EQ(GetNbJours(FaitDate(9, 13, 2003)), 0u);
  EXPECT_EQ(DecaleAnnees(FaitDate(29, 2, 2004), -1), FaitDate(29, 2, 2003));
  EXPECT_EQ(DecaleAnnees(FaitDate(1, 1, 2), -3), 0u);
  EXPECT_EQ(DecaleAnnees(0, 5), 0u);
}

// Every day of four centuries against the C library's calendar.
TEST(Dates, StepsAgreeWithTheCalendar) {
  std::tm tm{};
  tm.tm_year = 1800 - 1900;
  tm.tm_mday = 1;
  std::time_t instant = timegm(&tm);
  Date date = FaitDate(1, 1, 1800), veille = FaitDate(31, 12, 1799);
  for (; Annee(date) < 2200; instant += 86400) {
    ASSERT_NE(gmtime_r(&instant, &tm), nullptr);
    ASSERT_EQ(date, FaitDate(static_cast<unsigned>(tm.tm_mday), static_cast<unsigned>(tm.tm_mon + 1),
                             static_cast<unsigned>(tm.tm_year + 1900)));
    ASSERT_EQ(JourSemaine(date), static_cast<unsigned>((tm.tm_wday + 6) % 7)) << StrDate(date);
    ASSERT_EQ(PrevDate(date), veille);
    Date lundi, dimanche, premier, dernier;
    GetWeek(date, lundi, dimanche);
    ASSERT_TRUE(lundi <= date && date <= dimanche && JourSemaine(lundi) == 0 && JourSemaine(dimanche) == 6);
    Date pas = lundi;
    for (int i = 0; i < 6; ++i) pas = NextDate(pas);
    ASSERT_EQ(pas, dimanche) << StrDate(date);
    GetMonth(date, premier, dernier);
    ASSERT_TRUE(Jour(premier) == 1 && NextDate(dernier) == NextMonth(date)) << StrDate(date);
    veille = date;
    date = NextDate(date);
  }
}

TEST(Dates, NoDateStaysNoDate) {
  Date premier = 1, dernier = 1;
  GetWeek(0, premier, dernier);
  EXPECT_TRUE(premier == 0 && dernier == 0);
  GetMonth(0, premier, dernier);
  EXPECT_TRUE(premier == 0 && dernier == 0);
  EXPECT_EQ(NextDate(0) + PrevDate(0) + NextMonth(0), 0u);
}

std::string Suite(const char* reference, const char* courante, int code, int combien) {
  std::string texte;
  Date date = GetDate(courante);
  for (int i = 0; i < combien; ++i) {
    date = GetNextDateEcrituresAuto(GetDate(reference), date, code);
    texte += (i ? " " : "") + (date ? StrDate(date).substr(0, 5) : std::string("-"));
  }
  return texte;
}

TEST(Dates, ScheduleOfAnAutomaticEntry) {
  const struct {
    const char *reference, *courante;
    int code;
    const char* attendues;
  } cas[] = {
      {"15/01/2003", "15/01/2003", 1, "-"},
      {"15/01/2003", "15/01/2003", 2, "22/01 29/01 05/02 12/02"},
      {"15/01/2003", "23/01/2003", 2, "29/01 05/02 12/02 19/02"},
      {"15/01/2003", "15/01/2003", 3, "29/01 12/02 26/02 12/03"},
      {"05/01/2003", "05/01/2003", 4, "20/01 05/02 20/02 05/03"},
      {"20/01/2003", "20/01/2003", 4, "05/02 20/02 05/03 20/03"},
      {"31/01/2003", "31/01/2003", 4, "16/02 28/02 16/03 31/03"},
      {"15/01/2004", "30/01/2004", 4, "15/02 29/02 15/03 30/03"},
      {"15/01/2003", "15/01/2003", 5, "12/02 12/03 09/04 07/05"},
      {"31/01/2003", "31/01/2003", 6, "28/02 31/03 30/04 31/05"},
      {"31/01/2003", "28/02/2003", 6, "31/03 30/04 31/05 30/06"},
      {"31/12/2003", "31/12/2003", 7, "29/02 30/04 30/06 31/08"},
      {"30/11/2003", "15/01/2004", 8, "29/02 30/05 30/08 30/11"},
      {"31/08/2003", "31/08/2003", 9, "29/02 31/08 28/02 31/08"},
      {"15/03/2003", "01/01/2003", 6, "15/03 15/04 15/05 15/06"},
      {"15/03/2003", "", 4, "15/03 30/03 15/04 30/04"},
      {"31/12/9999", "31/12/9999", 6, "-"},
      {"15/01/2003", "15/01/2003", 0, "-"},
      {"15/01/2003", "15/01/2003", 10, "-"},
      {"31/02/2003", "15/01/2003", 6, "-"},
  };
  for (const auto& c : cas) {
    const std::string attendues = c.attendues;
    EXPECT_EQ(Suite(c.reference, c.courante, c.code, attendues == "-" ? 1 : 4), attendues)
        << c.reference << " " << c.courante << " " << c.code;
  }
  EXPECT_EQ(GetPeriodiciteString(4), "Deux fois / mois");
  EXPECT_EQ(GetPeriodiciteString(0) + GetPeriodiciteString(10), "");
}

}  // namespace
}  // namespace fenlor
