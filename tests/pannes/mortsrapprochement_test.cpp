// The automatic matching killed at random moments, as one unit and with a question for each pair: nothing is
// half matched, no operation is lost, none stands twice. FENLOR_MORTS says how many kills, FENLOR_GRAINE the
// seed.
#include <gtest/gtest.h>

#include <iostream>
#include <random>

#include "pannes/outils.h"

namespace fenlor::pannes {
namespace {

constexpr unsigned NbOperations = 200;

/// Operations by label: how often they wait, how often they stand in a reconciled line.
struct Places {
  unsigned attend = 0, rapprochee = 0;
};
std::map<std::string, Places> Ou(const std::string& cabinet) {
  std::map<std::string, Places> places;
  const Resultat banque = Ctl({"--cabinet", cabinet, "exporter", "BANQUE"});
  EXPECT_EQ(banque.statut, 0) << banque.erreurs;
  const auto operations = LignesJson(banque.sortie);
  for (const Json& operation : operations.value()) ++places[operation.value("Libelle", "")].attend;
  for (const auto& [mouvement, lignes] : LitJournal(cabinet)) {
    EXPECT_EQ(Anomalie(lignes), "");
    for (const Json& ligne : lignes)
      if (ligne.value("Rapprochee", 0) != 0) ++places[ligne.value("RappLibelle", "")].rapprochee;
  }
  return places;
}

class MortsRapprochement : public testing::Test {
 protected:
  void SetUp() override {
    const unsigned graine = Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000);
    std::cout << "seed " << graine << "\n";
    m_hasard.seed(graine);
    CreeCabinet(m_modele);
    m_comptes = LitComptes(m_modele);
    std::string ecritures, operations;
    for (unsigned n = 0; n < NbOperations; ++n) {
      ecritures += LigneSaisie(m_comptes, true, "Piece", 10 + n % 40, 10 + n % 40);
      Json operation = {
          {"Compte", m_comptes.banque}, {"Date", "31/12/2003"}, {"Sens", 1}, {"MontantEuro", 10 + n % 40}};
      operation["Libelle"] = "Op " + std::to_string(n);
      operations += operation.dump() + "\n";
    }
    ASSERT_EQ(Ctl({"--cabinet", m_modele, "saisir", "--tout"}, ecritures).statut, 0);
    ASSERT_EQ(Ctl({"--cabinet", m_modele, "rapprochement", "ajouter"}, operations).statut, 0);
  }
  /// Operations in lines; each operation stands once, waiting or in a line.
  unsigned Rapprochees() {
    Verifie(m_cabinet);
    const auto places = Ou(m_cabinet);
    EXPECT_EQ(places.size(), NbOperations);
    unsigned rapprochees = 0;
    for (const auto& [libelle, place] : places) {
      EXPECT_EQ(place.attend + place.rapprochee, 1u) << libelle;
      rapprochees += place.rapprochee;
    }
    return rapprochees;
  }

  std::mt19937 m_hasard;
  Chasse m_chasse{m_hasard, Nombre("FENLOR_MORTS", 30)};
  DossierTemporaire m_dossier{true};
  const std::string m_modele = m_dossier / "modele", m_cabinet = m_dossier / "cabinet";
  Comptes m_comptes;
};

TEST_F(MortsRapprochement, RienNEstAMoitieRapproche) {
  unsigned faits = 0;
  for (unsigned tour = 0; (!m_chasse.Assez() || faits == 0) && tour < 4 * m_chasse.voulus + 40; ++tour) {
    Recopie(m_modele, m_cabinet);
    m_chasse.Lance({"--cabinet", m_cabinet, "rapprochement", "automatique", "--compte", m_comptes.banque});
    const unsigned rapprochees = Rapprochees();
    ASSERT_TRUE(rapprochees == 0 || rapprochees == NbOperations) << "the run is one unit";
    ASSERT_FALSE(HasFailure()) << "after " << m_chasse.tues << " kills";
    faits += rapprochees != 0;
  }
  std::cout << m_chasse.tues << " killed, " << faits << " runs stood\n";
  EXPECT_TRUE(m_chasse.Assez() && faits > 0);
}

/// With a question for each pair: what was answered yes stands before the next question is put.
TEST_F(MortsRapprochement, ChaqueOuiTient) {
  unsigned tues = 0, dits = 0, sansQuestion = 0;
  Chasse chasse(m_hasard, ~0u);  // one that ends tells nothing
  for (unsigned tour = 0; tues < m_chasse.voulus && tour < 8 * m_chasse.voulus + 40; ++tour) {
    Recopie(m_modele, m_cabinet);
    const Resultat r = chasse.Lance({m_cabinet, m_comptes.banque}, "/dev/null", "rapprochementconfirme");
    const bool tue = r.statut == 128 + 9;
    ASSERT_TRUE(tue || r.statut == 0);
    const auto questions = LignesJson(r.sortie.substr(0, r.sortie.rfind('\n') + 1));
    ASSERT_TRUE(questions) << r.sortie;
    const unsigned oui = questions->empty() ? 0 : questions->back().value("oui", 0u);
    tues += tue && oui > 0;
    const unsigned rapprochees = Rapprochees();
    ASSERT_TRUE(rapprochees == oui || rapprochees == oui + 1)
        << "kill " << tues << ": " << oui << " told, " << rapprochees << " matched";
    ASSERT_FALSE(HasFailure()) << "after " << tues << " kills";
    dits += oui;
    sansQuestion += rapprochees > oui;
  }
  std::cout << tues << " killed between questions, " << dits << " yes, " << sansQuestion
            << " that no question followed\n";
  EXPECT_GE(tues, m_chasse.voulus);
}

}  // namespace
}  // namespace fenlor::pannes
