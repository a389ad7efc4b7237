#include "journal/criteres.h"

#include <QListWidget>
#include <cstring>

#include "forms/journal/dialogcritere.h"
#include "forms/journal/dialogmonth.h"
#include "forms/journal/formesjournal.h"
#include "session/periodes.h"

namespace fenlor::test {
namespace {

class FormeCritere : public FormesJournal {
 protected:
  CritereEcriture Tout() { return CriteresParDefaut(App()); }
};

TEST_F(FormeCritere, MarquesQuiSExcluent) {
  const struct {
    const char *presente, *absente;
    u32 CritereEcriture::*marque;
    u32 CritereEcriture::*contraire;
  } paires[] = {
      {"pointees", "nonPointees", &CritereEcriture::Pointees, &CritereEcriture::NonPointees},
      {"remises", "nonRemises", &CritereEcriture::Remises, &CritereEcriture::NonRemises},
      {"rapprochees", "nonRapprochees", &CritereEcriture::Rapprochees, &CritereEcriture::NonRapprochees},
      {"associees", "nonAssociees", &CritereEcriture::Associees, &CritereEcriture::NonAssociees}};
  App().Edition = 0;
  for (const auto& paire : paires) {
    CDialogCritere f(Ui, JournalRecettes, Tout());
    Montre(f);
    const auto actives = [&] {
      int nombre = 0;
      for (const auto& p : paires) nombre += Actif(f, p.presente) + Actif(f, p.absente);
      return nombre;
    };
    EXPECT_EQ(actives(), 0);
    Clique(Case(f, "toutes"));
    EXPECT_EQ(actives(), 8);
    Clique(Case(f, paire.presente));
    EXPECT_TRUE(!Actif(f, paire.absente) && actives() == 7);
    Clique(Case(f, paire.presente));
    Clique(Case(f, paire.absente));
    EXPECT_TRUE(!Actif(f, paire.presente) && actives() == 7);
    Ok(f);
    EXPECT_TRUE(f.Criteres().*paire.contraire && !(f.Criteres().*paire.marque) && !f.Criteres().Toutes);
  }
  App().Edition = 2;
  CritereEcriture associees = Tout();
  associees.Toutes = 0;
  associees.Associees = 1;
  CDialogCritere f(Ui, JournalRecettes, associees);
  Montre(f);
  EXPECT_FALSE(Case(f, "associees").isVisible() || Case(f, "nonAssociees").isVisible());
  Ok(f);
  EXPECT_TRUE(f.Criteres().Toutes && !f.Criteres().Associees);
}

TEST_F(FormeCritere, ListesSelonLeJournal) {
  const auto remplie = [&](i16 journal, const char* nom) {
    CDialogCritere f(Ui, journal, Tout());
    QStringList lignes;
    for (int i = 0; i < Liste(f, nom).count(); ++i) lignes += Liste(f, nom).itemText(i);
    return lignes;
  };
  const QStringList recettes = remplie(JournalRecettes, "deComptes"),
                    depenses = remplie(JournalDepenses, "aComptes"), tous = remplie(JournalOD, "deComptes");
  EXPECT_TRUE(recettes.contains(u"706"_s) && !recettes.contains(u"6132"_s) && !recettes.contains(u"512"_s));
  EXPECT_TRUE(depenses.contains(u"6132"_s) && !depenses.contains(u"706"_s));
  EXPECT_TRUE(tous.contains(u"706"_s) && tous.contains(u"6132"_s) && tous.contains(u"512"_s));
  EXPECT_FALSE(std::is_sorted(depenses.begin(), depenses.end())) << "in the order of the codes";
  EXPECT_TRUE(std::is_sorted(tous.begin(), tous.end()));
  const QStringList d = remplie(JournalDepenses, "deRubriques");
  EXPECT_FALSE(d.isEmpty());
  for (const QString& code : remplie(JournalRecettes, "deRubriques")) EXPECT_FALSE(d.contains(code));
  EXPECT_TRUE(remplie(JournalOD, "deRubriques").isEmpty());
}

TEST_F(FormeCritere, BornesEtRetour) {
  CDialogCritere f(Ui, JournalDepenses, Tout());
  Montre(f);
  for (const char* tout : {"tousMontants", "tousComptes", "tousRubriques", "tousJours"})
    Clique(Case(f, tout));
  QComboBox &de = Liste(f, "deJours"), &a = Liste(f, "aJours");
  EXPECT_EQ(de.currentText() + a.currentText(), u"131"_s);
  a.setCurrentIndex(9);
  de.setCurrentIndex(19);
  EXPECT_EQ(a.currentText(), u"20"_s) << "rises";
  a.setCurrentIndex(4);
  EXPECT_EQ(de.currentText(), u"5"_s) << "falls";
  for (auto [liste, jour] : {std::pair(&de, u"15"_s), std::pair(&a, u"20"_s)}) {
    test::Va(*liste);
    QTest::keyClicks(liste, jour);
  }
  EXPECT_EQ(de.currentText() + a.currentText(), u"1520"_s) << "typed, the 2 of 20 takes nothing along";
  test::Va(de);
  a.setCurrentIndex(4);
  test::Tape(Champ(f, "montantMax"), u"99,5"_s);
  Clique(Case(f, "franc"));
  for (const auto& [liste, tape] : {std::pair("deComptes", u"6132"_s), {"aComptes", u"6154x"_s}}) {
    test::Va(Liste(f, liste));
    QTest::keyClicks(f.focusWidget(), tape);
  }
  Ok(f);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3105});
  QTest::keyClicks(f.focusWidget(), u"6154"_s);
  Liste(f, "deRubriques").setCurrentIndex(1);
  Liste(f, "aRubriques").setCurrentIndex(2);
  Ok(f);
  const CritereEcriture& lus = f.Criteres();
  EXPECT_FALSE(lus.TousMontants || lus.TousComptes || lus.ToutesRubriques || lus.TousJours ||
               lus.MontantEuro);
  EXPECT_EQ(LitTexte(lus.CompteDe) + LitTexte(lus.CompteA), "61326154");
  EXPECT_TRUE(lus.MontantMin == 0 && lus.MontantMax == 99.5 && lus.JourDe == 5 && lus.JourA == 5);
  EXPECT_LT(LitTexte(lus.RubriqueDe), LitTexte(lus.RubriqueA));
  CDialogCritere encore(Ui, JournalDepenses, lus);
  Montre(encore);
  Ok(encore);
  EXPECT_EQ(std::memcmp(&encore.Criteres(), &lus, sizeof lus), 0) << "shown as they were";
  CDialogCritere vide(Ui, JournalDepenses, Tout());
  Montre(vide);
  for (const char* tout : {"toutes", "tousMontants", "tousComptes", "tousRubriques"})
    Clique(Case(vide, tout));
  Liste(vide, "deComptes").setCurrentIndex(0);
  Ok(vide);
  EXPECT_FALSE(EstPartielle(vide.Criteres())) << "what was left empty is all";
}

TEST_F(FormeCritere, ChoixDUnMois) {
  ASSERT_TRUE(CreeExercice("1999", false, false, FaitDate(15, 11, 1999), FaitDate(28, 2, 2000)));
  EXPECT_EQ(MoisExercice(App()), (std::vector<Date>{FaitDate(1, 11, 1999), FaitDate(1, 12, 1999),
                                                    FaitDate(1, 1, 2000), FaitDate(1, 2, 2000)}));
  const auto ouvre = [&](const std::function<void(CDialogMonth&, QListWidget&)>& geste) {
    CDialogMonth f(Ui, 1);
    Montre(f);
    EXPECT_EQ(Focus(f), "mois");
    geste(f, Trouve<QListWidget>(f, "mois"));
    EXPECT_FALSE(f.isVisible());
    return f.result() == QDialog::Accepted ? f.Choisi() : -1;
  };
  const auto entree = [](CDialogMonth&, QListWidget& liste) {
    for (const Qt::Key touche : {Qt::Key_Down, Qt::Key_Return}) QTest::keyClick(&liste, touche);
  };
  EXPECT_EQ(ouvre(entree), 2) << "from the one preselected";
  EXPECT_EQ(ouvre([](CDialogMonth& f, QListWidget& liste) {
              liste.clearSelection();
              Ok(f);
            }),
            -1);
  Regle("Préférences"_w, "Entrée"_w, "Oui");
  EXPECT_EQ(ouvre(entree), 2) << "Enter chooses, whatever it does between fields";
  ZNDialogChangeMois change(Ui, 12);
  Montre(change);
  EXPECT_EQ(change.Mois(), 12u);
  for (const Qt::Key touche : {Qt::Key_Home, Qt::Key_Return}) QTest::keyClick(change.focusWidget(), touche);
  EXPECT_TRUE(change.result() == QDialog::Accepted && change.Mois() == 1);
}

}  // namespace
}  // namespace fenlor::test
