
#include <QListWidget>
#include <QWheelEvent>

#include "forms/session/comboexercices.h"
#include "forms/session/commandesexercice.h"
#include "forms/session/dialognewexercice.h"
#include "forms/session/dialogopenexercice.h"
#include "forms/session/dialogpassword.h"
#include "outils/uidetest.h"
#include "session/exercices.h"
#include "session/textes.h"
#include "store/motdepasse.h"

namespace fenlor::test {
namespace {

namespace fs = std::filesystem;

std::string Dates(QDialog& f) {
  return (Lu(f, "annee") + u' ' + Lu(f, "debut") + u' ' + Lu(f, "fin")).toStdString();
}

/// Boxes of the new-exercice form: "T" subject to VAT, "E" Euro, "D" both currencies; "!"
/// behind one that cannot be changed, lower case off, "." not shown.
std::string Cases(QDialog& f) {
  std::string texte;
  for (const auto& [nom, lettre] : {std::pair{"tva", 'T'}, {"euro", 'E'}, {"double", 'D'}}) {
    const auto& c = Trouve<QCheckBox>(f, nom);
    if (!c.isVisibleTo(&f)) {
      texte += '.';
      continue;
    }
    texte += c.isChecked() ? lettre : static_cast<char>(lettre + 32);
    if (!c.isEnabled()) texte += '!';
  }
  return texte;
}

class FormesExercices : public UiDeTest {
 protected:
  /// Runs the new-exercice form with one gesture; true when it ended with OK.
  bool Nouveau(std::function<void(QDialog&)> geste, const std::string& nomImpose = {}) {
    robot.Attend("DialogNewExercice", std::move(geste));
    destination.clear();
    return CDialogNewExercice(Ui, destination, nullptr, nomImpose).Execute();
  }
  void Exercices(std::initializer_list<const char*> noms) {
    for (const char* nom : noms) ASSERT_TRUE(CreeExercice(nom, std::string(nom) > "2001"));
  }
  void PoseMotDePasse() {
    ASSERT_TRUE(Magasin().Reglages().Ecrit("Activite", "Mot de Passe", MotDePasseBrouille("Secret")));
  }
  std::string destination;
};

TEST_F(FormesExercices, DuPremierDemarrageAUnExerciceOuvert) {
  unsigned options = 0;
  robot.Attend("DialogNewExercice", [](QDialog& f) {
    EXPECT_TRUE(Trouve<QRadioButton>(f, "annuel").isChecked());
    EXPECT_EQ(Dates(f), "2003 01/01/2003 31/12/2003");
    EXPECT_EQ(Cases(f), "tE!d");
    EXPECT_EQ(OrdreTab(f),
              (std::vector<std::string>{"annuel", "annee", "periode", "tva", "double", "ok", "annuler"}));
    EXPECT_EQ(f.focusWidget()->objectName(), u"annee"_s);
    Trouve<QAbstractButton>(f, "tva").click();
    Trouve<QAbstractButton>(f, "double").click();
    Trouve<QAbstractButton>(f, "euro").click();
    EXPECT_EQ(Cases(f), "TE!D") << "the Euro is no choice from 2002 on";
    Clique(Bouton(f, u"&Ok"_s));
  });
  CommandeNouvelExercice(Ui, [&] { ++options; });
  EXPECT_EQ(App().NomExercice, "2003");
  EXPECT_EQ(App().ExerciceOuvert, 1u);
  EXPECT_TRUE(App().AfficherDouble && App().Reglages.IsTVA() && App().Reglages.IsEuro());
  EXPECT_EQ(App().Reglages.LitIni("Activite", "Exercice"), "2003");
  EXPECT_EQ(options, 1u);
  EXPECT_EQ(Cadre.Appels, (std::vector<std::string>{"FermeToutes", "MontreExercice"}));
  robot.Attend("DialogNewExercice", [](QDialog& f) {
    EXPECT_EQ(Dates(f), "2004 01/01/2004 31/12/2004");
    EXPECT_EQ(Cases(f), "TE!d");
    Clique(Bouton(f, u"&Ok"_s));
  });
  CommandeNouvelExercice(Ui, [&] { ++options; });
  EXPECT_EQ(App().NomExercice, "2004");
  EXPECT_FALSE(App().AfficherDouble);
  EXPECT_EQ(options, 1u) << "only the first exercice opens the options";
  robot.Attend("DialogNewExercice", [](QDialog& f) { Clique(Bouton(f, u"A&nnuler"_s)); });
  CommandeNouvelExercice(Ui, {});
  EXPECT_EQ(App().NomExercice, "2004");
  EXPECT_EQ(Cadre.Nombre("FermeToutes"), 2u);
}

TEST_F(FormesExercices, UnRefusGardeLeFormulaireEtMontreLeChamp) {
  Exercices({"2003"});
  const auto refuse = [&](const char* champ) {
    return [champ](QDialog& f) {
      Clique(Bouton(f, u"&Ok"_s));
      ASSERT_TRUE(f.isVisible() && f.focusWidget());
      EXPECT_EQ(f.focusWidget()->objectName(), QString::fromUtf8(champ));
    };
  };
  EXPECT_FALSE(Nouveau([&](QDialog& f) {
    Tape(Trouve<QLineEdit>(f, "annee"), u"2 04"_s);
    refuse("annee")(f);
    EXPECT_EQ(Lu(f, "annee"), u"2 04"_s) << "what was typed stays";
    Clique(Trouve<QAbstractButton>(f, "periode"));
    Tape(Trouve<QLineEdit>(f, "debut"), u"01/01/2005"_s);
    Tape(Trouve<QLineEdit>(f, "fin"), u"31/02/2005"_s);
    refuse("fin")(f);
    Clique(Bouton(f, u"A&nnuler"_s));
  }));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{ErrNomExercice, ErrPeriode}));
  EXPECT_THAT(Boite.Erreurs.at(1).texte, HasSubstr("31/02/2005")) << "as it was typed";
  EXPECT_EQ(App().NomExercice, "2003") << "the open exercice stays open";
  EXPECT_EQ(destination, "");
}

TEST_F(FormesExercices, UneDateTapeeCompteSansQuitterSonChamp) {
  EXPECT_TRUE(Nouveau([](QDialog& f) {
    Clique(Trouve<QAbstractButton>(f, "periode"));
    Tape(Trouve<QLineEdit>(f, "debut"), u"01/07/2004"_s);
    QTest::keyClick(f.focusWidget(), Qt::Key_Return);
  }));
  EXPECT_EQ(destination, "2004");
  EXPECT_EQ(App().Reglages.GetFinExercice(), FaitDate(30, 6, 2005));
}

TEST_F(FormesExercices, UnNomImposeReste) {
  Exercices({"2003"});
  EXPECT_TRUE(Nouveau(
      [](QDialog& f) {
        EXPECT_EQ(Dates(f), "2005 01/01/2005 31/12/2005");
        EXPECT_FALSE(Trouve<QLineEdit>(f, "annee").isEnabled());
        Clique(Trouve<QAbstractButton>(f, "periode"));
        Tape(Trouve<QLineEdit>(f, "debut"), u"01/07/2004"_s);
        Clique(Bouton(f, u"&Ok"_s));
      },
      "2005"));
  EXPECT_EQ(destination, "2005");
  EXPECT_EQ(App().Reglages.GetDebutExercice(), FaitDate(1, 7, 2004));
}

TEST_F(FormesExercices, Ouvrir) {
  CommandeOuvrirExercice(Ui);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3072});
  Exercices({"2001", "2002", "2003"});
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2001", "Cloture", "10/02/2002"));
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2002", "AFFICHERDOUBLE", "Oui"));
  robot.Attend("DialogOpenExercice", [](QDialog& f) {
    auto& liste = Trouve<QListWidget>(f, "exercices");
    ASSERT_EQ(liste.count(), 3);
    EXPECT_EQ(liste.currentItem()->text(), u"2003 01/01/2003 - 31/12/2003"_s);
    EXPECT_TRUE(liste.item(0)->data(Qt::AccessibleTextRole).toString().endsWith(u"clôturé"_s));
    EXPECT_NE(liste.item(0)->icon().pixmap(16).toImage(), liste.item(1)->icon().pixmap(16).toImage());
    liste.clearSelection();
    Clique(Bouton(f, u"&Ok"_s));
    ASSERT_TRUE(f.isVisible()) << "nothing is selected";
    QTest::mouseClick(liste.viewport(), Qt::LeftButton, {}, liste.visualItemRect(liste.item(1)).center());
    QTest::mouseDClick(liste.viewport(), Qt::LeftButton, {}, liste.visualItemRect(liste.item(1)).center());
  });
  CommandeOuvrirExercice(Ui);
  EXPECT_EQ(App().NomExercice, "2002");
  EXPECT_TRUE(App().AfficherDouble);
  EXPECT_EQ(App().Reglages.LitIni("Activite", "Exercice"), "2002");
  EXPECT_EQ(Cadre.Appels, (std::vector<std::string>{"FermeToutes", "MontreExercice"}));
}

TEST_F(FormesExercices, MotDePasse) {
  Exercices({"2002", "2003"});
  EXPECT_TRUE(CDialogPassword(Ui).Execute()) << "no password: no window";
  PoseMotDePasse();
  CommandeFermerExercice(Ui);
  robot.Attend("DialogOpenExercice", [](QDialog& f) {
    Trouve<QListWidget>(f, "exercices").setCurrentRow(0);
    Clique(Bouton(f, u"&Ok"_s));
    ASSERT_TRUE(f.isVisible()) << "the password was not given";
    Clique(Bouton(f, u"&Ok"_s));
  });
  robot.Attend("DialogPassword", [](QDialog& f) { Clique(Bouton(f, u"A&nnuler"_s)); });
  robot.Attend("DialogPassword", [this](QDialog& f) {
    auto& champ = Trouve<QLineEdit>(f, "motDePasse");
    EXPECT_EQ(champ.echoMode(), QLineEdit::Password);
    EXPECT_EQ(champ.maxLength(), 16);
    Tape(champ, u"autre"_s);
    Clique(Bouton(f, u"&Ok"_s));
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3074});
    ASSERT_TRUE(f.isVisible());
    EXPECT_EQ(champ.text(), QString());
    EXPECT_EQ(f.focusWidget(), &champ);
    Tape(champ, u"secret"_s);
    QTest::keyClick(&champ, Qt::Key_Return);
  });
  CommandeOuvrirExercice(Ui);
  EXPECT_EQ(App().NomExercice, "2002");
  // one is open: the form asks no password
  robot.Attend("DialogOpenExercice", [](QDialog& f) { Clique(Bouton(f, u"&Ok"_s)); });
  CommandeOuvrirExercice(Ui);
  // the combo asks it again; giving up leaves none open
  robot.Attend("DialogPassword", [](QDialog& f) { Clique(Bouton(f, u"A&nnuler"_s)); });
  CommandeSelectionExercice(Ui, "2003");
  EXPECT_EQ(App().NomExercice, "");
  EXPECT_EQ(Magasin().NomExercice(), "");
}

TEST_F(FormesExercices, Supprimer) {
  Exercices({"2003"});
  Exercices({"2004"});
  CommandeSupprimerExercice(Ui);
  EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{QuestionSupprimeExercice});
  EXPECT_EQ(Cadre.Nombre("FermeToutes"), 0u) << "no: nothing is closed";
  EXPECT_EQ(App().NomExercice, "2004");
  Boite.Reponses = {RepOui};
  CommandeSupprimerExercice(Ui);
  EXPECT_EQ(App().NomExercice, "");
  EXPECT_EQ(Magasin().ListeExercices(), std::vector<std::string>{"2003"});
  EXPECT_EQ(Cadre.Nombre("FermeToutes"), 1u);
  EXPECT_EQ(Cadre.Appels.back(), "MontreExercice");
}

TEST_F(FormesExercices, Combo) {
  CComboExercices combo;
  combo.Remplit(App());
  EXPECT_EQ(combo.count(), 0);
  EXPECT_EQ(combo.currentIndex(), -1);
  Exercices({"2002", "2003"});
  combo.Remplit(App());
  ASSERT_EQ(combo.count(), 2);
  EXPECT_EQ(combo.currentText(), u"2003 01/01 - 31/12"_s);
  std::vector<std::string> choisis;
  combo.SurSelection([&](const std::string& nom) { choisis.push_back(nom); });
  combo.show();
  for (const int touche : {Qt::Key_Up, Qt::Key_2}) {
    QTest::keyClick(&combo, static_cast<Qt::Key>(touche));
    combo.hidePopup();
  }
  QWheelEvent molette({5, 5}, combo.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
  QApplication::sendEvent(&combo, &molette);
  EXPECT_TRUE(choisis.empty()) << "nothing is chosen by accident";
  EXPECT_EQ(combo.currentIndex(), 1);
  combo.setCurrentIndex(0);
  Q_EMIT combo.activated(0);
  EXPECT_EQ(choisis, std::vector<std::string>{"2002"});
  EXPECT_EQ(combo.currentIndex(), 1) << "the choice was refused";
  Q_EMIT combo.activated(1);
  EXPECT_EQ(choisis.size(), 1u) << "it is open already";
  FermeExercice(App());
  combo.Remplit(App());
  EXPECT_EQ(combo.currentIndex(), -1);
}

}  // namespace
}  // namespace fenlor::test
