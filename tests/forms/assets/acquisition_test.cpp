#include "assets/cessions.h"
#include "core/cles.h"
#include "core/erreurssaisie.h"
#include "core/texte.h"
#include "forms/assets/dialogacquisition.h"
#include "forms/assets/dialogcession.h"
#include "forms/assets/formesimmobilisations.h"
#include "ui/textes.h"

namespace fenlor::test {
namespace {

class Acquisition : public FormesImmobilisations {
 protected:
  /// "5,00 ans* 20,00 %": what is shown, lists in brackets, what can be changed with a star.
  static std::string Etat(QDialog& f) {
    QStringList etat;
    for (const auto& [entree, liste] : {std::pair{"duree", "durees"}, {"taux", "lestaux"}}) {
      QWidget& montre = Trouve<QWidget>(f, Trouve<QWidget>(f, liste).isVisibleTo(&f) ? liste : entree);
      EXPECT_NE(Trouve<QWidget>(f, entree).isVisibleTo(&f), Trouve<QWidget>(f, liste).isVisibleTo(&f));
      const auto* choix = qobject_cast<QComboBox*>(&montre);
      etat += (choix ? u'[' + choix->currentText() + u']' : static_cast<QLineEdit&>(montre).text()) +
              (montre.isEnabled() ? u"*"_s : u""_s);
    }
    return etat.join(u' ').toStdString();
  }
  void Remplit(QDialog& f) {
    Tape(Champ(f, "designation"), u"Table"_s);
    Tape(Champ(f, "prix"), u"1196"_s);
  }
};

TEST_F(Acquisition, LaDureeEtLeTauxSeSuivent) {
  CDialogAcquisition f(Ui, NouvelleImmobilisation(App()));
  Montre(f);
  EXPECT_EQ(Etat(f), "10,00 ans* 10,00 %");
  const auto bouton = [](const char* nom) { return [nom](QDialog& g) { Clique(Case(g, nom)); }; };
  const auto tape = [](const char* nom, const char* texte) {
    return [=](QDialog& g) {
      Tape(Champ(g, nom), QString::fromUtf8(texte));
      Va(Champ(g, "designation"));
    };
  };
  const auto rangee = [](const char* nom, int rang) {
    return [=](QDialog& g) { Choisit(Liste(g, nom), rang); };
  };
  const struct {
    std::function<void(QDialog&)> geste;
    const char* etat;
  } table[] = {
      {tape("duree", "5"), "5,00 ans* 20,00 %"},
      {bouton("partaux"), "5,00 ans 20,00 %*"},
      {tape("taux", "30 %"), "3,33 ans 30,00 %*"},
      {bouton("degressif"), "[20,00 ans]* [11,25 %]*"},  // the last row that is not above
      {bouton("parduree"), "[20,00 ans]* [11,25 %]"},
      {rangee("durees", 5), "[8,00 ans]* [28,12 %]"},
      {bouton("exceptionnel"), "1,00 ans 100,00 %"},
      {bouton("lineaire"), "8,00 ans* 12,50 %"},
      {tape("duree", "7"), "7,00 ans* 14,29 %"},
      {bouton("degressif"), "[6,66 ans]* [33,75 %]"},
      {tape("dateAchat", "01/02/1996"), "[6,66 ans]* [52,50 %]"},
      {bouton("lineaire"), "6,66 ans* 15,02 %"},
      {tape("duree", ""), "0,01 ans* 1,00 %"},  // nothing counts as 100
  };
  for (const auto& pas : table) {
    pas.geste(f);
    EXPECT_EQ(Etat(f), pas.etat) << &pas - table;
  }
  // Up and down by half a year, within its limits.
  Tape(Champ(f, "duree"), u"2"_s);
  QTest::keyClick(&Champ(f, "duree"), Qt::Key_Up);
  EXPECT_EQ(Etat(f), "2,50 ans* 40,00 %");
}

TEST_F(Acquisition, LaTaxeProposeLaValeurAmortissable) {
  CDialogAcquisition f(Ui, NouvelleImmobilisation(App()));
  Montre(f);
  auto& taux = Trouve<QComboBox>(f, "tauxTva");
  const auto etat = [&] {
    return Lu(f, "tva") + '|' + Lu(f, "horsTaxe") + '|' + Champ(f, "valeur").text().toStdString() + '|' +
           taux.currentText().toStdString();
  };
  EXPECT_EQ(taux.itemText(0), u"19,60 %"_s);
  EXPECT_EQ(taux.itemText(taux.count() - 1), u"(aucun)"_s);
  Tape(Champ(f, "prix"), u"1196"_s);
  EXPECT_EQ(etat(), "|1196,00 €|1196,00|");
  Tape(taux, u"19,6"_s);
  EXPECT_EQ(etat(), "196,00 €|1000,00 €|1000,00|19,6");
  Tape(Champ(f, "valeur"), u"500"_s);
  EXPECT_EQ(etat(), "196,00 €|1000,00 €|500|19,60 %");
  Choisit(Liste(f, "tauxTva"), taux.count() - 1);
  EXPECT_EQ(etat(), "|1196,00 €|1196,00|(aucun)");
  Va(taux);
  Va(Champ(f, "prix"));
  EXPECT_EQ(taux.currentText(), QString());
  Choisit(Liste(f, "tauxTva"), 0);
  EXPECT_EQ(etat(), "196,00 €|1000,00 €|1000,00|19,60 %");
  // What is no rate stays as it was typed, and is refused as it is left.
  Tape(taux, u"abc"_s);
  Va(Champ(f, "prix"));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrMontantIllisible});
  EXPECT_EQ(taux.currentText() + u' ' + QString::fromStdString(Focus(f)), u"abc tauxTva"_s);
}

TEST_F(Acquisition, EnregistreEtRelit) {
  CDialogAcquisition f(Ui, NouvelleImmobilisation(App()));
  Montre(f);
  EXPECT_EQ(f.windowTitle(), u"Acquisition"_s);
  Remplit(f);
  Choisit(Liste(f, "tauxTva"), 0);
  Clique(Case(f, "degressif"));
  Clique(Case(f, "ok"));
  EXPECT_FALSE(f.isVisible());
  Immobilisation rec = Relue(1).rec;
  EXPECT_EQ(Relue(1).position, f.Derniere());
  EXPECT_EQ(+rec.TVAEuro, 196);
  EXPECT_EQ(+rec.TauxAnnuel, 22.5);
  // A record whose figures have more decimals than are shown stays as it is.
  FicheImmobilisation autre = Relue(1);
  autre.duree = 1.0 / 3;
  autre.type = 0;
  autre.taux = 300.001;
  autre.prix = 0.124;
  autre.rec.Duree = autre.duree;
  autre.rec.TauxAnnuel = autre.taux;
  autre.rec.TypeAmortissement = 0;
  CDialogAcquisition g(Ui, autre);
  Montre(g);
  EXPECT_EQ(g.windowTitle(), u"Modification de : Table"_s);
  Tape(Champ(g, "designation"), u"Divan"_s);
  Clique(Case(g, "ok"));
  rec = Relue(1).rec;
  EXPECT_EQ(LitTexte(rec.Designation), "Divan");
  EXPECT_EQ(+rec.Duree, 1.0 / 3);
  EXPECT_EQ(+rec.PrixEuro, 0.124);
  // Cancelled: nothing of it.
  CDialogAcquisition h(Ui, Relue(1));
  Montre(h);
  Remplit(h);
  Clique(Case(h, "annuler"));
  EXPECT_EQ(Relue(1).designation, "Divan");
}

TEST_F(Acquisition, RefuseASonChamp) {
  const struct {
    const char* champ;
    const char* texte;
    unsigned numero;
  } table[] = {{"dateAchat", "31/02/2003", 3104}, {"prix", "12a", ErrMontantIllisible}};
  for (const auto& cas : table) {
    CDialogAcquisition f(Ui, Bien("Table", "01/02/2002", 1000, "02/02/2003"));
    Montre(f);
    Boite.Oublie();
    Tape(Champ(f, cas.champ), QString::fromUtf8(cas.texte));
    QTest::keyClick(&Champ(f, cas.champ), Qt::Key_Return);
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{cas.numero}) << cas.texte;
    EXPECT_EQ(Focus(f), cas.champ);
    EXPECT_TRUE(f.isVisible());
  }
  EXPECT_EQ(Nombre(), 0u);
}

TEST_F(Acquisition, LeFrancSelonLaDate) {
  CDialogAcquisition f(Ui, NouvelleImmobilisation(App()));
  Montre(f);
  const auto quitte = [&](const char* date) {
    Tape(Champ(f, "dateAchat"), QString::fromUtf8(date));
    Va(Champ(f, "prix"));
    return Case(f, "franc").isEnabled();
  };
  EXPECT_FALSE(quitte("18/02/2002"));
  EXPECT_TRUE(quitte("17/02/2002"));
  Clique(Case(f, "franc"));
  Remplit(f);
  EXPECT_EQ(Lu(f, "horsTaxe"), "1196,00 F");
  Ok(f);
  FicheImmobilisation bien = Relue(1);
  EXPECT_EQ(bien.monnaie, 0);
  CDialogCession cession(Ui, bien.rec);
  Montre(cession);
  Tape(Champ(cession, "date"), u"17/02/2002"_s);
  Tape(Champ(cession, "prix"), u"655"_s);
  Clique(Case(cession, "franc"));
  Ok(cession);
  EXPECT_EQ(+bien.rec.PrixCessionFranc, 655);
}

/// From the form of the asset; from the register the same forms write by themselves.
TEST_F(Acquisition, CedeEtMetAuRebut) {
  CDialogAcquisition f(Ui, NouvelleImmobilisation(App()));
  Montre(f);
  Remplit(f);
  robot.Attend("DialogCession", [&](QDialog& cession) {
    EXPECT_EQ(Lu(cession, "designation") + Lu(cession, "dateAchat"), "Table15/03/2003");
    Clique(Case(cession, "annuler"));
  });
  Clique(Case(f, "cession"));
  EXPECT_TRUE(f.isVisible());
  robot.Attend("DialogCession", [&](QDialog& cession) {
    Tape(Champ(cession, "prix"), u"300"_s);
    Clique(Case(cession, "ok"));
  });
  Clique(Case(f, "cession"));
  EXPECT_FALSE(f.isVisible()) << "saved by that OK";
  EXPECT_TRUE(EstCedee(Relue(1).rec));

  CDialogAcquisition cedee(Ui, Relue(1));
  Montre(cedee);
  Clique(Case(cedee, "rebut"));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3045});
  Boite.Oublie();
  Boite.Reponses = {RepOui};
  robot.Attend("DialogCession", [&](QDialog& cession) { Clique(Case(cession, "supprimer")); });
  Clique(Case(cedee, "cession"));
  EXPECT_EQ(+Relue(1).rec.DateCession, 0u);

  CDialogAcquisition tenue(Ui, Relue(1));
  Montre(tenue);
  robot.Attend("DialogRebut", [&](QDialog& rebut) { Clique(Case(rebut, "ok")); });
  Clique(Case(tenue, "rebut"));
  EXPECT_TRUE(EstRebutee(Relue(1).rec));
  CDialogAcquisition rebutee(Ui, Relue(1));
  Montre(rebutee);
  Clique(Case(rebutee, "cession"));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3044});
}

class Fin : public FormesImmobilisations {};

TEST_F(Fin, RefuseASonChamp) {
  Immobilisation bien = Bien("Table", "01/02/2002", 1000).rec;
  bien.DateAchat = GetDate("01/02/2002");
  const auto essaie = [&](CZNDialog& f, const char* champ, const char* texte, unsigned numero) {
    Montre(f);
    Boite.Oublie();
    Tape(Champ(f, champ), QString::fromUtf8(texte));
    QTest::keyClick(&Champ(f, champ), Qt::Key_Return);
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{numero}) << texte;
    EXPECT_EQ(Focus(f), champ);
    EXPECT_TRUE(f.isVisible());
  };
  CDialogRebut rebut(Ui, bien);
  essaie(rebut, "date", "31/01/2002", 3013);
  CDialogCession cession(Ui, bien);
  essaie(cession, "prix", "-5", ErrMontantBornes);
  EXPECT_EQ(+bien.DateCession, 0u);
}

TEST_F(Fin, SupprimerRendLeBien) {
  Immobilisation bien = Bien("Table", "01/02/2002", 1000).rec;
  bien.DateAchat = GetDate("01/02/2002");
  {
    CDialogRebut neuf(Ui, bien);
    EXPECT_FALSE(Case(neuf, "supprimer").isEnabled());
  }
  bien.DateCession = GetDate("01/02/2003");
  for (const u32 rebut : {0u, 1u}) {
    bien.Rebut = rebut;
    const auto forme = [&]() -> std::unique_ptr<CZNDialog> {
      if (rebut) return std::make_unique<CDialogRebut>(Ui, bien);
      return std::make_unique<CDialogCession>(Ui, bien);
    };
    // Any answer but yes closes the form, and changes nothing.
    Boite.Reponses = {RepNon};
    const std::unique_ptr<CZNDialog> non = forme();
    Montre(*non);
    Clique(Case(*non, "supprimer"));
    EXPECT_FALSE(non->isVisible());
    EXPECT_EQ(non->result(), int{QDialog::Rejected});
    EXPECT_EQ(+bien.DateCession, GetDate("01/02/2003"));
    Boite.Reponses = {RepOui};
    const std::unique_ptr<CZNDialog> oui = forme();
    Montre(*oui);
    if (!rebut) Tape(Champ(*oui, "prix"), u"300"_s);
    Clique(Case(*oui, "supprimer"));
    EXPECT_EQ(oui->result(), int{QDialog::Accepted});
    EXPECT_EQ(+bien.DateCession, 0u);
    EXPECT_EQ(+bien.PrixCessionFranc, 300) << "what was typed is not lost";
    bien.DateCession = GetDate("01/02/2003");
  }
}

}  // namespace
}  // namespace fenlor::test
