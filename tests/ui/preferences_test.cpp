#include "ui/preferences.h"

#include <QColorDialog>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QMenu>
#include <QPalette>
#include <QTabWidget>
#include <QTimer>

#include "core/texte.h"
#include "outils/uidetest.h"
#include "ui/boutoncouleur.h"
#include "ui/prefpropertysheet.h"
#include "ui/textes.h"

namespace fenlor::test {
namespace {

QPalette Sombre() {
  QPalette p(QColor(40, 40, 44));
  p.setColor(QPalette::Base, QColor(28, 28, 30));
  p.setColor(QPalette::Text, QColor(235, 235, 235));
  p.setColor(QPalette::WindowText, QColor(235, 235, 235));
  return p;
}

TEST(Couleurs, Contraste) {
  EXPECT_NEAR(Contraste(Qt::black, Qt::white), 21, 0.01);
  EXPECT_DOUBLE_EQ(Contraste(Qt::red, Qt::red), 1);
  EXPECT_EQ(Lisible(Qt::black, Qt::white), QColor(Qt::black));
  EXPECT_EQ(Lisible(QColor(0, 0, 128), QColor(255, 255, 192)), QColor(0, 0, 128));
  EXPECT_EQ(Lisible(QColor(235, 235, 235), QColor(255, 255, 192)), QColor(Qt::black));
  EXPECT_EQ(Lisible(Qt::black, QColor(28, 28, 30)), QColor(Qt::white));
}

TEST(Polices, Reglage) {
  const QString bureau = QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
  const QFont defaut = FaitPolice(LitPolice("MS Sans Serif, -11, 0, 0, 0, 0, 0", false));
  EXPECT_DOUBLE_EQ(defaut.pointSizeF(), 8.25);
  EXPECT_EQ(defaut.family(), bureau);
  EXPECT_EQ(defaut.weight(), QFont::Normal);

  const QFont ornee = FaitPolice(LitPolice("DejaVu Serif, -16, 255, 1, 1, 1, 1", false));
  EXPECT_EQ(ornee.family(), u"DejaVu Serif"_s);
  EXPECT_DOUBLE_EQ(ornee.pointSizeF(), 12);
  EXPECT_TRUE(ornee.bold() && ornee.italic() && ornee.underline() && ornee.strikeOut());
  EXPECT_EQ(EcritPolice(ornee, QColor(255, 0, 0)), "DejaVu Serif, -16, 255, 1, 1, 1, 1");
  EXPECT_EQ(EcritPolice(ornee, {}, true), "DejaVu Serif, 12, , 1, 1, 1, 1");
  EXPECT_FALSE(LitPolice(EcritPolice(ornee, {}), false).couleur);
  EXPECT_EQ(FaitPolice(LitPolice("DejaVu Serif, 14", false)).pointSizeF(), 14);
  EXPECT_LT(FaitPolice(LitPolice("DejaVu Serif, -2147483648", false)).pointSizeF(), 200);

  const std::vector<std::pair<const char*, QString>> descriptions = {
      {"MS Sans Serif, -11, 0, 0, 0, 0, 0", u"MS Sans Serif 8"_s},
      {"Arial, -13, 0, 1, 0, 0, 0", u"Arial 10, Gras"_s},
      {"Arial, 10, 0, 1, 1, 1, 1", u"Arial 10, Gras, Italique, Souligné, Barré"_s},
      {"Courier, 10", u"Courier 10"_s},
  };
  for (const auto& [texte, attendu] : descriptions) EXPECT_EQ(DecritPolice(LitPolice(texte, false)), attendu);
}

class PreferencesTest : public UiDeTest {
 protected:
  std::string Lit(const std::string& cle) { return App().Reglages.LitIni("Préférences"_w, cle); }
  void Pose(const std::string& cle, const std::string& valeur) {
    ASSERT_TRUE(App().Reglages.EcritIni("Préférences"_w, cle, valeur));
  }
  void Charge() { ChargePreferences(Dessin, App(), QApplication::palette()); }
  std::string Fichier() { return App().PathCabinet + "/fenlor.ini"; }
  void InterditEcriture() { std::filesystem::create_directory(Fichier() + ".tmp"); }
  void PermetEcriture() { std::filesystem::remove(Fichier() + ".tmp"); }

  /// Opens the sheet and does `geste` in it.
  bool Feuille(const std::function<void(QDialog&)>& geste) {
    robot.Attend("PrefPropertySheet", geste);
    return CPrefPropertySheet(Ui).Execute();
  }
  static void Onglet(QDialog& d, int indice) { d.findChild<QTabWidget*>()->setCurrentIndex(indice); }
  static void Ok(QDialog& d) { Clique(Bouton(d, u"&Ok"_s)); }
  static void ChoisitTeinte(QDialog& d, const char* nom, const QString& teinte) {
    auto& bouton = Trouve<BoutonCouleur>(d, nom);
    Va(bouton);
    QTimer::singleShot(0, &bouton, [&] {
      for (QAction* action : bouton.menu()->actions())
        if (action->text() == teinte) {
          bouton.menu()->setActiveAction(action);
          return QTest::keyClick(bouton.menu(), Qt::Key_Return);
        }
      ADD_FAILURE() << teinte.toStdString();
      bouton.menu()->close();
    });
    QTest::keyClick(&bouton, Qt::Key_Space);
  }
  static void Coche(QDialog& d, const char* nom) {
    Va(Trouve<QCheckBox>(d, nom));
    QTest::keyClick(&Trouve<QCheckBox>(d, nom), Qt::Key_Space);
  }
};

TEST_F(PreferencesTest, FichierNeuf) {
  EXPECT_EQ(Lit("Police des listes"), "MS Sans Serif, -11, 0, 0, 0, 0, 0");
  EXPECT_EQ(Lit("Police des impressions"), "");
  EXPECT_EQ(Dessin.CouleurImpaire, QColor(255, 255, 192));
  EXPECT_EQ(Dessin.Fond.color(), Dessin.CouleurFond);

  const std::string avant = LitFichier(Fichier());
  InterditEcriture();  // nothing is left to be written
  Charge();
  EXPECT_EQ(App().Magasin.Reglages().Erreur(), 0);
  EXPECT_EQ(LitFichier(Fichier()), avant);
}

TEST_F(PreferencesTest, CouleursSysteme) {
  Pose("Couleur impaire", "255");
  Pose("Couleur système"_w, "oui");
  Pose("Couleur du fond", "");
  ChargePreferences(Dessin, App(), Sombre());
  EXPECT_TRUE(Dessin.CouleurSysteme);
  EXPECT_EQ(Dessin.CouleurImpaire, QColor(28, 28, 30));
  EXPECT_EQ(Dessin.CouleurFond, QColor(28, 28, 30));
  EXPECT_EQ(Dessin.TexteJournaux, QColor(235, 235, 235));
  EXPECT_EQ(Lit("Couleur impaire"), "255");
  EXPECT_EQ(Lit("Couleur du fond"), "");  // not in use, not filled up
  Pose("Couleur système"_w, "Non");
  Charge();
  EXPECT_EQ(Dessin.CouleurImpaire, QColor(255, 0, 0));
}

TEST_F(PreferencesTest, Polices) {
  Pose("Police des listes", "DejaVu Serif, -16, 8388608, 1, 0, 0, 0");
  Pose("Police des mois", "DejaVu Sans Mono, -13, 0, 0, 1, 0, 0");
  Charge();
  EXPECT_EQ(Dessin.PoliceListes.family(), u"DejaVu Serif"_s);
  EXPECT_TRUE(Dessin.PoliceListes.bold());
  EXPECT_EQ(Dessin.TexteListes, QColor(0, 0, 128));
  EXPECT_TRUE(Dessin.PoliceMois.italic());
  Pose("Police par défaut"_w, "Oui");
  Charge();
  const QFont bureau = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  for (const QFont* police : {&Dessin.PoliceListes, &Dessin.PoliceJournaux, &Dessin.PoliceValidees,
                              &Dessin.PoliceSaisies, &Dessin.PoliceTextes, &Dessin.PoliceMois})
    EXPECT_EQ(*police, bureau);
  EXPECT_EQ(Dessin.TexteListes, QApplication::palette().color(QPalette::Text));
  EXPECT_EQ(Lit("Police des listes"), "DejaVu Serif, -16, 8388608, 1, 0, 0, 0");
}

TEST_F(PreferencesTest, LesTextesSeLisentQuoiQuOnAitRegle) {
  for (const char* cle : {"Couleur impaire", "Couleur paires"}) Pose(cle, "12648447");
  for (const char* cle : {"Police des listes", "Police des journaux", "Police des saisies"})
    Pose(cle, "Arial, -11, 12648447, 0, 0, 0, 0");
  for (const QPalette& palette : {QApplication::palette(), Sombre()}) {
    ChargePreferences(Dessin, App(), palette);
    EXPECT_GE(Contraste(Dessin.TexteJournaux, Dessin.CouleurImpaire), contrasteTexte);
    for (const QColor& texte : {Dessin.TexteListes, Dessin.TexteSaisies})
      EXPECT_GE(Contraste(texte, palette.color(QPalette::Base)), contrasteTexte);
  }
}

TEST_F(PreferencesTest, ReglagesIllisiblesOuFiges) {
  std::filesystem::remove(Fichier());
  InterditEcriture();
  Charge();
  EXPECT_EQ(Dessin.CouleurImpaire, QColor(255, 255, 192));
  EXPECT_DOUBLE_EQ(Dessin.PoliceMois.pointSizeF(), 8.25);
  EXPECT_FALSE(std::filesystem::exists(Fichier()));
  std::filesystem::create_directory(Fichier());
  Charge();
  EXPECT_EQ(Dessin.CouleurFond, QColor(255, 255, 224));
  EXPECT_TRUE(Boite.Erreurs.empty());
  EXPECT_FALSE(DitEchecReglages(App()));
  ASSERT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3220});
  EXPECT_NE(Boite.Erreurs[0].texte.find(Fichier()), std::string::npos);
}

TEST_F(PreferencesTest, PagesRelues) {
  EXPECT_TRUE(Feuille([](QDialog& d) {
    auto* onglets = d.findChild<QTabWidget*>();
    ASSERT_EQ(onglets->count(), 3);
    EXPECT_EQ(onglets->tabText(0) + onglets->tabText(1) + onglets->tabText(2),
              u"PréférencesCouleursPolices"_s);
    for (const char* nom : {"virgule", "entree", "zeros", "brouillon", "previsualisation"}) {
      EXPECT_FALSE(Trouve<QCheckBox>(d, nom).isChecked()) << nom;
      Coche(d, nom);
    }
    EXPECT_TRUE(Trouve<QCheckBox>(d, "finDeSession").isChecked());
    Coche(d, "finDeSession");
    Tape(Trouve<QLineEdit>(d, "chiffres"), u"12"_s);
    EXPECT_EQ(Trouve<QLineEdit>(d, "chiffres").text(), u"1"_s);
    Tape(Trouve<QLineEdit>(d, "chiffres"), u"6x"_s);
    Onglet(d, 1);
    ChoisitTeinte(d, "impaires", u"Vert clair"_s);
    ChoisitTeinte(d, "fond", u"Gris"_s);
    Onglet(d, 2);
    Coche(d, "policeDefaut");
    EXPECT_FALSE(Trouve<QPushButton>(d, "impressionsModifier").isEnabled());
    Ok(d);
  }));
  for (const char* cle :
       {"Virgule", "Entrée", "Zéros Significatifs", "Brouillon", "Prévisualisation", "Police par défaut"})
    EXPECT_EQ(Lit(*DepuisUtf8(cle)), "Oui") << cle;
  EXPECT_EQ(Lit("Fin de session"), "Non");
  EXPECT_EQ(Lit("Nombre de chiffres"), "6");
  EXPECT_EQ(Lit("Couleur impaire"), EcritCouleur(QColor(224, 255, 224)));
  EXPECT_EQ(Lit("Couleur du fond"), EcritCouleur(QColor(192, 192, 192)));
  EXPECT_EQ(Lit("Couleur des bordures"), "32768");
  EXPECT_EQ(Dessin.CouleurImpaire, QColor(224, 255, 224));
  EXPECT_EQ(Cadre.Appels, std::vector<std::string>{"Dessin"});

  Pose("Brouillon", "Non");
  Pose(Texte(CleDemanderSupprimer), "Non");
  EXPECT_FALSE(Feuille([](QDialog& d) {
    EXPECT_TRUE(Case(d, "virgule").isChecked() && Case(d, "previsualisation").isChecked());
    EXPECT_FALSE(Case(d, "brouillon").isChecked() || Case(d, "demander").isChecked());
    EXPECT_FALSE(Trouve<QCheckBox>(d, "finDeSession").isChecked());
    EXPECT_EQ(Trouve<QLineEdit>(d, "chiffres").text(), u"6"_s);
    EXPECT_TRUE(Trouve<QLineEdit>(d, "chiffres").isEnabled());
    Coche(d, "virgule");
    Onglet(d, 1);
    EXPECT_EQ(Trouve<BoutonCouleur>(d, "impaires").Couleur(), QColor(224, 255, 224));
    Onglet(d, 2);
    EXPECT_TRUE(Trouve<QCheckBox>(d, "policeDefaut").isChecked());
    d.reject();
  }));
  EXPECT_TRUE(App().Reglages.IsVirgule());
  EXPECT_EQ(Cadre.Appels.size(), 1u);
}

TEST_F(PreferencesTest, PageNonMontree) {
  Pose("Couleur impaire", "illisible");
  Pose("Police par défaut"_w, "peut-être"_w);
  Pose("Virgule", "");
  EXPECT_TRUE(Feuille([](QDialog& d) { Ok(d); }));
  EXPECT_EQ(Lit("Couleur impaire"), "illisible");
  EXPECT_EQ(Lit("Police par défaut"_w), "peut-être"_w);
  EXPECT_EQ(Lit("Virgule"), "Non");
}

TEST_F(PreferencesTest, CouleurSystemeGardeLesCouleurs) {
  Pose("Couleur paires", "255");
  EXPECT_TRUE(Feuille([&](QDialog& d) {
    Onglet(d, 1);
    ChoisitTeinte(d, "bordures", u"Bleu"_s);
    Coche(d, "couleurSysteme");
    for (const char* nom : {"bordures", "impaires", "paires", "fond"})
      EXPECT_FALSE(Trouve<BoutonCouleur>(d, nom).isEnabled()) << nom;
    Ok(d);
  }));
  EXPECT_EQ(Lit("Couleur système"_w), "Oui");
  EXPECT_EQ(Lit("Couleur paires"), "255");
  EXPECT_EQ(Lit("Couleur des bordures"), "32768");
  EXPECT_TRUE(Feuille([&](QDialog& d) {
    Onglet(d, 1);
    EXPECT_EQ(Trouve<BoutonCouleur>(d, "paires").Couleur(), QColor(255, 0, 0));
    Coche(d, "couleurSysteme");
    robot.Attend("DialogCouleur", [](QDialog& couleurs) {
      static_cast<QColorDialog&>(couleurs).setCurrentColor(QColor(1, 2, 3));
      couleurs.accept();
    });
    ChoisitTeinte(d, "fond", u"&Autre..."_s);
    Ok(d);
  }));
  EXPECT_EQ(Dessin.CouleurPaire, QColor(255, 0, 0));
  EXPECT_EQ(Lit("Couleur du fond"), EcritCouleur(QColor(1, 2, 3)));
}

TEST_F(PreferencesTest, JeuDeCouleurs) {
  const QPalette avant = QApplication::palette();
  const auto choisit = [this](const char* touche, bool grise) {
    EXPECT_TRUE(Feuille([&](QDialog& d) {
      Onglet(d, 1);
      QTest::keyClicks(&Trouve<QComboBox>(d, "jeu"), QString::fromLatin1(touche));
      EXPECT_EQ(Trouve<BoutonCouleur>(d, "fond").isEnabled(), !grise);
      Ok(d);
    }));
  };
  choisit("Cou", true);
  EXPECT_EQ(Lit("Couleur système"_w), "Oui");
  EXPECT_EQ(Lit("Contraste élevé"_w), "") << "not written before it was chosen";
  choisit("Con", true);
  EXPECT_EQ(Lit("Couleur système"_w), "Oui");
  EXPECT_EQ(Lit("Contraste élevé"_w), "Oui");
  EXPECT_EQ(QApplication::palette().color(QPalette::Text), Noir());
  EXPECT_EQ(Dessin.CouleurBordure, Noir());
  choisit("Cl", false);
  EXPECT_EQ(Lit("Contraste élevé"_w), "Non");
  EXPECT_EQ(Dessin.CouleurBordure, JournauxParDefaut().bordure);
  QApplication::setPalette(avant);
}

// A font is stored when it is chosen, also when the sheet is given up.
TEST_F(PreferencesTest, PoliceChoisie) {
  Pose("Police des listes", "DejaVu Sans, -13, 255, 0, 0, 0, 0");
  EXPECT_FALSE(Feuille([&](QDialog& d) {
    Onglet(d, 2);
    EXPECT_EQ(Trouve<QLabel>(d, "listesDescription").text(), u"DejaVu Sans 10"_s);
    EXPECT_EQ(Trouve<QLabel>(d, "impressionsDescription").text(), u"Courier 10"_s);
    EXPECT_TRUE(QFontInfo(Trouve<QLabel>(d, "impressionsExemple").font()).fixedPitch()) << "as it prints";
    robot.Attend("DialogPolice", [](QDialog& polices) {
      auto& dialogue = static_cast<QFontDialog&>(polices);
      EXPECT_EQ(dialogue.currentFont().family(), u"DejaVu Sans"_s);
      EXPECT_NEAR(dialogue.currentFont().pointSizeF(), 9.75, 0.5);
      QFont police(u"DejaVu Serif"_s, 12, QFont::Bold);
      police.setStrikeOut(true);
      dialogue.setCurrentFont(police);
      polices.accept();
    });
    Clique(Trouve<QPushButton>(d, "listesModifier"));
    EXPECT_EQ(Trouve<QLabel>(d, "listesDescription").text(), u"DejaVu Serif 12, Gras, Barré"_s);
    EXPECT_EQ(Trouve<QLabel>(d, "listesExemple").text(), u"AaBbCcXxYyZz"_s);
    EXPECT_TRUE(Trouve<QLabel>(d, "listesExemple").font().strikeOut());
    Cadre.Actualise();
    EXPECT_EQ(Cadre.Appels, std::vector<std::string>{"Dessin"}) << "at once";

    ChoisitTeinte(d, "journauxCouleur", u"Bleu foncé"_s);
    EXPECT_EQ(Lit("Police des journaux"), "MS Sans Serif, -11, 8388608, 0, 0, 0, 0");

    robot.Attend("DialogPolice", [](QDialog& polices) {
      EXPECT_EQ(static_cast<QFontDialog&>(polices).currentFont().pointSize(), 10);
      QFont police(u"DejaVu Sans Mono"_s, 11);
      police.setStyleName(u"Book"_s);
      static_cast<QFontDialog&>(polices).setCurrentFont(police);
      polices.accept();
    });
    Clique(Trouve<QPushButton>(d, "impressionsModifier"));
    robot.Attend("DialogPolice", [](QDialog& polices) { polices.reject(); });
    Clique(Trouve<QPushButton>(d, "saisiesModifier"));
    // Nothing is changed by a dialog that is only looked at.
    ASSERT_TRUE(
        App().Reglages.EcritIni("Préférences"_w, "Police des saisies", "DejaVu Sans, -13, 7, 0, 0, 0, 0"));
    robot.Attend("DialogPolice", [](QDialog& polices) { polices.accept(); });
    Clique(Trouve<QPushButton>(d, "saisiesModifier"));
    d.reject();
  }));
  EXPECT_EQ(Lit("Police des listes"), "DejaVu Serif, -16, 255, 1, 0, 0, 1");
  EXPECT_EQ(Lit("Police des impressions"), "DejaVu Sans Mono, 11, , 0, 0, 0, 0");
  EXPECT_EQ(Lit("Police des saisies"), "DejaVu Sans, -13, 7, 0, 0, 0, 0");
  EXPECT_TRUE(Dessin.PoliceListes.bold());
  EXPECT_EQ(Dessin.TexteJournaux, QColor(0, 0, 128));
}

TEST_F(PreferencesTest, EchecDEcritureDit) {
  for (int page = 0; page < 3; ++page) {
    Boite.Oublie();
    InterditEcriture();
    EXPECT_FALSE(Feuille([&](QDialog& d) {
      Onglet(d, page);
      Coche(d, page == 0 ? "virgule" : page == 1 ? "couleurSysteme" : "policeDefaut");
      Ok(d);
      EXPECT_TRUE(d.isVisible());
      EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3220});
      d.reject();
    }));
    PermetEcriture();
  }
  EXPECT_TRUE(Cadre.Appels.empty());
}

}  // namespace
}  // namespace fenlor::test
