// The trash under kills, failing disks and damage: an entry stands in the books or in the trash, whatever
// happens. FENLOR_MORTS sets the number of kills, FENLOR_GRAINE the seed.
#include "journal/corbeille.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <numeric>
#include <random>

#include "journal/cabinetmedical.h"
#include "journal/textes.h"
#include "journal/traitements.h"
#include "outils/systemefautif.h"
#include "outils/systemesanssynchro.h"

namespace fenlor::test {
namespace {

class Corbeille : public CabinetMedical {
 protected:
  explicit Corbeille(Systeme* systeme = nullptr) : CabinetMedical(Cles::Lmdb, 256u << 10, systeme) {
    Installe();
    Boite.Defaut = RepOui;
  }
  void Saisit(u32 nombre) {
    for (u32 n = 1; n <= nombre; ++n) {
      SaisieEcriture saisie = Ecriture(JournalRecettes, "706", n);
      saisie.libelle = "Acte " + std::to_string(n);
      ASSERT_EQ(Enregistre(saisie), n);
    }
  }
  std::vector<Suppression> Lue() {
    std::vector<Suppression> suppressions;
    EXPECT_EQ(LitCorbeille(App(), suppressions).numero, 0u);
    return suppressions;
  }
  /// How often each label stands in the books, or in the trash.
  std::map<std::string, unsigned> Partout() {
    std::map<std::string, unsigned> nombres;
    const u32 fin = Magasin().GetFreeMouvementsID(App().PathExercice, JournalRecettes);
    for (u32 m = 1; m < fin; ++m)
      if (const std::vector<Line> lignes = Lignes(m); !lignes.empty()) {
        EXPECT_EQ(lignes.size(), 2u);
        ++nombres[LitTexte(lignes[0].Libelle)];
      }
    for (const Suppression& s : Lue()) ++nombres[LitTexte(s.lignes[0].Libelle)];
    return nombres;
  }
  void VerifieToutEstLa(u32 nombre) {
    const auto nombres = Partout();
    ASSERT_EQ(nombres.size(), nombre);
    for (const auto& [libelle, fois] : nombres) ASSERT_EQ(fois, 1u) << libelle;
  }
  std::string Fichier() { return App().PathExercice + "/CORBEILLE.dat"; }
};

struct CorbeilleFautive : DisqueDeTest, Corbeille {
  CorbeilleFautive() : Corbeille(&Disque) {}
};

TEST_F(Corbeille, UneMortNePerdAucuneEcriture) {
  constexpr u32 nombre = 12;
  Saisit(nombre);
  const auto voulu = [](const char* nom, unsigned defaut) {
    const char* texte = std::getenv(nom);
    return texte ? static_cast<unsigned>(std::strtoul(texte, nullptr, 10)) : defaut;
  };
  std::mt19937 hasard(voulu("FENLOR_GRAINE", 20261122));
  for (unsigned mort = voulu("FENLOR_MORTS", 8); mort > 0; --mort) {
    SCOPED_TRACE(mort);
    Magasin().QVCloseSession();
    int tube[2];
    ASSERT_EQ(pipe(tube), 0);
    const pid_t enfant = fork();
    if (enfant == 0) {
      if (!Rouvre() || write(tube[1], "x", 1) != 1) _exit(1);
      for (std::mt19937 sien(mort);;) {
        const auto suppressions = Lue();
        u32 mouvement = 0;
        if (!suppressions.empty() && sien() % 2)
          (void)RestaureSuppression(App(), suppressions[sien() % suppressions.size()].numero, mouvement);
        else
          (void)SupprimeEcriture(App(), static_cast<u32>(sien() % nombre) + 1);
      }
    }
    close(tube[1]);
    char commence;
    ASSERT_EQ(read(tube[0], &commence, 1), 1);
    close(tube[0]);
    usleep(static_cast<unsigned>(hasard() % 120'000));
    kill(enfant, SIGKILL);
    int fin = 0;
    waitpid(enfant, &fin, 0);
    ASSERT_TRUE(WIFSIGNALED(fin)) << "it ended by itself";
    ASSERT_TRUE(Rouvre());
    ASSERT_NO_FATAL_FAILURE(VerifieToutEstLa(nombre));
  }
}

TEST_F(CorbeilleFautive, UnDisqueQuiManqueNEnPerdAucune) {
  Saisit(3);
  ASSERT_FALSE(SupprimeEcriture(App(), 3));
  unsigned refuses = 0, pannes = 1;
  for (unsigned k = 1; pannes != 0; ++k) {
    SCOPED_TRACE(k);
    Disque.SurChemin("CORBEILLE");
    Disque.Programme(k, EIO);
    const Refus suppression = SupprimeEcriture(App(), 1);
    EXPECT_TRUE(!suppression || suppression.numero == ErrCorbeille.numero) << suppression.numero;
    pannes = Disque.NbPannes();
    Disque.Repare();
    ASSERT_NO_FATAL_FAILURE(VerifieToutEstLa(3));
    refuses += suppression.numero != 0;
    u32 mouvement = 1;
    ASSERT_TRUE(!Lignes(1).empty() || !RestaureSuppression(App(), Lue()[0].numero, mouvement));
    ASSERT_EQ(mouvement, 1u);
  }
  EXPECT_GT(refuses, 4u);
  ASSERT_FALSE(SupprimeEcriture(App(), 1));
  for (unsigned k = 1; Lignes(1).empty(); ++k) {
    SCOPED_TRACE(k);
    Disque.SurChemin({});
    Disque.Programme(k, EIO);
    u32 mouvement = 0;
    (void)RestaureSuppression(App(), Lue().empty() ? 0 : Lue()[0].numero, mouvement);
    Disque.Repare();
    ASSERT_NO_FATAL_FAILURE(VerifieToutEstLa(3));
  }
}

TEST_F(CorbeilleFautive, UneSelectionYVaEnsemble) {
  Saisit(5);
  Boite.Defaut = RepTous;
  Boite.ArretApres = 6;  // at the third one, once all five were asked about
  const u64 avant = Disque.Compte(SystemeFautif::Renommage);
  ASSERT_FALSE(SupprimeEcritures(App(), {1, 2, 3, 4, 5}));
  EXPECT_EQ(Disque.Compte(SystemeFautif::Renommage) - avant, 2u) << "five go in, three come out again";
  EXPECT_TRUE(Lignes(2).empty());
  ChangeLignes(5, [](Line& ligne) { PoseTexte(ligne.Libelle, "Autre"); });
  EXPECT_EQ(Lue().size(), 2u) << "one that stood, and changed, was never deleted";
}

/// What a killed process wrote is there without a sync, too.
struct DisqueSansSynchro {
  SystemeSansSynchro Vrai;
  SystemeFautif Disque{Vrai};
};
struct CorbeilleTuee : DisqueSansSynchro, Corbeille {
  CorbeilleTuee() : Corbeille(&Disque) {}
};

// The process ends at each call of the disk in turn, while a selection is deleted.
TEST_F(CorbeilleTuee, UneMortAChaqueAppelDUneSelection) {
  constexpr u32 nombre = 26;
  ASSERT_NO_FATAL_FAILURE(Saisit(nombre));
  const std::string cabinet = App().PathCabinet, modele = Dossier() + "/modele";
  Magasin().QVCloseSession();
  std::filesystem::copy(cabinet, modele, std::filesystem::copy_options::recursive);
  unsigned mortes = 0, entamees = 0;
  for (unsigned k = 1, statut = SystemeFautif::StatutTue; statut != 0; ++k) {
    SCOPED_TRACE("call " + std::to_string(k));
    Magasin().QVCloseSession();
    std::filesystem::remove_all(cabinet);
    std::filesystem::copy(modele, cabinet, std::filesystem::copy_options::recursive);
    const pid_t enfant = fork();
    if (enfant == 0) {
      if (!Rouvre()) _exit(1);
      std::vector<u32> tous(nombre);
      std::iota(tous.begin(), tous.end(), 1u);
      Boite.Defaut = RepTous;
      Disque.Tue(true);
      Disque.Programme(k, EIO, SystemeFautif::Tous & ~(SystemeFautif::Lectures | SystemeFautif::Mesurage));
      _exit(SupprimeEcritures(App(), tous) ? 1 : 0);
    }
    int fin = 0;
    waitpid(enfant, &fin, 0);
    statut = static_cast<unsigned>(WEXITSTATUS(fin));
    ASSERT_TRUE(statut == 0 || statut == SystemeFautif::StatutTue) << statut;
    ASSERT_TRUE(Rouvre());
    RangeCorbeille(App());
    mortes += statut != 0;
    ASSERT_NO_FATAL_FAILURE(VerifieToutEstLa(nombre));
    const std::vector<Suppression> jetees = Lue();
    entamees += !jetees.empty() && jetees.size() < nombre;
    // What stands and is changed was never deleted; what was deleted comes back.
    if (!Lignes(nombre).empty()) ChangeLignes(nombre, [](Line& ligne) { PoseTexte(ligne.Piece, "P"); });
    u32 mouvement = 0;
    ASSERT_TRUE(jetees.empty() || !RestaureSuppression(App(), jetees.front().numero, mouvement));
    ASSERT_NO_FATAL_FAILURE(VerifieToutEstLa(nombre));
    Statistiques statistiques{};
    ASSERT_TRUE(Magasin().QVCalculCompta(App().NomExercice, statistiques));
    ASSERT_EQ(statistiques.NbRecettes, nombre - jetees.size() + !jetees.empty());
  }
  std::cout << mortes << " killed, " << entamees << " in between\n";
  EXPECT_GE(mortes, 100u);
  EXPECT_GT(entamees, 60u);
}

TEST_F(CorbeilleFautive, UnFichierAbimeSeDitEtResteDeCote) {
  Saisit(4);
  ASSERT_FALSE(SupprimeEcriture(App(), 1));
  const std::string juste = LitFichier(Fichier());
  std::vector<Suppression> suppressions;
  for (std::size_t n = 0; n < juste.size(); ++n) {
    std::string faux = juste;
    faux[n] = static_cast<char>(faux[n] ^ (1 << n % 8));
    for (const std::string& texte : {faux, juste.substr(0, n)}) {
      EcritFichier(Fichier(), texte);
      ASSERT_EQ(LitCorbeille(App(), suppressions).numero, ErrCorbeilleEndommagee.numero) << n;
      u32 mouvement = 0;
      ASSERT_EQ(RestaureSuppression(App(), 1, mouvement).numero, ErrCorbeilleEndommagee.numero);
    }
  }
  // One that cannot be set aside is not written over; the second one does not take the place of the first.
  EcritFichier(Fichier(), "un");
  Disque.Programme(1, EACCES, SystemeFautif::Renommage);
  EXPECT_EQ(SupprimeEcriture(App(), 2).numero, ErrCorbeille.numero);
  EXPECT_EQ(LitFichier(Fichier()), "un");
  EXPECT_FALSE(Lignes(2).empty());
  ASSERT_FALSE(SupprimeEcriture(App(), 2));
  EcritFichier(Fichier(), "deux");
  ASSERT_FALSE(SupprimeEcriture(App(), 3));
  EXPECT_EQ(LitFichier(Fichier() + ".avarie"), "un");
  EXPECT_EQ(LitFichier(Fichier() + ".avarie2"), "deux");
  EXPECT_EQ(Magasin().AvertissementsMagasin().size(), 2u);
  EXPECT_EQ(Lue().size(), 1u);
}

}  // namespace
}  // namespace fenlor::test
