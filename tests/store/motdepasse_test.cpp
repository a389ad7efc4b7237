#include "store/motdepasse.h"

#include "outils/cabinetdetest.h"
#include "store/profil.h"

namespace fenlor::test {
namespace {

TEST(MotDePasse, ChaqueCaractereRevientAChaquePlace) {
  for (unsigned place = 0; place < LongueurMotDePasse; ++place) {
    for (unsigned code = 32; code < 256; ++code) {
      std::string texte(LongueurMotDePasse, 'A');
      texte[place] = static_cast<char>(code);
      const std::string brouille = BrouilleTexte(texte, LongueurMotDePasse, GraineMotDePasse);
      ASSERT_EQ(brouille.size(), LongueurMotDePasse);
      for (const char c : brouille) ASSERT_GE(static_cast<unsigned char>(c), 32u);
      ASSERT_EQ(DebrouilleTexte(brouille, LongueurMotDePasse, GraineMotDePasse), EnMajuscules(texte))
          << "code " << code << " en " << place;
    }
  }
}

TEST(MotDePasse, TraverseLeFichierDeReglages) {
  test::DossierTemporaire dossier;
  SystemePosix systeme;
  // Passwords whose scrambled form begins or ends in a blank, a quote, a semicolon.
  std::vector<std::string> motsDePasse = {"secret", "É À Ç"_w, ";", "\"", "1234567890123456", "\\n\\n"};
  for (const char voulu : {' ', '"', '\'', ';', '=', '['}) {
    std::string clair =
        DebrouilleTexte(std::string(LongueurMotDePasse, voulu), LongueurMotDePasse, GraineMotDePasse);
    motsDePasse.push_back(clair);
  }
  for (const std::string& motDePasse : motsDePasse) {
    const std::string stocke = MotDePasseBrouille(motDePasse);
    Profil ecrit(systeme, dossier.Chemin() + "/fenlor.ini");
    ASSERT_TRUE(ecrit.Ecrit("Activite", "Mot de Passe", stocke));
    Profil relu(systeme, dossier.Chemin() + "/fenlor.ini");
    EXPECT_EQ(relu.Lit("Activite", "Mot de Passe"), stocke);
    EXPECT_TRUE(MotDePasseDefini(stocke) && MotDePasseJuste(stocke, motDePasse));
    EXPECT_FALSE(MotDePasseJuste(stocke, motDePasse + "x"));
  }
}

TEST(MotDePasse, ComparaisonSansCasseNiBlancs) {
  const std::string stocke = MotDePasseBrouille("  été   2003 "_w);
  for (const char* bon : {"ÉTÉ 2003", "été 2003", "\tété\t2003"})
    EXPECT_TRUE(MotDePasseJuste(stocke, *DepuisUtf8(bon))) << bon;
  for (const char* mauvais : {"", "ete 2003", "été2003", "été 2003 x", "été 200"})
    EXPECT_FALSE(MotDePasseJuste(stocke, *DepuisUtf8(mauvais))) << mauvais;
  // No password: nothing stored, blanks, or the scrambled form of a blank text.
  for (const std::string& vide :
       {std::string(), std::string("   "), MotDePasseBrouille(""), MotDePasseBrouille("  ")}) {
    EXPECT_FALSE(MotDePasseDefini(vide));
    EXPECT_TRUE(MotDePasseJuste(vide, ""));
  }
}

}  // namespace
}  // namespace fenlor::test
