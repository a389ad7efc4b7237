
#include <QHelpEvent>
#include <QToolTip>

#include "forms/journal/champsecriture.h"
#include "journal/cabinetmedical.h"
#include "master/libelles.h"
#include "outils/uidetest.h"

namespace fenlor::test {
namespace {

/// A window with the shared fields, as the forms of entries have them.
class Champs : public CabinetMedical {
 protected:
  void SetUp() override { Installe("2002"); }
};

TEST_F(Champs, UnJourDuMois) {
  QWidget zone;
  Formulaire formulaire{zone};
  ChampJour jour;
  QLineEdit autre;
  jour.Declare(formulaire, u"Date :"_s, "date");
  formulaire.Champ(u"Autre :"_s, autre, "autre");
  jour.Pose(FaitDate(18, 2, 2002));
  MontreFenetre(zone);
  EXPECT_EQ(jour.count(), 28);
  EXPECT_EQ(Trouve<QLabel>(zone, "mois").text(), u"Février 2002"_s);
  const struct {
    const char *tape, *montre;
    Date date;
  } cas[] = {{"5", "5", FaitDate(5, 2, 2002)},      {"07", "7", FaitDate(7, 2, 2002)},
             {"28", "28", FaitDate(28, 2, 2002)},   {"29", "", FaitDate(2, 2, 2002)},
             {"0", "", FaitDate(2, 2, 2002)},       {"", "", FaitDate(2, 2, 2002)},
             {"1x234", "12", FaitDate(12, 2, 2002)}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.tape);
    Tape(jour, Q(c.tape));
    Va(autre);
    EXPECT_EQ(jour.currentText(), Q(c.montre));
    EXPECT_EQ(jour.Valeur(), c.date);
    EXPECT_EQ(jour.Saisie(), *c.montre ? c.date : 0);
  }
  Tape(jour, u"20"_s);
  QTest::keyClick(&jour, Qt::Key_Down);
  EXPECT_EQ(jour.Valeur(), FaitDate(21, 2, 2002)) << "steps start from the typed day";
  QTest::keyClick(&jour, Qt::Key_Up);
  QTest::keyClick(&jour, Qt::Key_Up);
  EXPECT_EQ(jour.Valeur(), FaitDate(19, 2, 2002));
}

TEST_F(Champs, LimiteDuFranc) {
  ASSERT_EQ(App().Reglages.GetLimiteFranc(), FaitDate(18, 2, 2002));
  const struct {
    const char* quoi;
    bool euro;
    Date date;
    bool ouverture;  // else the day was left
    bool euroApres, franc;
  } cas[] = {
      {"ouverte avant", false, FaitDate(17, 2, 2002), true, false, true},
      {"ouverte le jour même", false, FaitDate(18, 2, 2002), true, true, false},
      {"ouverte après, en Euro", true, FaitDate(19, 2, 2002), true, true, false},
      {"quittée avant", true, FaitDate(17, 2, 2002), false, true, true},
      {"quittée le jour même, en Euro", true, FaitDate(18, 2, 2002), false, true, false},
      {"quittée après, en Franc", false, FaitDate(19, 2, 2002), false, false, true},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.quoi);
    ChoixMonnaie monnaie(App());
    monnaie.Pose(c.euro);
    const bool change = c.ouverture && monnaie.Ouvre(c.date);
    if (!c.ouverture) monnaie.QuitteDate(c.date);
    EXPECT_EQ(change, c.euro != c.euroApres);
    EXPECT_EQ(monnaie.Euro(), c.euroApres);
    EXPECT_EQ(monnaie.Bouton(false).isEnabled(), c.franc);
  }
  ChoixMonnaie monnaie(App());
  int fois = 0;
  monnaie.SurChangement([&] { ++fois; });
  for (const bool euro : {true, false, false, true}) monnaie.Bouton(euro).click();
  EXPECT_EQ(fois, 2) << "a click on what is chosen is no change";
}

TEST_F(Champs, ModeDePaiement) {
  CompteOffert banque, caisse, recette;
  banque.type = caisse.type = Tresorerie;
  banque.banque = true;
  recette.type = Recette;
  QWidget zone;
  ChoixPaiement mode;
  Formulaire formulaire{zone};
  mode.Declare(formulaire);
  const auto& cheque = Trouve<QRadioButton>(zone, "cheque");
  const auto& autre = Trouve<QRadioButton>(zone, "autre");
  const auto etat = [&] {
    return std::string(cheque.isChecked()  ? "C"
                       : autre.isChecked() ? "A"
                                           : "-") +
           (autre.isEnabled() ? "+" : "");
  };
  const auto tresorerie = [&](const CompteOffert* compte, i16 paiement) {
    mode.PoseTresorerie(compte, paiement);
    return etat();
  };
  const auto ligne = [&](const CompteOffert* compte) {
    mode.PoseLigne(compte);
    return etat();
  };
  EXPECT_EQ(tresorerie(&banque, PaiementAutre), "A+");
  EXPECT_EQ(tresorerie(&banque, PaiementCheque), "C+");
  EXPECT_EQ(tresorerie(&caisse, PaiementCheque), "A") << "cash is never a cheque";
  EXPECT_EQ(tresorerie(nullptr, PaiementCheque), "A");
  mode.Efface();
  EXPECT_EQ(ligne(&recette), "-");
  EXPECT_EQ(ligne(&caisse), "C+");
  mode.Marque(PaiementAutre);
  EXPECT_EQ(ligne(&banque), "A+");
  EXPECT_EQ(ligne(&recette), "A");
}

TEST_F(Champs, UnCodeTrouveSonCompte) {
  QWidget zone;
  Formulaire formulaire{zone};
  std::vector<std::string> evenements;
  ChampsCompteEcriture* champs = nullptr;
  const auto note = [&](const char* quoi) {
    evenements.push_back(std::string(quoi) + (champs->EnFrappe() ? "~" : "") +
                         (champs->Choisi() ? champs->Choisi()->court : "-"));
  };
  ChampsCompteEcriture compte(
      App(), [this] { return ComptesParNumero(App()); },
      [this] { return PoseCompte("6199", Depense, "NEUF", "Neuf"); });
  champs = &compte;
  QLineEdit libelle;
  compte.Declare(formulaire);
  formulaire.Champ(u"Libellé :"_s, libelle, "libelle");
  compte.SurChoix([&] { note("choix "); });
  compte.SurCode([&] {
    note("code ");
    libelle.setFocus();
  });
  MontreFenetre(zone);
  EditeurTexte& code = compte.Code();
  const auto suite = [&] { return std::exchange(evenements, {}); };
  using Suite = std::vector<std::string>;

  Tape(code, u"loy"_s);
  EXPECT_EQ(suite().back(), "choix ~6132");
  QTest::keyClick(&code, Qt::Key_Tab);
  EXPECT_EQ(suite(), (Suite{"choix 6132", "code 6132"}));
  EXPECT_TRUE(libelle.hasFocus());
  EXPECT_EQ(code.text(), u"LOYER"_s);
  EXPECT_EQ(compte.Liste().currentText(), u"6132 Loyer"_s);

  Va(code);
  QTest::keyClick(&code, Qt::Key_Tab);
  EXPECT_EQ(suite(), (Suite{"code 6132"})) << "the list is jumped over again, nothing was chosen anew";

  Tape(code, u"zzz"_s);
  EXPECT_EQ(suite().back(), "choix ~-") << "no match clears the selection";
  QTest::keyClick(&code, Qt::Key_Tab);
  EXPECT_TRUE(compte.Liste().hasFocus());
  QTest::keyClicks(&compte.Liste(), u"706 "_s);
  EXPECT_EQ(suite().back(), "choix 706");
  EXPECT_EQ(code.text(), u"HONOR"_s);

  // Left with the mouse for another field: found, without a jump.
  Tape(code, u"hon"_s);
  suite();
  libelle.setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(suite(), (Suite{"choix 706"}));

  QWheelEvent roulette({5, 5}, compte.Liste().mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                       Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&compte.Liste(), &roulette);
  EXPECT_EQ(compte.Choisi()->court, "706");

  test::Clique(Trouve<QPushButton>(zone, "nouveau"));
  EXPECT_EQ(suite(), (Suite{"choix 6199"})) << "the account that was made is the one that was missing";
  compte.Choisit(Long("512"));
  EXPECT_TRUE(suite().empty());
  compte.Recharge();
  EXPECT_EQ(compte.Choisi()->court, "512");
}

TEST_F(Champs, Libelles) {
  ASSERT_TRUE(App().Dit(EcritLibelles(App(), {"Loyer du cabinet", "Loyer du garage", "Honoraires"})));
  QWidget zone;
  Formulaire formulaire{zone};
  ChampLibelle libelle;
  QLineEdit autre;
  formulaire.Champ(u"Libellé :"_s, libelle, "libelle").Champ(u"Autre :"_s, autre, "autre");
  libelle.Pose("Mien");
  libelle.Charge(App());
  MontreFenetre(zone);
  EXPECT_EQ(libelle.Valeur(), "Mien");
  Tape(libelle, u"Loyer"_s);
  QTest::keyClick(&libelle, Qt::Key_Tab);
  EXPECT_EQ(libelle.Valeur(), "Loyer") << "nothing is added to what is typed";
  Tape(libelle, u"loy"_s);
  QTest::keyClick(&libelle, Qt::Key_Down);
  EXPECT_EQ(libelle.Valeur(), "Loyer du cabinet");
  QTest::keyClick(&libelle, Qt::Key_Down);
  EXPECT_EQ(libelle.Valeur(), "Loyer du garage");
  libelle.ProposeDernier("Hier"_w);
  libelle.ProposeDernier("Avant-hier"_w);
  EXPECT_EQ(libelle.count(), 4);
  EXPECT_EQ(libelle.itemText(0), u"Avant-hier"_s);
  EXPECT_EQ(libelle.Valeur(), "Loyer du garage");
  Tape(libelle, QString(90, u'é') + u"→"_s);
  EXPECT_EQ(libelle.Valeur(), std::string(80, '\xE9'));
}

TEST_F(Champs, AstuceAutreMonnaie) {
  App().TauxEuroCourant = 6.55957;
  QLineEdit champ;
  std::optional<f64> montant;
  bool euro = true;
  AstuceAutreMonnaie(
      champ, App(), [&] { return montant; }, [&] { return euro; });
  champ.show();
  const auto astuce = [&] {
    QHelpEvent demande(QEvent::ToolTip, {3, 3}, champ.mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(&champ, &demande);
    return QToolTip::text();
  };
  EXPECT_EQ(astuce(), QString()) << "a blank field";
  montant = 100;
  EXPECT_EQ(astuce(), u"655,96 F"_s);
  euro = false;
  EXPECT_EQ(astuce(), u"15,24 €"_s);
}

}  // namespace
}  // namespace fenlor::test
