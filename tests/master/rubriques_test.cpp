#include "master/rubriques.h"

#include <gmock/gmock.h>

#include "core/erreurs.h"
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
    return BoucleDeFormule(code,
                           [&](const std::string& c) { return formules.count(c) ? formules.at(c) : ""; });
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
  // The headings of the tests have codes that those of the template do not have.
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
                LitFicheRubrique(App(), rubriques.GetPos(), fiche))
        << code;
    return fiche;
  }
};

TEST_F(Rubriques, CeQuiEstEcritSeRelit) {
  Installe();
  FicheRubrique fiche = Fiche("z-1", "  01 +\t02  - &AMORT ");
  fiche.ligne = "231";
  fiche.type = 2;
  fiche.montant = 99;
  ASSERT_EQ(Enregistre(fiche), "");
  const Rubrique rec = Lit("Z 1");
  EXPECT_EQ(+rec.TypeRubrique, 2);
  EXPECT_EQ(+rec.Ligne, 231);
  EXPECT_EQ(LitTexte(rec.Formule), "01 + 02 - &AMORT");
  EXPECT_EQ(+rec.ManuelEuro, 0) << "an automatic heading has no amount";
  fiche = Relit("Z 1");
  fiche.manuel = true;
  fiche.montant = 1000;
  fiche.code = "z";
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(+Lit("Z 1").TypeRubrique, -1);
  EXPECT_EQ(LitTexte(Lit("Z  ").Formule), "01 + 02 - &AMORT") << "a manual heading keeps its formula";
  EXPECT_EQ(+Lit("Z  ").ManuelEuro, 1000);
  EXPECT_NEAR(Lit("Z  ").ManuelFranc, 6559.57, 0.001);
  EXPECT_EQ(Relit("Z  ").montant, 1000);
}

TEST_F(Rubriques, LigneDUnATroisChiffres) {
  Installe();
  FicheRubrique fiche = Fiche("Z1");
  for (const char* ligne : {"70000", "1000", "0", "-3", "abc", "12a", "1 2"}) {
    fiche.ligne = ligne;
    EXPECT_EQ(Enregistre(fiche), "3402 ligne") << ligne;
  }
  for (const char* ligne : {"999", " 1 ", ""}) {
    fiche.ligne = ligne;
    EXPECT_EQ(Enregistre(fiche), "") << ligne;
    EXPECT_EQ(+Lit("Z1 ").Ligne, TexteVersEntier(ligne));
    fiche.position = Relit("Z1 ").position;
  }
}

TEST_F(Rubriques, UnTermeInconnuEstDitEtGarde) {
  Installe();
  const struct {
    const char *formule, *inconnus;  ///< nothing told: empty
  } cas[] = {{"01+&AMORT-&PVC+&MVC-&FRAISKM+&IMMO_HTVA", ""},
             {"01+QQ-&FRAISK+QQ+LONGUE", "QQ, &FRAISK, LONGUE"},
             {"", ""}};
  Position position = 0;
  for (const auto& c : cas) {
    FicheRubrique fiche = Fiche("Z1", c.formule);
    fiche.position = position;
    ASSERT_EQ(Enregistre(fiche), "") << "a warning, not a refusal";
    position = Relit("Z1 ").position;
    EXPECT_EQ(LitTexte(Lit("Z1 ").Formule), c.formule);
    EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>(*c.inconnus ? 1 : 0, 3403)) << c.formule;
    EXPECT_TRUE(Boite.Questions.empty() || Boite.Questions[0].texte.find(c.inconnus) != std::string::npos);
  }
}

TEST_F(Rubriques, MontantDUnExerciceEnFranc) {
  Installe("2000", false);
  FicheRubrique fiche = Fiche("Z");
  fiche.manuel = true;
  fiche.montant = 6559.57;
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(+Lit("Z  ").ManuelFranc, 6559.57);
  EXPECT_NEAR(Lit("Z  ").ManuelEuro, 1000, 0.001);
}

TEST_F(Rubriques, RefusDansLeurOrdre) {
  Installe();
  ASSERT_EQ(Enregistre(Fiche("ZB")), "");
  const std::string longue(128, '1');
  const struct {
    FicheRubrique fiche;
    const char* refus;
  } cas[] = {
      {Fiche("0123", longue), "3206 code"},
      {Fiche("", longue), "3206 formule"},
      {Fiche("", longue.substr(1)), "3061 code"},
      {Fiche("--", "--"), "3061 code"},
      {Fiche("é"_w), "3061 code"},
      {Fiche("ZB", "ZB"), "3058 code"},
      {Fiche("zb"), "3058 code"},
      {Fiche("X", "01+X"), "3260 formule"},
      {Fiche("x", "-X"), "3260 formule"},
  };
  for (const auto& c : cas) EXPECT_EQ(Enregistre(c.fiche), c.refus) << c.fiche.code;
  EXPECT_EQ(+Lit("X  ").TypeRubrique, -1);
  // Leaving the field tells no more than that the code is taken.
  EXPECT_EQ(ControleCodeRubrique(App(), Fiche("zb")).erreur, 3058u);
  for (const char* libre : {"", "--", "Z", "ZBC"})
    EXPECT_TRUE(ControleCodeRubrique(App(), Fiche(libre))) << libre;
  EXPECT_TRUE(ControleCodeRubrique(App(), Relit("ZB ")));
}

TEST_F(Rubriques, UneBoucleEstNommeeDoncRefusee) {
  Installe();
  for (const FicheRubrique& fiche : {Fiche("X7", "X4"), Fiche("X5"), Fiche("X4", "01-X5"), Fiche("X2", "X7")})
    ASSERT_EQ(Enregistre(fiche), "");
  FicheRubrique cinq = Relit("X5 ");
  cinq.formule = "X7+&PVC";
  EXPECT_EQ(Enregistre(cinq), "3260 formule");
  EXPECT_EQ(Boite.Erreurs[0].texte,
            "La formule de la rubrique X5 revient sur elle-même : X5 > X7 > X4 > X5"_w);
  EXPECT_EQ(LitTexte(Lit("X5 ").Formule), "");
  // A manual amount stops the way.
  cinq.manuel = true;
  EXPECT_EQ(Enregistre(cinq), "");
  cinq = Relit("X5 ");
  cinq.manuel = false;
  EXPECT_EQ(Enregistre(cinq), "3260 formule");
  // The code that a heading leaves plays no part any more, the one it takes does.
  FicheRubrique sept = Relit("X7 ");
  sept.code = "X8";
  sept.formule = "X7+X2";
  EXPECT_EQ(Enregistre(sept), "");
  sept = Relit("X8 ");
  sept.code = "X7";
  EXPECT_EQ(Enregistre(sept), "3260 formule");
}

TEST_F(Rubriques, LesComptesNommentLaRubrique) {
  Installe();
  ASSERT_EQ(Enregistre(Fiche("Z1")), "");
  Affecte("706", "z1");
  Affecte("6132", "z1");
  Affecte("758", "Z10");
  std::vector<std::string> textes;
  for (const CompteAssocie& c : ComptesAssocies(App(), "Z1")) textes.push_back(c.court + ' ' + c.designation);
  EXPECT_THAT(textes, ElementsAre("6132 Loyer", "706 Honoraires"));
  EXPECT_THAT(ComptesAssocies(App(), ""), IsEmpty()) << "not the accounts without a heading";
  EXPECT_EQ(SupprimeRubrique(App(), Relit("Z1 ").position).erreur, 3345u);
  FicheRubrique fiche = Relit("Z1 ");
  fiche.code = "Z2";
  ASSERT_EQ(Enregistre(fiche), "");
  EXPECT_EQ(LitTexte(LitCompte("706").Rubrique), "Z1 ") << "a new code leaves the accounts alone";
  Boite.Oublie();
  Boite.Reponses = {RepNon, RepOui};
  EXPECT_EQ(SupprimeRubrique(App(), Relit("Z2 ").position).erreur, 3346u);
  EXPECT_EQ(Boite.Questions.at(0).texte, "Suppression de la rubrique Z2 ?");
  EXPECT_TRUE(SupprimeRubrique(App(), Relit("Z2 ").position));
  EXPECT_EQ(+Lit("Z2 ").TypeRubrique, -1);
}

TEST_F(Rubriques, ExerciceCloture) {
  Installe();
  ASSERT_EQ(Enregistre(Fiche("Z1")), "");
  Regle("2003", "Cloture", "31/12/2003");
  ASSERT_TRUE(App().Reglages.IsExerciceCloture());
  FicheRubrique fiche = Relit("Z1 ");
  fiche.designation = "Autre";
  EXPECT_TRUE(EnregistreRubrique(App(), fiche));
  EXPECT_EQ(Relit("Z1 ").designation, "Rubrique Z1");
  EXPECT_EQ(SupprimeRubrique(App(), fiche.position).erreur, 3056u);
  EXPECT_FALSE(SupprimeEcrituresVariable(App(), "&ESSAI"));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3056, 3056}));
}

TEST_F(Rubriques, LesEcrituresDUneVariable) {
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
  ASSERT_TRUE(SupprimeEcrituresVariable(App(), variable));
  EXPECT_EQ(Magasin().NbSynchros() - synchros, 1u) << "one unit of work";
  EXPECT_EQ(CompteEcrituresVariable(App(), variable), 0u);
  for (const u32 mouvement : {loyer, achat, od}) EXPECT_THAT(Lignes(mouvement), IsEmpty());
  EXPECT_FALSE(Lignes(autre).empty());
  EXPECT_EQ(+LitCompte("6132").DebitEuro, 0);
  EXPECT_NEAR(LitCompte("512").CreditEuro, 50, 0.001);
}

TEST_F(Rubriques, LesRubriquesQueLaFormuleAdditionne) {
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
  Installe();
  ASSERT_EQ(Enregistre(Fiche("Z4", "&ESSAI")), "");
  Affecte("6132", "Z4");
  const u32 loyer = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 100));
  const u32 garage = CabinetMedical::Enregistre(Ecriture(JournalDepenses, "6132", 50));
  FicheRubrique fiche = Relit("Z4 ");
  fiche.designation = "Autre";
  Casse();
  EXPECT_FALSE(EnregistreRubrique(App(), fiche));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{ErrMagasin}));
  EXPECT_FALSE(SupprimeEcrituresVariable(App(), "&ESSAI"));
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{ErrMagasin, ErrMagasin}));
  Repare();
  ASSERT_TRUE(Rouvre());
  EXPECT_EQ(Relit("Z4 ").designation, "Rubrique Z4");
  EXPECT_FALSE(Lignes(loyer).empty());
  EXPECT_FALSE(Lignes(garage).empty());
  EXPECT_NEAR(LitCompte("6132").DebitEuro, 150, 0.001);
}

}  // namespace
}  // namespace fenlor
