// What stands behind an open form is left alone: keys that were typed before the form came, menus, closing.

#include <QFileDialog>
#include <QTimer>

#include "app/programmedetest.h"
#include "app/textes.h"
#include "auto/ecrituresauto.h"
#include "core/btfiles.h"
#include "forms/journal/ecritures.h"
#include "ui/tableliste.h"
#include "ui/vue.h"

namespace fenlor::test {
namespace {

class ModalesTest : public ProgrammeDeTest {
 protected:
  void SetUp() override {
    Installe();
    Enregistre(Ecriture(JournalRecettes, "706", 50));
    Montre();
    Principal->OuvreUnique(FenRecettes);
    Principal->activateWindow();
    QApplication::processEvents();
  }
  /// Opens a form by its key and types another right behind, while the window still has the keyboard.
  void Rafale(Qt::Key ouvre, QKeyCombination suite) {
    QWindow* fenetre = Principal->windowHandle();
    Principal->activateWindow();
    QApplication::processEvents();
    Frappe(fenetre, ouvre == Qt::Key_F ? Qt::ControlModifier | Qt::Key_F : QKeyCombination(ouvre));
    Frappe(fenetre, suite);
    for (int i = 0; i < 20; ++i) QApplication::processEvents();
  }
};

TEST_F(ModalesTest, ToutCeQuiPrendLeFocusSAnnonce) {
  for (const bool onglets : {false, true}) {
    Principal->MontreOnglets(onglets);
    for (const u32 bit :
         {FenTresorerie, FenComptesRecettes, FenComptesDepenses, FenPlanComptable, FenRubriques, FenLibelles,
          FenRecettes, FenDepenses, FenOperationsDiverses, FenImmobilisations}) {
      Principal->OuvreUnique(bit);
      QApplication::processEvents();
      VerifieVoix(*Principal);
      // With the filter's line, and with no row that has the word.
      auto* table = Principal->VueDe(bit)->findChild<TableListe*>();
      table->OuvreFiltre();
      for (const QString& mot : {QString(), u"5"_s, u"xyz"_s}) {
        table->PoseFiltre(mot);
        VerifieVoix(*Principal);
      }
      table->OteFiltre();
    }
  }
  Principal->FermeToutes();
  QApplication::processEvents();
  VerifieVoix(*Principal);  // the start page
}

TEST_F(ModalesTest, AucuneFenetreNeSeFermeSousUneForme) {
  const struct {
    Qt::Key touche;
    const char* forme;
  } cas[] = {
      {Qt::Key_Insert, "DialogEcriture"}, {Qt::Key_F2, "DialogEcriture"}, {Qt::Key_F, "DialogCritere"}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.forme);
    robot.Attend(c.forme, [this](QDialog& forme) {
      for (int i = 0; i < 20; ++i) QApplication::processEvents();
      EXPECT_EQ(Ouvertes(), 1) << "Ctrl+W";
      Principal->Zone().closeAllSubWindows();
      Principal->close();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      EXPECT_TRUE(Principal->isVisible());
      EXPECT_EQ(Ouvertes(), 1);
      forme.reject();
    });
    Rafale(c.touche, Qt::ControlModifier | Qt::Key_W);
    EXPECT_EQ(Ouvertes(), 1);
  }
  Rafale(Qt::Key_Down, Qt::ControlModifier | Qt::Key_W);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Ouvertes(), 0) << "with no form it does";
}

TEST_F(ModalesTest, AucuneCommandeDerriereUneForme) {
  robot.Attend("DialogEcriture", [this](QDialog& forme) {
    bool menu = false;
    QTimer garde;
    garde.callOnTimeout([&menu] {
      if (QWidget* popup = QApplication::activePopupWidget()) menu = popup->close();
    });
    garde.start(0);
    QMetaObject::invokeMethod(Principal.get(), [this] {
      Q_EMIT Principal->VueActive()->MenuDemande(QPoint(0, 0), {CmdSupprimer});
    });
    for (const unsigned commande :
         {unsigned{CmdSupprimer}, unsigned{CmdFermerFenetres}, unsigned{CmdOptions}}) {
      Principal->Table().Execute(commande);
      Principal->Table().Action(commande)->trigger();
    }
    for (int i = 0; i < 20; ++i) QApplication::processEvents();
    EXPECT_FALSE(menu);
    EXPECT_EQ(Ouvertes(), 1);
    forme.reject();
  });
  Rafale(Qt::Key_F2, Qt::Key_Delete);
  EXPECT_EQ(robot.Vues, std::vector<std::string>{"DialogEcriture"});
}

TEST_F(ModalesTest, LeJournalSuitLaValidation) {
  const auto* journal = dynamic_cast<ListeEcritures*>(Principal->VueActive());
  ASSERT_EQ(journal->GetEcrCount(), 1) << "a draft";
  robot.Attend("DialogValidation", [](QDialog& forme) { forme.accept(); });
  Principal->Table().Execute(CmdValidation);
  EXPECT_EQ(journal->GetEcrCount(), 0);
}

TEST_F(ModalesTest, LaPageDAccueilSuitLesLivres) {
  Montre();
  ASSERT_EQ(0, Ouvertes());
  CBanques banques(App(), App().PathExercice);
  banques.Rec->Date = FaitDate(10, 3, 2003);
  ASSERT_TRUE(banques.OpenFile() && banques.Add());
  const auto dite = [this](const TexteFixe& phrase) {
    QTest::qWait(0);
    for (const auto* lien : Trouve<QWidget>(*Principal, "situation").findChildren<QPushButton*>())
      if (lien->text() == TexteQ(phrase)) return true;
    return false;
  };
  EXPECT_TRUE(dite(SituationOperation));
  CEcrituresAuto modeles(App());
  modeles.Clear();
  modeles.Rec.Date = FaitDate(20, 3, 2003);
  modeles.Rec.NbPaiements = modeles.Rec.NbRestants = 1;
  ASSERT_TRUE(modeles.Write());
  EXPECT_TRUE(dite(SituationEcheance));
}

TEST_F(ModalesTest, CeQuiSuitLaFinDUneFormeAttend) {
  robot.Attend("DialogEcriture", [this](QDialog& forme) {
    forme.reject();
    // The form is hidden, its loop still turns: what was queued with the key comes here.
    Principal->Table().Execute(CmdFermerFenetres);
    EXPECT_EQ(Ouvertes(), 1);
  });
  Rafale(Qt::Key_F2, Qt::Key_Down);
  Principal->Table().Execute(CmdFermerFenetres);
  EXPECT_EQ(Ouvertes(), 0) << "afterwards it does";
}

TEST_F(ModalesTest, UnDialogueDeFichiersGardeAussiLesFenetres) {
  robot.Attend("fichiers", [this](QDialog& dialogue) {
    Principal->Zone().closeAllSubWindows();
    EXPECT_EQ(Ouvertes(), 1);
    dialogue.reject();
    Principal->Zone().closeAllSubWindows();
    Principal->Table().Execute(CmdFermerFenetres);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Ouvertes(), 1) << "on its way out";
  });
  QFileDialog fichiers(Principal.get());
  fichiers.setObjectName(QStringLiteral("fichiers"));
  fichiers.setOption(QFileDialog::DontUseNativeDialog);
  fichiers.exec();
  Principal->Table().Execute(CmdFermerFenetres);
  EXPECT_EQ(Ouvertes(), 0) << "afterwards they close";
}

}  // namespace
}  // namespace fenlor::test
