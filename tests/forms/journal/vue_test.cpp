#include <QHeaderView>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QSignalSpy>

#include "core/cles.h"
#include "forms/journal/vuedetest.h"

namespace fenlor::test {
namespace {

class VueJournal : public VueDeTest {};

TEST_F(VueJournal, UneLigneParEcriture) {
  const u32 pointee = Recette(119.6, 3);
  ASSERT_FALSE(PointeEcriture(App(), pointee));
  ASSERT_NE(Enregistre(Multiple(JournalRecettes, "7065", {{"512", 70}, {"514", 30}}, FaitDate(4, 3, 2003))),
            0u);
  Recette(7, 2, 4);
  Depense(8);
  const auto vue = Ouvre();
  EXPECT_EQ(vue->GetEcrCount(), 2);
  EXPECT_EQ(Titres(*vue), "Ligne|Date|Libellé|Trésorerie|Montant €|P|B|R|V|Rub|Compte|Désignation");
  EXPECT_EQ(Rangee(*vue, 0), "1|3|Essai|BQ|119,60|P|||||706|Honoraires");
  EXPECT_EQ(Rangee(*vue, 1), "2|4|Essai|***|100,00||||||7065|Compte 7065");
  EXPECT_EQ(vue->Liste().Modele().index(0, 5).data(Qt::AccessibleTextRole), u"Pointée"_s);
  EXPECT_EQ(vue->windowTitle(), u"Ecritures de recettes - Toutes "_s);
  EXPECT_EQ(Lu(*vue, "entete"), "Recettes du mois de Mars");
  EXPECT_EQ(Lu(*vue, "legende"), "Mars 2003");
  EXPECT_EQ(Total(*vue, "totalDebitEuro"), "219,60 € ");
  EXPECT_EQ(Total(*vue, "totalCreditEuro"), "") << "one amount a currency";
  EXPECT_THAT(Choisies(*vue), ElementsAre(vue->GetEcrId(1))) << "the newest row";
  EXPECT_EQ(Total(*vue, "selectionDebitEuro"), "100,00 € ");

  // A treasury account: what stands on it alone, and every side counts alike.
  auto& combo = Trouve<QComboBox>(*vue, "compte");
  EXPECT_EQ(combo.itemText(combo.count() - 1), u"< Tous >"_s);
  combo.setCurrentIndex(combo.findText(u"CCP"_s));
  Q_EMIT combo.activated(combo.currentIndex());
  EXPECT_EQ(Rangee(*vue, 0), "2|4|Essai|***|30,00|D 30,00||||||7065|Compte 7065");
  EXPECT_EQ(vue->GetEcrCount(), 1);
  EXPECT_EQ(vue->Totaux().debitEuro, 30);
  EXPECT_EQ(vue->Totaux().creditEuro, 30);
  EXPECT_EQ(EtatEcrit(), "CCP, 2, Toutes, 1");
  EXPECT_TRUE(vue->Liste().hasFocus());
}

TEST_F(VueJournal, JournalComptable) {
  Recette(119.6, 3);
  const u32 od = EnregistreLesLignes({{"512", {}, 50, 0}, {"531", "Retrait", 0, 30}, {"514", {}, 0, 20}});
  ASSERT_NE(od, 0u);
  const auto recettes = Ouvre(JournalRecettes, "Brouillard", true);
  EXPECT_EQ(Titres(*recettes), "Ligne|Date|Libellé|Débit €|Crédit €|P|B|R|V|Rub|Compte|Désignation");
  const auto diverses = Ouvre(JournalOD, "Brouillard", false);
  EXPECT_EQ(Titres(*diverses), Titres(*recettes)) << "always one line for each line";
  ASSERT_EQ(diverses->GetEcrCount(), 1);
  EXPECT_EQ(Rangee(*diverses, 0),
            "1|15|Essai d'OD/Retrait/Essai d'OD|50,00|/30,00/20,00||||||512/531/514|Banque/Caisse/Postal");
  EXPECT_FALSE(Trouve<QComboBox>(*diverses, "compte").isVisible());
  EXPECT_EQ(diverses->windowTitle(), u"Ecritures d'opérations diverses - Brouillard "_s);
  EXPECT_EQ(Lu(*diverses, "entete"), "Opérations diverses du mois de Mars");
  EXPECT_EQ(diverses->PageAide(), u"FenetreOperationsDiverses"_s);

  recettes->Execute(1248);
  EXPECT_EQ(recettes->Liste().Comptable(), false);
  EXPECT_FALSE(recettes->Coche(1248));
  EXPECT_TRUE(diverses->Coche(1248));
}

TEST_F(VueJournal, LesTotauxSontCroises) {
  // An entry out of balance tells which figure stands where.
  const u32 recette = Recette(100);
  ChangeLignes(recette, [](Line& ligne) {
    if (ligne.Sens) ligne.MontantEuro = 40;
  });
  App().AfficherDouble = true;
  const auto vue = Ouvre(JournalRecettes, "Toutes", true);
  EXPECT_EQ(Total(*vue, "totalDebitEuro"), "40,00 € ") << "the credits, under the debits";
  EXPECT_EQ(Total(*vue, "totalCreditEuro"), "100,00 € ");
  EXPECT_EQ(Total(*vue, "totalDebitFranc"), "655,96 F ");
  EXPECT_EQ(Total(*vue, "selectionDebitEuro"), "40,00 € ");
  vue->Execute(1221);
  EXPECT_EQ(Total(*vue, "totalDebitEuro"), "") << "an empty list";
}

struct Etat {
  const char* ecrit;
  const char* compte;
  int mois;
  const char* mode;
  bool comptable;
  const char* relu;  ///< as it is written when the window closes
};

TEST_F(VueJournal, EtatDeLaFenetre) {
  for (const Etat& etat : {
           Etat{"", "< Tous >", 2, "Brouillard", true, "< Tous >, 2, Brouillard, 0"},  // the month of today
           {"CCP, 5, Validées, 1", "CCP", 5, "Validées", false, "CCP, 5, Validées, 1"},
           {"disparu, -4, bof, x", "< Tous >", 0, "Brouillard", true, "< Tous >, 0, Brouillard, 0"},
           {"512,99999999999,Toutes,7,8,9", "< Tous >", 11, "Toutes", false, "< Tous >, 11, Toutes, 1"},
           {",,,", "< Tous >", 0, "Brouillard", true, "< Tous >, 0, Brouillard, 0"},
       }) {
    PoseEtat(*DepuisUtf8(etat.ecrit));
    {
      const auto vue = OuvreTelle();
      EXPECT_EQ(Trouve<QComboBox>(*vue, "compte").currentText(), QString::fromUtf8(etat.compte))
          << etat.ecrit;
      EXPECT_EQ(Mois(*vue).Courant(), etat.mois) << etat.ecrit;
      EXPECT_EQ(vue->windowTitle(), u"Ecritures de recettes - %1 "_s.arg(QString::fromUtf8(etat.mode)));
      EXPECT_EQ(vue->JournalComptable(), etat.comptable) << etat.ecrit;
    }
    EXPECT_EQ(EtatEcrit(), *DepuisUtf8(etat.relu)) << etat.ecrit;
  }
  {
    const auto vue = Ouvre(JournalOD, "Toutes", true, 4);
    vue->Execute(1221);
  }
  EXPECT_EQ(EtatEcrit(JournalOD), ", 3, Validées"_w);
  {
    const auto vue = Ouvre(JournalOD, "Toutes", true, 4);
    EXPECT_TRUE(vue->PeutFermer());
    EXPECT_EQ(EtatEcrit(JournalOD), ", 3, Toutes") << "noted before the exercice can change";
    App().NomExercice.clear();
  }
  App().NomExercice = "2003";
  {
    PoseEtat(", 3, Validées"_w, JournalOD);
    Magasin().Reglages().Ecrit("2003", "Temoin", "1");
    const std::string avant = test::LitFichier(Dossier() + "/fenlor.ini");
    OuvreTelle(JournalOD);
    EXPECT_EQ(test::LitFichier(Dossier() + "/fenlor.ini"), avant);
  }
}

TEST_F(VueJournal, ColonnesRangees) {
  Recette(100);
  auto vue = Ouvre();
  const auto colonne = [&](const char16_t* titre) {
    for (int i = 0; i < vue->Liste().Modele().columnCount(); ++i)
      if (vue->Liste().Modele().Titres()[static_cast<std::size_t>(i)].texte == QString::fromUtf16(titre))
        return i;
    return -1;
  };
  QHeaderView& titres = *vue->Liste().header();
  titres.moveSection(colonne(u"Compte"), 0);
  titres.resizeSection(colonne(u"Libellé"), 123);
  std::unique_ptr<QMenu> menu(vue->Liste().MenuColonnes());
  for (QAction* action : menu->actions())
    if (action->text() == u"Montant €"_s) action->trigger();
  menu.reset();
  EXPECT_FALSE(vue->Liste().ALaColonne(ChampJournal::MontantEuro));
  vue.reset();
  vue = OuvreTelle();
  for (const bool comptable : {false, true}) {  // other columns between them
    if (comptable) vue->Execute(CmdComptable);
    QHeaderView& anciens = *vue->Liste().header();
    EXPECT_EQ(anciens.visualIndex(colonne(u"Compte")), 0);
    EXPECT_EQ(vue->Liste().columnWidth(colonne(u"Libellé")), 123);
    EXPECT_TRUE(comptable || vue->Liste().isColumnHidden(colonne(u"Montant €")));
  }
  vue->Execute(CmdComptable);
  EXPECT_TRUE(vue->Liste().isColumnHidden(colonne(u"Montant €")));
}

TEST_F(VueJournal, LeClavierVaALaListe) {
  QMainWindow fenetre;
  auto* zone = new QMdiArea;
  fenetre.setCentralWidget(zone);
  fenetre.show();
  fenetre.activateWindow();
  for (const i16 journal : {JournalRecettes, JournalDepenses, JournalOD}) {
    auto* vue = new CEcritureView(Ui, journal);
    QMdiSubWindow* cadre = zone->addSubWindow(vue);
    vue->Charge();
    cadre->show();
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), &vue->Liste()) << journal;
    cadre->showMinimized();
    cadre->showNormal();
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), &vue->Liste()) << journal;
  }
}

TEST_F(VueJournal, RechargementGardeLaPlace) {
  std::vector<u32> ecritures;
  for (unsigned jour = 1; jour <= 30; ++jour) ecritures.push_back(Recette(jour, jour));
  const auto vue = Ouvre();
  EXPECT_EQ(vue->GetEcrSel(), 29);
  vue->SelectEcrItem(12);
  vue->Liste().PoseHaut(10);
  vue->RefreshJournal();
  EXPECT_EQ(vue->GetEcrSel(), 12);
  EXPECT_EQ(vue->Liste().Haut(), 10);
  vue->Execute(1248);
  EXPECT_EQ(vue->GetEcrSel(), 12) << "kept over another mode";
  EXPECT_EQ(vue->Liste().Haut(), 10);
  vue->SelectPrev();
  EXPECT_THAT(Choisies(*vue), ElementsAre(ecritures[11]));
  vue->SelectNext();
  vue->SelectNext();
  EXPECT_EQ(vue->GetEcrSel(), 13);
  vue->SelectEcrItem(29);
  vue->SelectNext();
  EXPECT_EQ(vue->GetEcrSel(), 29);
  ASSERT_TRUE(Magasin().RemoveEcrSimple(App().PathExercice, ecritures[0]));
  vue->Actualise();
  EXPECT_THAT(Choisies(*vue), ElementsAre(ecritures[29])) << "a row higher";
  ASSERT_TRUE(Magasin().RemoveEcrSimple(App().PathExercice, ecritures[29]));
  vue->Actualise();
  EXPECT_EQ(vue->GetEcrSel(), 27) << "the last row where the entry and the index are gone";
  // Another display: what was selected stays so as far as it is shown.
  for (const u32 validee : {ecritures[1], ecritures[2], ecritures[5]}) Validee(validee);
  Choisit(*vue, {ecritures[2], ecritures[4], ecritures[7], ecritures[8]});
  vue->Execute(1220);
  EXPECT_THAT(Choisies(*vue), ElementsAre(ecritures[4], ecritures[7], ecritures[8]));
  vue->Execute(1222);
  EXPECT_THAT(Choisies(*vue), ElementsAre(ecritures[4], ecritures[7], ecritures[8]));
  EXPECT_EQ(Total(*vue, "selectionDebitEuro"), "22,00 € ");
  vue->SelectEcrItem(0);
  vue->SelectPrev();
  EXPECT_EQ(vue->GetEcrSel(), 0);
  EXPECT_EQ(vue->GetEcrId(-1), 0u);
  EXPECT_EQ(vue->GetEcrId(99), 0u);
}

TEST_F(VueJournal, TotauxDeLaSelection) {
  std::vector<u32> ecritures;
  f64 somme = 0;
  for (int i = 1; i <= 40; ++i) {
    ecritures.push_back(Recette(i + 0.1));
    somme += i + 0.1;
  }
  const auto vue = Ouvre();
  CEcrList& liste = vue->Liste();
  const auto controle = [&](f64 attendu) {
    TotauxListe relu;
    ASSERT_FALSE(TotauxEntrees(App(), vue->Demande(), Choisies(*vue), relu));
    EXPECT_EQ(vue->TotauxChoisis().debitEuro, relu.debitEuro);
    EXPECT_EQ(vue->TotauxChoisis().creditFranc, relu.creditFranc);
    EXPECT_NEAR(relu.creditEuro, attendu, 1e-6);
  };
  liste.setFocus();
  vue->SelectEcrItem(0);
  controle(1.1);
  for (int i = 0; i < 9; ++i) QTest::keyClick(&liste, Qt::Key_Down, Qt::ShiftModifier);
  controle(56);
  QTest::keyClick(&liste, Qt::Key_Up, Qt::ShiftModifier);
  controle(45.9);
  QTest::keyClick(&liste, Qt::Key_A, Qt::ControlModifier);
  controle(somme);
  QTest::mouseClick(liste.viewport(), Qt::LeftButton, Qt::ControlModifier,
                    liste.visualRect(liste.Modele().index(3, 2)).center());
  controle(somme - 4.1);
  QTest::keyClick(&liste, Qt::Key_Home);
  controle(1.1);
  QTest::keyClick(&liste, Qt::Key_End);
  controle(40.1);
  QTest::keyClicks(&liste, u"E"_s);
  EXPECT_EQ(vue->GetEcrSel(), 39) << "letters look for nothing";
  Choisit(*vue, {});
  EXPECT_EQ(Total(*vue, "selectionDebitEuro"), "");
}

TEST_F(VueJournal, DixMilleLignesNeSontPasLues) {
  CEcrList liste(Ui);
  unsigned lectures = 0;
  liste.PoseLecture([&](u32 mouvement, EntreeJournal& entree) {
    ++lectures;
    entree.rangees.resize(mouvement % 4 + 1);
    return mouvement % 5 != 0;  // one that cannot be read is an empty row
  });
  std::vector<EntreeListe> entrees;
  for (u32 i = 1; i <= 10000; ++i) entrees.push_back({i, i % 4 + 1});
  liste.resize(800, 400);
  liste.show();
  liste.Recharge(entrees, {false, true}, true);
  liste.grab();
  liste.selectAll();
  EXPECT_EQ(liste.NbChoisies(), 10000);
  EXPECT_GT(lectures, 4u);
  EXPECT_LT(lectures, 120u);
}

TEST_F(VueJournal, BarreDesMois) {
  Recette(5, 10, 2);
  const auto vue = Ouvre();
  CMonth& mois = Mois(*vue);
  ASSERT_EQ(mois.Cellules().size(), 12u);
  EXPECT_EQ(mois.Cellules()[1].premier, FaitDate(1, 2, 2003));
  EXPECT_EQ(mois.Cellules()[1].dernier, FaitDate(28, 2, 2003));
  const auto point = [&](std::size_t indice) {
    return QPoint(mois.Cellules()[indice].gauche + mois.Cellules()[indice].largeur / 2, 15);
  };
  QSignalSpy change(&mois, &CMonth::MoisChange);
  QTest::mouseClick(&mois, Qt::LeftButton, {}, point(1));
  ASSERT_EQ(change.size(), 1);
  EXPECT_EQ(change[0][0].toInt(), 1);
  EXPECT_EQ(vue->GetEcrCount(), 1);
  EXPECT_EQ(Lu(*vue, "legende"), "Février 2003");
  QTest::mousePress(&mois, Qt::LeftButton, {}, point(4));
  QTest::mouseRelease(&mois, Qt::LeftButton, {}, point(3));
  EXPECT_EQ(mois.Courant(), 3) << "the press decides nothing";
  QTest::mouseClick(&mois, Qt::LeftButton, {}, QPoint(4, 15));
  EXPECT_EQ(mois.Courant(), 3);

  test::Va(mois);
  QTest::keyClick(&mois, Qt::Key_End);
  EXPECT_EQ(mois.Courant(), 11);
  QTest::keyClick(&mois, Qt::Key_Right);
  EXPECT_EQ(mois.Courant(), 11);
  QTest::keyClick(&mois, Qt::Key_Left);
  EXPECT_EQ(mois.accessibleName(), u"Novembre 2003"_s);
  vue->Liste().setFocus();
  QTest::keyClick(&vue->Liste(), Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(mois.Courant(), 9);
  QTest::keyClick(&vue->Liste(), Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(mois.Courant(), 10);
  EXPECT_EQ(vue->Demande().mois, FaitDate(1, 11, 2003));
  EXPECT_EQ(change.size(), 6);
  // The exercice became shorter.
  mois.PoseMois({FaitDate(1, 1, 2003), FaitDate(1, 2, 2003)});
  EXPECT_EQ(mois.Courant(), 0);
  mois.PoseMois({});
  EXPECT_EQ(mois.Courant(), -1);
}

TEST_F(VueJournal, LesTraitsSontEntiersADeuxCentsPourCent) {
  Recette(1);
  Recette(2);
  const auto vue = Ouvre();
  CEcrList& liste = vue->Liste();
  QImage image(liste.viewport()->size() * 2, QImage::Format_RGB32);
  image.setDevicePixelRatio(2);
  liste.viewport()->render(&image);
  const QRect rangees = liste.visualRect(liste.Modele().index(0, 0));  // the other one has the focus
  const int x = 2 * (liste.columnViewportPosition(0) + liste.columnWidth(0)) - 1;
  int manquent = 0;
  for (int y = 2 * rangees.top(); y < 2 * (rangees.bottom() + 1); ++y)
    manquent += image.pixelColor(x, y) != Dessin.CouleurBordure;
  EXPECT_EQ(manquent, 0);
}

TEST_F(VueJournal, MoisDUnExerciceACheval) {
  ASSERT_TRUE(CreeExercice("2005", true, false, FaitDate(15, 11, 2004), FaitDate(10, 2, 2005)));
  Regle("2005", Texte(CleJournal[0]), "< Tous >, 2, Toutes, 0");
  const auto vue = OuvreTelle();
  ASSERT_EQ(Mois(*vue).Cellules().size(), 4u);
  EXPECT_EQ(Mois(*vue).Cellules()[0].premier, FaitDate(1, 11, 2004));
  EXPECT_EQ(Lu(*vue, "legende"), "Janvier 2005");
}

TEST_F(VueJournal, TextesDeLaListeVide) {
  const auto texte = [](CEcritureView& vue) { return vue.Liste().TexteVide().toStdString(); };
  const auto vue = Ouvre(JournalRecettes, "Brouillard");
  EXPECT_EQ(vue->GetEcrSel(), -1);
  EXPECT_THAT(texte(*vue), testing::StartsWith("Aucune écriture en brouillard ce mois-ci.\n"));
  vue->Execute(1222);
  EXPECT_THAT(texte(*vue), testing::StartsWith("Aucune écriture ce mois-ci.\n"));
  Regle("2003", Texte(CleCloture), "31/12/2003");
  vue->RefreshJournal();
  EXPECT_EQ(texte(*vue), "Aucune écriture ce mois-ci.");
}

}  // namespace
}  // namespace fenlor::test
