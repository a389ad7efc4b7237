
#include "master/variables.h"
#include "master/rubriquesdetest.h"

namespace fenlor::test {
namespace {

class Variables : public RubriquesDeTest {};

TEST_F(Variables, LesEcrituresDUneVariable) {
  Installe();
  ASSERT_EQ(Enregistre(Fiche("Z3", "23A+&ESSAI")), "");
  ASSERT_EQ(Enregistre(Fiche("Z4", "&ESSAI")), "");
  ASSERT_EQ(Enregistre(Fiche("Z5", "&ESSAI2")), "");
  const char* const variable = "&ESSAI";
  Affecte("6132", "Z3");
  Affecte("6063", "Z4");
  Affecte("6154", "Z5");
  EXPECT_EQ(CompteEcrituresVariable(App(), variable), 0u) << "accounts without entries";
  const u32 loyer = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 100));
  const u32 achat = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6063", 119.6));
  const u32 autre = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6154", 50));
  ASSERT_TRUE(loyer && achat && autre);
  // One entry on accounts of both headings counts once.
  LigneODSaisie debit, credit;
  debit.compte = test::Long("6132");
  debit.debit = 30;
  credit.compte = test::Long("6063");
  credit.credit = 30;
  const u32 od = EnregistreLesLignes({debit, credit});
  ASSERT_NE(od, 0u);
  ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, achat, 1));
  EXPECT_EQ(CompteEcrituresVariable(App(), variable), 3u);
  EXPECT_EQ(CompteEcrituresVariable(App(), "&AMORT"), 0u);
  const u64 synchros = Magasin().NbSynchros();
  ASSERT_FALSE(SupprimeEcrituresVariable(App(), variable));
  EXPECT_EQ(Magasin().NbSynchros() - synchros, 1u) << "one unit of work";
  EXPECT_EQ(CompteEcrituresVariable(App(), variable), 0u);
  for (const u32 mouvement : {loyer, achat, od}) EXPECT_THAT(Lignes(mouvement), IsEmpty());
  EXPECT_FALSE(Lignes(autre).empty());
  EXPECT_EQ(+LitCompte("6132").DebitEuro, 0);
  EXPECT_NEAR(LitCompte("512").CreditEuro, 50, 0.001);
}

TEST_F(Variables, LesRubriquesQueLaFormuleAdditionne) {
  Installe();
  FicheRubrique manuelle = Fiche("Z5", "Z6");
  manuelle.manuel = true;
  for (const FicheRubrique& fiche : {Fiche("Z1", "Z2-Z3+&ESSAI+Z5"), Fiche("Z2", "Z4-Z1X+Z4"), Fiche("Z3"),
                                     Fiche("Z4"), manuelle, Fiche("Z6")})
    ASSERT_EQ(Enregistre(fiche), "") << fiche.code;
  const char* const comptes[] = {"6132", "6063", "6154", "706"};
  const struct {
    const char* rubrique;
    bool ajoutee;
  } cas[] = {{"Z2", true}, {"Z3", false}, {"Z4", true}, {"Z6", false}};
  u32 attendues = 0;
  for (std::size_t i = 0; i < std::size(cas); ++i) {
    Affecte(comptes[i], cas[i].rubrique);
    CabinetMedical::Enregistre(Ecriture(i == 3 ? JournalRecettes : JournalDepenses, comptes[i], 100));
    attendues += cas[i].ajoutee;
    EXPECT_EQ(CompteEcrituresVariable(App(), "&ESSAI"), attendues) << cas[i].rubrique;
  }
}

}  // namespace
}  // namespace fenlor::test
