#include "app/commandes.h"

#include <QAction>
#include <QKeySequence>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <algorithm>
#include <set>
#include <utility>

#include "app/gestioncommandes.h"
#include "app/mainframe.h"
#include "app/mdichildframe.h"
#include "core/btfiles.h"
#include "core/cles.h"
#include "forms/auto/dialogautolist.h"
#include "journal/suspens.h"
#include "master/libelles.h"
#include "outils/uidetest.h"
#include "ui/dialogueqt.h"
#include "ui/images.h"
#include "ui/tableliste.h"
#include "ui/vue.h"

namespace fenlor::test {

namespace {

/// A document window that notes what happens to it.
class VueDeTest : public Vue {
 public:
  VueDeTest(ContexteUi& contexte, const std::string& titre, u32 bit, std::vector<std::string>& trace)
      : Vue(contexte, titre, bit), m_trace(trace) {
    Declare({{CmdAjouter, [this] { m_trace.push_back("1005 " + Titre()); }},
             {CmdModifier, [this] { m_trace.push_back("1006 " + Titre()); }, [] { return false; }}});
  }
  ~VueDeTest() override { m_trace.push_back("-" + Titre()); }
  void Charge() override {
    Vue::Charge();
    m_trace.push_back("+" + Titre());
  }
  void Actualise() override { m_trace.push_back("!" + Titre()); }

 private:
  std::vector<std::string>& m_trace;
};

class CommandesUiTest : public UiDeTest {
 protected:
  CommandesUiTest() : Principal(std::make_unique<CMainFrame>(App(), Dialogues)) {
    Fabrique(FenTresorerie, "Comptes de trésorerie");
    Fabrique(FenRecettes, "Ecritures de recettes");
    Fabrique(FenDepenses, "Ecritures de dépenses");
  }
  ~CommandesUiTest() override { Principal.reset(); }

  void Fabrique(u32 bit, const char* titre) {
    Principal->PoseFabrique(bit, [this, bit, nom = *DepuisUtf8(titre)](ContexteUi& contexte) {
      return new VueDeTest(contexte, nom, bit, Trace);
    });
  }
  std::string TraceUtf8() const {
    std::string tout;
    for (const std::string& ligne : Trace) tout += VersUtf8(ligne) + "\n";
    return tout;
  }
  QMdiSubWindow* Active() { return Principal->Zone().activeSubWindow(); }

  DialogueQt Dialogues;
  std::vector<std::string> Trace;
  std::unique_ptr<CMainFrame> Principal;
};

}  // namespace

TEST(TableCommandes, ChaqueLigneEstEntiereEtUnique) {
  std::set<unsigned> numeros;
  std::set<QString> touches;
  for (const Commande& commande : TableCommandes()) {
    SCOPED_TRACE(commande.texte);
    EXPECT_TRUE(numeros.insert(commande.numero).second);
    EXPECT_NE(*commande.texte, '\0');
    EXPECT_TRUE(ImageExiste(commande.image)) << commande.image;
    // What it does, or why it does nothing yet.
    EXPECT_NE(*commande.explication, '\0');
    if (*commande.raccourci == '\0') continue;
    const QKeySequence touche(QString::fromLatin1(commande.raccourci), QKeySequence::PortableText);
    EXPECT_FALSE(touche.isEmpty() || touche[0].key() == Qt::Key_unknown) << commande.raccourci;
    EXPECT_TRUE(touches.insert(touche.toString()).second) << commande.raccourci;
  }
}

TEST_F(CommandesUiTest, LeMenuFenetreNommeLesFenetresOuvertes) {
  Principal->show();
  QMenu* menu = nullptr;
  for (QAction* titre : Principal->menuBar()->actions())
    if (titre->text() == QString::fromUtf8(TitreMenu(Menu::Fenetre))) menu = titre->menu();
  ASSERT_TRUE(menu);
  const qsizetype sans = menu->actions().size();
  for (const u32 bit : {FenTresorerie, FenRecettes, FenDepenses}) Principal->OuvreUnique(bit);
  for (const QString& choisie :
       {QStringLiteral("&1 Comptes de trésorerie"), QStringLiteral("&2 Ecritures de recettes")}) {
    Q_EMIT menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), sans + 4);
    QAction* voulue = nullptr;
    for (QAction* ligne : menu->actions().mid(sans + 1)) {
      EXPECT_EQ(ligne->isChecked(), ligne->text().mid(3) == Active()->windowTitle());
      if (ligne->text() == choisie) voulue = ligne;
    }
    ASSERT_TRUE(voulue);
    voulue->trigger();
    EXPECT_EQ(Active()->windowTitle(), choisie.mid(3));
  }
  Principal->FermeToutes();
  Q_EMIT menu->aboutToShow();
  EXPECT_EQ(menu->actions().size(), sans);
}

TEST_F(CommandesUiTest, PremiereFenetreEtOnglets) {
  ASSERT_TRUE(CreeExercice("2003"));
  Principal->resize(1000, 700);
  Principal->show();
  Principal->OuvreUnique(FenRecettes);
  EXPECT_TRUE(Active()->isMaximized());
  Principal->Table().Execute(CmdOnglets);
  EXPECT_EQ(Principal->Zone().viewMode(), QMdiArea::TabbedView);
  EXPECT_TRUE(Principal->Table().Action(CmdOnglets)->isChecked());
  Principal->OuvreUnique(FenDepenses);
  CMainFrame autre(App(), Dialogues);
  autre.MontreAuDemarrage();
  EXPECT_TRUE(autre.EnOnglets()) << "the next session has them";
  Principal->Table().Execute(CmdMosaique);
  EXPECT_FALSE(Principal->EnOnglets());
  EXPECT_FALSE(Active()->isMaximized());
}

TEST_F(CommandesUiTest, TextesPlusGrands) {
  ASSERT_TRUE(CreeExercice("2003"));
  const double avant = QApplication::font().pointSizeF();
  const double liste = Principal->Contexte().Dessin.PoliceListes.pointSizeF();
  Principal->Table().Execute(CmdAgrandirTextes);
  EXPECT_NEAR(QApplication::font().pointSizeF(), avant * 1.1, 0.1);
  EXPECT_NEAR(Principal->Contexte().Dessin.PoliceListes.pointSizeF(), liste * 1.1, 0.1);
  EXPECT_EQ(App().Reglages.LitIni("Préférences"_w, "Zoom"), "110");
  for (int i = 0; i < 20; ++i) Principal->Table().Execute(CmdReduireTextes);
  EXPECT_EQ(App().Reglages.LitIni("Préférences"_w, "Zoom"), "75");
  Principal->Table().Execute(CmdTailleTextes);
  EXPECT_NEAR(QApplication::font().pointSizeF(), avant, 0.1);
  EXPECT_NEAR(Principal->Contexte().Dessin.PoliceListes.pointSizeF(), liste, 0.1);
}

TEST_F(CommandesUiTest, LesFormulairesGrandissentAuClavier) {
  ASSERT_TRUE(CreeExercice("2003"));
  CDialogAutoList f(Principal->Contexte(), {});
  f.show();
  f.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
  auto& table = Trouve<TableListe>(f, "liste");
  const auto polices = [&] {
    return std::pair(QApplication::font().pointSizeF(), table.font().pointSizeF());
  };
  const auto [programme, liste] = polices();
  for (QWidget* champ :
       {static_cast<QWidget*>(&table), static_cast<QWidget*>(&Trouve<QPushButton>(f, "annuler"))}) {
    champ->setFocus();
    QTest::keyClick(champ, Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    QTest::keyClick(champ, Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_NEAR(polices().first, programme * 1.25, 0.1);
    EXPECT_NEAR(polices().second, liste * 1.25, 0.1);
    QTest::keyClick(champ, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_NEAR(polices().second, liste * 1.1, 0.1);
    QTest::keyClick(champ, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(polices(), std::pair(programme, liste));
  }
}

TEST_F(CommandesUiTest, TientDansLEcran) {
  Principal->MontreAuDemarrage();
  QApplication::processEvents();
  const QRect ecran = Principal->screen()->availableGeometry();
  EXPECT_TRUE(ecran.contains(Principal->frameGeometry()));
  EXPECT_GE(ecran.height() - Principal->height(), 2 * Principal->fontMetrics().height())
      << "room for its title";
  EXPECT_LE(Principal->minimumSizeHint().width(), 1366);
  EXPECT_LE(Principal->minimumSizeHint().height(), 680);
}

TEST_F(CommandesUiTest, LesMenusMontrentCeQuiExiste) {
  QSet<QAction*> vues;
  for (QAction* titre : Principal->menuBar()->actions()) {
    ASSERT_NE(titre->menu(), nullptr);
    EXPECT_FALSE(titre->menu()->isEmpty()) << titre->text().toStdString();
    QSet<QChar> lettres;
    for (QAction* action : titre->menu()->actions()) {
      vues.insert(action);
      const qsizetype marque = action->text().indexOf(u'&');
      if (marque < 0) continue;
      const QChar lettre = action->text().at(marque + 1).toLower();
      // "&Virement interne..." and "&Validation du brouillard..." are prescribed, so are "&Cession..." and
      // "&Rebut...", "Mises à jour &automatiques..." and "Rec&alcul..."; the key goes from one to the other.
      EXPECT_TRUE(!lettres.contains(lettre) || QStringLiteral("avcr").contains(lettre))
          << titre->text().toStdString() << ": " << action->text().toStdString();
      lettres.insert(lettre);
    }
  }
  for (const Commande& commande : TableCommandes()) {
    QAction* action = Principal->Table().Action(commande.numero);
    EXPECT_EQ(action != nullptr, commande.action != nullptr) << commande.texte;
    if (action && commande.menu != Menu::Aucun) {
      EXPECT_TRUE(vues.contains(action)) << commande.texte;
    }
  }
}

TEST_F(CommandesUiTest, LaDisponibiliteSuitLaSession) {
  const auto active = [&](unsigned numero) { return Principal->Table().Action(numero)->isEnabled(); };
  EXPECT_TRUE(active(CmdNouvelExercice) && active(CmdPreferences));
  for (const unsigned numero : {CmdOuvrirExercice, CmdFermerExercice, CmdSupprimerExercice, CmdProprietes,
                                CmdOptions, CmdReconstruction, CmdRecalcul, CmdAjustementEuro})
    EXPECT_FALSE(active(numero)) << numero;

  ASSERT_TRUE(CreeExercice("2003"));
  App().ExerciceOuvert = 1;
  Principal->MontreExercice();
  for (const unsigned numero :
       {CmdOuvrirExercice, CmdFermerExercice, CmdSupprimerExercice, CmdProprietes, CmdOptions})
    EXPECT_TRUE(active(numero)) << numero;
  EXPECT_EQ(Principal->windowTitle(), QStringLiteral("Fenlor Exercice : 2003"));

  // A closed exercice keeps its commands but for deletion; blanks do not close one.
  App().Reglages.EcritIniExercice("2003", Texte(CleCloture), "31/12/2003");
  Principal->MontreExercice();
  EXPECT_FALSE(active(CmdSupprimerExercice));
  EXPECT_TRUE(active(CmdRecalcul));

  App().NomExercice.clear();
  App().ExerciceOuvert = 0;
  Principal->MontreExercice();
  EXPECT_FALSE(active(CmdProprietes));
  EXPECT_TRUE(active(CmdFermerExercice)) << "the combo still has a line";
  EXPECT_EQ(Principal->windowTitle(), QStringLiteral("Fenlor"));
}

// Figures lead to what they are made of; an entry that was being typed is offered until it is answered.
TEST_F(CommandesUiTest, LAccueilMontreLArgentEtPropose) {
  ASSERT_TRUE(CreeExercice("2003"));
  ASSERT_TRUE(PoseCompte("512", Tresorerie, "BQ", "Banque", 1));
  ChangeCompte("512", [](Plan& compte) { compte.DebitEuro = 20; });
  Fabrique(FenComptesDepenses, "Comptes de dépenses");
  App().ExerciceOuvert = 1;
  SaisieSuspendue saisie;
  saisie.ecriture.date = FaitDate(12, 3, 2003);
  saisie.ecriture.libelle = "Consultation";
  ASSERT_TRUE(NoteSuspens(App(), saisie));
  Principal->MontreExercice();
  Principal->show();

  const auto figure = [&](const QString& nom) -> QPushButton& {
    for (QPushButton* bouton : Principal->findChildren<QPushButton*>())
      if (bouton->accessibleName().startsWith(nom) && bouton->isVisible()) return *bouton;
    throw std::runtime_error("no figure " + nom.toStdString());
  };
  EXPECT_EQ(figure(QStringLiteral("Banque, Livres")).text(), QStringLiteral("20,00 €"));
  EXPECT_EQ(figure(QStringLiteral("Banque, Rapproché")).text(), QStringLiteral("0,00 €"));
  // On a small screen the money stands above the commands.
  const auto& accueil = Trouve<QScrollArea>(*Principal, "accueil");
  for (int large = 800; large >= 560; large -= 8) {
    Principal->resize(large, 500);
    QApplication::processEvents();
    EXPECT_EQ(accueil.horizontalScrollBar()->maximum(), 0) << large;
  }
  EXPECT_FALSE(figure(QStringLiteral("Banque, Livres")).visibleRegion().isEmpty());
  Clique(figure(QStringLiteral("Banque, Livres")));
  ASSERT_TRUE(Active());
  EXPECT_EQ(Active()->windowTitle(), QStringLiteral("Comptes de trésorerie"));
  Principal->FermeToutes();
  QApplication::processEvents();
  Clique(figure(QStringLiteral("Dépenses, 2003")));
  ASSERT_TRUE(Active());
  EXPECT_EQ(Active()->windowTitle(), QStringLiteral("Comptes de dépenses"));

  auto& barre = Trouve<BarreOffre>(*Principal, "offre");
  EXPECT_TRUE(barre.isVisible());
  EXPECT_EQ(Trouve<QLabel>(barre, "texteOffre").text(),
            QStringLiteral("Reprendre la saisie du 12/03 (Consultation)"));
  // What passes gives its place back to what waits.
  Principal->Offre({QStringLiteral("Fait."), {}, 1});
  EXPECT_EQ(Trouve<QLabel>(barre, "texteOffre").text(), QStringLiteral("Fait."));
  QTest::qWait(50);
  Clique(Bouton(barre, QStringLiteral("A&bandonner")));
  EXPECT_FALSE(barre.isVisible());
  EXPECT_FALSE(LitSuspens(App()));
}

TEST_F(CommandesUiTest, UneSeuleFenetreDeChaqueSorte) {
  ASSERT_TRUE(CreeExercice("2003"));
  Principal->resize(1000, 700);
  Principal->show();
  Principal->OuvreUnique(FenRecettes);
  QMdiSubWindow* recettes = Active();
  ASSERT_NE(recettes, nullptr);
  Principal->OuvreUnique(FenDepenses);
  EXPECT_NE(Active(), recettes);
  Principal->OuvreUnique(FenRecettes);
  EXPECT_EQ(Active(), recettes);
  EXPECT_EQ(TraceUtf8(), "+Ecritures de recettes\n+Ecritures de dépenses\n");
  for (const QMdiSubWindow* fenetre : Principal->Zone().subWindowList())
    EXPECT_TRUE(Principal->Zone().viewport()->rect().contains(fenetre->geometry()));

  // The maximised state survives the change of window.
  recettes->showMaximized();
  Principal->OuvreUnique(FenDepenses);
  EXPECT_TRUE(Active()->isMaximized());
  Principal->OuvreUnique(FenTresorerie);
  EXPECT_TRUE(Active()->isMaximized());

  // Commands of the active window.
  Principal->Table().Execute(CmdAjouter);
  Principal->Table().Execute(CmdModifier);
  EXPECT_FALSE(Principal->Table().Action(CmdModifier)->isEnabled());
  EXPECT_EQ(VersUtf8(Trace.back()), "1005 Comptes de trésorerie");
}

TEST_F(CommandesUiTest, UneRegleActualiseUneFois) {
  ASSERT_TRUE(CreeExercice("2003"));
  Fabrique(FenRubriques, "Rubriques");
  Fabrique(FenLibelles, "Labels");
  Fabrique(FenImmobilisations, "Register");
  for (const u32 bit : {FenTresorerie, FenRecettes, FenRubriques}) Principal->OuvreUnique(bit);
  CPlan plan(App(), App().PathExercice);
  ASSERT_TRUE(plan.OpenFile());
  const auto ecrit = [&] { return Magasin().QVWriteRec(FichierComptes, 1, plan.Rec); };
  const auto vues = [&] {
    QApplication::processEvents();
    return std::exchange(Trace, {});
  };
  ASSERT_TRUE(Magasin().QVReadRec(FichierComptes, 1, plan.Rec));
  vues();
  {
    QVAPI::Unite unite(Magasin());
    ASSERT_TRUE(ecrit());
    EXPECT_TRUE(vues().empty());
  }
  EXPECT_TRUE(vues().empty()) << "an undone unit changed nothing";
  Dialogues.OuvreProgress("Travail", "", false, 0);
  ASSERT_TRUE(ecrit() && ecrit());
  EXPECT_TRUE(vues().empty()) << "not before the rule is through";
  Dialogues.FermeProgress();
  Principal->Actualise();
  EXPECT_EQ(vues(), (std::vector<std::string>{"!Comptes de tr\xE9sorerie", "!Ecritures de recettes"}));
  ASSERT_TRUE(ecrit() && ecrit());
  EXPECT_EQ(vues().size(), 2u) << "nobody asked for it";
  Principal->OuvreUnique(FenLibelles);
  Principal->OuvreUnique(FenImmobilisations);
  vues();
  ASSERT_FALSE(EcritLibelles(App(), {"Loyer"}));
  EXPECT_THAT(vues(), ElementsAre("!Labels"));
  Amortissement annee{};
  annee.Numero = 1;
  annee.Annee = 2003;
  ASSERT_TRUE(Magasin().WriteAmortissements(annee));
  EXPECT_THAT(vues(), ElementsAre("!Register"));
  Principal->Note(ReglageMonnaies);
  EXPECT_EQ(vues().size(), 3u) << "all that shows amounts";
}

TEST_F(CommandesUiTest, LesFenetresReviennent) {
  ASSERT_TRUE(CreeExercice("2003"));
  Principal->resize(1000, 700);
  Principal->show();
  Principal->OuvreUnique(FenDepenses);
  Principal->OuvreUnique(FenTresorerie);
  Active()->showNormal();
  Active()->setGeometry(30, 40, 420, 300);
  Trace.clear();
  // Work that needs the files for itself.
  AvecFichiersSeul(Principal->Contexte(), [&] { Trace.push_back("travail"); });
  ASSERT_EQ(Trace.size(), 5u);
  EXPECT_EQ(Trace[2], "travail") << "both windows are gone before";
  EXPECT_EQ(VersUtf8(Trace[3]), "+Comptes de trésorerie");
  EXPECT_EQ(VersUtf8(Trace[4]), "+Ecritures de dépenses");
  EXPECT_EQ(App().Reglages.LitIni("Fenlor", "Fenêtres ouvertes"_w), "513");
  Principal->OuvreUnique(FenTresorerie);
  EXPECT_EQ(Active()->geometry(), QRect(30, 40, 420, 300));

  // At the close of the program as well, unless the setting says no.
  Principal->close();
  EXPECT_EQ(App().Reglages.LitIni("Fenlor", "Fenêtres ouvertes"_w), "513");
  Trace.clear();
  App().Reglages.EcritIni("Fenlor", "Fenêtres ouvertes"_w, "");
  Principal->Restaure();
  EXPECT_TRUE(Trace.empty());
}

}  // namespace fenlor::test
