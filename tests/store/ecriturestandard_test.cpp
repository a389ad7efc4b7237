// Entries with several treasury lines.
#include <cstring>

#include "store/livres.h"

namespace fenlor::test {
namespace {

constexpr Date Mars15 = FaitDate(15, 3, 2003);

LineTresor Tresor(const char* compte, f64 euro, i16 mode = PaiementCheque) {
  LineTresor t{};
  PoseTexte(t.Compte, compte);
  t.MontantEuro = euro;
  t.MontantFranc = std::floor(euro * 6.55957 * 100 + 0.5) / 100;
  t.ModePaiement = mode;
  return t;
}

EcrStandard EcritureStandard(QVAPI& magasin, i16 journal, Date date, const char* compte, f64 montant,
                             f64 repartition, f64 taxe, const std::vector<LineTresor>& tresor) {
  const EcrSimple simple = EcritureSimple(journal, date, compte, montant, repartition, taxe);
  EcrStandard rec{};
  std::memcpy(&rec, &simple, offsetof(EcrSimple, CompteTresorerie));
  rec.Genre = GenreStandard;
  std::memcpy(&rec.MontantFranc, &simple.MontantFranc, 16);
  std::memcpy(rec.Compte, &simple.Compte, offsetof(EcrSimple, ModePaiement) - offsetof(EcrSimple, Compte));
  for (u32 i = 0; i < tresor.size(); ++i) EXPECT_TRUE(magasin.SetEcrLineTresor(i, rec, tresor[i]));
  return rec;
}

TEST(EcritureStandard, StandardGardeSesLignesDeTresorerie) {
  Livres livres;
  EcrStandard rec = EcritureStandard(*livres, JournalRecettes, Mars15, "7060000000", 100, 60, 0,
                                     {Tresor("5121000000", 70, PaiementAutre), Tresor("5300000000", 40),
                                      Tresor("5300000000", 0), Tresor("5122000000", -10)});
  const u32 mouvement = livres->AddEcrStandard(livres.Exercice(), rec);
  ASSERT_NE(mouvement, 0u);
  EXPECT_EQ(Decrit(livres.Lignes(mouvement)),
            (std::vector<std::string>{"7060000000 C 60.00/393.57", "1080000000 C 40.00/262.39",
                                      "5121000000 D 70.00/459.17", "5300000000 D 40.00/262.38",
                                      "5122000000 C 10.00/65.60"}));
  EcrStandard relue{};
  ASSERT_EQ(livres->ReadEcrStandard(livres.Exercice(), mouvement, relue), mouvement);
  EXPECT_NE(+relue.LignesTresorerie, +rec.LignesTresorerie);
  ASSERT_EQ(+relue.NbLignesTresorerie, 3u);
  EXPECT_EQ(+relue.MontantEuro, 100);
  EXPECT_EQ(+relue.RepartitionEuro, 60);
  EXPECT_EQ(LitTexte(relue.ComptePerso), "1080000000");
  LineTresor t{};
  ASSERT_TRUE(livres->GetEcrLineTresor(0, relue, t));
  EXPECT_EQ(+t.ModePaiement, PaiementAutre);
  ASSERT_TRUE(livres->GetEcrLineTresor(2, relue, t));
  EXPECT_EQ(+t.MontantEuro, -10);
  EXPECT_FALSE(livres->GetEcrLineTresor(3, relue, t));
  livres->LibereLignes(relue);
  EXPECT_FALSE(livres->GetEcrLineTresor(0, relue, t));
  EXPECT_TRUE(livres->GetEcrLineTresor(0, rec, t));

  EcrSimple simple{};
  EXPECT_EQ(livres->ReadEcrSimple(livres.Exercice(), mouvement, simple), 0u);
  EXPECT_EQ(livres->QVFileErrorCode(), ErrEcritureAbsente);
}

TEST(EcritureStandard, LeTableauDeTresorerieRepartDeZero) {
  Livres livres;
  EcrStandard rec{};
  EXPECT_FALSE(livres->SetEcrLineTresor(1, rec, Tresor("5300000000", 1)));
  EXPECT_TRUE(livres->SetEcrLineTresor(0, rec, Tresor("5300000000", 1)));
  EXPECT_TRUE(livres->SetEcrLineTresor(1, rec, Tresor("5300000000", 2)));
  EXPECT_TRUE(livres->SetEcrLineTresor(0, rec, Tresor("5300000000", 3)));
  EXPECT_EQ(+rec.NbLignesTresorerie, 2u);
  rec.NbLignesTresorerie = 0;
  EXPECT_TRUE(livres->SetEcrLineTresor(0, rec, Tresor("5300000000", 4)));
  LineTresor t{};
  EXPECT_TRUE(livres->GetEcrLineTresor(0, rec, t));
  EXPECT_EQ(+t.MontantEuro, 4);
  EXPECT_FALSE(livres->GetEcrLineTresor(1, rec, t));
}

}  // namespace
}  // namespace fenlor::test
