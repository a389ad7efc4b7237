
#include <QListWidget>

#include "forms/session/commandesexercice.h"
#include "forms/session/dialogindex.h"
#include "forms/session/textes.h"
#include "outils/uidetest.h"
#include "session/textes.h"
#include "store/definitions.h"

namespace fenlor::test {
namespace {

class FormeIndex : public UiDeTest {
 protected:
  FormeIndex() { EXPECT_TRUE(CreeExercice("2003")); }
  /// Runs the command with one gesture on the form.
  void Reconstruit(std::function<void(QDialog&)> geste) {
    robot.Attend("DialogIndex", std::move(geste));
    CDialogIndex(Ui).Execute();
  }
  static QListWidget& Liste(QDialog& f) { return Trouve<QListWidget>(f, "fichiers"); }
  /// "XXX....": one character a row, "X" checked.
  static std::string Coches(QDialog& f) {
    std::string texte;
    for (int i = 0; i < Liste(f).count(); ++i)
      texte += Liste(f).item(i)->checkState() == Qt::Checked ? 'X' : '.';
    return texte;
  }
};

const std::vector<std::string> AutourDuTravail = {"Sauve", "FermeToutes", "Restaure"};

TEST_F(FormeIndex, LaCaseCocheEtDecocheTout) {
  Reconstruit([](QDialog& f) {
    EXPECT_EQ(Liste(f).item(4)->text(), u"Immobilisations (immo.dat)"_s);
    EXPECT_EQ(Coches(f), "XXXXXXX");
    auto& choisir = Trouve<QCheckBox>(f, "choisir");
    EXPECT_TRUE(choisir.isChecked());
    Liste(f).item(2)->setCheckState(Qt::Unchecked);
    choisir.click();
    EXPECT_EQ(Coches(f), ".......");
    Liste(f).item(1)->setCheckState(Qt::Checked);
    choisir.click();
    EXPECT_EQ(Coches(f), "XXXXXXX");
    const QRect ligne = Liste(f).visualItemRect(Liste(f).item(2));
    for (const char* coches : {"XX.XXXX", "XXXXXXX"}) {
      QTest::mouseClick(Liste(f).viewport(), Qt::LeftButton, {}, ligne.center());
      EXPECT_EQ(Coches(f), coches) << "the text toggles as the box does";
    }
    choisir.click();
    Clique(Bouton(f, u"&Ok"_s));
    EXPECT_FALSE(f.isVisible()) << "nothing to do ends it at once";
  });
  EXPECT_EQ(Cadre.Appels, AutourDuTravail);
  EXPECT_TRUE(Boite.Questions.empty());
}

TEST_F(FormeIndex, ReconstruitEtDitCeQuiAEteEcarte) {
  ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2003), "706", 20, "512"), 0u);
  Banque nulle{};
  PoseTexte(nulle.Compte, "5120000000");
  nulle.Date = FaitDate(3, 2, 2003);
  const u32 banques = Magasin().OpenBanques({});
  const Position position = Magasin().QVAddRec(FichierBanques, &nulle);
  ASSERT_NE(position, 0u);
  ASSERT_TRUE(Magasin().CloseBanques(banques));
  Reconstruit([](QDialog& f) { Clique(Bouton(f, u"&Ok"_s)); });
  EXPECT_EQ(Cadre.Appels, AutourDuTravail);
  EXPECT_EQ(Boite.Ouvertures, 1u);
  ASSERT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{InfoReconstruction});
  const std::string texte = VersUtf8(Boite.Questions[0].texte);
  EXPECT_NE(texte.find("BANQUE : 0 enregistrement(s) gardé(s), 1 écarté(s)"), std::string::npos) << texte;
  EXPECT_EQ(texte.find("JOURNAL"), std::string::npos) << texte;
  Boite.Oublie();
  Reconstruit([](QDialog& f) { Clique(Bouton(f, u"&Ok"_s)); });
  EXPECT_TRUE(Boite.Questions.empty()) << "all is well";
}

TEST_F(FormeIndex, UnArretLaisseLesFichiersNonFaitsCoches) {
  Reconstruit([this](QDialog& f) {
    Boite.ArretApres = 5;  // among the accounts; the bank file, empty, is done
    Clique(Bouton(f, u"&Ok"_s));
    ASSERT_TRUE(f.isVisible());
    EXPECT_EQ(Coches(f), ".XXXXXX") << "the interrupted file and those behind it";
    EXPECT_EQ(Cadre.Appels, AutourDuTravail);
    Liste(f).item(1)->setCheckState(Qt::Unchecked);
    Clique(Bouton(f, u"&Ok"_s));
    EXPECT_EQ(Coches(f), "...XXXX") << "the journal was done when the stop came";
    Boite.ArretApres = -1;
    Clique(Bouton(f, u"&Ok"_s));
    EXPECT_FALSE(f.isVisible());
  });
  EXPECT_EQ(Boite.Ouvertures, 3u);
  EXPECT_EQ(Boite.Profondeur, 0u);
}

TEST_F(FormeIndex, RecalculEtAjustementFermentLesFenetresApresLaQuestion) {
  ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2003), "706", 20, "512"), 0u);
  const struct {
    void (*commande)(ContexteUi&);
    unsigned question;
    std::vector<unsigned> dites;
  } cas[] = {{CommandeRecalcul, QuestionRecalcul, {QuestionRecalcul, InfoRecalcul}},
             {CommandeAjustementEuro, QuestionAjustementEuro, {QuestionAjustementEuro}}};
  for (const auto& c : cas) {
    Boite.Oublie();
    Cadre.Appels.clear();
    c.commande(Ui);
    EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{c.question});
    EXPECT_TRUE(Cadre.Appels.empty()) << "no: nothing is closed";
    Boite.Oublie();
    Boite.Reponses = {RepOui};
    c.commande(Ui);
    EXPECT_EQ(Boite.NumerosQuestions(), c.dites);
    EXPECT_EQ(Cadre.Appels, AutourDuTravail);
    EXPECT_TRUE(Boite.Erreurs.empty());
  }
}

}  // namespace
}  // namespace fenlor::test
