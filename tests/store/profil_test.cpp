#include "store/profil.h"

#include <sys/stat.h>

#include <fstream>
#include <random>

#include "outils/cabinetdetest.h"
#include "outils/systemecoupure.h"
#include "outils/systemefautif.h"

namespace fenlor::test {
namespace {

using Noms = std::vector<std::string>;

class ProfilTest : public testing::Test {
 protected:
  test::DossierTemporaire dossier;
  SystemePosix posix;
  const std::string chemin = dossier.Chemin() + "/fenlor.ini";
};

TEST_F(ProfilTest, ReadsAsAProfileFile) {
  EcritFichier(chemin,
               "perdu=avant\r\n"
               "; un commentaire\r\n"
               "[Activite]\r\n"
               "  Exercice = 2003 \r\n"
               "Exercices=2002,2003\n"
               ";Exercice=cach\xE9\r\n"
               "Vide=\r\n"
               "Double=\"  deux blancs  \"\r\n"
               "Simple='a'\r\n"
               "Guillemet=\"\r\n"
               "D\xE9pareill\xE9=\"a'\r\n"
               "Egal=a=b=c\r\n"
               "exercice=second\r\n"
               "sans signe\r\n"
               "= sans nom\r\n"
               "[ouvert\r\n"
               " [Pr\xE9"
               "f\xE9rences] reste\r\n"
               "Virgule=Oui\r\n"
               "[ACTIVITE]\r\n"
               "Ailleurs=1\r\n"
               "[Fin]\r\n"
               "Derni\xE8re=x");
  Profil profil(posix, chemin);
  const struct {
    const char *section, *cle, *valeur;
  } cas[] = {
      {"Activite", "Exercice", "2003"},
      {"ACTIVITE", "EXERCICE", "2003"},
      {"Activite", "Exercices", "2002,2003"},
      {"Activite", "Vide", ""},
      {"Activite", "Simple", "a"},
      {"Activite", "Double", "  deux blancs  "},
      {"Activite", "Guillemet", "\""},
      {"Activite", "Egal", "a=b=c"},
      {"Activite", "D\xC9pareill\xC9", "\"a'"},
      {"Activite", "Ailleurs", ""},
      {"Activite", "perdu", ""},
      {"PR\xC9"
       "F\xC9RENCES",
       "virgule", "Oui"},
      {"ouvert", "x", ""},
      {"Fin", "Derni\xE8re", "x"},
      {"Absente", "x", ""},
      {"Activite", ";Exercice", ""},
      {"", "perdu", ""},
  };
  for (const auto& c : cas) EXPECT_EQ(profil.Lit(c.section, c.cle), c.valeur) << c.section << "/" << c.cle;
  EXPECT_EQ(profil.Sections(), (Noms{"Activite", "Préférences"_w, "Fin"}));
  EXPECT_EQ(profil.Cles("activite"),
            (Noms{"Exercice", "Exercices", "Vide", "Double", "Simple", "Guillemet", "Dépareillé"_w, "Egal"}));
  EXPECT_TRUE(profil.Existe("FIN"));
  EXPECT_FALSE(profil.Existe("ouvert"));
  EXPECT_EQ(profil.Erreur(), 0);
}

TEST_F(ProfilTest, AChangeByOthersIsKnownByItsSum) {
  Profil profil(posix, chemin, true);
  ASSERT_TRUE(profil.Ecrit("Activite", "Exercice", "2003") && profil.Ecrit("2003", "TVA", "Oui"));
  const std::string sain = LitFichier(chemin);
  EXPECT_FALSE(Profil(posix, chemin, true).ModifieAilleurs());
  EXPECT_EQ(profil.Cles("2003"), Noms{"TVA"});
  for (std::size_t octet = 0; octet < sain.size(); ++octet) {
    std::string touche = sain;
    touche[octet] ^= 4;
    EcritFichier(chemin, touche);
    // Only the comment's own beginning can vanish unseen: no setting stands there.
    const bool dansLeDebut = octet >= sain.rfind(";Somme=") && octet < sain.rfind('=') + 1;
    EXPECT_EQ(Profil(posix, chemin, true).ModifieAilleurs(), !dansLeDebut) << octet;
  }
  EcritFichier(chemin, sain + "[Ajout]\r\n");
  Profil autre(posix, chemin, true);
  EXPECT_TRUE(autre.ModifieAilleurs());
  // The next write vouches for it again.
  ASSERT_TRUE(autre.Ecrit("2003", "TVA", "Non"));
  EXPECT_FALSE(autre.ModifieAilleurs() || Profil(posix, chemin, true).ModifieAilleurs());
}

TEST_F(ProfilTest, AWriteLeavesTheRestAlone) {
  EcritFichier(chemin, "; t\xEAte\n[A]\r\nx = \"1\"\r\nX=2\n\r\n; devant B\r\n[B]\n[A]\r\nx=3\r\n[C]\r\nz=1");
  Profil profil(posix, chemin);
  EXPECT_TRUE(profil.Ecrit("a", "X", "un") && profil.Ecrit("A", "y", " bord"));
  EXPECT_TRUE(profil.Ecrit("B", "b", "1") && profil.Ecrit("D", "d", "4"));
  EXPECT_EQ(LitFichier(chemin),
            "; t\xEAte\n[A]\r\nx=un\r\nX=2\ny=\" bord\"\r\n\r\n; devant "
            "B\r\n[B]\nb=1\r\n[A]\r\nx=3\r\n[C]\r\nz=1\r\n"
            "\r\n[D]\r\nd=4\r\n");
  EXPECT_TRUE(profil.Ecrit("A", "x", std::nullopt));
  EXPECT_EQ(profil.Lit("A", "x"), "");
  EXPECT_TRUE(profil.Ecrit({{"A", "", {}}, {"d", "", {}}, {"C", "absente", {}}, {"Absente", "x", {}}}));
  EXPECT_EQ(LitFichier(chemin), "; t\xEAte\n[B]\nb=1\r\n[C]\r\nz=1\r\n\r\n");
  EXPECT_FALSE(profil.Existe("A"));
  struct stat s;
  ASSERT_EQ(stat(chemin.c_str(), &s), 0);
  EXPECT_EQ(s.st_mode & 0777u, 0600u);
}

TEST_F(ProfilTest, RefusesWhatCouldNotBeReadBack) {
  EcritFichier(chemin, "[A]\r\nx=1\r\n");
  Profil profil(posix, chemin);
  const Profil::Changement refuses[] = {
      {"", "x", "1"},
      {"A]", "x", "1"},
      {" A", "x", "1"},
      {"A", "x ", "1"},
      {"A", "x=y", "1"},
      {"A", ";x", "1"},
      {"A", "[x", "1"},
      {"A", "[x]", "1"},
      {"A", "x", "1\n"},
      {"A", "x", "a\rb"},
      {"A\n", "x", "1"},
      {"A", "x\ty", "1"},
      {"A", "x", std::string("\0", 1)},
      {"", "", {}},
  };
  for (const auto& c : refuses) {
    EXPECT_FALSE(profil.Ecrit({{"A", "y", "2"}, c})) << c.section << "/" << c.cle;
    EXPECT_EQ(profil.Erreur(), EINVAL);
  }
  EXPECT_EQ(LitFichier(chemin), "[A]\r\nx=1\r\n");
}

// A scrambled password is 16 bytes of 32 to 255, blanks and quotes at its ends included.
TEST_F(ProfilTest, AnyValueOfPrintableBytesComesBack) {
  std::mt19937 hasard(7);
  Profil profil(posix, chemin);
  for (int i = 0; i < 96; ++i) {
    std::string valeur;
    for (int k = 0; k < 16; ++k) valeur += static_cast<char>(32 + hasard() % 224);
    const std::string bords = " \"';[]=";
    if (i % 2) valeur.front() = bords[hasard() % bords.size()];
    if (i % 3) valeur.back() = bords[hasard() % bords.size()];
    if (i % 16 == 0) valeur = std::string(hasard() % 4, bords[hasard() % bords.size()]);
    ASSERT_TRUE(profil.Ecrit("Activite", "Mot de Passe", valeur));
    ASSERT_EQ(profil.Lit("Activite", "Mot de Passe"), valeur);
    ASSERT_EQ(Profil(posix, chemin).Lit("Activite", "Mot de Passe"), valeur);
  }
}

TEST_F(ProfilTest, ReadsTheFileAgainOnlyWhenItChanged) {
  SystemeFautif compteur(posix);
  Profil profil(compteur, chemin);
  EXPECT_EQ(profil.Lit("A", "x"), "");
  EXPECT_EQ(profil.Erreur(), 0);
  ASSERT_TRUE(profil.Ecrit("A", "x", "1"));
  const u64 ouvertures = compteur.Compte(SystemeFautif::Ouvertures);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(profil.Lit("A", "x"), "1");
  EXPECT_TRUE(profil.Ecrit("A", "X", "1"));
  EXPECT_EQ(compteur.Compte(SystemeFautif::Ouvertures), ouvertures);
  ASSERT_TRUE(Profil(posix, chemin).Ecrit("A", "x", "2"));
  EXPECT_EQ(profil.Lit("A", "x"), "2");
  std::filesystem::remove(chemin);
  EXPECT_EQ(profil.Lit("A", "x"), "");
  EXPECT_EQ(profil.Erreur(), 0);
}

TEST_F(ProfilTest, AnInstantLooksAtTheFileOnce) {
  SystemeFautif compteur(posix);
  u64 instant = 0;
  Profil profil(compteur, chemin, false, &instant), autre(posix, chemin);
  ASSERT_TRUE(profil.Ecrit("A", "x", "1"));
  const auto regards = [&] {
    const u64 avant = compteur.Compte(SystemeFautif::Mesurage);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(profil.Lit("a", "X"), autre.Lit("A", "x"));
    return compteur.Compte(SystemeFautif::Mesurage) - avant;
  };
  EXPECT_EQ(regards(), 8u);
  instant = 1;
  EXPECT_EQ(regards(), 1u);
  ASSERT_TRUE(autre.Ecrit("A", "x", "2"));
  EXPECT_EQ(profil.Lit("A", "x"), "1");
  ASSERT_TRUE(profil.Ecrit("A", "y", "3")) << "on top of what others wrote meanwhile";
  EXPECT_EQ(regards(), 0u) << "the write looked";
  instant = 2;
  EXPECT_EQ(regards(), 1u);
}

TEST_F(ProfilTest, AFileThatCannotBeReadIsNotOverwritten) {
  std::filesystem::create_directory(chemin);
  Profil profil(posix, chemin);
  EXPECT_EQ(profil.Lit("A", "x"), "");
  EXPECT_EQ(profil.Erreur(), EISDIR);
  EXPECT_FALSE(profil.Ecrit("A", "x", "1"));
  EXPECT_TRUE(std::filesystem::is_directory(chemin));
  Profil perdu(posix, dossier.Chemin() + "/absent/fenlor.ini");
  EXPECT_EQ(perdu.Lit("A", "x"), "");
  EXPECT_EQ(perdu.Erreur(), 0);
  EXPECT_FALSE(perdu.Ecrit("A", "x", "1"));
  EXPECT_EQ(perdu.Erreur(), ENOENT);
}

/// A disk on which one file may be read and not written.
class SystemeLectureSeule : public SystemePosix {
 public:
  explicit SystemeLectureSeule(std::string chemin) : m_chemin(std::move(chemin)) {}
  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override {
    return chemin == m_chemin && mode != Lecture ? EACCES : SystemePosix::Ouvre(chemin, mode, fichier);
  }

 private:
  std::string m_chemin;
};

TEST_F(ProfilTest, AReadOnlyFileIsNotReplaced) {
  EcritFichier(chemin, "[A]\r\nx=1\r\n");
  SystemeLectureSeule systeme(chemin);
  Profil profil(systeme, chemin);
  EXPECT_FALSE(profil.Ecrit("A", "x", "2"));
  EXPECT_EQ(profil.Erreur(), EACCES);
  EXPECT_EQ(profil.Lit("A", "x"), "1");
  EXPECT_EQ(LitFichier(chemin), "[A]\r\nx=1\r\n");
  EXPECT_TRUE(profil.Ecrit("A", "x", "1"));
}

TEST_F(ProfilTest, AFailedWriteLeavesTheOldFile) {
  for (const bool existe : {true, false}) {
    for (unsigned k = 1;; ++k) {
      std::filesystem::remove(chemin);
      if (existe) EcritFichier(chemin, "[A]\r\nx=1\r\n");
      const std::string avant = LitFichier(chemin);
      SystemeFautif fautif(posix);
      fautif.EcrituresPartielles(k % 2 == 0);
      fautif.Programme(k, ENOSPC);
      Profil profil(fautif, chemin);
      const bool faite = profil.Ecrit({{"A", "x", "2"}, {"B", "y", "3"}});
      EXPECT_FALSE(std::filesystem::exists(chemin + ".tmp")) << k;
      if (fautif.NbPannes() == 0) {
        EXPECT_TRUE(faite);
        EXPECT_GT(k, 5u);
        break;
      }
      if (faite) continue;  // an operation that the result does not hang on
      EXPECT_EQ(profil.Erreur(), ENOSPC) << k;
      EXPECT_EQ(LitFichier(chemin), avant) << k;
      EXPECT_EQ(std::filesystem::exists(chemin), existe) << k;
      EXPECT_TRUE(profil.Ecrit("A", "x", "4")) << k;
      EXPECT_EQ(profil.Lit("A", "x") + profil.Lit("B", "y"), "4") << k;
    }
  }
}

// The file after a power cut at each sync: whole, and no older than the last write acknowledged.
unsigned NbPerduesApresCoupure(const std::string& chemin, const std::string& ignore) {
  unsigned perdues = 0;
  SystemePosix posix;
  const std::string dossier = DossierDe(chemin);
  for (u64 coupure = 1; coupure <= 7; ++coupure) {
    for (u64 graine = 0; graine < 8; ++graine) {
      EcritFichier(chemin, "[A]\r\nx=0\r\n" + std::string(1500, ';') + "\r\n");
      SystemeCoupure disque(dossier);
      disque.IgnoreSynchro(ignore);
      disque.CoupeApres(coupure);
      Profil profil(disque, chemin);
      int dite = 0;
      for (int i = 1; i <= 3; ++i) {
        if (profil.Ecrit("A", "x", std::to_string(i))) dite = i;
      }
      EXPECT_TRUE(disque.Applique(graine));
      Profil relu(posix, chemin);
      const std::string valeur = relu.Lit("A", "x");
      const bool entier = LitFichier(chemin).size() == 1512;
      if (!entier || valeur.empty() || std::stoi(valeur) < dite) ++perdues;
    }
  }
  return perdues;
}

TEST_F(ProfilTest, SurvivesAPowerCut) {
  EXPECT_EQ(NbPerduesApresCoupure(chemin, ""), 0u);
  EXPECT_GT(NbPerduesApresCoupure(chemin, ".tmp"), 0u);
  EXPECT_GT(NbPerduesApresCoupure(chemin, dossier.Chemin()), 0u);
}

}  // namespace
}  // namespace fenlor::test
