#include "ctl/json.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <sstream>

#include "core/erreurssaisie.h"
#include "ctl/enregistrementjson.h"
#include "ctl/textes.h"
#include "journal/textes.h"
#include "session/textes.h"
#include "store/dates.h"
#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

TEST(Json, NombresRelusBitPourBit) {
  using L = std::numeric_limits<f64>;
  std::vector<f64> nombres = {0.0, -0.0, 0.1, 1e22, 18446744073709551616.0, L::max(), L::denorm_min()};
  u64 graine = 1;
  for (int i = 0; i < 20000; ++i) {
    graine = graine * 6364136223846793005u + 1442695040888963407u;
    const f64 x = std::bit_cast<f64>(graine);
    if (x - x == 0) nombres.push_back(x);
  }
  for (const f64 nombre : nombres) {
    std::string texte;
    AjouteNombreJson(texte, nombre);
    EXPECT_EQ(std::bit_cast<u64>(Json::parse(texte).get<f64>()), std::bit_cast<u64>(nombre)) << texte;
  }
  std::string texte;
  AjouteNombreJson(texte, L::infinity());
  AjouteNombreJson(texte, L::quiet_NaN());
  EXPECT_EQ(texte, "nullnull");
}

TEST(Json, ToutOctetFaitLAllerRetour) {
  std::string octets;
  for (int c = 1; c < 256; ++c) octets.push_back(static_cast<char>(c));
  std::string texte;
  AjouteTexteJson(texte, octets);
  EXPECT_EQ(DepuisUtf8(Json::parse(texte).get<std::string>()), octets);
}

TEST(Json, LignesNumerotees) {
  const std::string longue(TailleLigneMax + 1, 'x');
  std::istringstream flux("{}\r\n\n  \t\n" + longue + "\n" + std::string(TailleLigneMax, 'y') + "\nfin");
  LecteurLignes lignes(flux);
  std::string ligne;
  bool tropLongue = false;
  struct {
    u32 numero;
    std::string debut;
    bool tropLongue;
  } attendues[] = {{1, "{}", false}, {4, "xx", true}, {5, "yy", false}, {6, "fin", false}};
  for (const auto& attendue : attendues) {
    ASSERT_TRUE(lignes.Suivante(ligne, tropLongue));
    EXPECT_EQ(lignes.Numero(), attendue.numero);
    EXPECT_EQ(ligne.substr(0, attendue.debut.size()), attendue.debut);
    EXPECT_EQ(tropLongue, attendue.tropLongue);
  }
  EXPECT_FALSE(lignes.Suivante(ligne, tropLongue));
  EXPECT_EQ(lignes.Erreur(), 0);
}

TEST(Json, ObjetsIllisibles) {
  const struct {
    std::string ligne;
    const char* raison;
  } cas[] = {
      {"{\"a\":1", "caractère"},
      {"[1]", "objet"},
      {"12", "objet"},
      {"{\"a\":1} 2", "caractère"},
      {"{\"a\":1e400}", "limites"},
      {"{\"a\":\"\xE9\"}", "octet 7"},
      {"{\"a\":\"\xED\xA0\x80\"}", "octet 7"},
      {"{\"a\":\"\xC3", "octet 7"},
      {"{\"a\":" + std::string(400000, '[') + std::string(400000, ']') + "}", "niveaux"},
      {std::string("{\"a\":1}\0{", 9), "caractère"},
  };
  for (const auto& c : cas) {
    Json objet;
    const Refus refus = LitObjet(c.ligne, 7, objet);
    EXPECT_EQ(refus.numero, unsigned{ErrLigneIllisible}) << c.ligne.substr(0, 40);
    EXPECT_NE(VersUtf8(refus.texte).find(c.raison), std::string::npos) << VersUtf8(refus.texte);
  }
  Json objet;
  EXPECT_FALSE(LitObjet("{\"a\":\"[[[[[[[[[[[\\\"{\",\"b\":[{\"c\":\"\xE2\x82\xAC\"}]}", 1, objet));
}

TEST(EnregistrementJson, ChampsRefuses) {
  const struct {
    const char* json;
    unsigned numero;
  } cas[] = {
      {R"({"Compte":"512"})", 0},
      {R"({"Compte":"512","Solde":1})", ErrChampInconnu},
      {R"({"Compte":512})", ErrChampInvalide},
      {R"({"Compte":"12345678901"})", ErrTexteTropLong},
      {R"({"Code":"123456789"})", ErrTexteTropLong},
      {R"({"Designation":"日"})", ErrChampInvalide},
      {R"({"Designation":"a\u0000b"})", ErrChampInvalide},
      {R"({"Type":32768})", ErrChampInvalide},
      {R"({"Type":-32768})", 0},
      {R"({"Type":1.0})", ErrChampInvalide},
      {R"({"Type":18446744073709551615})", ErrChampInvalide},
      {R"({"PartPro":null})", ErrChampInvalide},
      {R"({"PartPro":"100"})", ErrChampInvalide},
      {R"({"PartPro":100})", 0},
  };
  for (const auto& c : cas) {
    Plan plan;
    EXPECT_EQ(LitEnregistrement(Json::parse(c.json), Champs(FichierComptes), &plan).numero, c.numero)
        << c.json;
  }
  Plan plan;
  ASSERT_FALSE(LitEnregistrement(Json::parse(R"({"Compte":"51 2a"})"), Champs(FichierComptes), &plan));
  EXPECT_EQ(LitTexte(plan.Compte), "512A000000");
}

TEST(EnregistrementJson, DatesHorsCalendrier) {
  const struct {
    const char* json;
    Date date;
    const char* sortie;
  } cas[] = {
      {R"("15/03/2003")", FaitDate(15, 3, 2003), R"("15/03/2003")"},
      {R"("1/3/2003")", FaitDate(1, 3, 2003), R"("01/03/2003")"},
      {R"("31/02/2003")", FaitDate(31, 2, 2003), R"("31/02/2003")"},
      {R"("")", 0, R"("")"},
      {"4294967295", 0xFFFFFFFF, "4294967295"},
  };
  for (const auto& c : cas) {
    Banque banque;
    ASSERT_FALSE(LitEnregistrement(Json::parse(std::string("{\"Date\":") + c.json + "}"),
                                   Champs(FichierBanques), &banque));
    const Date date = banque.Date;
    EXPECT_EQ(date, c.date);
    std::string sortie;
    AjouteEnregistrement(sortie, Champs(FichierBanques), &banque);
    EXPECT_NE(sortie.find(std::string("\"Date\":") + c.sortie + ","), std::string::npos) << sortie;
  }
  Banque banque;
  EXPECT_EQ(LitEnregistrement(Json::parse(R"({"Date":"hier"})"), Champs(FichierBanques), &banque).numero,
            unsigned{ErrChampInvalide});
}

}  // namespace
}  // namespace fenlor
