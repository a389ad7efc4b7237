#include "ui/dialogmessage.h"

#include <QProgressBar>
#include <QTextEdit>
#include <QThread>
#include <QTimer>
#include <algorithm>

#include "core/erreurssaisie.h"
#include "core/texte.h"
#include "outils/textessources.h"
#include "outils/uidetest.h"
#include "ui/dialogabort.h"
#include "ui/dialogueqt.h"

namespace fenlor::test {
namespace {

struct Jeu {
  unsigned style;
  QStringList boutons;
  std::vector<int> reponses;
  int echap;
};

class Messages : public UiDeTest {
 protected:
  Messages() { Dlg.PoseCadre(&Fenetre); }
  /// Text of the window's buttons from left to right.
  static QList<QPushButton*> DeGaucheADroite(QDialog& d) {
    QList<QPushButton*> boutons = d.findChildren<QPushButton*>();
    std::sort(boutons.begin(), boutons.end(), [](auto* a, auto* b) { return a->x() < b->x(); });
    return boutons;
  }
  CDialogAbort* Progres() {
    auto* trouve = Fenetre.findChild<CDialogAbort*>(u"DialogAbort"_s);
    return trouve && trouve->isVisible() ? trouve : nullptr;
  }

  QWidget Fenetre;
  DialogueQt Dlg;
};

TEST_F(Messages, BoutonsEtReponses) {
  const std::vector<Jeu> jeux = {
      {BoutonsOk | IconeStop, {u"&Ok"_s}, {1}, 1},
      {BoutonsOkAnnuler | IconeQuestion, {u"&Ok"_s, u"A&nnuler"_s}, {1, 2}, 2},
      {BoutonsReessayerAbandonnerIgnorer, {u"&Reéssayer"_s, u"&Abandonner"_s, u"&Ignorer"_s}, {4, 3, 5}, 3},
      {BoutonsNonOuiAnnuler | IconeAttention, {u"&Non"_s, u"&Oui"_s, u"A&nnuler"_s}, {7, 6, 2}, 2},
      {BoutonsOuiNon | IconeInformation, {u"&Oui"_s, u"&Non"_s}, {6, 7}, 7},
      {BoutonsReessayerAnnuler, {u"&Reéssayer"_s, u"A&nnuler"_s}, {4, 2}, 2},
      {BoutonsSerie | IconeQuestion, {u"&Oui"_s, u"&Non"_s, u"&Tous"_s, u"&Annuler"_s}, {6, 7, 8, 2}, 2},
  };
  for (const Jeu& jeu : jeux) {
    for (std::size_t i = 0; i < jeu.reponses.size(); ++i) {
      robot.Attend("DialogMessage", [&](QDialog& d) {
        EXPECT_EQ(d.windowTitle(), u"Fenlor"_s);
        EXPECT_EQ(d.findChild<QLabel*>(u"icone"_s) != nullptr, (jeu.style & 0xF0) != 0);
        const auto boutons = DeGaucheADroite(d);
        QStringList textes;
        for (auto* bouton : boutons) textes << bouton->text();
        EXPECT_EQ(textes, jeu.boutons) << jeu.style;
        Clique(*boutons.at(int(i)));
      });
      EXPECT_EQ(Dlg.Message(jeu.style, 3317, "Question"), jeu.reponses[i]) << jeu.style;
    }
    robot.Attend("DialogMessage", [](QDialog& d) { QTest::keyClick(&d, Qt::Key_Escape); });
    EXPECT_EQ(Dlg.Message(jeu.style, 0, "Question"), jeu.echap) << jeu.style;
    robot.Attend("DialogMessage", [](QDialog& d) { d.close(); });
    EXPECT_EQ(Dlg.Message(jeu.style, 0, "Question"), jeu.echap) << jeu.style;
    robot.Attend("DialogMessage", [](QDialog& d) { QTest::keyClick(d.focusWidget(), Qt::Key_Return); });
    EXPECT_EQ(Dlg.Message(jeu.style, 0, "Question"), jeu.reponses.front()) << jeu.style;
  }
}

TEST_F(Messages, EntreeEstLeSecondBoutonOuLaReponseDetruirait) {
  const auto entree = [&](const TexteFixe& question, int avant = 0) {
    robot.Attend("DialogMessage", [avant](QDialog& d) {
      if (avant) QTest::keyClick(d.focusWidget(), static_cast<Qt::Key>(avant));
      QTest::keyClick(d.focusWidget(), Qt::Key_Return);
    });
    return CFenlorApp(Magasin(), Dlg).MessageId(BoutonsOuiNon | IconeQuestion, question);
  };
  const TexteFixe destructrice{3302, "?", Detruit};
  EXPECT_EQ(entree(destructrice), RepNon);
  EXPECT_EQ(entree(destructrice, Qt::Key_Tab), RepOui) << "Tab to the other button, then Enter";
  EXPECT_EQ(entree({3317, "?"}), RepOui) << "a question that saves";
  // Whatever text tells of a loss is such a question; of 3430 "Non" is the first button.
  for (const auto& [numero, texte, detruit, fichier] : TextesDesSources()) {
    if (numero < 3300 || numero >= 3430 || texte.find('?') == std::string::npos || detruit) continue;
    for (const char* mot : {"uppression", "upprim", "perdu", "remplacer", "Renum", "invalider", "éditer",
                            "non rapproch", "a été modifié"})
      EXPECT_EQ(texte.find(mot), std::string::npos) << numero;
  }
}

TEST_F(Messages, LettresEtCopie) {
  robot.Attend("DialogMessage", [](QDialog& d) {
    QTest::keyClick(&d, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"Fenlor - Erreur (3056)\n\nImpossible\nIci"_s);
    d.reject();
  });
  Dlg.Erreur(3056, "Impossible\r\nIci");
  robot.Attend("DialogMessage", [](QDialog& d) { QTest::keyClick(d.focusWidget(), Qt::Key_N); });
  EXPECT_EQ(Dlg.Message(BoutonsOuiNon, 0, "?"), RepNon);
  // "&Non" and "A&nnuler" share their letter: the first shown answers.
  robot.Attend("DialogMessage", [](QDialog& d) { QTest::keyClick(d.focusWidget(), Qt::Key_N); });
  EXPECT_EQ(Dlg.Message(BoutonsNonOuiAnnuler, 0, "?"), RepNon);
}

TEST_F(Messages, ProgressionEmboitee) {
  QLineEdit champ(&Fenetre), autre(&Fenetre);
  Fenetre.show();
  Fenetre.activateWindow();
  champ.setFocus();
  QApplication::processEvents();
  Dlg.OuvreProgress("Premier", "Texte", false, 200);
  ASSERT_NE(Progres(), nullptr);
  EXPECT_FALSE(Fenetre.isEnabled());
  EXPECT_TRUE(Progres()->isEnabled());
  EXPECT_FALSE(Progres()->isModal());
  ASSERT_NE(QApplication::overrideCursor(), nullptr);

  Dlg.OuvreProgress("Second", "Autre", true, 10);
  EXPECT_EQ(Fenetre.findChildren<CDialogAbort*>().size(), 1);
  EXPECT_EQ(Progres()->windowTitle(), u"Premier"_s);
  EXPECT_EQ(Progres()->findChild<QPushButton*>(), nullptr);  // no way to cancel without the flag
  QTest::keyClick(Progres(), Qt::Key_Escape);
  Progres()->close();
  EXPECT_FALSE(Dlg.IsAborted());
  ASSERT_NE(Progres(), nullptr);

  auto& pourcent = Trouve<QLabel>(*Progres(), "pourcent");
  auto& barre = Trouve<QProgressBar>(*Progres(), "barre");
  const std::vector<std::pair<u32, QString>> places = {
      {1, u"0%"_s}, {3, u"1%"_s}, {199, u"99%"_s}, {5000, u"100%"_s}, {20, u"10%"_s}};
  for (const auto& [position, texte] : places) {
    Dlg.SetPos(position);
    EXPECT_EQ(pourcent.text(), texte);
    EXPECT_EQ(QString::number(barre.value()) + u'%', texte);
  }
  Dlg.Step();
  Dlg.Step();
  EXPECT_EQ(pourcent.text(), u"11%"_s);
  Dlg.SetTexte("Fichier 2");
  EXPECT_EQ(Trouve<QLabel>(*Progres(), "texte").text(), u"Fichier 2"_s);

  Dlg.FermeProgress();
  EXPECT_NE(Progres(), nullptr);
  EXPECT_FALSE(Fenetre.isEnabled());
  Dlg.FermeProgress();
  EXPECT_EQ(Progres(), nullptr);
  EXPECT_TRUE(Fenetre.isEnabled());
  EXPECT_EQ(Fenetre.focusWidget(), &champ);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  Dlg.FermeProgress();  // one too many is harmless
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Messages, SansBarreEtSansFenetre) {
  Fenetre.show();
  Dlg.OuvreProgress("Titre", "", true, 0);
  EXPECT_FALSE(Trouve<QProgressBar>(*Progres(), "barre").isVisible());
  EXPECT_FALSE(Trouve<QLabel>(*Progres(), "pourcent").isVisible());
  Dlg.SetPos(10);
  Dlg.SetMax(40);
  EXPECT_TRUE(Trouve<QProgressBar>(*Progres(), "barre").isVisible());
  Dlg.SetPos(10);
  EXPECT_EQ(Trouve<QLabel>(*Progres(), "pourcent").text(), u"25%"_s);
  Dlg.FermeProgress();

  Dlg.OuvreProgress("", "", true, 10);
  EXPECT_EQ(Progres(), nullptr);
  EXPECT_TRUE(Fenetre.isEnabled());
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  Dlg.Step();
  EXPECT_FALSE(Dlg.IsAborted());
  Dlg.FermeProgress();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Messages, AnnulePendantLeTravail) {
  Fenetre.show();
  for (const bool echap : {false, true}) {
    Dlg.OuvreProgress("Travail", "", true, 1000);
    EXPECT_FALSE(Dlg.IsAborted());  // the flag of the window before is forgotten
    QTimer::singleShot(0, &Fenetre, [&] {
      if (echap)
        QTest::keyClick(Progres(), Qt::Key_Escape);
      else
        Clique(Bouton(*Progres(), u"A&nnuler"_s));
    });
    unsigned tours = 0;
    while (!Dlg.IsAborted() && tours < 5000) {
      ++tours;
      Dlg.Step();
      QThread::msleep(1);
    }
    EXPECT_LT(tours, 5000u);
    EXPECT_NE(Progres(), nullptr);  // cancelling only asks
    Dlg.FermeProgress();
    EXPECT_EQ(Progres(), nullptr);
  }
}

// The open form, not the frame behind it, is the owner of boxes and of the progress.
TEST_F(Messages, ProgressionSurUneFiche) {
  Fenetre.show();
  QDialog fiche(&Fenetre);
  fiche.setObjectName(u"Fiche"_s);
  QLineEdit champ(&fiche);
  robot.Attend("Fiche", [&](QDialog& d) {
    robot.Attend("DialogMessage", [&](QDialog& boite) {
      EXPECT_EQ(boite.parentWidget(), &d);
      boite.reject();
    });
    Dlg.Erreur(3104, "x");
    Dlg.OuvreProgress("Travail", "", true, 100);
    EXPECT_FALSE(d.isEnabled());
    auto* progres = d.findChild<CDialogAbort*>();
    ASSERT_NE(progres, nullptr);
    EXPECT_TRUE(progres->isEnabled());
    robot.Attend("DialogMessage", [&](QDialog& boite) {
      EXPECT_EQ(boite.parentWidget(), progres);
      boite.reject();
    });
    Dlg.Erreur(3104, "x");
    QTest::mouseClick(&Bouton(*progres, u"A&nnuler"_s), Qt::LeftButton);
    EXPECT_TRUE(Dlg.IsAborted());
    Dlg.FermeProgress();
    EXPECT_TRUE(d.isEnabled());
    d.accept();
  });
  EXPECT_EQ(fiche.exec(), QDialog::Accepted);
}

TEST_F(Messages, PompeEtFin) {
  Fenetre.show();
  Dlg.OuvreProgress("Travail", "", true, 100);
  EXPECT_FALSE(Dlg.PompeMessages(true));
  bool passe = false, apres = false;
  QTimer::singleShot(0, &Fenetre, [&] { passe = true; });
  EXPECT_FALSE(Dlg.PompeMessages(false));
  EXPECT_TRUE(passe);
  Clique(Bouton(*Progres(), u"A&nnuler"_s));
  QTimer::singleShot(0, &Fenetre, [&] { apres = true; });
  EXPECT_TRUE(Dlg.PompeMessages(true));
  EXPECT_FALSE(apres);  // stopped at once
  QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
  EXPECT_FALSE(Dlg.PompeMessages(false));
  EXPECT_TRUE(Dlg.PompeMessages(false));  // the request is gone
  Dlg.FermeProgress();
}

}  // namespace
}  // namespace fenlor::test
