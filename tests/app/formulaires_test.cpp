// Every form of the program, opened on a practice with an exercice: workable without
// a mouse, readable aloud, nothing cut.
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>

#include "app/apropos.h"
#include "app/barreicones.h"
#include "app/infosysteme.h"
#include "app/personnaliser.h"
#include "app/raccourcis.h"
#include "master/forms/dialogadressebanque.h"
#include "master/forms/dialogcompteparticulier.h"
#include "master/forms/dialogtauxeuro.h"
#include "master/forms/dialogtauxtva.h"
#include "master/forms/sheetoptions.h"
#include "outils/uidetest.h"
#include "outils/verifieformulaire.h"
#include "session/forms/dialogindex.h"
#include "session/forms/dialognewexercice.h"
#include "session/forms/dialogopenexercice.h"
#include "session/forms/dialogpassword.h"
#include "session/forms/sheetproperties.h"
#include "ui/prefpropertysheet.h"

namespace fenlor::test {

namespace {

class TousLesFormulairesTest : public UiDeTest {
 protected:
  TousLesFormulairesTest() {
    CreeExercice("2003", true, true);
    App().ExerciceOuvert = 1;
    PoseCompte("5120000000", 0, "BQ", "Banque", 1);
    PoseCompte("4451000000", 3, "TVA01", "T.V.A. à 19.60%");
  }

  /// Shows a form and goes through its pages.
  void Regarde(QDialog& formulaire) {
    SCOPED_TRACE(formulaire.objectName().toStdString());
    formulaire.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&formulaire));
    auto* onglets = formulaire.findChild<QTabWidget*>();
    for (int i = 0; i < (onglets ? onglets->count() : 1); ++i) {
      if (onglets) onglets->setCurrentIndex(i);
      QApplication::processEvents();
      SCOPED_TRACE(onglets ? onglets->tabText(i).toStdString() : "");
      VerifieFormulaire(formulaire);
    }
  }
};

}  // namespace

TEST_F(TousLesFormulairesTest, SontEntiers) {
  ContexteUi ui = Ui();
  std::string nom = "2003";
  const AdresseBanque banque{};
  const std::vector<LigneTva> taxes;
  CDialogNewExercice nouveau(ui, nom);
  CDialogOpenExercice ouvre(ui, false, nom);
  CDialogPassword motDePasse(ui);
  CDialogIndex index(ui);
  CSheetProperties proprietes(ui);
  CSheetOptions options(ui);
  CDialogAdresseBanque adresse(ui, banque);
  CDialogCompteParticulier particulier(ui, [] { return false; });
  CDialogTauxEuro taux(ui);
  CDialogTauxTVA taxe(ui, taxes);
  CPrefPropertySheet preferences(ui);
  CDialogRaccourcis raccourcis(ui);
  CDialogPersonnaliser personnaliser(ui, ContenuParDefaut(), [](unsigned) { return nullptr; });
  CDialogAbout apropos(ui, nullptr);
  CDialogInfoSystem informations(ui, nullptr);
  QDialog* const tous[] = {&nouveau,     &ouvre,      &motDePasse,    &index,   &proprietes,
                           &options,     &adresse,    &particulier,   &taux,    &taxe,
                           &preferences, &raccourcis, &personnaliser, &apropos, &informations};
  for (QDialog* formulaire : tous) {
    Regarde(*formulaire);
    formulaire->hide();
  }
}

}  // namespace fenlor::test
