#include <QAction>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QTreeWidget>

#include "app/barreetat.h"
#include "app/barreicones.h"
#include "app/personnaliser.h"
#include "app/raccourcis.h"
#include "app/textes.h"
#include "core/cles.h"
#include "master/textes.h"
#include "outils/uidetest.h"
#include "session/textes.h"
#include "ui/images.h"

namespace fenlor::test {

namespace {

void Choisit(CListeCommandes& liste, unsigned numero) {
  liste.Recherche().clear();
  for (QTreeWidgetItemIterator i(&liste.Table()); *i && liste.Choisie() != numero; ++i)
    liste.Table().setCurrentItem(*i);
}

class Barres : public UiDeTest {
 public:
  Barres() {
    for (const unsigned numero :
         {unsigned{CmdOuvrirExercice}, unsigned{CmdOptions}, unsigned{CmdCalculatrice}, unsigned{CmdAide}}) {
      auto* action = new QAction(QString::fromUtf8(TrouveCommande(numero)->texte), &m_racine);
      action->setObjectName(QString::number(numero));
      m_actions[numero] = action;
    }
  }

  FournitAction Fournit() {
    return [this](unsigned numero) { return m_actions.contains(numero) ? m_actions[numero] : nullptr; };
  }
  void EcritReglage(const TexteFixe& section, const TexteFixe& cle, const std::string& valeur) {
    ASSERT_TRUE(App().Reglages.EcritIni(Texte(section), Texte(cle), valeur));
  }
  void EcritRaccourci(unsigned numero, const std::string& valeur) {
    ASSERT_TRUE(App().Reglages.EcritIni(Texte(SecRaccourcis), std::to_string(numero), valeur));
  }
  std::string LitRaccourci(unsigned numero) {
    return App().Reglages.LitIni(Texte(SecRaccourcis), std::to_string(numero));
  }
  std::string Touche(unsigned numero) {
    return LitRaccourcis(App()).at(numero).toString(QKeySequence::PortableText).toStdString();
  }
  static std::string SectionIcones() { return TexteFormat(FormatSecBarreOutils, {"0"}); }
  std::string Commandes() { return App().Reglages.LitIni(SectionIcones(), Texte(CleCommandesBarre)); }
  /// What the bar shows: names of the actions, "-" for a separator.
  static std::string Montre(const QToolBar& barre) {
    std::string texte;
    for (const QAction* action : barre.actions())
      texte +=
          (texte.empty() ? "" : ",") + (action->isSeparator() ? "-" : action->objectName().toStdString());
    return texte;
  }

  std::map<unsigned, QAction*> m_actions;

 private:
  QObject m_racine;
};

}  // namespace

TEST_F(Barres, ShortcutEntriesCountWhenTheyAreSound) {
  struct Cas {
    unsigned numero;
    const char* valeur;
    const char* attendu;
  };
  for (const Cas& cas :
       {Cas{CmdOptions, "Ctrl+G", "Ctrl+G"}, Cas{CmdOptions, "-", ""}, Cas{CmdOptions, "", "F12"},
        Cas{CmdOptions, "Ctrl+G, Ctrl+L", "F12"}, Cas{CmdOptions, "K", "F12"},
        Cas{CmdOptions, "Return", "F12"}, Cas{CmdOptions, "Bidule+%", "F12"}, Cas{CmdOptions, "Alt+F", "F12"},
        Cas{CmdOptions, "Ctrl+N", "F12"},  // another's default
        Cas{CmdPreferences, "F12", ""}, Cas{CmdPreferences, "Ctrl+Alt+P", "Ctrl+Alt+P"}}) {
    EcritRaccourci(cas.numero, cas.valeur);
    EXPECT_EQ(Touche(cas.numero), cas.attendu) << cas.valeur;
    ASSERT_TRUE(Magasin().Reglages().Ecrit(Texte(SecRaccourcis), "", std::nullopt));
  }
}

TEST_F(Barres, ShortcutsMayBeSwappedAndTwoIntrudersDoNotShare) {
  EcritRaccourci(CmdNouvelExercice, "Ctrl+O");
  EcritRaccourci(CmdOuvrirExercice, "Ctrl+N");
  EXPECT_EQ(Touche(CmdNouvelExercice), "Ctrl+O");
  EXPECT_EQ(Touche(CmdOuvrirExercice), "Ctrl+N");
  // Half of a swap: the key's owner wins, and so the other goes home too.
  EcritRaccourci(CmdOuvrirExercice, "Ctrl+Tab, A");
  EXPECT_EQ(Touche(CmdNouvelExercice), "Ctrl+N");
  EXPECT_EQ(Touche(CmdOuvrirExercice), "Ctrl+O");

  EcritRaccourci(CmdPreferences, "Ctrl+G");
  EcritRaccourci(CmdFermerExercice, "Ctrl+G");
  EXPECT_EQ(Touche(CmdFermerExercice), "Ctrl+G");
  EXPECT_EQ(Touche(CmdPreferences), "");
}

TEST_F(Barres, OnlyShortcutsThatDifferAreWritten) {
  EcritRaccourci(99999, "Ctrl+F3");  // of a later version
  EcritRaccourci(CmdAide, "n'importe quoi");
  TableRaccourcis table = RaccourcisParDefaut();
  table[CmdOptions] = QKeySequence(Qt::CTRL | Qt::Key_G);
  table[CmdCalculatrice] = {};
  ASSERT_TRUE(EcritRaccourcis(App(), table));
  EXPECT_EQ(LitRaccourci(CmdOptions), "Ctrl+G");
  EXPECT_EQ(LitRaccourci(CmdCalculatrice), "-");
  EXPECT_EQ(App().Magasin.Reglages().Cles(Texte(SecRaccourcis)).size(), 3u);
  EXPECT_EQ(LitRaccourcis(App()), table);
  ASSERT_TRUE(EcritRaccourcis(App(), RaccourcisParDefaut()));
  EXPECT_EQ(App().Magasin.Reglages().Cles(Texte(SecRaccourcis)), std::vector<std::string>{"99999"});
}

TEST_F(Barres, ShortcutFormAssignsRefusesAndRemoves) {
  robot.Attend("DialogRaccourcis", [&](QDialog& dialogue) {
    auto& liste = Trouve<CListeCommandes>(dialogue, "liste");
    auto& touche = Trouve<QKeySequenceEdit>(dialogue, "touche");
    Tape(liste.Recherche(), u"preference"_s);  // without its accent
    ASSERT_EQ(liste.Choisie(), CmdPreferences);
    Va(touche);
    QTest::keyClick(&touche, Qt::Key_G, Qt::ControlModifier);
    QTest::keyClick(&touche, Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(touche.keySequence(), QKeySequence(Qt::CTRL | Qt::Key_G));
    QTest::keyClick(&touche, Qt::Key_Return);  // assigns, and the form stays
    ASSERT_TRUE(dialogue.isVisible());
    EXPECT_EQ(liste.Table().currentItem()->text(1), u"Ctrl+G"_s);
    EXPECT_TRUE(touche.keySequence().isEmpty());

    Choisit(liste, CmdOptions);
    QTest::keyClick(&touche, Qt::Key_G, Qt::ControlModifier);
    QTest::keyClick(&touche, Qt::Key_A, Qt::AltModifier);  // the button's access key
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return !Boite.Erreurs.empty(); }));  // a button shows that it is pressed
    ASSERT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrRaccourciPris});
    EXPECT_NE(Boite.Erreurs[0].texte.find("Préférences"_w), std::string::npos);
    QTest::keyClick(&touche, Qt::Key_Z);
    Clique(Trouve<QPushButton>(dialogue, "affecter"));
    EXPECT_EQ(Boite.NumerosErreurs().back(), ErrRaccourciInterdit);
    touche.clear();
    QTest::keyClick(&touche, Qt::Key_Tab);  // leaves the field
    EXPECT_FALSE(touche.hasFocus());
    EXPECT_TRUE(touche.keySequence().isEmpty());

    Clique(Trouve<QPushButton>(dialogue, "supprimer"));
    Choisit(liste, CmdCalculatrice);
    Va(touche);
    QTest::keyClick(&touche, Qt::Key_F12);
    Clique(Bouton(dialogue, u"&Ok"_s));  // the typed key counts
  });
  EXPECT_TRUE([&] { return CDialogRaccourcis(Ui).Execute(); }());
  EXPECT_EQ(Touche(CmdPreferences), "Ctrl+G");
  // F12 was given up by its owner, but a default of the table it is still: the file tells both.
  EXPECT_EQ(Touche(CmdOptions), "");
  EXPECT_EQ(Touche(CmdCalculatrice), "F12");
}

TEST_F(Barres, ShortcutFormGoesBackToDefaultsAndCancelWritesNothing) {
  EcritRaccourci(CmdOptions, "-");
  EcritRaccourci(CmdCalculatrice, "F12");
  robot.Attend("DialogRaccourcis", [&](QDialog& dialogue) {
    auto& liste = Trouve<CListeCommandes>(dialogue, "liste");
    Choisit(liste, CmdOptions);
    Clique(Trouve<QPushButton>(dialogue, "defaut"));  // F12 is the calculator's now
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrRaccourciPris});
    Clique(Trouve<QPushButton>(dialogue, "tout"));
    QTest::keyClick(&dialogue, Qt::Key_Escape);
  });
  robot.Attend("DialogRaccourcis", [&](QDialog& dialogue) {
    Clique(Trouve<QPushButton>(dialogue, "tout"));
    Clique(Bouton(dialogue, u"&Ok"_s));
  });
  EXPECT_FALSE(CDialogRaccourcis(Ui).Execute());
  EXPECT_EQ(Touche(CmdCalculatrice), "F12");
  EXPECT_TRUE(CDialogRaccourcis(Ui).Execute());
  EXPECT_EQ(LitRaccourcis(App()), RaccourcisParDefaut());
  EXPECT_TRUE(App().Magasin.Reglages().Cles(Texte(SecRaccourcis)).empty());
}

TEST_F(Barres, IconBarKeepsCommandsThatDoNotExistYet) {
  App().Reglages.EcritIni(SectionIcones(), Texte(CleCommandesBarre),
                          "0, 1012, 0, 1044,77777,1044,0,0,1012,1213,0");
  App().Reglages.EcritIni(SectionIcones(), Texte(CleTailleIcones), "48");
  CBarreIcones barre(Ui, Fournit());
  barre.Charge();
  EXPECT_EQ(Montre(barre), "1044,-,1213");
  EXPECT_EQ(barre.iconSize(), QSize(48, 48));
  ASSERT_TRUE(barre.Enregistre());
  EXPECT_EQ(Commandes(), "1012,0,1044,77777,0,1213");

  QAction recettes;
  recettes.setObjectName(u"1012"_s);
  m_actions[1012] = &recettes;
  barre.Charge();
  EXPECT_EQ(Montre(barre), "1012,-,1044,-,1213");
}

TEST_F(Barres, DamagedIconBarIsTheDefaultAndAnEmptyOneStaysEmpty) {
  for (const char* liste : {"", "1044,,1213", "1044;1213", "abc", "1044,-3", "99999999999999", "1044,"}) {
    App().Reglages.EcritIni(SectionIcones(), Texte(CleCommandesBarre), liste);
    App().Reglages.EcritIni(SectionIcones(), Texte(CleTailleIcones), "17");
    App().Reglages.EcritIni(SectionIcones(), Texte(CleTextesIcones), "Partout");
    EXPECT_EQ(LitContenuBarre(App()), ContenuParDefaut()) << liste;
  }
  const ContenuBarre vide{{}, 16, Qt::ToolButtonIconOnly};
  ASSERT_TRUE(EcritContenuBarre(App(), vide));
  EXPECT_EQ(LitContenuBarre(App()), vide);
}

TEST_F(Barres, CustomiseFormByKeyboard) {
  App().Reglages.EcritIni(SectionIcones(), Texte(CleCommandesBarre), "1044,1012,1213");
  CBarreIcones barre(Ui, Fournit());
  barre.Charge();
  robot.Attend("DialogPersonnaliser", [&](QDialog& dialogue) {
    auto& disponibles = Trouve<CListeCommandes>(dialogue, "disponibles");
    auto& contenu = Trouve<QListWidget>(dialogue, "contenu");
    EXPECT_EQ(OrdreTab(dialogue)[0], "recherche");
    Tape(disponibles.Recherche(), u"ouvrir exer"_s);
    ASSERT_EQ(disponibles.Choisie(), CmdOuvrirExercice);
    contenu.setCurrentRow(2);
    Va(disponibles.Table());
    QTest::keyClick(&disponibles.Table(), Qt::Key_Insert);
    ASSERT_EQ(contenu.count(), 4);
    EXPECT_FALSE(Trouve<QPushButton>(dialogue, "ajouter").isEnabled());
    Va(contenu);
    QTest::keyClick(&contenu, Qt::Key_Up, Qt::AltModifier);
    QTest::keyClick(&contenu, Qt::Key_Up, Qt::AltModifier);  // past the hidden command, to the top
    QTest::keyClick(&contenu, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(contenu.currentRow(), 0);
    Clique(Trouve<QPushButton>(dialogue, "separateur"));
    Va(contenu);
    contenu.setCurrentRow(contenu.count() - 1);
    QTest::keyClick(&contenu, Qt::Key_Delete);
    Trouve<EditeurChoix>(dialogue, "taille").Choisit("24");
    Clique(Bouton(dialogue, u"&Ok"_s));
  });
  barre.Personnalise();
  EXPECT_EQ(Montre(barre), "1001,-,1044");
  EXPECT_EQ(Commandes(), "1001,0,1044,1012");
  EXPECT_EQ(barre.iconSize(), QSize(24, 24));

  robot.Attend("DialogPersonnaliser", [](QDialog& dialogue) {
    Clique(Trouve<QPushButton>(dialogue, "defaut"));
    QTest::keyClick(&dialogue, Qt::Key_Escape);
  });
  barre.Personnalise();
  EXPECT_EQ(Montre(barre), "1001,-,1044");
}

TEST_F(Barres, MenuOfTheIconBarChangesItsLook) {
  QMainWindow fenetre;
  auto* barre = new CBarreIcones(Ui, Fournit(), &fenetre);
  fenetre.addToolBar(barre);
  fenetre.show();
  const auto choisit = [&](const QString& texte) {
    QContextMenuEvent evenement(QContextMenuEvent::Mouse, {1, 1}, barre->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(barre, &evenement);
    QMenu& menu = Trouve<QMenu>(*barre, "menuBarreIcones");
    bool trouve = false;
    for (QAction* action : menu.actions())
      if (action->text() == texte) {
        action->trigger();
        trouve = true;
      }
    EXPECT_TRUE(trouve) << texte.toStdString();
    delete &menu;
  };
  choisit(u"&Petites"_s);
  choisit(u"Sa&ns texte"_s);
  EXPECT_EQ(barre->iconSize(), QSize(16, 16));
  EXPECT_EQ(LitContenuBarre(App()).Taille, 16);
  EXPECT_EQ(LitContenuBarre(App()).Textes, Qt::ToolButtonIconOnly);
}

TEST_F(Barres, PlacesComeBackAndDamagedOnesAreIgnored) {
  struct Fenetre : QMainWindow {
    explicit Fenetre(ContexteUi& contexte)
        : Outils(addToolBar(u"Outils"_s)),
          Icones(new CBarreIcones(
              contexte, [](unsigned) { return nullptr; }, this)) {
      Outils->setObjectName(u"BarreOutils"_s);
      addToolBar(Qt::LeftToolBarArea, Icones);
      setStatusBar(new CBarreEtat(contexte, this));
      resize(600, 400);
      show();
    }
    QToolBar* Outils;
    CBarreIcones* Icones;
  };
  {
    Fenetre premiere(Ui);
    EXPECT_FALSE(RestaureBarres(premiere, App()));
    premiere.addToolBar(Qt::BottomToolBarArea, premiere.Icones);
    premiere.Outils->hide();
    premiere.statusBar()->hide();
    SauveBarres(premiere, App());
  }
  Fenetre seconde(Ui);
  EXPECT_TRUE(RestaureBarres(seconde, App()));
  EXPECT_EQ(seconde.toolBarArea(seconde.Icones), Qt::BottomToolBarArea);
  EXPECT_FALSE(seconde.Outils->isVisible() || seconde.statusBar()->isVisible());

  const std::string bon = App().Reglages.LitIni(Texte(SecBarreOutils), Texte(CleEtatBarres));
  ASSERT_GT(bon.size(), 40u);
  std::string touche = bon;
  touche[30] = touche[30] == 'A' ? 'B' : 'A';
  for (const std::string& etat :
       {touche, bon.substr(0, bon.size() / 2), std::string("???"), std::string("AA"), std::string()}) {
    EcritReglage(SecBarreOutils, CleEtatBarres, etat);
    Fenetre troisieme(Ui);
    EXPECT_FALSE(RestaureBarres(troisieme, App())) << etat;
    EXPECT_EQ(troisieme.toolBarArea(troisieme.Icones), Qt::LeftToolBarArea);
    EXPECT_TRUE(troisieme.Outils->isVisible());
  }
}

TEST_F(Barres, StatusBarShowsExerciceAndTime) {
  ASSERT_TRUE(CreeExercice("2003"));
  CBarreEtat barre(Ui);
  barre.show();
  const auto texte = [&](const char* nom) { return Trouve<QLabel>(barre, nom).text(); };
  EXPECT_EQ(texte("exercice"), u"Exercice 2003"_s);
  EXPECT_EQ(texte("monnaie"), u"Euro"_s);
  EXPECT_FALSE(Trouve<QWidget>(barre, "cloture").isVisible());
  barre.MontreHeure(QDateTime(QDate(2026, 11, 21), QTime(9, 5, 59)));
  EXPECT_EQ(texte("heure"), u"09:05"_s);
  EXPECT_EQ(Trouve<QLabel>(barre, "heure").toolTip(), u"samedi 21 novembre 2026"_s);

  App().Reglages.EcritIniExercice({}, Texte(CleCloture), "Oui");
  barre.MontreExercice();
  EXPECT_TRUE(Trouve<QWidget>(barre, "cloture").isVisible());
  App().NomExercice.clear();
  barre.MontreExercice();
  EXPECT_FALSE(Trouve<QWidget>(barre, "exercice").isVisible());
  EXPECT_FALSE(Trouve<QWidget>(barre, "cloture").isVisible());
}

}  // namespace fenlor::test
