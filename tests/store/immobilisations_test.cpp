
#include "outils/cabinetdetest.h"
#include "store/definitions.h"

namespace fenlor::test {
namespace {

class Immobilisations : public CabinetDeTest {
 protected:
  static Immobilisation Bien(u32 numero, const char* designation = "Bureau") {
    Immobilisation rec{};
    rec.Numero = numero;
    rec.DateAchat = FaitDate(15, 3, 2003);
    PoseTexte(rec.Designation, designation);
    return rec;
  }
  Position Trouve(u32 numero, Immobilisation* rec = nullptr) {
    const u32 poignee = Magasin().OpenImmobilisations({});
    const Position position = Magasin().QVFindKey(94, MakeImmobilisationsKey2(numero));
    if (rec != nullptr && position != 0) {
      EXPECT_TRUE(Magasin().QVReadRec(FichierImmo, position, rec));
    }
    EXPECT_TRUE(Magasin().CloseImmobilisations(poignee));
    return position;
  }
};

TEST_F(Immobilisations, UnNumeroNeRevientJamais) {
  EXPECT_EQ(Magasin().GetFreeImmobilisationsID({}), 1u);
  ASSERT_TRUE(Magasin().WriteImmobilisations(Bien(1)));
  ASSERT_TRUE(Magasin().WriteImmobilisations(Bien(7)));
  // The file counts, even when nobody noted the number.
  EXPECT_EQ(Magasin().GetFreeImmobilisationsID({}), 8u);
  ASSERT_TRUE(Magasin().DeleteImmobilisations(Trouve(7)));
  EXPECT_EQ(Magasin().GetFreeImmobilisationsID({}), 8u);
  ASSERT_TRUE(Magasin().WriteLastImmobilisationsID(12));
  ASSERT_TRUE(Magasin().WriteLastImmobilisationsID(3));
  ASSERT_TRUE(Rouvre());
  EXPECT_EQ(Magasin().GetFreeImmobilisationsID({}), 13u);
  EXPECT_EQ(Magasin().Reglages().Lit("IMMO", "Dernier"), "12");
}

TEST_F(Immobilisations, LesNumerosImpossiblesSontRefuses) {
  EXPECT_FALSE(Magasin().WriteImmobilisations(Bien(0)));
  EXPECT_FALSE(Magasin().WriteImmobilisations(Bien(0xFFFFFFFF)));
  EXPECT_EQ(Magasin().QVFileErrorCode(), ErrValeur);
  EXPECT_FALSE(Magasin().WriteLastImmobilisationsID(0xFFFFFFFF));
  ASSERT_TRUE(Magasin().WriteImmobilisations(Bien(0xFFFFFFFE)));
  EXPECT_EQ(Magasin().GetFreeImmobilisationsID({}), 0u);
  EXPECT_EQ(Magasin().QVFileErrorCode(), ErrCompteurImmo);
}

TEST_F(Immobilisations, EcrireLeMemeNumeroRemplace) {
  ASSERT_TRUE(Magasin().WriteImmobilisations(Bien(1, "Bureau")));
  Immobilisation rec = Bien(1, "Fauteuil");
  rec.DateAchat = FaitDate(1, 1, 2001);
  ASSERT_TRUE(Magasin().WriteImmobilisations(rec));
  Immobilisation lu{};
  ASSERT_NE(Trouve(1, &lu), 0u);
  EXPECT_EQ(LitTexte(lu.Designation), "Fauteuil");
  const u32 poignee = Magasin().OpenImmobilisations({});
  EXPECT_EQ(Magasin().QVNumberOfKey(93), 1u);
  EXPECT_EQ(Magasin().QVNumberOfKey(94), 1u);
  EXPECT_TRUE(Magasin().QVVerifie(FichierImmo).anomalies.empty());
  EXPECT_TRUE(Magasin().CloseImmobilisations(poignee));
  EXPECT_FALSE(Magasin().DeleteImmobilisations(99));
}

TEST_F(Immobilisations, AmortissementsReels) {
  Amortissement rec{};
  rec.Numero = 3;
  rec.Annee = 2003;
  rec.ReelEuro = 120;
  EXPECT_EQ(Magasin().ReadAmortissements(rec), 0u);
  ASSERT_TRUE(Magasin().WriteAmortissements(rec));
  rec.ReelEuro = 130;
  ASSERT_TRUE(Magasin().WriteAmortissements(rec));
  rec.Annee = 2004;
  ASSERT_TRUE(Magasin().WriteAmortissements(rec));
  Amortissement lu{};
  lu.Numero = 3;
  lu.Annee = 2003;
  const Position position = Magasin().ReadAmortissements(lu);
  ASSERT_NE(position, 0u);
  EXPECT_EQ(+lu.ReelEuro, 130);
  ASSERT_TRUE(Magasin().DeleteAmortissements(position));
  EXPECT_EQ(Magasin().ReadAmortissements(lu), 0u);
  lu.Annee = 2004;
  EXPECT_NE(Magasin().ReadAmortissements(lu), 0u);
  for (const auto& [numero, annee] : {std::pair<u32, u32>{0, 2003}, {3, 0}}) {
    rec.Numero = numero;
    rec.Annee = annee;
    EXPECT_FALSE(Magasin().WriteAmortissements(rec));
  }
}

TEST_F(Immobilisations, TablesDegressives) {
  const struct {
    Date achat;
    u32 indice;
    f64 duree, coefficient, taux;
  } cas[] = {{FaitDate(31, 1, 1996), 1, 3, 1.25, 41.66},    {FaitDate(1, 2, 1996), 1, 3, 2.5, 82.33},
             {FaitDate(31, 1, 1997), 4, 6, 6, 50},          {FaitDate(1, 2, 1997), 4, 6, 1.75, 28.16},
             {FaitDate(15, 3, 2003), 5, 6.66, 2.25, 33.75}, {FaitDate(15, 3, 2003), 10, 20, 2.25, 11.25},
             {FaitDate(1, 6, 1996), 10, 20, 3.5, 17.5}};
  TauxDegressif rec{};
  for (const auto& c : cas) {
    ASSERT_TRUE(Magasin().ReadTauxDegressif(c.achat, c.indice, rec));
    EXPECT_EQ(+rec.Duree, c.duree);
    EXPECT_EQ(+rec.Coefficient, c.coefficient);
    EXPECT_EQ(+rec.TauxAnnuel, c.taux);
  }
  EXPECT_FALSE(Magasin().ReadTauxDegressif(FaitDate(15, 3, 2003), 0, rec));
  EXPECT_FALSE(Magasin().ReadTauxDegressif(FaitDate(15, 3, 2003), 11, rec));
  for (const Date achat : {FaitDate(15, 3, 2003), FaitDate(15, 3, 1996)}) {
    f64 precedente = 0;
    for (u32 i = 1; Magasin().ReadTauxDegressif(achat, i, rec); ++i) {
      EXPECT_GT(+rec.Duree, precedente);
      precedente = rec.Duree;
    }
  }
}

}  // namespace
}  // namespace fenlor::test
