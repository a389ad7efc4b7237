#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include "journal/cabinetmedical.h"
#include "master/forms/dialogrubrique.h"
#include "master/forms/rubriqueview.h"
#include "outils/uidetest.h"
#include "outils/verifieformulaire.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Bouton;
using test::Clique;
using test::Tape;
using test::Trouve;
using ::testing::ElementsAre;

constexpr unsigned Ajouter = 1005, Modifier = 1006, Supprimer = 1007;

class RubriquesForms : public test::UiDeTest {
 protected:
  /// An exercice whose headings are these three: 01 receipts, 04 its formula, 07 by hand.
  void SetUp() override {
    ASSERT_TRUE(CreeExercice("2003"));
    CRubriques rubriques(App(), App().PathExercice);
    ASSERT_TRUE(rubriques.OpenFile());
    for (const Position position : PositionsRubriques(App())) ASSERT_TRUE(rubriques.Delete(position));
    FicheRubrique fiche;
    for (const char* code : {"01", "04", "07"}) {
      fiche.position = 0;
      fiche.code = code;
      fiche.designation = "Rubrique " + fiche.code;
      fiche.formule = fiche.code == "04" ? "01-07" : "";
      fiche.manuel = fiche.code == "07";
      fiche.montant = 1000;
      ASSERT_TRUE(EnregistreRubrique(App(), fiche));
    }
    ChargePreferences(Dessin, App(), QApplication::palette());
    m_ui.emplace(Ui());
    m_vue = std::make_unique<CRubriqueView>(*m_ui);
    m_vue->Charge();
    m_vue->show();
  }
  CRubriqueView& Vue() { return *m_vue; }
  ModeleListe& Modele() { return m_vue->Table().Modele(); }
  /// Rows as they are shown, "code designation".
  std::vector<std::string> Lignes() {
    std::vector<std::string> lignes;
    for (int i = 0; i < Modele().NbLignes(); ++i)
      lignes.push_back((Modele().Champ(i, 0) + u' ' + Modele().Champ(i, 1)).toStdString());
    return lignes;
  }
  /// Runs the form of the row that the command opens.
  void Ouvre(unsigned commande, int ligne, const std::function<void(QDialog&)>& geste) {
    Vue().Table().SelectionneLigne(ligne);
    test::Robot robot;
    robot.Attend("DialogRubrique", geste);
    Vue().Execute(commande);
  }
  FicheRubrique Relit(int ligne) {
    FicheRubrique fiche;
    EXPECT_TRUE(LitFicheRubrique(App(), static_cast<Position>(Modele().DonneeDe(ligne)), fiche));
    return fiche;
  }
  static QLineEdit& Champ(QDialog& forme, const char* nom) { return Trouve<QLineEdit>(forme, nom); }
  static void Radio(QDialog& forme, const char* nom) { Clique(Trouve<QRadioButton>(forme, nom)); }
  static void Ok(QDialog& forme) { Clique(Trouve<QPushButton>(forme, "ok")); }
  static void Ferme(QDialog& forme) { Clique(Trouve<QPushButton>(forme, "annuler")); }

 private:
  std::optional<ContexteUi> m_ui;
  std::unique_ptr<CRubriqueView> m_vue;
};

TEST_F(RubriquesForms, LaFenetre) {
  EXPECT_EQ(Vue().PageAide(), u"FenetreRubriquesDeLEtatFiscal"_s);
  EXPECT_EQ(Vue().Bit(), u32{FenRubriques});
  EXPECT_THAT(Lignes(), ElementsAre("01 Rubrique 01", "04 Rubrique 04", "07 Rubrique 07", " "));
  FicheRubrique renommee = Relit(2);
  renommee.designation = "actes";
  ASSERT_TRUE(EnregistreRubrique(App(), renommee));
  Vue().Actualise();
  Vue().Table().TrieParColonne(1);
  EXPECT_THAT(Lignes(), ElementsAre("07 actes", "01 Rubrique 01", "04 Rubrique 04", " "));
  Vue().Table().SelectionneLigne(3);
  for (const unsigned commande : {Modifier, Supprimer}) EXPECT_FALSE(Vue().Disponible(commande));
  EXPECT_TRUE(Vue().Disponible(Ajouter));
}

TEST_F(RubriquesForms, TroisRubriquesALaSuiteAuClavier) {
  Ouvre(Ajouter, 0, [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Ajout d'une rubrique fiscale"_s);
    EXPECT_TRUE(Trouve<QRadioButton>(f, "recette").isChecked());
    test::VerifieFormulaire(f);
    for (const QString& code : {u"08"_s, u"09"_s, u"a-6"_s}) {
      ASSERT_TRUE(Champ(f, "code").hasFocus()) << code.toStdString();
      QTest::keyClicks(QApplication::focusWidget(), code);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      QTest::keyClicks(QApplication::focusWidget(), u"Nouvelle"_s);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      QTest::keyClicks(QApplication::focusWidget(), u"7"_s);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      if (Trouve<QRadioButton>(f, "recette").isChecked())
        for (int i = 0; i < 3; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
      EXPECT_TRUE(Trouve<QRadioButton>(f, "taxe").hasFocus());
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      EXPECT_TRUE(Champ(f, "formule").hasFocus());
      QTest::keyClicks(QApplication::focusWidget(), u" 01  + 07 "_s);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
      for (const char* vide : {"code", "designation", "ligne", "formule"})
        EXPECT_EQ(Champ(f, vide).text(), QString()) << vide;
    }
    Ferme(f);
  });
  EXPECT_TRUE(Boite.Erreurs.empty());
  EXPECT_THAT(Lignes(), ElementsAre("01 Rubrique 01", "04 Rubrique 04", "07 Rubrique 07", "08 Nouvelle",
                                    "09 Nouvelle", "A 6 Nouvelle", " "));
  const FicheRubrique fiche = Relit(5);
  EXPECT_EQ(fiche.formule, "01 + 07");
  EXPECT_EQ(fiche.ligne, "7");
  EXPECT_EQ(fiche.type, 3);
  EXPECT_EQ(Vue().Table().LigneChoisie(), 5) << "the last one that was added";
}

TEST_F(RubriquesForms, LesModesDeCalcul) {
  Ouvre(Modifier, 1, [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Rubrique : 04"_s);
    QLineEdit &formule = Champ(f, "formule"), &montant = Champ(f, "montant");
    EXPECT_EQ(formule.text(), u"01-07"_s);
    EXPECT_FALSE(montant.isEnabled());
    Tape(formule, u" 01  -&AMORT"_s);
    Radio(f, "manuel");
    EXPECT_FALSE(formule.isEnabled());
    EXPECT_EQ(formule.text(), QString());
    EXPECT_TRUE(montant.hasFocus());
    Tape(montant, u"12,5"_s);
    Radio(f, "automatique");
    EXPECT_FALSE(montant.isEnabled());
    EXPECT_EQ(montant.text(), QString());
    EXPECT_EQ(formule.text(), u"01 -&AMORT"_s) << "as last typed";
    EXPECT_TRUE(formule.hasFocus());
    Radio(f, "manuel");
    EXPECT_EQ(montant.text(), u"12,50"_s);
    test::Va(Trouve<QRadioButton>(f, "manuel"));
    QSignalSpy foyers(qApp, &QApplication::focusChanged);
    for (const char* nom : {"automatique", "manuel"}) {
      QTest::keyClick(f.focusWidget(), *nom == 'a' ? Qt::Key_Up : Qt::Key_Down);
      EXPECT_TRUE(Trouve<QRadioButton>(f, nom).isChecked());
      EXPECT_EQ(f.focusWidget()->objectName(), QLatin1String(nom)) << "the arrows only choose";
    }
    EXPECT_EQ(foyers.size(), 2) << "and do not pass through the fields";
    Tape(montant, u"250"_s);
    test::VerifieFormulaire(f);
    Ok(f);
  });
  EXPECT_TRUE(Relit(1).manuel);
  EXPECT_EQ(Relit(1).montant, 250);
  EXPECT_EQ(Relit(1).formule, "01 -&AMORT");
  Ouvre(Modifier, 2, [&](QDialog& f) {
    EXPECT_EQ(Champ(f, "montant").text(), u"1000"_s) << "no decimals that say nothing";
    EXPECT_FALSE(Champ(f, "formule").isEnabled());
    Ferme(f);
  });
}

TEST_F(RubriquesForms, CodeDejaPrisEtBoucle) {
  Ouvre(Modifier, 0, [&](QDialog& f) {
    Tape(Champ(f, "code"), u"07"_s);
    test::Va(Champ(f, "designation"));
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3058});
    EXPECT_TRUE(Champ(f, "code").hasFocus());
    EXPECT_EQ(Champ(f, "code").selectedText(), u"07"_s);
    Tape(Champ(f, "code"), u""_s);
    Ok(f);
    EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3058, 3061}));
    Tape(Champ(f, "code"), u"01"_s);
    Tape(Champ(f, "formule"), u"04"_s);
    Ok(f);
    ASSERT_EQ(Boite.Erreurs.size(), 3u);
    EXPECT_EQ(Boite.Erreurs[2].texte, "La formule de la rubrique 01 revient sur elle-même : 01 > 04 > 01"_w);
    EXPECT_TRUE(Champ(f, "formule").hasFocus());
    Ferme(f);
  });
  EXPECT_EQ(Relit(0).formule, "");
}

TEST_F(RubriquesForms, SuivantEnregistreAuPassage) {
  Ouvre(Modifier, 0, [&](QDialog& f) {
    const auto bouton = [&](const char* nom) -> QPushButton& { return Trouve<QPushButton>(f, nom); };
    EXPECT_FALSE(bouton("precedent").isEnabled());
    Clique(bouton("suivant"));
    EXPECT_EQ(f.windowTitle(), u"Rubrique : 04"_s);
    Tape(Champ(f, "designation"), u"Autre"_s);
    Clique(bouton("suivant"));
    EXPECT_EQ(Champ(f, "code").text(), u"07"_s);
    EXPECT_FALSE(bouton("suivant").isEnabled()) << "the empty row is no heading";
    EXPECT_EQ(Vue().Table().LigneChoisie(), 2);
    Clique(bouton("precedent"));
    EXPECT_EQ(Champ(f, "designation").text(), u"Autre"_s);
    Ferme(f);
  });
  EXPECT_THAT(Lignes(), ElementsAre("01 Rubrique 01", "04 Autre", "07 Rubrique 07", " "));
  EXPECT_EQ(Vue().Table().LigneChoisie(), 1);
}

TEST_F(RubriquesForms, SuppressionEtComptesAssocies) {
  ASSERT_TRUE(PoseCompte("7066", Recette, "FORFAIT", "Forfaits | soins"));
  CPlan plan(App(), App().PathExercice);
  PoseTexte(plan.Rec->Compte, test::Long("7066"));
  ASSERT_TRUE(plan.OpenFile() && plan.Find(0));
  const Plan compte = *plan.Rec;
  ASSERT_TRUE(plan.Delete(plan.GetPos()));
  *plan.Rec = compte;
  PoseTexte(plan.Rec->Rubrique, "01 ");
  ASSERT_TRUE(plan.Add());
  Ouvre(Modifier, 0, [&](QDialog& f) {
    auto& liste = Trouve<CZNListCtrl>(f, "comptes");
    EXPECT_TRUE(liste.isEnabled());
    int derniere = 0;
    while (derniere < liste.Modele().NbLignes() && liste.Modele().Champ(derniere, 0) != u"7066"_s) ++derniere;
    EXPECT_EQ(liste.Modele().Champ(derniere, 1), u"Forfaits | soins"_s);
    Ferme(f);
  });
  Boite.Oublie();  // the heading of the fixture names one that does not exist
  Vue().Table().SelectionneLigne(0);
  Vue().Execute(Supprimer);
  EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{3345});
  EXPECT_EQ(Modele().NbLignes(), 4);
  Boite.Reponses = {RepOui};
  Vue().Table().SelectionneLigne(1);
  Vue().Execute(Supprimer);
  EXPECT_THAT(Lignes(), ElementsAre("01 Rubrique 01", "07 Rubrique 07", " "));
}

TEST_F(RubriquesForms, ExerciceClotureSeLit) {
  ASSERT_TRUE(App().Reglages.EcritIniExercice({}, "Cloture", "31/12/2003"));
  Ouvre(Modifier, 1, [&](QDialog& f) {
    for (const char* nom : {"code", "designation", "ligne", "formule"})
      EXPECT_TRUE(Champ(f, nom).isReadOnly()) << nom;
    for (const char* nom : {"recette", "automatique", "manuel"})
      EXPECT_FALSE(Trouve<QRadioButton>(f, nom).isEnabled()) << nom;
    EXPECT_FALSE(Trouve<QPushButton>(f, "ok").isEnabled());
    Clique(Trouve<QPushButton>(f, "suivant"));
    EXPECT_EQ(Champ(f, "montant").text(), u"1000"_s);
    EXPECT_TRUE(Champ(f, "montant").isReadOnly());
    Ferme(f);
  });
  Vue().Execute(Ajouter);
  Vue().Execute(Supprimer);
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3056, 3056}));
}

}  // namespace
}  // namespace fenlor
