#include "ui/formulaire.h"

#include <QListWidget>
#include <QSpinBox>

#include "core/erreurs.h"
#include "core/erreurssaisie.h"
#include "outils/uidetest.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor::test {

namespace {

constexpr TexteFixe RefusLibelle = ErrFermetureFichier, RefusMontant = ErrDateAvantEuro;
constexpr Date Reference = FaitDate(15, 3, 2003);

/// What the form below holds.
struct Fiche {
  Date date = 0;
  std::string libelle, adresse, compte, mode;
  f64 montant = 0;
  bool pointee = false, euro = false;
  bool operator==(const Fiche&) const = default;
};

/// One field of each kind, in the shape of a real form.
class CDialogEssai : public CZNDialog {
 public:
  CDialogEssai(ContexteUi& contexte, Mode mode, bool voisins = false)
      : CZNDialog(contexte, u"Tous les champs"_s, "DialogEssai"), m_montant(App().Reglages) {
    m_date.PoseReference(Reference);
    m_mode.Ajoute("Chèque"_w, "1");
    m_mode.Ajoute("Espèces"_w, "2");
    m_liste.addItems({u"Premier"_s, u"Second"_s});
    m_solde.Pose("1234,50 €"_w);

    Formulaire f{Zone()};
    f.Groupe(u"Écriture"_s)
        .Champ(u"&Date :"_s, m_date, "date")
        .Largeur(10)
        .Suite(u"&Compte :"_s, m_compte, "compte")
        .Largeur(10)
        .Champ(u"&Libellé :"_s, m_libelle, "libelle")
        .Limite(30)
        .Champ(u"Ad&resse :"_s, m_adresse, "adresse")
        .Limite(60);
    f.Groupe(u"Montants"_s)
        .Champ(u"&Montant :"_s, m_montant, "montant")
        .Limite(16)
        .SurDepart([this] { Recalcule(); })
        .Suite(u"&Versement :"_s, m_mode, "mode")
        .SurChangement([this] { Traces.push_back("mode " + m_mode.Valeur()); })
        .Champ(u"Solde :"_s, m_solde, "solde")
        .Champ(u"&Jours :"_s, m_jours, "jours")
        .Champ(u"Monnaie :"_s, m_franc, "franc")
        .ACote(m_euro, "euro")
        .Case(m_pointee, u"Poin&tée"_s, "pointee");
    m_franc.setText(u"Franc"_s);
    m_euro.setText(u"Euro"_s);
    m_franc.setChecked(true);
    f.Groupe(u"Historique"_s).Seul(m_liste, "liste", true);
    AjouteBouton(u"Cop&ier"_s, "copier");
    Boutons(mode, voisins);
    FigeSiCloture();
  }

  void Montre(const Fiche& fiche) {
    m_date.Pose(fiche.date);
    m_libelle.Pose(fiche.libelle);
    m_adresse.Pose(fiche.adresse);
    m_compte.Pose(fiche.compte);
    m_mode.Choisit(fiche.mode);
    m_montant.Pose(fiche.montant);
    m_pointee.setChecked(fiche.pointee);
    (fiche.euro ? m_euro : m_franc).setChecked(true);
  }

  std::vector<Fiche> Fiches;
  std::vector<std::string> Traces;
  bool RefuseDepart = false;

 protected:
  bool Enregistre() override {
    if (m_libelle.Valeur().empty()) return Refuse(RefusLibelle, m_libelle);
    if (m_montant.Valeur() <= 0) return Refuse(RefusMontant, m_montant);
    Fiches.push_back({m_date.Valeur(), m_libelle.Valeur(), m_adresse.Valeur(), m_compte.Valeur(),
                      m_mode.Valeur(), m_montant.Valeur(), m_pointee.isChecked(), m_euro.isChecked()});
    return true;
  }
  void Vide() override { Montre({}); }
  void Voisin(int pas) override {
    Traces.push_back("voisin " + std::to_string(pas));
    Montre({Reference, "Voisin", "", "", "1", 5, false, false});
  }

 private:
  void Recalcule() {
    Traces.push_back("quitte " + De1252(m_montant.text()));
    if (RefuseDepart) Refuse(RefusMontant, m_montant);
  }
  EditeurDate m_date;
  EditeurTexte m_compte, m_libelle;
  EditeurTexteLong m_adresse;
  EditeurMontant m_montant;
  EditeurChoix m_mode;
  Lecture m_solde;
  QSpinBox m_jours;
  QRadioButton m_franc, m_euro;
  QCheckBox m_pointee;
  QListWidget m_liste;
  FinDesLiens m_finLiens{*this};
};

using Mode = CZNDialog::Mode;

class FormulaireTest : public UiDeTest {
 protected:
  void Entree(bool oui) { App().Reglages.EcritIni("Préférences"_w, "Entrée"_w, oui ? "Oui" : "Non"); }
};

/// Counts what its connection still hears once its end began.
class CDialogLie : public CZNDialog {
 public:
  CDialogLie(ContexteUi& contexte, int& tardifs, QWidget* parent)
      : CZNDialog(contexte, u"Liens"_s, "DialogLie", parent), m_tardifs(tardifs) {
    Formulaire(Zone()).Champ(u"&Un :"_s, m_un, "un").Champ(u"&Deux :"_s, m_deux, "deux");
    Boutons(Mode::Simple);
    connect(qApp, &QApplication::focusChanged, this, [this] { m_tardifs += m_fini; });
  }
  ~CDialogLie() override { m_fini = true; }

 private:
  int& m_tardifs;
  bool m_fini = false;
  EditeurTexte m_un, m_deux;
  FinDesLiens m_finLiens{*this};
};

}  // namespace

TEST_F(FormulaireTest, EveryKindOfFieldCanBeReachedReadAloudAndSeen) {
  CDialogEssai dialogue(Ui, Mode::Modification, true);
  MontreFenetre(dialogue);
  VerifieFormulaire(dialogue);
  EXPECT_THAT(OrdreTab(dialogue),
              ElementsAre("date", "compte", "libelle", "adresse", "montant", "mode", "jours", "franc", "euro",
                          "pointee", "liste", "copier", "precedent", "suivant", "ok", "annuler", "aide"));
  EXPECT_EQ(Trouve<QLineEdit>(dialogue, "libelle").accessibleName(), u"Libellé"_s);
  EXPECT_EQ(Trouve<QListWidget>(dialogue, "liste").accessibleName(), u"Historique"_s);
  EXPECT_EQ(Focus(dialogue), "date");
  EXPECT_EQ(Trouve<QPushButton>(dialogue, "ok").text(), u"&Ok"_s);
  EXPECT_EQ(Trouve<QPushButton>(dialogue, "annuler").text(), u"A&nnuler"_s);
}

TEST_F(FormulaireTest, WhatIsNoAmountIsRefusedAtItsField) {
  CDialogEssai dialogue(Ui, Mode::Ajout);
  MontreFenetre(dialogue);
  Tape(Trouve<QWidget>(dialogue, "libelle"), u"Essai"_s);
  auto& montant = Trouve<EditeurMontant>(dialogue, "montant");
  for (const bool quitte : {true, false}) {
    Boite.Oublie();
    Tape(montant, u"120+30"_s);
    quitte ? Touche(dialogue, Qt::Key_Tab) : Touche(dialogue, Qt::Key_Return);
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3400}) << "told once";
    EXPECT_EQ(Focus(dialogue), "montant");
    EXPECT_EQ(montant.selectedText(), u"120+30"_s) << "as it was typed, to be typed again";
    EXPECT_TRUE(montant.EstMarque());
  }
  EXPECT_TRUE(dialogue.Fiches.empty());
  EXPECT_TRUE(dialogue.Traces.empty()) << "nothing is computed from it";
  Tape(montant, u"150"_s);
  EXPECT_FALSE(montant.EstMarque());
  Touche(dialogue, Qt::Key_Return);
  ASSERT_EQ(dialogue.Fiches.size(), 1u);
  EXPECT_EQ(dialogue.Fiches[0].montant, 150);
}

TEST_F(FormulaireTest, TheFocusNeverSelectsAWholeLongText) {
  CDialogEssai dialogue(Ui, Mode::Modification);
  dialogue.Montre({0, "Essai", "Dr\r\nMartin", "", "1", 5, false, false});
  MontreFenetre(dialogue);
  auto& adresse = Trouve<QPlainTextEdit>(dialogue, "adresse");
  CZNDialog::Focalise(adresse);
  EXPECT_FALSE(adresse.textCursor().hasSelection());
  Touche(dialogue, Qt::Key_Return);
  EXPECT_TRUE(adresse.toPlainText().startsWith(u"Dr\nMartin"_s));
}

TEST_F(FormulaireTest, IsFilledFromTheKeyboardAndSavesInSeries) {
  CDialogEssai dialogue(Ui, Mode::Ajout);
  MontreFenetre(dialogue);
  VerifieFormulaire(dialogue);
  EXPECT_EQ(Trouve<QPushButton>(dialogue, "ok").text(), u"&Enregistrer"_s);
  EXPECT_EQ(Trouve<QPushButton>(dialogue, "annuler").text(), u"&Fermer"_s);
  const auto tape = [&](const QString& texte) { Frappe(dialogue, texte); };
  const auto remplit = [&](const QString& libelle) {
    tape(u"0105"_s);
    Touche(dialogue, Qt::Key_Tab);
    tape(u"7061"_s);
    Touche(dialogue, Qt::Key_Tab);
    tape(libelle);
    Touche(dialogue, Qt::Key_Tab);
    tape(u"Rue"_s);
    Touche(dialogue, Qt::Key_Return);
    tape(u"Ville"_s);
    Touche(dialogue, Qt::Key_Tab);
    tape(u"12.5"_s);
    Touche(dialogue, Qt::Key_Tab);
    Touche(dialogue, Qt::Key_Down);
    Touche(dialogue, Qt::Key_Tab);
    Touche(dialogue, Qt::Key_Tab);
    Touche(dialogue, Qt::Key_Right);
    while (Focus(dialogue) != "pointee") Touche(dialogue, Qt::Key_Tab);
    Touche(dialogue, Qt::Key_Space);
  };
  remplit(u"Un"_s);
  Touche(dialogue, Qt::Key_Return);
  const Fiche attendue{FaitDate(1, 5, 2003), "Un", "Rue\r\nVille", "7061", "2", 12.5, true, true};
  ASSERT_EQ(dialogue.Fiches.size(), 1u);
  EXPECT_EQ(dialogue.Fiches[0], attendue);
  EXPECT_TRUE(dialogue.isVisible());
  EXPECT_EQ(Focus(dialogue), "date");
  EXPECT_TRUE(Trouve<QLineEdit>(dialogue, "libelle").text().isEmpty());
  EXPECT_THAT(dialogue.Traces, ElementsAre("quitte 12,50", "mode 2"));

  Entree(false);
  Trouve<EditeurChoix>(dialogue, "mode").Choisit("1");
  remplit(u"Deux"_s);
  QTest::keyClick(&dialogue, Qt::Key_E, Qt::AltModifier);
  ASSERT_EQ(dialogue.Fiches.size(), 2u);
  EXPECT_EQ(dialogue.Fiches[1].libelle, "Deux");
  Touche(dialogue, Qt::Key_Escape);
  EXPECT_FALSE(dialogue.isVisible());
  EXPECT_EQ(dialogue.result(), QDialog::Rejected);
}

TEST_F(FormulaireTest, RefusalKeepsTheFormAndSelectsTheField) {
  CDialogEssai dialogue(Ui, Mode::Simple);
  MontreFenetre(dialogue);
  auto& libelle = Trouve<EditeurTexte>(dialogue, "libelle");
  auto& montant = Trouve<EditeurMontant>(dialogue, "montant");
  Tape(montant, u"0"_s);
  Touche(dialogue, Qt::Key_Return);
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(RefusLibelle));
  EXPECT_EQ(Focus(dialogue), "libelle");
  Tape(libelle, u"Essai"_s);
  montant.setText(u"00"_s);
  Touche(dialogue, Qt::Key_Return);
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(RefusLibelle, RefusMontant));
  EXPECT_EQ(Focus(dialogue), "montant");
  EXPECT_EQ(montant.selectedText(), u"00"_s);
  EXPECT_TRUE(dialogue.isVisible());
  Tape(montant, u"7"_s);
  Clique(Bouton(dialogue, u"&Ok"_s));
  EXPECT_FALSE(dialogue.isVisible());
  EXPECT_EQ(dialogue.result(), QDialog::Accepted);
  ASSERT_EQ(dialogue.Fiches.size(), 1u);
}

TEST_F(FormulaireTest, RefusalOnDepartureStopsTheSave) {
  CDialogEssai dialogue(Ui, Mode::Simple);
  MontreFenetre(dialogue);
  Tape(Trouve<QLineEdit>(dialogue, "libelle"), u"Essai"_s);
  dialogue.RefuseDepart = true;
  auto& montant = Trouve<EditeurMontant>(dialogue, "montant");
  for (const bool clic : {false, true}) {
    Boite.Oublie();
    Tape(montant, u"5"_s);
    if (clic)
      Clique(Bouton(dialogue, u"&Ok"_s));
    else
      Touche(dialogue, Qt::Key_Return);
    EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(RefusMontant)) << clic;
    EXPECT_EQ(Focus(dialogue), "montant") << clic;
    EXPECT_EQ(montant.selectedText(), u"5,00"_s) << clic;
  }
  EXPECT_TRUE(dialogue.Fiches.empty());
  Boite.Oublie();
  Clique(Bouton(dialogue, u"A&nnuler"_s));
  QApplication::processEvents();
  EXPECT_FALSE(dialogue.isVisible());
  EXPECT_TRUE(Boite.Erreurs.empty()) << "one may leave a wrong field for Annuler";
}

TEST_F(FormulaireTest, RadioIsChosenByAKeyThatOthersShare) {
  class CDialogPartage : public CZNDialog {
   public:
    explicit CDialogPartage(ContexteUi& contexte) : CZNDialog(contexte, u"Touches"_s, "DialogPartage") {
      m_un.setText(u"&Premier"_s);
      m_autre.setText(u"&Autre"_s);
      Formulaire(Zone()).Champ(u"&Adresse :"_s, m_champ, "adresse").ACote(m_un, "un").ACote(m_autre, "autre");
      m_un.setChecked(true);
      AjouteBouton(u"&Annexe"_s, "annexe");
      Boutons(Mode::Simple, true);
    }
    EditeurTexte m_champ;
    QRadioButton m_un{nullptr}, m_autre{nullptr};
  } dialogue(Ui);
  MontreFenetre(dialogue);
  EXPECT_EQ(Trouve<QPushButton>(dialogue, "aide").text(), u"A&ide"_s) << "A is needed elsewhere";
  std::set<std::string> foyers;
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(&dialogue, Qt::Key_A, Qt::AltModifier);
    foyers.insert(Focus(dialogue));
    EXPECT_EQ(dialogue.m_autre.isChecked(), foyers.contains("autre"));
  }
  EXPECT_THAT(foyers, ElementsAre("adresse", "annexe", "autre"));
}

TEST_F(FormulaireTest, EnterMovesOnWhenThePreferenceSaysSo) {
  Entree(true);
  CDialogEssai dialogue(Ui, Mode::Simple);
  MontreFenetre(dialogue);
  std::vector<std::string> vus;
  auto& pointee = Trouve<QCheckBox>(dialogue, "pointee");
  const auto image = [&pointee] { return pointee.grab().toImage(); };
  const QImage sans = image();
  for (int i = 0; i < 12; ++i) {
    vus.push_back(Focus(dialogue));
    EXPECT_EQ(image() != sans, vus.back() == "pointee") << "the focus is seen there, at " << vus.back();
    if (vus.back() == "adresse")
      Va(Trouve<QWidget>(dialogue, "montant"));
    else
      Touche(dialogue, i % 2 ? Qt::Key_Return : Qt::Key_Enter);
    if (vus.back() == "ok") break;
  }
  // Of two radio buttons the checked one alone is a stop.
  EXPECT_THAT(vus, ElementsAre("date", "compte", "libelle", "adresse", "montant", "mode", "jours", "franc",
                               "pointee", "liste", "ok"));
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(RefusLibelle)) << "Enter on the button is the button";

  Entree(false);
  Boite.Oublie();
  Va(Trouve<QWidget>(dialogue, "copier"));
  QTest::keyClick(&dialogue, Qt::Key_O, Qt::AltModifier);
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(RefusLibelle)) << "from another button too";
  Boite.Oublie();
  Va(Trouve<QWidget>(dialogue, "date"));
  Touche(dialogue, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(RefusLibelle));
}

TEST_F(FormulaireTest, NeighbourIsShownAfterASave) {
  CDialogEssai dialogue(Ui, Mode::Modification, true);
  dialogue.Montre({Reference, "Avant", "", "", "1", 3, false, false});
  MontreFenetre(dialogue);
  auto& suivant = Bouton(dialogue, u"&Suivant"_s);
  Clique(suivant);
  EXPECT_TRUE(dialogue.Fiches.empty()) << "nothing had changed";
  Tape(Trouve<QLineEdit>(dialogue, "libelle"), {});
  Clique(Bouton(dialogue, u"&Précédent"_s));
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(RefusLibelle));
  EXPECT_THAT(dialogue.Traces, ElementsAre("voisin 1"));
  Tape(Trouve<QLineEdit>(dialogue, "libelle"), u"Autre"_s);
  Clique(Bouton(dialogue, u"&Précédent"_s));
  ASSERT_EQ(dialogue.Fiches.size(), 1u);
  EXPECT_EQ(dialogue.Fiches[0].libelle, "Autre");
  EXPECT_THAT(dialogue.Traces, ElementsAre("voisin 1", "voisin -1"));
  Clique(suivant);
  EXPECT_EQ(dialogue.Fiches.size(), 1u);

  Tape(Trouve<QLineEdit>(dialogue, "montant"), u"9"_s);
  dialogue.RefuseDepart = true;
  QTest::keyClick(&dialogue, Qt::Key_S, Qt::AltModifier);
  QTest::qWait(150);
  EXPECT_EQ(dialogue.Fiches.size(), 1u) << "the field that is being typed is left first";
  EXPECT_EQ(Focus(dialogue), "montant");
  dialogue.RefuseDepart = false;
  QTest::keyClick(&dialogue, Qt::Key_S, Qt::AltModifier);
  QTest::qWait(150);
  ASSERT_EQ(dialogue.Fiches.size(), 2u);
  EXPECT_EQ(dialogue.Fiches[1].montant, 9);
  EXPECT_EQ(Focus(dialogue), "montant") << "the keys go on in the same field";
}

TEST_F(FormulaireTest, WhatWasTypedIsAskedAboutBeforeANewRecordIsLeft) {
  const struct {
    Mode mode;
    const char16_t *libelle, *montant;
    int reponse;  ///< 0: nothing is asked
    bool reste;
    std::size_t fiches;
  } cas[] = {{Mode::Ajout, u"", u"", 0, false, 0},
             {Mode::Ajout, u"", u"0,00", 0, false, 0},
             {Mode::Modification, u"Loyer", u"", 0, false, 0},
             {Mode::Ajout, u"Loyer", u"", RepAnnuler, true, 0},
             {Mode::Ajout, u"Loyer", u"", RepNon, false, 0},
             {Mode::Ajout, u"", u"12a", RepNon, false, 0},
             {Mode::Ajout, u"Loyer", u"", RepOui, true, 0},
             {Mode::Ajout, u"Loyer", u"8", RepOui, false, 1}};
  for (const auto& c : cas) {
    SCOPED_TRACE(&c - cas);
    Boite.Oublie();
    Boite.Reponses.assign(c.reponse ? 1 : 0, c.reponse);
    CDialogEssai dialogue(Ui, c.mode);
    MontreFenetre(dialogue);
    Tape(Trouve<QWidget>(dialogue, "montant"), QString::fromUtf16(c.montant));
    Tape(Trouve<QWidget>(dialogue, "libelle"), QString::fromUtf16(c.libelle));
    Boite.Erreurs.clear();
    Touche(dialogue, Qt::Key_Escape);
    EXPECT_EQ(Boite.Questions.size(), c.reponse ? 1u : 0u);
    EXPECT_EQ(dialogue.isVisible(), c.reste);
    EXPECT_EQ(dialogue.Fiches.size(), c.fiches);
  }
}

TEST_F(FormulaireTest, FormOfAClosedExerciceShowsAndTakesNothing) {
  ASSERT_TRUE(CreeExercice("2003") && App().Reglages.EcritIniExercice({}, "Cloture", "05/01/2004"));
  CDialogEssai dialogue(Ui, Mode::Modification);
  dialogue.Montre({Reference, "Lu", "", "7061000000", "2", 12, true, true});
  MontreFenetre(dialogue);
  VerifieFormulaire(dialogue);
  EXPECT_TRUE(Trouve<QPushButton>(dialogue, "ok").isHidden());
  auto& libelle = Trouve<EditeurTexte>(dialogue, "libelle");
  Tape(libelle, u"x"_s);
  Tape(Trouve<QWidget>(dialogue, "adresse"), u"x"_s);
  Tape(Trouve<QWidget>(dialogue, "date"), u"1"_s);
  EXPECT_EQ(libelle.Valeur(), "Lu");
  EXPECT_EQ(Trouve<EditeurTexteLong>(dialogue, "adresse").Valeur(), "");
  EXPECT_EQ(Trouve<EditeurDate>(dialogue, "date").Valeur(), Reference);
  EXPECT_FALSE(Trouve<QWidget>(dialogue, "mode").isEnabled());
  EXPECT_FALSE(Trouve<QWidget>(dialogue, "pointee").isEnabled());
  const QPalette couleurs = Trouve<QWidget>(dialogue, "pointee").palette();
  EXPECT_EQ(couleurs.color(QPalette::Disabled, QPalette::WindowText),
            couleurs.color(QPalette::Active, QPalette::WindowText));
  Touche(dialogue, Qt::Key_Return);
  EXPECT_FALSE(dialogue.isVisible());
  EXPECT_EQ(dialogue.result(), QDialog::Rejected);
}

TEST_F(FormulaireTest, FontOfThePreferencesAndHelp) {
  Dessin.PoliceSaisies.setPointSize(21);
  Dessin.TexteSaisies = Qt::darkRed;
  CDialogEssai dialogue(Ui, Mode::Simple);
  MontreFenetre(dialogue);
  VerifieFormulaire(dialogue);
  auto& libelle = Trouve<EditeurTexte>(dialogue, "libelle");
  EXPECT_EQ(libelle.font().pointSize(), 21);
  EXPECT_EQ(libelle.palette().color(QPalette::Active, QPalette::Text), QColor(Qt::darkRed));
  EXPECT_GE(libelle.width(), QFontMetrics(libelle.font()).horizontalAdvance(QString(30, u'0')));
  Touche(dialogue, Qt::Key_F1);
  EXPECT_EQ(Cadre.Nombre("Aide DialogEssai"), 1u);

  Dessin.TexteSaisies = QApplication::palette().color(QPalette::Base);
  CDialogEssai illisible(Ui, Mode::Simple);
  EXPECT_NE(Trouve<EditeurTexte>(illisible, "libelle").palette().color(QPalette::Active, QPalette::Text),
            Dessin.TexteSaisies);
}

TEST_F(FormulaireTest, LesLiensFinissentAvantLesChamps) {
  int tardifs = 0;
  {
    CDialogLie forme(Ui, tardifs, nullptr);
    forme.show();
    Va(Trouve<EditeurTexte>(forme, "deux"));
  }
  EXPECT_EQ(tardifs, 0);
}

TEST_F(FormulaireTest, UneFormeSurvitASonParent) {
  int tardifs = 0;
  auto parent = std::make_unique<QWidget>();
  parent->show();
  CDialogLie forme(Ui, tardifs, new QWidget(parent.get()));
  robot.Attend("DialogLie", [&](QDialog&) { parent.reset(); });
  EXPECT_FALSE(forme.Execute()) << "cancelled";
  EXPECT_EQ(Trouve<EditeurTexte>(forme, "un").text(), QString());
}

}  // namespace fenlor::test
