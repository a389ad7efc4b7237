#include <optional>

#include "core/btfiles.h"
#include "outils/cabinetdetest.h"
#include "store/somme.h"

namespace fenlor::test {
namespace {

class ReindexTest : public CabinetDeTest, public ::testing::WithParamInterface<Cles> {
 protected:
  ReindexTest() : CabinetDeTest(GetParam()) {}
  void SetUp() override { ASSERT_TRUE(CreeExercice("2003")); }

  static constexpr std::size_t debut = 1024;
  std::string Chemin(const char* nom) { return App().PathExercice + "/" + nom; }
  u64 Taille(const char* nom) { return LitFichier(Chemin(nom)).size(); }

  /// Operations 1 to n, of 1 to n Euros.
  void PoseOperations(u32 n) {
    CBanques banques(App(), App().PathExercice);
    ASSERT_TRUE(banques.OpenFile());
    QVAPI::Unite unite(Magasin());
    for (u32 i = 1; i <= n; ++i) {
      banques.ClearRec();
      PoseTexte(banques.Rec->Compte, "5120000000");
      banques.Rec->Date = FaitDate(1 + i % 28, 1 + i % 12, 2003);
      banques.Rec->MontantEuro = i;
      ASSERT_TRUE(banques.Add());
    }
    ASSERT_TRUE(unite.Valide());
  }
  /// Sum of the amounts, by the keys.
  f64 Somme() {
    CBanques banques(App(), App().PathExercice);
    EXPECT_TRUE(banques.OpenFile());
    f64 somme = 0;
    for (bool trouve = banques.First(1); trouve; trouve = banques.Next(1)) somme += banques.Rec->MontantEuro;
    const EtatFichier etat = Magasin().QVVerifie(FichierBanques);
    for (const std::string& anomalie : etat.anomalies) ADD_FAILURE() << VersUtf8(anomalie);
    return somme;
  }
  /// Damages the file with the practice closed.
  template <class Degat>
  void Abime(const char* nom, Degat&& degat) {
    const std::string chemin = Chemin(nom);
    App().NomExercice.clear();
    Magasin().QVCloseExercice();
    ASSERT_TRUE(Magasin().QVCloseSession());
    std::string octets = LitFichier(chemin);
    degat(octets);
    EcritFichier(chemin, octets);
    ASSERT_TRUE(Magasin().QVOpenSession(1));
    ASSERT_TRUE(Magasin().QVOpenCompta(App().PathCabinet, {}));
  }
};

INSTANTIATE_TEST_SUITE_P(Cles, ReindexTest, ::testing::Values(Cles::Memoire, Cles::Lmdb));

TEST_P(ReindexTest, FiltreEtCompte) {
  PoseOperations(10);
  std::optional<CBanques> fichier(std::in_place, App(), App().PathExercice);
  CBanques& banques = *fichier;
  ASSERT_TRUE(banques.OpenFile());
  banques.First(0);
  const f64 retire = banques.Rec->MontantEuro;
  ASSERT_TRUE(banques.Delete(banques.GetPos()));

  unsigned vus = 0;
  const RapportReindex rapport = banques.Reindex([&](Banque& rec) {
    ++vus;
    EXPECT_EQ(+rec.Reserve0, 0);
    rec.MontantFranc = 100 + rec.MontantEuro;
    return rec.MontantEuro != (retire == 4 ? 5 : 4);
  });
  EXPECT_TRUE(rapport.fait);
  EXPECT_FALSE(rapport.endommage);
  EXPECT_EQ(rapport.n, 10u);
  EXPECT_EQ(vus, 9u);  // a deleted record does not reach the filter
  EXPECT_EQ(rapport.gardes, 8u);
  EXPECT_EQ(rapport.ecartes, 1u);
  EXPECT_EQ(rapport.supprimes, 1u);
  EXPECT_EQ(rapport.copie, "");
  EXPECT_EQ(Boite.Maximum, 10u);
  EXPECT_EQ(Boite.Place, 10u);

  ASSERT_TRUE(banques.First(0));  // still open
  EXPECT_EQ(+banques.Rec->MontantFranc, 100 + banques.Rec->MontantEuro);
  EXPECT_EQ(Somme(), 55 - retire - (retire == 4 ? 5 : 4));
  EXPECT_EQ(Taille("BANQUE.dat"), debut + 8 * (sizeof(Banque) + TailleSomme));
  EXPECT_FALSE(Magasin().QVExistFile(Chemin("BANQUE.neuf")));
  EXPECT_TRUE(Boite.Erreurs.empty());
  fichier.reset();  // it belongs to the session that ends here
  ASSERT_TRUE(Rouvre());
  EXPECT_EQ(Magasin().GetBanquesRec(0), 8u);
}

TEST_P(ReindexTest, ArretRendLesDeuxFichiers) {
  PoseOperations(20);
  ASSERT_TRUE(Rouvre());  // everything is at its place
  const std::string avant = LitFichier(Chemin("BANQUE.dat"));
  Boite.ArretApres = 7;
  CBanques banques(App(), App().PathExercice);
  const RapportReindex rapport = banques.Reindex();
  EXPECT_TRUE(rapport.arrete);
  EXPECT_FALSE(rapport.fait);
  EXPECT_EQ(rapport.n, 20u);
  EXPECT_EQ(LitFichier(Chemin("BANQUE.dat")), avant);
  EXPECT_FALSE(Magasin().QVExistFile(Chemin("BANQUE.neuf")));
  EXPECT_EQ(Somme(), 210);
  EXPECT_TRUE(Boite.Erreurs.empty());
}

TEST_P(ReindexTest, MemeCompteLeDernierReste) {
  CPlan plan(App(), App().PathExercice);
  ASSERT_TRUE(plan.OpenFile());
  ASSERT_TRUE(plan.First(0));
  const std::string premier = plan.Rec->Compte;
  const u32 avant = Magasin().QVNumberOfKey(plan.NumCle);
  PoseTexte(plan.Rec->Code, "DOUBLE");
  ASSERT_NE(Magasin().QVAddRec(FichierComptes, plan.Rec), 0u);  // without any key

  const RapportReindex rapport = plan.Reindex();
  EXPECT_EQ(rapport.remplaces, 1u);
  EXPECT_EQ(rapport.gardes, avant);
  EXPECT_EQ(rapport.n, avant + 1);
  EXPECT_EQ(LitTexte(LitCompte(premier).Code), "DOUBLE");
  EXPECT_EQ(Magasin().QVVerifie(FichierComptes).anomalies.size(), 0u);
}

TEST_P(ReindexTest, CleSecondaireDisputee) {
  const u32 mouvement = AjouteSimple(JournalRecettes, FaitDate(3, 2, 2003), "7061", 20, "512");
  ASSERT_NE(mouvement, 0u);
  CLines lignes(App(), App().PathExercice);
  ASSERT_TRUE(lignes.OpenFile());
  ASSERT_TRUE(lignes.First(0));
  PoseTexte(lignes.Rec->Compte, "7062000000");  // keys 0 to 3 differ, 4 and 5 do not
  ASSERT_NE(Magasin().QVAddRec(FichierJournal, lignes.Rec), 0u);
  const RapportReindex rapport = lignes.Reindex();
  EXPECT_TRUE(rapport.fait);
  EXPECT_EQ(rapport.gardes, 3u);  // no amount is lost
  EXPECT_EQ(rapport.clesManquantes, 2u);
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3049, 3049}));
}

TEST_P(ReindexTest, FichiersEndommages) {
  const std::size_t taille = sizeof(Banque) + TailleSomme;
  const struct {
    const char* quoi;
    std::function<void(std::string&)> degat;
    f64 somme;
    u32 inconnus;
    u64 reste;
  } cas[] = {
      {"header zeroed", [](std::string& o) { o.replace(0, debut, debut, '\0'); }, 210, 0, 0},
      {"header zeroed, of the form without sums",
       [=](std::string& o) {
         std::string ancien(debut, '\0');
         for (std::size_t p = debut; p < o.size(); p += taille) ancien += o.substr(p, sizeof(Banque));
         o = ancien;
       },
       210, 0, 0},
      {"truncated in a slot", [=](std::string& o) { o.resize(debut + 12 * taille + 50); }, 78, 0, 50},
      {"not a file of ours", [=](std::string& o) { o.assign(debut + 3 * taille + 9, 'q'); }, 0, 3, 9},
      {"a slot overwritten", [=](std::string& o) { o.replace(debut + 4 * taille, taille, taille, 'x'); }, 205,
       1, 0},
      {"header cut off", [](std::string& o) { o.resize(600); }, 0, 0, 0},
      {"empty", [](std::string& o) { o.clear(); }, 0, 0, 0},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.quoi);
    {
      CBanques banques(App(), App().PathExercice);
      banques.Reindex([](Banque&) { return false; });
    }
    PoseOperations(20);
    Abime("BANQUE.dat", c.degat);
    Boite.Oublie();
    CBanques banques(App(), App().PathExercice);
    const RapportReindex rapport = banques.Reindex();
    EXPECT_TRUE(rapport.fait);
    EXPECT_EQ(rapport.inconnus, c.inconnus);
    EXPECT_EQ(rapport.octetsRestants, c.reste);
    EXPECT_EQ(rapport.n, rapport.gardes + rapport.ecartes + rapport.remplaces + rapport.inconnus +
                             rapport.supprimes + rapport.vierges);
    EXPECT_TRUE(Magasin().QVExistFile(rapport.copie)) << "the old bytes are kept";
    EXPECT_EQ(Somme(), c.somme);
    EXPECT_TRUE(Boite.Erreurs.empty());
  }
}

}  // namespace
}  // namespace fenlor::test
