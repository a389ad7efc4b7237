// The redo log by itself: what comes back after a stop, what must not, and how it grows and is emptied.
#include "store/reprise.h"

#include <zlib.h>

#include <cstring>

#include "outils/cabinetdetest.h"
#include "outils/systemefautif.h"
#include "outils/systemesanssynchro.h"
#include "store/qvapi.h"

namespace fenlor::test {
namespace {

constexpr std::size_t DebutUnites = 64 << 10, Bloc = 4096, Capacite = 64 << 10;

class Reprise : public testing::Test {
 protected:
  Reprise() : m_disque(m_posix) {}
  std::string Chemin() const { return m_dossier.Chemin() + "/fenlor.rep"; }
  /// What stands in the log, as a text; or its error.
  std::string Contenu(int* erreur = nullptr) {
    JournalReprise log;
    std::string texte;
    int rc = log.Ouvre(m_disque, m_dossier.Chemin(), Capacite);
    if (!rc) rc = log.Verifie();
    if (!rc) {
      rc = log.Relit([&](const std::vector<FichierUnite>& fichiers, const std::vector<ImageUnite>& images) {
        for (const FichierUnite& f : fichiers)
          texte += f.chemin + ':' + std::to_string(f.id) + ',' + std::to_string(f.generation) + ',' +
                   std::to_string(f.numero) + ',' + std::to_string(f.taille) + ',' +
                   std::to_string(f.emplacements) + ',' + std::to_string(f.tete) + ',' +
                   std::to_string(f.libres);
        for (const ImageUnite& i : images)
          texte += ' ' + std::to_string(i.fichier) + '/' + std::to_string(i.position) + '+' +
                   std::to_string(i.decalage) + '=' + std::string(i.octets.substr(0, 8)) + '0' +
                   std::to_string(i.zeros);
        texte += '\n';
        return 0;
      });
    }
    if (erreur) *erreur = rc;
    if (rc && !erreur) return "erreur " + std::to_string(rc);
    return texte;
  }
  /// One unit with one image.
  static int Ecrit(JournalReprise& log, const std::string& octets) {
    log.Commence({{7, 3, FichierComptes, 9000, 5, 2, 1, "2003/COMPTES.dat"}},
                 JournalReprise::TailleImage(octets.size()));
    log.AjouteImage({0, 4, 10, 2, octets});
    return log.Ecrit();
  }
  static std::string Ligne(const std::string& octets) {
    return "2003/COMPTES.dat:7,3,68,9000,5,2,1 0/2+4=" + octets.substr(0, 8) + "010\n";
  }
  /// Changes bytes of the unit that stands first, and makes its checksum true again.
  void Falsifie(std::size_t place, const std::string& octets) {
    std::string log = LitFichier(Chemin());
    char* unite = log.data() + DebutUnites;
    std::memcpy(unite + place, octets.data(), octets.size());
    u32 reste = 0;
    std::memcpy(&reste, unite + 24, 4);
    const u32 crc = static_cast<u32>(crc32(0, reinterpret_cast<const Bytef*>(unite + 8), reste + 20));
    std::memcpy(unite + 4, &crc, 4);
    EcritFichier(Chemin(), log);
  }
  void Abime(std::size_t place) {
    std::string log = LitFichier(Chemin());
    log.at(place) ^= 0x55;
    EcritFichier(Chemin(), log);
  }

  test::DossierTemporaire m_dossier;
  SystemeSansSynchro m_posix;
  SystemeFautif m_disque;
};

TEST_F(Reprise, LesUnitesReviennentDansLOrdreEtLePasDEpoqueLesOublie) {
  JournalReprise log;
  ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
  const u64 id = log.Id();
  ASSERT_EQ(Ecrit(log, "un"), 0);
  ASSERT_EQ(Ecrit(log, std::string(5000, 'x')), 0);
  ASSERT_EQ(Ecrit(log, "trois"), 0);
  EXPECT_EQ(log.NbSynchros(), 3u);
  EXPECT_EQ(Contenu(), Ligne("un") + Ligne("xxxxxxxx") + Ligne("trois"));

  log.sceaux[12] = {1, 2, 3, 4, 5, 6, 7};
  ASSERT_EQ(log.Vide(), 0);
  EXPECT_TRUE(log.EstVide());
  EXPECT_EQ(Contenu(), "") << "the units still stand on the disk";
  ASSERT_EQ(Ecrit(log, "quatre"), 0);
  EXPECT_EQ(Contenu(), Ligne("quatre")) << "and not the older ones behind it";
  JournalReprise relu;
  ASSERT_EQ(relu.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
  EXPECT_EQ(relu.Id(), id);
  EXPECT_EQ(relu.sceaux, log.sceaux);
}

TEST_F(Reprise, UneUniteDechireeNeComptePasUneUniteAbimeeEstDite) {
  JournalReprise log;
  ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
  for (const char* octets : {"un", "deux", "trois"}) ASSERT_EQ(Ecrit(log, octets), 0);
  const std::string bon = LitFichier(Chemin());
  for (const std::size_t place : {0, 5, 9, 17, 25, 40, 70}) {
    Abime(DebutUnites + 2 * Bloc + place);
    EXPECT_EQ(Contenu(), Ligne("un") + Ligne("deux")) << place;
    EcritFichier(Chemin(), bon);
    Abime(DebutUnites + Bloc + place);
    int erreur = 0;
    Contenu(&erreur);
    EXPECT_EQ(erreur, ErrJournalReprise) << "an acknowledged unit is lost, " << place;
    EcritFichier(Chemin(), bon);
  }
}

TEST_F(Reprise, DeuxEnTetesQuiAlternent) {
  JournalReprise log;
  ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);  // epoch 1, second copy
  ASSERT_EQ(log.Vide(), 0);                                         // epoch 2, first copy
  const std::string vide = LitFichier(Chemin());
  Abime(20);  // as a header cut while it is written: the one before it counts
  EXPECT_EQ(Contenu(), "");
  Abime((32 << 10) + 20);
  EXPECT_EQ(Contenu(), "erreur " + std::to_string(ErrJournalReprise)) << "no header at all";
  EcritFichier(Chemin(), vide);
  ASSERT_EQ(Ecrit(log, "un"), 0);
  Abime((32 << 10) + 20);
  EXPECT_EQ(Contenu(), Ligne("un"));
  Abime((32 << 10) + 20);
  Abime(20);
  EXPECT_EQ(Contenu(), "erreur " + std::to_string(ErrJournalReprise)) << "its units are of a later epoch";
}

TEST_F(Reprise, UneUniteRefuseeNeRevientJamais) {
  JournalReprise log;
  ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
  ASSERT_EQ(Ecrit(log, "un"), 0);
  m_disque.Programme(1, EIO, SystemeFautif::Synchro);  // the bytes may be on the disk all the same
  EXPECT_EQ(Ecrit(log, "perdue"), EIO);
  EXPECT_EQ(Contenu(), Ligne("un")) << "it was wiped at once";
  m_disque.Programme(1, EIO, SystemeFautif::Synchro, false);
  EXPECT_EQ(Ecrit(log, std::string(3 * Bloc, 'p')), EIO);
  m_disque.Repare();
  ASSERT_EQ(Ecrit(log, "deux"), 0);
  EXPECT_EQ(Contenu(), Ligne("un") + Ligne("deux"));
}

TEST_F(Reprise, SansEnTeteSurRienNEstEcrit) {
  JournalReprise log;
  ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
  ASSERT_EQ(Ecrit(log, "un"), 0);
  m_disque.Programme(1, EIO, SystemeFautif::Synchro);
  EXPECT_EQ(log.Vide(), EIO);
  EXPECT_TRUE(log.DoitVider());
  EXPECT_EQ(Ecrit(log, "deux"), EIO);
  ASSERT_EQ(log.Vide(), 0);
  ASSERT_EQ(Ecrit(log, "trois"), 0);
  EXPECT_EQ(Contenu(), Ligne("trois"));
}

/// The disk may hold the old header: the next session must not read another one from memory.
TEST_F(Reprise, UnVidageManqueNeCachePasLesUnites) {
  {
    JournalReprise log;
    ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
    ASSERT_EQ(Ecrit(log, "un"), 0);
    m_disque.Programme(1, EIO, SystemeFautif::Synchro);
    EXPECT_EQ(log.Vide(), EIO);
    EXPECT_TRUE(log.DoitVider());
  }
  EXPECT_EQ(Contenu(), Ligne("un"));
}

TEST_F(Reprise, UneGrandeUniteAllongeLeFichierQuiRaccourcitVide) {
  JournalReprise log;
  ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
  const auto avant = std::filesystem::file_size(Chemin());
  EXPECT_EQ(avant, DebutUnites + Capacite);
  constexpr std::size_t Octets = 8000;
  const auto octets = [](int i) { return std::string(Octets, static_cast<char>('A' + i)); };
  std::string attendu = "2003/COMPTES.dat:7,3,68,9000,5,2,1";
  for (int i = 0; i < 60; ++i) attendu += " 0/2+4=" + octets(i).substr(0, 8) + "010";
  const auto echoue = [&](unsigned rang) {
    m_disque.Programme(rang, EIO, SystemeFautif::Ecriture);
    log.Commence({{7, 3, FichierComptes, 9000, 5, 2, 1, "2003/COMPTES.dat"}},
                 60 * JournalReprise::TailleImage(Octets));
    EXPECT_TRUE(log.Tient()) << "whatever its size, when the log is empty";
    for (int i = 0; i < 60; ++i) log.AjouteImage({0, 4, 10, 2, octets(i)});
    return log.Ecrit() == EIO;
  };
  // It goes out in pieces: whichever the disk refuses, nothing of it counts, and the next unit does.
  unsigned refus = 0;
  for (; echoue(refus + 1); ++refus) EXPECT_EQ(Contenu(), "") << refus;
  EXPECT_GE(refus, 3u);
  EXPECT_EQ(Contenu(), attendu + '\n');
  EXPECT_GT(std::filesystem::file_size(Chemin()), avant + 60 * Octets - Capacite);
  m_disque.Repare();
  log.Commence({{7, 3, FichierComptes, 9000, 5, 2, 1, "2003/COMPTES.dat"}}, 0);
  EXPECT_FALSE(log.Tient());
  ASSERT_EQ(log.Vide(), 0);
  EXPECT_EQ(std::filesystem::file_size(Chemin()), avant);
}

// Whole by its checksum, and yet nothing that the store has written.
TEST_F(Reprise, UnContenuImpossibleEstRefuse) {
  const auto u32le = [](u32 v) { return std::string(reinterpret_cast<const char*>(&v), sizeof v); };
  JournalReprise log;
  ASSERT_EQ(log.Ouvre(m_disque, m_dossier.Chemin(), Capacite), 0);
  ASSERT_EQ(Ecrit(log, "un"), 0);
  const std::string bon = LitFichier(Chemin());
  constexpr std::size_t fichier = 32, image = fichier + 34 + 16;  // behind the path of 16 bytes
  const struct {
    const char* nom;
    std::size_t place;
    std::string octets;
  } cas[] = {
      {"slots below the free list's head", fichier + 20, u32le(1)},
      {"more free slots than slots", fichier + 28, u32le(6)},
      {"a path longer than the unit", fichier + 32, u32le(0xFFFF)},
      {"an image of another file", image, std::string("\1\0", 2)},
      {"an image behind the record's end", image + 2, std::string("\x20\x30", 2)},
      {"an image longer than the unit", image + 4, std::string("\xFF\x7F", 2)},
      {"position 0", image + 8, u32le(0)},
      {"a position behind the slots", image + 8, u32le(6)},
      {"more files than there are bytes", 28, u32le(1000)},
  };
  for (const auto& c : cas) {
    Falsifie(c.place, c.octets);
    int erreur = 0;
    Contenu(&erreur);
    EXPECT_EQ(erreur, ErrJournalReprise) << c.nom;
    EcritFichier(Chemin(), bon);
  }
  Falsifie(fichier + 20, u32le(5));
  EXPECT_EQ(Contenu(), Ligne("un")) << "the same value, and the checksum made again";
}

}  // namespace
}  // namespace fenlor::test
