#include "forms/journal/formeecriture.h"

namespace fenlor::test {
namespace {

TEST_F(FormeEcriture, MultiplePuisSimplifiee) {
  auto f = Remplie(JournalRecettes, u"HONOR"_s, u"100"_s);
  Choisit(*f, "autre");
  Clique(*Champ<QPushButton>(*f, "multiple"));
  EXPECT_TRUE(Vu(*f, "lignes") && !Vu(*f, "tresorerie") && !Vu(*f, "cheque") && !Vu(*f, "multiple"));
  EXPECT_EQ(LignesTresor(*f), u"BQ|Banque|Autre|100,00"_s);
  VerifieFormulaire(*f);
  EXPECT_TRUE(Permis(*f, "simplifiee"));
  robot.Attend("DialogLineTresor", [&](QDialog& l) {
    VerifieFormulaire(l);
    EXPECT_EQ(l.windowTitle(), u"Ecriture d'une ligne de trésorerie : ajout"_s);
    EXPECT_EQ(Focus(l), "montant");
    EXPECT_EQ(Lu(l, "montant"), QString()) << "the lines cover T.T.C. already";
    QTest::keyClick(l.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Boite.NumerosErreurs(), Numeros{3106});
    EXPECT_EQ(Focus(l), "montant");
    Tape(*l.focusWidget(), u"50"_s);
    QTest::keyClick(l.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(l.isVisible()) << "ready for the next line";
    EXPECT_EQ(Focus(l), "montant");
    l.reject();
  });
  QTest::keyClick(Champ(*f, "lignes"), Qt::Key_Insert);
  EXPECT_EQ(LignesTresor(*f), u"BQ|Banque|Autre|100,00 ; BQ|Banque|Chèque|50,00"_s);
  EXPECT_EQ(Lu(*f, "ttc") + Lu(*f, "ht"), u"150,00150,00"_s) << "T.T.C. is raised";
  EXPECT_FALSE(Permis(*f, "simplifiee"));
  Trouve<CZNListCtrl>(*f, "lignes").SelectionneLigne(0);
  robot.Attend("DialogLineTresor", [&](QDialog& l) {
    EXPECT_EQ(l.windowTitle(), u"Ecriture d'une ligne de trésorerie : modification"_s);
    EXPECT_TRUE(Coche(l, "autre"));
    EXPECT_EQ(Lu(l, "montant"), u"100,00"_s);
    auto& code = Trouve<QComboBox>(l, "tresorerie");
    Va(code);
    QTest::keyClick(&code, Qt::Key_Home);
    while (code.currentText() != u"CCP"_s) QTest::keyClick(&code, Qt::Key_Down);
    EXPECT_EQ(Lu(l, "designation"), u"Postal"_s);
    Tape(*Champ<QLineEdit>(l, "montant"), u"80"_s);
    Clique(Bouton(l, u"&Ok"_s));
  });
  QTest::keyClick(Champ(*f, "lignes"), Qt::Key_Return);
  EXPECT_EQ(LignesTresor(*f), u"CCP|Postal|Autre|80,00 ; BQ|Banque|Chèque|50,00"_s);
  EXPECT_EQ(Lu(*f, "ttc"), u"150,00"_s) << "less is only refused when saving";
  Trouve<CZNListCtrl>(*f, "lignes").SelectionneLigne(1);
  QTest::keyClick(Champ(*f, "lignes"), Qt::Key_Delete);
  EXPECT_EQ(LignesTresor(*f), u"CCP|Postal|Autre|80,00"_s);
  Clique(*Champ<QPushButton>(*f, "simplifiee"));
  EXPECT_TRUE(Vu(*f, "tresorerie") && !Vu(*f, "lignes"));
  EXPECT_EQ(Lu(*f, "tresorerie") + Lu(*f, "designation"), u"CCPPostal"_s);
  EXPECT_TRUE(Coche(*f, "autre"));
  Ok(*f);
  EXPECT_EQ(Entete(f->Derniere()).Genre, GenreSimple);
  EXPECT_EQ(LignesLues(f->Derniere()).back(), "514 D 150.00 983.94");
}

/// A code that names no account, and the form of a line: nothing of them becomes something else.
TEST_F(FormeEcriture, LaTresorerieAMoitieTapeeRevient) {
  auto f = Remplie(JournalRecettes, u"HONOR"_s, u"100"_s);
  Tape(*Champ<QComboBox>(*f, "tresorerie"), u"ZZ"_s);
  Va(*Champ(*f, "libelle"));
  f.reset();  // dies without an answer
  auto saisie = LitSuspens(App());
  ASSERT_TRUE(saisie);
  OuvertureEcriture ouverture = Ouverture(JournalRecettes);
  ouverture.reprise = &*saisie;
  f = Montre(ouverture);
  EXPECT_EQ(Lu(*f, "tresorerie"), u"ZZ"_s);
  Ok(*f);
  EXPECT_EQ(f->Derniere(), 0u);
  f.reset();

  saisie->tresorerie.clear();
  saisie->ecriture.genre = GenreStandard;
  saisie->ecriture.tresoreries = {{Long("514"), 60, PaiementAutre}};
  saisie->ligneOuverte = true;
  saisie->ligne.code = "YY";
  saisie->ligne.debit = "33,3,";
  robot.Attend("DialogLineTresor", [&](QDialog& l) {
    l.activateWindow();
    QApplication::processEvents();
    EXPECT_EQ(Lu(l, "tresorerie"), u"YY"_s);
    EXPECT_EQ(Lu(l, "montant"), u"33,3,"_s);
    Tape(*Champ(l, "montant"), u"40"_s);
    Va(*Champ(l, "tresorerie"));
    const auto notee = LitSuspens(App());
    EXPECT_TRUE(notee && notee->ligneOuverte && notee->ligne.code == "YY" && notee->ligne.debit == "40,00");
    l.done(QDialog::Rejected);
  });
  f = Montre(ouverture);
  QApplication::processEvents();
  EXPECT_EQ(LignesTresor(*f), u"CCP|Postal|Autre|60,00"_s);
}

TEST_F(FormeEcriture, SupprimeToutesLesLignesChoisies) {
  auto f = Montre(Ouverture(JournalRecettes, Enregistre(Multiple(JournalRecettes, "706",
                                                                 {{"512", 60}, {"531", 30}, {"514", 10}}))));
  QWidget& liste = *Champ(*f, "lignes");
  Va(liste);
  QTest::keyClick(&liste, Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&liste, Qt::Key_Delete);
  EXPECT_EQ(LignesTresor(*f), u"CCP|Postal|Chèque|10,00"_s);
}

TEST_F(FormeEcriture, LignesNegativesDUnRemboursement) {
  auto f = Remplie(JournalRecettes, u"HONOR"_s, u"-100"_s);
  Clique(*Champ<QPushButton>(*f, "multiple"));
  robot.Attend("DialogLineTresor", [&](QDialog& l) {
    Tape(*Champ<QLineEdit>(l, "montant"), u"-60"_s);
    Clique(Bouton(l, u"&Ok"_s));
  });
  QTest::keyClick(Champ(*f, "lignes"), Qt::Key_Return);
  EXPECT_EQ(Lu(*f, "ttc"), u"-100,00"_s);
  robot.Attend("DialogLineTresor", [&](QDialog& l) {
    EXPECT_EQ(Lu(l, "montant"), u"-40,00 €"_s) << "what is left";
    QTest::keyClick(l.focusWidget(), Qt::Key_Return);
    l.reject();
  });
  QTest::keyClick(Champ(*f, "lignes"), Qt::Key_Insert);
  Ok(*f);
  EXPECT_NE(f->Derniere(), 0u);
}

}  // namespace
}  // namespace fenlor::test
