#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <sstream>

#include "core/btfiles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "reports/catalogue.h"
#include "reports/etatslistes.h"
#include "reports/petitlivre.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

using test::AffichageLivre;

constexpr const char* Noms[] = {"comptes-recettes", "comptes-depenses", "plan-comptable",
                                "tresorerie",       "rubriques",        "libelles"};

class Listes : public test::PetitLivre {
 protected:
  std::unique_ptr<CEtatComptable> Fait(const char* nom) {
    return TrouveEtat(nom)->fabrique(App(), Demandeur);
  }
  void Verifie(const char* nom, const std::string& attendu) {
    const auto etat = Fait(nom);
    ASSERT_TRUE(etat->OnNewDocument()) << nom;
    VerifieMarquage(*etat, attendu);
    VerifiePages(*etat, attendu);
    EXPECT_EQ(etat->TitreDocument(), etat->Titre());
  }
  void VerifieComptes(const std::string& monnaie) {
    for (const char* nom : {"comptes-recettes", "comptes-depenses", "plan-comptable", "tresorerie"})
      Verifie(nom, "liste-" + std::string(nom) + "-" + monnaie);
  }
  void ChangeCompte(const char* compte, const std::function<void(Plan&)>& change) {
    CPlan plan(App(), App().PathExercice);
    PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(compte));
    ASSERT_TRUE(plan.OpenFile() && plan.Find(0));
    Plan nouveau = *plan.Rec;
    change(nouveau);
    ASSERT_TRUE(plan.Delete(plan.GetPos()));
    *plan.Rec = nouveau;
    ASSERT_TRUE(plan.Add());
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
}
/// They know one currency, that which the exercice is kept in.
TEST_F(Listes, CommeEnEuroAvecLesDeuxMonnaies) {
  Installe(AffichageLivre::Double);
  VerifieComptes("euro");
}

/// The last field of each line that has it, by what stands at column 10 or 5.
std::map<std::string, std::string> Dernieres(CEtatDoc& etat) {
  std::map<std::string, std::string> soldes;
  std::istringstream texte(VersUtf8(test::TexteEtat(etat)));
  for (std::string ligne; std::getline(texte, ligne);) {
    const std::size_t debut = ligne.find("\\T017"), fin = ligne.find("\\T027"), r = ligne.rfind("\\R144");
    if (r == std::string::npos) continue;
    const std::string cle = debut == std::string::npos ? "total" : ligne.substr(debut + 5, fin - debut - 5);
    soldes[cle] = ligne.substr(r + 5, ligne.find("\\L", r) - r - 5);
  }
  return soldes;
}

f64 Lu(std::string texte) {
  const bool debit = texte.starts_with("D ");
  if (debit) texte.erase(0, 2);
  return TexteVersMontant(texte) * (debit ? -1 : 1);
}

TEST_F(Listes, SommesDesLignesDuJournal) {
  Installe(AffichageLivre::Euro);
  std::mt19937 hasard(77);
  {
    QVAPI::Unite unite(Magasin());
    for (unsigned n = 0; n < 60; ++n) {
      const bool recette = hasard() % 2;
      Ajoute(recette ? JournalRecettes : JournalDepenses, Le(1 + hasard() % 28, 1 + hasard() % 12),
             recette ? "706" : "613", (1 + hasard() % 90000) / 100.0, 0, 0, hasard() % 3 ? "512" : "531",
             "Essai");
    }
    ASSERT_TRUE(unite.Valide());
  }
  std::map<std::string, f64> soldes;
  f64 tresorerie = -1000, tous = -1000;
  soldes["512"] = -1000;
  CLines lignes(App(), App().PathExercice);
  ASSERT_TRUE(lignes.OpenFile());
  for (bool b = lignes.First(0); b; b = lignes.Next(0)) {
    const Line& l = *lignes.Rec;
    const f64 montant = l.Sens ? l.MontantEuro : -l.MontantEuro;
    soldes[Magasin().GetShortCompte(LitTexte(l.Compte))] += montant;
    tous += montant;
    if (l.TypeCompte == Tresorerie) tresorerie += montant;
  }
  lignes.CloseFile();
  const auto plan = Fait("plan-comptable"), banques = Fait("tresorerie");
  ASSERT_TRUE(plan->OnNewDocument() && banques->OnNewDocument());
  const auto imprimes = Dernieres(*plan);
  for (const auto& [compte, solde] : soldes) {
    ASSERT_TRUE(imprimes.contains(compte)) << compte;
    EXPECT_NEAR(Lu(imprimes.at(compte)), solde, 0.001) << compte;
  }
  EXPECT_NEAR(Lu(imprimes.at("total")), tous, 0.001);
  EXPECT_NEAR(Lu(Dernieres(*banques).at("total")), tresorerie, 0.001);
  EXPECT_EQ(Dernieres(*banques).at("512"), imprimes.at("512")) << "both lists show the same columns";
}

TEST_F(Listes, TextesQuiDepassent) {
  Installe(AffichageLivre::Euro);
  for (const char* compte : {"706", "512"})
    ChangeCompte(compte, [](Plan& rec) {
      PoseTexte(rec.Designation, std::string(79, 'W') + "\\");
      PoseTexte(rec.Code, "A\\R010");
      rec.CreditEuro += 123456789012.34;
    });
  for (const char* nom : {"comptes-recettes", "plan-comptable", "tresorerie"}) {
    const auto etat = Fait(nom);
    ASSERT_TRUE(etat->OnNewDocument()) << nom;
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
    ASSERT_TRUE(etat->OnNewDocument()) << c.nom;
    EXPECT_EQ(test::TexteEtat(*etat), c.texte);
    VerifiePages(*etat, c.nom);
  }
}

TEST_F(Listes, ArretEtSansExercice) {
  for (const char* nom : Noms) {
    EXPECT_FALSE(Fait(nom)->OnNewDocument()) << nom;
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrAucunExercice}) << nom;
    Boite.Oublie();
  }
  Installe(AffichageLivre::Euro);
  for (const char* nom : Noms) {
    SCOPED_TRACE(nom);
    for (const int k : {0, 1}) {
      Boite.NbArrets = 0;
      Boite.ArretApres = k;
      EXPECT_FALSE(Fait(nom)->OnNewDocument());
      EXPECT_EQ(Boite.Profondeur, 0u);
      EXPECT_TRUE(Boite.Erreurs.empty());
    }
    Boite.ArretApres = -1;
    Boite.Oublie();
    ASSERT_TRUE(Fait(nom)->OnNewDocument());
    EXPECT_EQ(Boite.Ouvertures, 1u);
    EXPECT_GE(Boite.Maximum, Boite.Place);
    EXPECT_GT(Boite.Place, 0u);
  }
  EXPECT_EQ(Demandeur.Nombre, 0u) << "nothing is asked";
}

}  // namespace
}  // namespace fenlor
