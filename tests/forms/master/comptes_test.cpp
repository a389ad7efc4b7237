
#include <QScrollArea>

#include "forms/journal/formesjournal.h"
#include "forms/master/commandesliste.h"
#include "forms/master/comptesview.h"
#include "forms/master/dialogplan.h"
#include "forms/master/dialogplancomptable.h"
#include "forms/master/dialogtresorerie.h"
#include "master/textes.h"
#include "ui/dialogmessage.h"

namespace fenlor::test {
namespace {

class FormesComptes : public FormesJournal {
 protected:
  static void Montre(CZNListView& vue) {
    vue.resize(700, 300);
    vue.Charge();
    vue.show();
  }
  static QString CodeChoisi(CZNListView& vue) {
    return vue.Table().Modele().Champ(vue.Table().LigneChoisie(), 0);
  }
  static std::vector<QString> Colonne(CZNListView& vue, int colonne) {
    std::vector<QString> textes;
    for (int i = 0; i < vue.Table().Modele().NbLignes(); ++i)
      textes.push_back(vue.Table().Modele().Champ(i, colonne));
    return textes;
  }
  /// Opens a form, and tells what a person does there.
  void Ouvre(CZNListView& vue, unsigned commande, const char* nom, std::function<void(QDialog&)> geste) {
    robot.Attend(nom, [geste](QDialog& f) {
      test::VerifieFormulaire(f);
      geste(f);
      if (f.isVisible()) f.reject();
    });
    vue.Execute(commande);
  }
  static EditeurTexte& Texte(QDialog& f, const char* nom) { return Trouve<EditeurTexte>(f, nom); }
  static EditeurMontant& Montant(QDialog& f, const char* nom) { return Trouve<EditeurMontant>(f, nom); }
  static void Touche(QDialog& f, int touche, Qt::KeyboardModifiers avec = {}) {
    QTest::keyClick(f.focusWidget() ? f.focusWidget() : &f, static_cast<Qt::Key>(touche), avec);
    QTest::qWait(avec ? 120 : 0);  // a button pressed by its access key goes up again by itself
  }
  void Mouvemente() { ASSERT_NE(Enregistre(Ecriture(JournalRecettes, "706", 150)), 0u); }
};

TEST_F(FormesComptes, DeuxComptesDAffileeAuClavier) {
  CPlanView vue(Ui, Recette);
  Montre(vue);
  vue.Table().SelectionneLigne(vue.Table().Modele().NbLignes() - 1);
  EXPECT_FALSE(vue.Disponible(CmdModifier) || vue.Disponible(CmdSupprimer)) << "the empty row";
  robot.Attend("DialogPlan", [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Ajout d'un compte de recettes"_s);
    f.activateWindow();
    QApplication::processEvents();
    for (const QString& numero : {u"7081"_s, u"7082"_s}) {
      EXPECT_EQ(Focus(f), "code");
      for (const QString& texte : {u"Z"_s + numero, numero, u"Compte "_s + numero}) {
        QTest::keyClicks(f.focusWidget(), texte);
        Touche(f, Qt::Key_Tab);
      }
      EXPECT_EQ(Focus(f), "rubrique");
      EXPECT_EQ(Liste(f, "rubrique").currentIndex(), numero == u"7081"_s ? 0 : -1);
      Touche(f, Qt::Key_Down);
      Touche(f, Qt::Key_Enter);
      EXPECT_EQ(Texte(f, "compte").text(), QString());
    }
    Touche(f, Qt::Key_F, Qt::AltModifier);
    EXPECT_FALSE(f.isVisible());
  });
  QTest::keyClick(&vue.Table(), Qt::Key_Return);
  for (const char* numero : {"7081", "7082"}) {
    EXPECT_EQ(LitTexte(LitCompte(numero).Code), "Z" + std::string(numero));
    EXPECT_EQ(+LitCompte(numero).Type, Recette);
  }
  EXPECT_EQ(CodeChoisi(vue), u"Z7082"_s);
}

TEST_F(FormesComptes, LesComptesVoisinsEtUnModifie) {
  CPlanView vue(Ui, Depense);
  Montre(vue);
  vue.Table().TrieParColonne(0);
  vue.Table().SelectionneLigne(0);
  const std::vector<QString> codes = Colonne(vue, 0);
  ASSERT_GT(codes.size(), 5u);
  const std::string modifie = De1252(Colonne(vue, 1)[1]);
  std::vector<QString> vus;
  Ouvre(vue, CmdModifier, "DialogPlan", [&](QDialog& f) {
    EXPECT_FALSE(Bouton(f, u"&Précédent"_s).isEnabled());
    for (int i = 0; i < 4; ++i) {
      vus.push_back(Texte(f, "code").text());
      if (i == 1) Tape(Texte(f, "code"), u"zz"_s);
      EXPECT_EQ(f.windowTitle(), u"Compte de dépenses : "_s + Texte(f, "code").text());
      if (i < 3) Touche(f, Qt::Key_S, Qt::AltModifier);
    }
    EXPECT_EQ(Colonne(vue, 0)[1], u"zz"_s) << "seen behind the form, in its old place";
    Touche(f, Qt::Key_P, Qt::AltModifier);
  });
  EXPECT_EQ(vus, std::vector<QString>(codes.begin(), codes.begin() + 4)) << "the list keeps its order";
  EXPECT_EQ(LitTexte(LitCompte(modifie).Code), "zz");
  EXPECT_EQ(CodeChoisi(vue), codes[2]);
  EXPECT_EQ(Colonne(vue, 0)[codes.size() - 2], u"zz"_s) << "sorted again once the form is closed";
  vue.Table().SelectionneLigne(static_cast<int>(codes.size()) - 2);
  Ouvre(vue, CmdModifier, "DialogPlan", [&](QDialog& f) {
    EXPECT_FALSE(Bouton(f, u"&Suivant"_s).isEnabled()) << "the empty row is no account";
  });
}

TEST_F(FormesComptes, ChaqueListeALaSuppressionDeSaForme) {
  Mouvemente();
  CPlanView recettes(Ui, Recette);
  CTresorerieView tresorerie(Ui);
  CPlanComptableView plan(Ui);
  struct Cas {
    CZNListView& vue;
    const char* code;
    unsigned message;
  } const refus[] = {{recettes, "HONOR", InfoCompteMouvemente},
                     {tresorerie, "BQ", InfoTresorerieMouvementee},
                     {plan, "BQ", InfoTresorerieMouvementee}};
  for (const Cas& cas : refus) {
    Montre(cas.vue);
    ChoisitRang(cas.vue.Table(), Q(cas.code));
    cas.vue.Execute(CmdSupprimer);
    EXPECT_EQ(Boite.NumerosQuestions(), (std::vector<unsigned>{cas.message}));
    Boite.Oublie();
    EXPECT_EQ(CodeChoisi(cas.vue), Q(cas.code));
  }
}

TEST_F(FormesComptes, ChampQuitteAvecUnDouble) {
  CDialogTresorerie forme(Ui, nullptr, 0);
  forme.show();
  Tape(Texte(forme, "code"), u"loyer"_s);
  Va(Texte(forme, "designation"));
  EXPECT_EQ(Focus(forme), "code");
  EXPECT_EQ(Texte(forme, "code").selectedText(), u"loyer"_s);
  Tape(Texte(forme, "code"), u"NEUF"_s);
  Tape(Texte(forme, "compte"), u"6132"_s);
  Va(Texte(forme, "designation"));
  EXPECT_EQ(Focus(forme), "compte");
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3058, 3092}));
  Tape(Texte(forme, "compte"), u"70960"_s);
  Va(Texte(forme, "designation"));
  EXPECT_EQ(Texte(forme, "compte").text(), u"7096"_s) << "short form";
}

TEST_F(FormesComptes, PartsSoldesEtComptePersonnel) {
  ASSERT_NE(Enregistre(Ecriture(JournalDepenses, "6154", 119.6)), 0u);
  ASSERT_TRUE(Magasin().SetComptePerso("6132"));
  CPlanView vue(Ui, Depense);
  Montre(vue);
  ChoisitRang(vue.Table(), u"6154"_s);
  Ouvre(vue, CmdModifier, "DialogPlan", [&](QDialog& f) {
    EXPECT_TRUE(Texte(f, "compte").isReadOnly());
    EXPECT_EQ(Lu(f, "ttc"), u"D 119,60"_s);
    EXPECT_EQ(Trouve<Lecture>(f, "ttc").toolTip(), u"D 784,52 F"_s);
    EXPECT_EQ(Liste(f, "tva").currentText(), u"19,60% 4451 4451"_s);
    EXPECT_EQ(Lu(f, "personnelle"), u"40,00"_s);
    Tape(Montant(f, "professionnelle"), u"75,5"_s);
    EXPECT_EQ(Lu(f, "personnelle"), u"24,50"_s);
    Tape(Montant(f, "professionnelle"), u"120"_s);
    EXPECT_EQ(Lu(f, "personnelle"), u"88,00"_s) << "what 12 left";
    Choisit(Liste(f, "tva"), 0);
    Clique(Bouton(f, u"&Ok"_s));
  });
  EXPECT_EQ(+LitCompte("6154").PartPro, 120);
  EXPECT_EQ(+LitCompte("6154").TauxTVA, 0);
  EXPECT_EQ(LitTexte(LitCompte("6154").CompteTVA), "");
  ChoisitRang(vue.Table(), u"LOYER"_s);
  Ouvre(vue, CmdModifier, "DialogPlan", [&](QDialog& f) {
    for (const char* nom : {"code", "compte", "designation"}) EXPECT_TRUE(Texte(f, nom).isReadOnly()) << nom;
    EXPECT_FALSE(Liste(f, "rubrique").isEnabled() || Liste(f, "tva").isEnabled());
    EXPECT_FALSE(Montant(f, "professionnelle").isEnabled() || Bouton(f, u"&Ok"_s).isEnabled());
    Clique(Bouton(f, u"&Suivant"_s));
    EXPECT_FALSE(Texte(f, "code").isReadOnly()) << "only the personal account is";
    EXPECT_TRUE(Bouton(f, u"&Ok"_s).isEnabled() && Montant(f, "professionnelle").isEnabled());
  });
  Regle("2003", "TVA", "Non");
  EXPECT_EQ(CDialogPlan(Ui, nullptr, Recette, 0).findChild<EditeurChoix*>(u"tva"_s), nullptr);
}

TEST_F(FormesComptes, TresorerieNumeroProposeEtSoldeInitial) {
  Regle("Activite", "RadicalCaisse", "");
  for (const char* pris : {"5101", "5103"}) ASSERT_TRUE(PoseCompte(pris, Tresorerie, pris));
  CTresorerieView vue(Ui);
  Montre(vue);
  Ouvre(vue, CmdAjouter, "DialogTresorerie", [&](QDialog& f) {
    auto& banque = Trouve<QCheckBox>(f, "banque");
    EXPECT_EQ(Texte(f, "compte").text(), u"5102"_s);
    banque.click();
    EXPECT_EQ(Texte(f, "compte").text(), u"5301"_s);
    EXPECT_EQ(App().Reglages.LitIni("Activite", "RadicalCaisse"), "530");
    banque.click();
    Tape(Texte(f, "code"), u"B2"_s);
    Tape(Montant(f, "debit"), u"100"_s);
    EXPECT_EQ(Lu(f, "soldeReel"), u"D 100,00"_s);
    Tape(Montant(f, "credit"), u"30,5"_s);
    EXPECT_EQ(Lu(f, "soldeReel"), u"30,50"_s);
    EXPECT_TRUE(Montant(f, "debit").EstVide());
    Boite.Reponses = {RepOui, RepNon};
    Clique(Bouton(f, u"&Enregistrer"_s));
    EXPECT_EQ(Focus(f) + Texte(f, "code").text().toStdString(), "creditB2") << "nothing saved yet";
    Clique(Bouton(f, u"&Enregistrer"_s));
    EXPECT_EQ(Texte(f, "compte").text(), u"5104"_s) << "the next one";
    EXPECT_TRUE(Texte(f, "code").text().isEmpty() && Montant(f, "credit").EstVide());
  });
  EXPECT_EQ(+LitCompte("5102").SoldeInitialEuro, 30.5);
  EXPECT_EQ(CodeChoisi(vue), u"B2"_s);
  Ouvre(vue, CmdModifier, "DialogTresorerie", [&](QDialog& f) {
    Trouve<QCheckBox>(f, "banque").click();
    EXPECT_EQ(Texte(f, "compte").text(), u"5102"_s) << "only a new account gets another number";
  });
}

TEST_F(FormesComptes, ChampsSelonLeType) {
  struct Cas {
    int type;
    bool initial, rubrique, tva, taux, parts;
  } const cas[] = {{Tresorerie, true, false, false, false, false},
                   {Recette, false, true, true, false, false},
                   {Depense, false, true, true, false, true},
                   {Tva, false, true, false, true, false},
                   {Autre, false, true, false, false, false}};
  CPlanComptableView vue(Ui);
  Montre(vue);
  Ouvre(vue, CmdAjouter, "DialogPlanComptable", [&](QDialog& f) {
    const QWidget& zone = *f.findChild<QScrollArea*>()->widget();
    const QSize taille = zone.sizeHint();
    for (const Cas& c : cas) {
      Choisit(Liste(f, "type"), c.type);
      QApplication::processEvents();
      EXPECT_EQ(zone.sizeHint(), taille) << "nothing jumps: " << c.type;
      EXPECT_EQ(Montant(f, "debit").isEnabled() && Trouve<QCheckBox>(f, "banque").isEnabled(), c.initial)
          << c.type;
      EXPECT_EQ(Liste(f, "rubrique").isEnabled(), c.rubrique) << c.type;
      EXPECT_EQ(Liste(f, "tva").isEnabled() && Liste(f, "tva").isVisible(), c.tva) << c.type;
      EXPECT_EQ(Montant(f, "taux").isVisible(), c.taux) << c.type;
      EXPECT_EQ(Montant(f, "professionnelle").isEnabled(), c.parts) << c.type;
      test::VerifieFormulaire(f);
    }
    Choisit(Liste(f, "type"), Tva);
    Tape(Texte(f, "code"), u"TVA9"_s);
    Tape(Texte(f, "compte"), u"612"_s);
    Tape(Montant(f, "taux"), u"8,5"_s);
    Boite.Reponses = {RepOui};
    Clique(Bouton(f, u"&Enregistrer"_s));
  });
  EXPECT_EQ(+LitCompte("612").TauxTVA, 8.5);
  Ouvre(vue, CmdModifier, "DialogPlanComptable", [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Compte de T.V.A. : TVA9"_s);
    Choisit(Liste(f, "type"), Autre);
    EXPECT_EQ(f.windowTitle(), u"Compte : TVA9"_s);
  });
  ASSERT_NE(Enregistre(Ecriture(JournalRecettes, "7070", 119.6)), 0u);
  ChoisitRang(vue.Table(), u"4451"_s);
  Ouvre(vue, CmdModifier, "DialogPlanComptable", [&](QDialog& f) {
    EXPECT_FALSE(Liste(f, "type").isEnabled());
    EXPECT_TRUE(Texte(f, "compte").isReadOnly() && Montant(f, "taux").isReadOnly());
  });
}

TEST_F(FormesComptes, NouveauCompteDepuisLesComptesParticuliers) {
  Boite.Reponses = {RepAnnuler, RepNon};
  EXPECT_FALSE(CDialogPlan::Nouveau(Ui));
  robot.Attend("DialogPlan", [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Ajout d'un compte de dépenses"_s);
    Tape(Texte(f, "code"), u"NEUF"_s);
    Tape(Texte(f, "compte"), u"6999"_s);
    Clique(Bouton(f, u"&Enregistrer"_s));
    Clique(Bouton(f, u"&Fermer"_s));
  });
  EXPECT_TRUE(CDialogPlan::Nouveau(Ui));
  EXPECT_EQ(+LitCompte("6999").Type, Depense);
}

}  // namespace
}  // namespace fenlor::test
