#include "master/rubriques.h"

#include <gmock/gmock.h>

#include "core/valeurs.h"
#include "journal/cabinetmedical.h"
#include "master/formule.h"
#include "outils/systemefautif.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Formule, TermesDansLeurOrdre) {
  const struct {
    const char* formule;
    std::vector<std::string> termes;
  } cas[] = {
      {"01+02-03", {"+01", "+02", "-03"}},
      {" - 01 +\t&FRAISKM ", {"-01", "+&FRAISKM"}},
      {"23A", {"+23A"}},
      {"A--B", {"+A", "-", "-B"}},
      {"&AMORT-", {"+&AMORT", "-"}},
      {" \t ", {}},
  };
  for (const auto& c : cas) {
    std::vector<std::string> termes;
    for (const TermeFormule& t : TermesFormule(c.formule)) termes.push_back(t.signe + t.texte);
    EXPECT_EQ(termes, c.termes) << c.formule;
  }
  EXPECT_TRUE(FormuleUtilise("23A + &FRAIS KM", "&FRAISKM"));
  EXPECT_FALSE(FormuleUtilise("23A+&FRAISKM2", "&FRAISKM"));
  EXPECT_EQ(RubriqueDuTerme("1"), "1  ");
  EXPECT_EQ(RubriqueDuTerme("&AMORT"), "");
}

TEST(Formule, LaBoucleLaPlusCourte) {
  const std::map<std::string, std::string> formules{
      {"A  ", "B+C"}, {"B  ", "D-&AMORT"}, {"C  ", "A"}, {"D  ", "C+D"}, {"E  ", "D+A"}};
  const auto boucle = [&](const std::string& code) {
    return BoucleDeFormule(code, [&](const std::string& c) { return formules.count(c) ? formules.at(c) : ""; });
  };
  EXPECT_THAT(boucle("A  "), ElementsAre("A  ", "C  ", "A  "));
  EXPECT_THAT(boucle("B  "), ElementsAre("B  ", "D  ", "C  ", "A  ", "B  "));
  EXPECT_THAT(boucle("D  "), ElementsAre("D  ", "D  "));
  EXPECT_THAT(boucle("E  "), IsEmpty()) << "leads into loops, not back to itself";
  EXPECT_THAT(boucle("Z  "), IsEmpty());
}

class Rubriques : public test::CabinetMedical {
 public:
  using test::CabinetMedical::CabinetMedical;

 protected:
  /// An exercice whose only headings are those that the test makes.
  void InstalleVide(const std::string& annee = "2003", bool euro = true) {
    Installe(annee, euro);
    CRubriques rubriques(App(), App().PathExercice);
    ASSERT_TRUE(rubriques.OpenFile());
    QVAPI::Unite unite(Magasin());
    for (const Position position : PositionsRubriques(App())) ASSERT_TRUE(rubriques.Delete(position));
    for (const Position position : PositionsComptes(App(), ListeComptes::PlanComptable)) {
      CPlan plan(App(), App().PathExercice);
      ASSERT_TRUE(plan.OpenFile() && plan.ReadRec(position));
      if (plan.Rec->Rubrique[0]) Affecte(LitTexte(plan.Rec->Compte), "");
    }
    ASSERT_TRUE(unite.Valide());
  }
  void Affecte(const std::string& compte, const std::string& code) {
    CPlan plan(App(), App().PathExercice);
    PoseTexte(plan.Rec->Compte, test::Long(compte));
    ASSERT_TRUE(plan.OpenFile() && plan.Find(0));
    const Plan avant = *plan.Rec;
    ASSERT_TRUE(plan.Delete(plan.GetPos()));
    *plan.Rec = avant;
    PoseTexte(plan.Rec->Rubrique, NormaliseRubrique(code));
    ASSERT_TRUE(plan.Add());
  }
  static FicheRubrique Fiche(const std::string& code, const std::string& formule = {}) {
    FicheRubrique fiche;
    fiche.code = code;
    fiche.designation = "Rubrique " + code;
    fiche.formule = formule;
    return fiche;
  }
  /// Saves; number of the refusal and its field, "" when it is done.
  std::string Enregistre(FicheRubrique fiche) {
    Boite.Oublie();
    const ResultatMaster r = EnregistreRubrique(App(), fiche);
    const std::vector<unsigned> attendu(r ? 0 : 1, r.erreur);
    EXPECT_EQ(Boite.NumerosErreurs(), attendu) << fiche.code;
    return r ? std::string() : std::to_string(r.erreur) + ' ' + r.champ;
  }
  /// The stored record; of `TypeRubrique` -1 when there is none.
  Rubrique Lit(const std::string& code) {
    CRubriques rubriques(App(), App().PathExercice);
    PoseTexte(rubriques.Rec->Rubrique, code);
    if (!rubriques.OpenFile() || !rubriques.Find(0)) rubriques.Rec->TypeRubrique = -1;
    return *rubriques.Rec;
  }
  FicheRubrique Relit(const std::string& code) {
    CRubriques rubriques(App(), App().PathExercice);
    PoseTexte(rubriques.Rec->Rubrique, code);
    FicheRubrique fiche;
    EXPECT_TRUE(rubriques.OpenFile() && rubriques.Find(0) &&
                LitFicheRubrique(App(), rubriques.GetPos(), fiche)) << code;
    return fiche;
  }
  std::vector<std::string> Codes() {
    std::vector<std::string> codes;
    for (const Position position : PositionsRubriques(App())) {
      FicheRubrique fiche;
      EXPECT_TRUE(LitFicheRubrique(App(), position, fiche));
      codes.push_back(fiche.code);
    }
    return codes;
  }
};

TEST_F(Rubriques, CeQuiEstEcritSeRelit) {
  InstalleVide();
  FicheRubrique fiche = Fiche("a-1", "  01 +\t02  - &AMORT ");
  fiche.ligne = "231";
  fiche.type = 2;
  fiche.montant = 99;
  ASSERT_EQ(Enregistre(fiche), "");
  const Rubrique rec = Lit("A 1");
  EXPECT_EQ(rec.TypeRubrique, 2);
  EXPECT_EQ(rec.Ligne, 231);
  EXPECT_EQ(LitTexte(rec.Formule), "01 + 02 - &AMORT");
  EXPECT_EQ(rec.ManuelEuro, 0) << "an automatic heading has no amount";
  fiche = Relit("A 1");
  fiche.manuel = true;
  fiche.montant = 1000;
  fiche.code = "1";
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_THAT(Codes(), ElementsAre("1"));
  EXPECT_EQ(LitTexte(Lit("1  ").Formule), "01 + 02 - &AMORT") << "a manual heading keeps its formula";
  EXPECT_EQ(Lit("1  ").ManuelEuro, 1000);
  EXPECT_NEAR(Lit("1  ").ManuelFranc, 6559.57, 0.001);
  EXPECT_EQ(Relit("1  ").montant, 1000);
}

TEST_F(Rubriques, MontantDUnExerciceEnFranc) {
  InstalleVide("2000", false);
  FicheRubrique fiche = Fiche("36");
  fiche.manuel = true;
  fiche.montant = 6559.57;
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(Lit("36 ").ManuelFranc, 6559.57);
  EXPECT_NEAR(Lit("36 ").ManuelEuro, 1000, 0.001);
  EXPECT_EQ(Relit("36 ").montant, 6559.57);
}

TEST_F(Rubriques, RefusDansLeurOrdre) {
  InstalleVide();
  ASSERT_EQ(Enregistre(Fiche("01")), "");
  ASSERT_EQ(Enregistre(Fiche("AB")), "");
  const std::string longue(128, '1');
  const struct {
    FicheRubrique fiche;
    const char* refus;
  } cas[] = {
      {Fiche("0123", longue), "3206 code"},
      {Fiche("", longue), "3206 formule"},
      {Fiche("", longue.substr(1)), "3061 code"},
      {Fiche("  "), "3061 code"},
      {Fiche("--", "--"), "3061 code"},
      {Fiche("é"_w), "3061 code"},
      {Fiche("01", "01"), "3058 code"},
      {Fiche("ab"), "3058 code"},
      {Fiche("02", "01+02"), "3260 formule"},
      {Fiche("x", "-X"), "3260 formule"},
  };
  for (const auto& c : cas) EXPECT_EQ(Enregistre(c.fiche), c.refus) << c.fiche.code;
  EXPECT_THAT(Codes(), ElementsAre("01", "AB"));
  // The same code is only told when the field is left.
  EXPECT_EQ(ControleCodeRubrique(App(), Fiche("ab")).erreur, 3058u);
  for (const char* libre : {"", "--", "A", "ABC"}) EXPECT_TRUE(ControleCodeRubrique(App(), Fiche(libre))) << libre;
  EXPECT_TRUE(ControleCodeRubrique(App(), Relit("AB ")));
}

TEST_F(Rubriques, UneBoucleEstNommeeDoncRefusee) {
  InstalleVide();
  ASSERT_EQ(Enregistre(Fiche("07", "04")), "");
  ASSERT_EQ(Enregistre(Fiche("05")), "");
  ASSERT_EQ(Enregistre(Fiche("04", "01-05")), "");
  FicheRubrique cinq = Relit("05 ");
  cinq.formule = "07+&PVC";
  EXPECT_EQ(Enregistre(cinq), "3260 formule");
  EXPECT_EQ(Boite.Erreurs[0].texte, "La formule de la rubrique 05 revient sur elle-même : 05 > 07 > 04 > 05"_w);
  EXPECT_EQ(LitTexte(Lit("05 ").Formule), "");
  // A manual amount stops the way, here and elsewhere.
  cinq.manuel = true;
  EXPECT_EQ(Enregistre(cinq), "");
  cinq = Relit("05 ");
  cinq.manuel = false;
  EXPECT_EQ(Enregistre(cinq), "3260 formule");
  // A new code closes the loop as well; the old one no longer plays a part.
  FicheRubrique un = Fiche("02", "07");
  ASSERT_EQ(Enregistre(un), "");
  un = Relit("02 ");
  un.code = "01";
  EXPECT_EQ(Enregistre(un), "3260 formule");
  FicheRubrique sept = Relit("07 ");
  sept.code = "08";
  sept.formule = "07+04";
  EXPECT_EQ(Enregistre(sept), "");
}

TEST_F(Rubriques, UnAncienLienResteAuCompte) {
  InstalleVide();
  ASSERT_EQ(Enregistre(Fiche("1")), "");
  Affecte("706", "1");
  Affecte("6132", "1");
  Affecte("758", "10");
  std::vector<std::string> textes;
  for (const CompteAssocie& c : ComptesAssocies(App(), "1")) textes.push_back(c.texte);
  EXPECT_THAT(textes, ElementsAre("6132\tLoyer", "706\tHonoraires"));
  EXPECT_THAT(ComptesAssocies(App(), ""), IsEmpty()) << "not the accounts without a heading";
  EXPECT_EQ(SupprimeRubrique(App(), Relit("1  ").position).erreur, 3345u);
  FicheRubrique fiche = Relit("1  ");
  fiche.code = "2";
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(LitTexte(LitCompte("706").Rubrique), "1  ");
  // Nothing names it any more: only the question is left.
  Boite.Oublie();
  Boite.Reponses = {RepNon, RepOui};
  EXPECT_EQ(SupprimeRubrique(App(), Relit("2  ").position).erreur, 3346u);
  EXPECT_EQ(Boite.Questions.at(0).texte, "Suppression de la rubrique 2 ?");
  EXPECT_TRUE(SupprimeRubrique(App(), Relit("2  ").position));
  EXPECT_THAT(Codes(), IsEmpty());
}

TEST_F(Rubriques, ExerciceCloture) {
  InstalleVide();
  ASSERT_EQ(Enregistre(Fiche("1")), "");
  Regle("2003", "Cloture", "31/12/2003");
  ASSERT_TRUE(App().Reglages.IsExerciceCloture());
  FicheRubrique fiche = Relit("1  ");
  fiche.designation = "Autre";
  EXPECT_TRUE(EnregistreRubrique(App(), fiche));
  EXPECT_EQ(Relit("1  ").designation, "Rubrique 1");
  EXPECT_EQ(SupprimeRubrique(App(), fiche.position).erreur, 3056u);
  EXPECT_FALSE(SupprimeEcrituresVariable(App(), "&FRAISKM"));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3056, 3056}));
}

TEST_F(Rubriques, LesEcrituresDUneVariable) {
  InstalleVide();
  ASSERT_EQ(Enregistre(Fiche("23", "23A+&FRAISKM")), "");
  ASSERT_EQ(Enregistre(Fiche("24", "&FRAISKM")), "");
  ASSERT_EQ(Enregistre(Fiche("25", "&FRAISKM2")), "");
  const char* const variable = "&FRAISKM";
  EXPECT_FALSE(RubriqueVariableEcritures(App(), variable));
  Affecte("6132", "23");
  Affecte("6063", "24");
  Affecte("6154", "25");
  EXPECT_FALSE(RubriqueVariableEcritures(App(), variable)) << "accounts without entries";
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
  EXPECT_TRUE(RubriqueVariableEcritures(App(), variable));
  EXPECT_EQ(CompteEcrituresVariable(App(), variable), 3u);
  EXPECT_EQ(CompteEcrituresVariable(App(), "&AMORT"), 0u);
  ASSERT_TRUE(SupprimeEcrituresVariable(App(), variable));
  EXPECT_FALSE(RubriqueVariableEcritures(App(), variable));
  for (const u32 mouvement : {loyer, achat, od}) EXPECT_THAT(Lignes(mouvement), IsEmpty());
  EXPECT_FALSE(Lignes(autre).empty());
  EXPECT_EQ(LitCompte("6132").DebitEuro, 0);
  EXPECT_NEAR(LitCompte("512").CreditEuro, 50, 0.001);
  EXPECT_TRUE(SupprimeEcrituresVariable(App(), variable)) << "nothing to delete";
}

struct Disque {
  SystemePosix vrai;
  SystemeFautif fautif{vrai};
};

class RubriquesDisque : private Disque, public Rubriques {
 protected:
  RubriquesDisque() : Rubriques(test::Cles::Memoire, 256u << 10, &fautif) {}
  void Casse() { fautif.Programme(1, ENOSPC, SystemeFautif::Ecriture | SystemeFautif::Synchro, false); }
  void Repare() { fautif.Repare(); }
};

TEST_F(RubriquesDisque, RienNeSePerdQuandLeDisqueRefuse) {
  InstalleVide();
  ASSERT_EQ(Enregistre(Fiche("24", "&FRAISKM")), "");
  Affecte("6132", "24");
  const u32 loyer = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 100));
  const u32 garage = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 50));
  FicheRubrique fiche = Relit("24 ");
  fiche.designation = "Autre";
  Casse();
  EXPECT_FALSE(EnregistreRubrique(App(), fiche));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{ErrMagasin}));
  EXPECT_FALSE(SupprimeEcrituresVariable(App(), "&FRAISKM"));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{ErrMagasin, ErrMagasin}));
  Repare();
  ASSERT_TRUE(Rouvre());
  EXPECT_EQ(Relit("24 ").designation, "Rubrique 24");
  EXPECT_FALSE(Lignes(loyer).empty());
  EXPECT_FALSE(Lignes(garage).empty());
  EXPECT_NEAR(LitCompte("6132").DebitEuro, 150, 0.001);
}

}  // namespace
}  // namespace fenlor
