#include "core/parametres.h"

#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

class ParametresTest : public CabinetDeTest {
 protected:
  Parametres& Reglages() { return App().Reglages; }
  std::string Ini() const { return Dossier() + "/cabinet/fenlor.ini"; }
};

TEST_F(ParametresTest, LectureEtEcriture) {
  EXPECT_EQ(Reglages().LitIni("Activite", "Identification"), "");
  EXPECT_TRUE(Reglages().EcritIni("Activite", "Identification", "Dr Lœuil\r\n3, rue Haute"_w));
  EXPECT_NE(LitFichier(Ini()).find("Identification=Dr L\x9Cuil\\n3, rue Haute\r\n"), std::string::npos);
  EXPECT_EQ(Reglages().LitIni("ACTIVITE", "identification"), "Dr Lœuil\r\n3, rue Haute"_w);
}

TEST_F(ParametresTest, SectionDExercice) {
  EXPECT_FALSE(Reglages().EcritIniExercice("", "TVA", "Oui"));  // none is open
  EXPECT_TRUE(Reglages().EcritIniExercice("1999", "TVA", "oUI"));
  EXPECT_TRUE(Reglages().EcritIniExercice("1999", "Fin", "31/12/1999") && Reglages().IsTVA("1999"));
  EXPECT_FALSE(Reglages().IsTVA() || Reglages().IsEuro("1999"));
  EXPECT_EQ(Reglages().GetFinExercice("1999"), FaitDate(31, 12, 1999));
  EXPECT_EQ(Reglages().GetDebutExercice("1999"), 0u);

  ASSERT_TRUE(CreeExercice("2003", true, true));
  EXPECT_TRUE(Reglages().IsTVA() && Reglages().IsEuro());
  EXPECT_EQ(Reglages().GetDebutExercice(), FaitDate(1, 1, 2003));

  EXPECT_FALSE(Reglages().IsExerciceCloture());
  EXPECT_TRUE(Reglages().EcritIniExercice("", "Cloture", "xx"));  // any text closes it
  EXPECT_TRUE(Reglages().IsExerciceCloture());
}

TEST_F(ParametresTest, DefautsDesPredicats) {
  EXPECT_TRUE(Reglages().IsFinDeSession() && Reglages().IsSauverFenetres());
  EXPECT_EQ(Reglages().LitIni("Fenlor", "Sauver fenêtres"_w), "Oui");

  using Predicat = bool (Parametres::*)() const;
  const struct {
    const char* section;
    const char* cle;
    Predicat predicat;
  } cas[] = {
      {"Préférences", "Brouillon", &Parametres::IsBrouillon},
      {"Préférences", "Prévisualisation", &Parametres::IsPrevisualisation},
      {"Préférences", "Virgule", &Parametres::IsVirgule},
      {"Préférences", "Entrée", &Parametres::IsEntree},
      {"Préférences", "ModeDebug", &Parametres::IsModeDebug},
      {"Préférences", "Zéro dans boite de dialogue", &Parametres::ZeroDansBoite},
      {"Préférences", "Fin de session", &Parametres::IsFinDeSession},
      {"Rapprochement", "Especes", &Parametres::IsRapprochementEspeces},
  };
  for (const auto& c : cas) {
    const std::string section = DepuisUtf8(c.section).value(), cle = DepuisUtf8(c.cle).value();
    EXPECT_TRUE(Reglages().EcritIni(section, cle, "OUI"));
    EXPECT_TRUE((Reglages().*c.predicat)()) << c.cle;
    EXPECT_TRUE(Reglages().EcritIni(section, cle, "Oui!"));
    EXPECT_FALSE((Reglages().*c.predicat)()) << c.cle;
  }
}

TEST_F(ParametresTest, ValeursParticulieres) {
  EXPECT_EQ(Reglages().GetLimiteFranc(), FaitDate(18, 2, 2002));
  EXPECT_TRUE(Reglages().EcritIni("Préférences"_w, "LimiteFranc", "31/12/2001"));
  EXPECT_EQ(Reglages().GetLimiteFranc(), FaitDate(31, 12, 2001));
  EXPECT_TRUE(Reglages().EcritIni("Préférences"_w, "LimiteFranc", "demain"));
  EXPECT_EQ(Reglages().GetLimiteFranc(), FaitDate(18, 2, 2002));

  EXPECT_EQ(Reglages().SeparateurDecimal(), ',');
  EXPECT_TRUE(Magasin().QVSetRegString("HKEY_LOCAL_MACHINE", "", "intl", "sDecimal", ".x"));
  EXPECT_EQ(Reglages().SeparateurDecimal(), '.');
}

}  // namespace
}  // namespace fenlor::test
