// The find box over the whole program, by keyboard alone; its keys are counted.
#include <QCheckBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QPushButton>
#include <QTest>

#include "app/programmedetest.h"
#include "core/texte.h"
#include "forms/journal/ecritureview.h"
#include "forms/journal/ecrlist.h"
#include "forms/recherche/dialogrecherche.h"
#include "journal/ecriturelue.h"
#include "ui/cznlistview.h"

namespace fenlor::test {

using namespace Qt::Literals::StringLiterals;

namespace {

class BoiteRecherche : public ProgrammeDeTest {
 protected:
  void SetUp() override {
    Installe();
    for (const auto& [libelle, jour, mois, montant] : {std::tuple{"Zinguerie du toit", 2u, 1u, 650.0},
                                                       {"Zinguerie du toit", 2u, 2u, 660.0},
                                                       {"Chèque n° 1234567 plombier", 9u, 2u, 81.5},
                                                       {"Zèbre", 5u, 3u, 12.0}}) {
      SaisieEcriture ecriture = Ecriture(JournalDepenses, "6132", montant, "512", FaitDate(jour, mois, 2003));
      ecriture.libelle = DepuisUtf8(libelle).value();
      m_mouvements.push_back(Enregistre(ecriture));
    }
    Montre();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Principal.get()));
  }

  /// Ctrl+K, the text, keys downwards, Enter: how many keys that was.
  int Cherche(const QString& texte, int bas = 0) {
    robot.Attend("DialogRecherche", [&](QDialog& d) {
      if (m_tous) Trouve<QCheckBox>(d, "tous").click();
      QTest::keyClicks(d.focusWidget(), texte);
      if (bas > 0 || m_tous) {
        // The keys wait for what is looked for.
        auto& boite = static_cast<CDialogRecherche&>(d);
        ASSERT_TRUE(QTest::qWaitFor([&] { return boite.Repos(); }));
        m_premiere = Rangs(*d.findChild<TableListe*>()).value(0);
      }
      for (int i = 0; i < bas; ++i) QTest::keyClick(d.focusWidget(), Qt::Key_Down);
      QTest::keyClick(d.focusWidget(), Qt::Key_Return);
      m_reste = d.isVisible() ? Textes(d) : QString();
      if (d.isVisible()) d.reject();
    });
    Principal->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Principal.get()));
    QTest::keyClick(Principal.get(), Qt::Key_K, Qt::ControlModifier);
    return 1 + static_cast<int>(texte.size()) + bas + 1;
  }
  /// The journal in front, once the program is in front itself.
  CEcritureView* Journal() {
    Principal->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Principal.get()));
    return qobject_cast<CEcritureView*>(Principal->VueActive());
  }

  std::vector<u32> m_mouvements;
  bool m_tous = false;  ///< "Tous les exercices" is ticked
  QString m_premiere;   ///< row, when it was waited for
  QString m_reste;      ///< what the box says when nothing was chosen in it
};

/// Insert, the code, the amount and five keys between them; and the start page without any.
TEST_F(BoiteRecherche, UneRecetteEnNeufTouchesUnSoldeSansAucune) {
  const auto montre = [this](const char* solde) {
    for (const auto* figure : Principal->findChildren<QPushButton*>())
      if (figure->isVisible() && figure->accessibleName().contains(u", Livres : "_s + QLatin1String(solde)))
        return true;
    return false;
  };
  EXPECT_TRUE(montre("-1403,50"));
  Principal->OuvreUnique(FenRecettes);
  unsigned touches = 1;
  robot.Attend("DialogEcriture", [&](QDialog& f) {
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.isActiveWindow(); }));
    for (const Qt::Key cle : {Qt::Key_Tab, Qt::Key_H, Qt::Key_O, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_2,
                              Qt::Key_5, Qt::Key_Return}) {
      ++touches;
      QTest::keyClick(f.focusWidget(), cle);
    }
    Boite.Defaut = RepNon;
    f.reject();
  });
  ASSERT_TRUE(Journal());
  QTest::keyClick(&Journal()->Liste(), Qt::Key_Insert);
  EXPECT_EQ(touches, 9u);
  ASSERT_EQ(Journal()->GetEcrCount(), 1);
  EcritureLue lue;
  ASSERT_FALSE(LitEcriture(App(), Journal()->GetEcrId(0), lue));
  EXPECT_EQ(lue.saisie.compte, Long("706"));
  EXPECT_FALSE(lue.saisie.libelle.empty());
  EXPECT_EQ(lue.saisie.montants.ttc, 25);
  Principal->FermeToutes();
  QApplication::processEvents();
  EXPECT_TRUE(montre("-1378,50"));
}

TEST_F(BoiteRecherche, UneEcritureEnDouzeTouchesAuPlus) {
  // From the start page, from a list, from another journal.
  for (const u32 fenetre : {0u, u32{FenRubriques}, u32{FenRecettes}}) {
    Principal->FermeToutes();
    if (fenetre) Principal->OuvreUnique(fenetre);
    EXPECT_LE(Cherche(u"plombier"_s), 12);
    ASSERT_TRUE(Journal()) << m_reste.toStdString();
    EXPECT_EQ(Journal()->Titre(), DepuisUtf8("Ecritures de dépenses").value());
    EXPECT_EQ(Journal()->GetEcrId(Journal()->GetEcrSel()), m_mouvements[2]);
    EXPECT_EQ(Journal()->Demande().mois, FaitDate(1, 2, 2003));
  }
  // What stands in the way of an entry gives way: month, mode, filter.
  Journal()->Execute(CmdValidees);
  Journal()->Liste().PoseFiltre(u"rien"_s);
  Cherche(u"zebre"_s);
  EXPECT_EQ(Journal()->GetEcrId(Journal()->GetEcrSel()), m_mouvements[3]);
  // The later of two alike comes first.
  Cherche(u"zing toit"_s, 1);
  EXPECT_EQ(Journal()->GetEcrId(Journal()->GetEcrSel()), m_mouvements[0]);
}

TEST_F(BoiteRecherche, ComptesRubriquesCommandesAide) {
  Cherche(u"6132"_s);
  auto* liste = qobject_cast<CZNListView*>(Principal->VueActive());
  ASSERT_TRUE(liste);
  EXPECT_EQ(liste->Titre(), DepuisUtf8("Comptes de dépenses").value());
  EXPECT_TRUE(liste->Table().Modele().Champ(liste->Table().LigneChoisie(), 1).startsWith(u"6132"_s));
  Cherche(u"comptes de tresorerie"_s);
  EXPECT_TRUE(Principal->EstOuvert(FenTresorerie));
  Cherche(u"rapprochement bancaire page"_s);
  QDialog* aide = Principal->findChild<QDialog*>(u"FenetreAide"_s);
  ASSERT_TRUE(aide);
  EXPECT_TRUE(aide->isVisible());
  aide->close();
  // Nothing found: the box stays, Escape leaves everything as it was.
  const auto avant = Principal->VueActive();
  Cherche(u"zzzz"_s);
  EXPECT_EQ(avant, Principal->VueActive());
  EXPECT_FALSE(m_reste.isEmpty());
}

TEST_F(BoiteRecherche, UneEcritureDUnAutreExercice) {
  Installe("2004");
  SaisieEcriture ecriture = Ecriture(JournalRecettes, "706", 40, "512", FaitDate(3, 4, 2004));
  ecriture.libelle = "Girafe";
  Enregistre(Ecriture(JournalRecettes, "706", 30, "512", FaitDate(3, 4, 2004)));
  const u32 girafe = Enregistre(ecriture);
  ASSERT_TRUE(OuvreExercice("2003"));
  Principal->OuvreUnique(FenDepenses);
  Cherche(u"girafe"_s);
  EXPECT_FALSE(m_reste.isEmpty()) << "it is of another exercice";
  m_tous = true;
  Boite.Reponses = {RepNon, RepOui};
  Cherche(u"girafe"_s);
  EXPECT_EQ(App().NomExercice, "2003");
  EXPECT_EQ(Journal()->Titre(), DepuisUtf8("Ecritures de dépenses").value());
  Cherche(u"girafe"_s);
  EXPECT_EQ(App().NomExercice, "2004");
  ASSERT_TRUE(Journal());
  EXPECT_EQ(Journal()->Titre(), "Ecritures de recettes");
  EXPECT_EQ(Journal()->Demande().mois, FaitDate(1, 4, 2004));
  EXPECT_EQ(Journal()->GetEcrId(Journal()->GetEcrSel()), girafe);
  EXPECT_EQ(Boite.Questions.size(), 2u);
  EXPECT_TRUE(Boite.Erreurs.empty());
  EXPECT_EQ(m_premiere, u"Écriture|03/04/2004|Girafe|40,00 €|2004 - Recettes 2, 706"_s);
  Principal->FermeToutes();
  QApplication::processEvents();
  const auto figures = Principal->findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(figures.begin(), figures.end(), [](const QLabel* figure) {
    return figure->accessibleName() == u"Dépenses, 2003 : 1403,50 €"_s;
  }));
}

}  // namespace
}  // namespace fenlor::test
