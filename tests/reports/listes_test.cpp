
#include "auto/ecrituresauto.h"
#include "core/btfiles.h"
#include "core/valeurs.h"
#include "reports/catalogue.h"
#include "reports/etatslistes.h"
#include "reports/petitlivre.h"

namespace fenlor::test {
namespace {

class Listes : public PetitLivre {
 protected:
  std::unique_ptr<CEtatComptable> Fait(const char* nom) {
    return TrouveEtat(nom)->fabrique(App(), Demandeur);
  }
  void Verifie(const char* nom, const std::string& attendu) {
    const auto etat = Fait(nom);
    ASSERT_TRUE(App().Dit(etat->OnNewDocument())) << nom;
    VerifieMarquage(*etat, attendu);
    VerifiePages(*etat, attendu);
    EXPECT_EQ(etat->TitreDocument(), etat->Titre());
  }
  void VerifieComptes(const std::string& monnaie) {
    for (const char* nom : {"comptes-recettes", "comptes-depenses", "plan-comptable", "tresorerie"})
      Verifie(nom, "liste-" + std::string(nom) + "-" + monnaie);
  }
};

TEST_F(Listes, EnFranc) {
  Installe(AffichageLivre::Franc);
  VerifieComptes("franc");
  test::EcritFichier(
      App().PathExercice + "/TEXTES.dat",
      "@Texte\r\n  Visites \t du  soir\r\n\r\n[ancien]\r\n@autre\r\nA\\B\r\n" + std::string(90, 'x'));
  Verifie("rubriques", "liste-rubriques");
  Verifie("libelles", "liste-libelles");
}
TEST_F(Listes, EnEuro) {
  Installe(AffichageLivre::Euro);
  VerifieComptes("euro");
  {
    CEcrituresAuto autos(App());
    autos.Clear();
    autos.Rec.Genre = JournalDepenses;
    autos.Rec.Date = FaitDate(5, 11, 2003);
    autos.Rec.MontantEuro = 700;
    autos.Rec.NbPaiements = autos.Rec.NbRestants = 12;
    autos.Rec.Periodicite = 6;
    PoseTexte(autos.Rec.Tresorerie, QVAPI::GetLongCompte("512"));
    ASSERT_TRUE(autos.Write());
  }
  Magasin().FixeAujourdhui(FaitDate(20, 11, 2003));
  Verifie("previsions", "liste-previsions");
}
/// They know one currency, that which the exercice is kept in.
TEST_F(Listes, CommeEnEuroAvecLesDeuxMonnaies) {
  Installe(AffichageLivre::Double);
  VerifieComptes("euro");
}

TEST_F(Listes, TextesQuiDepassent) {
  Installe(AffichageLivre::Euro);
  // What additions leave behind is nothing.
  for (const auto& [compte, debit] : {std::pair{"512", 0.1}, {"531", 0.2}, {"5121", -0.3}}) {
    ASSERT_TRUE(PoseCompte(compte, Tresorerie));
    ChangeCompte(compte, [debit = debit](Plan& rec) { rec.DebitEuro = debit; });
  }
  const auto tresorerie = Fait("tresorerie");
  ASSERT_TRUE(App().Dit(tresorerie->OnNewDocument()));
  EXPECT_EQ(TexteEtat(*tresorerie).find("0,00", TexteEtat(*tresorerie).find("Total")), std::string::npos);
  for (const char* compte : {"706", "512"})
    ChangeCompte(compte, [](Plan& rec) {
      PoseTexte(rec.Designation, std::string(79, 'W') + "\\");
      PoseTexte(rec.Code, "A\\R010");
      rec.CreditEuro += 123456789012.34;
    });
  for (const char* nom : {"comptes-recettes", "plan-comptable", "tresorerie"}) {
    const auto etat = Fait(nom);
    ASSERT_TRUE(App().Dit(etat->OnNewDocument())) << nom;
    EXPECT_NE(test::TexteEtat(*etat).find("A\\\\R010\\T"), std::string::npos);
    VerifiePages(*etat, nom);
  }
}

TEST_F(Listes, SansLigne) {
  Installe(AffichageLivre::Euro, false);
  {
    CPlan plan(App(), App().PathExercice);
    CRubriques rubriques(App(), App().PathExercice);
    ASSERT_TRUE(plan.OpenFile() && rubriques.OpenFile());
    while (plan.First(0)) ASSERT_TRUE(plan.Delete(plan.GetPos()));
    while (rubriques.First(0)) ASSERT_TRUE(rubriques.Delete(rubriques.GetPos()));
    test::EcritFichier(App().PathExercice + "/TEXTES.dat", "");
  }
  const struct {
    const char *nom, *texte;
  } cas[] = {
      {"comptes-recettes", "\\H\\0\\M010\\N010\\S002\\BTotal : \\T110\\R144\\L\\0\n\\X"},
      {"tresorerie",
       "\\H\\0\\M005\\N005\\S002\\BTotal : "
       "\\T074\\R087\\T088\\R101\\T102\\R115\\T116\\R129\\T130\\R144\\L\\0\n\\X"},
      {"rubriques", "\\H\\X\\0\\M010\\N010\\S001\n"},
      {"libelles", "\\H\\X\\0\\M010\\N010\\S001\n"},
  };
  for (const auto& c : cas) {
    const auto etat = Fait(c.nom);
    ASSERT_TRUE(App().Dit(etat->OnNewDocument())) << c.nom;
    EXPECT_EQ(test::TexteEtat(*etat), c.texte);
    VerifiePages(*etat, c.nom);
  }
}

}  // namespace
}  // namespace fenlor::test
