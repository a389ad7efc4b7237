#include "app/reprises.h"

#include <QAction>
#include <QMenuBar>
#include <QPushButton>
#include <QtTest>

#include "app/programmedetest.h"
#include "core/cles.h"
#include "forms/master/textes.h"
#include "journal/textes.h"
#include "master/textes.h"
#include "session/textes.h"
#include "ui/textes.h"

namespace fenlor::test {
namespace {

class ReprisesUiTest : public ProgrammeDeTest {
 protected:
  void SetUp() override {
    Installe();
    Montre();
    Principal->OuvreUnique(FenRecettes);
    m_une =
        AjouteSimple(JournalRecettes, FaitDate(10, 3, 2003), Long("706"), 20, Long("512"), "Consultation");
    Principal->Actualise();
  }
  QAction& Action(unsigned numero) { return *Principal->Table().Action(numero); }
  QWidget& Barre() { return Trouve<QWidget>(*Principal, "offre"); }
  QString TexteBarre() { return Trouve<QLabel>(*Principal, "texteOffre").text(); }
  void Supprime() {
    ASSERT_TRUE(Magasin().RemoveEcrSimple(App().PathExercice, m_une));
    Principal->Actualise();
  }

  /// The button of the bar, whose key opens no menu.
  QPushButton& BoutonLibre() {
    QPushButton* bouton = nullptr;
    for (QPushButton* b : Barre().findChildren<QPushButton*>())
      if (!b->isHidden()) bouton = b;
    EXPECT_NE(bouton, nullptr);
    for (const QAction* menu : Principal->menuBar()->actions())
      EXPECT_NE(QKeySequence::mnemonic(menu->text()), QKeySequence::mnemonic(bouton->text()))
          << bouton->text().toStdString();
    return *bouton;
  }

  u32 m_une = 0;
};

TEST_F(ReprisesUiTest, UneSuppressionSOffreARevenir) {
  EXPECT_TRUE(Barre().isHidden()) << "an entry that was typed is no deletion";
  EXPECT_EQ(Action(CmdAnnuler).text(), u"Ann&uler : saisie de « Consultation », 20,00 €"_s);
  EXPECT_FALSE(Action(CmdRetablir).isEnabled());
  Supprime();
  EXPECT_FALSE(Barre().isHidden());
  EXPECT_EQ(TexteBarre(), u"Suppression de « Consultation », 20,00 €"_s);
  Clique(BoutonLibre());
  EXPECT_EQ(Lignes(m_une).size(), 2u);
  EXPECT_EQ(TexteBarre(), u"Annulé : suppression de « Consultation », 20,00 €"_s);
  Clique(BoutonLibre());
  EXPECT_TRUE(Lignes(m_une).empty());
  EXPECT_EQ(TexteBarre(), u"Rétabli : suppression de « Consultation », 20,00 €"_s);
  Action(CmdAnnuler).trigger();
  Action(CmdAnnuler).trigger();
  EXPECT_TRUE(Lignes(m_une).empty());
  EXPECT_EQ(Action(CmdRetablir).text(), u"Rétab&lir : saisie de « Consultation », 20,00 €"_s);
}

TEST_F(ReprisesUiTest, UnChampDeTexteGardeSonCtrlZ) {
  Supprime();
  QPushButton& offre = BoutonLibre();
  const u32 deux =
      AjouteSimple(JournalRecettes, FaitDate(11, 3, 2003), Long("706"), 30, Long("512"), "Autre");
  Clique(offre);
  EXPECT_EQ(Lignes(deux).size(), 2u) << "it is not what the bar spoke of";
  Action(CmdAnnuler).trigger();
  QLineEdit champ(Principal->centralWidget());
  champ.show();
  Principal->activateWindow();
  Va(champ);
  QTest::keyClicks(&champ, u"abc"_s);
  QTest::keyClick(Principal->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(champ.text(), u""_s);
  EXPECT_TRUE(Lignes(m_une).empty());
  Va(*Principal->Zone().viewport());
  QTest::keyClick(Principal->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Lignes(m_une).size(), 2u);
}

TEST_F(ReprisesUiTest, SansQuestionAvantCeQuiRevient) {
  EXPECT_FALSE(SansDemander(App(), QuestionSuppression)) << "asked unless the user said otherwise";
  ASSERT_TRUE(App().Reglages.EcritIni(Texte(SecPreferences), Texte(CleDemanderSupprimer), "Non"));
  for (const TexteFixe& question : {QuestionSuppression, QuestionSupprimeLibelle, QuestionSupprimeCompte})
    EXPECT_TRUE(SansDemander(App(), question)) << question.numero;
  for (const TexteFixe& question :
       {QuestionSuppressionRapprochee, QuestionRecetteFeuille, QuestionRecetteQuorbane,
        QuestionDepenseQuorbane, QuestionSupprimeExercice})
    EXPECT_FALSE(SansDemander(App(), question)) << question.numero << " says more than that it deletes";
  Dialogues.PoseSansDemander([this](unsigned question) { return SansDemander(App(), question); });
  EXPECT_EQ(Dialogues.Message(BoutonsOuiNon, QuestionSuppression, "Suppression ?"), RepOui);
}

}  // namespace
}  // namespace fenlor::test
