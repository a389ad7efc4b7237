// The series of a chart: a naive walk over random books, and what is refused.

#include <random>

#include "core/btfiles.h"
#include "graphiques/ecriture.h"
#include "graphiques/serie.h"
#include "journal/cabinetmedical.h"

namespace fenlor::test {
namespace {

using ::testing::ElementsAre;

class SerieTest : public CabinetMedical {
 protected:
  CompteGraphique Compte(const std::string& court) {
    return {Recette, Long(court), court, "Compte " + court};
  }
  const CompteGraphique Titre{Depense, {}, {}, {}};
  SerieGraphique Fait(std::vector<CompteGraphique> choisis, bool comparaison, Date du, Date au) {
    SerieGraphique serie;
    EXPECT_TRUE(App().Dit(FaitSerieGraphique(App(), {std::move(choisis), comparaison, du, au}, serie)));
    return serie;
  }
  /// All lines of the file, whatever their order.
  f64 ALaMain(const std::string& compte, Date du, Date au, bool euro, unsigned mois = 0) {
    f64 somme = 0;
    CLines lignes(App(), App().PathExercice);
    EXPECT_TRUE(lignes.OpenFile());
    EXPECT_TRUE(Magasin().QVParcours(FichierJournal, [&](Position, const void* rec) {
      const Line ligne = *static_cast<const Line*>(rec);
      if (LitTexte(ligne.Compte) != compte || ligne.DateLigne < du || ligne.DateLigne > au) return true;
      if (mois && Mois(+ligne.DateLigne) != mois) return true;
      const f64 montant = euro ? +ligne.MontantEuro : +ligne.MontantFranc;
      somme += ligne.Sens ? montant : -montant;
      return true;
    }));
    return somme;
  }
};

TEST_F(SerieTest, CommeALaMain) {
  std::mt19937 hasard(7009);
  const auto tire = [&](int de, int a) { return std::uniform_int_distribution<int>(de, a)(hasard); };
  for (const char* annee : {"2003", "2001"}) {
    const bool euro = std::string(annee) == "2003";
    Installe(annee, euro);
    const unsigned an = static_cast<unsigned>(std::stoi(annee));
    const auto jour = [&] {
      return FaitDate(static_cast<unsigned>(tire(1, 28)), static_cast<unsigned>(tire(1, 12)), an);
    };
    for (int n = 0; n < 120; ++n) {
      const bool recette = tire(0, 1);
      const char* compte = recette ? (tire(0, 1) ? "706" : "7065") : (tire(0, 1) ? "6132" : "6063");
      ASSERT_NE(AjouteSimple(recette ? JournalRecettes : JournalDepenses, jour(), Long(compte),
                             tire(1, 500000) / 100.0, Long(tire(0, 1) ? "512" : "531")),
                0u);
    }
    const std::vector<CompteGraphique> tous{Compte("706"), Titre,         Compte("6063"),
                                            Compte("512"), Compte("531"), Compte("999")};
    for (int n = 0; n < 40; ++n) {
      std::vector<CompteGraphique> choisis;
      for (const CompteGraphique& compte : tous)
        if (tire(0, 1)) choisis.push_back(compte);
      if (choisis.size() < 2) continue;
      const Date du = jour(), au = jour();
      const SerieGraphique evolution = Fait(choisis, false, du, au),
                           comparaison = Fait(choisis, true, du, au);
      ASSERT_EQ(evolution.points.size(), 12u);
      ASSERT_EQ(comparaison.points.size(), choisis.size());
      for (unsigned mois = 1; mois <= 12; ++mois) {
        f64 somme = 0;
        for (const CompteGraphique& c : choisis) somme += ALaMain(c.compte, du, au, euro, mois);
        EXPECT_NEAR(evolution.points[mois - 1].valeur, somme, 1e-6) << n << ' ' << mois;
      }
      for (std::size_t i = 0; i < choisis.size(); ++i)
        EXPECT_NEAR(comparaison.points[i].valeur, ALaMain(choisis[i].compte, du, au, euro), 1e-6) << n;
    }
  }
}

TEST_F(SerieTest, TitresEtPoints) {
  Installe();
  const Date du = FaitDate(1, 1, 2003), au = FaitDate(31, 12, 2003);
  ASSERT_TRUE(AjouteSimple(JournalRecettes, FaitDate(2, 2, 2003), Long("706"), 120.5, Long("512")));
  ASSERT_TRUE(AjouteSimple(JournalDepenses, FaitDate(3, 2, 2003), Long("6132"), 20, Long("512")));

  const SerieGraphique seul = Fait({Compte("706")}, false, du, FaitDate(28, 2, 2003));
  EXPECT_EQ(seul.titre, " Evolution du compte 706 : Compte 706 ");
  EXPECT_TRUE(seul.evolution && seul.euro);
  EXPECT_EQ(VersUtf8(EcritValeurs(seul)),
            "Jan\t0,00\nFév\t120,50\nMar\t0,00\nAvr\t0,00\nMai\t0,00\nJui\t0,00\nJui\t0,00\nAou\t0,00\n"
            "Sep\t0,00\nOct\t0,00\nNov\t0,00\nDéc\t0,00\n");
  EXPECT_EQ(Fait({Compte("706"), Titre}, false, du, au).titre, " Evolution de plusieurs comptes ");
  const SerieGraphique comparaison =
      Fait({Compte("706"), Titre, Compte("6132"), Compte("512")}, true, du, au);
  EXPECT_EQ(comparaison.titre, " Comparaison entre plusieurs comptes ");
  EXPECT_EQ(EcritValeurs(comparaison), "706\t120,50\n\t0,00\n6132\t-20,00\n512\t-100,50\n");
  // A heading alone: one point, and the form of a comparison.
  const SerieGraphique vide = Fait({Titre}, false, du, au);
  EXPECT_EQ(vide.titre, "");
  EXPECT_FALSE(vide.evolution);
  EXPECT_EQ(EcritValeurs(vide), "\t0,00\n");
  EXPECT_EQ(EcritValeurs(Fait({Compte("706"), Compte("512")}, true, au, du)), "706\t0,00\n512\t0,00\n");
}

TEST_F(SerieTest, CeQuiEstRefuse) {
  EXPECT_EQ(ControleGraphique({{}, false, 0, 0}).numero, 3112u);
  EXPECT_EQ(ControleGraphique({{}, true, 0, 0}).numero, 3112u);
  EXPECT_EQ(ControleGraphique({{Compte("706")}, true, 0, 0}).numero, 3113u);
  EXPECT_FALSE(ControleGraphique({{Titre, Titre}, true, 0, 0}));
  SerieGraphique serie;
  EXPECT_EQ(FaitSerieGraphique(App(), {{Titre}, false, 0, 0}, serie).numero, 3209u);
}

TEST_F(SerieTest, LesComptesSousLeurGroupe) {
  Installe();
  std::vector<CompteGraphique> lignes;
  ASSERT_FALSE(LitComptesGraphique(App(), lignes));
  std::vector<i16> titres;
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    if (lignes[i].compte.empty()) titres.push_back(lignes[i].type);
    EXPECT_EQ(lignes[i].type, titres.back());
    if (i && !lignes[i].compte.empty() && !lignes[i - 1].compte.empty()) {
      EXPECT_LT(lignes[i - 1].compte, lignes[i].compte);
    }
  }
  EXPECT_THAT(titres, ElementsAre(Recette, Depense, Tresorerie, Tva));
  EXPECT_EQ(lignes.back().court.substr(0, 3), "445");
}

TEST_F(SerieTest, UnExportEstEntierOuRien) {
  const std::string chemin = Dossier() + "/graphique.svg";
  EcritFichier(chemin, "ancien");
  ASSERT_FALSE(EcritExport(App(), chemin, "nouveau"));
  EXPECT_EQ(LitFichier(chemin), "nouveau");
  EXPECT_EQ(EcritExport(App(), Dossier(), "x").numero, 3580u);
  EXPECT_EQ(EcritExport(App(), Dossier() + "/absent/g.svg", "x").numero, 3580u);
}

}  // namespace
}  // namespace fenlor::test
