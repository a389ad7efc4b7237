#include <QHeaderView>

#include "banque/remise.h"

#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "forms/banque/chequelist.h"
#include "forms/banque/dialogremise.h"
#include "forms/journal/formesjournal.h"
#include "master/options.h"

namespace fenlor::test {
namespace {

/// Three cheques of the week, 10, 20 and 30 Euro.
class FormeRemise : public FormesJournal {
 protected:
  void SetUp() override {
    FormesJournal::SetUp();
    for (const unsigned jour : {11u, 12u, 13u})
      ASSERT_TRUE(
          Enregistre(Ecriture(JournalRecettes, "706", (jour - 10) * 10, "512", FaitDate(jour, 3, 2003))));
    m_criteres = CriteresRemiseProposes(App());
  }
  static CChequeList& Table(QDialog& f) { return test::Trouve<CChequeList>(f, "cheques"); }
  /// "r.,ri": the ticks of each row.
  static std::string Coches(QDialog& f) {
    std::string texte;
    const ModeleListe& modele = Table(f).Modele();
    for (int i = 0; i < modele.NbLignes(); ++i)
      texte += (i ? "," : "") + std::string(modele.Champ(i, 0).isEmpty() ? "." : "r") +
               (modele.Champ(i, 1).isEmpty() ? "." : "i");
    return texte;
  }
  static std::string Total(QDialog& f) { return test::Trouve<Lecture>(f, "total").Valeur(); }
  const std::string m_fichier = Dossier() + "/remise";
  CriteresRemise m_criteres;
};

TEST_F(FormeRemise, AuClavier) {
  ASSERT_TRUE(EcritAdressesBanque(App(), {{"BQ", "Rue du Port", "30002"}}, false));
  CDialogRemise f(Ui, m_fichier, m_criteres);
  Montre(f);
  QWidget& table = Table(f);
  const auto touche = [&](Qt::Key t) { QTest::keyClick(&table, t); };
  EXPECT_EQ(Coches(f), "..,..,..");
  EXPECT_TRUE(Total(f).empty());
  EXPECT_EQ(Lu(f, "adresse") + Lu(f, "numero"), u"Rue du Port30002"_s);
  test::Va(Champ(f, "du"));
  for (const QString& jour : {u"11/03/2003"_s, u"15/03/2003"_s}) {
    QTest::keyClicks(f.focusWidget(), jour);
    QTest::keyClick(f.focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(Champ(f, "au").text(), u"15/03/2003"_s) << "typed over the day that stands there";
  Clique(Case(f, "euro"));
  table.setFocus();
  touche(Qt::Key_Space);
  touche(Qt::Key_Home);
  touche(Qt::Key_Space);
  touche(Qt::Key_I);
  touche(Qt::Key_Down);
  touche(Qt::Key_I);
  EXPECT_EQ(Coches(f), "r.,.i,ri");
  EXPECT_EQ(Total(f), "40,00 \x80");
  test::Tape(Champ(f, "date"), u"14/03"_s);
  test::Va(table);
  EXPECT_EQ(Coches(f), "r.,.i,ri") << "the list does not depend on it";
  QTest::keyClick(&table, Qt::Key_I, Qt::ControlModifier);
  EXPECT_EQ(Coches(f), "ri,.i,ri");
  for (int i = 0; i < 2 && Focus(f) != "rienImprimer"; ++i)  // one letter for two: each in its turn
    QTest::keyClick(f.focusWidget(), Qt::Key_P, Qt::AltModifier);
  QTest::keyClick(f.focusWidget(), Qt::Key_Space);
  EXPECT_EQ(Coches(f), "r.,..,r.");
  QTest::keyClick(&table, Qt::Key_I, Qt::ControlModifier);
  QTest::keyClick(&table, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Coches(f), "r.,..,r.");
  Clique(Case(f, "toutImprimer"));
  // The second one is paid otherwise after all.
  robot.Attend("DialogEcriture", [](QDialog& e) {
    Clique(Case(e, "autre"));
    Ok(e);
  });
  touche(Qt::Key_Return);
  EXPECT_EQ(Coches(f), "ri,ri");
  test::Tape(Champ(f, "au"), u"32/03/2003"_s);
  Ok(f);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrDateIncorrecte});
  EXPECT_EQ(Focus(f), "au");
  Boite.Oublie();
  test::Tape(Champ(f, "au"), u"16/03/2003"_s);
  Ok(f);
  EXPECT_EQ(f.result(), QDialog::Accepted);
  EXPECT_EQ(m_criteres.date, FaitDate(14, 3, 2003));
  EXPECT_EQ(m_criteres.compte, test::Long("512"));
  EXPECT_TRUE(Boite.Erreurs.empty());
}

TEST_F(FormeRemise, ALaSourisEtParLesBoutons) {
  CDialogRemise f(Ui, m_fichier, m_criteres);
  Montre(f);
  CChequeList& table = Table(f);
  const auto clique = [&](int x, bool deux = false) {
    const QPoint place(x, table.visualRect(table.model()->index(0, 0)).center().y());
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
    if (deux) QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, place);
  };
  const int bord = table.header()->sectionSize(0);
  clique(bord / 2);
  EXPECT_EQ(Coches(f), "ri,..,..");
  clique(bord + 5);
  EXPECT_EQ(Coches(f), "r.,..,..");
  clique(table.header()->sectionSize(1) + bord + 20);
  EXPECT_EQ(Coches(f), "r.,..,..");
  for (const auto& [nom, coches] : {std::pair("toutRemettre", "r.,r.,r."),
                                    {"toutImprimer", "ri,ri,ri"},
                                    {"rienRemettre", ".i,.i,.i"},
                                    {"rienImprimer", "..,..,.."}}) {
    Clique(Case(f, nom));
    EXPECT_EQ(Coches(f), coches);
  }
  Regle("2003", "Cloture", "15/03/2004");
  clique(bord / 2);
  EXPECT_EQ(Coches(f), "..,..,..");
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrExerciceCloture});
}

}  // namespace
}  // namespace fenlor::test
