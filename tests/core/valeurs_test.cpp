#include "core/valeurs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "store/texte1252.h"

namespace fenlor {
namespace {

TEST(Valeurs, Textes) {
  EXPECT_TRUE(EstVide("") && EstVide(" \t\r\n"));
  EXPECT_TRUE(EstVide("é"_w));  // bytes above 127 count as blank
  EXPECT_FALSE(EstVide("é!"_w));

  EXPECT_EQ(CompacteTexte("\t a\tb   c \t"), "a b c");
  EXPECT_EQ(CompacteTexte(" \t "), "");

  EXPECT_EQ(ChampTexte(0, "  un  deux |trois", '|'), "un deux");
  EXPECT_EQ(ChampTexte(1, "a||b", '|'), "");
  EXPECT_EQ(ChampTexte(2, "a||b", '|'), "b");
  EXPECT_EQ(ChampTexte(3, "a||b", '|'), "");
  EXPECT_EQ(ComptePartie("", ','), 0u);
  EXPECT_EQ(ComptePartie("2001", ','), 1u);
  EXPECT_EQ(ComptePartie("2001,2002,", ','), 3u);

  EXPECT_EQ(DecodeRetours("a\\nb\\"), "a\r\nb\\");
  EXPECT_EQ(EncodeRetours("a\r\nb\rc\n"), "a\\nb\rc\n");
}

TEST(Valeurs, PetitsNombres) {
  EXPECT_EQ(TexteVersEntier(" \t-12abc"), -12);
  EXPECT_EQ(TexteVersEntier("+7"), 7);
  EXPECT_EQ(TexteVersEntier("- 7"), 0);
  EXPECT_EQ(TexteVersLong("99999999999999999999999"), std::numeric_limits<i32>::max());
  EXPECT_EQ(TexteVersLong("-99999999999999999999999"), std::numeric_limits<i32>::min());
  EXPECT_EQ(EntierVersTexte(0), "");
}

TEST(Valeurs, Arrondi) {
  const struct {
    f64 valeur;
    int decimales;
    f64 attendu;
  } cas[] = {
      {2.675, 2, 2.68},                                               // 267.5 once multiplied
      {1.005, 2, 1.00},                                               // 100.49999999999999
      {-2.5, 0, -2},                                                  // a half goes upward
      {2.5, 0, 3},      {-0.005, 2, 0}, {1234.56789, 9, 1234.56789},  // held at 5 decimals
      {15.7, -3, 16},                                                 // held at 0
  };
  for (const auto& c : cas) EXPECT_EQ(Arrondi(c.valeur, c.decimales), c.attendu) << c.valeur;
  EXPECT_EQ(Arrondi2(19.999), 20);

  EXPECT_EQ(MontantHT(119.60, 19.6, true), 100);
  EXPECT_EQ(MontantHT(119.604, 19.6, false), 119.6);
  EXPECT_EQ(MontantHT(100.006, 0, true), 100.01);
  EXPECT_EQ(MontantHT(100, -5, true), 100);

  EXPECT_EQ(CompareMontants(0.1 + 0.2, 0.3), 1);  // no tolerance
  EXPECT_EQ(CompareMontants(-1, 0), -1);
  EXPECT_EQ(CompareMontants(-0.0, 0.0), 0);
}

TEST(Valeurs, Comptes) {
  EXPECT_EQ(CompareComptes("512", "5120000000"), 0);
  EXPECT_EQ(CompareComptes(" 60 6", "606"), 0);
  EXPECT_EQ(CompareComptes("512", "5121"), -1);
  EXPECT_EQ(CompareComptes("706", "6"), 1);
}

TEST(Valeurs, LectureMontant) {
  const std::string chiffres80(80, '1');
  const struct {
    std::string texte;
    f64 attendu;
  } cas[] = {
      {"12,50", 12.5}, {"12.50", 12.5},  {" -3,5 F", -3.5}, {"+2", 2},
      {"", 0},         {"abc", 0},       {"1 234", 1},      {"1.234,5", 1.234},
      {",5", 0.5},     {"12,5,9", 12.5}, {"inf", 0},        {"nan", 0},
      {"1e999", 0},    {"- 5", 0},       {"0x10", 0},       {chiffres80 + "1", 0},
  };
  for (const auto& c : cas) EXPECT_EQ(TexteVersMontant(c.texte), c.attendu) << c.texte;
  EXPECT_GT(TexteVersMontant(chiffres80), 1e79);
  EXPECT_EQ(TexteVersMontant("12.5", '.'), 12.5);
}

TEST(Valeurs, ZeroNeSAffichePas) {
  for (f64 zero : {0.0, -0.0}) {
    EXPECT_EQ(FormatMontant(zero, 2), "");
    EXPECT_EQ(FormatMontantEuro(zero, 2), "");
    EXPECT_EQ(FormatFranc(zero), "");
    EXPECT_EQ(FormatSoldeEuro(zero), "");
    EXPECT_EQ(FormatSaisie(zero, 2, false), "");
    EXPECT_EQ(FormatSaisie(zero, 2, true), "0.00");
  }
}

TEST(Valeurs, FormatsMontant) {
  EXPECT_EQ(FormatMontant(1234567.891, 2), "1234567,89");
  EXPECT_EQ(FormatMontant(2.675, 2), "2,67");  // as printf rounds
  EXPECT_EQ(FormatMontant(-0.5, 0, '.'), "-0");
  EXPECT_EQ(FormatMontant(6.55957, 5, '.'), "6.55957");
  EXPECT_EQ(FormatMontantEuro(12.5, 2), "12,50 €"_w);
  EXPECT_EQ(FormatSaisie(3, 2, true), "3,00");
  EXPECT_EQ(FormatSoldeSaisie(-3, 2, false), "D 3,00");
  EXPECT_EQ(FormatSoldeSaisie(3, 2, false), "3,00");
}

TEST(Valeurs, FormatsMonnaie) {
  EXPECT_EQ(FormatFranc(1234.5), "1234,50 F");
  EXPECT_EQ(FormatFranc(-1234.5), "-1234,50 F");
  EXPECT_EQ(FormatEuro(1234567), "1234567,00 €"_w);
  EXPECT_EQ(FormatFranc(2.675), "2,68 F");  // the platform rounds the decimal text
  EXPECT_EQ(FormatFranc(999.995), "1000,00 F");
  EXPECT_EQ(FormatFranc(9.9949999), "10,00 F");  // "9.995000" after six decimals
  EXPECT_EQ(FormatFranc(-0.001), "0,00 F");
  EXPECT_EQ(FormatSoldeFranc(-12.5), "D 12,50 F");
  EXPECT_EQ(FormatSoldeFranc(12.5), "12,50 F");
  EXPECT_EQ(FormatSoldeEuro(-0.25), "D 0,25 €"_w);
}

TEST(Valeurs, DeuxDecimalesDesSixQuiSontEcrites) {
  std::mt19937_64 hasard(5);
  for (int i = 0; i < 20000; ++i) {
    f64 montant = static_cast<f64>(hasard() >> (12 + i % 50)) / 2e6;
    if (i % 3) montant = std::nextafter(montant, i % 3 == 1 ? 0 : 1e300);
    char six[64], deux[64];
    std::snprintf(six, sizeof six, "%.6f", montant);
    // The written digits, as a whole number of millionths.
    std::string chiffres(six);
    chiffres.erase(chiffres.size() - 7, 1);
    const u64 centimes = (std::stoull(chiffres) + 5000) / 10000;
    std::snprintf(deux, sizeof deux, "%llu,%02u F", static_cast<unsigned long long>(centimes / 100),
                  static_cast<unsigned>(centimes % 100));
    EXPECT_EQ(FormatFranc(montant), montant == 0 ? "" : deux) << six;
  }
}

TEST(Valeurs, Rubriques) {
  EXPECT_EQ(NormaliseRubrique("7a"), "7A ");
  EXPECT_EQ(NormaliseRubrique("a-bcd"), "A B");
  EXPECT_EQ(NormaliseRubrique("1é4"_w), "1 4");
  EXPECT_EQ(NormaliseRubrique(" \t"), "");
  EXPECT_EQ(NormaliseRubrique(""), "");
}

TEST(Valeurs, CeQuiSeLitCommeUnMontant) {
  const struct {
    const char *texte, *norme;  ///< null: cannot be read
  } cas[] = {
      {"", ""},
      {" \t", ""},
      {"1.250,50", "1250.50"},
      {"1,250.50", "1250.50"},
      {"12,5", "12.5"},
      {"12.5", "12.5"},
      {" -1 234 567,80 €", "-1234567.80"},
      {"+3 F", "3"},
      {"- 3", "-3"},
      {"1.234.567", "1234567"},
      {",5", ".5"},
      {"5,", "5"},
      {"1234,567", "1234.567"},
      {"120+30", nullptr},
      {"25,5,5abc", nullptr},
      {"1e9", nullptr},
      {"12a", nullptr},
      {"12,,3.4", nullptr},
      {"1 2", nullptr},
      {"1.25,50", nullptr},
      {"12.5.6", nullptr},
      {"1.250 500,00", nullptr},
      {",", nullptr},
      {"-", nullptr},
      {"--1", nullptr},
      {"1-", nullptr},
      {"€", nullptr},
      {"0x10", nullptr},
      {"inf", nullptr},
  };
  for (const auto& c : cas) {
    const std::optional<std::string> lu = NormeMontant(DepuisUtf8(c.texte).value());
    EXPECT_EQ(lu.value_or("?"), c.norme ? c.norme : "?") << c.texte;
  }
}

TEST(Valeurs, TermesDeFormule) {
  std::string reste = " -1 + 2-&PVC ", terme;
  char signe = 0;
  reste = TermeSuivant(reste, terme, signe);
  EXPECT_EQ(terme, "1");
  EXPECT_EQ(signe, '-');
  EXPECT_EQ(reste, "+2-&PVC");
  reste = TermeSuivant(reste, terme, signe);
  EXPECT_EQ(terme, "2");
  EXPECT_EQ(signe, '+');
  reste = TermeSuivant(reste, terme, signe);
  EXPECT_EQ(terme, "&PVC");
  EXPECT_EQ(signe, '-');
  EXPECT_EQ(reste, "");
  EXPECT_EQ(TermeSuivant("A1+", terme, signe), "+");
  EXPECT_EQ(signe, '+');
  EXPECT_EQ(TermeSuivant("--3", terme, signe), "-3");
  EXPECT_EQ(terme, "");
}

TEST(Valeurs, Periodes) {
  const auto date = FaitDate;
  EXPECT_EQ(Jours360(date(1, 1, 2003), date(31, 12, 2003)), 360);
  EXPECT_EQ(Jours360(date(15, 3, 2003), date(15, 3, 2003)), 1);
  EXPECT_EQ(Jours360(date(31, 1, 2003), date(30, 3, 2003)), 61);
  EXPECT_EQ(Jours360(date(31, 12, 2003), date(30, 12, 2003)), 1);    // the same day
  EXPECT_EQ(Jours360(date(30, 6, 2003), date(15, 2, 2003)), 135);    // backwards: no extra day
  EXPECT_EQ(Jours360(date(15, 12, 2002), date(10, 1, 2003)), -334);  // the years play no part
  EXPECT_EQ(MoisEntre(date(1, 7, 2000), date(30, 6, 2001)), 0);
  EXPECT_EQ(MoisEntre(date(1, 1, 2003), date(31, 12, 2003)), 12);
}

TEST(Valeurs, Polices) {
  const Police police = LitPolice("MS Sans Serif, -11, 255, 1, 0, 1, 2", false);
  EXPECT_EQ(police.face, "MS Sans Serif");
  EXPECT_EQ(police.taille, -11);
  EXPECT_EQ(police.couleur, 255);
  EXPECT_EQ(police.Poids(), 700);
  EXPECT_FALSE(police.italique);
  EXPECT_TRUE(police.souligne);
  EXPECT_FALSE(police.barre);

  const Police vide = LitPolice("", false);
  EXPECT_EQ(vide.face, "Helv");
  EXPECT_EQ(vide.taille, 8);
  EXPECT_FALSE(vide.couleur);
  EXPECT_EQ(vide.Poids(), 400);
  EXPECT_EQ(LitPolice(",,0", false).couleur, 0);  // black, not blank
  EXPECT_FALSE(LitPolice("Arial,10,255", true).couleur);
}

}  // namespace
}  // namespace fenlor
