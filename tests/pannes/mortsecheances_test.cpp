// The walk at the opening of an exercice, and "&Enregistrer" in the form of what is announced, killed on
// their way: in the end each occurrence stands in the journal once. FENLOR_MORTS_ECHEANCES says how many
// kills, FENLOR_GRAINE the seed.

#include <iostream>
#include <random>

#include "pannes/outils.h"

namespace fenlor::pannes {
namespace {

constexpr unsigned Modeles = 15, Mois = 6;
bool Annonce(unsigned modele) { return modele % 3 == 0; }

class MortsEcheances : public testing::Test {
 protected:
  /// A practice with models of which each has something due on 06/06/2003: the announced ones once, the
  /// others since January; some are through then.
  void Cree(unsigned numero) {
    m_cabinet = m_dossier.Chemin() + "/cabinet" + std::to_string(numero);
    ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_cabinet));
    const Comptes comptes = LitComptes(m_cabinet);
    std::string entree;
    for (unsigned n = 0; n < Modeles; ++n)
      entree += Json{{"Genre", 2},
                     {"Date", Annonce(n) ? "05/06/2003" : "05/01/2003"},
                     {"Libelle", "Modele " + std::to_string(n)},
                     {"Tresorerie", comptes.banque},
                     {"Compte", comptes.depense},
                     {"MontantEuro", 10 + n},
                     {"Periodicite", 6},
                     {"NbPaiements", n % 4 == 1 ? Mois : 12},
                     {"Annoncer", Annonce(n) ? 1 : 0}}
                    .dump() +
                "\n";
    ASSERT_EQ(
        Ctl({"--cabinet", m_cabinet, "--aujourdhui", "01/01/2003", "automatique", "ajouter"}, entree).statut,
        0);
  }
  /// The program of a day of June; killed after so long behind its walk's beginning, 0: not.
  Resultat Lance(unsigned jour, long duree, bool mortel = false) {
    setenv("FENLOR_AUJOURDHUI", ((jour < 10 ? "0" : "") + std::to_string(jour) + "/06/2003").c_str(), 1);
    std::vector<std::string> arguments{m_cabinet};
    if (mortel) arguments.push_back("avant-consultation");
    Enfant enfant(arguments, "/dev/null", "echeancesfenetre");
    for (int i = 0; i < 1500 && !enfant.Fini() && enfant.Sortie().empty(); ++i) enfant.Ecoute(20'000);
    if (duree) {
      enfant.Ecoute(duree);
      enfant.Tue();
    }
    const Resultat r = enfant.Attend();
    unsetenv("FENLOR_AUJOURDHUI");
    return r;
  }
  /// How often each occurrence stands in the journal.
  std::map<std::string, unsigned> Vues() {
    Verifie(m_cabinet);
    std::map<std::string, unsigned> vues;
    for (const auto& [mouvement, lignes] : LitJournal(m_cabinet)) {
      EXPECT_EQ(Anomalie(lignes), "") << "entry " << mouvement;
      ++vues[lignes.front().value("Libelle", "") + ' ' + lignes.front().value("Date", "")];
    }
    for (const auto& [echeance, fois] : vues) EXPECT_EQ(fois, 1u) << echeance;
    return vues;
  }
  static unsigned Attendues(bool annoncees) {
    unsigned nombre = 0;
    for (unsigned n = 0; n < Modeles; ++n) nombre += Annonce(n) ? annoncees : Mois;
    return nombre;
  }

  const DossierTemporaire m_dossier;
  std::string m_cabinet;
};

TEST_F(MortsEcheances, UneMortAvantQueLeJourSoitNote) {
  ASSERT_NO_FATAL_FAILURE(Cree(0));
  // A model that ends changes the settings' list of models: none does here.
  ASSERT_EQ(Ctl({"--cabinet", m_cabinet, "automatique", "supprimer"},
                "{\"Numero\":14}\n{\"Numero\":6}\n{\"Numero\":2}\n")
                .statut,
            0);
  const auto consultation = [&] {
    const std::string reglages = test::LitFichier(m_cabinet + "/fenlor.ini");
    const std::size_t place = reglages.find("Consultation=");
    return place == std::string::npos ? "" : reglages.substr(place + 13, 10);
  };
  ASSERT_EQ(Lance(6, 0, true).statut, 128 + 9);
  const auto premiere = Vues();
  EXPECT_EQ(premiere.size(), Attendues(false) - 3 * Mois) << "the walk was through";
  EXPECT_NE(consultation(), "06/06/2003");
  ASSERT_EQ(Lance(6, 0).statut, 0);
  const auto seconde = Vues();
  EXPECT_EQ(seconde.size(), premiere.size() + Modeles / 3) << "nothing but what was announced";
  EXPECT_EQ(consultation(), "06/06/2003");
}

TEST_F(MortsEcheances, ChaqueEcheanceVientUneFois) {
  std::mt19937 hasard(Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000));
  const unsigned morts = Nombre("FENLOR_MORTS_ECHEANCES", 6);
  unsigned tues = 0, livres = 0, pendantLeCalcul = 0, pendantLaForme = 0;
  long duree = 60'000;
  while (tues < morts && livres < 4 * morts + 10) {
    ASSERT_NO_FATAL_FAILURE(Cree(livres++));
    bool fini = false;
    // Days go on, for what was announced is not announced twice on one day.
    for (unsigned jour = 6; !fini; ++jour) {
      ASSERT_LE(jour, 30u) << "the kills come too early";
      const Resultat r =
          Lance(jour, jour < 30 ? 1 + static_cast<long>(hasard() % static_cast<unsigned>(duree)) : 0);
      fini = r.statut == 0;
      ASSERT_TRUE(fini || r.statut == 128 + 9) << r.statut << r.sortie;
      duree = fini ? duree * 7 / 10 + 1000 : duree * 12 / 10;
      if (fini) break;
      ++tues;
      const std::size_t vues = Vues().size();
      pendantLeCalcul += vues < Attendues(false);
      pendantLaForme += vues >= Attendues(false) && vues < Attendues(true);
    }
    EXPECT_EQ(Vues().size(), Attendues(true));
  }
  std::cout << tues << " killed, " << livres << " books; " << pendantLeCalcul
            << " before the end of the walk, " << pendantLaForme << " between it and the last confirmation\n";
  EXPECT_GE(tues, morts);
}

}  // namespace
}  // namespace fenlor::pannes
