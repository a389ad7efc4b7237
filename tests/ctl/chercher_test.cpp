
#include <random>
#include <set>

#include "ctl/ctldetest.h"
#include "recherche/recherche.h"

namespace fenlor::test {
namespace {

/// The exported book, each entry as all the spellings that it answers to.
struct Naive {
  std::set<std::string> exacts;      ///< amounts, dates, months
  std::vector<std::string> textes;   ///< a word anywhere in them
  std::vector<std::string> numeros;  ///< a word at their beginning
  std::set<std::string> jours;       ///< before the name of the month
  i64 debit[2] = {};

  bool Repond(const std::string& mot, const std::string& suivant) const {
    if (exacts.contains(suivant) && std::isalpha(suivant.back()) && jours.contains(mot)) return true;
    const auto dans = [&](const std::string& t) { return t.find(mot) != std::string::npos; };
    const auto debut = [&](const std::string& t) { return t.starts_with(mot); };
    return exacts.contains(mot) || std::any_of(textes.begin(), textes.end(), dans) ||
           std::any_of(numeros.begin(), numeros.end(), debut);
  }
};

class ChercherCtl : public CtlDeTest {
 protected:
  using Livre = std::map<int, Naive>;

  static std::string Plie(const Json& texte) {
    std::string plie;
    AjouteSansAccents(plie, DepuisUtf8(texte.get<std::string>()).value());
    return plie;
  }
  static void Montant(Naive& naive, i64 centimes) {
    if (centimes == 0) return;
    const std::string entier = std::to_string(centimes / 100),
                      reste = std::to_string(centimes % 100 + 100).substr(1);
    for (const char* signe : {"", "-"})
      for (const char* point : {",", "."}) naive.exacts.insert(signe + entier + point + reste);
    if (centimes >= 100) naive.exacts.insert({entier, entier + "F"});
  }
  static void Jour(Naive& naive, const std::string& date) {
    constexpr const char* Mois[] = {"JANVIER", "FEVRIER", "MARS",      "AVRIL",   "MAI",      "JUIN",
                                    "JUILLET", "AOUT",    "SEPTEMBRE", "OCTOBRE", "NOVEMBRE", "DECEMBRE"};
    const std::string j = date.substr(0, 2), m = date.substr(3, 2), a = date.substr(6);
    naive.exacts.insert({date, j + "/" + m, j + m, j + "." + m, j + m + a, m + "/" + a, a + "-" + m + "-" + j,
                         a, j + "-" + m + "-" + a.substr(2), Mois[std::stoi(m) - 1]});
    naive.jours = {j, std::to_string(std::stoi(j))};
  }
  Livre Exporte() {
    std::map<std::string, Json> plan;
    for (const Json& compte : Lance({"exporter", "COMPTES"}).Objets()) plan[compte["Compte"]] = compte;
    Livre livre;
    for (const Json& l : Journal()) {
      Naive& naive = livre[l["Mouvement"]];
      for (const char* champ : {"Libelle", "Piece", "RappLibelle"}) naive.textes.push_back(Plie(l[champ]));
      if (l["Role"] == 5) naive.textes.push_back(Plie(l["Designation"]));
      Jour(naive, l["Date"]);
      const Json& compte = plan.at(l["Compte"]);
      naive.textes.push_back(Plie(compte["Designation"]));
      naive.numeros.insert(naive.numeros.end(), {Plie(compte["Compte"]), Plie(compte["Code"])});
      for (const bool euro : {false, true}) {
        const i64 centimes = std::llround(l[euro ? "MontantEuro" : "MontantFranc"].get<f64>() * 100);
        Montant(naive, centimes);
        if (l["Sens"] == 0) naive.debit[euro] += centimes;
      }
    }
    for (auto& [mouvement, naive] : livre)
      for (const i64 debit : naive.debit) Montant(naive, debit);
    return livre;
  }
  std::vector<Json> Trouve(std::vector<std::string> args) {
    args.insert(args.begin(), "chercher");
    const Resultat r = Lance(args);
    EXPECT_EQ(r.statut, StatutFait) << r.erreurs;
    return r.Objets();
  }
  std::vector<std::string> Libelles(std::vector<std::string> args) {
    std::vector<std::string> libelles;
    for (const Json& t : Trouve(std::move(args)))
      if (t["Sorte"] == "Ecriture") libelles.push_back(t["Libelle"]);
    return libelles;
  }
};

TEST_F(ChercherCtl, CommeUneRechercheNaiveSurLeLivreExporte) {
  // A tenth of a real book, its lines in any order.
  ASSERT_EQ(StatutFait, LanceSur(Cabinet("demo"), {"demo"}).statut);
  Cree();
  const auto exporte = [&](const char* fichier) {
    return LanceSur(Cabinet("demo"), {"exporter", fichier}).Lignes();
  };
  std::mt19937 hasard(20);
  for (const char* fichier : {"COMPTES", "JOURNAL"}) {
    std::vector<std::string> lignes = exporte(fichier);
    std::shuffle(lignes.begin(), lignes.end(), hasard);
    std::string texte;
    for (const std::string& ligne : lignes)
      if (Json::parse(ligne).value("Mouvement", 0) % 24 == 0) texte += ligne + "\n";
    ASSERT_EQ(StatutFait, Lance({"importer", fichier}, texte).statut);
  }
  const Livre livre = Exporte();
  ASSERT_GT(livre.size(), 100u);
  QVAPI magasin(Options().magasin);
  ASSERT_TRUE(magasin.QVOpenSession(1) && magasin.QVOpenCompta(Cabinet(), ""));
  DialogueScript boite;
  CFenlorApp app(magasin, boite);
  app.NomExercice = magasin.GetLastExercice();
  app.PathExercice = magasin.CheminExercice(app.NomExercice);
  const auto tire = [&hasard](std::size_t n) { return hasard() % n; };
  // Words that are there, cut, and words of another entry: what an entry answers to, and what it does not.
  const auto mot = [&](const Naive& naive) -> std::string {
    const std::size_t sorte = tire(3);
    if (sorte == 0) return *std::next(naive.exacts.begin(), static_cast<long>(tire(naive.exacts.size())));
    const std::string& texte =
        sorte == 1 ? naive.textes[tire(naive.textes.size())] : naive.numeros[tire(naive.numeros.size())];
    const std::size_t debut = sorte == 1 && !texte.empty() ? tire(texte.size()) : 0;
    std::string part = texte.substr(debut, 2 + tire(6));
    return part.substr(0, part.find(' '));
  };
  std::size_t trouvees = 0, muettes = 0;
  for (int i = 0; i < 2000; ++i) {
    std::vector<std::string> mots;
    auto modele = std::next(livre.begin(), static_cast<long>(tire(livre.size())));
    for (std::size_t n = 1 + tire(3); n > 0; --n) {
      if (tire(4) == 0) modele = std::next(livre.begin(), static_cast<long>(tire(livre.size())));
      if (const std::string m = mot(modele->second); !m.empty() && m.front() != '-') mots.push_back(m);
    }
    if (mots.empty()) continue;
    std::set<int> attendus, lus;
    for (const auto& [mouvement, naive] : livre) {
      bool tous = true;
      for (std::size_t m = 0; m < mots.size(); ++m)
        tous = tous && naive.Repond(mots[m], m + 1 < mots.size() ? mots[m + 1] : std::string("?"));
      if (tous) attendus.insert(mouvement);
    }
    std::string texte;
    for (const std::string& m : mots) texte += m + ' ';
    Recherche recherche(app, Requete(texte), {});
    // In slices, as the window does.
    while (recherche.Avance(500)) continue;
    for (const Trouvaille& t : recherche.Trouvailles())
      if (t.sorte == SorteTrouvaille::Ecriture) lus.insert(static_cast<int>(t.mouvement));
    ASSERT_EQ(attendus, lus) << texte;
    ++(attendus.empty() ? muettes : trouvees);
  }
  EXPECT_GT(trouvees, 500u);
  EXPECT_GT(muettes, 50u);
}

TEST_F(ChercherCtl, OrdreExercicesEtSortes) {
  Cree({"--exercice", "2002"});
  Cree({"--exercice", "2003"});
  const auto saisit = [&](const char* exercice, const std::string& lignes) {
    EXPECT_EQ(StatutFait, Lance({"--exercice", exercice, "saisir"}, lignes).statut);
  };
  saisit(
      "2002",
      R"({"journal":"recettes","date":"03/03/2002","compte":"706","libelle":"Visite","ttc":12,"tresorerie":"BQ"})");
  saisit(
      "2003",
      R"({"journal":"recettes","date":"03/03/2003","compte":"706","libelle":"Revisite","ttc":1250,"tresorerie":"BQ"}
{"journal":"recettes","date":"04/03/2003","compte":"706","libelle":"Grande visite","ttc":30.5,"tresorerie":"BQ"}
{"journal":"recettes","date":"05/03/2003","compte":"706","libelle":"Visite","ttc":30,"tresorerie":"BQ"}
{"journal":"recettes","date":"02/03/2003","compte":"706","libelle":"Visite éloignée","ttc":30,"tresorerie":"BQ"})");
  // The whole label, then words that begin so, later ones first, then what is inside a word.
  EXPECT_THAT(Libelles({"VISITE"}), ElementsAre("Visite", "Grande visite", "Visite éloignée", "Revisite"));
  EXPECT_THAT(Libelles({"visite", "--au-plus", "1"}), ElementsAre("Visite"));
  EXPECT_THAT(Libelles({"eloignee"}), ElementsAre("Visite éloignée"));
  EXPECT_THAT(Libelles({"1.250,00€"}), ElementsAre("Revisite"));
  EXPECT_THAT(Libelles({"4", "avril"}), IsEmpty());
  EXPECT_THAT(Libelles({"4", "mars", "2003"}), ElementsAre("Grande visite"));
  EXPECT_THAT(Libelles({"30"}), ElementsAre("Visite", "Grande visite", "Visite éloignée"));
  EXPECT_THAT(Libelles({"30,5"}), ElementsAre("Grande visite"));
  EXPECT_EQ(4u, Libelles({"visite"}).size());
  const std::vector<Json> tous = Trouve({"12", "--tous-les-exercices"});
  ASSERT_FALSE(tous.empty());
  EXPECT_EQ("2002", tous.front()["Exercice"]);
  const Json compte = Trouve({"706"}).front();
  EXPECT_EQ("Compte", compte["Sorte"]);
  EXPECT_EQ("7060000000", compte["Compte"]);
  EXPECT_EQ("Rubrique", Trouve({"debours", "clients"}).front()["Sorte"]);
  EXPECT_EQ(StatutUsage, Lance({"chercher"}).statut);
  EXPECT_EQ(StatutUsage, Lance({"chercher", std::string(100, 'a') +
                                                [] {
                                                  std::string mots;
                                                  for (int i = 0; i < 40; ++i) mots += " a";
                                                  return mots;
                                                }()})
                             .statut);
}

}  // namespace
}  // namespace fenlor::test
