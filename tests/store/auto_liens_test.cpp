
#include <cstring>
#include <set>

#include "outils/cabinetdetest.h"
#include "store/definitions.h"

namespace fenlor::test {
namespace {

constexpr Date QuinzeMars = FaitDate(15, 3, 2003);

class EcrituresAutomatiques : public CabinetDeTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CreeExercice("2003"));
    m_contexte = Magasin().OpenEcrituresAuto({});
    ASSERT_NE(m_contexte, 0u);
  }
  void TearDown() override { EXPECT_TRUE(Magasin().CloseEcrituresAuto(m_contexte)); }

  u32 Ajoute(const std::string& libelle) {
    EcrituresAuto rec{};
    PoseTexte(rec.Libelle, libelle);
    EXPECT_TRUE(Magasin().WriteEcrituresAuto(rec, m_contexte));
    EXPECT_TRUE(Magasin().FlushEcrituresAuto(m_contexte));
    return rec.Numero;
  }
  /// Labels in list order, as a program walks them: from 1 to the first that fails.
  std::string Liste() {
    std::string texte;
    EcrituresAuto rec{};
    for (u32 i = 1; Magasin().ReadEcrituresAuto(i, rec, m_contexte); ++i) {
      EXPECT_EQ(+rec.Numero, i);
      texte += LitTexte(rec.Libelle);
    }
    EXPECT_EQ(texte.size(), Magasin().GetEcrituresAutoRec(m_contexte));
    std::set<u32> numeros;
    EXPECT_TRUE(Magasin().QVParcours(FichierAuto, [&](Position, const void* octets) {
      u32 numero = 0;
      std::memcpy(&numero, octets, sizeof numero);
      return numeros.insert(numero).second;
    }));
    EXPECT_TRUE(numeros.empty() || (*numeros.begin() == 1 && *numeros.rbegin() == texte.size()))
        << "in the file";
    return texte;
  }

  u32 m_contexte = 0;
};

TEST_F(EcrituresAutomatiques, LesNumerosSeSuiventToujours) {
  for (const char* libelle : {"a", "b", "c", "d", "e"}) Ajoute(libelle);
  EXPECT_EQ(Liste(), "abcde");
  ASSERT_TRUE(Magasin().DeleteEcrituresAuto(2, m_contexte));
  ASSERT_TRUE(Magasin().DeleteEcrituresAuto(1, m_contexte));
  EXPECT_EQ(Liste(), "cde");
  // Freed slots are used again; the list keeps the order of entering.
  EXPECT_EQ(Ajoute("f"), 4u);
  EXPECT_EQ(Ajoute("g"), 5u);
  EXPECT_EQ(Liste(), "cdefg");
  EcrituresAuto rec{};
  ASSERT_TRUE(Magasin().ReadEcrituresAuto(2, rec, m_contexte));
  PoseTexte(rec.Libelle, "D");
  ASSERT_TRUE(Magasin().WriteEcrituresAuto(rec, m_contexte));
  EXPECT_EQ(Liste(), "cDefg");
  EXPECT_EQ(Magasin().Reglages().Lit("2003", "Ecritures automatiques"), "AUTO1,AUTO2,AUTO3,AUTO4,AUTO5");

  for (const u32 absent : {0u, 6u}) {
    EXPECT_FALSE(Magasin().ReadEcrituresAuto(absent, rec, m_contexte));
    EXPECT_FALSE(Magasin().DeleteEcrituresAuto(absent, m_contexte));
  }
  rec.Numero = 9;
  EXPECT_FALSE(Magasin().WriteEcrituresAuto(rec, m_contexte));
  EXPECT_EQ(Liste(), "cDefg");
}

TEST_F(EcrituresAutomatiques, UneListeVideSEcritVide) {
  Ajoute("a");
  ASSERT_TRUE(Magasin().DeleteEcrituresAuto(1, m_contexte));
  ASSERT_TRUE(Magasin().FlushEcrituresAuto(m_contexte));
  EXPECT_EQ(Liste(), "");
  EXPECT_EQ(Magasin().Reglages().Lit("2003", "Ecritures automatiques"), "");
}

class Liens : public CabinetDeTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CreeExercice("2003"));
    m_recettes = Magasin().OpenRecettes({});
    m_depenses = Magasin().OpenDepenses({});
    ASSERT_TRUE(m_recettes != 0 && m_depenses != 0);
  }
  void TearDown() override {
    EXPECT_TRUE(Magasin().CloseRecettes(m_recettes) && Magasin().CloseDepenses(m_depenses));
  }

  static RecetteLiee Recette(i32 a) {
    RecetteLiee rec{};
    rec.LienPoste = 2;
    rec.LienA = a;
    rec.LienB = 0x10000u + 5;
    rec.LienId = 100 + static_cast<u32>(a);
    rec.Date = QuinzeMars;
    return rec;
  }
  static DepenseLiee Depense(i32 a, const char* tiers) {
    DepenseLiee rec{};
    rec.LienA = a;
    rec.LienB = 5;
    rec.LienId = 100 + static_cast<u32>(a);
    rec.Date = QuinzeMars;
    PoseTexte(rec.Tiers, tiers);
    return rec;
  }
  template <class Rec>
  u32 Ecriture(const Rec& lien, i16 journal) {
    EcrSimple rec = Simple(journal, QuinzeMars, journal == JournalRecettes ? "706" : "6064", 20, "512");
    rec.LienA = lien.LienA;
    rec.LienB = lien.LienB;
    rec.LienId = lien.LienId;
    rec.LienApplication = 4;
    if constexpr (std::is_same_v<Rec, RecetteLiee>)
      rec.LienPoste = lien.LienPoste;
    else
      std::memcpy(rec.Tiers, lien.Tiers, sizeof rec.Tiers);
    return Magasin().AddEcrSimple(App().PathExercice, rec);
  }

  u32 m_recettes = 0, m_depenses = 0;
};

TEST_F(Liens, LectureParChaqueCle) {
  for (const i32 a : {-1, 3, 2}) ASSERT_NE(Magasin().WriteRecettes(Recette(a)), 0u);
  RecetteLiee rec = Recette(3);
  rec.LienId = 0;
  EXPECT_NE(Magasin().ReadRecettes(rec, 2), 0u);
  EXPECT_EQ(+rec.LienId, 103u);
  RecetteLiee parId{};
  parId.LienId = 102;
  EXPECT_NE(Magasin().ReadRecettes(parId, 0), 0u);
  EXPECT_EQ(+parId.LienA, 2);
  RecetteLiee parDate{};
  parDate.Date = QuinzeMars;
  EXPECT_NE(Magasin().ReadRecettes(parDate, 1), 0u);
  EXPECT_EQ(+parDate.LienA, -1);
  RecetteLiee absente = Recette(9);
  EXPECT_EQ(Magasin().ReadRecettes(absente, 2), 0u);
  EXPECT_EQ(Magasin().ReadRecettes(absente, 3), 0u);

  // The same link replaces.
  RecetteLiee autre = Recette(3);
  autre.LienId = 999;
  ASSERT_NE(Magasin().WriteRecettes(autre), 0u);
  EXPECT_EQ(Magasin().QVNumberOfKey(100), 3u);
  EXPECT_TRUE(Magasin().QVVerifie(FichierRecettes).anomalies.empty());

  ASSERT_NE(Magasin().WriteDepenses(Depense(3, "EDF")), 0u);
  ASSERT_NE(Magasin().WriteDepenses(Depense(3, "GDF")), 0u);
  DepenseLiee depense = Depense(3, "GDF");
  depense.LienId = 0;
  EXPECT_NE(Magasin().ReadDepenses(depense, 0), 0u);
  EXPECT_EQ(+depense.LienId, 103u);

  // The high word of LienB tells receipts from expenses.
  RecetteLiee sansPoids = Recette(3);
  sansPoids.LienB = 5;
  EXPECT_EQ(Magasin().WriteRecettes(sansPoids), 0u);
  DepenseLiee avecPoids = Depense(3, "EDF");
  avecPoids.LienB = 0x10000;
  EXPECT_EQ(Magasin().WriteDepenses(avecPoids), 0u);
}

TEST_F(Liens, SupprimerEmporteLEcritureLiee) {
  const u32 libre = AjouteSimple(JournalRecettes, QuinzeMars, "706", 50, "512");
  const u32 liee = Ecriture(Recette(1), JournalRecettes), autre = Ecriture(Recette(2), JournalRecettes);
  const u32 edf = Ecriture(Depense(1, "EDF"), JournalDepenses),
            gdf = Ecriture(Depense(1, "GDF"), JournalDepenses);
  ASSERT_TRUE(libre && liee && autre && edf && gdf);
  const Position recette = Magasin().WriteRecettes(Recette(1));
  const Position depense = Magasin().WriteDepenses(Depense(1, "GDF"));
  const u64 synchros = Magasin().NbSynchros();
  ASSERT_TRUE(Magasin().DeleteRecettes(recette));
  EXPECT_EQ(Magasin().NbSynchros(), synchros + 1);
  ASSERT_TRUE(Magasin().DeleteDepenses(depense));
  EXPECT_EQ(Magasin().GetMouvementsLinesCount(liee), 0u);
  EXPECT_EQ(Magasin().GetMouvementsLinesCount(gdf), 0u);
  for (const u32 reste : {libre, autre, edf}) EXPECT_EQ(Magasin().GetMouvementsLinesCount(reste), 2u);
  EXPECT_EQ(+LitCompte("706").CreditEuro, 70);
  RecetteLiee rec = Recette(1);
  EXPECT_EQ(Magasin().ReadRecettes(rec, 2), 0u);
  EXPECT_FALSE(Magasin().DeleteRecettes(recette));
}

TEST_F(Liens, SansEcritureLieeLaFicheSeuleDisparait) {
  const u32 libre = AjouteSimple(JournalRecettes, QuinzeMars, "706", 50, "512");
  const Position recette = Magasin().WriteRecettes(Recette(1));
  ASSERT_TRUE(Magasin().DeleteRecettes(recette));
  EXPECT_EQ(Magasin().GetMouvementsLinesCount(libre), 2u);
}

}  // namespace
}  // namespace fenlor::test
