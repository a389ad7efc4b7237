#include "journal/virement.h"

#include "forms/journal/dialogvirement.h"
#include "forms/journal/formesjournal.h"
#include "forms/journal/textes.h"

namespace fenlor::test {
namespace {

void PoseTransit(test::CabinetMedical& cabinet) {
  ASSERT_TRUE(cabinet.PoseCompte("5811", Autre, "VD", "Virements"));
  ASSERT_TRUE(cabinet.PoseCompte("5812", Autre, "VR", "Virements"));
  ASSERT_TRUE(cabinet.Magasin().SetCompteVireFrom("5811") && cabinet.Magasin().SetCompteVireTo("5812"));
}

class FormeVirement : public FormesJournal {
 protected:
  void SetUp() override {
    FormesJournal::SetUp();
    PoseTransit(*this);
  }
  static void Code(QDialog& f, const char* nom, const QString& code) {
    Choisit(Liste(f, nom), Liste(f, nom).findText(code));
  }
};

TEST_F(FormeVirement, AuClavierCommeParLaRegle) {
  CDialogVirement f(Ui);
  Montre(f);
  EXPECT_EQ(test::Trouve<QLabel>(f, "transitDe").text(), u"5811 Virements"_s);
  EXPECT_EQ(test::Trouve<QLabel>(f, "transitVers").text(), u"5812 Virements"_s);
  test::Jumeau jumeau;
  jumeau.Installe();
  PoseTransit(jumeau);
  const struct {
    const char *de, *vers, *montant;
    SaisieVirement regle;
  } virements[] = {{"BQ", "CCP", "150,5", {0, Long("512"), Long("514"), "", true, 150.5, PaiementCheque}},
                   {"CCP", "CA", "20", {0, Long("514"), Long("53"), "", true, 20, PaiementAutre}}};
  const auto touche = [&](Qt::Key t) { QTest::keyClick(f.focusWidget(), t); };
  for (const auto& v : virements) {
    EXPECT_EQ(Focus(f), "de");
    QTest::keyClicks(f.focusWidget(), Q(v.de));
    touche(Qt::Key_Tab);
    QTest::keyClicks(f.focusWidget(), Q(v.vers));
    while (Focus(f) != "montant") touche(Qt::Key_Tab);
    QTest::keyClicks(f.focusWidget(), Q(v.montant));
    touche(Qt::Key_Return);
    EXPECT_TRUE(Boite.NumerosErreurs().empty());
    EXPECT_TRUE(Champ(f, "montant").text().isEmpty() && Case(f, "autre").isChecked());
    EXPECT_EQ(Liste(f, "de").currentIndex() + Liste(f, "vers").currentIndex(), -2);
    EXPECT_FALSE(Actif(f, "cheque") || Actif(f, "autre"));
    SaisieVirement regle = v.regle;
    regle.date = FaitDate(15, 3, 2003);
    VirementFait fait;
    ASSERT_FALSE(EnregistreVirement(jumeau.App(), regle, fait));
  }
  Code(f, "vers", u"BQ"_s);
  EXPECT_TRUE(Case(f, "autre").isChecked()) << "as the one before";
  Choisit(Liste(f, "vers"), -1);
  test::CompareLivres(*this, jumeau, 4);
  touche(Qt::Key_Escape);
  EXPECT_TRUE(!f.isVisible() && Boite.Questions.empty());
}

TEST_F(FormeVirement, UnRefusVaASonChamp) {
  CDialogVirement f(Ui);
  Montre(f);
  for (const auto& [date, erreur, champ] :
       {std::tuple(u"31/02/2003"_s, 3089u, "date"), {u"31/12"_s, 3083u, "de"}}) {
    Tape(Champ(f, "date"), date);
    Boite.Oublie();
    Ok(f);
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{erreur});
    EXPECT_EQ(Focus(f), champ);
  }
  EXPECT_EQ(Magasin().GetJournalRec(0), 0u);
  ASSERT_TRUE(Magasin().SetCompteVireFrom("5812") && Magasin().SetCompteVireTo("5811"));
  Code(f, "de", u"BQ"_s);
  Code(f, "vers", u"CA"_s);
  Tape(Champ(f, "montant"), u"12"_s);
  Case(f, "franc").setEnabled(true);  // as on a day of the Franc
  Case(f, "franc").setChecked(true);
  Boite.Oublie();
  Ok(f);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3041});
  EXPECT_EQ(Focus(f), "franc");
  EXPECT_EQ(Lu(f, "transitDe"), u"5812 Virements"_s) << "as they stand now";
}

TEST_F(FormeVirement, OuvrirEtFermer) {
  const struct {
    int reponse;
    u32 lignes;
  } cas[] = {{RepNon, 0}, {RepOui, 4}};
  for (const auto& c : cas) {
    CDialogVirement f(Ui);
    Montre(f);
    Code(f, "de", u"BQ"_s);
    Code(f, "vers", u"CA"_s);
    Tape(Champ(f, "montant"), u"12"_s);
    Boite.Oublie();
    Boite.Reponses = {c.reponse};
    QTest::keyClick(&f, Qt::Key_Escape);
    EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{QuestionEnregistrerVirement});
    EXPECT_FALSE(f.isVisible());
    EXPECT_EQ(Magasin().GetJournalRec(0), c.lignes);
  }
  EXPECT_TRUE(CDialogVirement::PeutOuvrir(Ui));
  for (const auto& [annee, date] : {std::pair(2002, u"01/01/2003"_s), std::pair(2004, u"31/12/2003"_s)}) {
    Magasin().FixeAujourdhui(FaitDate(1, 6, static_cast<unsigned>(annee)));
    CDialogVirement f(Ui);
    EXPECT_EQ(Champ(f, "date").text(), date);
  }
  Regle("2003", "Cloture", "31/12/2003");
  Boite.Oublie();
  EXPECT_FALSE(CDialogVirement::PeutOuvrir(Ui));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3056});
}

}  // namespace
}  // namespace fenlor::test
