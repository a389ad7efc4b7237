#include "master/fraiskm.h"

#include "core/btfiles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "journal/cabinetmedical.h"
#include "master/textes.h"
#include "outils/systemefautif.h"

namespace fenlor::test {
namespace {

constexpr const char* Commune = "FRAIS KILOMETRIQUES";

class FraisKm : public DisqueDeTest, public test::CabinetMedical {
 protected:
  FraisKm() : CabinetMedical(test::Cles::Memoire, 256u << 10, &Disque) {}
  void SetUp() override { Installe(); }

  std::string Cle(const std::string& section, std::string_view cle) {
    return App().Reglages.LitIni(section, DepuisUtf8(std::string(cle)).value());
  }
  FicheFraisKm Distance(const std::string& kms) {
    FicheFraisKm fiche = LitFraisKm(App());  // bounds of 5000 and 20000
    fiche.fixe = "1065,50";
    fiche.taux = {"0,5", "0,3", "0,4"};
    fiche.kms = kms;
    return fiche;
  }
  FicheFraisKm Releves(const std::string& ancien, const std::string& dernier) {
    FicheFraisKm fiche = Distance("7");
    fiche.compteur = true;
    fiche.ancien = ancien;
    fiche.dernier = dernier;
    return fiche;
  }
  unsigned Enregistre(FicheFraisKm fiche) { return EnregistreFraisKm(App(), fiche, Supprimees).numero; }
  bool Supprimees = false;
  /// The account counts in a heading that the one with the variable adds up.
  void MetDansLaRubrique(std::string_view compte) {
    ChangeCompte(compte, [](Plan& rec) { PoseTexte(rec.Rubrique, NormaliseRubrique("23A")); });
  }
};

TEST_F(FraisKm, LesTranches) {
  const struct {
    const char* kms;
    f64 montant;
  } cas[] = {{"0", 0},     {"5000", 2500}, {"5001", 1500.3 + 1065}, {"20000", 6000 + 1065}, {"20001", 8000.4},
             {"mille", 0}, {"", 0}};
  for (const auto& c : cas) EXPECT_DOUBLE_EQ(CalculFraisKm(App(), Distance(c.kms)), c.montant) << c.kms;
  const auto libelles = LibellesTauxKm(App(), Distance("0"));
  EXPECT_THAT(libelles, ElementsAre("Jusqu'à 5000 km :"_w, "De 5001 km et jusqu'à 20000 km :"_w,
                                    "Au-delà de 20000 km :"_w));
  EXPECT_EQ(FormatTauxKm(App(), "0.4567", 0), "0,457");
  EXPECT_EQ(FormatTauxKm(App(), "1000", 0), "999,999");
  EXPECT_EQ(FormatTauxKm(App(), "1000", 1), "1000,000");
  EXPECT_EQ(FraisKmAutreMonnaie(App(), 100), "655,96 F");
}

TEST_F(FraisKm, UneDistance) {
  EXPECT_THAT(LitFraisKm(App()).taux, ElementsAre("0,636", "0,357", "0,427")) << "of the common section";
  EXPECT_EQ(FraisKilometriques(App()), 0) << "nothing is recorded";
  FicheFraisKm fiche = Distance("12000.9");
  ASSERT_FALSE(EnregistreFraisKm(App(), fiche, Supprimees));
  EXPECT_TRUE(fiche.enregistre);
  EXPECT_EQ(fiche.kms, "12000");
  EXPECT_TRUE(App().Reglages.IsFraisKm());
  EXPECT_DOUBLE_EQ(FraisKilometriques(App()), 12000 * 0.3 + 1065);
  EXPECT_DOUBLE_EQ(FraisKilometriques(App(), false), 12000 * 2.342 + 9150) << "the Franc scale stays";
  for (const char* section : {"2003", Commune}) {
    EXPECT_EQ(Cle(section, "Compteur"), "Non");
    EXPECT_EQ(Cle(section, "Coef Euro"), "1065,50");
    EXPECT_EQ(Cle(section, "€/Km 1"), "0,500");
    EXPECT_EQ(Cle(section, "Ancien relevé"), "") << "no readings are written";
  }
  EXPECT_EQ(Cle("2003", "Frs/Km 1"), "");
  EXPECT_EQ(Cle(Commune, "Kms"), "");
  // A zero stays a zero when the common section changes; a blank does not.
  Boite.Defaut = RepOui;
  fiche.fixe = "";
  ASSERT_EQ(Enregistre(fiche), 0u);
  Regle(Commune, "Coef Euro", "9000");
  EXPECT_EQ(LitFraisKm(App()).fixe, "0");
  Regle("2003", "Coef Euro", "");
  EXPECT_EQ(LitFraisKm(App()).fixe, "9000");
  EXPECT_DOUBLE_EQ(FraisKilometriques(App()), 12000 * 0.3 + 9000);
  // What is no number counts as blank, and where nothing stands behind it, as what new books begin with.
  for (const char* section : {"2003", Commune}) {
    Regle(section, "Borne Inf", "abc");
    EXPECT_EQ(LitFraisKm(App()).borneInf, "5000") << section;
  }
}

TEST_F(FraisKm, LeCompteurPasseALExerciceSuivant) {
  FicheFraisKm fiche = Releves("10000", "25000");
  ASSERT_FALSE(EnregistreFraisKm(App(), fiche, Supprimees));
  EXPECT_EQ(fiche.kms, "15000");
  EXPECT_DOUBLE_EQ(FraisKilometriques(App()), 15000 * 0.3 + 1065);
  EXPECT_EQ(LitFraisKm(App()).dernier, "25000");
  ASSERT_TRUE(CreeExercice("2004"));
  fiche = LitFraisKm(App());
  EXPECT_TRUE(fiche.compteur && !fiche.enregistre);
  EXPECT_EQ(fiche.ancien + ' ' + fiche.dernier + ' ' + fiche.kms, "25000 25000 0");
  fiche.ancien = "30000";
  ChangeReleve(App(), fiche);
  EXPECT_EQ(fiche.dernier + ' ' + fiche.kms, "30000 0");
  EXPECT_EQ(Enregistre(fiche), 3106u);
  // Recorded by distance: the old reading is the common one, the last follows it.
  fiche.compteur = false;
  fiche.kms = "100";
  ASSERT_EQ(Enregistre(fiche), 0u);
  EXPECT_EQ(LitFraisKm(App()).dernier, "25000");
}

TEST_F(FraisKm, LesRefusEtLesQuestions) {
  EXPECT_EQ(Enregistre(Distance("0")), 3106u);
  FicheFraisKm petite = Distance("1");
  petite.taux[0] = "0,004";
  EXPECT_EQ(Enregistre(petite), 3106u) << "the field shows no amount";
  ASSERT_EQ(Enregistre(Distance("1000")), 0u);
  EXPECT_THAT(Boite.Questions, IsEmpty());
  EXPECT_EQ(Enregistre(Distance("2000")), QuestionRemplaceFraisKm);
  EXPECT_EQ(Cle("2003", "Kms"), "1000");
  Boite.Reponses = {RepOui};
  EXPECT_EQ(Enregistre(Distance("2000")), 0u);
  EXPECT_EQ(Cle("2003", "Kms"), "2000");

  Regle("2003", "Cloture", "01/03/2004");
  FicheFraisKm fiche = LitFraisKm(App());
  EXPECT_EQ(Enregistre(fiche), 3056u);
  EXPECT_EQ(SupprimeFraisKm(App(), fiche).numero, 3056u);
  EXPECT_TRUE(App().Reglages.IsFraisKm());
}

TEST_F(FraisKm, LesEcrituresQueLeMontantRemplace) {
  MetDansLaRubrique("6132");
  const u32 premiere = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 100));
  CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 50));
  const u32 autre = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6063", 119.6));
  Boite.Oublie();

  FicheFraisKm fiche = Distance("1000");
  EXPECT_FALSE(EnregistreFraisKm(App(), fiche, Supprimees)) << "declined, saved all the same";
  EXPECT_FALSE(Supprimees);
  EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{QuestionEcrituresVariable});
  EXPECT_THAT(Boite.Questions.at(0).texte, HasSubstr("2 écriture(s)"_w));
  EXPECT_THAT(Boite.Questions.at(0).texte, HasSubstr("'&FRAISKM'"));
  EXPECT_EQ(Lignes(premiere).size(), 2u);

  Boite.Reponses = {RepOui, RepOui};
  EXPECT_FALSE(EnregistreFraisKm(App(), fiche, Supprimees));
  EXPECT_TRUE(Supprimees);
  EXPECT_THAT(Lignes(premiere), IsEmpty());
  EXPECT_FALSE(Lignes(autre).empty());
  EXPECT_EQ(+LitCompte(test::Long("6132")).DebitEuro, 0);
}

TEST_F(FraisKm, UnDisquePleinGardeLesEcritures) {
  MetDansLaRubrique("6132");
  const u32 mouvement = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 100));
  Boite.Oublie();
  Boite.Reponses = {RepOui};
  Disque.SurChemin("fenlor.ini");
  Disque.Programme(1, ENOSPC, SystemeFautif::Renommage, false);
  FicheFraisKm fiche = Distance("1000");
  EXPECT_EQ(EnregistreFraisKm(App(), fiche, Supprimees).numero, ErrReglages);
  Disque.Repare();
  EXPECT_FALSE(Supprimees || fiche.enregistre || App().Reglages.IsFraisKm());
  EXPECT_EQ(Lignes(mouvement).size(), 2u);
}

TEST_F(FraisKm, LaSuppression) {
  FicheFraisKm fiche = Releves("10000", "12000");
  EXPECT_FALSE(SupprimeFraisKm(App(), fiche)) << "nothing to do";
  EXPECT_THAT(Boite.Questions, IsEmpty());
  ASSERT_FALSE(EnregistreFraisKm(App(), fiche, Supprimees));
  EXPECT_EQ(SupprimeFraisKm(App(), fiche).numero, QuestionSupprimeFraisKm);
  EXPECT_TRUE(App().Reglages.IsFraisKm());
  Boite.Reponses = {RepOui};
  ASSERT_FALSE(SupprimeFraisKm(App(), fiche));
  EXPECT_EQ(fiche.ancien + fiche.dernier + fiche.kms, "");
  EXPECT_EQ(Cle("2003", "Frais kilométriques"), "Non");
  EXPECT_EQ(Cle("2003", "Dernier relevé") + Cle("2003", "Kms") + Cle(Commune, "Ancien relevé"), "");
  EXPECT_EQ(FraisKilometriques(App()), 0);
}

TEST_F(FraisKm, UnExerciceEnFranc) {
  ASSERT_TRUE(CreeExercice("2000", false));
  FicheFraisKm fiche = LitFraisKm(App());
  EXPECT_EQ(fiche.fixe, "9150");
  fiche.kms = "1000";
  fiche.taux[0] = "3";
  ASSERT_FALSE(EnregistreFraisKm(App(), fiche, Supprimees));
  EXPECT_EQ(Cle("2000", "Frs/Km 1") + ' ' + Cle(Commune, "Frs/Km 1"), "3,000 3,000");
  EXPECT_DOUBLE_EQ(FraisKilometriques(App()), 3000);
  EXPECT_DOUBLE_EQ(FraisKilometriques(App(), true), 636);
}

}  // namespace
}  // namespace fenlor::test
