// Reports from their commands: the windows that print, the menu, and the preview beside them.

#include "forms/reports/impressions.h"

#include <QMenuBar>

#include "app/commandes.h"
#include "app/programmedetest.h"
#include "forms/reports/previewview.h"
#include "ui/vue.h"

namespace fenlor::test {
namespace {

class ImpressionsTest : public ProgrammeDeTest {
 protected:
  void SetUp() override {
    Installe();
    Enregistre(Ecriture(JournalRecettes, "706", 50));
    Regle("Préférences"_w, "Prévisualisation"_w, "Oui");
    Montre();
  }
  bool Peut(unsigned numero) { return Principal->Table().Action(numero)->isEnabled(); }
  CFrameWndPrint* Etat() { return Principal->Table().Etats().Dernier(); }
  CZNPreviewView* Apercu() { return Etat() ? Etat()->Apercu() : nullptr; }
};

TEST_F(ImpressionsTest, LesFenetresSImpriment) {
  EXPECT_FALSE(Peut(CmdImprimer) || Peut(CmdApercu));
  Principal->OuvreUnique(FenImmobilisations);
  EXPECT_FALSE(Peut(CmdImprimer) || Peut(CmdApercu)) << "nothing stands in it";
  Immobilisation bien{};
  bien.Numero = 1;
  bien.DateAchat = FaitDate(1, 1, 2003);
  ASSERT_TRUE(Magasin().WriteImmobilisations(bien));
  QApplication::processEvents();
  for (const u32 bit :
       {FenImmobilisations, FenTresorerie, FenComptesRecettes, FenComptesDepenses, FenPlanComptable,
        FenRubriques, FenLibelles, FenRecettes, FenDepenses, FenOperationsDiverses}) {
    Principal->OuvreUnique(bit);
    SCOPED_TRACE(VersUtf8(Principal->VueActive()->Titre()));
    const std::string titre = Principal->VueActive()->Titre();
    EXPECT_TRUE(Peut(CmdImprimer) && Peut(CmdApercu));
    Principal->Table().Execute(CmdApercu);
    ASSERT_NE(Apercu(), nullptr);
    EXPECT_EQ(Principal->VueActive(), Apercu());
    EXPECT_TRUE(Peut(CmdImprimer));
    EXPECT_FALSE(Peut(CmdApercu)) << "it is one";
    EXPECT_GE(Etat()->Pages()->NombrePages(), 1u);
    robot.Attend("DialogImpression", [](QDialog& dialogue) { dialogue.reject(); });
    Principal->Table().Execute(CmdImprimer);
    EXPECT_NE(Apercu(), nullptr);
    QTest::keyClick(Apercu()->focusProxy(), Qt::Key_Escape);
    EXPECT_EQ(Etat(), nullptr);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Principal->VueActive()->Titre(), titre) << "back where the command came from";
  }
  Principal->Table().Execute(CmdApercu);  // it goes with the main window
  EXPECT_NE(Apercu(), nullptr);
}

TEST_F(ImpressionsTest, LesEtatsDuMenu) {
  const struct {
    unsigned commande;
    const char* forme;  ///< asked before
    const char* titre;
  } cas[] = {{1026, "DialogPeriode", "Détail des écritures"},
             {1027, "DialogPeriode", nullptr},
             {1028, "DialogPeriode", "Grand livre"},
             {1029, "DialogPeriode", "Balance des comptes"},
             {1030, "DialogPeriode", "Etat de T.V.A."},
             {1031, "DialogPeriode", "Etat de rapprochement"},
             {1032, "DialogPeriode", "Centralisation"},
             {1033, nullptr, nullptr},
             {1035, "DialogPeriode", "Immobilisations et amortissements"},
             {1036, "DialogPeriode", "Plus-values et moins-values"}};
  int ouvertes = 0;
  for (const auto& c : cas) {
    SCOPED_TRACE(c.commande);
    if (c.forme)
      robot.Attend(c.forme, [](QDialog& forme) {
        if (auto* exercice = forme.findChild<QAbstractButton*>(QStringLiteral("exercice"))) Clique(*exercice);
        forme.accept();
      });
    Principal->Table().Execute(c.commande);
    ASSERT_NE(Apercu(), nullptr);
    if (c.titre) {
      EXPECT_EQ(VersUtf8(Etat()->Etat()->TitreDocument()), c.titre);
    }
    const auto fenetres = Principal->Zone().subWindowList();
    EXPECT_EQ(fenetres.size(), ++ouvertes) << "side by side";
    if (ouvertes == 1) fenetres.back()->showNormal();  // the first one fills the zone
    EXPECT_TRUE(ouvertes == 1 || fenetres.back()->pos() != fenetres[ouvertes - 2]->pos())
        << "none hides the last";
    EXPECT_FALSE(NomFichierEtat(App(), *Etat()->Etat()).contains(u' '));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  // Work on the files closes them.
  Principal->FermeToutes();
  EXPECT_EQ(Etat(), nullptr);
  EXPECT_EQ(Apercu(), nullptr);
}

/// The file that was made is named in the bar, whose keys open no menu.
TEST_F(ImpressionsTest, LaBarreDUnPdf) {
  robot.Attend("DialogPeriode", [](QDialog& forme) { Clique(Trouve<QPushButton>(forme, "pdf")); });
  robot.Attend("DialogPdf", [this](QDialog& dialogue) {
    Trouve<QLineEdit>(dialogue, "fileNameEdit").setText(Q(Dossier() + "/etat.pdf"));
    QMetaObject::invokeMethod(&dialogue, "accept");
  });
  Principal->Table().Execute(1029);
  std::vector<QString> boutons;
  for (QPushButton* bouton : Trouve<QWidget>(*Principal, "offre").findChildren<QPushButton*>()) {
    if (bouton->isVisible()) boutons.push_back(bouton->text());
    for (const QAction* menu : Principal->menuBar()->actions())
      EXPECT_NE(QKeySequence::mnemonic(menu->text()), QKeySequence::mnemonic(bouton->text()))
          << bouton->text().toStdString();
  }
  EXPECT_EQ(boutons.size(), 2u);
}

}  // namespace
}  // namespace fenlor::test
