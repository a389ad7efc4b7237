// Preview and printing: the life of a report.
#include <sys/resource.h>

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrinter>
#include <csignal>

#include "forms/reports/etatdetest.h"
#include "forms/reports/feuillesapercu.h"
#include "forms/reports/impressions.h"
#include "forms/reports/previewtoolbar.h"
#include "forms/reports/previewview.h"
#include "forms/reports/textes.h"
#include "ui/traductions.h"

namespace fenlor::test {
namespace {

class ApercuTest : public EtatsUiTest {
 protected:
  ~ApercuTest() override {
    Impression.reset();
    EXPECT_EQ(EtatDeTest::Vivants, 0);
  }

  static Impressions::Fabrique Fabrique(unsigned lignes, bool paysage = false, bool demande = false) {
    return [=](CFenlorApp& app, DemandeurCriteres& demandeur) {
      return std::make_unique<EtatDeTest>(app, demandeur, lignes, paysage, demande);
    };
  }
  CZNPreviewView& Ouvre(unsigned lignes, bool paysage = false) {
    EXPECT_TRUE(Impression->Ouvre(Fabrique(lignes, paysage), DemandeEtat::Apercu));
    return *Apercu();
  }
  CZNPreviewView* Apercu() { return Impression->Dernier() ? Impression->Dernier()->Apercu() : nullptr; }
  CEtatView* Pages() { return Impression->Dernier()->Pages(); }
  void Touche(Qt::Key touche, Qt::KeyboardModifiers modificateurs = {}) {
    QTest::keyClick(&Apercu()->Feuilles(), touche, modificateurs);
  }
  QAction& Action(const char* nom) { return Trouve<QAction>(Apercu()->Barre(), nom); }
  std::string Numero() { return Trouve<QLabel>(Apercu()->Barre(), "numeroPage").text().toStdString(); }
  /// Commands of the bar that can be used.
  std::string Actives() {
    std::string noms;
    for (const QAction* action : Apercu()->Barre().actions())
      if (action->isEnabled() && !action->objectName().isEmpty() && !action->isSeparator())
        noms += action->objectName().toStdString() + " ";
    return noms;
  }
  static unsigned PagesPdf(const QString& chemin) {
    QFile fichier(chemin);
    EXPECT_TRUE(fichier.open(QIODevice::ReadOnly));
    return static_cast<unsigned>(QString::fromLatin1(fichier.readAll()).count(u"/Type /Page\n"_s));
  }

  std::vector<QPointer<QWidget>> Fenetres;
  std::unique_ptr<Impressions> Impression = std::make_unique<Impressions>(Ui, [this](Vue* vue) {
    vue->setAttribute(Qt::WA_DeleteOnClose);
    Fenetres.emplace_back(vue);
    vue->resize(900, 700);
    MontreFenetre(*vue);
  });
};

TEST_F(ApercuTest, LaBarreSuitLesPages) {
  CZNPreviewView& apercu = Ouvre(330);
  const u32 pages = Pages()->NombrePages();
  ASSERT_EQ(pages, 5u);
  FeuillesApercu& f = apercu.Feuilles();
  const std::string toujours = "imprimer pdf soignee ", fin = "fermer ";
  EXPECT_EQ(apercu.windowTitle(), u"Etat d'été - Aperçu avant impression"_s);
  VerifieFormulaire(apercu);
  EXPECT_EQ(Numero(), "Page 1 / 5");
  EXPECT_EQ(Actives(), toujours + "unePage deuxPages premiere suivante derniere zoomPlus " + fin);
  Touche(Qt::Key_PageDown);
  EXPECT_EQ(Numero(), "Page 2 / 5");
  Touche(Qt::Key_End);
  EXPECT_EQ(Numero(), "Page 5 / 5");
  Touche(Qt::Key_PageDown);
  EXPECT_EQ(f.Page(), 5u);
  EXPECT_EQ(Actives(), toujours + "unePage deuxPages premiere precedente derniere zoomPlus " + fin);

  Action("deuxPages").trigger();
  EXPECT_TRUE(Action("deuxPages").isChecked() && !Action("unePage").isChecked());
  EXPECT_EQ(Numero(), "Pages 4 et 5 / 5");
  Touche(Qt::Key_Home);
  EXPECT_EQ(Numero(), "Pages 1 et 2 / 5");
  Action("derniere").trigger();
  EXPECT_EQ(f.Page(), pages - 2 + 1);
  Action("precedente").trigger();
  EXPECT_EQ(f.Page(), 3u);

  // Enlarged: one page, which scrolls before the next one comes.
  const qreal entiere = f.Echelle();
  Touche(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_GT(f.Echelle(), entiere);
  EXPECT_EQ(Numero(), "Page 3 / 5");
  EXPECT_EQ(Actives(), toujours + "premiere precedente suivante derniere zoomPlus zoomMoins ajuste " + fin);
  while (f.PeutAgrandir()) Action("zoomPlus").trigger();
  EXPECT_FALSE(Action("zoomPlus").isEnabled());
  Touche(Qt::Key_PageUp);  // to the top first, wherever the middle was
  for (int i = 0; f.Page() == 3 && i < 50; ++i) Touche(Qt::Key_PageDown);
  EXPECT_EQ(f.Page(), 4u);
  Touche(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(f.Echelle(), entiere);
  EXPECT_EQ(Numero(), "Pages 4 et 5 / 5") << "two pages again";
  while (Action("zoomPlus").isEnabled()) Action("zoomPlus").trigger();
  while (f.EstAgrandi()) Touche(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(f.Echelle(), entiere);
  Ouvre(3);
  EXPECT_EQ(Numero(), "Page 1 / 1");
  EXPECT_EQ(Actives(), "imprimer pdf soignee zoomPlus fermer ");
}

TEST_F(ApercuTest, PlusieursEtatsCoteACote) {
  CZNPreviewView& premiere = Ouvre(200);
  CZNPreviewView& seconde = Ouvre(3, true);
  EXPECT_EQ(EtatDeTest::Vivants, 2);
  EXPECT_EQ(Impression->Etats().size(), 2u);
  // Each one turns its own pages, from its own files.
  QTest::keyClick(&premiere.Feuilles(), Qt::Key_End);
  EXPECT_GT(premiere.Feuilles().Page(), 1u);
  EXPECT_EQ(seconde.Feuilles().Page(), 1u);
  // While one is asked about no other one is built; cancelled, the open ones stay.
  robot.Attend("DialogPeriode", [&](QDialog& dialogue) {
    EXPECT_FALSE(Impression->Ouvre(Fabrique(5), DemandeEtat::Apercu)) << "one is being built";
    dialogue.reject();
  });
  EXPECT_FALSE(Impression->Ouvre(Fabrique(40, false, true), DemandeEtat::Apercu));
  EXPECT_EQ(EtatDeTest::Vivants, 2);
  // Printing one ends that one.
  const QString fichier = QString::fromStdString(Dossier()) + u"/un.pdf"_s;
  robot.Attend("DialogImpression", [&](QDialog& dialogue) {
    Trouve<QLineEdit>(dialogue, "filename").setText(fichier);
    dialogue.accept();
  });
  QTest::keyClick(&premiere.Feuilles(), Qt::Key_P, Qt::ControlModifier);
  EXPECT_GT(PagesPdf(fichier), 1u);
  EXPECT_EQ(EtatDeTest::Vivants, 1);
  EXPECT_EQ(Apercu(), &seconde);
  Touche(Qt::Key_Escape);
  EXPECT_EQ(EtatDeTest::Vivants, 0);

  // Escape, the button, and a window that is thrown away.
  Ouvre(20);
  Touche(Qt::Key_Escape);
  EXPECT_EQ(EtatDeTest::Vivants, 0);
  Ouvre(20);
  Action("fermer").trigger();
  EXPECT_EQ(EtatDeTest::Vivants, 0);
  Ouvre(20);
  delete Fenetres.back();
  EXPECT_EQ(EtatDeTest::Vivants, 0);
  EXPECT_EQ(Apercu(), nullptr);
}

TEST_F(ApercuTest, ImprimerOuApercu) {
  const struct {
    DemandeEtat demande;
    const char* preference;
    bool apercu;
  } cas[] = {{DemandeEtat::SelonPreference, "Oui", true},
             {DemandeEtat::SelonPreference, "Non", false},
             {DemandeEtat::Apercu, "Non", true},
             {DemandeEtat::Impression, "Oui", false}};
  for (const auto& c : cas) {
    Regle("Préférences"_w, "Prévisualisation"_w, c.preference);
    if (!c.apercu)
      robot.Attend("DialogImpression", [&](QDialog& dialogue) {
        EXPECT_EQ(EtatDeTest::Vivants, 1);
        dialogue.reject();
      });
    Impression->Ouvre(Fabrique(20), c.demande);
    EXPECT_EQ(Apercu() != nullptr, c.apercu);
    EXPECT_EQ(!Impression->Etats().empty(), c.apercu) << "a print that is cancelled ends the report";
    if (c.apercu) Touche(Qt::Key_Escape);
  }
  // From the preview: cancelled, the preview stays.
  robot.Attend("DialogImpression", [](QDialog& dialogue) { dialogue.reject(); });
  Ouvre(20);
  Touche(Qt::Key_P, Qt::ControlModifier);
  EXPECT_NE(Apercu(), nullptr);
}

TEST_F(ApercuTest, ImprimeDansUnFichier) {
  Ouvre(330);
  const QString fichier = QString::fromStdString(Dossier()) + u"/imprime.pdf"_s;
  const auto imprime = [&](const std::function<void(QPrinter&)>& regle) {
    QPrinter imprimante(QPrinter::HighResolution);
    imprimante.setOutputFormat(QPrinter::PdfFormat);
    imprimante.setOutputFileName(fichier);
    imprimante.setPageLayout(FeuilleParDefaut());
    regle(imprimante);
    return Impression->Dernier()->ImprimeSur(imprimante);
  };
  ASSERT_TRUE(imprime([](QPrinter&) {}));
  EXPECT_EQ(PagesPdf(fichier), 5u);
  EXPECT_EQ(Boite.Place, 5u);
  EXPECT_EQ(Boite.Profondeur, 0u);
  ASSERT_TRUE(imprime([](QPrinter& imprimante) {
    imprimante.setPrintRange(QPrinter::PageRange);
    imprimante.setFromTo(2, 3);
    imprimante.setPageOrder(QPrinter::LastPageFirst);
  }));
  EXPECT_EQ(PagesPdf(fichier), 2u);
  // The printer's own sheet, and not that of the settings.
  ASSERT_TRUE(imprime([](QPrinter& imprimante) { imprimante.setPageSize(QPageSize(QPageSize::A5)); }));
  EXPECT_GT(PagesPdf(fichier), 5u);

  Boite.ArretApres = Boite.NbArrets + 1;
  EXPECT_FALSE(imprime([](QPrinter&) {}));
  EXPECT_THAT(Boite.Erreurs, IsEmpty());
  Boite.ArretApres = -1;
  EXPECT_FALSE(imprime(
      [&](QPrinter& i) { i.setOutputFileName(QString::fromStdString(Dossier()) + u"/non/x.pdf"_s); }));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrImpression});

  // No room.
  rlimit avant{};
  getrlimit(RLIMIT_FSIZE, &avant);
  const auto signal = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit etroit{20000, avant.rlim_max};
  setrlimit(RLIMIT_FSIZE, &etroit);
  const bool imprimee = imprime([](QPrinter&) {});
  setrlimit(RLIMIT_FSIZE, &avant);
  std::signal(SIGXFSZ, signal);
  EXPECT_FALSE(imprimee);
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{ErrImpression, ErrImpression}));
  EXPECT_FALSE(QFile::exists(fichier));

  // The whole way, from the button of the preview.
  QFile::remove(fichier);
  robot.Attend("DialogImpression", [&](QDialog& dialogue) {
    Trouve<QLineEdit>(dialogue, "filename").setText(fichier);
    dialogue.accept();
  });
  Action("imprimer").trigger();
  EXPECT_EQ(PagesPdf(fichier), 5u);
  EXPECT_EQ(Apercu(), nullptr);
  EXPECT_EQ(EtatDeTest::Vivants, 0);
}

TEST_F(ApercuTest, LaBoiteDImpressionEstEnFrancais) {
  const Traductions francais;
  EXPECT_EQ(QKeySequence(u"Alt+Return"_s).toString(QKeySequence::NativeText), u"Alt+Entrée"_s);
  std::string textes;
  robot.Attend("DialogImpression", [&](QDialog& dialogue) {
    for (const QWidget* w : dialogue.findChildren<QWidget*>())
      for (const char* texte : {"text", "title"}) textes += w->property(texte).toString().toStdString() + "|";
    dialogue.reject();
  });
  Impression->Ouvre(Fabrique(3), DemandeEtat::Impression);
  for (const char* mot : {"Im&primer|", "Annuler|", "Recto verso|", "Reliure sur le grand", "Parité :|"})
    EXPECT_THAT(textes, HasSubstr(mot));
  for (const char* mot : {"Print", "Double", "binding", "Off|", "Cancel"})
    EXPECT_THAT(textes, Not(HasSubstr(mot)));
}

TEST_F(ApercuTest, SansDossierTemporaire) {
  const QByteArray avant = qgetenv("TMPDIR");
  qputenv("TMPDIR", QByteArray::fromStdString(Dossier() + "/absent"));
  EXPECT_FALSE(Impression->Ouvre(Fabrique(20), DemandeEtat::Apercu));
  avant.isNull() ? (void)qunsetenv("TMPDIR") : (void)qputenv("TMPDIR", avant);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3109});
  EXPECT_EQ(Apercu(), nullptr);
}

TEST_F(ApercuTest, ExporteEnPdf) {
  Ouvre(330);
  robot.Attend("DialogPdf", [&](QDialog& dialogue) {
    auto& fichiers = dynamic_cast<QFileDialog&>(dialogue);
    EXPECT_EQ(QFileInfo(fichiers.selectedFiles().value(0)).fileName(), u"Etat-d-été-2003.pdf"_s);
    fichiers.setDirectory(QString::fromStdString(Dossier()));
    Trouve<QLineEdit>(fichiers, "fileNameEdit").setText(u"sortie"_s);
    QMetaObject::invokeMethod(&fichiers, "accept");
  });
  Touche(Qt::Key_E, Qt::ControlModifier);
  EXPECT_EQ(PagesPdf(QString::fromStdString(Dossier()) + u"/sortie.pdf"_s), 5u);
  EXPECT_NE(Apercu(), nullptr);
}

TEST_F(ApercuTest, LeFormulaireDitCeQuOnEnFait) {
  const auto clique = [&](const char* bouton) {
    robot.Attend("DialogPeriode", [=](QDialog& d) { Clique(Trouve<QPushButton>(d, bouton)); });
  };
  robot.Attend("DialogPeriode", [](QDialog& d) {
    Clique(Case(d, "periode"));
    Tape(Champ(d, "du"), u"0101"_s);
    Tape(Champ(d, "au"), u"3006"_s);
    Clique(Case(d, "apercu"));
  });
  Impression->Ouvre(Fabrique(20, false, true), DemandeEtat::Impression);
  ASSERT_NE(Apercu(), nullptr);
  EXPECT_EQ(NomFichierEtat(App(), *Impression->Dernier()->Etat()), u"Etat-d-été-20030101-20030630"_s);
  Touche(Qt::Key_Escape);
  clique("imprimante");
  robot.Attend("DialogImpression", [](QDialog& dialogue) { dialogue.reject(); });
  Impression->Ouvre(Fabrique(20, false, true), DemandeEtat::Apercu);
  for (const bool ecrit : {true, false}) {
    clique("pdf");
    robot.Attend("DialogPdf", [&](QDialog& dialogue) {
      static_cast<QFileDialog&>(dialogue).setDirectory(QString::fromStdString(Dossier()));
      Trouve<QLineEdit>(dialogue, "fileNameEdit").setText(u"sans-apercu"_s);
      ecrit ? void(QMetaObject::invokeMethod(&dialogue, "accept")) : dialogue.reject();
    });
    Impression->Ouvre(Fabrique(20, false, true), DemandeEtat::Apercu);
    EXPECT_TRUE(Impression->Etats().empty());
  }
  EXPECT_EQ(Cadre.Nombre("Offre sans-apercu.pdf est écrit dans " + Dossier()), 1u);
}

TEST_F(ApercuTest, UnClicChangeDeStyle) {
  Ouvre(330);
  EXPECT_FALSE(Action("soignee").isChecked()) << "where the setting is missing";
  const u32 pages = Apercu()->Feuilles().NombrePages();
  Action("soignee").trigger();
  EXPECT_EQ(App().Reglages.LitIni("Préférences"_w, "Style des états"_w), "Soignée"_w);
  EXPECT_TRUE(Action("soignee").isChecked());
  EXPECT_NE(Apercu()->Feuilles().NombrePages(), pages);
  QTest::keyClick(&Apercu()->Feuilles(), Qt::Key_S);
  EXPECT_EQ(Apercu()->Feuilles().NombrePages(), pages);
}

TEST_F(ApercuTest, LaFeuilleEstGardee) {
  robot.Attend("DialogMiseEnPage", [](QDialog& dialogue) { dialogue.accept(); });
  Impression->Configure();
  EXPECT_EQ(App().Reglages.LitIni("Fenlor", "Mise en page"), "A4, 0, 100, 100, 100, 100");
  Regle("Fenlor", "Mise en page", "A5, 1, 150, 100, 200, 120");
  Ouvre(20);
  const QPageLayout& feuille = Pages()->Feuille();
  EXPECT_EQ(feuille.pageSize().id(), QPageSize::A5);
  EXPECT_EQ(feuille.orientation(), QPageLayout::Landscape);
  EXPECT_EQ(feuille.margins(QPageLayout::Millimeter), QMarginsF(15, 10, 20, 12));
  Regle("Fenlor", "Mise en page", "n'importe quoi");
  Ouvre(20);
  EXPECT_EQ(Pages()->Feuille(), FeuilleParDefaut());
}

}  // namespace
}  // namespace fenlor::test
