
#include <QToolButton>

#include "forms/journal/dialogmouvement.h"
#include "forms/journal/formesjournal.h"
#include "forms/journal/textes.h"
#include "journal/textes.h"
#include "ui/tableliste.h"

namespace fenlor::test {
namespace {

using Nombres = std::vector<unsigned>;
using Textes = std::vector<std::string>;

LigneODSaisie Debit(const char* compte, f64 montant) { return {compte, {}, montant, 0}; }
LigneODSaisie Credit(const char* compte, f64 montant) { return {compte, {}, 0, montant}; }

class FormeOD : public FormesJournal {
 protected:
  Rangees Journal;

  OuvertureEcriture Nouvelle() { return {JournalOD, FaitDate(15, 3, 2003), {}, 0, false, nullptr}; }
  OuvertureEcriture Existante(u32 mouvement) {
    OuvertureEcriture ouverture = Nouvelle();
    ouverture.mouvement = mouvement;
    ouverture.proprietaire = &Journal;
    return ouverture;
  }
  static CZNListCtrl& Lignes(QDialog& f) { return Trouve<CZNListCtrl>(f, "lignes"); }
  using FormesJournal::Lignes;
  static QString Solde(QDialog& f) { return Trouve<QLabel>(f, "solde").text(); }
  static Textes Montrees(QDialog& f) {
    Textes textes;
    for (const QString& rangee : Rangs(Lignes(f), 4)) textes.push_back(De1252(rangee));
    return textes;
  }
  /// On to the next field: by Tab, or by Enter where the preference says so.
  Qt::Key Suite = Qt::Key_Tab;
  /// A line typed into an open line form, and Enter.
  void Ligne(QDialog& f, const char* code, const char* debit, const char* credit = "") {
    EXPECT_EQ(Focus(f), "code");
    Frappe(f, Q(code));
    Touche(f, Suite);
    EXPECT_EQ(Focus(f), "libelle");
    Touche(f, Suite);
    if (Focus(f) == "cheque") Touche(f, Suite);
    EXPECT_EQ(Focus(f), "debit");
    Frappe(f, Q(debit));
    Touche(f, Suite);
    EXPECT_EQ(Focus(f), "credit");
    Frappe(f, Q(credit));
    Touche(f, Qt::Key_Return);
    if (Focus(f) == "ok") Touche(f, Qt::Key_Return);
  }
};

TEST_F(FormeOD, AuClavierCommeParLaRegle) {
  CDialogMouvement f(Ui, Nouvelle());
  Montre(f);
  EXPECT_EQ(f.windowTitle(), u"Ecriture d'OPERATION DIVERSES : ajout"_s);
  const char* jours[] = {"3", "4"};
  for (const char* jour : jours) {
    if (*jour == '4') {
      Regle("Préférences"_w, "Entrée"_w, "Oui");
      Suite = Qt::Key_Return;
    }
    EXPECT_EQ(Focus(f), "date");
    Frappe(f, Q(jour));
    Touche(f, Suite);
    Frappe(f, u"Apport "_s + Q(jour));
    Touche(f, Suite);
    EXPECT_EQ(Focus(f), "lignes");
    robot.Attend("DialogLine", [&](QDialog& ligne) {
      Montre(ligne);
      EXPECT_EQ(ligne.windowTitle(), u"Ecriture d'une ligne d'O.D. : ajout"_s);
      EXPECT_FALSE(Actif(ligne, "solder")) << "an empty list is balanced";
      Ligne(ligne, "BQ", "119,6");
      Ligne(ligne, "hon", "", "100");
      EXPECT_EQ(Solde(ligne), u"-19,60 €"_s);
      EXPECT_EQ(Solde(f), u"-19,60 €"_s);
      Frappe(ligne, u"expl"_s);
      Touche(ligne, Qt::Key_S, Qt::AltModifier);
      EXPECT_FALSE(ligne.isVisible());
    });
    Touche(f, Qt::Key_Insert);
    EXPECT_EQ(Montrees(f), (Textes{"512|Apport " + std::string(jour) + "|119,60 \x80|",
                                   "706|Honoraires||100,00 \x80", "108|Exploitant||19,60 \x80"}));
    EXPECT_EQ(Solde(f), QString());
    EXPECT_EQ(Focus(f), "ok");
    Montre(f);
    Touche(f, Qt::Key_Return);
    EXPECT_EQ(Boite.NumerosErreurs(), Nombres{});
    EXPECT_TRUE(Montrees(f).empty());
    EXPECT_EQ(Trouve<QComboBox>(f, "libelle").currentText(), QString());
  }
  EXPECT_EQ(f.Derniere(), 2u);
  Touche(f, Qt::Key_Escape);
  EXPECT_FALSE(f.isVisible());
  EXPECT_TRUE(Boite.Questions.empty());

  test::Jumeau jumeau;
  jumeau.Installe();
  for (unsigned i = 0; i < 2; ++i) {
    const std::string libelle = std::string("Apport ") + jours[i];
    SaisieOD saisie = jumeau.OD({{"512", libelle, 119.6, 0, PaiementCheque},
                                 {"706", "Honoraires", 0, 100, PaiementCheque},
                                 {"108", "Exploitant", 0, 19.6, PaiementCheque}},
                                FaitDate(3 + i, 3, 2003));
    saisie.libelle = libelle;
    saisie.ligne = 1 + i;
    ASSERT_FALSE(jumeau.Essaie(saisie));
  }
  test::CompareLivres(*this, jumeau, 2);
}

TEST_F(FormeOD, UnRefusASonChamp) {
  CDialogMouvement f(Ui, Nouvelle());
  Montre(f);
  const auto attend = [&](unsigned erreur, bool question, const char* champ) {
    SCOPED_TRACE(erreur);
    Va(Trouve<QWidget>(f, "libelle"));
    Touche(f, Qt::Key_Return);
    EXPECT_EQ(question ? Boite.NumerosQuestions() : Boite.NumerosErreurs(), Nombres{erreur});
    EXPECT_EQ(Focus(f), champ);
    Boite.Oublie();
  };
  Tape(Trouve<QComboBox>(f, "date"), u"32"_s);
  attend(3104, false, "date");
  EXPECT_EQ(Trouve<QComboBox>(f, "date").currentText(), QString()) << "what is no day is erased";
  Tape(Trouve<QComboBox>(f, "date"), u"15"_s);
  attend(3032, false, "lignes");
  robot.Attend("DialogLine", [&](QDialog& ligne) {
    Montre(ligne);
    const auto refuse = [&](unsigned erreur, const char* champ) {
      Clique(Trouve<QPushButton>(ligne, "ok"));
      EXPECT_EQ(Boite.NumerosErreurs(), Nombres{erreur});
      EXPECT_EQ(Focus(ligne), champ);
      Boite.Oublie();
    };
    refuse(3105, "code");
    Tape(Trouve<QLineEdit>(ligne, "code"), u"BQ"_s);
    refuse(3108, "debit");
    Tape(Trouve<QLineEdit>(ligne, "credit"), u"5"_s);
    Tape(Trouve<QLineEdit>(ligne, "debit"), u"10"_s);
    EXPECT_EQ(Trouve<QLineEdit>(ligne, "credit").text(), QString()) << "one side empties the other";
    Touche(ligne, Qt::Key_Return);
    Ligne(ligne, "HON", "", "9,99");
    Touche(ligne, Qt::Key_Escape);
  });
  Clique(Trouve<QToolButton>(f, "ajouter"));
  EXPECT_EQ(Focus(f), "lignes") << "it does not balance yet";

  ASSERT_TRUE(Magasin().SetComptePerso("109"));
  attend(3055, true, "libelle");
  ASSERT_TRUE(Magasin().SetComptePerso("108"));
  attend(QuestionNonEquilibree, true, "libelle");
  EXPECT_EQ(f.Derniere(), 0u);
  Boite.Reponses = {RepOui};
  Touche(f, Qt::Key_Return);
  EXPECT_NE(f.Derniere(), 0u);
}

TEST_F(FormeOD, FermerDemandeSiUneLigneEstTapee) {
  CDialogMouvement f(Ui, Nouvelle());
  Montre(f);
  robot.Attend("DialogLine", [&](QDialog& ligne) {
    Montre(ligne);
    Ligne(ligne, "BQ", "10");
    Touche(ligne, Qt::Key_Escape);
  });
  Va(Lignes(f));
  Touche(f, Qt::Key_Insert);
  Boite.Reponses = {RepOui};
  Touche(f, Qt::Key_Escape);
  EXPECT_EQ(Boite.NumerosQuestions(), (Nombres{QuestionEnregistrer, QuestionNonEquilibree}));
  EXPECT_TRUE(f.isVisible()) << "a save that is refused keeps it open";
  EXPECT_EQ(f.Derniere(), 0u);
}

TEST_F(FormeOD, ExistanteChangeeEtVoisine) {
  Journal.ecritures = {EnregistreLesLignes({Debit("512", 10), Credit("706", 10)}),
                       EnregistreLesLignes({Debit("531", 20), Credit("706", 12), Credit("758", 8)})};
  Journal.choisie = 1;
  ChangeLignes(2, [](Line& ligne) { ligne.Rapprochee = ligne.TypeCompte == Tresorerie; });
  CDialogMouvement f(Ui, Existante(2));
  Montre(f);
  EXPECT_EQ(f.windowTitle(), u"Ecriture d'OPERATION DIVERSES : modification"_s);
  EXPECT_FALSE(Actif(f, "suivant"));
  EXPECT_FALSE(Actif(f, "modifier") || Actif(f, "supprimer")) << "nothing is selected yet";

  robot.Attend("DialogLine", [&](QDialog& ligne) {
    Montre(ligne);
    EXPECT_EQ(Trouve<QLineEdit>(ligne, "credit").text(), u"12,00"_s);
    Trouve<QLineEdit>(ligne, "code").setFocus();
    Clique(Trouve<QPushButton>(ligne, "suivant"));
    EXPECT_EQ(Trouve<QLineEdit>(ligne, "credit").text(), u"8,00"_s);
    EXPECT_FALSE(Actif(ligne, "suivant"));
    Tape(Trouve<QLineEdit>(ligne, "credit"), u"3"_s);
    Clique(Trouve<QPushButton>(ligne, "precedent"));
    EXPECT_EQ(Solde(f), u"-5,00 €"_s) << "the neighbour saved the line";
    // The others leave 17: the line's own 12 count for nothing.
    Clique(Trouve<QPushButton>(ligne, "solder"));
    EXPECT_EQ(Trouve<QLineEdit>(ligne, "credit").text(), u"17,00"_s);
    EXPECT_TRUE(ligne.isVisible());
    Touche(ligne, Qt::Key_Return);
    EXPECT_FALSE(ligne.isVisible());
  });
  Lignes(f).SelectionneLigne(1);
  Va(Lignes(f));
  Touche(f, Qt::Key_Return);
  EXPECT_EQ(Focus(f), "lignes");
  EXPECT_EQ(Solde(f), QString());
  Lignes(f).selectAll();
  EXPECT_TRUE(Actif(f, "supprimer"));
  Lignes(f).SelectionneLigne(2);
  Touche(f, Qt::Key_Delete);
  EXPECT_EQ(Lignes(f).LigneChoisie(), 1);
  robot.Attend("DialogLine", [&](QDialog& ligne) {
    Montre(ligne);
    EXPECT_TRUE(Actif(ligne, "solder"));
    Frappe(ligne, u"HON"_s);
    Clique(Trouve<QPushButton>(ligne, "solder"));
  });
  Touche(f, Qt::Key_Insert);
  Clique(Trouve<QPushButton>(f, "precedent"));
  EXPECT_EQ(LignesLues(2), (Textes{"531 D 20.00 131.19", "706 C 17.00 111.51", "706 C 3.00 19.68"}));
  EXPECT_EQ(+Lignes(2)[0].Rapprochee, 1u) << "what the form does not change is kept";
  EXPECT_EQ(u32{Entete(2).Ligne}, 2u);
  EXPECT_EQ(Journal.choisie, 0);
  EXPECT_EQ(Montrees(f)[0], "512|Essai d'OD|10,00 \x80|");
  EXPECT_FALSE(Actif(f, "precedent"));
  const u64 synchros = Magasin().NbSynchros();
  Clique(Trouve<QPushButton>(f, "suivant"));
  EXPECT_EQ(Magasin().NbSynchros(), synchros) << "nothing had changed";

  ChangeLignes(2, [](Line& ligne) {
    if (ligne.Rang == 1) PoseTexte(ligne.Designation, "Mots propres");
  });
  Clique(Trouve<QPushButton>(f, "precedent"));
  Clique(Trouve<QPushButton>(f, "suivant"));
  Tape(*Trouve<QComboBox>(f, "libelle").lineEdit(), u"Autre nom"_s);
  Clique(Trouve<QPushButton>(f, "ok"));
  EXPECT_EQ(LitTexte(Lignes(2)[0].Designation) + ", " + LitTexte(Lignes(2)[1].Designation),
            "Autre nom, Mots propres")
      << "lines that bore the entry's label follow it";
}

TEST_F(FormeOD, EcritureEnFranc) {
  ASSERT_TRUE(CreeExercice("2002"));
  SaisieOD saisie = OD({Debit("512", 655.957), Credit("706", 655.957)}, FaitDate(17, 2, 2002));
  for (const char* compte : {"512", "706"}) PoseCompte(compte, *compte == '5' ? Tresorerie : Recette);
  saisie.euro = false;
  for (const char* compte : {"108", "758", "658"}) PoseCompte(compte, Autre);
  ASSERT_FALSE(Essaie(saisie));
  CDialogMouvement f(Ui, Existante(Faite.mouvement));
  Montre(f);
  EXPECT_TRUE(Trouve<QRadioButton>(f, "franc").isChecked());
  EXPECT_EQ(Montrees(f)[0], "512|Essai d'OD|655,96 F|");
  Tape(Trouve<QComboBox>(f, "date"), u"19"_s);
  Clique(Trouve<QPushButton>(f, "ok"));
  EXPECT_EQ(Boite.NumerosErreurs(), Nombres{3041}) << "leaving the day keeps the Franc, saving refuses it";
  Clique(Trouve<QRadioButton>(f, "euro"));
  Clique(Trouve<QPushButton>(f, "ok"));
  EXPECT_EQ(LignesLues(Faite.mouvement)[0].substr(0, 12), "512 D 655.96") << "the digits stayed";
}

TEST_F(FormeOD, CeQuiEstPermis) {
  const u32 mouvement = EnregistreLesLignes({Debit("512", 10), Credit("706", 10)});
  const struct {
    const char* quoi;
    bool validee, liee, close;
  } cas[] = {{"libre", false, false, false},
             {"validée", true, false, false},
             {"liée", false, true, false},
             {"exercice clos", false, false, true}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.quoi);
    ChangeLignes(mouvement, [&](Line& ligne) {
      ligne.Validee = c.validee;
      ligne.LienId = c.liee ? 7 : 0;
    });
    if (c.close) Regle("2003", "Cloture", "31/12/2003");
    CDialogMouvement f(Ui, Existante(mouvement));
    Montre(f);
    const bool libre = !c.validee && !c.liee && !c.close;
    EXPECT_EQ(Focus(f), libre ? "date" : "annuler");
    Lignes(f).SelectionneLigne(0);
    for (const char* nom : {"ajouter", "modifier", "supprimer", "date", "libelle", "ok"})
      EXPECT_EQ(Actif(f, nom), libre) << nom;
    EXPECT_EQ(Actif(f, "euro"), libre);
    Boite.Oublie();
    Va(Lignes(f));
    Touche(f, Qt::Key_Delete);
    EXPECT_EQ(Lignes(f).Modele().NbLignes(), libre ? 1 : 2);
    EXPECT_EQ(Boite.NumerosErreurs(), c.close ? Nombres{3056} : Nombres{});
    if (!c.validee && !c.liee) continue;

    robot.Attend("DialogLine", [&](QDialog& ligne) {
      Montre(ligne);
      EXPECT_FALSE(Actif(ligne, "ok") || Actif(ligne, "solder"));
      Touche(ligne, Qt::Key_Escape);
    });
    Touche(f, Qt::Key_Return);  // on the list: looks at the line
    Montre(f);
    for (const int reponse : {RepNon, RepOui}) {
      Boite.Oublie();
      Boite.Reponses = {reponse};
      Touche(f, Qt::Key_U, Qt::AltModifier);
      EXPECT_EQ(Boite.NumerosQuestions(), Nombres{c.liee ? QuestionEditerLiee : QuestionInvalider});
      EXPECT_EQ(Actif(f, "libelle"), reponse == RepOui);
    }
    Tape(Trouve<QComboBox>(f, "libelle"), u"Repris"_s);
    Clique(Trouve<QPushButton>(f, "ok"));
    EXPECT_FALSE(f.isVisible());
    EXPECT_TRUE(Boite.NumerosErreurs().empty());
    EXPECT_EQ(u32{Entete(mouvement).Validee}, 0u);
    EXPECT_EQ(u32{Entete(mouvement).LienId}, 0u);
    EXPECT_EQ(LitTexte(Entete(mouvement).Libelle), "Repris");
  }
}

TEST_F(FormeOD, CeQuiEstAMoitieTapeRevient) {
  SaisieSuspendue saisie;
  saisie.operationDiverse = true;
  saisie.ecriture.journal = JournalOD;
  saisie.ecriture.date = FaitDate(20, 3, 2003);
  saisie.ecriture.libelle = "Apport";
  saisie.lignes = {Debit(Long("512").c_str(), 20), Credit(Long("531").c_str(), 20)};
  OuvertureEcriture ouverture = Nouvelle();
  ouverture.reprise = &saisie;
  auto forme = std::make_unique<CDialogMouvement>(Ui, ouverture);
  forme->setModal(false);
  MontreFenetre(*forme);
  Va(Trouve<QWidget>(*forme, "libelle"));
  Va(Lignes(*forme));
  forme.reset();
  const auto notee = LitSuspens(App());
  ASSERT_TRUE(notee);
  EXPECT_EQ(TexteSuspens(saisie), TexteSuspens(*notee));
}

}  // namespace
}  // namespace fenlor::test
