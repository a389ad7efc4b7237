// The criteria form of charts, the chart's window, its way to paper, files and clipboard.

#include <QAction>
#include <QFileDialog>

#include "forms/graphiques/dialoggraph.h"
#include "forms/graphiques/dialogprintgraph.h"
#include "forms/graphiques/graphwinview.h"
#include "forms/reports/etatdetest.h"
#include "forms/reports/impressions.h"
#include "forms/reports/previewview.h"

namespace fenlor::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class GraphiqueTest : public EtatsUiTest {
 protected:
  void SetUp() override {
    EtatsUiTest::SetUp();
    EXPECT_TRUE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2003), Long("706"), 120.5, Long("512")));
    EXPECT_TRUE(AjouteSimple(JournalDepenses, FaitDate(14, 3, 2003), Long("6132"), 20, Long("512")));
  }
  std::unique_ptr<CDialogGraph> Ouvre() {
    auto forme = std::make_unique<CDialogGraph>(Ui);
    MontreFenetre(*forme);
    return forme;
  }
  /// Rows by what stands in their first column.
  static void Choisit(CDialogGraph& f, std::initializer_list<const char*> noms) {
    auto& liste = Trouve<ListeComptesGraphique>(f, "comptes");
    liste.clearSelection();
    for (const char* nom : noms)
      for (int i = 0; i < liste.Modele().NbLignes(); ++i)
        if (liste.Modele().Champ(i, 0) == QString::fromLatin1(nom))
          liste.selectionModel()->select(liste.Modele().index(i, 0),
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(liste.NbChoisies(), static_cast<int>(noms.size()));
  }
  static bool Ok(QDialog& f) {
    test::Ok(f);
    return !f.isVisible();
  }
  std::vector<unsigned> Dits() {
    const auto numeros = Boite.NumerosErreurs();
    Boite.Oublie();
    return numeros;
  }
  /// A window for two accounts, months.
  CGraphWinView& Fenetre(std::initializer_list<const char*> noms = {"706", "6132"}) {
    robot.Attend("DialogGraph", [noms](QDialog& f) {
      Clique(Case(f, "exercice"));
      Choisit(dynamic_cast<CDialogGraph&>(f), noms);
      Ok(f);
    });
    OuvreGraphique(Ui, *Impression, MontreVue);
    return dynamic_cast<CGraphWinView&>(*Vues.back());
  }

  std::vector<QPointer<Vue>> Vues;
  const std::function<void(Vue*)> MontreVue = [this](Vue* vue) {
    vue->setAttribute(Qt::WA_DeleteOnClose);
    Vues.emplace_back(vue);
    vue->resize(900, 600);
    MontreFenetre(*vue);
  };
  std::unique_ptr<Impressions> Impression = std::make_unique<Impressions>(Ui, MontreVue);
  ~GraphiqueTest() override {
    for (const QPointer<Vue>& vue : Vues) delete vue.data();
  }
};

TEST_F(GraphiqueTest, RefusEtFin) {
  const auto f = Ouvre();
  Clique(Case(*f, "exercice"));
  EXPECT_FALSE(Ok(*f));
  EXPECT_EQ(f->focusWidget()->objectName(), u"comptes"_s);
  Choisit(*f, {"706"});
  Clique(Case(*f, "comparaison"));
  EXPECT_FALSE(Ok(*f));
  EXPECT_THAT(Dits(), ElementsAre(3112u, 3113u));
  // A heading is a row like others.
  Choisit(*f, {"706", "TRESORERIE"});
  EXPECT_TRUE(Ok(*f));
  ASSERT_EQ(f->Serie().points.size(), 2u);
  EXPECT_EQ(f->Serie().points[0].valeur, 120.5);
  EXPECT_EQ(f->Serie().points[1].libelle, "");

  // Days in the wrong order end the form before anything else is looked at; what is no date is refused.
  const auto inverse = Ouvre();
  Clique(Case(*inverse, "periode"));
  Tape(Champ(*inverse, "du"), u"32/13"_s);
  EXPECT_FALSE(Ok(*inverse));
  EXPECT_THAT(Dits(), ElementsAre(3104u));
  robot.Attend("DialogGraph", [](QDialog& forme) {
    Clique(Case(forme, "periode"));
    Tape(Champ(forme, "du"), u"02/02/2003"_s);
    Tape(Champ(forme, "au"), u"01/02/2003"_s);
    Ok(forme);
  });
  robot.Attend("DialogGraph", [](QDialog& forme) { forme.reject(); });
  OuvreGraphique(Ui, *Impression, MontreVue);
  OuvreGraphique(Ui, *Impression, MontreVue);
  EXPECT_TRUE(Vues.empty() && Dits().empty());
}

TEST_F(GraphiqueTest, LeGenreSeChoisitEtReste) {
  CGraphWinView& vue = Fenetre();
  VerifieFormulaire(vue);
  EXPECT_EQ(vue.windowTitle(), u"Graphique : Evolution de plusieurs comptes"_s);
  EXPECT_EQ(vue.Graphique().Genre(), GenreGraphique::BarresV);
  for (unsigned numero = CmdBarresHorizontales; numero <= CmdSecteurs3D; ++numero)
    EXPECT_EQ(vue.Disponible(numero), numero != CmdBarresVerticales) << numero;
  const unsigned parGenre[] = {1074, 1075, 1070, 1071, 1072, 1073, 1076, 1077, 1078, 1079, 1080, 1081};
  for (int i = 0; i < NbGenresGraphique; ++i) {
    vue.Execute(parGenre[i]);
    EXPECT_EQ(static_cast<int>(vue.Graphique().Genre()), i);
    EXPECT_FALSE(vue.Disponible(parGenre[i]));
    EXPECT_FALSE(vue.grab().isNull());
  }
  auto& genres = Trouve<QComboBox>(vue, "genre");
  EXPECT_EQ(genres.currentText(), u"Secteurs 3D"_s);
  genres.setCurrentIndex(6);
  Q_EMIT genres.activated(6);
  EXPECT_EQ(Fenetre().Graphique().Genre(), GenreGraphique::Courbes);
}

TEST_F(GraphiqueTest, UnGroupeSeulNAPasDeTitre) {
  CGraphWinView& vue = Fenetre({"TRESORERIE"});
  EXPECT_EQ(vue.windowTitle(), u"Graphique"_s);
  for (const unsigned numero : {CmdAires, CmdBarresVerticales, CmdSurface, CmdSecteurs3D}) {
    vue.Execute(numero);
    EXPECT_FALSE(vue.grab().isNull());
  }
}

TEST_F(GraphiqueTest, ValeurSousLePointeurEtTableau) {
  CGraphWinView& vue = Fenetre();
  WidgetGraphique& g = vue.Graphique();
  EXPECT_EQ(g.TexteDuPoint(1), u"Fév : 120,50 €"_s);
  EXPECT_EQ(g.TexteDuPoint(12), QString());
  EXPECT_EQ(vue.Valeurs().Modele().Champ(2, 1), u"-20,00 €"_s);
  EXPECT_EQ(vue.Valeurs().Modele().NbLignes(), 12);
  // By pointer, by key and from the table.
  QTest::mouseMove(&g, QPoint(g.width() - 30, g.height() / 2));
  EXPECT_EQ(g.Choisi(), 11);
  EXPECT_EQ(vue.Valeurs().LigneChoisie(), 11);
  QTest::keyClick(&g, Qt::Key_Home);
  QTest::keyClick(&g, Qt::Key_Right);
  EXPECT_EQ(vue.Valeurs().LigneChoisie(), 1);
  vue.Valeurs().Relit(4);
  EXPECT_EQ(g.Choisi(), 4);
  EXPECT_TRUE(g.accessibleDescription().startsWith(u"Jan : 0,00 €; Fév : 120,50 €; Mar : -20,00 €"_s));
}

TEST_F(GraphiqueTest, CopieEtExporte) {
  CGraphWinView& vue = Fenetre();
  QClipboard& presse = *QGuiApplication::clipboard();
  vue.Execute(CmdCopier);
  EXPECT_FALSE(presse.image().isNull());
  EXPECT_TRUE(presse.text().startsWith(u"Evolution de plusieurs comptes\nJan\t0,00\nFév\t120,50\n"_s));
  vue.Execute(CmdCopierImage);
  EXPECT_EQ(presse.text(), QString());
  EXPECT_EQ(presse.image().size(), vue.Graphique().size() * 2);
  vue.Execute(CmdCopierValeurs);
  EXPECT_TRUE(presse.image().isNull());
  const struct {
    const char* nom;
    QByteArray debut;
  } cas[] = {{"g.png", "\x89PNG"}, {"g.svg", "<?xml"}, {"g.pdf", "%PDF"}};
  for (const auto& c : cas) {
    const QString chemin = QString::fromStdString(Dossier() + '/' + c.nom);
    robot.Attend("DialogExportGraphique", [&](QDialog& d) {
      auto& fichiers = dynamic_cast<QFileDialog&>(d);
      EXPECT_EQ(fichiers.selectedFiles().value(0).section(u'/', -1),
                u"Evolution-de-plusieurs-comptes-2003.png"_s);
      fichiers.selectFile(chemin);
      static_cast<QDialog&>(fichiers).accept();
    });
    vue.Execute(CmdExporterGraphique);
    QFile fichier(chemin);
    ASSERT_TRUE(fichier.open(QIODevice::ReadOnly)) << c.nom;
    EXPECT_TRUE(fichier.readAll().startsWith(c.debut)) << c.nom;
  }
}

TEST_F(GraphiqueTest, ApercuEtTaille) {
  CGraphWinView& vue = Fenetre();
  robot.Attend("DialogPrintGraph", [](QDialog& f) {
    EXPECT_TRUE(Case(f, "proportionnelle").isChecked());
    f.reject();
  });
  vue.Execute(CmdApercu);
  ASSERT_EQ(Vues.size(), 1u);
  robot.Attend("DialogPrintGraph", [](QDialog& f) {
    Clique(Case(f, "quart"));
    Ok(f);
  });
  vue.Execute(CmdApercu);
  ASSERT_EQ(Vues.size(), 2u);
  EXPECT_EQ(Vues[1]->windowTitle(), u"Evolution de plusieurs comptes - Aperçu avant impression"_s);
  EXPECT_FALSE(Trouve<QAction>(*Vues[1], "soignee").isVisible()) << "charts have one style";
  vue.showMinimized();
  Vues[1]->close();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(Vues[1]);
  // Its own answer is proposed the next time; cancelled, nothing is printed.
  robot.Attend("DialogPrintGraph", [](QDialog& f) {
    EXPECT_TRUE(Case(f, "quart").isChecked());
    Ok(f);
  });
  robot.Attend("DialogImpression", [](QDialog& d) { d.reject(); });
  vue.Execute(CmdImprimer);
  EXPECT_TRUE(Dits().empty());
}

}  // namespace
}  // namespace fenlor::test
