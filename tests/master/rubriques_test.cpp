

#include "core/erreurs.h"
#include "master/rubriquesdetest.h"

namespace fenlor::test {
namespace {

using Rubriques = test::RubriquesDeTest;

TEST_F(Rubriques, CeQuiEstEcritSeRelit) {
  Installe();
  FicheRubrique fiche = Fiche("z-1", "  01 +\t02  - &AMORT ");
  fiche.ligne = "231";
  fiche.type = 2;
  fiche.montant = 99;
  ASSERT_EQ(Enregistre(fiche), "");
  const Rubrique rec = Lit("Z 1");
  EXPECT_EQ(+rec.TypeRubrique, 2);
  EXPECT_EQ(+rec.Ligne, 231);
  EXPECT_EQ(LitTexte(rec.Formule), "01 + 02 - &AMORT");
  EXPECT_EQ(+rec.ManuelEuro, 0) << "an automatic heading has no amount";
  fiche = Relit("Z 1");
  fiche.manuel = true;
  fiche.montant = 1000;
  fiche.code = "z";
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(+Lit("Z 1").TypeRubrique, -1);
  EXPECT_EQ(LitTexte(Lit("Z  ").Formule), "01 + 02 - &AMORT") << "a manual heading keeps its formula";
  EXPECT_EQ(+Lit("Z  ").ManuelEuro, 1000);
  EXPECT_NEAR(Lit("Z  ").ManuelFranc, 6559.57, 0.001);
  EXPECT_EQ(Relit("Z  ").montant, 1000);
}

TEST_F(Rubriques, UnTermeInconnuEstDitEtGarde) {
  Installe();
  const struct {
    const char *formule, *inconnus;  ///< nothing told: empty
  } cas[] = {{"01+&AMORT-&PVC+&MVC-&FRAISKM+&IMMO_HTVA", ""},
             {"01+QQ-&FRAISK+QQ+LONGUE", "QQ, &FRAISK, LONGUE"}};
  Position position = 0;
  for (const auto& c : cas) {
    FicheRubrique fiche = Fiche("Z1", c.formule);
    fiche.position = position;
    ASSERT_EQ(Enregistre(fiche), "") << "a warning, not a refusal";
    position = Relit("Z1 ").position;
    EXPECT_EQ(LitTexte(Lit("Z1 ").Formule), c.formule);
    const Refus avis = AvisFiche(App(), fiche);
    EXPECT_EQ(avis.numero, *c.inconnus ? 3403u : 0u) << c.formule;
    EXPECT_NE(avis.texte.find(c.inconnus), std::string::npos);
  }
}

TEST_F(Rubriques, MontantDUnExerciceEnFranc) {
  Installe("2000", false);
  FicheRubrique fiche = Fiche("Z");
  fiche.manuel = true;
  fiche.montant = 6559.57;
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(+Lit("Z  ").ManuelFranc, 6559.57);
  EXPECT_NEAR(Lit("Z  ").ManuelEuro, 1000, 0.001);
}

TEST_F(Rubriques, RefusDansLeurOrdre) {
  Installe();
  ASSERT_EQ(Enregistre(Fiche("ZB")), "");
  const std::string longue(128, '1');
  const struct {
    FicheRubrique fiche;
    const char* refus;
  } cas[] = {
      {Fiche("0123", longue), "3206 code"},
      {Fiche("", longue), "3206 formule"},
      {Fiche("", longue.substr(1)), "3061 code"},
      {Fiche("Z1", "", "1000"), "3402 ligne"},
      {Fiche("", "", "12a"), "3402 ligne"},
      {Fiche("", "", "999"), "3061 code"},
      {Fiche("é"_w), "3061 code"},
      {Fiche("ZB", "ZB"), "3058 code"},
      {Fiche("zb"), "3058 code"},
      {Fiche("X", "01+X"), "3260 formule"},
  };
  for (const auto& c : cas) EXPECT_EQ(Enregistre(c.fiche), c.refus) << c.fiche.code;
  // Leaving the field tells no more than that the code is taken.
  EXPECT_EQ(ControleCodeRubrique(App(), Fiche("zb")).numero, 3058u);
  for (const char* libre : {"", "--", "Z", "ZBC"})
    EXPECT_FALSE(ControleCodeRubrique(App(), Fiche(libre))) << libre;
  EXPECT_FALSE(ControleCodeRubrique(App(), Relit("ZB ")));
}

TEST_F(Rubriques, UneBoucleEstNommeeDoncRefusee) {
  Installe();
  for (const FicheRubrique& fiche : {Fiche("X7", "X4"), Fiche("X5"), Fiche("X4", "01-X5"), Fiche("X2", "X7")})
    ASSERT_EQ(Enregistre(fiche), "");
  FicheRubrique cinq = Relit("X5 ");
  cinq.formule = "X7+&PVC";
  EXPECT_EQ(Enregistre(cinq), "3260 formule");
  EXPECT_EQ(m_refus.texte, "La formule de la rubrique X5 revient sur elle-même : X5 > X7 > X4 > X5"_w);
  EXPECT_EQ(LitTexte(Lit("X5 ").Formule), "");
  // A manual amount stops the way.
  cinq.manuel = true;
  EXPECT_EQ(Enregistre(cinq), "");
  // The code that a heading leaves plays no part any more, the one it takes does.
  FicheRubrique sept = Relit("X7 ");
  sept.code = "X8";
  sept.formule = "X7+X2";
  EXPECT_EQ(Enregistre(sept), "");
  sept = Relit("X8 ");
  sept.code = "X7";
  EXPECT_EQ(Enregistre(sept), "3260 formule");
}

TEST_F(Rubriques, LesComptesNommentLaRubrique) {
  Installe();
  ASSERT_EQ(Enregistre(Fiche("Z1")), "");
  Affecte("706", "z1");
  Affecte("6132", "z1");
  Affecte("758", "Z10");
  std::vector<std::string> textes;
  for (const CompteAssocie& c : ComptesAssocies(App(), "Z1")) textes.push_back(c.court + ' ' + c.designation);
  EXPECT_THAT(textes, ElementsAre("6132 Loyer", "706 Honoraires"));
  EXPECT_THAT(ComptesAssocies(App(), ""), IsEmpty()) << "not the accounts without a heading";
  EXPECT_EQ(SupprimeFiche(App(), Relit("Z1 ")).numero, 3345u);
  FicheRubrique fiche = Relit("Z1 ");
  fiche.code = "Z2";
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(LitTexte(LitCompte("706").Rubrique), "Z1 ") << "a new code leaves the accounts alone";
  Boite.Oublie();
  Boite.Reponses = {RepNon, RepOui};
  EXPECT_EQ(SupprimeFiche(App(), Relit("Z2 ")).numero, 3346u);
  EXPECT_EQ(Boite.Questions.at(0).texte, "Suppression de la rubrique Z2 ?");
  EXPECT_FALSE(SupprimeFiche(App(), Relit("Z2 ")));
  EXPECT_EQ(+Lit("Z2 ").TypeRubrique, -1);
}

}  // namespace
}  // namespace fenlor::test
