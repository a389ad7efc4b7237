// Sums of the slots: the function, damage seen before a record is believed, books without sums.
#include "store/somme.h"

#include <fstream>

#include "outils/cabinetdetest.h"
#include "outils/systemefautif.h"
#include "outils/systemesanssynchro.h"
#include "store/fichierdat.h"
#include "store/moteur.h"
#include "store/qvapi.h"

namespace fs = std::filesystem;

namespace fenlor::test {
namespace {

TEST(Somme, EstCelleDeTousEtTrouveChaqueBit) {
  for (const auto fonction : {Crc32c, Crc32cParTable}) {
    EXPECT_EQ(fonction("123456789", 9, 0), 0xE3069283u);
    EXPECT_EQ(fonction("6789", 4, fonction("12345", 5, 0)), 0xE3069283u);
  }
  u8 sain[43] = "un enregistrement de trente-neuf octets";
  const u32 somme = SommeEmplacement(sain, 39, 7);
  std::memcpy(sain + 39, &somme, sizeof somme);
  EXPECT_TRUE(SommeJuste(sain, 39, 7));
  EXPECT_FALSE(SommeJuste(sain, 39, 8));
  for (unsigned bit = 0; bit < sizeof sain * 8; ++bit) {
    u8 touche[sizeof sain];
    std::memcpy(touche, sain, sizeof sain);
    touche[bit / 8] ^= static_cast<u8>(1u << bit % 8);
    EXPECT_FALSE(SommeJuste(touche, 39, 7));
    EXPECT_TRUE(RepareBit(touche, 39, 7) && std::memcmp(touche, sain, sizeof sain) == 0) << bit;
    touche[3] ^= 0x11;
    touche[20] ^= 0x40;
    EXPECT_FALSE(RepareBit(touche, 39, 7));
  }
}

TEST(Somme, DeToutUnFichierEstCelleDeChaqueMorceau) {
  for (const auto& [octet, somme] : {std::pair{0x00, 0x8A9136AAu}, {0xFF, 0x62A8AB43u}}) {
    const std::vector<u8> connus(32 * 4, static_cast<u8>(octet));
    u32 sommes[4] = {};
    SommesDe(connus.data(), 4, 32, 32, sommes);
    for (const u32 s : sommes) EXPECT_EQ(s, somme);
  }
  constexpr u32 nombre = 101, taille = 45, pas = taille + TailleSomme;
  std::vector<u8> octets(nombre * pas);
  for (std::size_t i = 0; i < octets.size(); ++i) octets[i] = static_cast<u8>(i * i >> 3);
  for (u32 i = 0; i < nombre; ++i) {
    const u32 place = i + 7, somme = Crc32cParTable(&place, 4, Crc32cParTable(&octets[i * pas], taille));
    std::memcpy(&octets[i * pas + taille], &somme, sizeof somme);
  }
  EXPECT_EQ(PremierFaux(octets.data(), nombre, taille, 7), nombre);
  EXPECT_EQ(PremierFaux(octets.data(), nombre, taille, 8), 0u) << "in another's place";
  for (u32 i = nombre; i-- > 0;) {
    octets[i * pas + i % pas] ^= 4;
    EXPECT_EQ(PremierFaux(octets.data(), nombre, taille, 7), i);
  }
}

TEST(Somme, DUnFichierLuParMorceauxNommeLePremierFaux) {
  constexpr u32 nombre = 12'000, taille = 505, pas = taille + TailleSomme, debut = 10;
  std::vector<u8> octets(debut + nombre * pas, 7);
  for (u32 i = 0; i < nombre; ++i) {
    u8* rec = &octets[debut + i * pas];
    const u32 somme = SommeEmplacement(rec, taille, i + 1);
    std::memcpy(rec + taille, &somme, sizeof somme);
  }
  const DossierTemporaire dossier;
  SystemePosix posix;
  SystemeFautif systeme(posix);
  std::unique_ptr<Fichier> fichier;
  ASSERT_EQ(systeme.Ouvre(dossier.Chemin() + "/f", Systeme::Creation, fichier), 0);
  ASSERT_EQ(fichier->Ecrit(octets.data(), octets.size(), 0), 0);
  const auto trouve = [&](u32 combien) {
    Position faux = 99;
    EXPECT_EQ(FauxDuFichier(*fichier, debut, combien, taille, faux), 0);
    return faux;
  };
  EXPECT_EQ(trouve(nombre), 0u);
  EXPECT_EQ(trouve(nombre + 3), nombre + 1) << "missing";
  for (const u32 place : {nombre, nombre / 2 + 1, nombre / 2, 481u, 480u, 1u}) {
    const u8 touche = 5;
    ASSERT_EQ(fichier->Ecrit(&touche, 1, debut + u64{place - 1} * pas + place % pas), 0);
    EXPECT_EQ(trouve(nombre), place);
  }
  systeme.Programme(1, EIO, SystemeFautif::Lectures, false);
  Position faux = 0;
  EXPECT_EQ(FauxDuFichier(*fichier, debut, nombre, taille, faux), EIO);
}

class Sommes : public testing::Test {
 protected:
  void SetUp() override {
    Moteur moteur(m_systeme, m_cles, 64 << 10);
    ASSERT_TRUE(moteur.OuvreCabinet(m_dossier.Chemin()));
    ASSERT_TRUE(moteur.CreeDat(FichierComptes, Dat(), sizeof(Plan)));
    for (const char* numero : {"5120000000", "6060000000", "7060000000"}) {
      Plan plan{};
      PoseTexte(plan.Compte, numero);
      ASSERT_TRUE(moteur.Ajoute(FichierComptes, &plan));
    }
    ASSERT_TRUE(moteur.Supprime(FichierComptes, 2));
  }
  std::string Dat() const { return m_dossier.Chemin() + "/COMPTES.dat"; }
  /// Error of an opening, and what it read.
  int Ouvre(Systeme& systeme, std::string& lu) {
    lu.clear();
    Moteur moteur(systeme, m_cles, 64 << 10);
    if (!moteur.OuvreCabinet(m_dossier.Chemin()) || !moteur.Ouvre(FichierComptes, Dat()))
      return moteur.Erreur();
    Plan plan;
    for (Position p = 1; p <= moteur.NombreEmplacements(FichierComptes); ++p)
      lu += moteur.Lit(FichierComptes, p, &plan) ? LitTexte(plan.Compte) + " " : std::string("- ");
    return 0;
  }

  test::DossierTemporaire m_dossier;
  SystemeSansSynchro m_systeme;
  FabriqueMemoire m_cles;
};

TEST_F(Sommes, UnBitEstVuAvantDEtreCru) {
  const std::string sain = LitFichier(Dat());
  ASSERT_EQ(sain.size(), DebutEmplacements + 3 * (sizeof(Plan) + TailleSomme));
  std::string lu;
  for (std::size_t octet = DebutEmplacements; octet < sain.size(); octet += 5) {
    std::string touche = sain;
    touche[octet] ^= static_cast<char>(1 << octet % 8);
    EcritFichier(Dat(), touche);
    EXPECT_EQ(Ouvre(m_systeme, lu), ErrEndommage) << octet;
  }
  EcritFichier(Dat(), sain);
  EXPECT_EQ(Ouvre(m_systeme, lu), 0);

  // In a file that is open: what was read of it does not come back with a sum that vouches for it.
  Moteur moteur(m_systeme, m_cles, 64 << 10);
  ASSERT_TRUE(moteur.OuvreCabinet(m_dossier.Chemin()) && moteur.Ouvre(FichierComptes, Dat()));
  std::fstream(Dat(), std::ios::binary | std::ios::in | std::ios::out)
      .seekp(DebutEmplacements + 150)
      .put('\x40');
  EXPECT_FALSE(moteur.EstJuste(FichierComptes, 1));
  Plan plan;
  ASSERT_TRUE(moteur.Lit(FichierComptes, 1, &plan));
  PoseTexte(plan.Code, "BQ");
  EXPECT_FALSE(moteur.Ecrit(FichierComptes, 1, &plan));
  EXPECT_EQ(moteur.Erreur(), ErrEndommage);
}

TEST_F(Sommes, UnFichierSansSommesEstConvertiEnEntierOuPasDuTout) {
  test::OteSommes(Dat());
  const std::string ancien = LitFichier(Dat());
  ASSERT_EQ(ancien.size(), DebutEmplacements + 3 * sizeof(Plan));
  std::string lu;
  for (unsigned k = 1;; ++k) {
    SystemeFautif fautif(m_systeme);
    fautif.Programme(k, EIO);
    const int erreur = Ouvre(fautif, lu);
    const bool touche = fautif.NbPannes() != 0;
    EXPECT_TRUE(erreur || lu == "5120000000 - 7060000000 ") << k << ": " << lu;
    EXPECT_EQ(Ouvre(m_systeme, lu), 0) << k;
    EXPECT_EQ(lu, "5120000000 - 7060000000 ") << k;
    EXPECT_FALSE(fs::exists(m_dossier.Chemin() + "/COMPTES.neuf"));
    ASSERT_EQ(fs::file_size(Dat()), DebutEmplacements + 3 * (sizeof(Plan) + TailleSomme));
    if (!touche) break;
    EcritFichier(Dat(), ancien);
  }
}

}  // namespace
}  // namespace fenlor::test
