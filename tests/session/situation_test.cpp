#include "session/situation.h"

#include <algorithm>

#include "auto/ecrituresauto.h"
#include "journal/cabinetmedical.h"
#include "master/comptes.h"

namespace fenlor::test {
namespace {

class SituationTest : public CabinetMedical {
 protected:
  void Saisit(i16 journal, const char* compte, f64 ttc, Date date, const char* tresorerie = "512") {
    ASSERT_NE(0u, Enregistre(Ecriture(journal, compte, ttc, tresorerie, date)));
  }
  /// What the accounts of a type come to, by their cumulative fields.
  f64 Solde(i16 type) {
    f64 solde = 0;
    const Ouverture plan(Magasin(), FichierComptes);
    Magasin().QVParcours(FichierComptes, [&](Position, const void* rec) {
      const Plan& compte = *static_cast<const Plan*>(rec);
      if (compte.Type == type) solde += SoldesDe(compte, true).solde;
      return true;
    });
    return solde;
  }
};

TEST_F(SituationTest, LesChiffresSontCeuxDesComptes) {
  Situation s;
  EXPECT_EQ(3209u, LitSituation(App(), s).numero);
  Installe("2002");
  Saisit(JournalRecettes, "706", 30, FaitDate(5, 3, 2002));
  Saisit(JournalDepenses, "6063", 11.96, FaitDate(6, 12, 2002));
  Installe("2003");
  Saisit(JournalRecettes, "706", 100, FaitDate(31, 3, 2003));
  Saisit(JournalRecettes, "706", -20, FaitDate(1, 3, 2003), "531");
  Saisit(JournalRecettes, "7065", 50, FaitDate(2, 4, 2003));  // three fifths of it professional
  Saisit(JournalDepenses, "6063", 119.60, FaitDate(15, 3, 2003));
  Boite.Reponses = {RepOui};
  ASSERT_FALSE(ValideEcriture(App(), Faite.mouvement, true));

  ASSERT_FALSE(LitSituation(App(), s));
  EXPECT_EQ(FaitDate(15, 3, 2003), s.jour);
  EXPECT_EQ(80, s.Mois().recettes);
  EXPECT_EQ(100, s.Mois().depenses) << "without tax";
  EXPECT_EQ(-20, s.Mois().Resultat());
  EXPECT_EQ(30, s.mois[3].recettes);
  EXPECT_EQ(Solde(Recette), s.annee.recettes);
  EXPECT_EQ(-Solde(Depense), s.annee.depenses);
  EXPECT_EQ("2002", s.exerciceAvant);
  EXPECT_EQ(30, s.MoisAvant().recettes);
  EXPECT_EQ(20, s.anneeAvant.Resultat());
  EXPECT_EQ(3u, s.brouillon);
  EXPECT_EQ(0u, s.aRapprocher);
  const auto banque = std::find_if(s.tresorerie.begin(), s.tresorerie.end(),
                                   [](const SoldeTresorerie& t) { return t.compte == Long("512"); });
  ASSERT_NE(banque, s.tresorerie.end());
  EXPECT_NEAR(30.40, banque->livres, 0.001);
  EXPECT_EQ(0, banque->rapproche);

  // A file is open at one place at a time: the year before is that of the last look, or none.
  const Ouverture journal(Magasin(), FichierJournal);
  ASSERT_FALSE(LitSituation(App(), s));
  EXPECT_EQ(30, s.MoisAvant().recettes);
  Situation neuve;
  ASSERT_FALSE(LitSituation(App(), neuve));
  EXPECT_EQ("", neuve.exerciceAvant);
}

TEST_F(SituationTest, LesModelesDesQuatorzeJoursQuiViennent) {
  Installe();
  {
    CEcrituresAuto modeles(App());
    for (const Date prochaine : {FaitDate(14, 3, 2003), FaitDate(29, 3, 2003), FaitDate(30, 3, 2003)}) {
      modeles.Clear();
      modeles.Rec.Numero = 0;
      modeles.Rec.Periodicite = 6;
      modeles.Rec.Date = prochaine;
      ASSERT_TRUE(modeles.Write());
    }
  }
  Situation s;
  ASSERT_FALSE(LitSituation(App(), s));
  EXPECT_EQ(2u, s.echeances);
}

}  // namespace
}  // namespace fenlor::test
