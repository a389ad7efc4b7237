#include "store/modele.h"

#include <map>
#include <set>

#include "outils/cabinetdetest.h"
#include "store/dates.h"

namespace fenlor::test {
namespace {

Modele Integre() {
  Modele modele;
  ErreurModele erreur;
  EXPECT_TRUE(LitModele(ModeleIntegre(), modele, erreur)) << erreur.ligne << " : " << VersUtf8(erreur.raison);
  return modele;
}

/// The headings of a template by code without blanks.
std::map<std::string, Rubrique> ParCode(const Modele& modele) {
  std::map<std::string, Rubrique> table;
  for (const Rubrique& r : modele.rubriques) {
    std::string code = LitTexte(r.Rubrique);
    code.erase(code.find_last_not_of(' ') + 1);
    table[code] = r;
  }
  return table;
}

std::vector<std::pair<int, std::string>> Termes(const std::string& formule) {
  std::vector<std::pair<int, std::string>> termes;
  for (const char c : formule) {
    if (c == ' ') continue;
    if (termes.empty() || c == '+' || c == '-') termes.push_back({c == '-' ? -1 : 1, {}});
    if (c != '+' && c != '-') termes.back().second += c;
  }
  return termes;
}

/// How often, with its sign, the sum of the accounts of `feuille` enters heading `code`.
int Passages(const std::map<std::string, Rubrique>& table, const std::string& code,
             const std::string& feuille, int profondeur = 0) {
  if (profondeur > 20) {
    ADD_FAILURE() << code << " : formule circulaire";
    return 0;
  }
  const auto trouvee = table.find(code);
  if (trouvee == table.end() || trouvee->second.Manuel != 0) return 0;
  const std::string formule = LitTexte(trouvee->second.Formule);
  if (formule.empty()) return code == feuille ? 1 : 0;
  int total = 0;
  for (const auto& [signe, terme] : Termes(formule))
    total += signe * Passages(table, terme, feuille, profondeur + 1);
  return total;
}

TEST(ModeleDefaut, ChaqueCompteEntreUneFoisDansLaDeclaration) {
  const Modele modele = Integre();
  const auto table = ParCode(modele);
  const std::set<std::string> sansRubrique = {"5810000000", "5820000000"};
  for (const Plan& compte : modele.comptes) {
    const std::string numero = LitTexte(compte.Compte);
    std::string rubrique = LitTexte(compte.Rubrique);
    rubrique.erase(rubrique.find_last_not_of(' ') + 1);
    if (compte.Type != Recette && compte.Type != Depense) {
      EXPECT_EQ(rubrique, "") << numero;
      continue;
    }
    EXPECT_EQ(rubrique.empty(), sansRubrique.contains(numero)) << numero;
    if (rubrique.empty()) continue;
    ASSERT_TRUE(table.contains(rubrique)) << numero;
    // The lists of the account form offer the headings of the account's own side.
    EXPECT_EQ(+table.at(rubrique).TypeRubrique, compte.Type == Recette ? 0 : 1) << numero;
    const int recettes = Passages(table, "07", rubrique), depenses = Passages(table, "33", rubrique);
    if (compte.Type == Recette)
      EXPECT_EQ(std::pair(recettes, depenses), std::pair(1, 0)) << numero;
    else
      EXPECT_EQ(recettes - depenses, -1)
          << numero << " entre dans 07 : " << recettes << ", dans 33 : " << depenses;
    EXPECT_EQ(Passages(table, "34", rubrique), compte.Type == Recette ? 1 : -1) << numero;
  }
}

TEST(ModeleDefaut, FormulesDeLaDeclaration) {
  const Modele modele = Integre();
  const auto table = ParCode(modele);
  const std::set<std::string> variables = {"&AMORT", "&FRAISKM", "&PVC", "&MVC", "&IMMO_HTVA"};
  std::map<std::string, int> usages;
  constexpr std::size_t colonneDeclaration = 59;
  for (const auto& [code, rubrique] : table) {
    EXPECT_LE(LitTexte(rubrique.Designation).size(), colonneDeclaration) << code << " is narrowed on paper";
    const std::string formule = LitTexte(rubrique.Formule);
    if (formule.empty()) continue;
    EXPECT_GE(+rubrique.TypeRubrique, 2) << code << " : un compte pourrait y être perdu";
    for (const auto& [signe, terme] : Termes(formule)) {
      EXPECT_TRUE(table.contains(terme) || variables.contains(terme)) << code << " : " << terme;
      if (variables.contains(terme)) ++usages[terme];
    }
  }
  for (const std::string& variable : variables) EXPECT_EQ(usages[variable], 1) << variable;
  for (int ligne = 1; ligne <= 52; ++ligne) {
    char code[8];
    std::snprintf(code, sizeof code, "%02d", ligne);
    ASSERT_TRUE(table.contains(code)) << code;
    EXPECT_EQ(+table.at(code).Ligne, ligne);
  }
  // Result: excess and gains less shortfall, depreciation and losses.
  for (const auto& [terme, signe] :
       std::map<std::string, int>{{"34", 1}, {"35", 1}, {"39", -1}, {"41", -1}, {"42", -1}}) {
    auto coupee = table;
    coupee[terme].Formule[0] = 0;
    EXPECT_EQ(Passages(coupee, "46", terme), signe) << terme;
    EXPECT_EQ(Passages(coupee, "47", terme), -signe) << terme;
  }
}

constexpr const char* Tete = "fenlor-modele 1\n";
constexpr const char* Petit =
    "fenlor-modele 1\r\ndate 01/02/2003\r\n[comptes]\r\n706|hon|recette|Honoraires|1|pro=50\r\n"
    "[rubriques]\r\n1|1|recette|Recettes\r\n[libelles]\r\nChèque\r\n";

TEST(LitModele, LitUnPetitModele) {
  Modele modele;
  ErreurModele erreur;
  ASSERT_TRUE(LitModele(std::string("\xEF\xBB\xBF") + Petit, modele, erreur)) << VersUtf8(erreur.raison);
  ASSERT_EQ(modele.comptes.size(), 1u);
  EXPECT_EQ(LitTexte(modele.comptes[0].Compte), "7060000000");
  EXPECT_EQ(LitTexte(modele.comptes[0].Code), "HON");
  EXPECT_EQ(LitTexte(modele.comptes[0].Rubrique), "1  ");
  EXPECT_EQ(+modele.comptes[0].PartPro, 50.0);
  EXPECT_EQ(modele.libelles, std::vector<std::string>{"Chèque"_w});
  EXPECT_EQ(modele.date, FaitDate(1, 2, 2003));
}

TEST(LitModele, NommeLaLigneEtLaRaison) {
  const struct {
    std::string texte;
    unsigned ligne;
    const char* raison;
  } cas[] = {
      {"", 0, "pas un modèle"},
      {"PK\x03\x04", 1, "contrôle"},
      {"fenlor-modele 2\n", 1, "Version"},
      {"fenlor-modeles 1\n", 1, "pas un modèle"},
      {std::string(Tete) + "\xC3\x28\n", 2, "UTF-8"},
      {std::string(Tete) + "# \xE2\x98\xBA\n", 2, "UTF-8"},
      {std::string(Tete) + "date 31/02/2003\n", 2, "Date"},
      {std::string(Tete) + "[inconnue]\n", 2, "Section inconnue"},
      {std::string(Tete) + "706|A|recette|B\n", 2, "section"},
      {std::string(Tete) + "[comptes]\n706|A|recette\n", 3, "Un compte"},
      {std::string(Tete) + "[comptes]\n7 06|A|recette|B\n", 3, "Numéro"},
      {std::string(Tete) + "[comptes]\n12345678901|A|recette|B\n", 3, "Numéro"},
      {std::string(Tete) + "[comptes]\n706|ABCDEFGHI|recette|B\n", 3, "code"},
      {std::string(Tete) + "[comptes]\n706|A|produit|B\n", 3, "Type"},
      {std::string(Tete) + "[comptes]\n706|A|recette|" + std::string(81, 'x') + "\n", 3, "désignation"},
      {std::string(Tete) + "[comptes]\n706|A|recette|B\n7060|C|recette|D\n", 4, "numéro"},
      {std::string(Tete) + "[comptes]\n706|A|recette|B\n707|a|recette|D\n", 4, "code"},
      {std::string(Tete) + "[comptes]\n445|A|tva|B||taux=dix\n", 3, "pourcentage"},
      {std::string(Tete) + "[comptes]\n445|A|tva|B||taux=nan\n", 3, "pourcentage"},
      {std::string(Tete) + "[comptes]\n445|A|tva|B||age=12\n", 3, "Option"},
      {std::string(Tete) + "[comptes]\n706|A|recette|B|09\n[rubriques]\n01|1|recette|R\n", 3, "rubrique"},
      {std::string(Tete) + "[comptes]\n706|A|recette|B|01|tva=445\n[rubriques]\n01|1|recette|R\n", 3,
       "compte"},
      {std::string(Tete) + "[rubriques]\n01|un|recette|R\n", 3, "ligne"},
      {std::string(Tete) + "[rubriques]\n01|1|recette|R\n01|2|recette|S\n", 4, "existe"},
      {std::string(Tete) + "[rubriques]\n01|1|recette|R|" + std::string(128, '1') + "\n", 3, "127"},
      {std::string(Tete) + "[particuliers]\nBanque = 512\n", 3, "particulier"},
      {std::string(Tete) + "[reglages]\nTAUX EURO 1 = 2\n", 3, "section > "},
      {std::string(Tete) + "[reglages]\nTAUX EURO > = 2\n", 3, "clé = valeur"},
      {std::string(Tete) + "[libelles]\n@Texte\n", 3, "@"},
      {Tete, 0, "comptes"},
      {std::string(2u << 20, '#'), 0, "mégaoctet"},
  };
  for (const auto& c : cas) {
    Modele modele;
    ErreurModele erreur;
    EXPECT_FALSE(LitModele(c.texte, modele, erreur)) << c.texte.substr(0, 80);
    EXPECT_EQ(erreur.ligne, c.ligne) << c.texte.substr(0, 80);
    EXPECT_NE(VersUtf8(erreur.raison).find(c.raison), std::string::npos)
        << c.texte.substr(0, 80) << " : " << VersUtf8(erreur.raison);
  }
}

TEST(ChargeModele, LeRepertoireDesProgrammesPrime) {
  test::DossierTemporaire dossier;
  SystemePosix systeme;
  Modele modele;
  ErreurModele erreur;
  ASSERT_TRUE(ChargeModele(systeme, dossier.Chemin(), modele, erreur));
  EXPECT_GT(modele.comptes.size(), 60u);
  test::EcritFichier(dossier.Chemin() + "/defaut.qvc", Petit);
  ASSERT_TRUE(ChargeModele(systeme, dossier.Chemin(), modele, erreur));
  EXPECT_EQ(modele.comptes.size(), 1u);
  // A template that stands there and cannot be read is not passed over in silence.
  test::EcritFichier(dossier.Chemin() + "/defaut.qvc", "vide");
  EXPECT_FALSE(ChargeModele(systeme, dossier.Chemin(), modele, erreur));
  EXPECT_EQ(erreur.ligne, 1u);
}

}  // namespace
}  // namespace fenlor::test
