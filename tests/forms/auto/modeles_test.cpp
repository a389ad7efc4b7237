#include <QHelpEvent>
#include <QToolTip>

#include "auto/ecrituresauto.h"
#include "auto/modeleauto.h"
#include "auto/textes.h"
#include "forms/auto/dialogautoecheance.h"
#include "forms/auto/dialogautoecriture.h"
#include "forms/auto/dialogautolist.h"
#include "forms/auto/dialogautoprevisions.h"
#include "forms/journal/formesjournal.h"
#include "journal/textes.h"
#include "master/libelles.h"
#include "ui/tableliste.h"

namespace fenlor::test {
namespace {

class FormesAuto : public test::FormesJournal {
 protected:
  /// A monthly model with its first payment on 05/01/2003.
  FicheAuto Modele(std::string_view compte, f64 ttc, i16 periodicite = 6, u32 nombre = 12) {
    FicheAuto fiche = NouvelleAuto(App());
    fiche.genre = compte[0] == '7' ? JournalRecettes : JournalDepenses;
    fiche.date = FaitDate(5, 1, 2003);
    fiche.compte = Long(compte);
    fiche.tresorerie = Long("512");
    fiche.libelle = "Modele";
    fiche.periodicite = periodicite;
    fiche.nombre = nombre;
    fiche.montants = ChaineMontants(App(), LitCompte(compte), ttc);
    return fiche;
  }
  void Ajoute(FicheAuto fiche) { ASSERT_FALSE(EnregistreFiche(App(), fiche)); }
  FicheAuto Lu(Position numero) {
    FicheAuto fiche;
    EXPECT_FALSE(LitFiche(App(), numero, fiche));
    return fiche;
  }
  std::unique_ptr<CDialogAutoEcriture> Forme(Position numero = 0) {
    auto forme = std::make_unique<CDialogAutoEcriture>(Ui, nullptr, numero);
    forme->setModal(false);
    Montre(*forme);
    return forme;
  }
  static QString Montants(QDialog& f) {
    QStringList textes;
    for (const char* nom : {"ttc", "professionnelle"}) textes += Champ(f, nom).text();
    for (const char* nom : {"personnelle", "ht", "tva", "taux"}) {
      const auto* figure = f.findChild<QLabel*>(QLatin1String(nom));
      textes += figure ? figure->text() : u"-"_s;
    }
    return textes.join(u' ');
  }
  static QString Nombre(QDialog& f) {
    return Champ(f, "nombre").text() + u" : "_s + Trouve<QLabel>(f, "avancement").text();
  }
  static void ChoisitCompte(QDialog& f, int genre, const QString& code) {
    Choisit(Liste(f, "genre"), genre);
    Tape(Champ(f, "code"), code);
    Va(Trouve<QWidget>(f, "libelle"));
  }
};

TEST_F(FormesAuto, UnNouveauModele) {
  auto f = Forme();
  EXPECT_EQ(f->windowTitle(), u"Ecriture automatique"_s);
  EXPECT_EQ(Liste(*f, "genre").currentText(), u"RECETTE"_s);
  EXPECT_EQ(Champ(*f, "date").text(), u"15/03/2003"_s);
  EXPECT_EQ(Nombre(*f), u"1 : 0 / 1"_s);
  EXPECT_FALSE(Actif(*f, "nombre"));
  EXPECT_TRUE(Case(*f, "automatique").isChecked() && Case(*f, "euro").isChecked());
  Tape(Champ(*f, "date"), u""_s);
  Va(Trouve<QWidget>(*f, "libelle"));
  EXPECT_EQ(Champ(*f, "date").text(), u"15/03/2003"_s) << "today when it is empty";

  ChoisitCompte(*f, 0, u"7065"_s);
  EXPECT_EQ(Liste(*f, "libelle").currentText(), u"Compte 7065"_s);
  Choisit(Liste(*f, "genre"), 1);
  EXPECT_EQ(Liste(*f, "compte").currentIndex(), -1) << "the accounts are others";
  EXPECT_EQ(Champ(*f, "code").text(), QString());
  EXPECT_LT(Liste(*f, "compte").findText(u"7065"_s, Qt::MatchStartsWith), 0);
  EXPECT_GE(Liste(*f, "compte").findText(u"6132"_s, Qt::MatchStartsWith), 0);

  Choisit(Liste(*f, "periodicite"), 5);
  EXPECT_EQ(Nombre(*f), u"999 : 0 / 999"_s);
  EXPECT_TRUE(Actif(*f, "nombre"));
  Tape(Champ(*f, "nombre"), u"8"_s);
  Choisit(Liste(*f, "periodicite"), 5);
  EXPECT_EQ(Nombre(*f), u"999 : 0 / 999"_s) << "the same row again";
  Tape(Champ(*f, "nombre"), u"12"_s);
  Case(*f, "annoncer").click();
  ChoisitCompte(*f, 1, u"6132"_s);
  Tape(Champ(*f, "ttc"), u"700"_s);
  Ok(*f);
  const FicheAuto fiche = Lu(1);
  EXPECT_TRUE(fiche.annoncer && fiche.nombre == 12 && fiche.payes == 0 && fiche.periodicite == 6);
  EXPECT_EQ(fiche.libelle, "Loyer") << "nobody typed the label of the receipt";
  EXPECT_EQ(fiche.montants.ttc, 700);
  EXPECT_TRUE(f->isVisible() && Champ(*f, "ttc").text().isEmpty()) << "ready for the next one";
  EXPECT_EQ(Liste(*f, "genre").currentIndex(), 1);
  EXPECT_TRUE(Case(*Forme(1), "annoncer").isChecked());
}

TEST_F(FormesAuto, LaChaineDesMontants) {
  const struct {
    int genre;
    const char *code, *ttc, *part, *attendu;
  } cas[] = {
      {0, "7065", "100", nullptr, "100,00 60,00 40,00 60,00  "},
      {1, "6154", "119,6", nullptr, "119,60 71,76 47,84 60,00 11,76 19,60"},
      {1, "6063", "119,6", "200", "119,60 119,60  100,00 19,60 19,60"},
  };
  for (const auto& c : cas) {
    auto f = Forme();
    ChoisitCompte(*f, c.genre, QString::fromLatin1(c.code));
    Tape(Champ(*f, "ttc"), QString::fromLatin1(c.ttc));
    EXPECT_EQ(Actif(*f, "professionnelle"), c.genre == 1);
    if (c.part) Tape(Champ(*f, "professionnelle"), QString::fromLatin1(c.part));
    Va(Trouve<QWidget>(*f, "libelle"));
    EXPECT_EQ(Montants(*f), QString::fromLatin1(c.attendu)) << c.code;
  }
  Regle("2003", "TVA", "Non");
  auto f = Forme();
  ChoisitCompte(*f, 1, u"6063"_s);
  Tape(Champ(*f, "ttc"), u"10"_s);
  EXPECT_EQ(Montants(*f), u"10 10,00  - - -"_s);
}

TEST_F(FormesAuto, TroisPaiementsSurDouze) {
  Ajoute(Modele("6132", 100));
  CalculeEcheances(Ui, false);
  auto f = Forme(1);
  EXPECT_EQ(Nombre(*f), u"12 : 3 / 12"_s);
  Tape(Champ(*f, "nombre"), u"2"_s);
  Va(Trouve<QWidget>(*f, "libelle"));
  EXPECT_EQ(Nombre(*f), u"4 : 3 / 4"_s);
  Choisit(Liste(*f, "periodicite"), 7);
  EXPECT_EQ(Nombre(*f), u"999 : 3 / 999"_s);
  Choisit(Liste(*f, "periodicite"), 0);
  EXPECT_EQ(Nombre(*f), u"4 : 3 / 4"_s);
  EXPECT_FALSE(Actif(*f, "nombre"));
  Ok(*f);
  const FicheAuto fiche = Lu(1);
  EXPECT_TRUE(fiche.nombre == 4 && fiche.payes == 3 && fiche.periodicite == 1);
  EXPECT_EQ(fiche.date, FaitDate(5, 4, 2003));
}

TEST_F(FormesAuto, TresorerieEtMonnaie) {
  const auto rang = [](QDialog& f, const char* code) {
    return Liste(f, "tresorerie").findText(QString::fromLatin1(code));
  };
  auto f = Forme();
  Choisit(Liste(*f, "tresorerie"), rang(*f, "CA"));
  EXPECT_FALSE(Actif(*f, "cheque") || Actif(*f, "autre"));
  Choisit(Liste(*f, "tresorerie"), rang(*f, "BQ"));
  EXPECT_TRUE(Actif(*f, "cheque") && Actif(*f, "autre"));
  EXPECT_FALSE(Trouve<QLabel>(*f, "designation").text().isEmpty());
  EXPECT_FALSE(Actif(*f, "franc"));
  for (const bool ouvert : {true, false}) {
    Tape(Champ(*f, "date"), ouvert ? u"17/02/2002"_s : u"18/02/2002"_s);
    Va(Trouve<QWidget>(*f, "libelle"));
    EXPECT_EQ(Actif(*f, "franc"), ouvert);
  }
}

TEST_F(FormesAuto, RefusEtLibelles) {
  auto f = Forme();
  Tape(Champ(*f, "ttc"), u"10"_s);
  Tape(Champ(*f, "code"), u"zz"_s);
  Ok(*f);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrCompteIncorrect.numero});
  EXPECT_EQ(Focus(*f), "code");
  for (const bool enregistre : {true, false}) {
    auto un = Forme();
    ChoisitCompte(*un, 0, u"706"_s);
    Tape(Champ(*un, "ttc"), u"10"_s);
    Tape(Trouve<QWidget>(*un, "libelle"), enregistre ? u"Garde un"_s : u"Garde deux"_s);
    QTest::keyClick(&Trouve<QWidget>(*un, "libelle"), Qt::Key_L, Qt::ControlModifier);
    if (enregistre) Ok(*un);
    Boite.Defaut = RepNon;
    Clique(Case(*un, "annuler"));
    std::vector<std::string> libelles;
    ASSERT_TRUE(App().Dit(LitLibelles(App(), libelles)));
    EXPECT_EQ(libelles.back(), enregistre ? "Garde un" : "Garde deux");
  }
}

class ListeAuto : public FormesAuto {
 protected:
  void SetUp() override {
    FormesAuto::SetUp();
    Ajoute(Modele("6132", 700));
    Ajoute(Modele("706", 50, 1, 1));
    Ajoute(Modele("6063", 30, 2, 5));
  }
  static QString Rangee(TableListe& table, int ligne) { return Rangs(table)[ligne]; }
  static QString Bulle(TableListe& table, int ligne) {
    const QPoint place = table.visualRect(table.model()->index(ligne, 0)).center();
    QHelpEvent demande(QEvent::ToolTip, place, table.viewport()->mapToGlobal(place));
    QApplication::sendEvent(table.viewport(), &demande);
    return QToolTip::text();
  }
};

TEST_F(ListeAuto, MontreAjouteSupprime) {
  CDialogAutoList f(Ui, {});
  f.setModal(false);
  Montre(f);
  auto& table = Trouve<TableListe>(f, "liste");
  EXPECT_EQ(Rangee(table, 0), u"Modele|Mensuelle|BQ||700,00 €"_s);
  EXPECT_EQ(Rangee(table, 1), u"Modele|Unique|BQ|50,00 €|"_s);
  EXPECT_EQ(Bulle(table, 0), u"Prochaine échéance : 05/01/2003"_s);
  EXPECT_GE(table.minimumHeight(), 100);
  EXPECT_TRUE(Actif(f, "ajouter"));
  EXPECT_TRUE(Actif(f, "modifier") && Actif(f, "supprimer")) << "the first row is selected";
  table.clearSelection();
  EXPECT_FALSE(Actif(f, "modifier") || Actif(f, "supprimer"));
  table.SelectionneLigne(0);
  ASSERT_EQ(Focus(f), "liste");

  robot.Attend("DialogAutoEcriture", [&](QDialog& forme) {
    Tape(Champ(forme, "ttc"), u"710"_s);
    Clique(Case(forme, "suivant"));
    EXPECT_EQ(Champ(forme, "ttc").text(), u"50,00"_s);
    Clique(Case(forme, "annuler"));
  });
  QTest::keyClick(f.focusWidget(), Qt::Key_Return);
  EXPECT_EQ(Rangee(table, 0), u"Modele|Mensuelle|BQ||710,00 €"_s);
  EXPECT_EQ(table.LigneChoisie(), 1) << "the row of the record that was shown last";

  table.selectAll();
  Boite.Reponses = {RepOui, RepNon, RepOui};
  Clique(Case(f, "supprimer"));
  EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>(3, QuestionSupprimeAuto));
  ASSERT_EQ(table.Modele().NbLignes(), 1);
  EXPECT_EQ(Rangee(table, 0), u"Modele|Unique|BQ|50,00 €|"_s);
  {
    CEcrituresAuto modeles(App());
    ASSERT_TRUE(modeles.Read(1));
    modeles.Rec.SaisieEuro = 0;
    ASSERT_TRUE(modeles.Write());
  }
  CDialogAutoList enFranc(Ui, {});
  EXPECT_EQ(Rangee(Trouve<TableListe>(enFranc, "liste"), 0), u"Modele|Unique|BQ|327,98 F|"_s);
  EXPECT_TRUE(Actif(*Forme(1), "franc")) << "a model keeps the currency of its day";
}

/// What is due is entered when the list is closed.
TEST_F(ListeAuto, FermerCalculeLesEcheances) {
  robot.Attend("DialogAutoList", [](QDialog& f) { Clique(Case(f, "annuler")); });
  CommandeAutomatiques(Ui, {});
  EXPECT_EQ(Lignes(3 + 1).size(), 2u) << "three of the rent, one receipt";
  EXPECT_TRUE(Boite.Questions.empty()) << "nothing is told";
  Regle("2003", "Cloture", "30/04/2003");
  CDialogAutoList f(Ui, {});
  f.setModal(false);
  Montre(f);
  Trouve<TableListe>(f, "liste").SelectionneLigne(0);
  for (const char* nom : {"ajouter", "modifier", "supprimer", "previsions"})
    EXPECT_FALSE(Actif(f, nom)) << nom;
  QTest::keyClick(&Trouve<TableListe>(f, "liste"), Qt::Key_Insert);
  QTest::keyClick(&Trouve<TableListe>(f, "liste"), Qt::Key_Return);
}

TEST_F(ListeAuto, LesPrevisions) {
  CDialogAutoPrevisions f(Ui);
  f.setModal(false);
  Montre(f);
  auto& table = Trouve<TableListe>(f, "liste");
  ASSERT_EQ(table.Modele().NbLignes(), 10) << "March to December, one account";
  EXPECT_EQ(Rangee(table, 0), u"Mars 2003|BQ|50,00 €|2250,00 €|-2200,00 €"_s);
  EXPECT_EQ(Rangee(table, 9), u"Décembre 2003|BQ||700,00 €|-8500,00 €"_s);

  // On paper from the list; the pages on the screen when it is closed.
  QStringList editions;
  robot.Attend("DialogAutoList", [&](QDialog& liste) {
    for (const char* issue : {"imprimante", "apercu"}) {
      robot.Attend("DialogAutoPrevisions", [&](QDialog& previsions) { Clique(Case(previsions, issue)); });
      Clique(Case(liste, "previsions"));
      EXPECT_EQ(editions, QStringList{u"imprimante"_s});
    }
    EXPECT_FALSE(liste.isVisible());
  });
  CommandeAutomatiques(Ui, [&](const QString& issue) { editions += issue; });
  EXPECT_EQ(editions, (QStringList{u"imprimante"_s, u"apercu"_s}));
}

}  // namespace
}  // namespace fenlor::test
