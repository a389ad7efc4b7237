// The engine: units of work, cursors, what a stop leaves.

#include <cerrno>
#include <cstring>

#include "outils/systemefautif.h"
#include "store/livresdumoteur.h"
#include "store/verrou.h"

namespace fenlor::test {
namespace {

namespace fs = std::filesystem;

class MoteurTest : public ::testing::TestWithParam<bool> {
 protected:
  FabriqueCles& Cles() { return GetParam() ? static_cast<FabriqueCles&>(m_lmdb) : m_memoire; }
  DossierTemporaire m_dossier;
  SystemeSansSynchro m_systeme;
  FabriqueLmdb m_lmdb;
  FabriqueMemoire m_memoire;
};

TEST_P(MoteurTest, UneUniteAnnuleeNeLaisseRien) {
  LivresDuMoteur livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre()) << livres.moteur.Erreur();
  const Position premier = livres.Ajoute(FichierComptes, Compte("5120000000", "BQ"));
  ASSERT_TRUE(premier);
  const std::string avant = livres.Comptes();
  Moteur& moteur = livres.moteur;

  moteur.DebutUnite();
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("7060000000", "HON")));
  ASSERT_TRUE(livres.Supprime<Plan>(FichierComptes, premier));
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("6060000000", "ACH")));  // takes the freed slot
  moteur.DebutUnite();
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("6130000000", "LOY")));
  ASSERT_TRUE(livres.Supprime<Plan>(FichierComptes, premier));
  EXPECT_EQ(livres.Comptes(), "6130000000=LOY 7060000000=HON ");
  moteur.AnnuleUnite();
  EXPECT_EQ(livres.Comptes(), "6060000000=ACH 7060000000=HON ");
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("6130000000", "LOY"))) << "no slot is free any more";
  moteur.AnnuleUnite();
  EXPECT_EQ(livres.Comptes(), avant);
  EXPECT_EQ(moteur.NombreEmplacements(FichierComptes), 1u);
  EXPECT_EQ(moteur.NbAnnulations(), 2u);
}

/// More keys than a unit remembers one by one: they are left out until somebody looks.
TEST_P(MoteurTest, LesClesDUneGrandeUniteSontCellesDesEnregistrements) {
  LivresDuMoteur livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  Moteur& moteur = livres.moteur;
  const auto cle = [](unsigned i) { return std::to_string(1000000000 + i * 7919u % 100003u); };
  const auto finit = [&](bool valide) {
    if (valide)
      EXPECT_TRUE(moteur.ValideUnite());
    else
      moteur.AnnuleUnite();
  };
  const auto ajoute = [&](unsigned i, bool valide) {
    moteur.DebutUnite();
    const Plan rec = Compte(cle(i), "");
    const Position p = moteur.Ajoute(FichierComptes, &rec);
    EXPECT_TRUE(p && moteur.AjouteCles(FichierComptes, p, &rec, true));
    finit(valide);
    return p;
  };
  constexpr unsigned nombre = 41000;  // of five keys
  for (const bool valide : {false, true}) {
    moteur.DebutUnite();
    for (unsigned i = 0; i < nombre; ++i) ajoute(i, true);
    ajoute(nombre, false);
    EXPECT_EQ(moteur.TrouveCle(69, cle(nombre)), 0u);
    EXPECT_EQ(moteur.TrouveCle(69, cle(nombre - 1)), nombre);
    const Position apres = ajoute(nombre, true);
    EXPECT_EQ(moteur.TrouveCle(69, cle(nombre)), apres);
    finit(valide);
    EXPECT_EQ(moteur.NombreCles(70), valide ? nombre + 1 : 0);
    EXPECT_TRUE(moteur.PasseEnRevue(FichierComptes).cles);
  }
  moteur.DebutUnite();
  for (unsigned i = nombre + 1; i < 2 * nombre; ++i) ajoute(i, true);
  moteur.DebutUnite();
  const Position dernier = ajoute(2 * nombre, true);
  EXPECT_EQ(moteur.TrouveCle(69, cle(2 * nombre)), dernier) << "made with a record that is taken back";
  moteur.AnnuleUnite();
  EXPECT_EQ(moteur.TrouveCle(69, cle(2 * nombre)), 0u);
  ASSERT_TRUE(moteur.ValideUnite());
  ASSERT_TRUE(moteur.FermeCabinet() && livres.Ouvre());
  EXPECT_EQ(moteur.NombreCles(69), 2 * nombre);
  EXPECT_TRUE(moteur.PasseEnRevue(FichierComptes).cles);
}

TEST_P(MoteurTest, UneUniteDurableDitSesFichiers) {
  LivresDuMoteur livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  Moteur& moteur = livres.moteur;
  std::vector<std::bitset<256>> dits;
  moteur.SuitChangements([&](const std::bitset<256>& fichiers) {
    EXPECT_EQ(moteur.Profondeur(), 0u);
    dits.push_back(fichiers);
  });
  const auto seul = [](u16 numero) { return std::bitset<256>().set(numero); };
  moteur.DebutUnite();
  ASSERT_TRUE(livres.Ajoute(FichierBanques, Operation("5120000000", 0x07D30101, 1)));
  EXPECT_TRUE(dits.empty()) << "an inner one";
  moteur.AnnuleUnite();
  EXPECT_TRUE(dits.empty()) << "undone";
  moteur.DebutUnite();
  const Plan compte = Compte("5120000000", "BQ");
  ASSERT_TRUE(livres.Ajoute(FichierComptes, compte) && livres.Ajoute(FichierBanques, Banque{}));
  ASSERT_TRUE(moteur.ValideUnite());
  ASSERT_TRUE(moteur.Ecrit(FichierComptes, 1, &compte));
  const auto deux = seul(FichierComptes) | seul(FichierBanques);
  EXPECT_EQ(dits, (std::vector{deux, seul(FichierComptes)})) << "an operation is a unit of its own";
}

TEST_P(MoteurTest, LeCurseurContinueApresDesChangements) {
  LivresDuMoteur livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  std::vector<Position> positions;
  for (int i = 0; i < 6; ++i)
    positions.push_back(livres.Ajoute(FichierBanques, Operation("5120000000", 0x07D30101, i + 1)));
  Moteur& moteur = livres.moteur;
  std::string cle = MakeBanquesKey1("5120000000", 0x07D30101);
  ASSERT_EQ(moteur.Borne(87, cle), positions[0]) << "doubles come by position";
  ASSERT_EQ(moteur.Suivant(87, cle), positions[1]);
  ASSERT_TRUE(livres.Supprime<Banque>(FichierBanques, positions[1]));  // the entry under the cursor
  ASSERT_TRUE(livres.Supprime<Banque>(FichierBanques, positions[2]));  // and the one behind it
  EXPECT_EQ(moteur.Suivant(87, cle), positions[3]);
  ASSERT_TRUE(moteur.Vidange());
  EXPECT_EQ(moteur.Suivant(87, cle), positions[4]);
  EXPECT_EQ(moteur.Suivant(87, cle), positions[5]);
  EXPECT_EQ(moteur.Suivant(87, cle), 0u);
  EXPECT_EQ(moteur.Suivant(87, cle), 0u) << "the end stays the end";
  EXPECT_EQ(moteur.Precedent(87, cle), positions[4]);
}

TEST_P(MoteurTest, UnParcoursNeDerangeNiNEstDerange) {
  LivresDuMoteur livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  std::vector<Position> positions, vues;
  for (int i = 0; i < 5; ++i)
    positions.push_back(livres.Ajoute(FichierBanques, Operation("5120000000", 0x07D30101 + i, i + 1)));
  Moteur& moteur = livres.moteur;
  std::string cle;
  ASSERT_EQ(moteur.Premier(87, cle), positions[0]);
  const std::string debut = MakeBanquesKey1("5120000000", 0x07D30102),
                    fin = MakeBanquesKey1("5120000000", 0x07D30105);
  ASSERT_TRUE(moteur.Parcours(87, debut, fin, [&](Position p, const void*) {
    vues.push_back(p);
    EXPECT_EQ(moteur.TrouveCle(87, MakeBanquesKey1("5120000000", 0x07D30101)), positions[0]);
    return true;
  }));
  EXPECT_EQ(vues, std::vector<Position>(positions.begin() + 1, positions.begin() + 4));
  EXPECT_EQ(moteur.Suivant(87, cle), positions[1]) << "the walk moves no cursor";
}

TEST_P(MoteurTest, UneCleUniqueRefuseLeDouble) {
  LivresDuMoteur livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  EXPECT_FALSE(livres.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  EXPECT_EQ(livres.moteur.Erreur(), ErrCleDouble);
  EXPECT_EQ(livres.moteur.NombreCles(69), 1u);
  EXPECT_EQ(livres.moteur.NombreCles(70), 1u);
}

// The log leaves out the zeroes at the end of a new record; behind the records may stand what was undone.
TEST_P(MoteurTest, LaRepriseEffaceCeQuiTraineDerriere) {
  DossierTemporaire copie;
  LivresDuMoteur livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre() && livres.moteur.Vidange());
  const std::string avant = copie / "avant";
  fs::copy_file(m_dossier / "BANQUE.dat", avant);
  std::ofstream(avant, std::ios::binary | std::ios::app) << std::string(sizeof(Banque), 'U');
  const Banque rec = Operation("5120000000", 1, 1);
  const Position position = livres.Ajoute(FichierBanques, rec);
  ASSERT_TRUE(position);
  fs::copy(m_dossier.Chemin(), copie.Chemin(), fs::copy_options::recursive);
  fs::rename(avant, copie / "BANQUE.dat");

  LivresDuMoteur repris(copie.Chemin(), Cles(), m_systeme);
  Banque lue;
  ASSERT_TRUE(repris.Ouvre() && repris.moteur.Lit(FichierBanques, position, &lue));
  EXPECT_EQ(std::memcmp(&lue, &rec, sizeof rec), 0);
}

TEST_P(MoteurTest, UnSeulEcrivain) {
  LivresDuMoteur premier(m_dossier.Chemin(), Cles(), m_systeme),
      second(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(premier.Ouvre());
  EXPECT_FALSE(second.Ouvre());
  EXPECT_EQ(second.moteur.Erreur(), ErrOccupe);
  EXPECT_NE(second.moteur.Detenteur().find("processus " + std::to_string(getpid())), std::string::npos);
  ASSERT_TRUE(premier.moteur.FermeCabinet());
  // A reservation keeps others out, and the opening goes on from it.
  ASSERT_TRUE(second.moteur.ReserveCabinet(m_dossier.Chemin()));
  EXPECT_FALSE(premier.Ouvre());
  EXPECT_EQ(premier.moteur.Erreur(), ErrOccupe);
  EXPECT_TRUE(second.Ouvre());
  EXPECT_EQ(fs::status(m_dossier / "COMPTES.dat").permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write);
}

/// The mark of a session that did not end well is there from the lock on, and stays, whatever the disk
/// answers.
TEST(VerrouTest, UneSeanceInterrompueSeVoit) {
  DossierTemporaire dossier;
  SystemePosix vrai;
  for (const bool acheve : {true, false}) {
    for (unsigned k = 1; k <= 12; ++k) {
      SystemeFautif systeme(vrai);
      Verrou avant, mort, suivant;
      ASSERT_EQ(avant.Prend(vrai, dossier.Chemin()), 0);
      avant.Rend(acheve);
      systeme.SurChemin("fenlor.ver");
      systeme.Programme(k, ENOSPC, acheve ? SystemeFautif::Ecriture : SystemeFautif::Tous, acheve);
      const bool pris = mort.Prend(systeme, dossier.Chemin()) == 0;
      mort.Rend();
      ASSERT_EQ(suivant.Prend(vrai, dossier.Chemin()), 0);
      EXPECT_EQ(suivant.EtaitAcheve(), acheve && !pris) << acheve << " failure " << k;
    }
  }
}

TEST_P(MoteurTest, CeQueDAutresFontAuxFichiersEstVu) {
  LivresDuMoteur premier(m_dossier.Chemin(), Cles(), m_systeme),
      second(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(premier.Ouvre());
  ASSERT_TRUE(premier.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  ASSERT_TRUE(premier.Ajoute(FichierBanques, Operation("5120000000", 1, 10)));
  // Without its name the lock still holds.
  fs::remove(m_dossier / "fenlor.ver");
  EXPECT_FALSE(second.moteur.ReserveCabinet(m_dossier.Chemin()));
  EXPECT_EQ(second.moteur.Erreur(), ErrOccupe);
  // A file cut short, then the log gone: nothing more is acknowledged.
  const std::string contenu = LitFichier(m_dossier / "BANQUE.dat");
  fs::resize_file(m_dossier / "BANQUE.dat", 1100);
  EXPECT_FALSE(premier.Ajoute(FichierBanques, Operation("5120000000", 2, 20)));
  EXPECT_EQ(premier.moteur.Erreur(), ErrAltere);
  EXPECT_EQ(premier.moteur.FichierErreur(), m_dossier / "BANQUE.dat");
  EXPECT_TRUE(premier.Ajoute(FichierComptes, Compte("6060000000", "ACH")));
  std::ofstream(m_dossier / "BANQUE.dat", std::ios::binary | std::ios::in)
      .write(contenu.data(), contenu.size());
  fs::remove(m_dossier / "fenlor.rep");
  EXPECT_FALSE(premier.Ajoute(FichierComptes, Compte("7060000000", "HON")));
  EXPECT_EQ(premier.moteur.Erreur(), ErrAltere);
  // What was acknowledged before stands in the data files.
  premier.moteur.FermeCabinet();
  ASSERT_TRUE(second.Ouvre()) << second.moteur.Erreur();
  EXPECT_EQ(second.Comptes(), "5120000000=BQ 6060000000=ACH ");
}

TEST_P(MoteurTest, SansVerrouNiJournalLesFichiersSontEncoreTenus) {
  LivresDuMoteur premier(m_dossier.Chemin(), Cles(), m_systeme),
      second(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(premier.Ouvre());
  ASSERT_TRUE(premier.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  for (const char* nom : {"fenlor.ver", "fenlor.rep"}) fs::remove(m_dossier / nom);
  EXPECT_FALSE(second.Ouvre());
  EXPECT_EQ(second.moteur.Erreur(), ErrTenu) << "not a damage";
  premier.moteur.FermeCabinet();
  second.moteur.FermeCabinet();
  ASSERT_TRUE(second.Ouvre()) << second.moteur.Erreur();
  EXPECT_EQ(second.Comptes(), "5120000000=BQ ");
}

TEST_P(MoteurTest, UnDisqueEnLectureSeuleSeLitEtResteTelQuel) {
  LivresDuMoteur premier(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(premier.Ouvre());
  ASSERT_TRUE(premier.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  const std::string copie = m_dossier / "copie";
  fs::create_directory(copie);
  for (const char* nom : {"COMPTES.dat", "COMPTES.idx", "BANQUE.dat", "fenlor.ver", "fenlor.rep"})
    if (fs::exists(m_dossier / nom)) fs::copy(m_dossier / nom, copie + "/" + nom);
  EcritFichier(copie + "/fenlor.ini", "");
  SystemeGarde disque(m_systeme);
  disque.Garde(copie);
  LivresDuMoteur lecture(copie, Cles(), disque), autre(copie, Cles(), disque),
      ecriture(copie, Cles(), m_systeme);
  EXPECT_FALSE(lecture.Ouvre()) << "a unit stands in the log";
  EXPECT_EQ(lecture.moteur.Erreur(), ErrSuspens);
  ASSERT_TRUE(ecriture.Ouvre());
  ecriture.moteur.FermeCabinet();
  ASSERT_TRUE(lecture.Ouvre() && autre.Ouvre()) << "readers share it: " << autre.moteur.Erreur();
  EXPECT_EQ(lecture.Comptes(), "5120000000=BQ ");
  EXPECT_FALSE(ecriture.Ouvre());
  EXPECT_EQ(ecriture.moteur.Erreur(), ErrOccupe);
  EXPECT_FALSE(lecture.Ajoute(FichierComptes, Compte("6060000000", "ACH")));
  EXPECT_EQ(lecture.moteur.Erreur(), ErrLectureSeule);
  EXPECT_FALSE(lecture.moteur.SupprimeCle(69, "5120000000", 1));
}

TEST_P(MoteurTest, UnNumeroDImmobilisationFinissantPar255Reste) {
  Moteur moteur(m_systeme, Cles(), 64 << 10);
  ASSERT_TRUE(moteur.OuvreCabinet(m_dossier.Chemin()));
  ASSERT_TRUE(moteur.CreeDat(FichierImmo, m_dossier / "Immo.dat", 233));
  ASSERT_TRUE(moteur.CreeIdx(93, m_dossier / "Immo.idx", false));
  Immobilisation rec{};
  for (const u32 numero : {255u, 256u, 0xFFFFFF00u}) {
    rec.Numero = numero;
    const Position p = moteur.Ajoute(FichierImmo, &rec);
    ASSERT_TRUE(p) << numero;
    Immobilisation lu;
    ASSERT_TRUE(moteur.Lit(FichierImmo, p, &lu));
    EXPECT_EQ(+lu.Numero, numero);
  }
  for (const u32 numero : {0u, 0xFFFFFFFFu}) {
    rec.Numero = numero;
    EXPECT_FALSE(moteur.Ajoute(FichierImmo, &rec)) << numero;
  }
}

INSTANTIATE_TEST_SUITE_P(Cles, MoteurTest, ::testing::Values(true, false),
                         [](const auto& info) { return info.param ? "Lmdb" : "Memoire"; });

}  // namespace
}  // namespace fenlor::test
