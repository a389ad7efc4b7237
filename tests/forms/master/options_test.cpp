
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>

#include "core/btfiles.h"
#include "forms/journal/formesjournal.h"
#include "forms/master/dialogcompteparticulier.h"
#include "forms/master/sheetoptions.h"
#include "master/options.h"
#include "master/optionstva.h"
#include "master/tauxeuro.h"
#include "master/textes.h"
#include "store/motdepasse.h"
#include "ui/tableliste.h"

namespace fenlor::test {
namespace {

enum Onglet { Activite, Banques, Association, Comptable, Comptes, MotDePasse, Taxe, MisesAJour };

class Formulaires : public FormesJournal {
 protected:
  std::string Ini() { return test::LitFichier(Magasin().QVGetFilename(10099, 0)); }
  /// Opens the options, does what a person would do, and tells whether they ended with OK.
  bool Options(const std::function<void(QDialog&)>& geste) {
    robot.Attend("SheetOptions", geste);
    return CSheetOptions(Ui).Execute();
  }
  static QWidget& Montre(QDialog& feuille, Onglet onglet) {
    auto& onglets = Trouve<QTabWidget>(feuille, "onglets");
    onglets.setCurrentIndex(onglet);
    QApplication::processEvents();
    return *onglets.widget(onglet);
  }
  static void Annule(QDialog& fenetre) { Clique(Bouton(fenetre, u"A&nnuler"_s)); }
  static CZNListCtrl& Liste(QWidget& page) { return Trouve<CZNListCtrl>(page, "liste"); }
  static std::vector<std::string> Lignes(QWidget& page) {
    std::vector<std::string> textes;
    for (const QString& rangee : Rangs(Liste(page), 2)) textes.push_back(rangee.toStdString());
    return textes;
  }
  /// Types into a list of accounts and leaves it by Tab, which the open list of proposals sees first.
  static void Cherche(QDialog& fenetre, const char* nom, const QString& texte) {
    auto& choix = Trouve<QComboBox>(fenetre, nom);
    Tape(choix, texte);
    QWidget* propositions = QApplication::activePopupWidget();
    QTest::keyClick(propositions ? propositions : &choix, Qt::Key_Tab);
    EXPECT_FALSE(choix.hasFocus());
  }
};

TEST_F(Formulaires, PagesDeTexteEcritesEtRelues) {
  const auto adresse = [](QWidget& page) -> QPlainTextEdit& {
    return Trouve<QPlainTextEdit>(page, "identification");
  };
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2035", "", std::nullopt));
  ASSERT_TRUE(Options([&](QDialog& f) {
    EXPECT_EQ(Reglage("2035", "Recettes"), "1, 7") << "made by the first showing";
    QWidget& activite = Montre(f, Activite);
    QTest::keyClicks(&adresse(activite), u"Dr Martin"_s);
    QTest::keyClick(&adresse(activite), Qt::Key_Return);
    QTest::keyClicks(&adresse(activite), u"Lyon"_s);
    Tape(Trouve<QLineEdit>(activite, "siret"), u"123456789012345678901234"_s);
    Tape(Trouve<QLineEdit>(activite, "ape"), u"851CZ"_s);
    Tape(Trouve<QLineEdit>(activite, "activite"), u"Médecin"_s);
    Tape(Trouve<QLineEdit>(activite, "debut"), u"1/10/1998"_s);
    EXPECT_FALSE(Trouve<QCheckBox>(activite, "tva").isEnabled() ||
                 Trouve<QCheckBox>(activite, "euro").isEnabled());
    Trouve<QCheckBox>(activite, "afficherDouble").click();
    QWidget& association = Montre(f, Association);
    QTest::keyClicks(&adresse(association), u"AGA"_s);
    Tape(Trouve<QLineEdit>(association, "numero"), u"101690"_s);
    Tape(Trouve<QLineEdit>(association, "annee"), u"1999"_s);
    QTest::keyClicks(&adresse(Montre(f, Comptable)), u"Cabinet Durand"_s);
    QWidget& maj = Montre(f, MisesAJour);
    Trouve<QSpinBox>(maj, "jours").setValue(30);
    Trouve<QRadioButton>(maj, "finSession").click();
    EXPECT_FALSE(Trouve<QSpinBox>(maj, "jours").isEnabled());
    Ok(f);
  }));
  const OptionsActivite lue = LitActivite(App());
  EXPECT_EQ(lue.identification, "Dr Martin\r\nLyon");
  EXPECT_EQ(lue.siret, "12345678901234567890");
  EXPECT_EQ(lue.ape, "851C");
  EXPECT_EQ(lue.activite, "Médecin"_w);
  EXPECT_EQ(lue.debut, "01/10/1998");
  EXPECT_TRUE(lue.afficherDouble && App().AfficherDouble);
  EXPECT_EQ(LitOptions<OptionsAssociation>(App()).annee, "1999");
  EXPECT_EQ(LitOptions<OptionsComptable>(App()).identification, "Cabinet Durand");
  EXPECT_EQ(LitMiseAJour(App()).mode, MiseAJourFinSession);
  EXPECT_EQ(LitMiseAJour(App()).jours, 30);
  const std::string ecrit = Ini();
  ASSERT_TRUE(Options([&](QDialog& f) {
    for (int onglet = Activite; onglet <= MisesAJour; ++onglet) Montre(f, static_cast<Onglet>(onglet));
    Ok(f);
  }));
  EXPECT_EQ(Ini(), ecrit) << "every page shown, nothing changed";
}

TEST_F(Formulaires, MotDePasse) {
  const auto champ = [](QDialog& f, const char* nom) -> QLineEdit& { return Trouve<QLineEdit>(f, nom); };
  ASSERT_TRUE(Options([&](QDialog& f) {
    Montre(f, MotDePasse);
    EXPECT_FALSE(champ(f, "ancien").isEnabled());
    EXPECT_EQ(champ(f, "nouveau").echoMode(), QLineEdit::Password);
    Tape(champ(f, "nouveau"), u"Été12345678901234567"_s);
    EXPECT_EQ(champ(f, "nouveau").text().size(), 16);
    Tape(champ(f, "verification"), u"secret"_s);
    Montre(f, Activite);
    Ok(f);
    EXPECT_TRUE(champ(f, "nouveau").hasFocus()) << "back to the page that refuses";
    EXPECT_EQ(champ(f, "nouveau").selectedText().size(), 16);
    Tape(champ(f, "nouveau"), u" SECRET"_s);
    Ok(f);
  }));
  EXPECT_TRUE(MotDePasseJuste(Reglage("Activite", "Mot de Passe"), "secret"));
  ASSERT_TRUE(Options([&](QDialog& f) {
    Montre(f, MotDePasse);
    Tape(champ(f, "ancien"), u"secret"_s);
    Ok(f);
  }));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3067});
  EXPECT_FALSE(MotDePasseExiste(App()));
}

TEST_F(Formulaires, AdressesDesBanques) {
  ASSERT_TRUE(Magasin().Reglages().Ecrit("BQ", "Compte", "123"));
  ASSERT_TRUE(Options([&](QDialog& f) {
    QWidget& page = Montre(f, Banques);
    ChoisitRang(Liste(page), u"BQ"_s);
    EXPECT_FALSE(Actif(page, "ajouter"));
    EXPECT_TRUE(Actif(page, "modifier") && Actif(page, "supprimer"));
    QTest::keyClick(&Liste(page), Qt::Key_Delete);
    EXPECT_TRUE(Actif(page, "ajouter"));
    EXPECT_FALSE(Actif(page, "modifier"));
    ChoisitRang(Liste(page), u"CCP"_s);
    robot.Attend("DialogAdresseBanque", [&](QDialog& d) {
      EXPECT_EQ(d.windowTitle(), u"Etablissements bancaires"_s);
      EXPECT_EQ(Trouve<QLabel>(d, "code").text(), u"CCP"_s);
      QTest::keyClicks(&Trouve<QPlainTextEdit>(d, "identification"), u"Poste | Lyon"_s);
      Tape(Trouve<QLineEdit>(d, "compte"), u"9 876"_s);
      Ok(d);
    });
    QTest::keyClick(&Liste(page), Qt::Key_Insert);
    EXPECT_EQ(Liste(page).Modele().Champ(Liste(page).LigneChoisie(), 2), u"9 876"_s);
    Trouve<QCheckBox>(page, "especes").click();
    Ok(f);
  }));
  EXPECT_EQ(Reglage("BQ", "Compte"), "");
  EXPECT_EQ(Reglage("CCP", "Identification"), "Poste | Lyon");
  EXPECT_EQ(Reglage("CCP", "Compte"), "9 876");
  EXPECT_TRUE(App().Reglages.IsRapprochementEspeces());
}

TEST_F(Formulaires, LesCinqComptesParticuliers) {
  ASSERT_TRUE(Magasin().Reglages().Ecrit("COMPTES", "Virement Recette", ""));
  ASSERT_TRUE(Options([&](QDialog& f) {
    QWidget& page = Montre(f, Comptes);
    auto& perso = Trouve<QComboBox>(page, "perso");
    EXPECT_EQ(perso.currentText(), u"108 Exploitant"_s);
    EXPECT_EQ(Trouve<QComboBox>(page, "virementRecette").currentText(), QString());
    EXPECT_EQ(perso.model(), Trouve<QComboBox>(page, "ecartDebit").model()) << "one model for the five";
    Cherche(f, "perso", u"706"_s);
    EXPECT_EQ(perso.currentText(), u"706 Honoraires"_s);
    Cherche(f, "perso", u"rien de tel"_s);
    EXPECT_EQ(perso.currentText(), u"706 Honoraires"_s) << "what was chosen before";
    Cherche(f, "ecartDebit", u"loyer"_s);
    Ok(f);
  }));
  EXPECT_EQ(Magasin().GetComptePerso(), Long("706"));
  EXPECT_EQ(Magasin().GetCompteEcartDebit(), Long("6132"));
  EXPECT_EQ(Magasin().GetCompteVireTo(), "");

  robot.Attend("DialogCompteParticulier", [&](QDialog& d) {
    Clique(Bouton(d, u"Nou&veau..."_s));
    Cherche(d, "virementRecette", u"7099"_s);
    Ok(d);
  });
  EXPECT_TRUE(
      CDialogCompteParticulier(Ui, [&] { return PoseCompte("7099", Recette, "NOUV", "Nouveau"); }).Execute());
  EXPECT_EQ(Magasin().GetCompteVireTo(), Long("7099"));
}

TEST_F(Formulaires, ComptesDeTva) {
  EXPECT_TRUE(Options([&](QDialog& f) {
    QWidget& page = Montre(f, Taxe);
    ChoisitRang(Liste(page), u"4452"_s);
    QTest::keyClick(&Liste(page), Qt::Key_Delete);
    robot.Attend("DialogTauxTVA", [&](QDialog& d) {
      EXPECT_EQ(d.windowTitle(), u"Ajout d'un compte de T.V.A."_s);
      EXPECT_EQ(Trouve<QLineEdit>(d, "compte").text(), u"4452"_s) << "free again";
      Tape(Trouve<QLineEdit>(d, "compte"), u"4451"_s);
      test::Va(Trouve<QLineEdit>(d, "taux"));
      EXPECT_TRUE(Trouve<QLineEdit>(d, "compte").hasFocus());
      Tape(Trouve<QLineEdit>(d, "compte"), u"44570"_s);
      Ok(d);
      EXPECT_TRUE(Trouve<QLineEdit>(d, "taux").hasFocus()) << "no rate";
      EXPECT_EQ(Trouve<QLineEdit>(d, "compte").text(), u"4457"_s) << "short form";
      Tape(Trouve<QLineEdit>(d, "taux"), u"8,5"_s);
      Ok(d);
    });
    QTest::keyClick(&Liste(page), Qt::Key_Insert);
    EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3070, 3069}));
    ChoisitRang(Liste(page), u"4453"_s);
    robot.Attend("DialogTauxTVA", [&](QDialog& d) {
      EXPECT_EQ(d.windowTitle(), u"Modification d'un compte de T.V.A."_s);
      EXPECT_TRUE(Trouve<QLineEdit>(d, "compte").isReadOnly());
      Tape(Trouve<QLineEdit>(d, "taux"), u"1.75"_s);
      Ok(d);
    });
    QTest::keyClick(&Liste(page), Qt::Key_Return);
    EXPECT_THAT(Lignes(page), ::testing::Contains("4453|1,75 %"));
    EXPECT_EQ(+LitCompte(Long("4452")).Type, Tva) << "nothing is written before the options are";
    Ok(f);
  }));
  EXPECT_EQ(+LitCompte(Long("4452")).Type, -1);
  EXPECT_EQ(+LitCompte(Long("4453")).TauxTVA, 1.75);
  EXPECT_EQ(+LitCompte(Long("4457")).TauxTVA, 8.5);
}

TEST_F(Formulaires, TvaDUnExerciceClos) {
  Regle("2003", "Cloture", "31/12/2003");
  EXPECT_FALSE(Options([&](QDialog& f) {
    QWidget& page = Montre(f, Taxe);
    ChoisitRang(Liste(page), u"4452"_s);
    for (const char* nom : {"ajouter", "modifier", "supprimer"}) EXPECT_FALSE(Actif(page, nom)) << nom;
    QTest::keyClick(&Liste(page), Qt::Key_Delete);
    EXPECT_THAT(Lignes(page), ::testing::Contains(::testing::StartsWith("4452")));
    Montre(f, Comptes);
    Annule(f);
  }));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3056}));
}

TEST_F(Formulaires, TauxDeLEuro) {
  ASSERT_TRUE(EcritTauxEuro(App(), {{FaitDate(1, 1, 1999), 6.55957}}));
  EXPECT_FALSE(Options([&](QDialog& f) {
    robot.Attend("DialogTauxEuro", [&](QDialog& d) {
      EXPECT_EQ(d.windowTitle(), u"Taux de conversion à l'EURO"_s);
      EXPECT_EQ(Lignes(d), (std::vector<std::string>{"01/01/1999|6,55957"}));
      robot.Attend("DialogSaisieTaux", [&](QDialog& s) {
        test::Va(Trouve<QLineEdit>(s, "date"));
        EXPECT_EQ(Trouve<QLineEdit>(s, "date").text(), u"15/03/2003"_s) << "today";
        Ok(s);
        EXPECT_TRUE(Trouve<QLineEdit>(s, "taux").hasFocus());
        Tape(Trouve<QLineEdit>(s, "taux"), u"6,5"_s);
        Tape(Trouve<QLineEdit>(s, "date"), u"01021998"_s);
        Ok(s);
      });
      QTest::keyClick(&Liste(d), Qt::Key_Insert);
      EXPECT_EQ(Lignes(d), (std::vector<std::string>{"01/02/1998|6,50000", "01/01/1999|6,55957"}));
      Ok(d);
    });
    Clique(Trouve<QPushButton>(f, "tauxEuro"));
    Annule(f);
  }));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3118});
  EXPECT_EQ(Reglage("TAUX EURO", "1"), "01/02/1998|6.50000");
  EXPECT_EQ(App().TauxEuroCourant, 6.55957);
}

}  // namespace
}  // namespace fenlor::test
