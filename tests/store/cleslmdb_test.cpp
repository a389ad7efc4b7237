// The room that the keys reserve follows the books, and its lack is told.
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "store/livresdumoteur.h"
#include "store/urgence.h"

namespace fenlor::test {
namespace {

class ClesLmdbTest : public testing::Test {
 protected:
  static std::string Texte(u64 n) {
    std::string texte = std::to_string(n * 2654435761u % 1'000'000'007);
    texte.resize(TailleCleMax, 'x');
    return texte;
  }
  test::DossierTemporaire m_dossier;
  FabriqueLmdb m_fabrique;
};

TEST_F(ClesLmdbTest, LaPlaceReserveeSuitLeNombreDesCles) {
  const std::string chemin = m_dossier / "JOURNAL.idx";
  DescriptionCles cles;
  cles.nombre = 2;
  cles.doubles[1] = true;
  std::unique_ptr<MagasinCles> magasin;
  ASSERT_EQ(m_fabrique.Ouvre(chemin, true, cles, magasin), 0);
  // More than the first reservation holds, and as many again behind a commit.
  u32 n = 0;
  for (const u32 fin : {900'000u, 1'300'000u}) {
    while (n < fin) {
      const unsigned cle = n % 8 == 0;
      ++n;
      ASSERT_EQ(magasin->AjouteNeuve(cle, Texte(n), n), 0) << n;
    }
    ASSERT_EQ(magasin->Engage(false), 0);
  }
  for (int fois = 0; fois < 2; ++fois) {
    EXPECT_EQ(magasin->Nombre(0) + magasin->Nombre(1), n);
    u64 vus = 0;
    std::string precedent;
    bool ordre = true;
    auto suite = [&](std::string_view texte, u32 position) {
      ordre = ordre && texte > precedent && Texte(position) == texte;
      precedent = texte;
      return ++vus < 100'000;
    };
    magasin->Parcours(0, "", suite);
    EXPECT_TRUE(ordre);
    EXPECT_EQ(vus, 100'000u);
    magasin.reset();
    ASSERT_EQ(m_fabrique.Ouvre(chemin, false, cles, magasin), 0);
  }
}

/// What the system writes only in part has a reason, and it is told.
TEST_F(ClesLmdbTest, UneEcritureCourteDitSaRaison) {
  DescriptionCles cles;
  cles.nombre = 1;
  std::unique_ptr<MagasinCles> magasin;
  ASSERT_EQ(m_fabrique.Ouvre(m_dossier / "JOURNAL.idx", true, cles, magasin), 0);
  for (u32 n = 1; n <= 5000; ++n) ASSERT_EQ(magasin->AjouteNeuve(0, Texte(n), n), 0);
  const auto avant = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limite{};
  getrlimit(RLIMIT_FSIZE, &limite);
  const rlimit courte{100'100, limite.rlim_max};
  setrlimit(RLIMIT_FSIZE, &courte);
  const int rc = magasin->Engage(false);
  setrlimit(RLIMIT_FSIZE, &limite);
  std::signal(SIGXFSZ, avant);
  EXPECT_EQ(rc, EFBIG);
}

#ifndef __SANITIZE_ADDRESS__  // which reserves more than any limit
/// With less and less room for it: what was acknowledged is there, and the program ended by itself.
TEST_F(ClesLmdbTest, SansPlaceRienNeSePerd) {
  SystemeSansSynchro systeme;
  const std::string compte = m_dossier / "acquis";
  const auto travaille = [&](u64 place) noexcept {  // an exception ends it as in the programs
    InstalleUrgences();
    test::LivresDuMoteur livres(m_dossier.Chemin(), m_fabrique, systeme);
    if (!livres.Ouvre()) _exit(livres.moteur.Erreur() == ENOMEM ? 0 : 3);
    u64 pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit limite{pages * 4096 + place, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limite);
    std::ofstream acquis(compte, std::ios::app);
    for (unsigned tour = 0; tour < 40; ++tour) {
      livres.moteur.DebutUnite();
      bool bien = true;
      for (unsigned i = 0; i < 4000 && bien; ++i) {
        const Banque rec = test::Operation("5120000000", tour * 4000 + i, 1);
        const Position position = livres.moteur.Ajoute(FichierBanques, &rec);
        bien = position && livres.moteur.AjouteCles(FichierBanques, position, &rec, true);
      }
      if (bien && livres.moteur.ValideUnite()) {
        acquis << "unite\n" << std::flush;
        continue;
      }
      const int erreur = livres.moteur.Erreur();
      livres.moteur.AnnuleUnite();
      Banque premiere;
      // What there was goes on being read.
      const bool lit = livres.moteur.NombreEmplacements(FichierBanques) == 0 ||
                       livres.moteur.Lit(FichierBanques, 1, &premiere);
      _exit(erreur == ENOMEM && lit ? 0 : 4);
    }
    _exit(livres.moteur.FermeCabinet() ? 0 : 5);
  };
  for (const u64 place : {u64{1} << 20, u64{9} << 20, u64{40} << 20}) {
    SCOPED_TRACE(place >> 20);
    std::filesystem::remove_all(m_dossier.Chemin());
    std::filesystem::create_directory(m_dossier.Chemin());
    // Ended by itself: the work, a refusal, or the lack of memory told (3442).
    EXPECT_EXIT(
        travaille(place), [](int etat) { return WIFEXITED(etat) && WEXITSTATUS(etat) <= 1; }, "");
    u32 unites = 0;
    std::ifstream acquis(compte);
    for (std::string ligne; std::getline(acquis, ligne);) ++unites;
    test::LivresDuMoteur livres(m_dossier.Chemin(), m_fabrique, systeme);
    ASSERT_TRUE(livres.Ouvre());
    EXPECT_GE(livres.moteur.NombreEmplacements(FichierBanques), unites * 4000);
    EXPECT_LE(livres.moteur.NombreEmplacements(FichierBanques), (unites + 1) * 4000);
    EXPECT_EQ(livres.moteur.NombreCles(87), livres.moteur.NombreEmplacements(FichierBanques));
    std::cout << (place >> 20) << " MiB: " << unites << " units\n";
  }
}
#endif

}  // namespace
}  // namespace fenlor::test
