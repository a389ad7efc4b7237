#include "ctl/ctldetest.h"
#include "outils/systemefautif.h"
#include "store/motdepasse.h"

namespace fenlor::test {
namespace {

class Commandes : public CtlDeTest {
 protected:
  /// Two receipts and an expense with a private share, one entry validated.
  void Saisit() {
    CtlDeTest::Saisit(
        R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":100.5,"tresorerie":"BQ","valider":true,"rapprocher":true}
{"journal":"recettes","date":"16/03/2003","compte":"7061","ttc":20,"tresorerie":"CA"}
{"journal":"depenses","date":"17/03/2003","code":"TEL","ttc":60,"professionnel":45,"tresorerie":"BQ"})");
  }
};

TEST_F(Commandes, UsagesRefuses) {
  const std::vector<std::string> cas[] = {
      {},
      {"truc"},
      {"balance"},
      {"--cabinet"},
      {"--cabinet", "x"},
      {"--cabinet", "x", "balance", "--truc"},
      {"--cabinet", "x", "balance", "reste"},
      {"--cabinet", "x", "--aujourdhui", "31/02/2003", "balance"},
      {"--cabinet", "x", "exporter"},
      {"--cabinet", "x", "exporter", "FACTURES"},
      {"--cabinet", "x", "exporter", "JOURNAL", "--cle", "6"},
      {"--cabinet", "x", "exporter", "JOURNAL", "--cle", "-1"},
      {"--cabinet", "x", "exporter", "AUTO", "--cle", "0"},
      {"--cabinet", "x", "importer", "FACTURES"},
      {"--cabinet", "x", "reconstruire", "AUTO"},
      {"--cabinet", "x", "creer"},
      {"--cabinet", "x", "creer", "--exercice", "CAB"},
      {"--cabinet", "x", "creer", "--exercice", "2003", "--debut", "01/07/2003"},
      {"--cabinet", "x", "creer", "--exercice", "2003", "--franc", "--euro"},
  };
  for (const auto& args : cas) {
    const Resultat r = Execute(args);
    EXPECT_EQ(r.statut, StatutUsage) << testing::PrintToString(args);
    EXPECT_EQ(r.sortie, "");
    EXPECT_TRUE(r.erreurs.starts_with("fenlorctl : ")) << testing::PrintToString(args);
  }
  EXPECT_FALSE(std::filesystem::exists("x"));
}

TEST_F(Commandes, AideEnFrancais) {
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{"--help"}, {"saisir", "--help"}, {"demo", "-h"}}) {
    const Resultat r = Execute(args);
    EXPECT_EQ(r.statut, StatutFait);
    EXPECT_THAT(r.sortie, HasSubstr("Utilisation"));
    for (const char* anglais : {"Usage", "Subcommands", "Print this", "Excludes", "REQUIRED"})
      EXPECT_EQ(r.sortie.find(anglais), std::string::npos) << anglais;
  }
}

TEST_F(Commandes, VersionEtCabinetDeLEnvironnement) {
  Cree();
  setenv("FENLOR_CABINET", Cabinet().c_str(), 1);
  for (const auto& [mot, dit] : {std::pair{"--version", "fenlorctl 5.0."}, {"exercices", "31/12/2003"}}) {
    const Resultat r = Execute({mot});
    EXPECT_EQ(r.statut, StatutFait) << r.erreurs;
    EXPECT_THAT(r.sortie, HasSubstr(dit));
  }
  unsetenv("FENLOR_CABINET");
}

TEST_F(Commandes, CreationEtMonnaie) {
  struct Creation {
    std::vector<std::string> options;
    int statut;
    const char* monnaie;  ///< of what was created, else the refusal
  };
  // Each on a new practice, behind the exercices of the ones before it in a row.
  const std::vector<Creation> suites[] = {
      {{{"--exercice", "1998"}, 0, "Franc"},
       {{"--exercice", "1999", "--euro"}, 0, "Euro"},
       {{"--exercice", "2000"}, 0, "Euro"}},
      {{{"--exercice", "2003"}, 0, "Euro"},
       {{"--exercice", "2003"}, 1, "3073"},
       {{"--exercice", "2003", "--oui"}, 0, "Euro"},
       {{"--exercice", "04", "--debut", "02/01/2004", "--fin", "01/01/2004"}, 1, "3212"}},
  };
  int numero = 0;
  for (const auto& suite : suites) {
    const std::string cabinet = Cabinet("c" + std::to_string(numero++));
    for (const Creation& creation : suite) {
      std::vector<std::string> args = creation.options;
      args.insert(args.begin(), "creer");
      const Resultat r = LanceSur(cabinet, args);
      EXPECT_EQ(r.statut, creation.statut) << creation.options[1] << r.erreurs;
      EXPECT_NE((r.sortie + r.erreurs).find(creation.monnaie), std::string::npos) << r.sortie << r.erreurs;
    }
  }
}

TEST_F(Commandes, ListeEtExerciceCourant) {
  EXPECT_EQ(Lance({"balance"}).statut, StatutRefuse);
  Cree({"--exercice", "2003", "--tva"});
  EXPECT_EQ(Lance({"--json", "creer", "--exercice", "2004"}).sortie,
            R"({"nom":"2004","debut":"01/01/2004","fin":"31/12/2004","euro":true,"tva":false})"
            "\n");
  const auto lignes = Lance({"exercices", "--json"}).Lignes();
  ASSERT_EQ(lignes.size(), 2u);
  EXPECT_EQ(
      Json::parse(lignes[0]),
      Json::parse(
          R"({"nom":"2003","debut":"01/01/2003","fin":"31/12/2003","euro":true,"tva":true,"cloture":"","courant":false})"));
  EXPECT_EQ(Json::parse(lignes[1])["courant"], true);
  // The exercice asked for does not become the current one.
  EXPECT_EQ(Lance({"saisir"}, Recette).statut, StatutRefuse);
  EXPECT_EQ(Lance({"--exercice", "2003", "saisir"}, Recette).statut, StatutFait);
  EXPECT_EQ(Lance({"--exercice", "2003", "exporter", "JOURNAL"}).Lignes().size(), 2u);
  EXPECT_EQ(Lance({"exporter", "JOURNAL"}).Lignes().size(), 0u);
  const Resultat inconnu = Lance({"--exercice", "1999", "balance"});
  EXPECT_EQ(inconnu.statut, StatutRefuse);
  EXPECT_EQ(inconnu.erreurs, "Erreur 3208 : L'exercice 1999 n'existe pas.\n");
}

TEST_F(Commandes, CabinetAbsentOuOccupe) {
  EXPECT_EQ(LanceSur(Cabinet("nulle/part"), {"creer", "--exercice", "2003"}).statut, StatutRefuse);
  EXPECT_EQ(LanceSur(Cabinet("absent"), {"exercices"}).statut, StatutRefuse);
  EXPECT_FALSE(std::filesystem::exists(Cabinet("absent")));
  std::filesystem::create_directories(Cabinet("illisible") + "/fenlor.ini");
  EXPECT_THAT(LanceSur(Cabinet("illisible"), {"exercices"}).erreurs, HasSubstr("illisible/fenlor.ini"));
  Cree();
  QVAPI autre(Options().magasin);
  ASSERT_TRUE(autre.QVOpenSession(1) && autre.QVOpenCompta(Cabinet(), ""));
  const Resultat r = Lance({"balance"});
  EXPECT_EQ(r.statut, StatutRefuse);
  EXPECT_NE(r.erreurs.find("Erreur 3213 : Ce cabinet est déjà ouvert (processus "), std::string::npos)
      << r.erreurs;
  ASSERT_TRUE(autre.QVCloseSession());
  EXPECT_EQ(Lance({"balance"}).statut, StatutFait);
}

// The work was done and told; what could not be brought home is told too, and nothing is lost.
TEST_F(Commandes, UneFermetureQuiEchoueSeDit) {
  Cree();
  SystemeSansSynchro vrai;
  SystemeFautif disque(vrai);
  disque.SurChemin("JOURNAL.dat");
  disque.Programme(1, EIO, SystemeFautif::Synchro, false);
  const Resultat r = LanceSur(Cabinet(), {"saisir"}, Recette, &disque);
  EXPECT_EQ(r.statut, StatutRefuse);
  EXPECT_THAT(r.erreurs, HasSubstr("Erreur 3214"));
  EXPECT_EQ(r.sortie, "{\"entree\":1,\"mouvement\":1,\"ligne\":1}\n");
  EXPECT_EQ(Journal().size(), 2u);
  Sain();
}

// The exercice stands; that the next start will not know it as the current one is told.
TEST_F(Commandes, UneCreationQuiNEstPasNoteeSeDit) {
  SystemeSansSynchro vrai;
  SystemeFautif disque(vrai);
  disque.SurChemin("fenlor.ini");
  Cree({"--exercice", "2002"});  // the first one notes the style of paper, too
  unsigned annee = 2003, notees = 0;
  for (unsigned k = 1; k < 20; ++k, ++annee) {
    disque.Programme(k, ENOSPC, SystemeFautif::Renommage, false);
    const Resultat r = LanceSur(Cabinet(), {"creer", "--exercice", std::to_string(annee)}, {}, &disque);
    const bool manque = disque.NbPannes() != 0;
    disque.Repare();
    EXPECT_EQ(r.statut, manque ? StatutRefuse : StatutFait) << k << r.erreurs;
    EXPECT_EQ(manque, r.erreurs.find("Aucun espace") != std::string::npos) << k << r.erreurs;
    notees += manque && !r.sortie.empty();
    if (!manque) break;
  }
  EXPECT_GT(notees, 0u);
  Sain(std::to_string(annee));
}

TEST_F(Commandes, MotDePasse) {
  Cree();
  {
    QVAPI magasin(Options().magasin);
    ASSERT_TRUE(magasin.QVOpenSession(1) && magasin.QVOpenCompta(Cabinet(), ""));
    ASSERT_TRUE(magasin.Reglages().Ecrit("Activite", "Mot de Passe", MotDePasseBrouille("\xE9pice")));
  }
  Essaie({"balance"}, {{{}, StatutRefuse, "Erreur 3074 : Mot de passe erroné !\n"},
                       {{"--mot-de-passe", "sel"}, StatutRefuse, "Erreur 3074"},
                       {{"--mot-de-passe", "Épice"}, StatutFait, "512"}});
}

TEST_F(Commandes, Balance) {
  Cree();
  Saisit();
  const auto comptes = Balance();
  const struct {
    const char* compte;
    f64 debit, credit, solde, rapproche;
  } attendus[] = {{"512", 100.5, 60, -40.5, -100.5},
                  {"53", 20, 0, -20, 0},
                  {"706", 0, 100.5, 100.5, 0},
                  {"6262", 45, 0, -45, 0},
                  {"108", 15, 0, -15, 0}};
  for (const auto& a : attendus) {
    const Json& compte = comptes.at(a.compte);
    EXPECT_EQ(compte["DebitEuro"], a.debit) << a.compte;
    EXPECT_EQ(compte["CreditEuro"], a.credit) << a.compte;
    EXPECT_EQ(compte["SoldeEuro"], a.solde) << a.compte;
    EXPECT_EQ(compte["SoldeRapprocheEuro"], a.rapproche) << a.compte;
  }
  // Each field bears the value that the record has under its name.
  for (const Json& fiche : Lance({"exporter", "COMPTES"}).Objets()) {
    std::string numero = fiche["Compte"];
    numero.erase(numero.find_last_not_of('0') + 1);
    for (const auto& [nom, valeur] : comptes.at(numero).items()) {
      if (fiche.contains(nom))
        EXPECT_EQ(valeur, fiche[nom]) << numero << " " << nom;
      else
        EXPECT_TRUE(nom.starts_with("Solde")) << nom;
    }
  }
  const Json& banque = comptes.at("512");
  EXPECT_EQ(banque["SoldeFranc"], -265.67);
  EXPECT_EQ(banque["SoldeRapprocheFranc"], -659.24);
  EXPECT_EQ(banque["SoldeReelEuro"], -40.5);
  EXPECT_EQ(comptes.at("")["TotalDebitEuro"], 180.5);
  EXPECT_EQ(comptes.at("")["TotalCreditEuro"], 180.5);
  const auto texte = Lance({"balance"}).Lignes();
  EXPECT_EQ(texte.size(), comptes.size() + 1);
  EXPECT_NE(texte.back().find("180,50"), std::string::npos);
}

TEST_F(Commandes, AllerRetourDesFichiers) {
  Cree();
  Saisit();
  const std::pair<const char*, const char*> donnees[] = {
      {"BANQUE", R"({"Compte":"512","Date":"01/04/2003","MontantEuro":-0.0,"MontantFranc":0.1,"Sens":1})"},
      {"Immo", R"({"Numero":2,"Designation":"Échographe\t\"A\"","DateAchat":"02/01/2003","Duree":5})"},
      {"Amo", R"({"Numero":2,"Annee":2003,"ReelEuro":100})"},
      {"AUTO", "{\"Libelle\":\"Loyer\",\"Periodicite\":6}\n{\"Libelle\":\"Eau\"}"}};
  for (const auto& [fichier, lignes] : donnees) Essaie({"importer", fichier}, {{{}, StatutFait, "", lignes}});
  ASSERT_EQ(LanceSur(Cabinet("copie"), {"creer", "--exercice", "2003"}).statut, StatutFait);
  for (const char* fichier : {"COMPTES", "RUBRIQUE", "JOURNAL", "BANQUE", "Immo", "Amo", "AUTO"}) {
    std::vector<std::string> args = {"exporter", fichier};
    if (args[1] != "AUTO") args.insert(args.end(), {"--cle", "0"});
    const Resultat origine = Lance(args);
    ASSERT_EQ(origine.statut, StatutFait);
    EXPECT_FALSE(origine.sortie.empty()) << fichier;
    const Resultat import = LanceSur(Cabinet("copie"), {"importer", fichier}, origine.sortie);
    EXPECT_EQ(import.statut, StatutFait) << import.erreurs;
    EXPECT_EQ(LanceSur(Cabinet("copie"), args).sortie, origine.sortie) << fichier;
  }
  const Resultat verifie = LanceSur(Cabinet("copie"), {"verifier"});
  EXPECT_EQ(verifie.statut, StatutFait) << verifie.sortie;
}

TEST_F(Commandes, ImportRefuseParLigne) {
  Cree();
  const Resultat r = Lance(
      {"importer", "COMPTES", "--json"},
      "{\"Compte\":\"900\",\"Type\":4}\n{\"Compte\":\"901\",\"Typo\":4}\n\n{\"Type\":4}\n"
      "{\"Compte\":\"902\",\"Type\":5}\n{\"Compte\":\"900\",\"Type\":4,\"Designation\":\"Seconde\"}\n{\n");
  EXPECT_EQ(r.statut, StatutRefuse);
  EXPECT_EQ(r.sortie, "{\"fichier\":\"COMPTES\",\"importes\":2,\"refuses\":4}\n");
  for (const char* attendu : {"Erreur 3203, ligne 2 :", "Erreur 3204, ligne 4 :", "Erreur 3205, ligne 5 :",
                              "Erreur 3200, ligne 7 :"})
    EXPECT_NE(r.erreurs.find(attendu), std::string::npos) << r.erreurs;
  EXPECT_EQ(Balance().at("9")["Designation"], "Seconde");

  // A line whose later keys belong to another record is refused by itself.
  const std::string ligne =
      R"({"Mouvement":1,"Journal":1,"Date":"01/02/2003","DateLigne":"01/02/2003","MontantEuro":5,)";
  const Resultat lignes =
      Lance({"importer", "JOURNAL"}, ligne + "\"Compte\":\"706\"}\n" + ligne + "\"Compte\":\"512\"}\n" +
                                         ligne + "\"Compte\":\"706\",\"Libelle\":\"x\"}\n");
  EXPECT_EQ(lignes.sortie, "JOURNAL : 2 enregistrement(s) importé(s), 1 refusé(s).\n");
  EXPECT_NE(lignes.erreurs.find("Erreur 3049, ligne 2 :"), std::string::npos) << lignes.erreurs;
  EXPECT_EQ(Journal().size(), 1u);
  EXPECT_EQ(Balance().at("706")["DebitEuro"], 5);
}

TEST_F(Commandes, VerifierRecalculer) {
  Cree();
  Saisit();
  Essaie(
      {"importer", "COMPTES"},
      {{{},
        StatutFait,
        "",
        R"({"Compte":"706","Code":"HONOR","Designation":"Honoraires","Rubrique":"01","Type":1,"PartPro":100,"CreditEuro":7})"}});
  const Resultat malade = Lance({"verifier", "--json"});
  EXPECT_EQ(malade.statut, StatutRefuse);
  EXPECT_GE(Json::parse(malade.Lignes().back())["anomalies"], 1);
  const Resultat recalcul = Lance({"recalculer", "--euros", "--json"});
  EXPECT_EQ(recalcul.statut, StatutFait) << recalcul.erreurs;
  const Json bilan = Json::parse(recalcul.sortie);
  EXPECT_EQ(
      bilan,
      Json::parse(R"({"NbRecettes":2,"NbDepenses":1,"NbOD":0,"NbPointees":0,"NbRemises":0,"NbRapprochees":1,
                                 "NbValidees":1,"NbNonRapprochees":1,"lignes":7,"lignesAjustees":0})"));
  EXPECT_EQ(Balance().at("706")["CreditEuro"], 100.5);
  EXPECT_EQ(Lance({"verifier"}).sortie, "Aucune anomalie.\n");
}

TEST_F(Commandes, Reconstruire) {
  Cree();
  Saisit();
  Essaie({"reconstruire"}, {{{"journal", "--json"}, StatutFait, R"("gardes":7)"}});
  EcritFichier(Cabinet() + "/fenlor.rep", std::string(200'000, 'x'));
  Essaie({}, {{{"balance"}, StatutRefuse, "fenlor.rep"},
              {{"reconstruire"}, StatutFait, "fenlor.rep est illisible : il est mis de côté."}});
  EXPECT_EQ(Lance({"reconstruire"}).Lignes().size(), 7u);
}

TEST_F(Commandes, Demo) {
  const Resultat r = Lance({"demo", "--json"});
  ASSERT_EQ(r.statut, StatutFait) << r.erreurs;
  ASSERT_EQ(r.Lignes().size(), 3u);
  for (const std::string& ligne : r.Lignes()) EXPECT_GT(Json::parse(ligne)["ecritures"], 2800) << ligne;
  for (const char* exercice : {"2001", "2002", "2003"}) Sain(exercice);
  std::set<std::pair<int, bool>> genres;
  for (const Json& ligne : Lance({"--exercice", "2002", "exporter", "JOURNAL"}).Objets()) {
    const Date date = GetDate(ligne["Date"].get<std::string>());
    EXPECT_EQ(ligne["SaisieEuro"] == 0, date <= FaitDate(17, 2, 2002)) << ligne;
    genres.insert({ligne["Genre"], ligne["Validee"] != 0});
    const bool versee = ligne["Libelle"] == "Versement d'espèces à la banque" && ligne["Sens"] == 0;
    EXPECT_TRUE(!versee || ligne["ModePaiement"] == 1) << "cash is no cheque for a slip";
  }
  EXPECT_EQ(genres.size(), 6u);
  EXPECT_EQ(Lance({"immobilisation", "lister", "--json"}).Lignes().size(), 13u);
  EXPECT_EQ(Lance({"demo"}).statut, StatutRefuse);
  const Resultat encore = LanceSur(Cabinet("autre"), {"demo", "--json"});
  EXPECT_EQ(encore.sortie, r.sortie);
  EXPECT_EQ(LanceSur(Cabinet("autre"), {"exporter", "JOURNAL"}).sortie,
            Lance({"exporter", "JOURNAL"}).sortie);
}

}  // namespace
}  // namespace fenlor::test
