
#include <QListWidget>
#include <QSignalSpy>
#include <set>

#include "core/btfiles.h"
#include "core/cles.h"
#include "forms/journal/champsecriture.h"
#include "forms/journal/vuedetest.h"
#include "journal/odlue.h"
#include "journal/virement.h"

namespace fenlor::test {
namespace {

const std::set<unsigned> toutes = {CmdAjouter,     CmdModifier,    CmdSupprimer, CmdPointer,   CmdRapprocher,
                                   CmdChangerDate, CmdRenumeroter, CmdMois,      CmdCriteres,  CmdBrouillard,
                                   CmdValidees,    CmdToutes,      CmdValider,   CmdComptable, CmdCopier,
                                   CmdCopierMenu,  CmdImprimer,    CmdApercu};

class VueCommandes : public VueDeTest {
 protected:
  static std::set<unsigned> Disponibles(const CEcritureView& vue) {
    std::set<unsigned> oui;
    for (const unsigned commande : toutes)
      if (vue.Disponible(commande)) oui.insert(commande);
    return oui;
  }
  static std::set<unsigned> Cochees(const CEcritureView& vue) {
    std::set<unsigned> oui;
    for (const unsigned commande : toutes)
      if (vue.Coche(commande)) oui.insert(commande);
    return oui;
  }
  /// The criteria form, with "non pointées" alone ticked.
  void MontreNonPointees(CEcritureView& vue) {
    robot.Attend("DialogCritere", [](QDialog& f) {
      Trouve<QCheckBox>(f, "toutes").setChecked(false);
      for (const char* nom : {"pointees", "nonPointees", "remises", "nonRemises", "rapprochees",
                              "nonRapprochees", "associees", "nonAssociees"})
        if (auto* marque = f.findChild<QCheckBox*>(QString::fromLatin1(nom)))
          marque->setChecked(std::string_view(nom) == "nonPointees");
      f.accept();
    });
    vue.Execute(CmdCriteres);
  }
};

TEST_F(VueCommandes, Disponibilite) {
  const u32 banque = Recette(10), caisse = Recette(20, 16, 3, "53");
  const auto vue = Ouvre();
  for (const unsigned commande : toutes)
    EXPECT_EQ(vue->Connait(commande), commande != CmdImprimer && commande != CmdApercu) << commande;
  EXPECT_FALSE(vue->Connait(1012) || vue->Disponible(1012));

  Choisit(*vue, {});
  const std::set<unsigned> toujours = {CmdAjouter,    CmdRenumeroter, CmdMois,   CmdCriteres,
                                       CmdBrouillard, CmdValidees,    CmdToutes, CmdComptable};
  EXPECT_EQ(Disponibles(*vue), toujours);
  EXPECT_EQ(Cochees(*vue), (std::set<unsigned>{CmdToutes}));

  QSignalSpy etat(vue.get(), &Vue::EtatChange);
  Choisit(*vue, {banque});
  EXPECT_GT(etat.size(), 0);
  std::set<unsigned> sur = toujours;
  sur.insert({CmdModifier, CmdSupprimer, CmdPointer, CmdRapprocher, CmdChangerDate, CmdValider, CmdCopier,
              CmdCopierMenu});
  EXPECT_EQ(Disponibles(*vue), sur);
  Choisit(*vue, {caisse});
  sur.erase(CmdRapprocher);
  EXPECT_EQ(Disponibles(*vue), sur) << "no bank line";
  PoseEtat("CA, 2, Toutes, 1");
  const auto caisses = OuvreTelle();
  ASSERT_EQ(caisses->GetEcrCount(), 1);
  EXPECT_FALSE(caisses->Disponible(CmdRapprocher)) << "the account of the window is no bank";
  Regle("Rapprochement", "Especes", "Oui");
  Choisit(*vue, {caisse});
  EXPECT_TRUE(vue->Disponible(CmdRapprocher));
  Regle("Rapprochement", "Especes", "Non");
  Choisit(*vue, {banque, caisse});
  sur.insert(CmdRapprocher);
  sur.erase(CmdModifier);
  EXPECT_EQ(Disponibles(*vue), sur) << "two rows";

  // Marks of the entry, as they are after another change.
  ASSERT_FALSE(PointeEcriture(App(), banque));
  ChangeLignes(banque, [](Line& ligne) { ligne.Rapprochee = ligne.Sens == 0; });
  Validee(banque);
  vue->RefreshJournal();
  Choisit(*vue, {banque});
  EXPECT_EQ(Cochees(*vue), (std::set<unsigned>{CmdToutes, CmdPointer, CmdRapprocher, CmdValider}));
  EXPECT_FALSE(vue->Disponible(CmdValider));
  EXPECT_TRUE(vue->Disponible(CmdModifier) && vue->Disponible(CmdSupprimer));

  unsigned apercus = 0, impressions = 0;
  vue->SurImpression([&](bool apercu) { ++(apercu ? apercus : impressions); });
  EXPECT_TRUE(vue->Disponible(CmdImprimer) && vue->Disponible(CmdApercu));
  vue->Execute(CmdApercu);
  EXPECT_EQ(apercus, 1u);
  EXPECT_EQ(impressions, 0u);
  const auto diverses = Ouvre(JournalOD);
  EXPECT_FALSE(diverses->Disponible(CmdComptable)) << "always on there";
}

TEST_F(VueCommandes, PointerRetireCeQuiNeRepondPlus) {
  const u32 a = Recette(1, 1), b = Recette(2, 2), c = Recette(4, 3), d = Recette(8, 4);
  const auto vue = Ouvre();
  Choisit(*vue, {a, c});
  vue->Execute(CmdPointer);
  EXPECT_THAT(Rangees(*vue), ElementsAre(a, b, c, d));
  EXPECT_THAT(Choisies(*vue), ElementsAre(a, c)) << "no row went: they stay selected";
  EXPECT_TRUE(Entete(a).Pointee && Entete(c).Pointee && !Entete(b).Pointee);
  EXPECT_NE(Rangee(*vue, 0).find("|P|"), std::string::npos) << "drawn anew";
  vue->Execute(CmdPointer);
  EXPECT_FALSE(Entete(a).Pointee);

  MontreNonPointees(*vue);
  EXPECT_EQ(Lu(*vue, "legende"), "Mars 2003   *** Liste partielle ***");
  Choisit(*vue, {b, c});
  const u64 synchros = Magasin().NbSynchros();
  vue->Execute(CmdPointer);
  EXPECT_EQ(Magasin().NbSynchros(), synchros + 1);
  EXPECT_THAT(Rangees(*vue), ElementsAre(a, d));
  EXPECT_EQ(Total(*vue, "totalDebitEuro"), "9,00 € ");
  EXPECT_EQ(Total(*vue, "selectionDebitEuro"), "8,00 € ");
  EXPECT_THAT(Choisies(*vue), ElementsAre(d)) << "the next one is ready";
  EXPECT_EQ(vue->focusWidget(), &vue->Liste());
  vue->Execute(CmdPointer);
  EXPECT_THAT(Choisies(*vue), ElementsAre(a));
  vue->Execute(CmdPointer);
  EXPECT_EQ(vue->GetEcrCount(), 0);
  EXPECT_EQ(Total(*vue, "totalDebitEuro"), "");
  EXPECT_EQ(vue->Liste().TexteVide().section(u'\n', 0, 0),
            u"Aucune écriture ne répond aux critères d'affichage."_s);
}

/// A long selection: "Annuler" stops, "Tous" asks no more; what is refused is told once, at the end.
TEST_F(VueCommandes, UneLongueSelectionSArreteOuNeDemandePlus) {
  std::vector<u32> e;
  for (unsigned jour = 1; jour <= 9; ++jour) e.push_back(Recette(jour, jour));
  const auto vue = Ouvre();
  const auto lance = [&](unsigned commande, std::vector<u32> lesquelles, std::deque<int> reponses) {
    Choisit(*vue, lesquelles);
    Boite.Oublie();
    Boite.Reponses = std::move(reponses);
    vue->Execute(commande);
    EXPECT_TRUE(Boite.Reponses.empty()) << commande << ": not asked";
    return Boite.Questions.size();
  };
  const auto validees = [&] {
    std::string lettres;
    for (const u32 m : e) lettres += Entete(m).Validee ? 'V' : '.';
    return lettres;
  };
  EXPECT_EQ(lance(CmdValider, e, {RepOui, RepNon, RepAnnuler}), 3u);
  EXPECT_EQ(Boite.Questions[0].style & 15, unsigned{BoutonsSerie});
  EXPECT_EQ(validees(), "V........");
  EXPECT_EQ(lance(CmdValider, {e[1], e[2], e[3]}, {RepNon, RepTous}), 2u);
  EXPECT_EQ(validees(), "V.VV.....");
  EXPECT_TRUE(Boite.Annulable && Boite.Ouvertures == 1 && Boite.Profondeur == 0) << "progress from then on";
  EXPECT_EQ(lance(CmdValider, {e[1]}, {RepOui}), 1u);
  EXPECT_EQ(Boite.Questions[0].style & 15, unsigned{BoutonsOuiNon}) << "one row";

  EXPECT_EQ(lance(CmdRapprocher, {e[4], e[5], e[6], e[7]}, {RepTous}), 1u);
  EXPECT_EQ(Lignes(e[7])[1].Rapprochee + Lignes(e[7])[0].Rapprochee, 1);
  EXPECT_EQ(lance(CmdRapprocher, {e[5], e[6], e[8]}, {RepTous, RepAnnuler}), 2u)
      << "the other question is asked";
  EXPECT_FALSE(vue->Coche(CmdRapprocher));

  // Plain deletions do not answer for an entry that is reconciled.
  lance(CmdSupprimer, e, {RepTous, RepNon, RepNon, RepNon});
  EXPECT_THAT(Boite.NumerosQuestions(), ElementsAre(3303u, 3302u, 3302u, 3302u)) << "of e[4], 5, 6, 8";
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(3431u)) << "four are validated: told once";
  EXPECT_THAT(Rangees(*vue), ElementsAre(e[0], e[1], e[2], e[3], e[5], e[6], e[8]));
  EXPECT_EQ(Boite.Questions[0].style & 15, unsigned{BoutonsSerie});
  Boite.ArretApres = 0;
  EXPECT_EQ(lance(CmdSupprimer, {e[5], e[6], e[8]}, {RepTous}), 1u);
  EXPECT_EQ(vue->GetEcrCount(), 7) << "stopped at the progress, before the first one went";
}

TEST_F(VueCommandes, ChangerLaDate) {
  const u32 a = Recette(1, 1), liee = Recette(2, 2), c = Recette(4, 31);
  ChangeLignes(liee, [](Line& ligne) { ligne.LienId = 7; });
  const auto vue = Ouvre();
  const auto repond = [&](int mois) {
    robot.Attend("DialogChangeMois", [mois](QDialog& f) {
      auto& liste = Trouve<QListWidget>(f, "mois");
      EXPECT_EQ(liste.currentRow(), 2);
      if (mois == 0) return f.reject();
      liste.setCurrentRow(mois - 1);
      f.accept();
    });
  };
  Choisit(*vue, {a, c});
  repond(0);
  vue->Execute(CmdChangerDate);
  EXPECT_EQ(vue->GetEcrCount(), 3);
  Choisit(*vue, {a, liee, c});
  repond(2);
  vue->Execute(CmdChangerDate);
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(3103u));
  EXPECT_THAT(Rangees(*vue), ElementsAre(liee));
  EXPECT_EQ(+Entete(c).Date, FaitDate(31, 2, 2003)) << "the day stays, real or not";
  EXPECT_EQ(vue->Totaux().debitEuro, 2);
  vue->Execute(CmdChangerDate);
  EXPECT_THAT(Boite.NumerosErreurs(), ElementsAre(3103u, 3103u)) << "a linked one first: nothing opens";

  Mois(*vue).Choisit(1);
  EXPECT_THAT(Rangees(*vue), ElementsAre(a, c));
  // The day that February lacks is not offered to the next entry.
  robot.Attend("DialogEcriture", [](QDialog& f) {
    EXPECT_EQ(Trouve<ChampJour>(f, "jour").currentText(), u"28"_s);
    f.reject();
  });
  vue->Execute(CmdAjouter);
}

TEST_F(VueCommandes, AjouterEtModifier) {
  auto vue = Ouvre();
  const auto attend = [&](const QString& titre, const QString& jour) {
    robot.Attend("DialogEcriture", [titre, jour](QDialog& f) {
      EXPECT_EQ(f.windowTitle(), titre);
      EXPECT_EQ(Trouve<ChampJour>(f, "jour").currentText(), jour);
      f.reject();
    });
  };
  const QString ajout = u"Ecriture de RECETTE : ajout"_s;
  attend(ajout, u"15"_s);  // today
  vue->Execute(CmdAjouter);
  Mois(*vue).Choisit(5);
  attend(ajout, u"1"_s);
  vue->Execute(CmdAjouter);
  EXPECT_EQ(vue->focusWidget(), &vue->Liste());

  const u32 a = Recette(1, 3, 6), b = Recette(2, 20, 6);
  vue->Actualise();
  attend(ajout, u"20"_s);  // that of the last row
  vue->SelectEcrItem(0);
  QTest::mouseDClick(vue->Liste().viewport(), Qt::LeftButton, {},
                     QPoint(50, vue->Liste().viewport()->height() - 4));
  for (const bool souris : {true, false}) {
    vue->SelectEcrItem(0);
    robot.Attend("DialogEcriture", [](QDialog& f) {
      EXPECT_EQ(Trouve<ChampJour>(f, "jour").currentText(), u"3"_s);
      Trouve<QPushButton>(f, "suivant").click();
      EXPECT_EQ(Trouve<ChampJour>(f, "jour").currentText(), u"20"_s);
      f.reject();
    });
    if (souris)
      QTest::mouseDClick(vue->Liste().viewport(), Qt::LeftButton, {},
                         vue->Liste().visualRect(vue->Liste().Modele().index(0, 2)).center());
    else
      QTest::keyClick(&vue->Liste(), Qt::Key_Return);
    EXPECT_THAT(Choisies(*vue), ElementsAre(b)) << "the list follows the form";
  }
  Choisit(*vue, {a, b});
  QTest::keyClick(&vue->Liste(), Qt::Key_Return);  // several: nothing opens
}

TEST_F(VueCommandes, CeQueLeFormulaireEnregistreEstChoisi) {
  Recette(3, 31);
  const u32 cachee = Recette(4, 4);
  ChangeLignes(cachee, [](Line& ligne) { ligne.Ligne = 41; });
  Validee(cachee);
  const auto vue = Ouvre(JournalRecettes, "Brouillard");
  robot.Attend("DialogEcriture", [](QDialog& f) {
    auto& jour = Trouve<ChampJour>(f, "jour");
    jour.Pose(FaitDate(2, 3, 2003));
    test::Tape(Trouve<QLineEdit>(f, "code"), u"HONOR"_s);
    test::Tape(Trouve<QLineEdit>(f, "ttc"), u"12,5"_s);
    Trouve<QPushButton>(f, "ok").click();
    f.reject();
  });
  vue->Execute(CmdAjouter);
  ASSERT_EQ(vue->GetEcrCount(), 2);
  EXPECT_EQ(vue->GetEcrSel(), 0) << "it stands by its date";
  EXPECT_EQ(Rangee(*vue, 0).substr(0, 5), "42|2|") << "the number behind the highest, shown or not";
  EXPECT_EQ(Total(*vue, "totalDebitEuro"), "15,50 € ");
  EXPECT_EQ(Total(*vue, "selectionDebitEuro"), "12,50 € ");
}

TEST_F(VueCommandes, LeVoisinEstCeluiDAvantLEnregistrement) {
  const u32 a = Recette(1, 1), b = Recette(2, 2), c = Recette(3, 3);
  PoseEtat("< Tous >, 2, Toutes, 1");
  CEcritureView vue(Ui, JournalRecettes);
  vue.Charge();
  vue.SelectEcrItem(0);
  robot.Attend("DialogEcriture", [&](QDialog& f) {
    const auto ttc = [&f] { return Trouve<QLineEdit>(f, "ttc").text(); };
    Trouve<ChampJour>(f, "jour").Pose(FaitDate(30, 3, 2003));
    Trouve<QPushButton>(f, "suivant").click();
    EXPECT_THAT(Rangees(vue), ElementsAre(b, c, a));
    EXPECT_EQ(ttc(), u"2,00"_s) << "the saved one went to the end, the one behind it is next";
    EXPECT_EQ(vue.GetEcrSel(), 0);
    EXPECT_FALSE(Trouve<QPushButton>(f, "precedent").isEnabled());
    Trouve<QPushButton>(f, "suivant").click();
    Trouve<QPushButton>(f, "suivant").click();
    EXPECT_EQ(ttc(), u"1,00"_s);
    Trouve<QPushButton>(f, "precedent").click();
    f.reject();
  });
  vue.Execute(CmdModifier);
  EXPECT_THAT(Choisies(vue), ElementsAre(c)) << "the one shown last, not the one saved last";
}

TEST_F(VueCommandes, AjouterUneOperationDiverse) {
  const auto vue = Ouvre(JournalOD);
  std::vector<QString> titres;
  const auto attend = [&] {
    robot.Attend("DialogMouvement", [&titres](QDialog& f) {
      titres.push_back(f.windowTitle());
      f.reject();
    });
  };
  attend();
  vue->Execute(CmdAjouter);
  ASSERT_NE(EnregistreLesLignes({{"512", {}, 50, 0}, {"531", {}, 0, 50}}), 0u);
  const u32 derniere = EnregistreLesLignes({{"512", {}, 20, 0}, {"531", {}, 0, 20}});
  vue->RefreshJournal();
  vue->SelectEcrItem(0);
  attend();
  vue->Execute(CmdAjouter);
  EXPECT_THAT(Choisies(*vue), ElementsAre(derniere)) << "its neighbours are those of the form";
  attend();
  vue->Execute(CmdModifier);
  ASSERT_EQ(titres.size(), 3u);
  EXPECT_NE(titres[0], titres[1]) << "with rows the last one opens";
  EXPECT_EQ(titres[1], titres[2]);
}

TEST_F(VueCommandes, NouvelleOperationDepuisLaDerniere) {
  const u32 derniere = EnregistreLesLignes({{"512", {}, 20, 0}, {"531", {}, 0, 20}});
  ASSERT_NE(derniere, 0u);
  const auto vue = Ouvre(JournalOD);
  for (const bool change : {false, true}) {
    robot.Attend("DialogMouvement", [change](QDialog& f) {
      if (change) Trouve<QComboBox>(f, "libelle").setEditText(u"Autre mot"_s);
      test::Clique(Trouve<QPushButton>(f, "nouvelle"));
    });
    robot.Attend("DialogMouvement", [](QDialog& f) {
      EXPECT_EQ(f.windowTitle(), u"Ecriture d'OPERATION DIVERSES : ajout"_s);
      EXPECT_FALSE(f.findChild<QPushButton*>(u"nouvelle"_s));
      f.reject();
    });
    vue->Execute(CmdAjouter);
    ODLue od;
    ASSERT_FALSE(LitOD(App(), derniere, od));
    EXPECT_EQ(od.saisie.libelle == "Autre mot", change) << "what was changed is saved before";
  }
}

TEST_F(VueCommandes, SansCompteDeTresorerie) {
  CPlan plan(App(), App().PathExercice);
  ASSERT_TRUE(plan.OpenFile());
  for (const CompteOffert& compte : ComptesParCode(App(), Tresorerie))
    ASSERT_TRUE(plan.Delete(compte.position));
  plan.CloseFile();
  const auto vue = Ouvre();
  vue->Execute(CmdAjouter);
  EXPECT_THAT(Boite.NumerosErreurs(), IsEmpty());
  EXPECT_TRUE(vue->Liste().TexteVide().contains(u"compte de trésorerie"_s));
  const auto diverses = Ouvre(JournalOD);
  EXPECT_FALSE(diverses->Liste().TexteVide().contains(u"trésorerie"_s));
}

TEST_F(VueCommandes, UnAutreMois) {
  Recette(10, 2, 7);
  const auto vue = Ouvre();
  for (const bool ok : {false, true}) {
    robot.Attend("DialogMonth", [ok](QDialog& f) {
      auto& liste = Trouve<QListWidget>(f, "mois");
      EXPECT_EQ(liste.currentItem()->text(), u"2003  Mars"_s);
      liste.setCurrentRow(6);
      ok ? f.accept() : f.reject();
    });
    vue->Execute(CmdMois);
    EXPECT_EQ(vue->GetEcrCount(), ok ? 1 : 0);
    EXPECT_EQ(Mois(*vue).Courant(), ok ? 6 : 2);
  }
}

TEST_F(VueCommandes, CopieEtMenu) {
  const u32 a = Recette(1, 1), b = Recette(2, 2);
  const auto vue = Ouvre();
  Choisit(*vue, {a, b});
  vue->Execute(CmdCopierMenu);
  EXPECT_EQ(QApplication::clipboard()->text(),
            u"Ligne\tDate\tLibellé\tTrésorerie\tMontant €\tP\tB\tR\tV\tRub\tCompte\tDésignation\n"
            "1\t01/03/2003\tEssai\tBQ\t1,00\t\t\t\t\t\t706\tHonoraires\n"
            "2\t02/03/2003\tEssai\tBQ\t2,00\t\t\t\t\t\t706\tHonoraires"_s);
  QSignalSpy menu(vue.get(), &Vue::MenuDemande);
  Q_EMIT vue->Liste().customContextMenuRequested({5, 5});
  ASSERT_EQ(menu.size(), 1);
  for (const unsigned commande : menu[0][1].value<std::vector<unsigned>>())
    EXPECT_TRUE(commande == 0 || commande == 9002 || vue->Connait(commande)) << commande;
}

}  // namespace
}  // namespace fenlor::test
