#include "auto/modeleauto.h"
#include "auto/textes.h"
#include "forms/auto/dialogautoecheance.h"
#include "forms/journal/formesjournal.h"
#include "ui/tableliste.h"

namespace fenlor::test {
namespace {

class FormeEcheances : public test::FormesJournal {
 protected:
  void Annonce(std::string_view compte, f64 montant) {
    FicheAuto fiche = NouvelleAuto(App());
    fiche.genre = compte[0] == '7' ? JournalRecettes : JournalDepenses;
    fiche.compte = compte;
    fiche.tresorerie = "512";
    fiche.annoncer = true;
    fiche.montants = ChaineMontants(App(), LitCompte(compte), montant);
    ASSERT_FALSE(EnregistreFiche(App(), fiche));
  }
};

TEST_F(FormeEcheances, UneSEnregistreUneSenVa) {
  Annonce("706", 50);
  Annonce("6132", 70);
  robot.Attend("DialogAutoEcheance", [&](QDialog& f) {
    test::VerifieFormulaire(f);
    TableListe& liste = test::Trouve<TableListe>(f, "liste");
    ASSERT_EQ(liste.Modele().NbLignes(), 2);
    EXPECT_EQ(liste.Modele().Champ(0, 3), u"50,00 €"_s);
    EXPECT_EQ(liste.Modele().Champ(1, 4), u"70,00 €"_s);
    EXPECT_FALSE(Actif(f, "supprimer"));
    liste.SelectionneLigne(0);
    Clique(Case(f, "supprimer"));
    EXPECT_EQ(liste.Modele().NbLignes(), 2) << "no was the answer";
    EXPECT_EQ(liste.LignesChoisies(), std::vector<int>{0});
    Boite.Reponses = {RepOui};
    Clique(Case(f, "supprimer"));
    EXPECT_EQ(liste.Modele().NbLignes(), 1);
    EXPECT_FALSE(Actif(f, "supprimer")) << "the selection is gone";
    Ok(f);
  });
  CommandeEcheances(Ui);
  EXPECT_EQ(Lignes(1).size(), 2u);
  EXPECT_TRUE(Lignes(2).empty());
  Boite.Oublie();
  CommandeEcheances(Ui);
  EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{MessageSansEcheance});
  EXPECT_EQ(robot.Vues.size(), 1u);
}

}  // namespace
}  // namespace fenlor::test
