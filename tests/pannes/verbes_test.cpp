// Every verb of fenlorctl that writes, killed on its way, and with each of its calls of the system failing,
// once and for good: afterwards the books are those from before or from behind, and what went wrong was told.
// FENLOR_MORTS says how many kills, FENLOR_APPELS how many failing calls (0: all of them, AppelsMax of a
// verb that makes more), FENLOR_VERBE whose (the beginning of its name), FENLOR_GRAINE the seed.

#include <iostream>
#include <random>

#include "pannes/outils.h"

namespace fs = std::filesystem;

namespace fenlor::pannes {
namespace {

constexpr long AppelsMax = 600;

/// What may stand between the books from before and those from behind.
enum class Etapes {
  Aucune,
  Unites,   ///< whole units
  Reprend,  ///< something that the same verb, run again, brings to its end
  Demain    ///< the same where it was killed; what was refused waits for another day
};

struct Verbe {
  const char* nom;
  std::vector<std::string> arguments;
  std::string entree;
  Etapes etapes = Etapes::Aucune;
};

/// Files whose records show what the books hold.
const char* const Fichiers[] = {"JOURNAL", "COMPTES", "RUBRIQUE", "BANQUE",   "RELEVES",
                                "AUTO",    "Immo",    "Amo",      "RECETTES", "DEPENSES"};

std::string Repete(unsigned nombre, const std::function<std::string(unsigned)>& ligne) {
  std::string texte;
  for (unsigned i = 1; i <= nombre; ++i) texte += ligne(i) + "\n";
  return texte;
}

std::string Operations(unsigned premiere) {
  return Repete(300, [&](unsigned i) {
    return Json({{"Compte", "512"},
                 {"Libelle", "Op " + std::to_string(premiere + i)},
                 {"Date", "15/03/2003"},
                 {"MontantEuro", i},
                 {"Sens", 1}})
        .dump();
  });
}

std::string Modeles(const Comptes& comptes) {
  return Repete(5, [&](unsigned i) {
    return Json({{"Genre", 2},
                 {"Date", "15/01/2003"},
                 {"Tresorerie", comptes.banque},
                 {"Compte", comptes.depense},
                 {"MontantEuro", i},
                 {"Periodicite", 6}})
        .dump();
  });
}

std::string Biens(unsigned premier) {
  return Repete(100, [&](unsigned i) {
    return Json({{"Numero", premier + i},
                 {"Designation", "Table"},
                 {"DateAchat", "15/03/2003"},
                 {"ValeurAmortissableEuro", 1000.0},
                 {"Duree", 5.0}})
        .dump();
  });
}

std::vector<Verbe> AutresVerbes(const Comptes& comptes) {
  return {{"etat remise",
           {"etat", "remise", "--remettre", "--compte", comptes.banque, "--date", "20/03/2003", "--marquage"},
           {}},
          {"echeances", {"--aujourdhui", "20/06/2003", "echeances", "--toutes"}, {}, Etapes::Demain},
          {"immobilisation ajouter",
           {"immobilisation", "ajouter"},
           Repete(3,
                  [](unsigned i) {
                    return Json({{"PrixEuro", i}, {"DateAchat", "15/03/2003"}}).dump();
                  }),
           Etapes::Unites},
          {"immobilisation modifier",
           {"immobilisation", "modifier"},
           Repete(3,
                  [](unsigned i) {
                    return Json({{"Numero", i}, {"Designation", "Autre"}, {"Monnaie", 1}}).dump();
                  }),
           Etapes::Unites},
          {"immobilisation detail",
           {"immobilisation", "detail"},
           R"({"Numero":7,"Annees":[{"Annee":2003,"Reel":5}]})"},
          {"immobilisation supprimer", {"immobilisation", "supprimer"}, R"({"Numero":7})"}};
}

class Verbes : public testing::Test {
 protected:
  void SetUp() override {
    m_hasard.seed(Nombre("FENLOR_GRAINE", 17));
    m_modele = m_dossier.Chemin() + "/modele";
    m_essai = m_dossier.Chemin() + "/essai";
    m_entree = m_dossier.Chemin() + "/entree";
    ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_modele));
    const Comptes comptes = LitComptes(m_modele);
    const auto saisie = [&](unsigned premiere) {
      return Repete(150, [&](unsigned i) {
        std::string ligne =
            LigneSaisie(comptes, i % 2 == 0, "Piece " + std::to_string(premiere + i), 20 + i, 10 + i);
        return ligne.substr(0, ligne.size() - 1);
      });
    };
    const auto remplit = [&](const std::vector<std::string>& verbe, const std::string& entree) {
      std::vector<std::string> arguments = {"--cabinet", m_modele, "--oui"};
      arguments.insert(arguments.end(), verbe.begin(), verbe.end());
      const Resultat r = Ctl(arguments, entree);
      ASSERT_EQ(r.statut, 0) << verbe.front() << ": " << r.erreurs;
    };
    remplit({"saisir", "--tout"}, saisie(1));
    remplit({"importer", "BANQUE"}, Operations(0));
    remplit({"importer", "Immo"}, Biens(0));
    remplit({"automatique", "ajouter"}, Modeles(comptes));
    remplit({"compte", "ajouter", "--compte", "604", "--forme", "depenses", "--designation", "Achats",
             "--code", "ZACHATS"},
            {});
    const std::string releve = m_dossier.Chemin() + "/releve.csv";
    test::EcritFichier(releve, "Date;Libelle;Montant\n" + Repete(600, [](unsigned i) {
                                 return "15/03/2003;Releve " + std::to_string(i / 2) + ";1,50";
                               }));
    m_verbes = {
        {"releve importer", {"releve", "importer", releve, "--compte", "BQ"}, {}},
        {"saisir --tout", {"saisir", "--tout"}, saisie(1000)},
        {"saisir", {"saisir"}, saisie(1000), Etapes::Unites},
        {"importer BANQUE", {"importer", "BANQUE"}, Operations(1000)},
        {"importer Immo", {"importer", "Immo"}, Biens(1000)},
        {"valider", {"valider"}, {}},
        {"renumeroter", {"renumeroter", "--journal", "depenses", "--mois", "03/2003"}, {}},
        {"deplacer", {"deplacer", "--mouvement", "3", "--mouvement", "5", "--mois", "4"}, {}},
        {"virement",
         {"virement", "--de", comptes.banque, "--vers", comptes.caisse, "--montant", "50", "--date",
          "15/03/2003"},
         {}},
        {"remise remettre", {"remise", "remettre", "--compte", comptes.banque, "--date", "20/03/2003"}, {}},
        {"automatique ajouter", {"automatique", "ajouter"}, Modeles(comptes), Etapes::Unites},
        {"recalculer", {"recalculer"}, {}},
        {"recalculer --euros", {"recalculer", "--euros"}, {}, Etapes::Reprend},
        {"reconstruire", {"reconstruire"}, {}},
        {"compte ajouter",
         {"compte", "ajouter", "--compte", "605", "--forme", "depenses", "--designation", "Autres", "--code",
          "ZAUTRES"},
         {}},
        {"compte modifier", {"compte", "modifier", "604", "--designation", "Autre"}, {}},
        {"compte supprimer", {"compte", "supprimer", "604"}, {}},
        {"frais-km enregistrer", {"frais-km", "enregistrer", "--distance", "9000"}, {}},
        {"creer", {"--exercice", "2004", "creer", "--euro"}, {}, Etapes::Reprend},
    };
    for (const Verbe& verbe : AutresVerbes(comptes)) m_verbes.push_back(verbe);
    if (const char* seuls = std::getenv("FENLOR_VERBE"))
      std::erase_if(m_verbes, [&](const Verbe& verbe) { return !std::string(verbe.nom).starts_with(seuls); });
    for (Verbe& verbe : m_verbes) {
      const std::vector<std::string> propres = std::exchange(verbe.arguments, {});
      const bool nomme = propres.front() == "--exercice";
      verbe.arguments = {"--cabinet", m_essai, "--oui"};
      if (!nomme) verbe.arguments.insert(verbe.arguments.end(), {"--exercice", "2003"});
      verbe.arguments.insert(verbe.arguments.end(), propres.begin(), propres.end());
    }
  }

  /// What fenlorctl prints; a refusal goes to `plainte`.
  std::string Montre(std::vector<std::string> arguments, std::string& plainte) {
    arguments.insert(arguments.begin(), {"--cabinet", m_essai, "--exercice", "2003"});
    const Resultat r = Ctl(arguments);
    if (r.statut != 0 && plainte.empty()) plainte = arguments.back() + ": " + r.sortie + r.erreurs;
    return r.sortie;
  }

  /// All that the books show. Where their records stand byte for byte as they did before, it is what was
  /// shown then.
  std::string Etat(std::string& plainte) {
    Montre({"verifier"}, plainte);
    std::map<std::string, std::string> octets;
    for (const auto& entree : fs::recursive_directory_iterator(m_essai)) {
      const std::string chemin = entree.path().string();
      if (!chemin.ends_with(".dat") && !chemin.ends_with(".ini")) continue;
      const std::string contenu = test::LitFichier(chemin);
      const bool emplacements = chemin.ends_with(".dat") && !chemin.ends_with("TEXTES.dat");
      octets[chemin] = contenu.substr(emplacements ? std::min<std::size_t>(1024, contenu.size()) : 0);
    }
    std::string& tout = m_connus[octets];
    if (!tout.empty() || !plainte.empty()) return tout;
    for (const char* fichier : Fichiers) tout += Montre({"exporter", fichier}, plainte);
    tout += Montre({"frais-km", "afficher"}, plainte);
    tout += Montre({"exercices"}, plainte);
    return tout;
  }

  DossierTemporaire m_dossier;
  std::string m_modele, m_essai, m_entree;
  std::vector<Verbe> m_verbes;
  /// What books of these bytes, by file, show.
  std::map<std::map<std::string, std::string>, std::string> m_connus;
  std::mt19937 m_hasard;
};

TEST_F(Verbes, TuesEnChemin) {
  const unsigned morts = Nombre("FENLOR_MORTS", 16);
  unsigned tues = 0, avant = 0, apres = 0, entre = 0;
  struct Issue {
    std::string avant, apres;
    Chasse chasse;
  };
  std::map<std::string, Issue> issues;
  for (unsigned tour = 0; tues < morts && tour < 4 * morts + 40; ++tour) {
    const Verbe& verbe = m_verbes[tour % m_verbes.size()];
    SCOPED_TRACE(verbe.nom);
    Issue& issue = issues.try_emplace(verbe.nom, Issue{{}, {}, {m_hasard, morts, 30'000}}).first->second;
    std::string plainte;
    if (issue.apres.empty()) {
      Recopie(m_modele, m_essai);
      issue.avant = Etat(plainte);
      ASSERT_EQ(plainte, "");
      test::EcritFichier(m_entree, verbe.entree);
      const Resultat r = issue.chasse.LanceEntiere(verbe.arguments, m_entree);
      ASSERT_EQ(r.statut, 0) << r.sortie << r.erreurs;
      issue.apres = Etat(plainte);
      ASSERT_EQ(plainte, "");
    }
    Recopie(m_modele, m_essai);
    test::EcritFichier(m_entree, verbe.entree);
    tues += issue.chasse.Lance(verbe.arguments, m_entree).statut == 128 + 9;
    std::string etat = Etat(plainte);
    avant += etat == issue.avant;
    apres += etat != issue.avant && etat == issue.apres;
    if (plainte.empty() && (etat == issue.avant || etat == issue.apres)) continue;
    ++entre;
    if (verbe.etapes >= Etapes::Reprend) {
      plainte.clear();
      ASSERT_EQ(Ctl(verbe.arguments, verbe.entree).statut, 0);
      etat = Etat(plainte);
    }
    ASSERT_EQ(plainte, "") << "kill " << tues;
    ASSERT_TRUE(verbe.etapes == Etapes::Unites || etat == issue.apres)
        << "kill " << tues << ": neither the books from before nor those from behind";
  }
  std::cout << tues << " verbs killed, " << avant << " without effect, " << apres << " done, " << entre
            << " between two units\n";
  EXPECT_GE(tues, morts);
}

#ifndef __SANITIZE_ADDRESS__  // whose library must be the first one
TEST_F(Verbes, ChaqueAppelDuSystemeQuiManque) {
  m_verbes.push_back({"balance", {"--cabinet", m_essai, "--exercice", "2003", "balance"}, {}});
  m_verbes.push_back({"verifier", {"--cabinet", m_essai, "--exercice", "2003", "verifier"}, {}});
  m_verbes.push_back({"exporter", {"--cabinet", m_essai, "--exercice", "2003", "exporter", "JOURNAL"}, {}});
  m_verbes.push_back(
      {"etat", {"--cabinet", m_essai, "--exercice", "2003", "etat", "grand-livre", "--texte"}, {}});
  const std::string biblio =
      (fs::read_symlink("/proc/self/exe").parent_path() / "libappelsfautifs.so").string();
  const std::string compte = m_dossier.Chemin() + "/compte", erreurs = m_dossier.Chemin() + "/erreurs";
  const auto lance = [&](const Verbe& verbe, long rang, bool toujours) {
    Recopie(m_modele, m_essai);
    test::EcritFichier(m_entree, verbe.entree);
    std::vector<std::string> arguments = {
        "-c", "exec timeout 60 env LD_PRELOAD=" + biblio + " FENLOR_APPEL=" + std::to_string(rang) +
                  " FENLOR_APPEL_TOUJOURS=" + (toujours ? "1" : "") + " FENLOR_APPEL_DOSSIER=" + m_essai +
                  " FENLOR_APPEL_COMPTE=" + compte + " \"$0\" \"$@\" 2> " + erreurs};
    arguments.push_back((fs::path(biblio).parent_path() / "fenlorctl").string());
    arguments.insert(arguments.end(), verbe.arguments.begin(), verbe.arguments.end());
    Enfant enfant(arguments, m_entree, "/bin/sh");
    Resultat r = enfant.Attend();
    r.erreurs = test::LitFichier(erreurs);
    return r;
  };
  const unsigned voulus = Nombre("FENLOR_APPELS", 20);
  unsigned essais = 0, dits = 0;
  for (const Verbe& verbe : m_verbes) {
    std::string plainte;
    Recopie(m_modele, m_essai);
    const std::string avant = Etat(plainte);
    const Resultat entier = lance(verbe, 0, false);
    ASSERT_EQ(entier.statut, 0) << verbe.nom << entier.erreurs;
    const long appels = std::stol(test::LitFichier(compte));
    ASSERT_GT(appels, 10);
    const std::string apres = Etat(plainte);
    ASSERT_EQ(plainte, "");
    const long part = std::max(1l, static_cast<long>(voulus / m_verbes.size()));
    const bool tous = voulus == 0 && appels <= AppelsMax;
    const long fin = tous ? 2 * appels : voulus ? part : 2 * AppelsMax;
    if (voulus == 0) std::cout << verbe.nom << ": " << fin << " of " << 2 * appels << std::endl;
    for (long n = 1; n <= fin; ++n, ++essais) {
      const long tire = tous ? n : static_cast<long>(m_hasard() % static_cast<unsigned>(2 * appels)) + 1;
      const long rang = (tire + 1) / 2;
      const bool toujours = tire % 2 == 0;
      SCOPED_TRACE(testing::Message() << verbe.nom << ", call " << rang << " of " << appels
                                      << (toujours ? " and all behind it" : ""));
      const Resultat r = lance(verbe, rang, toujours);
      std::string etat = Etat(plainte);
      if (verbe.etapes == Etapes::Reprend && r.statut == 1 && etat != avant && etat != apres) {
        plainte.clear();
        EXPECT_EQ(Ctl(verbe.arguments, verbe.entree).statut, 0);
        etat = Etat(plainte);
      }
      EXPECT_EQ(plainte, "") << r.erreurs;
      plainte.clear();
      EXPECT_TRUE(r.statut == 0 || r.statut == 1) << r.statut << r.erreurs;
      // What a verification finds is its output.
      EXPECT_TRUE(r.statut == 0 || !r.erreurs.empty() || r.sortie != entier.sortie)
          << "refused without a word";
      EXPECT_TRUE(r.statut != 0 || (etat == apres && (r.sortie == entier.sortie || !r.erreurs.empty())))
          << "told as done" << r.erreurs;
      const bool unites = verbe.etapes == Etapes::Unites || verbe.etapes == Etapes::Demain;
      EXPECT_TRUE(unites || etat == avant || etat == apres) << "half" << r.erreurs;
      dits += r.statut != 0;
      if (HasFailure() && voulus) return;
    }
  }
  std::cout << essais << " failing calls, " << dits << " told\n";
}
#endif

}  // namespace
}  // namespace fenlor::pannes
