#include "ui/positionfenetre.h"

#include "core/texte.h"
#include "outils/uidetest.h"

namespace fenlor::test {
namespace {

TEST(PositionFenetre, Ajuste) {
  struct Cas {
    const char* nom;
    QRect rect, attendu;
    bool redimensionnable;
  };
  const QSize zone(800, 600), minimum(120, 40);
  const std::vector<Cas> cas = {
      {"inside", {10, 20, 300, 200}, {10, 20, 300, 200}, true},
      {"negative", {-40, -1, 300, 200}, {0, 0, 300, 200}, true},
      {"beyond the right edge", {600, 20, 300, 200}, {0, 20, 300, 200}, true},
      {"beyond the lower edge", {10, 500, 300, 200}, {10, 0, 300, 200}, true},
      {"off the screen", {4000, 4000, 300, 200}, {0, 0, 300, 200}, true},
      {"touching both edges", {500, 400, 300, 200}, {500, 400, 300, 200}, true},
      {"too small", {10, 20, 1, 1}, {10, 20, 120, 40}, true},
      {"too large", {10, 20, 3000, 3000}, {0, 0, 800, 600}, true},
      {"negative size", {10, 20, -5, -5}, {10, 20, 120, 40}, true},
      {"fixed size", {10, 20, 3000, 10}, {0, 20, 3000, 10}, false},
  };
  for (const Cas& c : cas)
    EXPECT_EQ(AjustePosition(c.rect, zone, minimum, c.redimensionnable), c.attendu) << c.nom;
}

class Positions : public UiDeTest {
 protected:
  void Ecrit(const std::string& fenetre, const std::string& agrandie = "Non") {
    ASSERT_TRUE(App().Reglages.EcritIni("Essai", "Fenêtre"_w, fenetre));
    ASSERT_TRUE(App().Reglages.EcritIni("Essai", "Agrandie", agrandie));
  }
};

TEST_F(Positions, Reglages) {
  EXPECT_FALSE(LitPosition(App(), "Essai"));
  EXPECT_TRUE(EcritPosition(App(), "Essai", {QRect(-3, 4, 500, 400), true}));
  EXPECT_EQ(App().Reglages.LitIni("Essai", "Fenêtre"_w), "-3, 4, 500, 400");
  EXPECT_EQ(App().Reglages.LitIni("Essai", "Agrandie"), "Oui");
  ASSERT_TRUE(LitPosition(App(), "Essai"));
  EXPECT_EQ(LitPosition(App(), "Essai")->rect, QRect(-3, 4, 500, 400));

  Ecrit(" 1 ,2,3 ,  4", "oUI");
  EXPECT_EQ(LitPosition(App(), "Essai")->rect, QRect(1, 2, 3, 4));
  EXPECT_TRUE(LitPosition(App(), "Essai")->agrandie);
  for (const char* mauvais : {"", "1,2,3", "1,2,3,", "a,2,3,4", "1,2,3,4x", "99999999999,2,3,4"}) {
    Ecrit(mauvais);
    EXPECT_FALSE(LitPosition(App(), "Essai")) << mauvais;
  }
  Ecrit("2147483647, -2147483648, 2147483647, 7");
  EXPECT_LT(LitPosition(App(), "Essai")->rect.right(), 1'000'000);
}

TEST_F(Positions, FenetreRetrouvee) {
  QWidget avant, apres;
  EXPECT_FALSE(RestaurePosition(apres, App(), "Essai"));
  avant.setGeometry(60, 70, 310, 220);
  avant.show();
  EXPECT_TRUE(SauvePosition(avant, App(), "Essai"));
  EXPECT_FALSE(RestaurePosition(apres, App(), "Essai"));
  EXPECT_EQ(apres.pos(), avant.pos());
  EXPECT_EQ(apres.size(), avant.size());

  // Maximised, the place it had before is kept beside.
  avant.showMaximized();
  QApplication::processEvents();
  EXPECT_TRUE(SauvePosition(avant, App(), "Essai"));
  EXPECT_EQ(LitPosition(App(), "Essai")->rect.size(), QSize(310, 220));
  EXPECT_TRUE(RestaurePosition(apres, App(), "Essai"));

  Ecrit("5000, 6000, 300, 200");
  RestaurePosition(apres, App(), "Essai");
  EXPECT_EQ(apres.pos(), apres.screen()->availableGeometry().topLeft());

  QWidget fixe;
  fixe.setFixedSize(200, 100);
  RestaurePosition(fixe, App(), "Essai");
  EXPECT_EQ(fixe.size(), QSize(200, 100));
}

TEST_F(Positions, EcritureRefusee) {
  std::filesystem::create_directory(App().PathCabinet + "/fenlor.ini.tmp");
  EXPECT_FALSE(EcritPosition(App(), "Essai", {QRect(1, 2, 3, 4), false}));
}

}  // namespace
}  // namespace fenlor::test
