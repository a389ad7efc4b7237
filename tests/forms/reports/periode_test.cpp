// The criteria form, in its five forms.

#include <QStandardItemModel>

#include "forms/reports/dialogperiode.h"
#include "forms/reports/etatdetest.h"

namespace fenlor::test {
namespace {

class PeriodeTest : public EtatsUiTest {
 protected:
  CriteresEtat Criteres;

  std::unique_ptr<CDialogPeriode> Ouvre(FormeCriteres forme, unsigned comptes = MasqueTous) {
    Criteres = {};
    Criteres.du = FaitDate(1, 1, 2003);
    Criteres.au = FaitDate(31, 12, 2003);
    auto f = std::make_unique<CDialogPeriode>(Ui, forme, u"Extrait de compte"_s, comptes, Criteres);
    MontreFenetre(*f);
    VerifieFormulaire(*f);
    return f;
  }
  bool Ok(QDialog& f) {
    test::Ok(f);
    return f.result() == QDialog::Accepted;
  }
};

TEST_F(PeriodeTest, LesCinqFormes) {
  const std::vector<std::string> periode = {"aujourdhui", "semaine", "mois", "exercice", "periode"};
  const struct {
    FormeCriteres forme;
    bool compte, periode, affichage, genre;
  } cas[] = {{FormeCriteres::CompteEtPeriode, true, true, true, false},
             {FormeCriteres::PeriodeEtAffichage, false, true, true, false},
             {FormeCriteres::GenreEtPeriode, false, true, false, true},
             {FormeCriteres::Periode, false, true, false, false},
             {FormeCriteres::Compte, true, false, true, false}};
  for (const auto& c : cas) {
    const auto f = Ouvre(c.forme, MasqueTresorerie);
    SCOPED_TRACE(static_cast<int>(c.forme));
    const auto voit = [&](const char* nom) {
      const auto* champ = f->findChild<QWidget*>(QLatin1String(nom));
      return champ && champ->isVisible();
    };
    EXPECT_EQ(f->windowTitle(), u"Extrait de compte"_s);
    for (const char* nom : {"code", "compte"}) EXPECT_EQ(voit(nom), c.compte);
    EXPECT_FALSE(voit("tous"));
    for (const char* nom : {"creditDebit", "montant"}) EXPECT_EQ(voit(nom), c.affichage);
    for (const char* nom : {"genre", "detaillee", "parMois"}) EXPECT_EQ(voit(nom), c.genre);
    for (const std::string& nom : periode) EXPECT_EQ(voit(nom.c_str()), c.periode);
    EXPECT_EQ(Focus(*f), c.compte ? "code" : c.genre ? "genre" : "aujourdhui");
  }
}

TEST_F(PeriodeTest, Compte) {
  PoseCompte(Long("7065"), Recette, "ACT", "Actes");
  PoseCompte(Long("7064"), Recette, "", "Sans code");
  const auto f = Ouvre(FormeCriteres::CompteEtPeriode, MasqueRecettes | MasqueTresorerie);
  QComboBox& liste = Liste(*f, "compte");
  // Headings cannot be taken; the accounts stand under theirs, by number.
  const auto& modele = *qobject_cast<QStandardItemModel*>(liste.model());
  std::vector<std::string> lignes;
  for (int i = 0; i < liste.count(); ++i)
    lignes.push_back((modele.item(i)->isEnabled() ? "" : "# ") +
                     liste.itemText(i).section(u' ', 0, 0).toStdString());
  std::vector<std::string> tries(lignes.begin() + 1, std::find(lignes.begin(), lignes.end(), "# TRESORERIE"));
  EXPECT_EQ(lignes.front(), "# RECETTES");
  EXPECT_TRUE(std::is_sorted(tries.begin(), tries.end()));
  EXPECT_THAT(tries, ::testing::IsSupersetOf({"706", "7065", "707"}));
  EXPECT_EQ(lignes.back(), "531");
  EXPECT_EQ(liste.currentIndex(), -1);

  // A code is looked up while it is typed, and shown in full when the field is left.
  Tape(Champ(*f, "code"), u" ac"_s);
  EXPECT_EQ(liste.currentIndex(), -1);
  Tape(Champ(*f, "code"), u" act"_s);
  EXPECT_EQ(liste.currentText(), u"7065 Actes"_s);
  Va(liste);
  EXPECT_EQ(Champ(*f, "code").text(), u"ACT"_s);
  Tape(Champ(*f, "code"), u"ZZ"_s);
  EXPECT_EQ(liste.currentIndex(), -1);
  EXPECT_FALSE(Ok(*f));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3119});
  EXPECT_EQ(Focus(*f), "code");

  // The list writes the code; an account without one stays chosen when the blank field is left.
  Choisit(liste, liste.count() - 1);
  EXPECT_EQ(Champ(*f, "code").text(), u"CA"_s);
  Choisit(liste, liste.findText(u"7064 "_s, Qt::MatchStartsWith));
  EXPECT_EQ(Champ(*f, "code").text(), QString());
  Va(Champ(*f, "code"));
  Va(liste);
  Clique(Case(*f, "montant"));
  ASSERT_TRUE(Ok(*f));
  EXPECT_EQ(Criteres.compte, Long("7064"));
  EXPECT_EQ(Criteres.affichage, AffichageMontant);
  CDialogPeriode encore(Ui, FormeCriteres::Compte, {}, MasqueTous, Criteres);
  EXPECT_TRUE(Case(encore, "montant").isChecked()) << "what is proposed";
}

TEST_F(PeriodeTest, Tous) {
  const auto f = Ouvre(FormeCriteres::Compte);
  EXPECT_TRUE(Case(*f, "tous").isChecked());
  EXPECT_FALSE(Champ(*f, "code").isEnabled() || Liste(*f, "compte").isEnabled());
  EXPECT_EQ(Focus(*f), "tous");
  Clique(Case(*f, "tous"));
  EXPECT_TRUE(Champ(*f, "code").isEnabled() && Liste(*f, "compte").isEnabled());
  EXPECT_EQ(Focus(*f), "code");
  EXPECT_FALSE(Ok(*f));
  Tape(Champ(*f, "code"), u"BQ"_s);
  Clique(Case(*f, "tous"));
  EXPECT_EQ(Champ(*f, "code").text(), QString());
  EXPECT_EQ(Liste(*f, "compte").currentIndex(), -1);
  ASSERT_TRUE(Ok(*f));
  EXPECT_EQ(Criteres.compte, "*");
  EXPECT_EQ(Criteres.affichage, AffichageCreditDebit);
  EXPECT_EQ(Criteres.du, FaitDate(1, 1, 2003)) << "no period was asked";
  EXPECT_THAT(App().Reglages.LitIni("Préférences"_w, "Periode"), IsEmpty());
}

TEST_F(PeriodeTest, GenreEtCentralisation) {
  for (int genre = EtatRecettes; genre <= EtatToutes; ++genre) {
    const auto f = Ouvre(FormeCriteres::GenreEtPeriode);
    EXPECT_EQ(Liste(*f, "genre").currentText(), u"Toutes"_s);
    EXPECT_TRUE(Case(*f, "detaillee").isChecked());
    Clique(Case(*f, "parSemaine"));
    Choisit(Liste(*f, "genre"), genre);
    const bool avec = genre == EtatRecettes || genre == EtatToutes;
    EXPECT_EQ(Case(*f, "parMois").isEnabled(), avec);
    ASSERT_TRUE(Ok(*f));
    EXPECT_EQ(Criteres.genre, genre);
    EXPECT_EQ(Criteres.centralisation, avec ? ParSemaine : Detaillee);
  }
}

TEST_F(PeriodeTest, Periode) {
  const auto f = Ouvre(FormeCriteres::Periode);
  QTest::keyClick(f.get(), Qt::Key_P, Qt::AltModifier);  // "La &période :"
  QTest::qWait(150);                                     // the button goes down and up
  EXPECT_EQ(Focus(*f), "du");
  Tape(Champ(*f, "du"), u"31/02/2003"_s);
  EXPECT_FALSE(Ok(*f));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3104});
  // The days are not compared, neither with each other nor with the exercice.
  Tape(Champ(*f, "du"), u"0104"_s);
  Tape(Champ(*f, "au"), u"05012002"_s);
  QTest::keyClick(&Champ(*f, "au"), Qt::Key_Return);
  ASSERT_EQ(f->result(), QDialog::Accepted);
  EXPECT_EQ(Criteres.du, FaitDate(1, 4, 2003));
  EXPECT_EQ(Criteres.au, FaitDate(5, 1, 2002));
  EXPECT_EQ(App().Reglages.LitIni("Préférences"_w, "Periode"), "4");

  robot.Attend("DialogPeriode", [&](QDialog& dialogue) {
    EXPECT_TRUE(Case(dialogue, "periode").isChecked());
    QTest::keyClick(&dialogue, Qt::Key_Escape);
  });
  DemandeurForme demandeur(Ui);
  const CriteresEtat avant = Criteres;
  EXPECT_FALSE(demandeur.Demande(FormeCriteres::Periode, "Etat de T.V.A.", 0, Criteres));
  EXPECT_EQ(Criteres.du, avant.du);
}

}  // namespace
}  // namespace fenlor::test
