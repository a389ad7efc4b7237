#include "master/libelles.h"

#include <algorithm>

#include "outils/cabinetdetest.h"
#include "outils/systemefautif.h"
#include "store/fichiertextes.h"

namespace fenlor::test {
namespace {

using Liste = std::vector<std::string>;

class LibellesTest : public DisqueDeTest, public test::CabinetDeTest {
 protected:
  LibellesTest() : CabinetDeTest(test::Cles::Memoire, 256u << 10, &Disque) { CreeExercice("2003"); }
  std::string Chemin() { return Joint(App().PathExercice, "TEXTES.dat"); }
  /// The lines without their checksum, which is right.
  std::string Contenu() {
    const std::string contenu = test::LitFichier(Chemin());
    EXPECT_FALSE(TextesModifies(contenu)) << contenu;
    return contenu.substr(0, contenu.find("@Somme="));
  }
  Liste Lus() {
    Liste lus;
    EXPECT_TRUE(App().Dit(LitLibelles(App(), lus)));
    return lus;
  }
  std::vector<std::string> Fichiers() {
    std::vector<std::string> noms;
    Vrai.Liste(App().PathExercice, noms);
    std::sort(noms.begin(), noms.end());
    return noms;
  }
};

TEST_F(LibellesTest, CeQuiEstLuDUnFichier) {
  const std::string x79(79, 'x'), long81(81, 'x');
  const struct {
    std::string fichier;
    Liste libelles;
  } cas[] = {
      {"", {}},
      {"@Texte\r\nLoyer\r\nConsultations\r\nLoyer\r\n", {"Loyer", "Consultations", "Loyer"}},
      {"@Texte\r\n  Achat \t de   matériel \r\n"_w, {"Achat de matériel"_w}},
      {"@Texte\r\n\r\n \t \r\nLoyer", {"Loyer"}},
      {"Loyer\n@Autre\n  @ Texte\n[Recettes]\n [x\nà\n"_w, {"Loyer", "à"_w}},
      {long81 + "\r\nE-mail @ [x]\r\n", {long81.substr(1), "E-mail @ [x]"}},
      {x79 + " yz\r\n", {x79}},
      {std::string("a\0b\rc\r\n", 7), {"a b c"}},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.fichier);
    test::EcritFichier(Chemin(), c.fichier);
    EXPECT_EQ(Lus(), c.libelles);
    EXPECT_EQ(Contenu(), c.fichier) << "reading writes nothing";
  }
}

TEST_F(LibellesTest, CeQuiEstEcritEstRelu) {
  ASSERT_TRUE(App().Dit(
      EcritLibelles(App(), {"  Loyer   de mai ", "", " \t", "Électricité"_w, std::string(81, 'x')})));
  EXPECT_EQ(Contenu(), "@Texte\r\nLoyer de mai\r\nÉlectricité\r\n"_w + std::string(80, 'x') + "\r\n");
  EXPECT_EQ(Lus(), (Liste{"Loyer de mai", "Électricité"_w, std::string(80, 'x')}));
  for (const char* perdu : {"", "  ", "@Texte", " [CPAM]"}) EXPECT_FALSE(LibelleRelisible(perdu)) << perdu;
  for (const char* bon : {"a", "CPAM [mai]", "a@b.fr", "-"}) EXPECT_TRUE(LibelleRelisible(bon)) << bon;
}

TEST_F(LibellesTest, UnBitQuiBasculeSeVoitEtSeDitUneFois) {
  ASSERT_TRUE(App().Dit(EcritLibelles(App(), {"Loyer", "Électricité"_w})));
  std::string contenu = test::LitFichier(Chemin());
  for (std::size_t bit = 0; bit < contenu.size() * 8; ++bit) {
    contenu[bit / 8] ^= static_cast<char>(1u << bit % 8);
    EXPECT_TRUE(TextesModifies(contenu)) << bit;
    if (bit == 70) test::EcritFichier(Chemin(), contenu);
    contenu[bit / 8] ^= static_cast<char>(1u << bit % 8);
  }
  Magasin().AvertissementsMagasin();
  for (const std::size_t dits : {1u, 0u}) {
    ASSERT_TRUE(Magasin().QVOpenExercice("2003"));
    EXPECT_EQ(Magasin().AvertissementsMagasin().size(), dits);
  }
}

TEST_F(LibellesTest, FichierAbsentOuDossierPerdu) {
  std::filesystem::remove(Chemin());
  EXPECT_EQ(Lus(), Liste{});
  EXPECT_EQ(Contenu(), "@Texte\r\n");
  const std::string ailleurs = App().PathExercice + "~";
  std::filesystem::rename(App().PathExercice, ailleurs);
  Liste lus{"avant"};
  EXPECT_FALSE(App().Dit(LitLibelles(App(), lus)) || App().Dit(EcritLibelles(App(), {"Loyer"})));
  EXPECT_EQ(lus, Liste{});
  EXPECT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{3117, 3351}));
  EXPECT_EQ(Boite.Erreurs[0].texte, "Ouverture de " + Chemin() + " impossible.");
  std::filesystem::rename(ailleurs, App().PathExercice);
  EXPECT_TRUE(App().Dit(EcritLibelles(App(), {"Loyer"})));
}

// Whatever the disk refuses, the old labels are there, whole, and nothing lies beside them.
TEST_F(LibellesTest, UnEchecLaisseLAncienFichier) {
  ASSERT_TRUE(App().Dit(EcritLibelles(App(), {"Loyer", "Électricité"_w})));
  const std::string avant = Contenu();
  const auto fichiers = Fichiers();
  using F = SystemeFautif;
  Disque.SurChemin("TEXTES");
  Disque.EcrituresPartielles(true);
  unsigned refus = 0;
  for (const unsigned genre :
       {F::Ouvertures, F::Mesurage, F::Lectures, F::Ecriture, F::Synchro, F::Renommage}) {
    for (unsigned k = 1;; ++k) {
      SCOPED_TRACE("kind " + std::to_string(genre) + ", time " + std::to_string(k));
      Disque.Programme(k, ENOSPC, genre);
      const bool ecrit = App().Dit(EcritLibelles(App(), {"Autre"}));
      const bool panne = Disque.NbPannes() > 0;
      Disque.Repare();
      EXPECT_EQ(ecrit, !panne);
      EXPECT_EQ(Contenu(), panne ? avant : "@Texte\r\nAutre\r\n");
      EXPECT_EQ(Fichiers(), fichiers);
      if (!panne) break;
      ++refus;
    }
    ASSERT_TRUE(App().Dit(EcritLibelles(App(), {"Loyer", "Électricité"_w})));
  }
  Disque.SurChemin("2003");
  Disque.Programme(1, EIO, F::SynchroDossier);
  EXPECT_FALSE(App().Dit(EcritLibelles(App(), {"Autre"}))) << "a name that may not be durable";
  Disque.Repare();
  EXPECT_EQ(Contenu(), avant);
  EXPECT_GE(refus, 6u);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>(refus + 1, 3351));
}

}  // namespace
}  // namespace fenlor::test
