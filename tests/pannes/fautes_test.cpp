// Each system call fails once, and then for good: the answer is success or a
// refusal with a message, the books stay sound, what was acknowledged is there and
// what was refused is not.

#include <ostream>
#include <set>

#include "outils/systemefautif.h"
#include "outils/systemesanssynchro.h"
#include "pannes/outils.h"

namespace fs = std::filesystem;

namespace fenlor::pannes {
namespace {

struct Panne {
  const char* nom;
  unsigned genres;
  int erreur;
  bool partielles = false;
};

void PrintTo(const Panne& panne, std::ostream* sortie) { *sortie << panne.nom; }

const Panne Pannes[] = {
    {"DisquePlein", SystemeFautif::Ecriture | SystemeFautif::Reservation, ENOSPC},
    {"DisquePleinAMoitie", SystemeFautif::Ecriture, ENOSPC, true},
    {"EcritureImpossible", SystemeFautif::Ecriture, EIO},
    {"SynchroImpossible", SystemeFautif::Synchro, EIO},
    {"DossierNonSynchronise", SystemeFautif::SynchroDossier, EIO},
    {"OuvertureRefusee", SystemeFautif::Ouvertures, EACCES},
    {"RenommageRefuse", SystemeFautif::Renommage, EACCES},
    {"SuppressionRefusee", SystemeFautif::Suppression, EACCES},
    {"TroncatureImpossible", SystemeFautif::Troncature, EIO},
    {"CreationDeDossierRefusee", SystemeFautif::Dossier, EACCES},
    {"LectureImpossible", SystemeFautif::Lectures, EIO},
    {"MesureImpossible", SystemeFautif::Mesurage, EIO},
    {"ListeImpossible", SystemeFautif::Listage, EACCES},
};

class Fautes : public testing::TestWithParam<Panne> {
 protected:
  void SetUp() override {
    // What the undisturbed chart holds, to know the accounts beforehand.
    const std::string modele = m_dossier.Chemin() + "/modele";
    ASSERT_NO_FATAL_FAILURE(CreeCabinet(modele));
    m_comptes = LitComptes(modele);
  }

  std::vector<std::string> Saisie(bool apres) const {
    std::vector<std::string> lignes;
    for (unsigned i = 0; i < 6; ++i) {
      lignes.push_back(LigneSaisie(m_comptes, i % 2 == 0, (apres ? "apres " : "pendant ") + std::to_string(i),
                                   30 + i, 20 + i));
    }
    return lignes;
  }

  /// Labels that `saisir` acknowledged and refused among these lines.
  struct Bilan {
    std::set<std::string> acquis, refuses;
  };
  void Note(const Resultat& r, const std::vector<std::string>& lignes, Bilan& bilan) {
    const auto reponses = LignesJson(r.sortie);
    ASSERT_TRUE(reponses) << r.sortie;
    for (const Json& reponse : *reponses) {
      const auto numero = reponse.value("entree", 0u);
      ASSERT_TRUE(numero >= 1 && numero <= lignes.size()) << reponse.dump();
      const std::string libelle = Json::parse(lignes[numero - 1]).value("libelle", "");
      if (reponse.contains("erreur")) {
        EXPECT_NE(reponse.value("texte", ""), "") << reponse.dump();
        bilan.refuses.insert(libelle);
      } else {
        bilan.acquis.insert(libelle);
      }
    }
  }

  /// One story under one fault; false when the fault was never met.
  bool Raconte(unsigned k, bool uneFois, bool tout, bool creation) {
    const Panne& panne = GetParam();
    const std::string cabinet = m_dossier.Chemin() + "/essai";
    fs::remove_all(cabinet);
    SystemeSansSynchro disque;
    SystemeFautif systeme(disque);
    if (!creation) CreeCabinet(cabinet);
    systeme.EcrituresPartielles(panne.partielles);
    systeme.Programme(k, panne.erreur, panne.genres, uneFois);
    const auto sain = [](const Resultat& r, const char* quoi) {
      EXPECT_TRUE(r.statut == 0 || r.statut == 1) << quoi << ": " << r.statut;
      EXPECT_FALSE(r.statut == 1 && r.erreurs.empty()) << quoi << " refused without a word: " << r.sortie;
    };
    Bilan bilan;
    const std::vector<std::string> creer = {"--cabinet", cabinet,  "creer", "--exercice",
                                            "2003",      "--euro", "--tva"};
    std::vector<std::string> saisir = {"--cabinet", cabinet, "--exercice", "2003", "saisir"};
    if (tout) saisir.push_back("--tout");
    std::string entree;
    for (const std::string& ligne : Saisie(false)) entree += ligne;

    bool cree = true;
    if (creation) {
      const Resultat r = Ctl(creer, {}, &systeme);
      sain(r, "creer");
      cree = r.statut == 0;
    }
    if (cree) {
      const Resultat r = Ctl(saisir, entree, &systeme);
      sain(r, "saisir");
      Note(r, Saisie(false), bilan);
      EXPECT_TRUE(r.statut == 1 || bilan.acquis.size() == Saisie(false).size()) << r.sortie;
    }
    const bool touche = systeme.NbPannes() != 0;
    systeme.Repare();

    // The disk is well again.
    if (!cree) {
      const Resultat r =
          Ctl({"--cabinet", cabinet, "--oui", "creer", "--exercice", "2003", "--euro", "--tva"});
      EXPECT_EQ(r.statut, 0) << "creer once more: " << r.erreurs;
    }
    Verifie(cabinet);
    entree.clear();
    for (const std::string& ligne : Saisie(true)) entree += ligne;
    const Resultat encore = Ctl({"--cabinet", cabinet, "--exercice", "2003", "saisir"}, entree);
    EXPECT_EQ(encore.statut, 0) << encore.sortie << encore.erreurs;
    Note(encore, Saisie(true), bilan);

    std::set<std::string> presents;
    for (const auto& [mouvement, lignes] : LitJournal(cabinet)) {
      EXPECT_EQ(Anomalie(lignes), "");
      presents.insert(lignes.front().value("Libelle", ""));
    }
    for (const std::string& libelle : bilan.acquis)
      EXPECT_TRUE(presents.contains(libelle)) << libelle << " was lost";
    for (const std::string& libelle : bilan.refuses) {
      EXPECT_FALSE(presents.contains(libelle)) << libelle << " was refused, and is there";
    }
    return touche;
  }

  DossierTemporaire m_dossier;
  Comptes m_comptes;
};

TEST_P(Fautes, RienNeSePerdEtToutSeDit) {
  // Failing for good tells little new at each k: a few are enough.
  for (const bool uneFois : {true, false}) {
    unsigned k = 1;
    for (bool touche = true; touche && k < 5000; k += uneFois ? 1 : 1 + k / 2) {
      SCOPED_TRACE(testing::Message() << "operation " << k << (uneFois ? ", once" : ", from then on"));
      touche = Raconte(k, uneFois, k % 3 == 0, true);
      if (HasFailure()) return;
    }
    if (uneFois) RecordProperty("operations", static_cast<int>(k - 1));
  }
}

TEST_P(Fautes, SurUnCabinetQuiExiste) {
  unsigned k = 1;
  for (bool touche = true; touche && k < 5000; ++k) {
    SCOPED_TRACE(testing::Message() << "operation " << k);
    touche = Raconte(k, true, k % 2 == 0, false);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Disque, Fautes, testing::ValuesIn(Pannes),
                         [](const auto& p) { return std::string(p.param.nom); });

/// A full disk is no damage: the reason is the system's, and the old file stays.
TEST(Raisons, UnDisquePleinNEstPasUnFichierEndommage) {
  const DossierTemporaire dossier;
  const std::string cabinet = dossier.Chemin() + "/cabinet";
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(cabinet));
  SystemeSansSynchro disque;
  SystemeFautif systeme(disque);
  systeme.SurChemin(".neuf");
  systeme.Programme(1, ENOSPC, SystemeFautif::Ecriture | SystemeFautif::Reservation, false);
  Resultat r = Ctl({"--cabinet", cabinet, "reconstruire"}, {}, &systeme);
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("Erreur 3440"), std::string::npos) << r.erreurs;
  EXPECT_NE(r.erreurs.find("Aucun espace disponible"), std::string::npos) << r.erreurs;
  EXPECT_EQ(r.erreurs.find("3010"), std::string::npos) << r.erreurs;
  systeme.SurChemin("JOURNAL.dat");
  systeme.Programme(1, EMFILE, SystemeFautif::Ouvertures, false);
  r = Ctl({"--cabinet", cabinet, "balance"}, {}, &systeme);
  EXPECT_NE(
      r.erreurs.find("Erreur 3011 : Ouverture fichier (2003/JOURNAL.dat) impossible : Trop de fichiers"),
      std::string::npos)
      << r.erreurs;
}

/// A disk that did not answer once says nothing about the file.
TEST(Raisons, UneLectureManqueeNEstPasUnFichierEndommage) {
  const DossierTemporaire dossier;
  const std::string cabinet = dossier.Chemin() + "/cabinet";
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(cabinet));
  SystemeSansSynchro disque;
  SystemeFautif systeme(disque);
  systeme.SurChemin("2003/JOURNAL.dat");
  unsigned k = 0;
  do {
    systeme.Programme(++k, EIO,
                      SystemeFautif::Lectures | SystemeFautif::Ouvertures | SystemeFautif::Mesurage);
    const Resultat r = Ctl({"--cabinet", cabinet, "reconstruire", "JOURNAL"}, {}, &systeme);
    EXPECT_EQ(r.sortie.find("endommag"), std::string::npos) << k << r.sortie;
    EXPECT_TRUE(r.statut == 0 || r.erreurs.find("entrée ou de sortie") != std::string::npos)
        << k << r.erreurs;
    EXPECT_FALSE(std::filesystem::exists(cabinet + "/2003/JOURNAL.avarie")) << k;
  } while (systeme.NbPannes() != 0 && k < 200);
  EXPECT_GT(k, 5u);
}

}  // namespace
}  // namespace fenlor::pannes
