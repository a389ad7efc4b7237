#include <QScrollBar>
#include <QWheelEvent>

#include "assets/cessions.h"
#include "assets/detail.h"
#include "core/cles.h"
#include "core/texte.h"
#include "forms/assets/dialogamortissements.h"
#include "forms/assets/formesimmobilisations.h"
#include "forms/assets/immolist.h"
#include "forms/assets/immoview.h"

namespace fenlor::test {
namespace {

class Registre : public FormesImmobilisations {
 protected:
  std::unique_ptr<CImmoView> Ouvre(QSize taille = {900, 400}) {
    auto vue = std::make_unique<CImmoView>(Ui);
    vue->resize(taille);
    vue->Charge();
    MontreFenetre(*vue);
    return vue;
  }
  static QString Titre(CImmoView& vue, ChampRegistre champ) {
    return vue.Liste()
        .Modele()
        .headerData(static_cast<int>(champ), Qt::Horizontal, Qt::DisplayRole)
        .toString();
  }
  static std::string Cellule(CImmoView& vue, int ligne, ChampRegistre champ) {
    const ModeleListe& modele = vue.Liste().Modele();
    return modele.index(ligne, static_cast<int>(champ)).data().toString().replace(u'\n', u'/').toStdString();
  }
  static std::vector<std::string> Noms(CImmoView& vue) {
    std::vector<std::string> noms;
    for (int i = 0; i < vue.Liste().Modele().NbLignes(); ++i)
      noms.push_back(Cellule(vue, i, ChampRegistre::Designation));
    return noms;
  }
  static std::string Choisi(CImmoView& vue) {
    return Cellule(vue, vue.Liste().LigneChoisie(), ChampRegistre::Designation);
  }
  static void Touche(CImmoView& vue, Qt::Key touche, Qt::KeyboardModifiers avec = Qt::NoModifier) {
    QTest::keyClick(&vue.Liste(), touche, avec);
  }
  static void Tourne(CImmoView& vue, int delta) {
    const QPointF centre = vue.Liste().viewport()->rect().center();
    QWheelEvent roue(centre, vue.Liste().viewport()->mapToGlobal(centre), {}, {0, delta}, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(vue.Liste().viewport(), &roue);
  }
};

TEST_F(Registre, LesAnneesDefilentSeules) {
  Ajoute(Bien("Divan", "15/03/1990", 1000));
  Ajoute(Bien("Table", "01/01/2000", 1000));
  const auto vue = Ouvre();
  auto& barre = Trouve<QScrollBar>(*vue, "annees");
  const auto annees = [&] {
    return Titre(*vue, ChampRegistre::PremiereAnnee).toStdString() + '-' +
           Titre(*vue, ChampRegistre::DerniereAnnee).right(4).toStdString() + ' ' +
           Cellule(*vue, 1, ChampRegistre::PremiereAnnee) + ' ' +
           Cellule(*vue, 1, ChampRegistre::DerniereAnnee);
  };
  EXPECT_EQ(annees(), "Année 1998-2003  41,67") << "75 days of this year";
  EXPECT_TRUE(barre.isVisible());
  EXPECT_EQ(barre.minimum(), -8);
  EXPECT_EQ(barre.pageStep(), 5);
  const int cote = vue->Liste().horizontalScrollBar()->value();
  Touche(*vue, Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(annees(), "Année 1997-2002  200,00");
  Touche(*vue, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(annees(), "Année 1992-1997  ");
  Touche(*vue, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(annees(), "Année 1990-1995  ") << "the earliest purchase at the left";
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::PremiereAnnee), "158,89");
  Touche(*vue, Qt::Key_Right, Qt::AltModifier);
  Touche(*vue, Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(annees(), "Année 1996-2001  200,00");
  barre.setValue(-1);
  EXPECT_EQ(annees(), "Année 1997-2002  200,00");
  EXPECT_EQ(vue->Liste().horizontalScrollBar()->value(), cote);
  EXPECT_EQ(Choisi(*vue), "Table") << "the last one, when nothing was chosen";
  // The years stay when the register is read anew, as far as there are assets.
  Ajoute(Bien("Lampe", "01/01/2001", 10));
  QApplication::processEvents();
  EXPECT_EQ(Titre(*vue, ChampRegistre::DerniereAnnee), u"Année 2002"_s);
  EXPECT_EQ(Choisi(*vue), "Table");
  // Scrolled sideways, the bar stands over what is seen of the years.
  vue->Liste().horizontalScrollBar()->setValue(vue->Liste().horizontalScrollBar()->maximum());
  const int apres = static_cast<int>(ChampRegistre::DerniereAnnee) + 1;
  EXPECT_LE(std::abs(barre.geometry().right() - vue->Liste().viewport()->x() -
                     vue->Liste().columnViewportPosition(apres)),
            2);
}

TEST_F(Registre, SansAncienNiLigneRienNeDefile) {
  const auto vue = Ouvre();
  EXPECT_TRUE(Trouve<QScrollBar>(*vue, "annees").isHidden());
  EXPECT_FALSE(vue->Disponible(CmdCopier) || vue->Disponible(CmdModifier) ||
               vue->Disponible(CmdDetailAmortissements));
  EXPECT_TRUE(vue->Disponible(CmdAjouter));
  EXPECT_FALSE(vue->Liste().TexteVide().isEmpty());
  Ajoute(Bien("Divan", "15/03/1998", 1000));
  QApplication::processEvents();
  EXPECT_TRUE(Trouve<QScrollBar>(*vue, "annees").isHidden()) << "six years are all there are";
  EXPECT_TRUE(vue->Disponible(CmdCopier));
  vue->Liste().SelectionneLigne(0);
  for (const unsigned commande : {CmdModifier, CmdSupprimer, CmdCession, CmdRebut, CmdDetailAmortissements})
    EXPECT_TRUE(vue->Disponible(commande)) << commande;
}

TEST_F(Registre, DeuxLignesEtLePressePapiers) {
  Ajoute(Bien("Table", "01/01/2003", 100));
  const auto vue = Ouvre();
  const int hauteur = vue->Liste().visualRect(vue->Liste().Modele().index(0, 0)).height();
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::Prix), "100,00");
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::Taux), "") << "an Euro line tells no rate";
  App().AfficherDouble = true;
  Cadre.Note(ReglageMonnaies);
  QApplication::processEvents();
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::Prix), "655,96/100,00");
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::Taux), "L 20,00%");
  EXPECT_EQ(vue->Liste().visualRect(vue->Liste().Modele().index(0, 0)).height(), 2 * hauteur);
  // Also while the first columns are out of sight.
  vue->Liste().horizontalScrollBar()->setValue(vue->Liste().horizontalScrollBar()->maximum());
  Ajoute(Bien("Lampe", "02/01/1990", 10));
  QApplication::processEvents();
  Touche(*vue, Qt::Key_Left, Qt::ControlModifier);
  QApplication::processEvents();
  EXPECT_EQ(vue->Liste().visualRect(vue->Liste().Modele().index(0, 0)).height(), 2 * hauteur);
  vue->Execute(CmdCopier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            u"02/01/1990\tLampe\t10,00\t\t10,00\t10,00\tE\n01/01/2003\tTable\t100,00\t\t100,00\t100,00\tE"_s);
}

TEST_F(Registre, AjouteModifieSupprimeParLeClavier) {
  Ajoute(Bien("Divan", "15/03/1998", 1000));
  Ajoute(Bien("Table", "01/01/2000", 1000));
  const auto vue = Ouvre();
  robot.Attend("DialogAcquisition", [](QDialog& f) {
    Tape(Champ(f, "designation"), u"Autoclave"_s);
    Tape(Champ(f, "dateAchat"), u"01/01/1999"_s);
    QTest::keyClick(&f, Qt::Key_Return);
  });
  vue->Execute(CmdAjouter);
  EXPECT_THAT(Noms(*vue), ElementsAre("Divan", "Autoclave", "Table"));
  EXPECT_EQ(Choisi(*vue), "Autoclave");
  robot.Attend("DialogAcquisition", [](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Modification de : Autoclave"_s);
    Tape(Champ(f, "dateAchat"), u"01/01/1997"_s);
    QTest::keyClick(&f, Qt::Key_Return);
  });
  Touche(*vue, Qt::Key_Return);
  EXPECT_THAT(Noms(*vue), ElementsAre("Autoclave", "Divan", "Table"));
  EXPECT_EQ(Choisi(*vue), "Autoclave") << "where it stands now";
  EXPECT_EQ(Relue(3).designation, "Autoclave") << "under its number";
  Boite.Reponses = {RepNon, RepOui};
  for (const std::size_t reste : {3u, 2u}) {
    vue->Execute(CmdSupprimer);
    EXPECT_EQ(Noms(*vue).size(), reste);
  }
  EXPECT_EQ(Boite.Questions.back().texte, "Suppression de l'aquisition \"Autoclave\" du 01/01/1997 ?");
  QTest::keyClicks(&vue->Liste(), u"T"_s);
  EXPECT_EQ(Choisi(*vue), "Table") << "letters look for a name";
}

TEST_F(Registre, CedeRebuteEtDetaille) {
  Ajoute(Bien("Table", "01/01/2002", 1000));
  const auto vue = Ouvre();
  robot.Attend("DialogCession", [](QDialog& f) {
    Tape(Champ(f, "prix"), u"900"_s);
    QTest::keyClick(&f, Qt::Key_Return);
  });
  vue->Execute(CmdCession);
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::PrixCession) + ' ' + Cellule(*vue, 0, ChampRegistre::Resultat),
            "900,00 141,67");
  vue->Execute(CmdRebut);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3045});
  Boite.Reponses = {RepOui};
  robot.Attend("DialogCession", [](QDialog& f) { Clique(Case(f, "supprimer")); });
  vue->Execute(CmdCession);
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::DateCession), "");
  robot.Attend("DialogRebut", [](QDialog& f) { QTest::keyClick(&f, Qt::Key_Return); });
  vue->Execute(CmdRebut);
  EXPECT_EQ(Cellule(*vue, 0, ChampRegistre::PrixCession) + ' ' + Cellule(*vue, 0, ChampRegistre::Resultat),
            "Rebut -758,33");
  EXPECT_EQ(Choisi(*vue), "Table");
  Boite.Oublie();
  vue->Execute(CmdCession);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3044});
}

TEST_F(Registre, ExerciceClotureRienNeChange) {
  Ajoute(Bien("Table", "01/01/2002", 1000));
  App().Reglages.EcritIniExercice("2003", Texte(CleCloture), "31/12/2003");
  const auto vue = Ouvre();
  vue->Execute(CmdAjouter);
  vue->Execute(CmdSupprimer);
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3056, 3056}));
}

class DetailForme : public FormesImmobilisations {
 protected:
  DetailAmortissements Lit(Position position) {
    DetailAmortissements detail;
    EXPECT_FALSE(LitDetail(App(), position, detail));
    return detail;
  }
  static std::vector<std::string> Reels(QDialog& f) {
    const ModeleListe& modele = Trouve<CZNListCtrl>(f, "lignes").Modele();
    std::vector<std::string> reels;
    for (int i = 0; i < modele.NbLignes(); ++i) reels.push_back(VersUtf8(De1252(modele.Champ(i, 2))));
    return reels;
  }
};

TEST_F(DetailForme, UneAnneeApresLAutre) {
  const FicheImmobilisation bien = Ajoute(Bien("Table", "01/01/2001", 1000));
  const auto tape = [&](QDialog& f, std::function<void(QDialog&)> geste) {
    robot.Attend("DialogAmortissementsLine", std::move(geste));
    QTest::keyClick(&Trouve<CZNListCtrl>(f, "lignes"), Qt::Key_Return);
  };
  {
    CDialogAmortissements f(Ui, Lit(bien.position));
    Montre(f);
    EXPECT_EQ(Trouve<CZNListCtrl>(f, "lignes").LigneChoisie(), 2) << "the last year";
    EXPECT_FALSE(Case(f, "ajouter").isEnabled() || Case(f, "supprimer").isEnabled());
    Trouve<CZNListCtrl>(f, "lignes").SelectionneLigne(0);
    tape(f, [&](QDialog& ligne) {
      EXPECT_EQ(Focus(ligne), "reel");
      EXPECT_EQ(Lu(ligne, "annee") + ' ' + Lu(ligne, "theorique"), "2001 200,00 €");
      EXPECT_FALSE(Case(ligne, "precedent").isEnabled());
      Tape(Champ(ligne, "reel"), u"150"_s);
      Clique(Case(ligne, "suivant"));
      EXPECT_EQ(Lu(ligne, "annee"), "2002");
      Tape(Champ(ligne, "reel"), u"250"_s);
      Clique(Case(ligne, "suivant"));
      EXPECT_FALSE(Case(ligne, "suivant").isEnabled());
      Tape(Champ(ligne, "reel"), u"1"_s);
      Clique(Case(ligne, "annuler"));  // the rows that were passed stay changed
    });
    EXPECT_THAT(Reels(f), ElementsAre("150,00 €", "250,00 €", "200,00 €"));
    Trouve<CZNListCtrl>(f, "lignes").SelectionneLigne(1);
    EXPECT_TRUE(Case(f, "supprimer").isEnabled());
    QTest::keyClick(&Trouve<CZNListCtrl>(f, "lignes"), Qt::Key_Delete);
    EXPECT_THAT(Reels(f), ElementsAre("150,00 €", "200,00 €", "200,00 €"));
    EXPECT_FALSE(Case(f, "supprimer").isEnabled());
    Clique(Case(f, "annuler"));
  }
  EXPECT_FALSE(Lit(bien.position).lignes[0].Corrigee()) << "nothing is written before OK";
  CDialogAmortissements f(Ui, Lit(bien.position));
  Montre(f);
  tape(f, [&](QDialog& ligne) {
    Tape(Champ(ligne, "reel"), u"12a"_s);
    Clique(Case(ligne, "ok"));
    EXPECT_TRUE(ligne.isVisible());
    Tape(Champ(ligne, "reel"), u"100"_s);
    Clique(Case(ligne, "ok"));
  });
  Clique(Case(f, "ok"));
  EXPECT_EQ(Lit(bien.position).lignes[2].reel, 100);
}

}  // namespace
}  // namespace fenlor::test
