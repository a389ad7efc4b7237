
#include <QListWidget>

#include "forms/journal/formeecriture.h"
#include "master/libelles.h"

namespace fenlor::test {
namespace {

// ------------------------------------------------------------------ One new entry

TEST_F(FormeEcriture, NouvelleRecette) {
  auto f = Montre(Ouverture(JournalRecettes));
  VerifieFormulaire(*f);
  EXPECT_EQ(f->windowTitle(), u"Ecriture de RECETTE : ajout"_s);
  EXPECT_EQ(Bouton(*f, u"&Enregistrer"_s).objectName() + Bouton(*f, u"&Fermer"_s).objectName(),
            u"okannuler"_s);
  EXPECT_FALSE(f->findChild<QPushButton*>(u"precedent"_s));
  EXPECT_FALSE(Permis(*f, "ttc") || Permis(*f, "professionnelle") || Permis(*f, "franc"));
  EXPECT_TRUE(Coche(*f, "euro") && Coche(*f, "cheque"));
  EXPECT_THAT(OrdreTab(*f), ElementsAre("jour", "code", "compte", "libelle", "tresorerie", "cheque",
                                        "multiple", "euro", "ok", "annuler", "aide"))
      << "of two radio buttons the marked one";
  Tape(*Champ<QLineEdit>(*f, "code"), u"7065"_s);
  EXPECT_TRUE(Permis(*f, "ttc"));
  EXPECT_FALSE(Permis(*f, "professionnelle")) << "receipts";
  EXPECT_EQ(Lu(*f, "libelle"), QString()) << "the code may go on";
  Tape(*Champ<QLineEdit>(*f, "ttc"), u"100"_s);
  EXPECT_EQ(Montants(*f), u"100 60,00 40,00 60,00  "_s);
  EXPECT_EQ(Lu(*f, "libelle"), u"Compte 7065"_s);
  Tape(*Champ<QLineEdit>(*f, "code"), u"7070"_s);
  Va(*Champ(*f, "ttc"));
  EXPECT_EQ(Montants(*f), u"100,00 100,00  83,61 16,39 19,60"_s) << "another account, the chain again";
  EXPECT_EQ(Lu(*f, "libelle"), u"Compte 7070"_s) << "nobody typed the label";
  Tape(*Champ<QLineEdit>(*f, "code"), u"zz"_s);
  EXPECT_FALSE(Permis(*f, "ttc")) << "no such account";
  EXPECT_EQ(Lu(*f, "compte") + Lu(*f, "ht"), QString());
}

TEST_F(FormeEcriture, PartProfessionnelleDUneDepense) {
  auto f = Remplie(JournalDepenses, u"6063"_s, u"119,60"_s);
  EXPECT_EQ(f->windowTitle(), u"Ecriture de DEPENSE : ajout"_s);
  EXPECT_FALSE(Permis(*f, "remise"));
  EXPECT_EQ(Montants(*f), u"119,60 119,60  100,00 19,60 19,60"_s);
  Tape(*Champ<QLineEdit>(*f, "professionnelle"), u"59,8"_s);
  EXPECT_EQ(Montants(*f), u"119,60 59,8 59,80 50,00 9,80 19,60"_s);
  Tape(*Champ<QLineEdit>(*f, "professionnelle"), u"200"_s);
  EXPECT_EQ(Montants(*f), u"119,60 200  100,00 19,60 19,60"_s) << "typed above T.T.C.";
  Va(*Champ(*f, "libelle"));
  EXPECT_EQ(Montants(*f), u"119,60 119,60  100,00 19,60 19,60"_s) << "brought down as it is left";
}

TEST_F(FormeEcriture, UnMotDuNomTrouveLeCompteEtLeLibelleRappelleLaDerniereFois) {
  ASSERT_TRUE(PoseCompte("7081", Recette, "IND", "Indemnités de garde"_w));
  for (const auto& [libelle, montant] :
       {std::pair{"Visite du soir", 33.0}, {"Visite du soir", 44.0}, {"Soirée", 5.0}}) {
    SaisieEcriture ecriture = Ecriture(JournalRecettes, "7081", montant, "514");
    ecriture.libelle = DepuisUtf8(libelle).value();
    ASSERT_NE(Enregistre(ecriture), 0u);
  }
  auto f = Montre(Ouverture(JournalRecettes));
  Tape(*Champ<QLineEdit>(*f, "code"), u"GARDE"_s);
  const auto propositions = [&f] {
    for (auto* liste : f->findChildren<QListWidget*>(u"propositions"_s))
      if (liste->isVisible()) return liste->count();
    return 0;
  };
  ASSERT_EQ(propositions(), 1);
  EXPECT_EQ(Lu(*f, "compte"), QString()) << "nothing is taken unasked";
  QTest::keyClick(f->focusWidget(), Qt::Key_Down);
  EXPECT_EQ(Lu(*f, "compte"), u"7081 Indemnités de garde"_s);
  QTest::keyClick(f->focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Focus(*f), "libelle");
  EXPECT_EQ(propositions(), 0);
  QTest::keyClicks(f->focusWidget(), u"soir"_s);
  EXPECT_EQ(propositions(), 2);
  QTest::keyClick(f->focusWidget(), Qt::Key_Escape);
  EXPECT_TRUE(f->isVisible()) << "Escape closes the rows first";
  QTest::keyClicks(f->focusWidget(), u"e"_s);
  QTest::keyClick(f->focusWidget(), Qt::Key_Backspace);
  QTest::keyClick(f->focusWidget(), Qt::Key_Down);
  QTest::keyClick(f->focusWidget(), Qt::Key_Down);
  EXPECT_EQ(Lu(*f, "libelle"), u"Visite du soir"_s) << "used twice, but it does not begin so";
  EXPECT_THAT(Lu(*f, "offre").toStdString(), ::testing::HasSubstr("44,00 €, CCP"));
  EXPECT_EQ(Lu(*f, "ttc"), QString());
  QTest::keyClick(f->focusWidget(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Lu(*f, "ttc"), u"44,00"_s);
  EXPECT_EQ(Lu(*f, "tresorerie"), u"CCP"_s);
  f->accept();
  EcritureLue lue;
  ASSERT_FALSE(LitEcriture(App(), f->Derniere(), lue));
  EXPECT_EQ(lue.saisie.montants.ttc, 44);
  EXPECT_EQ(Lu(*f, "offre"), QString()) << "the next entry begins";
}

// ---------------------------------------------------------------------- Refusals

TEST_F(FormeEcriture, UnRefusGardeLaForme) {
  auto f = Remplie(JournalRecettes, u"HONOR"_s, u"100"_s);
  Tape(*Champ(*f, "jour"), u"32"_s);
  Va(*Champ(*f, "libelle"));
  const auto refuse = [&](unsigned erreur) {
    SCOPED_TRACE(erreur);
    const std::string focus = Focus(*f);
    Boite.Oublie();
    QTest::keyClick(f->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Boite.NumerosErreurs(), Numeros{erreur});
    EXPECT_TRUE(f->isVisible());
    EXPECT_EQ(Focus(*f), focus) << "stays where it was";
    EXPECT_EQ(f->Derniere(), 0u);
  };
  refuse(3104);
  EXPECT_EQ(Lu(*f, "jour"), QString()) << "what is no day is erased";
  Tape(*Champ(*f, "jour"), u"19"_s);
  Clique(*Champ<QPushButton>(*f, "multiple"));
  Va(*Champ(*f, "lignes"));
  QTest::keyClick(Champ(*f, "lignes"), Qt::Key_Delete);
  refuse(3035);
}

TEST_F(FormeEcriture, LimiteDuFranc) {
  Prepare("2002", false);
  auto f = Montre(Ouverture(JournalRecettes, 0, FaitDate(17, 2, 2002)));
  Tape(*Champ(*f, "jour"), u"18"_s);
  Tape(*Champ<QLineEdit>(*f, "code"), u"HONOR"_s);
  EXPECT_TRUE(Permis(*f, "franc") && Coche(*f, "franc")) << "leaving the day changes nothing in Franc";
  Choisit(*f, "euro");
  Va(*Champ(*f, "jour"));
  Va(*Champ(*f, "libelle"));
  EXPECT_FALSE(Permis(*f, "franc"));
  Tape(*Champ(*f, "jour"), u"2"_s);
  Va(*Champ(*f, "libelle"));
  EXPECT_TRUE(Permis(*f, "franc"));
}

// --------------------------------------------------------------- Cancel, unlocking

TEST_F(FormeEcriture, FermerDemandeSiQuelqueChoseEstTape) {
  Montre(Ouverture(JournalRecettes))->reject();
  EXPECT_THAT(Boite.NumerosQuestions(), IsEmpty());
  auto sansMontant = Montre(Ouverture(JournalRecettes));
  Tape(*Champ<QLineEdit>(*sansMontant, "code"), u"HONOR"_s);
  QTest::keyClick(sansMontant->focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(Boite.NumerosQuestions(), Numeros{3317});
  EXPECT_TRUE(sansMontant->isVisible());
  Boite.Oublie();

  auto f = Remplie(JournalRecettes, u"HONOR"_s, u"12"_s);
  Boite.Reponses = {RepNon};
  QTest::keyClick(f->focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(f->isVisible() || f->Change());

  Boite.Reponses = {RepNon};
  f->reject();
}

TEST_F(FormeEcriture, ValideeOuLieePuisLiberee) {
  const u32 m = Enregistre(Ecriture(JournalDepenses, "6063", 119.60));
  ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, m, 1));
  Lie(m);
  auto f = Montre(Ouverture(JournalDepenses, m));
  VerifieFormulaire(*f);
  EXPECT_EQ(f->windowTitle(), u"Ecriture de DEPENSE : modification"_s);
  for (const char* nom : {"jour", "code", "compte", "libelle", "ttc", "professionnelle", "tresorerie",
                          "cheque", "multiple", "euro", "ok"})
    EXPECT_FALSE(Permis(*f, nom)) << nom;
  EXPECT_TRUE(Permis(*f, "annuler") && Permis(*f, "aide") && Coche(*f, "validee"));
  EXPECT_EQ(Focus(*f), "annuler");
  const auto altU = [&] { QTest::keyClick(f.get(), Qt::Key_U, Qt::AltModifier); };
  altU();
  EXPECT_EQ(Boite.NumerosQuestions(), (Numeros{3318, 3319})) << "both answered no";
  EXPECT_FALSE(Permis(*f, "ttc"));
  Boite.Oublie();
  Boite.Reponses = {RepOui, RepNon};
  altU();
  EXPECT_FALSE(Coche(*f, "validee") || Permis(*f, "ttc"));
  EXPECT_EQ(+Entete(m).Validee, 0u);
  EXPECT_TRUE(f->Change());
  Boite.Oublie();
  Boite.Reponses = {RepOui};
  altU();
  EXPECT_EQ(Boite.NumerosQuestions(), Numeros{3319});
  EXPECT_TRUE(Permis(*f, "ttc") && Permis(*f, "ok"));
  EXPECT_EQ(+Entete(m).LienId, 7u) << "only saving unlinks";
  Ok(*f);
  EXPECT_FALSE(f->isVisible());
  EXPECT_EQ(+Entete(m).LienId, 0u);
}

TEST_F(FormeEcriture, LaTresorerieSeTrouveParUnMotDeSonNom) {
  auto f = Montre(Ouverture(JournalRecettes));
  Tape(*Champ<QLineEdit>(*f, "code"), u"7065"_s);
  Tape(*Champ(*f, "ttc"), u"20"_s);
  auto& tresorerie = Trouve<QComboBox>(*f, "tresorerie");
  Va(tresorerie);
  QTest::keyClicks(&tresorerie, u"post"_s);
  EXPECT_EQ(tresorerie.currentIndex(), -1) << "nothing is taken unasked";
  f->accept();
  EXPECT_EQ(Boite.NumerosErreurs(), Numeros{3105});
  EXPECT_EQ(Focus(*f), "tresorerie");
  EXPECT_EQ(Lu(*f, "tresorerie"), u"post"_s) << "what was typed stays";
  QTest::keyClicks(&tresorerie, u"pos"_s);
  QTest::keyClick(&tresorerie, Qt::Key_Down);
  EXPECT_EQ(Lu(*f, "tresorerie") + Lu(*f, "designation"), u"CCPPostal"_s);
  for (const auto& [tape, code] : {std::pair{u"b"_s, u"BQ"_s}, {u"514"_s, u"CCP"_s}}) {
    tresorerie.lineEdit()->selectAll();
    QTest::keyClicks(&tresorerie, tape);
    EXPECT_EQ(Lu(*f, "tresorerie"), tape);
    QTest::keyClick(&tresorerie, Qt::Key_Tab);
    EXPECT_EQ(Lu(*f, "tresorerie"), code);
    Va(tresorerie);
  }
  f->accept();
  EcritureLue lue;
  ASSERT_FALSE(LitEcriture(App(), f->Derniere(), lue));
  EXPECT_EQ(lue.saisie.tresorerie, Long("514"));
}

// --------------------------------------------------------------- An existing entry

/// Every field is passed through, the label alone is typed.
TEST_F(FormeEcriture, UnLibelleChangeNeToucheAucunMontant) {
  SaisieEcriture saisie = Ecriture(JournalDepenses, "6154", 10.01);
  const u32 telle = Enregistre(saisie);
  saisie.montants = ChaineProfessionnel(App(), LitCompte("6154"), 10.01, 3.33);
  const u32 tapee = Enregistre(saisie);
  for (const u32 m : {telle, tapee}) {
    const std::vector<std::string> avant = LignesLues(m);
    auto f = Montre(Ouverture(JournalDepenses, m));
    std::set<std::string> passes;
    for (int i = 0; i < 40; ++i) {
      passes.insert(Focus(*f));
      QTest::keyClick(f->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_TRUE(passes.contains("ttc") && passes.contains("professionnelle") && passes.contains("code"));
    Tape(*Champ(*f, "libelle"), u"Autre"_s);
    Ok(*f);
    EXPECT_EQ(LitTexte(Entete(m).Libelle), "Autre");
    EXPECT_EQ(LignesLues(m), avant);
  }
}

TEST_F(FormeEcriture, MarquesDUneEcritureStandard) {
  struct Cas {
    i16 journal;
    std::vector<const char*> rapprochees;  ///< accounts
    bool rapprochee;
  };
  for (const Cas& c :
       {Cas{JournalRecettes, {"512", "514"}, true}, Cas{JournalRecettes, {"512", "531"}, false},
        Cas{JournalDepenses, {"512", "514"}, true}}) {
    const bool recette = c.journal == JournalRecettes;
    const u32 m =
        Enregistre(Multiple(c.journal, recette ? "706" : "6132", {{"512", 60}, {"531", 30}, {"514", 10}}));
    ChangeLignes(m, [&](Line& l) {
      for (const char* compte : c.rapprochees)
        if (LitTexte(l.Compte) == Long(compte)) l.Rapprochee = l.Remise = 1;
    });
    auto f = Montre(Ouverture(c.journal, m));
    EXPECT_EQ(Coche(*f, "rapprochee"), c.rapprochee) << "the cash line has no mode";
    EXPECT_EQ(Coche(*f, "remise"), c.rapprochee && recette);
  }
}

TEST_F(FormeEcriture, Voisins) {
  const u32 simple = Enregistre(Ecriture(JournalRecettes, "706", 100));
  const u32 standard = Enregistre(Multiple(JournalRecettes, "7065", {{"512", 20}, {"531", 30}}));
  SaisieOD od = OD({{"512", "", 5, 0}, {"531", "", 0, 5}});
  od.journal = JournalRecettes;
  ASSERT_FALSE(Essaie(od));
  const u32 diverse = Faite.mouvement;
  ASSERT_NE(diverse, 0u);
  Rangees rangees({simple, diverse, standard});
  OuvertureEcriture ouverture = Ouverture(JournalRecettes, simple);
  ouverture.proprietaire = &rangees;
  auto f = Montre(ouverture);
  VerifieFormulaire(*f);
  EXPECT_TRUE(!Permis(*f, "precedent") && Permis(*f, "suivant"));
  const u64 synchros = Magasin().NbSynchros();
  Clique(*Champ<QPushButton>(*f, "suivant"));
  EXPECT_EQ(Magasin().NbSynchros(), synchros) << "nothing had changed";
  EXPECT_EQ(rangees.GetEcrSel(), 2) << "the opération diverse is passed over";
  EXPECT_TRUE(Vu(*f, "lignes") && Permis(*f, "precedent") && !Permis(*f, "suivant"));
  for (const char* champ : {"code", "libelle"}) {
    const QString texte = Lu(*f, champ);
    QTest::keyClick(Champ(*f, champ), Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(Lu(*f, champ), texte) << "the key of a disabled button types nothing";
  }
  EXPECT_EQ(Lu(*f, "ttc"), u"50,00"_s);
  VerifieFormulaire(*f);
  Tape(*Champ(*f, "libelle"), u"Autre libellé"_s);
  Clique(*Champ<QPushButton>(*f, "precedent"));
  EXPECT_EQ(rangees.GetEcrSel(), 0);
  EXPECT_EQ(LitTexte(Entete(standard).Libelle), "Autre libellé"_w);
  EXPECT_TRUE(Vu(*f, "tresorerie"));
  EXPECT_EQ(Lu(*f, "ttc"), u"100,00"_s);

  ouverture.consultation = true;
  EXPECT_FALSE(Montre(ouverture)->findChild<QPushButton*>(u"suivant"_s));
}

TEST_F(FormeEcriture, EcritureAbsente) {
  CDialogEcriture forme(Ui, Ouverture(JournalRecettes, 99));
  EXPECT_FALSE(forme.Execute());
  EXPECT_EQ(Boite.NumerosErreurs(), Numeros{3202});
}

TEST_F(FormeEcriture, LibelleAjouteALaListe) {
  ASSERT_TRUE(App().Dit(EcritLibelles(App(), {"Consultations"})));
  auto f = Montre(Ouverture(JournalRecettes));
  Tape(*Champ(*f, "libelle"), u"Visites  à domicile"_s);
  QTest::keyClick(Champ(*f, "libelle"), Qt::Key_L, Qt::ControlModifier);
  Tape(*Champ(*f, "libelle"), u"@"_s);
  QTest::keyClick(Champ(*f, "libelle"), Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(Boite.NumerosErreurs(), Numeros{3352});
  Boite.Reponses = {RepNon};
  f->reject();
  std::vector<std::string> libelles;
  ASSERT_TRUE(App().Dit(LitLibelles(App(), libelles)));
  EXPECT_THAT(libelles, ElementsAre("Consultations", "Visites à domicile"_w));
}

// The program ends while the form is open: what stood in its fields comes back, and is typed, not saved.
TEST_F(FormeEcriture, CeQuiEstAMoitieTapeRevient) {
  auto forme = Remplie(JournalDepenses, u"LOYER"_s, u"33,3,3"_s);
  Va(*Champ(*forme, "libelle"));
  forme.reset();  // dies without an answer
  EXPECT_EQ("33,3,3", LitSuspens(App()).value_or(SaisieSuspendue{}).ttc);
  forme = Remplie(JournalDepenses, u"LOYER"_s, u"119,60"_s);
  Tape(*Champ<QComboBox>(*forme, "libelle"), u"Mars"_s);
  Va(*Champ(*forme, "professionnelle"));
  forme.reset();

  const auto saisie = LitSuspens(App());
  ASSERT_TRUE(saisie);
  OuvertureEcriture ouverture = Ouverture(JournalDepenses);
  ouverture.reprise = &*saisie;
  forme = Montre(ouverture);
  EXPECT_EQ(u"Mars"_s, Lu(*forme, "libelle"));
  EXPECT_EQ(u"119,60"_s, Lu(*forme, "ttc"));
  Va(*Champ(*forme, "libelle"));
  EXPECT_TRUE(LitSuspens(App())) << "it counts as typed";
  Clique(Trouve<QPushButton>(*forme, "ok"));
  EXPECT_NE(0u, forme->Derniere());
  EXPECT_FALSE(LitSuspens(App()));
  // Given up: nothing is kept either.
  Tape(*Champ<QLineEdit>(*forme, "code"), u"LOYER"_s);
  Va(*Champ(*forme, "libelle"));
  EXPECT_TRUE(LitSuspens(App()));
  Boite.Reponses = {RepNon};
  forme->reject();
  EXPECT_FALSE(LitSuspens(App()));
}

}  // namespace
}  // namespace fenlor::test
