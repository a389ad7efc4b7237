

#include "forms/journal/formesjournal.h"
#include "forms/master/dialogfraiskm.h"
#include "master/textes.h"

namespace fenlor::test {
namespace {

class FormeFraisKm : public FormesJournal {
 protected:
  void SetUp() override {
    FormesJournal::SetUp();
    const char* valeurs[][2] = {{"Borne Inf", "5000"},     {"Borne Sup", "20000"}, {"Coef Euro", "1065,50"},
                                {"€/Km 1", "0,5"},         {"€/Km 2", "0,3"},      {"€/Km 3", "0,4"},
                                {"Ancien relevé", "10000"}};
    for (const auto& [cle, valeur] : valeurs) Regle("FRAIS KILOMETRIQUES", DepuisUtf8(cle).value(), valeur);
  }
  static std::string Montant(QDialog& f) { return VersUtf8(Trouve<Lecture>(f, "remboursement").Valeur()); }
  std::string Exercice(const char* cle) { return App().Reglages.LitIniExercice({}, DepuisUtf8(cle).value()); }
};

TEST_F(FormeFraisKm, CalculeEtEnregistre) {
  CDialogFraisKm f(Ui);
  Montre(f);
  EXPECT_TRUE(Case(f, "distance").isChecked());
  EXPECT_EQ(Focus(f), "kms");
  EXPECT_FALSE(Champ(f, "ancien").isEnabled() || Case(f, "supprimer").isEnabled());
  EXPECT_EQ(Champ(f, "dernier").text(), u"10000"_s);
  EXPECT_EQ(Trouve<QLabel>(f, "libelle2").text(), u"De 5001 km et jusqu'à 20000 km :"_s);
  Clique(Case(f, "ok"));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3106});
  EXPECT_EQ(Focus(f), "kms");
  Tape(Champ(f, "kms"), u"20001"_s);
  EXPECT_EQ(Montant(f), "8000,40 €");
  EXPECT_FALSE(Trouve<Lecture>(f, "remboursement").toolTip().isEmpty());
  // Bounds and other rates count with the next computation.
  Tape(Champ(f, "borneSup"), u"25000"_s);
  EXPECT_EQ(Trouve<QLabel>(f, "libelle3").text(), u"Au-delà de 25000 km :"_s);
  Tape(Champ(f, "taux2"), u"0.31"_s);
  EXPECT_EQ(Montant(f), "8000,40 €");
  Tape(Champ(f, "taux1"), u"0,6"_s);
  EXPECT_EQ(Montant(f), "7265,31 €");
  Va(Champ(f, "fixe"));
  EXPECT_EQ(Champ(f, "taux1").text(), u"0,600"_s);

  Clique(Case(f, "compteur"));
  EXPECT_EQ(Focus(f), "dernier");
  EXPECT_FALSE(Champ(f, "kms").isEnabled());
  Tape(Champ(f, "dernier"), u"25000"_s);
  EXPECT_EQ(Champ(f, "kms").text(), u"15000"_s);
  Tape(Champ(f, "dernier"), u"7"_s);
  Va(Champ(f, "ancien"));
  EXPECT_EQ(Champ(f, "dernier").text(), u"10000"_s) << "never below the old one";
  Tape(Champ(f, "dernier"), u"25000"_s);
  Clique(Case(f, "ok"));
  EXPECT_TRUE(f.isVisible() && Case(f, "supprimer").isEnabled());
  EXPECT_EQ(Focus(f), "dernier");
  EXPECT_EQ(Exercice("Kms"), "15000");
  EXPECT_EQ(App().Reglages.LitIni("FRAIS KILOMETRIQUES", "Ancien relevé"_w), "25000");
  Boite.Oublie();
  Boite.Reponses = {RepOui};
  Clique(Case(f, "supprimer"));
  EXPECT_FALSE(Case(f, "supprimer").isEnabled());
  EXPECT_EQ(Champ(f, "ancien").text() + Champ(f, "dernier").text() + Champ(f, "kms").text(), QString());
  EXPECT_EQ(Focus(f), "dernier");
  EXPECT_EQ(Exercice("Frais kilométriques"), "Non");
}

TEST_F(FormeFraisKm, Clavier) {
  CDialogFraisKm f(Ui);
  Montre(f);
  EXPECT_THAT(OrdreTab(f), ElementsAre("compteur", "distance", "kms", "borneInf", "borneSup", "taux1", "fixe",
                                       "taux2", "taux3", "ok", "annuler"));
  const struct {
    const char *champ, *debut, *monte, *descend;
  } pas[] = {{"kms", "10", "11", "10"},
             {"borneSup", "999950", "999999", "999899"},
             {"taux2", "0,300", "0,301", "0,300"},
             {"taux1", "999,999", "999,999", "999,998"},
             {"borneInf", "50", "150", "50"}};
  for (const auto& p : pas) {
    QLineEdit& champ = Champ(f, p.champ);
    Tape(champ, QLatin1String(p.debut));
    QTest::keyClick(&champ, Qt::Key_Up);
    EXPECT_EQ(champ.text().toStdString(), p.monte);
    QTest::keyClick(&champ, Qt::Key_Down);
    EXPECT_EQ(champ.text().toStdString(), p.descend);
  }
  Tape(Champ(f, "taux1"), u"5000"_s);
  Va(Champ(f, "fixe"));
  EXPECT_EQ(Champ(f, "taux1").text(), u"5000"_s) << "not turned into its limit";
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3401});
  EXPECT_EQ(Focus(f), "taux1");
}

}  // namespace
}  // namespace fenlor::test
