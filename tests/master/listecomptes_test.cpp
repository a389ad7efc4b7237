
#include "core/texte.h"
#include "core/valeurs.h"
#include "journal/cabinetmedical.h"
#include "master/comptes.h"

namespace fenlor::test {
namespace {

class ListeComptesTest : public CabinetMedical {
 protected:
  /// An account with figures that tell themselves apart, in both currencies.
  static Plan Compte(std::string_view numero, const char* code, f64 credit, f64 debit) {
    Plan p{};
    PoseTexte(p.Compte, Long(numero));
    PoseTexte(p.Code, code);
    PoseTexte(p.Designation, "Soins | actes");
    PoseTexte(p.Rubrique, "1");
    p.CreditFranc = credit;
    p.DebitFranc = debit;
    p.CreditEuro = credit / 10;
    p.DebitEuro = debit / 10;
    p.RappCreditFranc = 1;
    p.RappDebitEuro = 2;
    p.SoldeInitialFranc = -50;
    p.SoldeInitialEuro = -5;
    p.PersoFranc = 30;
    p.TVAFranc = 20;
    return p;
  }
  std::string Ligne(ListeComptes liste, const Plan& compte) {
    std::string ligne;
    for (const std::string& texte : Cellules(ColonnesComptes(App(), liste), compte))
      ligne += (ligne.empty() ? "" : "|") + texte;
    return ligne;
  }
  std::vector<std::string> Numeros(ListeComptes liste) {
    std::vector<std::string> numeros;
    CPlan plan(App(), App().PathExercice);
    EXPECT_TRUE(plan.OpenFile());
    for (const Position position : PositionsComptes(App(), liste)) {
      EXPECT_TRUE(plan.ReadRec(position));
      numeros.push_back(Magasin().GetShortCompte(LitTexte(plan.Rec->Compte)));
    }
    return numeros;
  }
};

TEST_F(ListeComptesTest, LignesDesFenetres) {
  const Plan compte = Compte("7065", "SOINS", 100, 120.5);
  struct {
    const char* exercice;
    bool deux;
    ListeComptes liste;
    const char* ligne;
  } const cas[] = {
      {"2001", false, ListeComptes::Recettes, "SOINS|7065|1  |Soins | actes|D 20,50"},
      {"2003", false, ListeComptes::Depenses, "SOINS|7065|1  |Soins | actes|D 2,05"},
      {"2003", true, ListeComptes::Recettes, "SOINS|7065|1  |Soins | actes|D 20,50|D 2,05"},
      {"2001", false, ListeComptes::Tresorerie,
       "SOINS|7065|Soins | actes|120,50|100,00|D 20,50|1,00|D 70,50"},
      {"2003", false, ListeComptes::PlanComptable,
       "SOINS|7065|Soins | actes|12,05|10,00|D 2,05|D 2,00|D 7,05"},
      {"2003", true, ListeComptes::Tresorerie,
       "SOINS|7065|Soins | actes|120,50|12,05|100,00|10,00|D 20,50|D 2,05|1,00|D 2,00|D 70,50|D 7,05"},
  };
  for (const auto& c : cas) {
    App().NomExercice = c.exercice;
    App().AfficherDouble = c.deux;
    EXPECT_EQ(Ligne(c.liste, compte), c.ligne) << c.exercice << c.deux;
  }
}

TEST_F(ListeComptesTest, Soldes) {
  const SoldesCompte s = SoldesDe(Compte("706", "A", 100, 120.5), false);
  EXPECT_EQ(s.professionnel, -20.5);
  EXPECT_EQ(s.ht, 9.5);
  EXPECT_EQ(s.tva, 20);
  EXPECT_EQ(s.ttc, 29.5);
  EXPECT_EQ(s.reel, -70.5);
  EXPECT_EQ(s.rapproche, 1);
  // What is left of the cents of a thousand entries is no debit balance.
  App().NomExercice = "2001";
  EXPECT_EQ(Ligne(ListeComptes::Recettes, Compte("706", "A", 0.1 + 0.2, 0.30000000000000010)),
            "A|706|1  |Soins | actes|");
}

TEST_F(ListeComptesTest, TriParColonne) {
  const Plan a = Compte("706", "b", 5, 10), b = Compte("7061", "C", 100, 9);
  struct {
    ListeComptes liste;
    bool deux;
    std::size_t colonne;
    int ordre;
  } const cas[] = {{ListeComptes::Recettes, false, 1, -1},
                   {ListeComptes::Recettes, false, 4, -1},
                   {ListeComptes::Recettes, true, 5, -1},
                   {ListeComptes::Tresorerie, false, 3, 1},
                   {ListeComptes::Tresorerie, true, 6, -1}};
  for (const auto& c : cas) {
    App().AfficherDouble = c.deux;
    const auto colonne = ColonnesComptes(App(), c.liste)[c.colonne];
    EXPECT_EQ(colonne.compare(a, b), c.ordre) << c.colonne;
    EXPECT_EQ(colonne.compare(b, a), -c.ordre) << c.colonne;
  }
}

TEST_F(ListeComptesTest, ChaqueListeALesComptesDeSonType) {
  Installe();
  ASSERT_TRUE(PoseCompte("6129", Recette, "EGARE"));
  for (const ListeComptes liste : {ListeComptes::Recettes, ListeComptes::Depenses, ListeComptes::Tresorerie,
                                   ListeComptes::PlanComptable}) {
    const std::vector<std::string> numeros = Numeros(liste);
    EXPECT_TRUE(std::is_sorted(numeros.begin(), numeros.end()));
    const auto porte = [&](const char* n) { return std::count(numeros.begin(), numeros.end(), n) == 1; };
    const bool tous = liste == ListeComptes::PlanComptable;
    EXPECT_EQ(porte("6129"), tous || liste == ListeComptes::Recettes);
    EXPECT_EQ(porte("6132"), tous || liste == ListeComptes::Depenses);
    EXPECT_EQ(porte("512"), tous || liste == ListeComptes::Tresorerie);
    EXPECT_EQ(porte("4451"), tous);
  }
}

TEST_F(ListeComptesTest, ChoixDesFormulaires) {
  Installe();
  const std::vector<ChoixTVA> taxes = ChoixComptesTVA(App());
  EXPECT_EQ(taxes.at(0).texte, "19,60% 4451 4451");
  EXPECT_EQ(taxes.at(0).compte, Long("4451"));
  EXPECT_EQ(taxes.at(0).taux, 19.6);
  for (const ChoixTVA& tva : taxes) EXPECT_EQ(+LitCompte(tva.compte).Type, Tva);

  std::size_t deChaqueCote[2] = {}, tous = 0;
  CRubriques rubriques(App(), App().PathExercice);
  ASSERT_TRUE(rubriques.OpenFile());
  for (bool trouve = rubriques.First(0); trouve; trouve = rubriques.Next(0)) {
    ++tous;
    if (rubriques.Rec->TypeRubrique < 2) ++deChaqueCote[rubriques.Rec->TypeRubrique];
  }
  ASSERT_TRUE(deChaqueCote[0] > 1 && deChaqueCote[1] > 1);
  EXPECT_EQ(RubriquesDuType(App(), Recette).size(), deChaqueCote[0]);
  EXPECT_EQ(RubriquesDuType(App(), Depense).size(), deChaqueCote[1]);
  EXPECT_EQ(RubriquesDuType(App(), Tva).size(), tous);
  EXPECT_EQ(RubriquesDuType(App(), Recette)[0].texte,
            "01  Recettes encaissées, y compris remboursements de frais"_w);
}

}  // namespace
}  // namespace fenlor::test
