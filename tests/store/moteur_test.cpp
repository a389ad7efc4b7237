// The engine: units of work, redo log, recovery, trust in key files, cursors.

#include <gtest/gtest.h>

#include <bitset>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include "outils/cabinetdetest.h"
#include "outils/systemesanssynchro.h"
#include "store/moteur.h"
#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

namespace fs = std::filesystem;
using test::DossierTemporaire;

Plan Compte(const std::string& numero, const std::string& code, f64 solde = 0) {
  Plan plan{};
  PoseTexte(plan.Compte, numero);
  PoseTexte(plan.Code, code);
  plan.CreditFranc = solde;
  return plan;
}

Banque Operation(const std::string& compte, u32 date, f64 montant) {
  Banque banque{};
  PoseTexte(banque.Compte, compte);
  banque.Date = date;
  banque.MontantFranc = montant;
  return banque;
}

/// A practice with the accounts and the bank file open in its directory.
struct Livres {
  Livres(const std::string& dossier, FabriqueCles& cles, Systeme& systeme, std::size_t reprise = 64 << 10)
      : moteur(systeme, cles, reprise), dossier(dossier) {}
  bool Ouvre() {
    if (!moteur.OuvreCabinet(dossier)) return false;
    for (const auto& [numero, nom] :
         {std::pair<u16, const char*>{FichierComptes, "COMPTES"}, {FichierBanques, "BANQUE"}}) {
      const std::string dat = dossier + "/" + nom + ".dat", idx = dossier + "/" + nom + ".idx";
      const DefinitionFichier& def = *DefinitionFichierNumero(numero);
      if (!fs::exists(dat) && !(moteur.CreeDat(numero, dat, def.taille) && moteur.Ferme(numero)))
        return false;
      if (!moteur.Ouvre(numero, dat) || !moteur.Ouvre(def.premiereCle, idx)) return false;
    }
    return true;
  }
  template <class Rec>
  Position Ajoute(u16 numero, const Rec& rec) {
    moteur.DebutUnite();
    const Position position = moteur.Ajoute(numero, &rec);
    if (position && moteur.AjouteCles(numero, position, &rec, false) && moteur.ValideUnite()) return position;
    moteur.AnnuleUnite();
    return 0;
  }
  template <class Rec>
  bool Supprime(u16 numero, Position position) {
    Rec rec;
    moteur.DebutUnite();
    if (moteur.Lit(numero, position, &rec) && moteur.SupprimeCles(numero, position, &rec) &&
        moteur.Supprime(numero, position) && moteur.ValideUnite()) {
      return true;
    }
    moteur.AnnuleUnite();
    return false;
  }
  /// Numbers in key order, each with its code: what a user would see.
  std::string Comptes() {
    std::string texte, cle;
    for (Position p = moteur.Premier(69, cle); p; p = moteur.Suivant(69, cle)) {
      Plan plan;
      if (!moteur.Lit(FichierComptes, p, &plan)) return "illisible";
      texte += LitTexte(plan.Compte) + "=" + LitTexte(plan.Code) + " ";
    }
    return texte;
  }
  Moteur moteur;
  std::string dossier;
};

class MoteurTest : public ::testing::TestWithParam<bool> {
 protected:
  FabriqueCles& Cles() { return GetParam() ? static_cast<FabriqueCles&>(m_lmdb) : m_memoire; }
  DossierTemporaire m_dossier;
  SystemeSansSynchro m_systeme;
  FabriqueLmdb m_lmdb;
  FabriqueMemoire m_memoire;
};

TEST_P(MoteurTest, UneUniteAnnuleeNeLaisseRien) {
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
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
  moteur.AnnuleUnite();
  EXPECT_EQ(livres.Comptes(), avant);
  EXPECT_EQ(moteur.NombreEmplacements(FichierComptes), 1u);
  EXPECT_EQ(moteur.NbAnnulations(), 2u);
}

TEST_P(MoteurTest, UneUniteDurableDitSesFichiers) {
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
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

TEST_P(MoteurTest, UneUniteCouteUneSynchro) {
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme, 8 << 20);
  ASSERT_TRUE(livres.Ouvre());
  const u64 avant = livres.moteur.NbSynchros();
  for (int i = 0; i < 50; ++i)
    ASSERT_TRUE(livres.Ajoute(FichierBanques, Operation("5120000000", 0x07D30101, i + 1)));
  EXPECT_EQ(livres.moteur.NbSynchros() - avant, 50u);
  livres.moteur.DebutUnite();
  livres.moteur.DebutUnite();
  EXPECT_TRUE(livres.moteur.ValideUnite());
  EXPECT_TRUE(livres.moteur.ValideUnite());
  EXPECT_EQ(livres.moteur.NbSynchros() - avant, 50u) << "an empty unit needs no sync";
}

TEST_P(MoteurTest, LeCurseurContinueApresDesChangements) {
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
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
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
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
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  EXPECT_FALSE(livres.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  EXPECT_EQ(livres.moteur.Erreur(), ErrCleDouble);
  EXPECT_EQ(livres.moteur.NombreCles(69), 1u);
  EXPECT_EQ(livres.moteur.NombreCles(70), 1u);
}

TEST_P(MoteurTest, UnGrosLotPasseParLaQueue) {
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  Moteur& moteur = livres.moteur;
  const Position libre = livres.Ajoute(FichierBanques, Operation("5110000000", 0x07D30101, 1));
  ASSERT_TRUE(livres.Supprime<Banque>(FichierBanques, libre));
  constexpr int Nombre = 60000;  // 10 MB of records, past what a unit keeps in memory
  for (const bool valide : {false, true}) {
    moteur.DebutUnite();
    for (int i = 0; i < Nombre; ++i) {
      const Banque rec = Operation("5120000000", 0x07D30101, i);
      const Position p = moteur.Ajoute(FichierBanques, &rec);
      ASSERT_TRUE(p && moteur.AjouteCles(FichierBanques, p, &rec, true));
      if (i == 50000) {  // an inner unit that changes its mind, in the tail
        moteur.DebutUnite();
        ASSERT_TRUE(livres.Supprime<Banque>(FichierBanques, p));
        ASSERT_TRUE(livres.Ajoute(FichierBanques, Operation("5190000000", 0x07D30101, 1)));
        moteur.AnnuleUnite();
      }
    }
    if (valide) {
      ASSERT_TRUE(moteur.ValideUnite());
    } else {
      moteur.AnnuleUnite();
      ASSERT_EQ(moteur.NombreCles(87), 0u);
      ASSERT_EQ(moteur.NombreEmplacements(FichierBanques), 1u);
    }
  }
  EXPECT_EQ(moteur.NombreCles(87), u32{Nombre});
  // The first one took the free slot; all others follow.
  Banque rec;
  ASSERT_TRUE(moteur.Lit(FichierBanques, Nombre, &rec));
  EXPECT_EQ(+rec.MontantFranc, Nombre - 1);
  ASSERT_TRUE(moteur.FermeCabinet());

  Livres encore(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(encore.Ouvre());
  EXPECT_EQ(encore.moteur.NombreCles(88), u32{Nombre});
  ASSERT_TRUE(encore.moteur.Lit(FichierBanques, 51000, &rec));
  EXPECT_EQ(+rec.MontantFranc, 50999);
}

TEST_P(MoteurTest, UnArretBrutalNePerdRien) {
  DossierTemporaire copie;
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("7060000000", "HON")));
  livres.moteur.DebutUnite();
  ASSERT_TRUE(livres.Ajoute(FichierComptes, Compte("6060000000", "ACH")));
  fs::copy(m_dossier.Chemin(), copie.Chemin(),
           fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  livres.moteur.AnnuleUnite();

  Livres repris(copie.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(repris.Ouvre()) << repris.moteur.Erreur();
  EXPECT_EQ(repris.Comptes(), "5120000000=BQ 7060000000=HON ");
  EXPECT_EQ(fs::file_size(copie / "COMPTES.dat"), 1024u + 2 * 300u);
}

// The log leaves out the zeroes at the end of a new record; behind the records may stand what was undone.
TEST_P(MoteurTest, LaRepriseEffaceCeQuiTraineDerriere) {
  DossierTemporaire copie;
  Livres livres(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(livres.Ouvre() && livres.moteur.Vidange());
  const std::string avant = copie / "avant";
  fs::copy_file(m_dossier / "BANQUE.dat", avant);
  std::ofstream(avant, std::ios::binary | std::ios::app) << std::string(sizeof(Banque), 'U');
  const Banque rec = Operation("5120000000", 1, 1);
  const Position position = livres.Ajoute(FichierBanques, rec);
  ASSERT_TRUE(position);
  fs::copy(m_dossier.Chemin(), copie.Chemin(), fs::copy_options::recursive);
  fs::rename(avant, copie / "BANQUE.dat");

  Livres repris(copie.Chemin(), Cles(), m_systeme);
  Banque lue;
  ASSERT_TRUE(repris.Ouvre() && repris.moteur.Lit(FichierBanques, position, &lue));
  EXPECT_EQ(std::memcmp(&lue, &rec, sizeof rec), 0);
}

TEST_P(MoteurTest, UnSeulEcrivain) {
  Livres premier(m_dossier.Chemin(), Cles(), m_systeme), second(m_dossier.Chemin(), Cles(), m_systeme);
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

TEST_P(MoteurTest, CeQueDAutresFontAuxFichiersEstVu) {
  Livres premier(m_dossier.Chemin(), Cles(), m_systeme), second(m_dossier.Chemin(), Cles(), m_systeme);
  ASSERT_TRUE(premier.Ouvre());
  ASSERT_TRUE(premier.Ajoute(FichierComptes, Compte("5120000000", "BQ")));
  ASSERT_TRUE(premier.Ajoute(FichierBanques, Operation("5120000000", 1, 10)));
  // Without its name the lock still holds.
  fs::remove(m_dossier / "fenlor.ver");
  EXPECT_FALSE(second.moteur.ReserveCabinet(m_dossier.Chemin()));
  EXPECT_EQ(second.moteur.Erreur(), ErrOccupe);
  // A file cut short, then the log gone: nothing more is acknowledged.
  const auto taille = fs::file_size(m_dossier / "BANQUE.dat");
  fs::resize_file(m_dossier / "BANQUE.dat", 1100);
  EXPECT_FALSE(premier.Ajoute(FichierBanques, Operation("5120000000", 2, 20)));
  EXPECT_EQ(premier.moteur.Erreur(), ErrAltere);
  EXPECT_EQ(premier.moteur.FichierErreur(), m_dossier / "BANQUE.dat");
  EXPECT_TRUE(premier.Ajoute(FichierComptes, Compte("6060000000", "ACH")));
  fs::resize_file(m_dossier / "BANQUE.dat", taille);
  fs::remove(m_dossier / "fenlor.rep");
  EXPECT_FALSE(premier.Ajoute(FichierComptes, Compte("7060000000", "HON")));
  EXPECT_EQ(premier.moteur.Erreur(), ErrAltere);
  // What was acknowledged before stands in the data files.
  premier.moteur.FermeCabinet();
  ASSERT_TRUE(second.Ouvre()) << second.moteur.Erreur();
  EXPECT_EQ(second.Comptes(), "5120000000=BQ 6060000000=ACH ");
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

class ClesSurDisqueTest : public ::testing::Test {
 protected:
  /// Two accounts, closed properly.
  void SetUp() override {
    Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
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
  DossierTemporaire m_dossier;
  SystemePosix m_systeme;
  FabriqueLmdb m_lmdb;
};

TEST_F(ClesSurDisqueTest, UneFermeturePropreEpargneLaReconstruction) {
  const Empreinte avant = Idx();
  Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
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
    Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(livres.Ouvre()) << cas << " " << livres.moteur.Erreur();
    EXPECT_EQ(livres.Comptes(), "5120000000=BQ 7060000000=HON ") << cas;
    ASSERT_TRUE(livres.moteur.FermeCabinet()) << cas;
  }
}

/// Bits that count, lengths and times kept: only the sum over the whole file can tell.
TEST_F(ClesSurDisqueTest, UnBitBasculeDerriereLaTeteEstDitEtRefait) {
  const std::string idx = m_dossier / "COMPTES.idx", rep = m_dossier / "fenlor.rep",
                    dat = m_dossier / "COMPTES.dat";
  std::ifstream flux(idx, std::ios::binary);
  const std::string sain{std::istreambuf_iterator<char>(flux), {}};
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
    Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
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
  u64 Nombre(unsigned c) override { return m_vraies->Nombre(c); }
  int Charge(unsigned c, const std::vector<std::pair<std::string_view, u32>>& t) override {
    return m_vraies->Charge(c, t);
  }
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
    Livres livres(dossier.Chemin(), rond, systeme);
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
    Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    ASSERT_TRUE(livres.Ouvre());
    const bool cles = std::string(nom) == "COMPTES.idx";
    ASSERT_TRUE(!cles || livres.Ajoute(FichierComptes, Compte("6060000000", "ACH")));
    ASSERT_TRUE(cles || livres.Supprime<Plan>(FichierComptes, 3));
    ASSERT_TRUE(livres.moteur.FermeCabinet());
    fs::copy_file(avant / nom, m_dossier / nom, fs::copy_options::overwrite_existing);
    fs::last_write_time(m_dossier / nom, date);  // as a backup brings a file back
    Livres encore(m_dossier.Chemin(), m_lmdb, m_systeme);
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
  ASSERT_TRUE(moteur.RefaitCles(FichierJournal));
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
      {"zéros", ErrFormat, [&] { ecrit(0, std::string(1024, '\0')); }},
      {"autre fichier", ErrFormat,
       [&] { fs::copy_file(m_dossier / "BANQUE.dat", dat, fs::copy_options::overwrite_existing); }},
  };
  for (const Cas& c : cas) {
    c.abime();
    Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
    EXPECT_FALSE(livres.Ouvre()) << c.nom;
    EXPECT_EQ(livres.moteur.Erreur(), c.erreur) << c.nom;
    EXPECT_EQ(livres.moteur.FichierErreur(), dat) << c.nom;
    livres.moteur.FermeCabinet();
    fs::copy_file(bon, dat, fs::copy_options::overwrite_existing);
  }
  Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  EXPECT_EQ(livres.Comptes(), "5120000000=BQ 7060000000=HON ");
}

TEST_F(ClesSurDisqueTest, UneUniteAbimeeAvantUneBonneEstDite) {
  DossierTemporaire copie;
  Livres livres(m_dossier.Chemin(), m_lmdb, m_systeme);
  ASSERT_TRUE(livres.Ouvre());
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(livres.Ajoute(FichierBanques, Operation("5120000000", 1, i + 1)));
  fs::copy(m_dossier.Chemin(), copie.Chemin(),
           fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  std::fstream rep(copie / "fenlor.rep", std::ios::in | std::ios::out | std::ios::binary);
  rep.seekp(65536 + 4096 + 60);  // inside the second unit
  rep << "xxxx";
  rep.close();
  Livres repris(copie.Chemin(), m_lmdb, m_systeme);
  EXPECT_FALSE(repris.Ouvre());
  EXPECT_EQ(repris.moteur.Erreur(), ErrJournalReprise);
  ASSERT_TRUE(repris.moteur.OuvreCabinet(copie.Chemin(), true));
  EXPECT_FALSE(repris.moteur.Avertissements().empty());
}

}  // namespace
}  // namespace fenlor
