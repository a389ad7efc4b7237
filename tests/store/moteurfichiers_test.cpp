// What the engine makes of the files that it finds: keys that nobody vouches for, damage, older files.

#include <random>

#include "outils/systemefautif.h"
#include "store/fichierdat.h"
#include "store/livresdumoteur.h"

namespace fenlor::test {
namespace {

namespace fs = std::filesystem;

class ClesSurDisqueTest : public ::testing::Test {
 protected:
  /// Two accounts, closed properly.
  void SetUp() override {
    LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(livres.Ouvre());
    ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
    ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("7060000000", "HON")));
    ASSERT_TRUE(livres.moteur.FermeCabinet());
  }
  Empreinte Idx() {
    Empreinte e;
    EXPECT_EQ(m_systeme.Mesure(m_dossier / "COMPTES.idx", e), 0);
    return e;
  }
  /// Changes both copies of the header of the accounts.
  void ChangeEntete(const std::function<void(EnteteDat&)>& change) {
    std::string octets = LitFichier(m_dossier / "COMPTES.dat");
    for (const std::size_t place : {0u, 512u}) {
      u8* copie = reinterpret_cast<u8*>(octets.data() + place);
      EnteteDat entete;
      ASSERT_TRUE(FichierDat::Decode(copie, entete));
      change(entete);
      FichierDat::Code(entete, copie);
    }
    EcritFichier(m_dossier / "COMPTES.dat", octets);
  }
  DossierTemporaire m_dossier;
  SystemePosix m_systeme;
  FabriqueLmdb m_lmdb;
};

TEST_F(ClesSurDisqueTest, UneFermeturePropreEpargneLaReconstruction) {
  const Empreinte avant = Idx();
  LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  EXPECT_EQ(livres.Comptes(), "5120000000=BQ 7060000000=HON ");
  ASSERT_TRUE(livres.moteur.FermeCabinet());
  EXPECT_EQ(Idx(), avant);
}

TEST_F(ClesSurDisqueTest, UnFichierDeClesDouteuxEstRefait) {
  const std::string idx = m_dossier / "COMPTES.idx", bon = m_dossier / "bon";
  fs::copy_file(idx, bon);
  const auto abime = [&](const std::string& cas) {
    if (cas == "absent") fs::remove(idx);
    if (cas == "vide") fs::resize_file(idx, 0);
    if (cas == "tronqué") fs::resize_file(idx, fs::file_size(idx) / 2);
    if (cas == "texte") std::ofstream(idx) << "bonjour";
    if (cas == "zéros") std::ofstream(idx, std::ios::binary) << std::string(fs::file_size(bon), '\0');
    if (cas == "copie") {  // right content, but nobody vouches for it
      fs::remove(idx);
      fs::copy_file(bon, idx);
    }
    if (cas == "hasard") {
      std::fstream fichier(idx, std::ios::in | std::ios::out | std::ios::binary);
      std::mt19937 hasard(7);
      for (u64 i = 0; i < fs::file_size(bon); ++i) fichier.put(static_cast<char>(hasard()));
    }
  };
  for (const char* cas : {"absent", "vide", "tronqué", "texte", "zéros", "copie", "hasard"}) {
    abime(cas);
    LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(livres.Ouvre()) << cas << " " << livres.moteur.Erreur();
    EXPECT_EQ(livres.Comptes(), "5120000000=BQ 7060000000=HON ") << cas;
    ASSERT_TRUE(livres.moteur.FermeCabinet()) << cas;
  }
}

/// Bits that count, lengths and times kept: only the sum over the whole file can tell.
TEST_F(ClesSurDisqueTest, UnBitBasculeDerriereLaTeteEstDitEtRefait) {
  const std::string idx = m_dossier / "COMPTES.idx", rep = m_dossier / "fenlor.rep",
                    dat = m_dossier / "COMPTES.dat";
  const std::string sain = LitFichier(idx);
  for (const std::string& chemin : {idx, rep, dat}) fs::copy_file(chemin, chemin + ".bon");
  const auto temps = fs::last_write_time(idx), tempsDat = fs::last_write_time(dat);
  std::size_t vus = 0, essais = 0;
  for (std::size_t place = 8192; place < sain.size() && essais < 80; ++place) {
    if (!sain[place] || vus++ % 5) continue;
    ++essais;
    for (const std::string& chemin : {idx, rep, dat}) {
      fs::copy_file(chemin + ".bon", chemin, fs::copy_options::overwrite_existing);
    }
    std::fstream(idx, std::ios::in | std::ios::out | std::ios::binary)
        .seekp(static_cast<std::streamoff>(place))
        .put(static_cast<char>(sain[place] ^ 1 << essais % 8));
    fs::last_write_time(idx, temps);
    fs::last_write_time(dat, tempsDat);
    LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(livres.Ouvre()) << place;
    EXPECT_EQ(livres.Comptes(), "5120000000=BQ 7060000000=HON ") << place;
    EXPECT_TRUE(livres.moteur.ClesEndommagees(FichierComptes)) << place;
    EXPECT_EQ(livres.moteur.Avertissements().size(), 1u) << place;
    ASSERT_TRUE(livres.moteur.FermeCabinet());
    ASSERT_TRUE(livres.Ouvre());
    EXPECT_FALSE(livres.moteur.ClesEndommagees(FichierComptes)) << place;
  }
  EXPECT_GT(essais, 40u);
}

/// Keys that begin anew behind the last one, in either direction.
class ClesEnRond : public MagasinCles {
 public:
  explicit ClesEnRond(std::unique_ptr<MagasinCles> vraies) : m_vraies(std::move(vraies)) {}
  int Ajoute(unsigned c, std::string_view t, u32 p) override { return m_vraies->Ajoute(c, t, p); }
  int AjouteNeuve(unsigned c, std::string_view t, u32 p) override { return m_vraies->AjouteNeuve(c, t, p); }
  int Supprime(unsigned c, std::string_view t, u32 p) override { return m_vraies->Supprime(c, t, p); }
  bool Borne(unsigned c, std::string_view t, u32 p, EntreeCle& e) override {
    return m_vraies->Borne(c, t, p, e);
  }
  bool Apres(unsigned c, std::string_view t, u32 p, EntreeCle& e) override {
    return m_vraies->Apres(c, t, p, e) || m_vraies->Borne(c, "", 0, e);
  }
  bool Avant(unsigned c, std::string_view t, u32 p, EntreeCle& e) override {
    return m_vraies->Avant(c, t, p, e) || m_vraies->Dernier(c, e);
  }
  bool Dernier(unsigned c, EntreeCle& e) override { return m_vraies->Dernier(c, e); }
  void Parcours(unsigned c, std::string_view debut, FonctionParcours suite) override {
    bool va = true;
    auto retient = [&](std::string_view t, u32 p) { return va = suite(t, p); };
    for (int tour = 0; va && tour < 100; ++tour) m_vraies->Parcours(c, debut, retient);
  }
  int ParcoursAPart(unsigned c, FonctionParcours suite) const override {
    return m_vraies->ParcoursAPart(c, suite);
  }
  u64 Nombre(unsigned c) override { return m_vraies->Nombre(c); }
  int Charge(unsigned c, const ClesComposees& t) override { return m_vraies->Charge(c, t); }
  int Engage(bool) override { return 0; }
  int Erreur() const override { return 0; }

 private:
  std::unique_ptr<MagasinCles> m_vraies;
};

class FabriqueEnRond : public FabriqueMemoire {
 public:
  int Ouvre(const std::string& chemin, bool neuf, const DescriptionCles& d,
            std::unique_ptr<MagasinCles>& m) override {
    const int rc = FabriqueMemoire::Ouvre(chemin, neuf, d, m);
    if (!rc) m = std::make_unique<ClesEnRond>(std::move(m));
    return rc;
  }
};

TEST(ClesEndommagees, UnParcoursQuiTourneEnRondEstDitEtFinit) {
  FabriqueEnRond rond;
  SystemeSansSynchro systeme;
  for (const std::string sens : {"suivant", "precedent", "parcours"}) {
    const DossierTemporaire dossier;
    LivresDuMoteur livres(dossier.Chemin(), rond, systeme);
    ASSERT_TRUE(livres.Ouvre());
    for (const char* compte : {"51", "60", "70"})
      ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte(compte, "C")));
    Moteur& moteur = livres.moteur;
    std::string cle;
    int pas = 0;
    if (sens == "parcours") {
      EXPECT_FALSE(moteur.Parcours(69, "", "", [&](Position, const void*) { return ++pas < 100; }));
    } else {
      Position p = sens == "suivant" ? moteur.Premier(69, cle) : moteur.Dernier(69, cle);
      for (; p && pas < 100; p = sens == "suivant" ? moteur.Suivant(69, cle) : moteur.Precedent(69, cle))
        ++pas;
    }
    EXPECT_EQ(pas, 3) << sens;
    EXPECT_EQ(moteur.Erreur(), ErrEndommage) << sens;
    EXPECT_TRUE(moteur.ClesEndommagees(FichierComptes)) << sens;
    EXPECT_EQ(moteur.Avertissements().size(), 1u) << sens;
    EXPECT_EQ(livres.Comptes(), "51=C 60=C 70=C ") << sens;
  }
}

// Whole and sound, but of another day: nothing in the file itself says so.
TEST_F(ClesSurDisqueTest, DesClesOuDesDonneesPlusAnciennesNeTrompentPas) {
  const std::string attendus[] = {"5120000000=BQ 7060000000=HON ",
                                  "5120000000=BQ 6060000000=ACH 7060000000=HON "};
  DossierTemporaire avant;
  for (const char* nom : {"COMPTES.idx", "COMPTES.dat"}) {
    fs::copy(m_dossier.Chemin(), avant.Chemin(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    const auto date = fs::last_write_time(m_dossier / nom);
    LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(livres.Ouvre());
    const bool cles = std::string(nom) == "COMPTES.idx";
    ASSERT_TRUE(!cles || livres.Ajoute(FichierComptes, Compte("6060000000", "ACH")));
    ASSERT_TRUE(cles || livres.Supprime<Plan>(FichierComptes, 3));
    ASSERT_TRUE(livres.moteur.FermeCabinet());
    fs::copy_file(avant / nom, m_dossier / nom, fs::copy_options::overwrite_existing);
    fs::last_write_time(m_dossier / nom, date);  // as a backup brings a file back
    LivresDuMoteur encore(m_dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(encore.Ouvre());
    EXPECT_EQ(encore.Comptes(), attendus[1]) << nom;
    EXPECT_EQ(encore.moteur.NombreCles(70), 3u) << nom;
    ASSERT_TRUE(encore.moteur.FermeCabinet());
  }
}

// A number of journal that nobody has gives the longest key there is.
TEST_F(ClesSurDisqueTest, LaPlusLongueCleSeRefait) {
  Moteur moteur(m_systeme, m_lmdb, 64 << 10);
  ASSERT_TRUE(moteur.OuvreCabinet(m_dossier.Chemin()));
  ASSERT_TRUE(moteur.CreeDat(FichierJournal, m_dossier / "JOURNAL.dat", sizeof(Line)));
  ASSERT_TRUE(moteur.CreeIdx(75, m_dossier / "JOURNAL.idx", false));
  Line ligne{};
  ligne.Journal = 12345;
  ligne.Ligne = 4000000007;
  const Position position = moteur.Ajoute(FichierJournal, &ligne);
  ASSERT_TRUE(position && moteur.AjouteCles(FichierJournal, position, &ligne, false));
  moteur.DebutUnite();
  ASSERT_TRUE(moteur.RemetCles(FichierJournal) && moteur.ValideUnite());
  char texte[TailleCleMax];
  for (unsigned cle = 0; cle < 6; ++cle) {
    const std::string attendue(texte, DefinitionFichierNumero(FichierJournal)->compose(cle, &ligne, texte));
    std::string trouvee;
    EXPECT_EQ(moteur.Premier(static_cast<u16>(75 + cle), trouvee), position);
    EXPECT_EQ(trouvee, attendue);
  }
}

TEST_F(ClesSurDisqueTest, UnFichierDeDonneesDouteuxEstRefuse) {
  const std::string dat = m_dossier / "COMPTES.dat", bon = m_dossier / "bon";
  fs::copy_file(dat, bon);
  struct Cas {
    const char* nom;
    int erreur;
    std::function<void()> abime;
  };
  const auto ecrit = [&](u64 place, const std::string& octets) {
    std::fstream fichier(dat, std::ios::in | std::ios::out | std::ios::binary);
    fichier.seekp(static_cast<std::streamoff>(place));
    fichier << octets;
  };
  const Cas cas[] = {
      {"tronqué", ErrEndommage, [&] { fs::resize_file(dat, 1024 + 300); }},
      {"vide", ErrEndommage, [&] { fs::resize_file(dat, 0); }},
      {"copie de l'en-tête effacée", ErrEndommage, [&] { ecrit(0, std::string(512, '\0')); }},
      {"autre copie effacée", ErrEndommage, [&] { ecrit(512, std::string(512, '\0')); }},
      {"en-tête récrit", ErrEndommage, [&] { ecrit(40, "XXXXXXXX"); }},
      {"un enregistrement de moins, deux fois", ErrEndommage,
       [&] { ecrit(40, "\1"), ecrit(512 + 40, "\1"); }},
      {"zéros", ErrEndommage, [&] { ecrit(0, std::string(1024, '\0')); }},
      {"texte", ErrEndommage, [&] { std::ofstream(dat) << std::string(3000, 'x'); }},
      {"version à venir", ErrFormat,
       [&] { ChangeEntete([](EnteteDat& entete) { entete.version = VersionSommes + 1; }); }},
      {"autre fichier", ErrFormat,
       [&] { fs::copy_file(m_dossier / "BANQUE.dat", dat, fs::copy_options::overwrite_existing); }},
  };
  for (const Cas& c : cas) {
    c.abime();
    LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    EXPECT_FALSE(livres.Ouvre()) << c.nom;
    EXPECT_EQ(livres.moteur.Erreur(), c.erreur) << c.nom;
    EXPECT_EQ(livres.moteur.FichierErreur(), dat) << c.nom;
    livres.moteur.FermeCabinet();
    fs::copy_file(bon, dat, fs::copy_options::overwrite_existing);
  }
  LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  EXPECT_EQ(livres.Comptes(), "5120000000=BQ 7060000000=HON ");
}

TEST_F(ClesSurDisqueTest, DeDeuxComptesDUnNumeroLeDernierCompteEtUneListeLibreNeMentPas) {
  LivresDuMoteur livres(m_dossier.Chemin(), m_lmdb, m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  const Plan second = Compte("5120000000", "NEUF"), sansPlace = Compte("6060000000", "");
  ASSERT_TRUE(livres.moteur.Ajoute(FichierComptes, &second));
  ASSERT_TRUE(livres.Supprime<Plan>(FichierComptes, 2) && livres.moteur.FermeCabinet());
  fs::remove(m_dossier / "COMPTES.idx");
  ChangeEntete([](EnteteDat& entete) { ++entete.libres; });
  ASSERT_TRUE(livres.Ouvre());
  EXPECT_EQ(livres.Comptes(), "5120000000=NEUF ");
  EXPECT_FALSE(livres.moteur.Ajoute(FichierComptes, &sansPlace));
  EXPECT_EQ(livres.moteur.Erreur(), ErrEndommage);
}

/// Files have random ids; a recovery takes them in the order of their numbers all the same.
TEST_F(ClesSurDisqueTest, LaRepriseSuitToujoursLeMemeOrdre) {
  for (int n = 0; n < 6; ++n) {
    DossierTemporaire dossier, copie;
    LivresDuMoteur livres(dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(livres.Ouvre());
    ASSERT_TRUE(livres.Ajoute(FichierBanques, Operation("5120000000", 1, 1)));
    ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
    fs::copy(dossier.Chemin(), copie.Chemin(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    SystemeFautif fautif(m_systeme);
    fautif.SurChemin(".dat");
    fautif.Programme(1, EIO, SystemeFautif::Synchro);
    LivresDuMoteur repris(copie.Chemin(), m_lmdb, fautif);
    EXPECT_FALSE(repris.Ouvre());
    EXPECT_EQ(repris.moteur.FichierErreur(), copie / "COMPTES.dat");
  }
}

}  // namespace
}  // namespace fenlor::test
