#include <iostream>

#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "forms/banque/dialograpprochement.h"
#include "forms/banque/textes.h"
#include "forms/journal/formesjournal.h"
#include "session/verification.h"
#include "store/cumuls.h"

namespace fenlor::test {
namespace {

constexpr Date Mars(unsigned jour) { return FaitDate(jour, 3, 2003); }

class FormeRapprochement : public FormesJournal {
 protected:
  void Operation(Date date, f64 montant, i16 sens, const std::string& libelle = "VIR") {
    FicheOperation fiche;
    fiche.compte = "512";
    fiche.date = date;
    fiche.libelle = libelle;
    fiche.sens = sens;
    fiche.montant = montant;
    ASSERT_FALSE(EnregistreOperation(App(), fiche));
  }
  std::size_t NbOperations() { return LitOperations(App(), Long("512")).size(); }
  std::size_t NbLignes() { return LignesARapprocher(App(), {Long("512"), Mars(1), Mars(31)}).size(); }
  void Touche(QWidget& f, Qt::Key touche, Qt::KeyboardModifiers avec = Qt::NoModifier) {
    ++m_touches;
    QTest::keyClick(f.focusWidget(), touche, avec);
    QApplication::processEvents();
  }
  void Frappe(QWidget& f, const QString& texte) {
    m_touches += static_cast<unsigned>(texte.size());
    QTest::keyClicks(f.focusWidget(), texte);
  }
  static TableListe& Table(QDialog& f, const char* nom) { return Trouve<TableListe>(f, nom); }

  /// A month as the bank sent it: 50 operations with their line, 5 of two lines, 5 that the books forgot.
  void EcritLeMois() {
    i64 solde = 0;
    std::string operations;
    const auto operation = [&](unsigned jour, i64 centimes, const char* libelle) {
      solde += centimes;
      operations += "\n" + StrDate(Mars(jour)) + ";" + libelle + ";" + FormatMontant(DeCentimes(centimes), 2);
    };
    for (unsigned i = 0; i < 50; ++i) {
      operation(1 + i % 20, 1000 + 37 * i, "VIR");
      ASSERT_NE(0u, AjouteSimple(JournalRecettes, Mars(1 + i % 20), "706", 10 + 0.37 * i, "512"));
    }
    for (unsigned i = 0; i < 5; ++i) {
      for (const f64 part : {100.1, 50.2})
        ASSERT_NE(0u, AjouteSimple(JournalRecettes, Mars(21 + i), "706", part + i, "512"));
      operation(21 + i, 15030 + 200 * i, "REMISE");
      operation(27 + i, -750 - 100 * static_cast<i64>(i), "FRAIS");
    }
    EcritFichier(Dossier() + "/mars.csv", "Solde au 31/03/2003;" + FormatMontant(DeCentimes(solde), 2) +
                                              "\nDate;Libelle;Montant" + operations + "\n");
    Regle(Texte(SecReleves), Texte(CleDossierReleves), Dossier());  // where last month's file was
  }
  /// Names the file, takes the form of its table as proposed, and imports it.
  void AttendLeFichier() {
    robot.Attend("QFileDialog", [this](QDialog& fichiers) {
      Frappe(fichiers, u"mars.csv"_s);
      Touche(fichiers, Qt::Key_Return);
    });
    robot.Attend("DialogReleve", [this](QDialog& apercu) {
      robot.Attend("DialogReleveCsv", [this](QDialog& tableau) { Touche(tableau, Qt::Key_Return); });
      QApplication::processEvents();
      apercu.activateWindow();
      EXPECT_EQ(Liste(apercu, "sorte").itemText(1), u"Nouvelles (60)"_s);
      Touche(apercu, Qt::Key_Return);
    });
  }

  unsigned m_touches = 0;
};

/// All of a month is done with keys, from the bank's file to the difference of 0,00.
TEST_F(FormeRapprochement, UnMoisAuClavier) {
  EcritLeMois();
  CDialogRapprochement f(Ui);
  Montre(f);
  EXPECT_EQ("du", Focus(f));
  EXPECT_EQ(Lu(f, "soldeLivres"), u"0,00 €"_s);
  AttendLeFichier();
  Touche(f, Qt::Key_I, Qt::AltModifier);
  ++m_touches;  // the box that counts them is closed
  ASSERT_EQ(60u, NbOperations());
  f.activateWindow();
  const unsigned importees = m_touches;
  EXPECT_EQ("01/03/2003", f.findChild<QLineEdit*>(u"du"_s)->selectedText().toStdString());
  Touche(f, Qt::Key_F8);
  EXPECT_FALSE(Trouve<QCheckBox>(f, "confirmation").isChecked());
  Touche(f, Qt::Key_A, Qt::AltModifier);
  ASSERT_THAT(Boite.NumerosQuestions(), ElementsAre(+InfoReleveImporte, +InfoRapprochements));
  EXPECT_EQ("50 rapprochements bancaires effectués\npour 60 opérations enregistrées"_w,
            Boite.Questions[1].texte);
  ++m_touches;  // the box is closed
  EXPECT_EQ("operations", Focus(f));
  Touche(f, Qt::Key_F6);
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(Lu(f, "natureChoisie"), u"REMISE"_s);
    Touche(f, Qt::Key_Down);
    Touche(f, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Lu(f, "cumul"), QString::number(150.3 + 2 * i, 'f', 2).replace(u'.', u',') + u" €"_s);
    Touche(f, Qt::Key_Return);
  }
  EXPECT_EQ(0u, NbLignes());
  for (int i = 0; i < 5; ++i) {
    robot.Attend("DialogEcriture", [this](QDialog& ecriture) {
      EXPECT_EQ("code", Focus(ecriture));
      Frappe(ecriture, u"LOY"_s);
      Touche(ecriture, Qt::Key_Return);
    });
    Touche(f, Qt::Key_Insert);
    f.activateWindow();
    QApplication::processEvents();
  }
  EXPECT_EQ(0u, NbOperations());
  EXPECT_EQ(Lu(f, "difference"), u"0,00 €"_s);
  Trouve<QRadioButton>(f, "franc").click();
  EXPECT_EQ(Lu(f, "soldeLivres"), u"11002,01 F"_s);
  Touche(f, Qt::Key_Escape);
  EXPECT_FALSE(f.isVisible());
  EXPECT_THAT(Boite.NumerosErreurs(), IsEmpty());
  std::cout << m_touches << " keys, " << importees << " of them for the import\n";
  EXPECT_LE(m_touches, 59u);
  EXPECT_EQ(0u, VerifieExercice(App(), [](const std::string& p) { ADD_FAILURE() << p; }));
}

TEST_F(FormeRapprochement, UneOperationSeTapeSeChangeEtSeGarde) {
  CDialogRapprochement f(Ui);
  Montre(f);
  Tape(Champ(f, "date"), u"3/3"_s);
  Tape(Champ(f, "dateValeur"), u"5/3"_s);
  Tape(Champ(f, "credit"), u"5"_s);
  Tape(Champ(f, "debit"), u"12,5"_s);
  Touche(f, Qt::Key_Tab);
  EXPECT_EQ("libelle", Focus(f));
  EXPECT_TRUE(Champ(f, "credit").text().isEmpty()) << "an amount stands on one side";
  Frappe(f, u"FRAIS"_s);
  Touche(f, Qt::Key_Return);
  ASSERT_EQ(1u, NbOperations());
  EXPECT_EQ("date", Focus(f));
  EXPECT_TRUE(Champ(f, "date").text().isEmpty() && Champ(f, "debit").text().isEmpty());
  TableListe& operations = Table(f, "operations");
  EXPECT_EQ(0, operations.LigneChoisie());
  EXPECT_EQ(Rangs(operations)[0], u"03/03/2003|05/03/2003|12,50 €|"_s);

  for (const char* nom : {"creer", "confirmation", "creer"})  // one letter for two: each in its turn
    for (int i = 0; Focus(f) != nom; ++i) {
      ASSERT_LT(i, 2) << nom;
      Touche(f, Qt::Key_C, Qt::AltModifier);
    }
  Va(operations);
  Touche(f, Qt::Key_Return);
  EXPECT_EQ(Champ(f, "debit").text(), u"12,50"_s);
  EXPECT_EQ(0, operations.Modele().NbLignes());
  EXPECT_EQ(1u, NbOperations()) << "until it is saved again";
  Tape(Champ(f, "soldeReleve"), u"8"_s);
  Boite.Reponses = {RepNon};
  Touche(f, Qt::Key_Escape);
  EXPECT_FALSE(f.isVisible());
  EXPECT_EQ(1u, NbOperations());
  EXPECT_EQ(Lu(*std::make_unique<CDialogRapprochement>(Ui), "soldeReleve"), u"8,00"_s) << "kept all the same";
}

TEST_F(FormeRapprochement, LesRefusEtLaRegleDeSelection) {
  AjouteSimple(JournalRecettes, Mars(3), "706", 20, "512");
  AjouteSimple(JournalRecettes, Mars(4), "706", 30, "512");
  AjouteSimple(JournalDepenses, Mars(5), "6132", 40, "512");
  CDialogRapprochement f(Ui);
  Montre(f);
  const auto refus = [&](const char* bouton) {
    Boite.Oublie();
    Clique(Case(f, bouton));
    const auto numeros = Boite.NumerosErreurs();
    return std::pair(numeros.empty() ? 0u : numeros[0], Focus(f));
  };
  using R = std::pair<unsigned, std::string>;
  EXPECT_EQ(refus("ok"), R(ErrMontantOperation, "debit"));
  Champ(f, "date").clear();
  EXPECT_EQ(refus("ok"), R(ErrDateOperation, "date"));
  EXPECT_EQ(refus("manuel"), R(ErrSansOperationChoisie, "operations"));
  for (const char* bouton : {"modifier", "supprimer", "creer"})
    EXPECT_EQ(refus(bouton), R(ErrSansOperationChoisie, "operations"));
  EXPECT_EQ(refus("automatique").first, ErrSansOperation);

  TableListe& lignes = Table(f, "lignes");
  const auto clique = [&](int ligne) {
    QTest::mouseClick(lignes.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      lignes.visualRect(lignes.Modele().index(ligne, 0)).center());
  };
  clique(0);
  clique(1);
  EXPECT_EQ(Lu(f, "cumul"), u"50,00 €"_s);
  clique(2);
  EXPECT_THAT(lignes.LignesChoisies(), ElementsAre(2));
  EXPECT_EQ(Lu(f, "cumul"), u"40,00 €"_s);
  Trouve<QRadioButton>(f, "franc").click();
  EXPECT_EQ(Lu(f, "cumul"), u"262,38 F"_s);

  Tape(Champ(f, "du"), u"4/4"_s);
  Touche(f, Qt::Key_Tab);
  EXPECT_EQ(Champ(f, "au").text(), u"04/04/2003"_s) << "the second bound follows the first";
  Frappe(f, u"30/04/2003"_s);
  Va(Champ(f, "soldeReleve"));
  EXPECT_EQ(Champ(f, "au").text(), u"30/04/2003"_s) << "typed over the day that stands there";
  EXPECT_EQ(0, lignes.Modele().NbLignes());
  Regle("2003", "Cloture", "31/12/2003");
  EXPECT_FALSE(CDialogRapprochement::PeutOuvrir(Ui));
  EXPECT_EQ(ErrExerciceCloture.numero, Boite.NumerosErreurs().back());
}

TEST_F(FormeRapprochement, EchapLaisseTout) {
  Operation(Mars(10), 7.5, 0, "FRAIS");
  CDialogRapprochement f(Ui);
  Montre(f);
  Va(Table(f, "operations"));
  robot.Attend("DialogEcriture", [this](QDialog& ecriture) {
    EXPECT_EQ(Champ(ecriture, "ttc").text(), u"7,50"_s);
    EXPECT_EQ(Liste(ecriture, "libelle").currentText(), u"FRAIS"_s);
    EXPECT_TRUE(Trouve<QRadioButton>(ecriture, "autre").isChecked());
    Touche(ecriture, Qt::Key_Escape);
  });
  Touche(f, Qt::Key_Insert);
  EXPECT_EQ(1u, NbOperations());
  EXPECT_EQ(0u, Magasin().GetJournalRec(0));
  EXPECT_TRUE(Boite.Questions.empty());
}

}  // namespace
}  // namespace fenlor::test
