#include "core/btfiles.h"

#include "core/textes.h"
#include "core/valeurs.h"
#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

class FichiersTest : public CabinetDeTest {
 protected:
  void SetUp() override { ASSERT_TRUE(CreeExercice("2003")); }

  std::string Path() { return App().PathExercice; }
  void Pose(CPlan& plan, const char* compte, const char* code, i16 type = Depense) {
    plan.ClearRec();
    PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(compte));
    PoseTexte(plan.Rec->Code, code);
    PoseTexte(plan.Rec->Designation, std::string("Compte ") + code);
    plan.Rec->Type = type;
  }
  /// Every key against every record.
  void Verifie(u16 numFichier) {
    const EtatFichier etat = Magasin().QVVerifie(numFichier);
    for (const std::string& anomalie : etat.anomalies)
      ADD_FAILURE() << etat.nom << ": " << VersUtf8(anomalie);
  }
};

TEST_F(FichiersTest, AjoutRemplaceLeMemeCompte) {
  CPlan plan(App(), Path());
  ASSERT_TRUE(plan.OpenFile());
  const u32 avant = Magasin().QVNumberOfKey(plan.NumCle);
  Pose(plan, "6789", "ANCIEN");
  ASSERT_TRUE(plan.Add());
  EXPECT_NE(plan.GetPos(), 0u);
  Pose(plan, "6789", "NOUVEAU", Recette);
  ASSERT_TRUE(plan.Add());

  EXPECT_EQ(Magasin().QVNumberOfKey(plan.NumCle), avant + 1);
  EXPECT_EQ(LitTexte(LitCompte("6789").Code), "NOUVEAU");
  Pose(plan, "6789", "ANCIEN");
  EXPECT_FALSE(plan.Find(1)) << "the old record's keys went with it";
  EXPECT_EQ(plan.GetPos(), 0u);
  Verifie(FichierComptes);
  EXPECT_TRUE(Boite.Erreurs.empty());
}

TEST_F(FichiersTest, SuppressionEtModification) {
  CPlan plan(App(), Path());
  ASSERT_TRUE(plan.OpenFile());
  EXPECT_TRUE(plan.Delete(0));
  Pose(plan, "6789", "A");
  ASSERT_TRUE(plan.Add());
  const Position position = plan.GetPos();
  plan.Rec->TauxTVA = 5.5;
  EXPECT_TRUE(plan.Update());
  plan.ClearRec();
  ASSERT_TRUE(plan.ReadRec(position));
  EXPECT_EQ(+plan.Rec->TauxTVA, 5.5);

  Pose(plan, "1", "autre");  // what stands in memory plays no part
  EXPECT_TRUE(plan.Delete(position));
  Verifie(FichierComptes);
  EXPECT_TRUE(Boite.Erreurs.empty());

  EXPECT_FALSE(plan.Delete(position) || plan.ReadRec(position));
  plan.Position = 0;
  EXPECT_FALSE(plan.Update());
  ASSERT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3049, 3049, 3049}));
  EXPECT_EQ(Boite.Erreurs[0].texte,
            "Suppression de l'enregistrement impossible.\nFichier = COMPTES\nErreur = " +
                std::to_string(ErrPosition));
  EXPECT_TRUE(Boite.Erreurs[1].texte.starts_with("LECTURE"));
  EXPECT_TRUE(Boite.Erreurs[2].texte.starts_with("ECRITURE"));

  plan.Erreur(ENOSPC, MessageLecture);
  EXPECT_TRUE(
      Boite.Erreurs.back().texte.ends_with("Erreur = 28\nAucun espace disponible sur le p\xE9riph\xE9rique"));
}

TEST_F(FichiersTest, PlusieursObjets) {
  CPlan un(App(), Path()), deux(App(), Path());
  ASSERT_TRUE(un.OpenFile());
  ASSERT_TRUE(deux.OpenFile());
  EXPECT_EQ(App().NbOuvert[FichierComptes], 2u);
  un.CloseFile();
  EXPECT_TRUE(deux.First(0));
  {
    CPlan trois(App(), Path());
    ASSERT_TRUE(trois.OpenFile());
    ASSERT_TRUE(trois.OpenFile());
    EXPECT_EQ(trois.NbOuvertures, 2u);
  }
  EXPECT_EQ(App().NbOuvert[FichierComptes], 1u);
  EXPECT_TRUE(deux.Find(0));

  CPlan ailleurs(App(), Dossier() + "/cabinet");
  Boite.Oublie();
  EXPECT_FALSE(ailleurs.OpenFile());  // never the wrong directory's file
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3011});
  deux.CloseFile();
  deux.CloseFile();
  EXPECT_EQ(deux.NbOuvertures, 0u);
  EXPECT_EQ(App().NbOuvert[FichierComptes], 0u);
}

TEST_F(FichiersTest, ClesDoublesDesBanques) {
  CBanques banques(App(), Path());
  ASSERT_TRUE(banques.OpenFile());
  std::vector<Position> positions;
  for (const char* libelle : {"un", "deux", "trois"}) {
    banques.ClearRec();
    PoseTexte(banques.Rec->Compte, "5120000000");
    PoseTexte(banques.Rec->Libelle, libelle);
    banques.Rec->Date = FaitDate(3, 2, 2003);
    banques.Rec->MontantEuro = 10;
    ASSERT_TRUE(banques.Add());
    positions.push_back(banques.GetPos());
  }
  EXPECT_EQ(Magasin().QVNumberOfKey(banques.NumCle), 3u);
  PoseTexte(banques.Rec->Libelle, "");
  ASSERT_TRUE(banques.Find(0));
  EXPECT_STREQ(banques.Rec->Libelle, "un");
  EXPECT_TRUE(banques.Delete(positions[1]));
  ASSERT_TRUE(banques.Find(1));
  ASSERT_TRUE(banques.Next(1));
  EXPECT_STREQ(banques.Rec->Libelle, "trois");
  EXPECT_FALSE(banques.Next(1));

  banques.Rec->Date = FaitDate(2, 2, 2003);
  EXPECT_FALSE(banques.Find(0));  // browsing reaches another day
  EXPECT_EQ(banques.GetPos(), 0u);
  Verifie(FichierBanques);
  EXPECT_TRUE(Boite.Erreurs.empty());
}

TEST_F(FichiersTest, AutreTamponEtFichierFerme) {
  CPlan plan(App(), Path());
  Plan autre{};
  plan.SetRec(&autre);
  PoseTexte(autre.Compte, "5120000000");
  EXPECT_FALSE(plan.Find(0));  // told: the object has not opened it
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3049});
  ASSERT_TRUE(plan.OpenFile());
  ASSERT_TRUE(plan.Find(0));
  EXPECT_STREQ(autre.Code, "BQ");
  plan.SetRec(nullptr);
  EXPECT_EQ(plan.Rec, plan.GetRec());
  EXPECT_STREQ(plan.Rec->Compte, "");
  EXPECT_EQ(plan.MakeKey(9), "");
}

TEST_F(FichiersTest, ClesEnDefaut) {
  CPlan plan(App(), Path());
  ASSERT_TRUE(plan.OpenFile());
  const u32 avant = Magasin().QVNumberOfKey(plan.NumCle);
  Pose(plan, "6789", "A");
  ASSERT_TRUE(Magasin().QVAddKey(plan.NumCle + 1, plan.MakeKey(1), 1));  // somebody else's
  EXPECT_FALSE(plan.Add());
  EXPECT_EQ(Magasin().QVNumberOfKey(plan.NumCle), avant);  // nothing of it stays
  ASSERT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3049});
  EXPECT_TRUE(Boite.Erreurs[0].texte.starts_with("Ajout de la clé 1 impossible.\n"_w));
  ASSERT_TRUE(Magasin().QVDelDupKey(plan.NumCle + 1, plan.MakeKey(1), 1));

  ASSERT_TRUE(plan.Add());
  Boite.Oublie();
  ASSERT_TRUE(Magasin().QVDelDupKey(plan.NumCle + 3, plan.MakeKey(3), plan.GetPos()));
  EXPECT_TRUE(plan.Delete(plan.GetPos()));  // a key that is missing is told, the rest goes
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3049});
  Verifie(FichierComptes);
}

}  // namespace
}  // namespace fenlor::test
