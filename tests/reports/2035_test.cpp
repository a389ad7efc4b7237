
#include <cmath>
#include <cstdio>
#include <cstring>
#include <sstream>

#include "core/btfiles.h"
#include "core/cles.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "master/textes.h"
#include "reports/etat2035.h"
#include "reports/petitlivre.h"
#include "reports/textes.h"
#include "session/demo.h"

namespace fenlor::test {
namespace {

/// A row of the statement as it is printed, UTF-8.
struct LigneLue {
  std::string label, designation, rubrique, premier, second;
};

std::vector<LigneLue> LignesImprimees(CEtatDoc& etat) {
  std::vector<LigneLue> lignes;
  std::istringstream texte(VersUtf8(test::TexteEtat(etat)));
  for (std::string ligne; std::getline(texte, ligne);) {
    std::vector<std::string> champs;
    ligne.erase(0, ligne.find("\\N010") + std::strlen("\\N010"));
    for (const char* marque : {"\\T015", "\\T075", "\\T098\\R117", "\\T118\\R144", "\\0\\L"}) {
      const std::size_t fin = ligne.find(marque);
      if (fin == std::string::npos) break;
      champs.push_back(ligne.substr(0, fin));
      ligne.erase(0, fin + std::strlen(marque));
    }
    if (champs.size() == 5) lignes.push_back({champs[0], champs[1], champs[2], champs[3], champs[4]});
  }
  return lignes;
}

struct Manuel {
  f64 franc;  ///< a tenth of it in Euro
};

/// A practice whose headings, accounts and assets a test puts there itself.
template <class Livre>
class Avec2035 : public Livre {
 public:
  using Livre::Livre;

 protected:
  using Livre::App;

  void Pose(std::string_view code, int ligne, std::string_view formule = {},
            std::optional<Manuel> manuel = {}, std::string_view designation = {}) {
    CRubriques rubriques(App(), App().PathExercice);
    Rubrique& rec = *rubriques.Rec;
    PoseTexte(rec.Rubrique, NormaliseRubrique(code));
    PoseTexte(rec.Designation, designation.empty() ? "Ligne " + std::string(code) : std::string(designation));
    PoseTexte(rec.Formule, formule);
    rec.Ligne = static_cast<i16>(ligne);
    rec.Manuel = manuel.has_value();
    rec.ManuelFranc = manuel.value_or(Manuel{}).franc;
    rec.ManuelEuro = rec.ManuelFranc / 10;
    ASSERT_TRUE(rubriques.OpenFile() && rubriques.Add()) << code;
  }
  /// Totals in Franc; a tenth of them in Euro.
  void PoseTotaux(unsigned numero, std::string_view rubrique, i16 type, f64 debit, f64 credit) {
    CPlan plan(App(), App().PathExercice);
    Plan& rec = *plan.Rec;
    PoseTexte(rec.Compte, QVAPI::GetLongCompte(std::to_string(numero)));
    PoseTexte(rec.Rubrique, NormaliseRubrique(rubrique));
    rec.Type = type;
    rec.DebitFranc = debit;
    rec.CreditFranc = credit;
    rec.DebitEuro = debit / 10;
    rec.CreditEuro = credit / 10;
    ASSERT_TRUE(plan.OpenFile() && plan.Add());
  }
  void Immobilise(u32 numero, Date achat, f64 euros, Date cession = 0, f64 prix = 0) {
    CImmobilisations immos(App(), App().PathCabinet);
    Immobilisation& immo = *immos.Rec;
    immo.Numero = numero;
    immo.DateAchat = achat;
    immo.ValeurAmortissableEuro = euros;
    immo.ValeurAmortissableFranc = QVAPI::ConvertEuroToFranc(TauxFranc, euros);
    immo.Duree = 5;
    immo.TauxAnnuel = 20;
    immo.DateCession = cession;
    immo.PrixCessionEuro = prix;
    immo.PrixCessionFranc = QVAPI::ConvertEuroToFranc(TauxFranc, prix);
    ASSERT_TRUE(immos.OpenFile() && immos.Add());
  }
  /// Without headings and accounts.
  void InstalleVide(const std::string& annee) {
    ASSERT_TRUE(this->CreeExercice(annee));
    CRubriques rubriques(App(), App().PathExercice);
    CPlan plan(App(), App().PathExercice);
    ASSERT_TRUE(rubriques.OpenFile() && plan.OpenFile());
    while (rubriques.First(0)) ASSERT_TRUE(rubriques.Delete(rubriques.GetPos()));
    while (plan.First(0)) ASSERT_TRUE(plan.Delete(plan.GetPos()));
  }
  void Regle(const TexteFixe& section, const TexteFixe& cle, const std::string& valeur) {
    ASSERT_TRUE(App().Reglages.EcritIni(Texte(section), Texte(cle), valeur));
  }
  Rubriques2035 Rubriques() {
    Variables2035 variables;
    EXPECT_TRUE(CalculVariables2035(App(), variables));
    Rubriques2035 rubriques(App());
    EXPECT_TRUE(App().Dit(rubriques.Lit()));
    rubriques.PoseVariables(variables);
    return rubriques;
  }
};

class Declaration : public Avec2035<test::PetitLivre> {
 protected:
  void VerifieDeclaration(test::AffichageLivre affichage, const std::string& nom) {
    Installe(affichage);
    Regle(SecActivite, CleIdentification, "Docteur Anne Essai\r\n3, rue Haute\r\n69001 LYON");
    Regle(SecActivite, CleNatureActivite, "Médecine \\ générale"_w);
    Regle(SecActivite, CleDebut, "01/10/1994");
    Regle(SecAssociation, CleNumeroAssociation, "2.01.690");
    Regle(SecAssociation, CleAnneeAssociation, "1995");
    Immobilise(1, Le(1, 1), 1000);
    Pose("15A", 151, {}, {}, "dont parking\\cave");
    Pose("48", 48, {}, Manuel{655}, "T.V.A. afférente aux recettes brutes"_w);
    Pose("51", 51, "&IMMO_HTVA", {}, "Immobilisations hors T.V.A.");
    VerifieEtat<CEtat2035Doc>(nom);
  }
};

TEST_F(Declaration, EnFranc) { VerifieDeclaration(test::AffichageLivre::Franc, "2035-franc"); }
TEST_F(Declaration, EnEuro) { VerifieDeclaration(test::AffichageLivre::Euro, "2035-euro"); }
TEST_F(Declaration, DansLesDeuxMonnaies) { VerifieDeclaration(test::AffichageLivre::Double, "2035-double"); }

TEST_F(Declaration, ValeurDesRubriques) {
  InstalleVide("2003");
  Immobilise(1, FaitDate(1, 1, 2003), 1000);
  Immobilise(2, FaitDate(1, 6, 2002), 500, FaitDate(30, 6, 2003), 600);
  PoseTotaux(701, "A1", Recette, 100, 1000);
  PoseTotaux(601, "B2", Depense, 60.5, 10);
  PoseTotaux(702, "N1", Recette, 30, 0);
  PoseTotaux(445, "T3", Tva, 0, 70);
  PoseTotaux(703, "Z9", Recette, 0, 40);  // a heading that is gone
  PoseTotaux(704, "", Recette, 0, 5000);
  for (const char* code : {"A1", "B2", "N1", "T3"}) Pose(code, 1);
  Pose("1", 1, "A1");
  Pose("M", 1, "A1", Manuel{655});
  Pose("NEG", 1, "B2-A1");
  const struct {
    const char* formule;
    f64 franc, euro;
  } cas[] = {
      {"A1", 900, 90},
      {"B2", 51, 5},
      {"A1 + B2", 951, 95},
      {"-B2 + A1", 849, 85},
      {"B2-A1", -849, -85},
      {"A1+N1", 900, 90},  // below 0 counts as 0
      {"A1-NEG", 900, 90},
      {"T3", 0, 0},
      {"M+1", 1555, 156},  // 65.5 is 66
      {"Z9+A1", 940, 94},
      {"a1+A1X4+A1 2", 0, 0},  // as they stand; too long
      {"A1++B2-", 951, 95},
      {"A1+12+&RIEN", 900, 90},
      {"&AMORT", 1640, 250},  // 200 + 50 Euro, 1311.91 + 327.98 Franc
      {"A1+&IMMO_HTVA", 900 + 9839, 90 + 1500},
      {"&PVC-&MVC", 1367, 208},  // 600 - 500 + 58.33 + 50 Euro
  };
  int ligne = 10;
  for (const auto& c : cas) Pose("C" + std::to_string(ligne), ligne, c.formule), ++ligne;
  Rubriques2035 rubriques = Rubriques();
  ligne = 10;
  for (const auto& c : cas) {
    const std::string code = "C" + std::to_string(ligne++);
    EXPECT_EQ(rubriques.ValeurRubriqueFranc(code), c.franc) << c.formule;
    EXPECT_EQ(rubriques.ValeurRubriqueEuro(code), c.euro) << c.formule;
  }
  EXPECT_EQ(rubriques.ValeurRubriqueEuro("&AMORT"), 250);
  EXPECT_EQ(rubriques.ValeurRubriqueEuro("Z9"), 4);
  EXPECT_EQ(rubriques.ValeurRubriqueEuro(""), 0);
  EXPECT_TRUE(rubriques.Boucles().empty());
}

TEST_F(Declaration, KilometresParLeurBareme) {
  InstalleVide("2003");
  PoseTotaux(701, "A1", Recette, 0, 900);
  Pose("A1", 1);
  Pose("K1", 2, "&FRAISKM");
  Pose("K2", 3, "&FRAISKM+A1");
  const auto regle = [&](const TexteFixe& cle, const char* valeur) {
    ASSERT_TRUE(App().Reglages.EcritIniExercice({}, Texte(cle), valeur));
  };
  regle(CleKmDistance, "100");
  regle(CleKmBorneInf, "5000");
  regle(CleKmTaux[0], "4");
  regle(CleKmTauxEuro[0], "0,5");
  EXPECT_EQ(Rubriques().ValeurRubriqueEuro("K1"), 0) << "none is recorded";
  regle(CleFraisKm, "Oui");
  Rubriques2035 rubriques = Rubriques();
  EXPECT_EQ(rubriques.ValeurRubriqueFranc("K1"), 400) << "alone: the rates of each currency";
  EXPECT_EQ(rubriques.ValeurRubriqueEuro("K1"), 50);
  EXPECT_EQ(rubriques.ValeurRubriqueFranc("K2"), 900 + 328) << "50 Euro at the rate of today";
  EXPECT_EQ(rubriques.ValeurRubriqueEuro("K2"), 90 + 50);
}

TEST_F(Declaration, UneBoucleCompteZeroEtSeDit) {
  InstalleVide("2003");
  PoseTotaux(701, "A1", Recette, 0, 900);
  Pose("A1", 1);
  Pose("X", 2, "X+A1");
  Pose("P", 3, "Q");
  Pose("Q", 4, "P+A1");
  Pose("R", 5, "P+A1");
  Pose("S", 6, "S", Manuel{70});  // a manual amount has no formula
  CEtat2035Doc etat(App(), Demandeur);
  ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
  EXPECT_EQ(Boite.NumerosQuestions(), std::vector<unsigned>{AvisBoucles2035});
  EXPECT_NE(Boite.Questions.at(0).texte.find("\n\nP > Q > P\nX > X"), std::string::npos)
      << VersUtf8(Boite.Questions.at(0).texte);
  std::vector<std::string> valeurs;
  for (const LigneLue& ligne : LignesImprimees(etat)) valeurs.push_back(ligne.premier);
  EXPECT_EQ(valeurs, (std::vector<std::string>{"90", "", "", "", "90", "7"}));
}

TEST_F(Declaration, DesImmobilisationsIllisiblesArretentLEtat) {
  InstalleVide("2003");
  test::EcritFichier(App().PathCabinet + "/Immo.dat", "x");
  CEtat2035Doc etat(App(), Demandeur);
  EXPECT_FALSE(App().Dit(etat.OnNewDocument())) << "not a statement without them";
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3011}) << "told once";
}

TEST_F(Declaration, BlocsDesReglages) {
  InstalleVide("2003");
  unsigned n = 10;
  for (const int ligne : {0, 1, 7, 8, 12, 13, 33, 47, 48, 52, 53, 125, 129, 331, 481})
    Pose("L" + std::to_string(n++), ligne, {}, Manuel{10}, std::to_string(ligne));
  const struct {
    const char *recettes, *depenses, *resultat, *tva, *lignes;
  } cas[] = {
      {"abc", " ", "", "", "1 7 8 12 12:125 12:129 13 33 33:331 47 48 48:481 52"},
      {"0, 7", "12", "40,47", "49,53", ":0 1 7 12 12:125 12:129 47 52 53"},
      {"7,1", "9,12", "34", "60, 70", "7 12 12:125 12:129"},
  };
  for (const auto& c : cas) {
    Regle(Sec2035, Cle2035Recettes[0], c.recettes);
    Regle(Sec2035, Cle2035Recettes[1], c.depenses);
    Regle(Sec2035, Cle2035Recettes[2], c.resultat);
    Regle(Sec2035, Cle2035Recettes[3], c.tva);
    CEtat2035Doc etat(App(), Demandeur);
    ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
    std::string lignes;
    for (const LigneLue& l : LignesImprimees(etat))
      lignes += (lignes.empty() ? "" : " ") + l.label + (l.label == l.designation ? "" : ":" + l.designation);
    EXPECT_EQ(lignes, c.lignes);
  }
  // A block that begins with a sub-line.
  CRubriques rubriques(App(), App().PathExercice);
  PoseTexte(rubriques.Rec->Rubrique, "L18");
  ASSERT_TRUE(rubriques.OpenFile() && rubriques.Find(0) && rubriques.Rec->Ligne == 48);
  ASSERT_TRUE(rubriques.Delete(rubriques.GetPos()));
  Regle(Sec2035, Cle2035Recettes[3], "");
  CEtat2035Doc etat(App(), Demandeur);
  ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
  EXPECT_EQ(LignesImprimees(etat).at(4).designation, "481");
}

TEST_F(Declaration, MoisDeLExercice) {
  InstalleVide("2003");
  const struct {
    const char *debut, *fin, *texte;
  } cas[] = {{"01/01/2003", "31/12/2003", "pour 12 mois"},
             {"15/07/2003", "31/12/2003", "pour 6 mois"},
             {"31/07/2002", "01/12/2003", "pour 18 mois"},
             {"10/05/2003", "12/05/2003", "pour 1 mois"}};
  for (const auto& c : cas) {
    ASSERT_TRUE(App().Reglages.EcritIniExercice({}, Texte(CleDebut), c.debut));
    ASSERT_TRUE(App().Reglages.EcritIniExercice({}, "Fin", c.fin));
    CEtat2035Doc etat(App(), Demandeur);
    ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
    EXPECT_NE(test::TexteEtat(etat).find(c.texte), std::string::npos) << c.debut;
  }
}

// -- What may go wrong

TEST_F(Declaration, SansRien) {
  InstalleVide("2003");
  CEtat2035Doc etat(App(), Demandeur);
  ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
  EXPECT_TRUE(LignesImprimees(etat).empty());
  VerifiePages(etat, "2035");
}

// -- The whole practice

class DemoDeclaree : public Avec2035<test::CabinetDeTest> {
 protected:
  /// Receipts less expenses, from the lines of the journal.
  f64 Solde() {
    std::map<std::string, i16> types;
    CPlan plan(App(), App().PathExercice);
    CLines lignes(App(), App().PathExercice);
    EXPECT_TRUE(plan.OpenFile() && lignes.OpenFile());
    for (bool b = plan.First(0); b; b = plan.Next(0)) types[LitTexte(plan.Rec->Compte)] = plan.Rec->Type;
    f64 solde = 0;
    EXPECT_TRUE(Magasin().QVParcours(lignes.NumFichier, [&](Position, const void* rec) {
      const Line& l = *static_cast<const Line*>(rec);
      const i16 type = types.at(LitTexte(l.Compte));
      const f64 montant = App().Reglages.IsEuro() ? l.MontantEuro : l.MontantFranc;
      if (type == Recette || type == Depense) solde += l.Sens ? montant : -montant;
      return true;
    }));
    return solde;
  }
  test::DemandeurScript Demandeur;
};

TEST_F(DemoDeclaree, LeResultatEstCeluiDesLivres) {
  ASSERT_FALSE(RemplitDemo(App(), [](const ResumeDemo&) {}));
  // Depreciation and short-term gain of the thirteen assets, added up by hand.
  const struct {
    const char* annee;
    f64 dotation, plusValue;
    const char *ligne41, *ligne35;
  } annees[] = {{"2001", 75685.67, 0, "75686", ""},
                {"2002", 12473.69, 0, "12474 €", ""},
                {"2003", 11835.28, 2279.22, "11835 €", "2279 €"}};
  for (const auto& [annee, dotation, plusValue, ligne41, ligne35] : annees) {
    SCOPED_TRACE(annee);
    ASSERT_TRUE(OuvreExercice(annee));
    const bool euro = App().Reglages.IsEuro();
    Rubriques2035 rubriques = Rubriques();
    const auto valeur = [&](const char* code) {
      return euro ? rubriques.ValeurRubriqueEuro(code) : rubriques.ValeurRubriqueFranc(code);
    };
    const f64 resultat = std::max(0.0, valeur("46")) - std::max(0.0, valeur("47"));
    const f64 livres = Solde() - dotation + plusValue;
    std::printf("%s: %.2f in the books, %.0f on the statement\n", annee, livres, resultat);
    // Each of the 33 headings that are added up is rounded by half a unit at most.
    EXPECT_NEAR(resultat, livres, 33 * 0.5);
    EXPECT_GT(std::abs(resultat), 10000);
    CEtat2035Doc etat(App(), Demandeur);
    ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
    const std::vector<LigneLue> lignes = LignesImprimees(etat);
    const auto ligne = [&](const char* label) {
      const auto place =
          std::find_if(lignes.begin(), lignes.end(), [&](const auto& l) { return l.label == label; });
      return place == lignes.end() ? std::string("none") : place->premier;
    };
    EXPECT_EQ(ligne("46"), FormatMontant(resultat, 0) + (euro ? " €" : ""));
    EXPECT_EQ(ligne("41"), ligne41);
    EXPECT_EQ(ligne("35"), ligne35);
    test::PetitLivre::VerifiePages(etat, annee);
  }
}

}  // namespace
}  // namespace fenlor::test
