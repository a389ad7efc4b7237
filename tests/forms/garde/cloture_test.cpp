
#include "core/erreursexercice.h"
#include "forms/garde/dialogclotureexercice.h"
#include "forms/journal/formesjournal.h"
#include "forms/session/sheetproperties.h"
#include "garde/sceau.h"
#include "garde/textes.h"
#include "ui/editeurs.h"

namespace fenlor::test {
namespace {

class FormeCloture : public test::FormesJournal {
 protected:
  /// The command, with answers to what OK asks.
  void Commande(const std::vector<std::vector<int>>& essais) {
    Cadre.Appels.clear();
    Boite.Oublie();
    robot.Attend("DialogClotureExercice", [&](QDialog& f) {
      EXPECT_EQ(Trouve<Lecture>(f, "exercice").text(), u"2003"_s);
      EXPECT_EQ(Trouve<Lecture>(f, "debut").text(), u"01/01/2003"_s);
      EXPECT_EQ(Trouve<Lecture>(f, "fin").text(), u"31/12/2003"_s);
      EXPECT_EQ(Trouve<Lecture>(f, "date").text(), u"15/03/2003"_s);
      for (const std::vector<int>& reponses : essais) {
        ASSERT_TRUE(f.isVisible()) << "a refusal keeps it";
        Boite.Reponses.assign(reponses.begin(), reponses.end());
        Clique(test::Bouton(f, u"Clôture"_s));
      }
      if (f.isVisible()) f.reject();
    });
    CommandeCloture(Ui);
  }
};

TEST_F(FormeCloture, FermeLExerciceOuLeLaisseTelQuel) {
  const u32 recette = Enregistre(Ecriture(JournalRecettes, "706", 20));
  Commande({{RepNon}, {RepOui}});
  EXPECT_EQ(Cadre.Appels, (std::vector<std::string>{"Sauve", "FermeToutes", "Restaure", "MontreExercice"}));
  ASSERT_EQ(Boite.Erreurs.size(), 1u);
  EXPECT_EQ(Boite.Erreurs[0].texte,
            "La cloture de l'exercice 2003 est impossible ! Toutes les écritures ne sont pas validées."_w);
  EXPECT_EQ(App().NomExercice, "2003");
  ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, recette, 1));
  Commande({{RepOui, RepOui}});
  EXPECT_EQ(Boite.NumerosQuestions(),
            (std::vector<unsigned>{QuestionClotureRecalcul, QuestionClotureNonRapprochees}));
  EXPECT_EQ(App().NomExercice, "");
  EXPECT_TRUE(App().Reglages.IsExerciceCloture("2003"));
  EXPECT_EQ(Cadre.Appels.back(), "MontreExercice");
  ASSERT_TRUE(OuvreExercice("2003"));
  Boite.Oublie();
  CommandeCloture(Ui);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrExerciceCloture});
}

TEST_F(FormeCloture, LesProprietesDisentSiLeSceauTient) {
  ASSERT_TRUE(App().Reglages.EcritIni("Activite", "Exercice", "2003"));
  Regle("2003", "TVA", "Non");
  {
    CSheetProperties ouvert(Ui);
    Montre(ouvert);
    EXPECT_EQ(Lu(ouvert, "debut") + Lu(ouvert, "fin"), u"01/01/200331/12/2003"_s);
    EXPECT_EQ(Lu(ouvert, "tva") + Lu(ouvert, "euro"), u"NonOui"_s);
    EXPECT_NE(Lu(ouvert, "journalTaille"), Lu(ouvert, "total"));
    EXPECT_EQ(ouvert.findChild<QPushButton*>(u"imprimante"_s), nullptr);
  }
  const u32 recette = Enregistre(Ecriture(JournalRecettes, "706", 20));
  ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, recette, 1));
  PropositionCloture proposition;
  ASSERT_FALSE(ProposeCloture(App(), proposition));
  Boite.Reponses = {RepOui, RepOui};
  ASSERT_FALSE(Cloture(App(), proposition));
  CSheetProperties intact(Ui);
  Montre(intact);
  EXPECT_TRUE(Trouve<Lecture>(intact, "sceau").text().startsWith(u"Intact"_s))
      << Trouve<Lecture>(intact, "sceau").text().toStdString();
  Clique(Case(intact, "imprimante"));
  EXPECT_TRUE(intact.AttestationVoulue());
  EXPECT_FALSE(intact.isVisible());
  ChangeLignes(recette, [](Line& ligne) { ligne.MontantEuro += 1; });
  CSheetProperties rompu(Ui);
  Montre(rompu);
  EXPECT_TRUE(Trouve<Lecture>(rompu, "sceau").text().contains(u"JOURNAL"_s));
}

}  // namespace
}  // namespace fenlor::test
