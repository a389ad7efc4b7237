#include "core/mouvements.h"

#include "outils/cabinetdetest.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

using test::CabinetDeTest;

class MouvementsTest : public CabinetDeTest {
 protected:
  void SetUp() override { ASSERT_TRUE(CreeExercice("2003")); }

  std::string Path() { return App().PathExercice; }
  u32 Recette(unsigned jour, f64 montant) {
    return AjouteSimple(JournalRecettes, FaitDate(jour, 3, 2003), "7061", montant, "512");
  }
  u32 Depense(unsigned jour, f64 montant) {
    return AjouteSimple(JournalDepenses, FaitDate(jour, 3, 2003), "6064", montant, "512");
  }
  /// An opération diverse of one debit, with a line for the difference.
  void PoseOD(COpDiverses& od, f64 debit) {
    od.Rec.Mouvement = Magasin().GetFreeMouvementsID(Path(), JournalOD);
    od.Rec.Journal = JournalOD;
    od.Rec.Date = FaitDate(9, 3, 2003);
    od.Rec.Ligne = 1;
    od.Rec.SaisieEuro = 1;
    PoseTexte(od.Rec.Libelle, "Régularisation"_w);
    const Plan banque = LitCompte("512");
    Line ligne{};
    ligne.Role = RoleLibre;
    ligne.TypeCompte = banque.Type;
    PoseTexte(ligne.Compte, banque.Compte);
    PoseTexte(ligne.Designation, "Ligne");
    ligne.MontantEuro = debit;
    ASSERT_NE(od.AddLine(ligne), 0u);
  }
};

TEST_F(MouvementsTest, ChaqueEntreeUneFois) {
  const u32 b = Recette(5, 20), a = Recette(4, 30);
  Depense(5, 7);
  CMouvements entrees(App(), Path());
  ASSERT_TRUE(entrees.OpenFile());
  entrees.Rec.Journal = JournalRecettes;
  entrees.Rec.Date = FaitDate(1, 3, 2003);
  std::vector<u32> vues;
  for (bool trouve = entrees.Browse(0); trouve && entrees.Rec.Journal == JournalRecettes;
       trouve = entrees.Next(0))
    vues.push_back(+entrees.Rec.Mouvement);
  EXPECT_EQ(vues, (std::vector<u32>{a, b}));

  while (entrees.Next(0)) continue;
  const u32 dernier = entrees.Rec.Mouvement;
  EXPECT_FALSE(entrees.Next(0));
  EXPECT_EQ(+entrees.Rec.Mouvement, dernier);
}

TEST_F(MouvementsTest, LeParcoursResisteAuxAutres) {
  std::vector<u32> numeros;
  for (unsigned jour = 1; jour <= 6; ++jour) numeros.push_back(Recette(jour, 10 + jour));
  CEcrSimple entrees(App(), Path());
  ASSERT_TRUE(entrees.OpenFile());
  entrees.Rec.Journal = JournalRecettes;
  ASSERT_TRUE(entrees.Browse(0));

  CLines autre(App(), Path());  // another walk on the same key
  ASSERT_TRUE(autre.OpenFile());
  ASSERT_TRUE(autre.First(0));
  ASSERT_TRUE(entrees.Next(0));
  EXPECT_EQ(+entrees.Rec.Mouvement, numeros[1]);

  ASSERT_TRUE(Magasin().RemoveEcrSimple(Path(), numeros[1]));  // the entry the walk stands on
  ASSERT_TRUE(Magasin().RemoveEcrSimple(Path(), numeros[2]));
  ASSERT_TRUE(entrees.Next(0));
  EXPECT_EQ(+entrees.Rec.Mouvement, numeros[3]);
  EXPECT_EQ(+entrees.Rec.MontantEuro, 14);
}

TEST_F(MouvementsTest, LaCleDesComptes) {
  Recette(5, 20);
  AjouteSimple(JournalRecettes, FaitDate(2, 3, 2003), "7061", 30, "530");
  CEcrSimple entrees(App(), Path());
  ASSERT_TRUE(entrees.OpenFile());
  entrees.Rec.Journal = JournalRecettes;
  PoseTexte(entrees.Rec.CompteTresorerie, "5300000000");
  ASSERT_TRUE(entrees.Browse(1));  // account within the journal
  EXPECT_EQ(+entrees.Rec.MontantEuro, 30);
  EXPECT_STREQ(entrees.Rec.CompteTresorerie, "5300000000");
  EXPECT_FALSE(entrees.IsLien());
}

TEST_F(MouvementsTest, ChaqueGenreNeLitQueLeSien) {
  const u32 simple = Recette(5, 20);
  CEcrStandard standard(App(), Path());
  standard.Rec.Journal = JournalDepenses;
  standard.Rec.Date = FaitDate(6, 3, 2003);
  PoseTexte(standard.Rec.Libelle, "Deux banques");
  PoseTexte(standard.Rec.Compte, "6064000000");
  standard.Rec.MontantEuro = standard.Rec.RepartitionEuro = 100;
  for (const auto& [compte, montant] : {std::pair{"5120000000", 60.0}, {"5300000000", 40.0}}) {
    LineTresor ligne{};
    PoseTexte(ligne.Compte, compte);
    ligne.MontantEuro = montant;
    ASSERT_TRUE(Magasin().SetEcrLineTresor(standard.Rec.NbLignesTresorerie, standard.Rec, ligne));
  }
  const u32 numero = standard.AddRec();
  ASSERT_NE(numero, 0u);

  standard.ClearRec();
  EXPECT_FALSE(standard.ReadRec(simple));
  EXPECT_EQ(+standard.Rec.Mouvement, 0u);
  ASSERT_TRUE(standard.ReadRec(numero));
  EXPECT_EQ(+standard.Rec.NbLignesTresorerie, 2u);
  EXPECT_FALSE(standard.ReadRec(simple));
  LineTresor lue{};
  EXPECT_TRUE(Magasin().GetEcrLineTresor(1, standard.Rec, lue));  // the record kept its lines
  EXPECT_EQ(+lue.MontantEuro, 40);

  CEcrSimple ecr(App(), Path());
  EXPECT_FALSE(ecr.ReadRec(numero));
  EXPECT_TRUE(ecr.ReadRec(simple));
  COpDiverses od(App(), Path());
  EXPECT_FALSE(od.ReadRec(simple));
  CMouvements tous(App(), Path());
  EXPECT_TRUE(tous.ReadRec(numero));
  EXPECT_STREQ(tous.Rec.Libelle, "Deux banques");
}

TEST_F(MouvementsTest, LigneDEcart) {
  const struct {
    f64 montant;
    bool euro;
    const char* compte;
    bool credit;
    f64 attenduEuro, attenduFranc;
  } cas[] = {
      {-0.01, true, "7580000000", true, 0.01, 0.07},
      {10, false, "6580000000", false, 1.52, 10},
  };
  for (const auto& c : cas) {
    COpDiverses od(App(), Path());
    PoseOD(od, 10);
    EXPECT_TRUE(od.AddEcart(0, true));
    EXPECT_EQ(Lignes(od.Rec.Mouvement).size(), 1u);
    ASSERT_TRUE(od.AddEcart(c.montant, c.euro));
    const std::vector<Line> lignes = Lignes(od.Rec.Mouvement);
    ASSERT_EQ(lignes.size(), 2u);
    const Line& ecart = lignes[1];
    EXPECT_STREQ(ecart.Compte, c.compte);
    EXPECT_EQ(ecart.Sens != 0, c.credit);
    EXPECT_EQ(+ecart.MontantEuro, c.attenduEuro);
    EXPECT_EQ(+ecart.MontantFranc, c.attenduFranc);
    EXPECT_EQ(+ecart.ModePaiement, PaiementAutre);
    EXPECT_EQ(LitTexte(ecart.Designation), LitTexte(LitCompte(c.compte).Designation));
    EXPECT_EQ(LitTexte(ecart.Libelle), "Régularisation"_w);
    EXPECT_EQ(+ecart.DateLigne, FaitDate(9, 3, 2003));
    EXPECT_EQ(+ecart.Rang, 1u);
  }
}

TEST_F(MouvementsTest, EcartSansCompte) {
  COpDiverses od(App(), Path());
  PoseOD(od, 10);
  for (const char* compte : {"", "758999", "999999"}) {
    ASSERT_TRUE(Magasin().SetCompteEcartCredit(compte));
    EXPECT_FALSE(od.AddEcart(-1, true)) << compte;
    EXPECT_EQ(Lignes(od.Rec.Mouvement).size(), 1u);
  }
}

}  // namespace
}  // namespace fenlor
