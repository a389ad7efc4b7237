#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "core/valeurs.h"
#include "ctl/ctldetest.h"
#include "pages/enregistreur.h"
#include "reports/catalogue.h"

namespace fenlor::test {
namespace {

using ::testing::AllOf;
using ::testing::StartsWith;

class EtatCtl : public CtlDeTest {
 protected:
  void SetUp() override {
    Cree();
    Saisit(
        R"({"journal":"recettes","date":"03/03/2003","compte":"706","libelle":"Consultations","ttc":100,"tresorerie":"BQ"}
{"journal":"recettes","date":"10/05/2003","compte":"706","libelle":"Visite Noël","ttc":30,"tresorerie":"CA","valider":true}
{"journal":"depenses","date":"06/03/2003","code":"TEL","libelle":"Téléphone","ttc":50,"tresorerie":"BQ"})");
  }
  Resultat Etat(std::vector<std::string> args) {
    args.insert(args.begin(), {"--aujourdhui", "15/06/2003", "etat"});
    return Lance(std::move(args));
  }
  Resultat Marquage(std::vector<std::string> args) {
    args.emplace_back("--marquage");
    return Etat(std::move(args));
  }
};

/// Pages are drawn side by side: all are there, in order, whole, and none twice.
TEST_F(EtatCtl, BeaucoupDePages) {
  std::string entree, attendu, lu;
  for (unsigned i = 0; i < 8800; ++i) {
    const std::string libelle = "Acte " + std::to_string(10000 + i);
    entree += R"({"journal":"recettes","date":"03/04/2003","compte":"706","libelle":")" + libelle +
              R"(","ttc":10,"tresorerie":"CA"})" + "\n";
    attendu += libelle + "\n";
  }
  ASSERT_EQ(Lance({"saisir", "--tout"}, entree).statut, StatutFait);
  const Resultat r = Etat({"extrait", "--texte", "--compte", "706", "--mois", "4/2003"});
  std::istringstream lignes(r.sortie);
  unsigned derniere = 0;
  for (std::string ligne; std::getline(lignes, ligne);) {
    const unsigned page = static_cast<unsigned>(std::stoul(ligne));
    if (const auto place = ligne.find("\tActe "); place != std::string::npos)
      lu += ligne.substr(place + 1) + "\n";
    if (const auto place = ligne.find("\tPage "); place != std::string::npos) {
      EXPECT_EQ(page, ++derniere);
      EXPECT_THAT(ligne.substr(place + 1), StartsWith("Page " + std::to_string(page) + " / "));
    }
    EXPECT_TRUE(page == derniere || page == derniere + 1) << page;
  }
  EXPECT_GT(derniere, 128u);
  EXPECT_TRUE(lu == attendu) << derniere;
}

TEST_F(EtatCtl, LigneIncorrecteOuRefusee) {
  const std::vector<Appel> cas = {
      {{}, StatutUsage, "il manque nom"},
      {{"bilan", "--texte"}, StatutUsage, "état inconnu : bilan (detail, extrait, grand-livre"},
      {{"balance", "--texte", "--style", "moderne"}, StatutUsage, "mot inconnu : moderne"},
      {{"tva", "--texte", "--mouvementes"}, StatutUsage, "--mouvementes ne va pas avec l'état tva"},
      {{"balance"}, StatutUsage, "il faut une sortie, et une seule"},
      {{"balance", "--texte", "--marquage"}, StatutUsage, "il faut une sortie, et une seule"},
      {{"tva", "--texte", "--mois", "3/2003", "--du", "01/03/2003"}, StatutUsage, "incompatibles"},
      {{"tva", "--texte", "--mois", "2003"}, StatutUsage, "mois incorrect"},
      {{"detail", "--texte", "--genre", "od", "--centralisation", "jour"}, StatutUsage, "--centralisation"},
      {{"detail", "--texte", "--genre", "autre"}, StatutUsage, "mot inconnu : autre"},
      {{"tva", "--texte", "--compte", "512"}, StatutUsage, "--compte ne va pas avec l'état tva"},
      {{"tva", "--texte", "--affichage", "montant"}, StatutUsage, "--affichage ne va pas avec l'état tva"},
      {{"centralisation", "--texte", "--au", "01/03/2003"}, StatutUsage, "--au ne va pas"},
      {{"extrait", "--texte", "--genre", "od"}, StatutUsage, "--genre ne va pas"},
      {{"balance", "--texte", "--du", "01/03/2003"}, StatutUsage, "--du ne va pas avec l'état balance"},
      {{"libelles", "--texte", "--compte", "tous"}, StatutUsage, "--compte ne va pas"},
      {{"balance", "--texte", "--mode", "toutes"}, StatutUsage, "--mode ne va pas"},
      {{"journal", "--texte", "--journal", "od"}, StatutUsage, "il manque --mois"},
      {{"journal", "--texte", "--mois", "3/2003"}, StatutUsage, "il manque --journal"},
      {{"journal", "--texte", "--journal", "od", "--mois", "3/2003", "--genre", "od"},
       StatutUsage,
       "--genre ne va pas avec l'état journal"},
      {{"journal", "--texte", "--journal", "od", "--mois", "3/2004"}, StatutRefuse, "\"mois\""},
      {{"extrait", "--texte", "--compte", "XX"}, StatutRefuse, "Erreur 3205 : Le champ \"compte\""},
      {{"extrait", "--texte", "--compte", "日"}, StatutRefuse, "\"compte\""},
      {{"balance", "--pdf", "f.pdf"}, StatutRefuse, "Erreur 3270 : Ce fenlorctl est construit sans PDF."},
  };
  for (const auto& c : cas) {
    const Resultat r = Etat(c.args);
    EXPECT_EQ(r.statut, c.statut) << ::testing::PrintToString(c.args) << r.sortie << r.erreurs;
    EXPECT_THAT(r.erreurs, HasSubstr(c.dit)) << ::testing::PrintToString(c.args);
    EXPECT_EQ(r.sortie, "") << ::testing::PrintToString(c.args);
  }
  const Resultat aide = Etat({"--help"});
  for (const DefinitionEtat& etat : CatalogueEtats()) EXPECT_THAT(aide.sortie, HasSubstr(etat.nom));
}

TEST_F(EtatCtl, SansDossierTemporaire) {
  const char* dossier = std::getenv("TMPDIR");
  const std::string avant = dossier ? dossier : "";
  setenv("TMPDIR", "/absent", 1);
  const Resultat r = Etat({"detail", "--texte", "--genre", "od"});
  dossier ? setenv("TMPDIR", avant.c_str(), 1) : unsetenv("TMPDIR");
  EXPECT_EQ(r.statut, StatutRefuse);
  EXPECT_THAT(r.erreurs, StartsWith("Erreur 3109 : "));
  EXPECT_EQ(r.sortie, "");
}

TEST_F(EtatCtl, UneFormuleQuiRevientEstDite) {
  EXPECT_EQ(Etat({"2035", "--texte"}).erreurs, "");
  const Resultat importe = Lance({"importer", "RUBRIQUE", "-"},
                                 "{\"Rubrique\":\"9A \",\"Ligne\":2,\"Formule\":\"9B\"}\n"
                                 "{\"Rubrique\":\"9B \",\"Ligne\":3,\"Formule\":\"9A\"}\n");
  ASSERT_EQ(importe.statut, StatutFait) << importe.erreurs;
  const Resultat r = Marquage({"2035"});
  EXPECT_EQ(r.statut, StatutFait);
  EXPECT_THAT(r.sortie, StartsWith("titre: REVENUS 2003\n"));
  EXPECT_THAT(r.erreurs, StartsWith("Attention : Des formules reviennent sur elles-mêmes."));
  EXPECT_THAT(r.erreurs, ::testing::EndsWith(" :\n  9A > 9B > 9A\n"));
}

TEST_F(EtatCtl, CriteresTransmis) {
  const auto dit = [&](std::vector<std::string> args, std::vector<const char*> dedans,
                       std::vector<const char*> dehors) {
    const Resultat r = Marquage(args);
    EXPECT_EQ(r.statut, StatutFait) << ::testing::PrintToString(args) << r.erreurs;
    for (const char* texte : dedans)
      EXPECT_THAT(r.sortie, HasSubstr(texte)) << ::testing::PrintToString(args);
    for (const char* texte : dehors)
      EXPECT_THAT(r.sortie, Not(HasSubstr(texte))) << ::testing::PrintToString(args);
  };
  dit({"detail"},
      {"titre: Détail des écritures\n", "Consultations", "Téléphone", "Noël", "01/01/2003", "31/12/2003"},
      {});
  dit({"detail", "--mois", "3/2003"}, {"Consultations", "Téléphone", "01/03/2003", "31/03/2003"}, {"Noël"});
  dit({"detail", "--genre", "recettes"}, {"Consultations", "Noël"}, {"Téléphone"});
  dit({"detail", "--genre", "recettes", "--centralisation", "mois"}, {"Centralisation par Mois"},
      {"Consultations"});
  dit({"extrait", "--du", "01/05/2003", "--compte", "706"}, {"10/05/2003"}, {"03/03/2003", "06/03/2003"});
  dit({"extrait", "--au", "30/04/2003", "--compte", "tel"}, {"06/03/2003"}, {"03/03/2003", "10/05/2003"});
  dit({"extrait", "--compte", "tous"}, {"03/03/2003", "06/03/2003", "10/05/2003"}, {});
  EXPECT_NE(Marquage({"extrait", "--affichage", "montant"}).sortie, Marquage({"extrait"}).sortie);
  EXPECT_EQ(Marquage({"extrait", "--affichage", "credit-debit"}).sortie, Marquage({"extrait"}).sortie);

  const std::vector<std::string> mars{"journal", "--journal", "recettes", "--mois", "3/2003"};
  dit(mars, {"Consultations"}, {"Noël", "Téléphone"});
  const std::vector<std::string> mai{"journal", "--journal", "recettes", "--mois", "5/2003"};
  const auto avec = [&](std::vector<std::string> suite) {
    suite.insert(suite.begin(), mai.begin(), mai.end());
    return suite;
  };
  dit(avec({"--mode", "validees", "--compte", "CA"}), {"Noël"}, {});
  dit(avec({"--mode", "brouillard"}), {}, {"Noël"});
  dit(avec({"--compte", "BQ"}), {}, {"Noël"});
  EXPECT_NE(Marquage(avec({"--comptable"})).sortie, Marquage(mai).sortie);
}

TEST_F(EtatCtl, Marquage) {
  const Resultat r = Marquage({"balance"});
  ASSERT_EQ(r.statut, StatutFait) << r.erreurs;
  EXPECT_THAT(r.sortie, StartsWith("titre: Balance des comptes\nentete: "));
  EXPECT_THAT(r.sortie, HasSubstr("\npied: "));
  std::size_t blocs = 0;
  for (const std::string& ligne : r.Lignes()) blocs += ligne.starts_with("== ");
  EXPECT_THAT(r.Lignes().back(), StartsWith("== "));

  const auto objets = Etat({"balance", "--marquage", "--json"}).Lignes();
  ASSERT_EQ(objets.size(), blocs + 1);
  EXPECT_EQ(Json::parse(objets[0])["titre"], "Balance des comptes");
  std::string texte;
  for (std::size_t i = 1; i < objets.size(); ++i) texte += Json::parse(objets[i])["texte"].get<std::string>();
  EXPECT_THAT(texte, HasSubstr("Classe 5"));
}

TEST_F(EtatCtl, Texte) {
  const auto lignes = Etat({"balance", "--texte", "--json", "--style", "classique"}).Lignes();
  const auto textes = Etat({"balance", "--texte", "--style", "classique"}).Lignes();
  ASSERT_FALSE(lignes.empty());
  ASSERT_EQ(lignes.size(), textes.size());
  bool montant = false, trait = false;
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    const Json e = Json::parse(lignes[i]);
    EXPECT_GE(e["page"], 1);
    EXPECT_LE(e["droite"], Enregistreur::A4().Largeur()) << lignes[i];
    EXPECT_THAT(textes[i], HasSubstr('\t' + std::to_string(e["droite"].get<int>()) + '\t'));
    EXPECT_THAT(textes[i], HasSubstr(e["texte"].get<std::string>()));
    montant = montant || (e["texte"].get<std::string>().starts_with("130,00") && e["alignement"] == "droite");
    trait = trait || e["alignement"] == "trait";
  }
  EXPECT_TRUE(montant && trait);
  const std::string neuf = Etat({"balance", "--texte"}).sortie;  // a new practice's own style
  EXPECT_THAT(neuf, AllOf(HasSubstr("15/06/2003"), HasSubstr("bande"), Not(HasSubstr("\ttrait\t"))));
}

TEST_F(EtatCtl, Pdf) {
  std::string fichier, titre;
  bool reussit = true;
  const auto ecrit = [&](CFenlorApp& app, CEtatComptable& etat, const std::string& chemin, int) {
    fichier = chemin;
    titre = etat.TitreDocument();
    if (!reussit) app.Boite.Erreur(4711, "Disque plein");
    return reussit;
  };
  Options().ecritPdf = ecrit;
  Resultat r = Etat({"tva", "--pdf", "dossier/tva.pdf"});
  EXPECT_EQ(r.statut, StatutFait) << r.erreurs;
  EXPECT_EQ(fichier, "dossier/tva.pdf");
  EXPECT_EQ(titre, "Etat de T.V.A.");
  Options().ecritPdf = [&](CFenlorApp&, CEtatComptable&, const std::string&, int descripteur) {
    struct stat s;
    EXPECT_EQ(fstat(descripteur, &s), 0);
    EXPECT_EQ(s.st_nlink, 0u) << "a program that is killed here leaves its pages behind";
    return write(descripteur, "%PDF-1.4", 8) == 8;
  };
  r = Etat({"tva", "--pdf", "-"});
  EXPECT_EQ(r.sortie, "%PDF-1.4") << r.erreurs;
  Options().ecritPdf = ecrit;
  reussit = false;
  r = Etat({"tva", "--pdf", "x"});
  EXPECT_EQ(r.statut, StatutRefuse);
  EXPECT_EQ(r.erreurs, "Erreur 4711 : Disque plein\n");
}

}  // namespace
}  // namespace fenlor::test
