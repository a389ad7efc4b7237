// Entries typed into the window of a journal until the program is killed: what the form had cleared
// itself for is there whole, at most one more, and nothing is there half. FENLOR_MORTS_FENETRE says
// how many kills, FENLOR_GRAINE the seed.

#include <iostream>
#include <random>

#include "journal/suspens.h"
#include "pannes/outils.h"

namespace fenlor::pannes {
namespace {

TEST(MortsFenetre, CeQueLaFormeAConfirmeResteEntier) {
  const unsigned graine = Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000);
  SCOPED_TRACE(graine);
  std::mt19937 hasard(graine);
  const unsigned morts = Nombre("FENLOR_MORTS_FENETRE", 8);
  const DossierTemporaire dossier;
  const std::string cabinet = dossier.Chemin() + "/cabinet";
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(cabinet));

  std::map<std::string, f64> connues;  // label and amount of what must be there
  unsigned confirmes = 0, sansReponse = 0, premiere = 1;
  for (unsigned mort = 0; mort < morts; ++mort) {
    Enfant enfant({cabinet, std::to_string(premiere)}, "/dev/null", "saisiefenetre");
    // The first entries are typed before the clock runs.
    for (int i = 0; i < 500 && !enfant.Fini() && enfant.Sortie().empty(); ++i) enfant.Ecoute(20'000);
    ASSERT_FALSE(enfant.Fini()) << "the program ended by itself";
    enfant.Ecoute(static_cast<long>(hasard() % 400'000));
    enfant.Tue();
    const Resultat r = enfant.Attend();
    ASSERT_EQ(r.statut, 128 + 9) << r.sortie;
    const auto reponses = LignesJson(r.sortie.substr(0, r.sortie.rfind('\n') + 1));
    ASSERT_TRUE(reponses) << r.sortie;
    for (const Json& reponse : *reponses) connues[reponse.value("libelle", "")] = reponse.value("ttc", 0.0);
    confirmes += static_cast<unsigned>(reponses->size());

    Verifie(cabinet);
    std::map<std::string, f64> lues;
    for (const auto& [mouvement, lignes] : LitJournal(cabinet)) {
      EXPECT_EQ(Anomalie(lignes), "") << "entry " << mouvement;
      lues[lignes.front().value("Libelle", "")] = MontantTresorerie(lignes);
    }
    for (const auto& [libelle, ttc] : connues) {
      ASSERT_TRUE(lues.contains(libelle))
          << "kill " << mort << ": " << libelle << " was confirmed and is gone";
      EXPECT_NEAR(lues[libelle], ttc, 0.001) << libelle;
    }
    ASSERT_LE(lues.size(), connues.size() + 1) << "kill " << mort;
    sansReponse += lues.size() > connues.size();
    connues = lues;
    premiere = static_cast<unsigned>(1000 * (mort + 1));
  }
  std::cout << morts << " kills, " << confirmes << " entries confirmed, " << sansReponse
            << " saved without an answer\n";
  EXPECT_GE(confirmes, morts);
}

// What stood in a form whose field was left is offered at the next start, that one or a later one.
TEST(MortsFenetre, CeQuiEtaitTapeEstPropose) {
  const unsigned graine = Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000);
  SCOPED_TRACE(graine);
  std::mt19937 hasard(graine);
  const unsigned morts = Nombre("FENLOR_MORTS_FENETRE", 5);
  const DossierTemporaire dossier;
  const std::string cabinet = dossier.Chemin() + "/cabinet";
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(cabinet));
  for (unsigned mort = 0; mort < morts; ++mort) {
    const bool ligne = mort % 2 != 0;  // the form of a line, else that of a receipt
    Enfant enfant({cabinet, "1", ligne ? "ligne" : "suspens"}, "/dev/null", "saisiefenetre");
    for (int i = 0; i < 500 && !enfant.Fini() && enfant.Sortie().empty(); ++i) enfant.Ecoute(20'000);
    ASSERT_FALSE(enfant.Fini()) << "the program ended by itself";
    enfant.Ecoute(static_cast<long>(hasard() % 300'000));
    enfant.Tue();
    const Resultat r = enfant.Attend();
    const auto reponses = LignesJson(r.sortie.substr(0, r.sortie.rfind('\n') + 1));
    ASSERT_TRUE(reponses && !reponses->empty()) << r.sortie;

    QVAPI magasin;
    test::DialogueScript boite;
    CFenlorApp app(magasin, boite);
    ASSERT_TRUE(magasin.QVOpenSession(1) && magasin.QVOpenCompta(cabinet, {}) &&
                magasin.QVOpenExercice("2003"));
    app.PathExercice = magasin.PathExercice();
    const auto saisie = LitSuspens(app);
    ASSERT_TRUE(saisie) << "kill " << mort;
    const std::size_t dits = reponses->size();
    EXPECT_EQ(ligne, saisie->ligneOuverte);
    const std::string& libelle = ligne ? saisie->ligne.saisie.libelle : saisie->ecriture.libelle;
    EXPECT_TRUE(libelle == "Piece " + std::to_string(dits) || libelle == "Piece " + std::to_string(dits + 1))
        << libelle << ", " << dits << " told";
    magasin.QVCloseSession();
  }
}

}  // namespace
}  // namespace fenlor::pannes
