// The import of statements in windows: the form of a table comes first, then the preview, then the
// operations.
#include "forms/banque/dialogreleve.h"

#include "banque/operations.h"
#include "banque/textes.h"
#include "forms/banque/dialogrelevecsv.h"
#include "forms/journal/formesjournal.h"
#include "ui/tableliste.h"

namespace fenlor::test {
namespace {

using FormesReleve = test::FormesJournal;

TEST_F(FormesReleve, UnTableauDemandeSaFormePuisSApercoit) {
  const std::string tableau =
      "Date;Libelle;Montant\n05/03/2003;Loyer;640\n06/03/2003;Recette;-20\n07/03/2004;c;1\nx;d;1\n";
  const std::string compte = test::Long("512");
  CDialogReleve forme(Ui, tableau, u"mars.csv"_s, compte);
  robot.Attend("DialogReleveCsv", [&](QDialog& w) {
    EXPECT_EQ(Trouve<QComboBox>(w, "montant").currentText(), u"3 Montant"_s);
    EXPECT_EQ(VersUtf8(Trouve<Lecture>(w, "resultat").Valeur()),
              "Opérations lues : 3, lignes illisibles : 1. La première : 05/03/2003, 640,00, Loyer");
    auto& montant = Trouve<EditeurChoix>(w, "montant");
    montant.setFocus();
    QTest::keyClick(&montant, Qt::Key_Home);
    Ok(w);
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{PlainteColonnes.numero});
    EXPECT_EQ(Focus(w), "montant");
    Boite.Oublie();
    QTest::keyClick(&montant, Qt::Key_End);
    test::Clique(Case(w, "inverse"));
    EXPECT_NE(Trouve<Lecture>(w, "resultat").Valeur().find("-640,00"), std::string::npos);
    Ok(w);
  });
  Montre(forme);
  while (!robot.Vues.size()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  auto& sorte = Trouve<QComboBox>(forme, "sorte");
  auto& lignes = Trouve<TableListe>(forme, "lignes");
  EXPECT_EQ(sorte.itemText(1), u"Nouvelles (2)"_s);
  EXPECT_EQ(lignes.Modele().NbLignes(), 4);
  sorte.setFocus();
  QTest::keyClick(&sorte, Qt::Key_End);
  EXPECT_EQ(sorte.currentText(), u"Illisibles (1)"_s);
  EXPECT_EQ(lignes.Modele().NbLignes(), 1);
  Ok(forme);
  EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{InfoReleveImporte.numero});
  const auto operations = LitOperations(App(), compte);
  ASSERT_EQ(operations.size(), 2u);
  EXPECT_EQ(operations[0].rec.Sens, 0);
  CDialogReleve encore(Ui, tableau, u"mars.csv"_s, compte);
  EXPECT_EQ(Trouve<QComboBox>(encore, "sorte").itemText(2), u"Déjà connues (2)"_s);
  Montre(encore);
  QCoreApplication::processEvents();  // the answer was kept: no other form opens
}

}  // namespace
}  // namespace fenlor::test
