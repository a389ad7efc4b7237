#include "store/systeme.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <limits>

#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

class SystemeTest : public testing::Test {
 protected:
  unsigned Droits(const std::string& nom) {
    struct stat s;
    return stat(nom.c_str(), &s) == 0 ? s.st_mode & 0777u : 0u;
  }
  std::string Lu(Fichier& fichier, std::size_t taille, u64 offset) {
    std::string tampon(taille, '?');
    std::size_t lus = 99;
    EXPECT_EQ(fichier.Lit(tampon.data(), taille, offset, lus), 0);
    tampon.resize(lus);
    return tampon;
  }

  test::DossierTemporaire dossier;
  const std::string chemin = dossier.Chemin() + "/fichier";
  SystemePosix posix;
  std::unique_ptr<Fichier> fichier;
};

TEST_F(SystemeTest, AFileReadsAsItWasWritten) {
  ASSERT_EQ(posix.Ouvre(chemin, Systeme::LectureEcriture, fichier), ENOENT);
  EXPECT_EQ(fichier, nullptr);
  ASSERT_EQ(posix.Ouvre(chemin, Systeme::Creation, fichier), 0);
  EXPECT_EQ(Droits(chemin), 0600u);
  EXPECT_EQ(fichier->Ecrit("abc", 3, 5), 0);
  EXPECT_EQ(fichier->Synchronise(), 0);
  EXPECT_EQ(Lu(*fichier, 100, 0), std::string("\0\0\0\0\0abc", 8));
  EXPECT_EQ(Lu(*fichier, 2, 5), "ab");
  EXPECT_EQ(Lu(*fichier, 2, 8), "");
  EXPECT_EQ(fichier->Tronque(6), 0);
  EXPECT_EQ(fichier->Reserve(2, 10), 0);
  EXPECT_EQ(Lu(*fichier, 100, 0), std::string("\0\0\0\0\0a\0\0\0\0", 10));
  EXPECT_EQ(fichier->Reserve(0, 4), 0);
  EXPECT_EQ(fichier->Reserve(7, 7), 0);
  EXPECT_EQ(Lu(*fichier, 100, 5), std::string("a\0\0\0\0", 5));

  Empreinte avant, apres;
  EXPECT_EQ(fichier->Mesure(avant), 0);
  EXPECT_EQ(posix.Mesure(chemin, apres), 0);
  EXPECT_EQ(avant, apres);
  EXPECT_EQ(apres.taille, 10u);

  ASSERT_EQ(posix.Ouvre(chemin, Systeme::Lecture, fichier), 0);
  EXPECT_EQ(Lu(*fichier, 1, 5), "a");
  EXPECT_EQ(fichier->Ecrit("x", 1, 0), EBADF);
  ASSERT_EQ(posix.Ouvre(chemin, Systeme::Creation, fichier), 0);
  EXPECT_EQ(Lu(*fichier, 100, 0), "");
}

TEST_F(SystemeTest, ImpossiblePlacesAreRefused) {
  ASSERT_EQ(posix.Ouvre(chemin, Systeme::Creation, fichier), 0);
  constexpr u64 Loin = std::numeric_limits<u64>::max() - 1;
  char c = 'x';
  std::size_t lus = 1;
  EXPECT_EQ(fichier->Ecrit(&c, 1, Loin), EFBIG);
  EXPECT_EQ(fichier->Tronque(Loin), EFBIG);
  EXPECT_EQ(fichier->Reserve(0, Loin), EFBIG);
  EXPECT_EQ(fichier->Lit(&c, 1, Loin, lus), EINVAL);
  EXPECT_EQ(lus, 0u);
}

// A limit of the process stands for a disk that takes the beginning of a write.
TEST_F(SystemeTest, AShortWriteIsAFailure) {
  ASSERT_EQ(posix.Ouvre(chemin, Systeme::Creation, fichier), 0);
  rlimit avant;
  getrlimit(RLIMIT_FSIZE, &avant);
  const auto signal = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit petite{1000, avant.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &petite), 0);
  const std::string texte(4096, 'x');
  const int ecriture = fichier->Ecrit(texte.data(), texte.size(), 0);
  const int reserve = fichier->Reserve(0, 4096);
  setrlimit(RLIMIT_FSIZE, &avant);
  std::signal(SIGXFSZ, signal);
  EXPECT_EQ(ecriture, EFBIG);
  EXPECT_EQ(reserve, EFBIG);
}

TEST_F(SystemeTest, NamesAndDirectories) {
  const std::string sous = Joint(dossier.Chemin(), "sous");
  EXPECT_EQ(posix.CreeDossier(sous), 0);
  EXPECT_EQ(posix.CreeDossier(sous), EEXIST);
  EXPECT_EQ(Droits(sous), 0700u);
  ASSERT_EQ(posix.Ouvre(Joint(sous, "a"), Systeme::Creation, fichier), 0);
  ASSERT_EQ(posix.Ouvre(Joint(sous, "b"), Systeme::Creation, fichier), 0);
  EXPECT_EQ(posix.Renomme(Joint(sous, "a"), Joint(sous, "b")), 0);
  EXPECT_EQ(posix.SynchroniseDossier(sous), 0);
  std::vector<std::string> noms{"reste"};
  EXPECT_EQ(posix.Liste(sous, noms), 0);
  EXPECT_EQ(noms, std::vector<std::string>{"b"});
  EXPECT_TRUE(posix.Existe(Joint(sous, "b")));
  EXPECT_FALSE(posix.Existe(Joint(sous, "a")));
  EXPECT_EQ(posix.SupprimeDossier(sous), ENOTEMPTY);
  EXPECT_EQ(posix.Supprime(Joint(sous, "b")), 0);
  EXPECT_EQ(posix.Supprime(Joint(sous, "b")), ENOENT);
  EXPECT_EQ(posix.SupprimeDossier(sous), 0);
  EXPECT_EQ(posix.Liste(sous, noms), ENOENT);
  EXPECT_TRUE(noms.empty());
  EXPECT_EQ(posix.SynchroniseDossier(sous), ENOENT);
  EXPECT_EQ(posix.Renomme(Joint(sous, "a"), chemin), ENOENT);
}

TEST(Systeme, Paths) {
  EXPECT_EQ(Joint("a", "b"), "a/b");
  EXPECT_EQ(Joint("a/", "b"), "a/b");
  EXPECT_EQ(Joint("", "b"), "b");
  EXPECT_EQ(DossierDe("/a/b"), "/a");
  EXPECT_EQ(DossierDe("/a"), "/");
  EXPECT_EQ(DossierDe("a"), ".");
}

TEST(Systeme, ErrorsAreToldInFrench) {
  EXPECT_EQ(TexteErreurSysteme(ENOSPC), "Aucun espace disponible sur le périphérique"_w);
  EXPECT_EQ(TexteErreurSysteme(EACCES), "Accès refusé"_w);
  EXPECT_EQ(TexteErreurSysteme(12345), "erreur système 12345"_w);
}

}  // namespace
}  // namespace fenlor::test
