

#include "forms/master/commandesliste.h"
#include "forms/master/dialogrubrique.h"
#include "forms/master/rubriqueview.h"
#include "journal/cabinetmedical.h"
#include "master/comptes.h"
#include "outils/uidetest.h"
#include "ui/textes.h"

namespace fenlor::test {
namespace {

class RubriquesForms : public UiDeTest {
 protected:
  /// An exercice whose headings are these three: 01 receipts, 04 its formula, 07 by hand.
  void SetUp() override {
    ASSERT_TRUE(CreeExercice("2003"));
    CRubriques rubriques(App(), App().PathExercice);
    ASSERT_TRUE(rubriques.OpenFile());
    for (const Position position : PositionsDe(App(), rubriques)) ASSERT_TRUE(rubriques.Delete(position));
    FicheRubrique fiche;
    for (const char* code : {"01", "04", "07"}) {
      fiche.position = 0;
      fiche.code = code;
      fiche.designation = "Rubrique " + fiche.code;
      fiche.formule = fiche.code == "04" ? "01-07" : "";
      fiche.manuel = fiche.code == "07";
      fiche.montant = 1000;
      ASSERT_FALSE(EnregistreFiche(App(), fiche));
    }
    ChargePreferences(Dessin, App(), QApplication::palette());
    m_vue = std::make_unique<CRubriqueView>(Ui);
    m_vue->Charge();
    m_vue->show();
  }
  CRubriqueView& Vue() { return *m_vue; }
  ModeleListe& Modele() { return m_vue->Table().Modele(); }
  /// Rows as they are shown, "code|designation".
  std::vector<std::string> Lignes() {
    std::vector<std::string> lignes;
    for (const QString& rangee : Rangs(m_vue->Table(), 2)) lignes.push_back(rangee.toStdString());
    return lignes;
  }
  /// Runs the form of the row that the command opens.
  void Ouvre(unsigned commande, int ligne, const std::function<void(QDialog&)>& geste) {
    Vue().Table().SelectionneLigne(ligne);
    robot.Attend("DialogRubrique", geste);
    Vue().Execute(commande);
  }
  FicheRubrique Relit(int ligne) {
    FicheRubrique fiche;
    EXPECT_FALSE(LitFiche(App(), static_cast<Position>(Modele().DonneeDe(ligne)), fiche));
    return fiche;
  }
  static void Radio(QDialog& forme, const char* nom) {
    Clique(Trouve<QRadioButton>(forme, nom));
    QApplication::processEvents();
  }
  static void Ferme(QDialog& forme) { Clique(Trouve<QPushButton>(forme, "annuler")); }

 private:
  std::unique_ptr<CRubriqueView> m_vue;
};

TEST_F(RubriquesForms, DeuxRubriquesALaSuiteAuClavier) {
  Ouvre(CmdAjouter, 0, [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Ajout d'une rubrique fiscale"_s);
    test::VerifieFormulaire(f);
    const auto touche = [](Qt::Key touche) { QTest::keyClick(QApplication::focusWidget(), touche); };
    for (const QString& code : {u"08"_s, u"a-6"_s}) {
      for (const QString& texte : {code, u"Nouvelle"_s, u"7"_s}) {
        QTest::keyClicks(QApplication::focusWidget(), texte);
        touche(Qt::Key_Tab);
      }
      if (Trouve<QRadioButton>(f, "recette").isChecked())
        for (int i = 0; i < 3; ++i) touche(Qt::Key_Right);
      EXPECT_TRUE(Trouve<QRadioButton>(f, "taxe").hasFocus());
      for (int i = 0; i < 2; ++i) touche(Qt::Key_Tab);
      QTest::keyClicks(QApplication::focusWidget(), u" 01  + 07 "_s);
      touche(Qt::Key_Return);
      for (const char* vide : {"code", "designation", "ligne", "formule"})
        EXPECT_EQ(Champ(f, vide).text(), QString()) << vide;
    }
    Ferme(f);
  });
  EXPECT_THAT(Lignes(), ElementsAre("01|Rubrique 01", "04|Rubrique 04", "07|Rubrique 07", "08|Nouvelle",
                                    "A 6|Nouvelle", "|"));
  const FicheRubrique fiche = Relit(4);
  EXPECT_EQ(fiche.formule + '/' + fiche.ligne, "01 + 07/7");
  EXPECT_EQ(fiche.type, 3);
  EXPECT_EQ(Vue().Table().LigneChoisie(), 4) << "the last one that was added";
}

TEST_F(RubriquesForms, LesModesDeCalcul) {
  Ouvre(CmdModifier, 1, [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Rubrique : 04"_s);
    QLineEdit &formule = Champ(f, "formule"), &montant = Champ(f, "montant");
    EXPECT_EQ(formule.text(), u"01-07"_s);
    Tape(formule, u" 01  -&AMORT"_s);
    Radio(f, "manuel");
    EXPECT_TRUE(formule.text().isEmpty() && !formule.isEnabled() && montant.hasFocus());
    Tape(montant, u"12,5"_s);
    Radio(f, "automatique");
    EXPECT_TRUE(montant.text().isEmpty() && !montant.isEnabled() && formule.hasFocus());
    EXPECT_EQ(formule.text(), u"01 -&AMORT"_s) << "as last typed";
    test::Va(Trouve<QRadioButton>(f, "automatique"));
    QTest::keyClick(f.focusWidget(), Qt::Key_Down);
    QApplication::processEvents();
    EXPECT_TRUE(montant.hasFocus()) << "chosen by an arrow key";
    EXPECT_EQ(montant.text(), u"12,50"_s);
    Tape(montant, u"12a"_s);
    Radio(f, "automatique");
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrMontantIllisible});
    EXPECT_TRUE(Trouve<QRadioButton>(f, "manuel").isChecked() && montant.hasFocus());
    EXPECT_EQ(montant.text(), u"12a"_s) << "what cannot be read is not dropped";
    Tape(montant, u"250"_s);
    test::VerifieFormulaire(f);
    Ok(f);
  });
  EXPECT_TRUE(Relit(1).manuel);
  EXPECT_EQ(Relit(1).montant, 250);
  EXPECT_EQ(Relit(1).formule, "01 -&AMORT");
}

TEST_F(RubriquesForms, UnRefusASonChamp) {
  Ouvre(CmdModifier, 0, [&](QDialog& f) {
    Tape(Champ(f, "code"), u"07"_s);
    test::Va(Champ(f, "designation"));
    EXPECT_TRUE(Champ(f, "code").hasFocus()) << "left with the code of another";
    Tape(Champ(f, "code"), u"01"_s);
    Tape(Champ(f, "formule"), u"04"_s);
    Ok(f);
    EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3058, 3260}));
    EXPECT_TRUE(Champ(f, "formule").hasFocus());
    Ferme(f);
  });
  EXPECT_EQ(Relit(0).formule, "");
}

TEST_F(RubriquesForms, SuppressionEtComptesAssocies) {
  FicheCompte compte;
  compte.code = "FORFAIT";
  compte.compte = "7099";
  compte.designation = "Forfaits | soins";
  compte.rubrique = "07";
  ASSERT_FALSE(EnregistreFiche(App(), compte));
  Ouvre(CmdModifier, 2, [&](QDialog& f) {
    EXPECT_EQ(Trouve<CZNListCtrl>(f, "comptes").Modele().Champ(0, 1), u"Forfaits | soins"_s);
    Ferme(f);
  });
  Boite.Oublie();  // the heading of the fixture names one that does not exist
  Boite.Reponses = {RepOui};
  Vue().Table().SelectionneLigne(1);
  Vue().Execute(CmdSupprimer);
  EXPECT_THAT(Lignes(), ElementsAre("01|Rubrique 01", "07|Rubrique 07", "|"));
}

}  // namespace
}  // namespace fenlor::test
