#include "ui/couleurs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QListWidget>
#include <QStyle>
#include <QStyleFactory>
#include <map>
#include <memory>

#include "ui/casesvisibles.h"
#include "ui/voyant.h"

namespace fenlor::test {
namespace {

using Role = QPalette::ColorRole;

/// Desktops: the style's own, two dark ones, one that nobody can read.
std::map<std::string, QPalette> Bureaux() {
  const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
  QPalette fade(QColor(120, 120, 120), QColor(128, 128, 128));
  for (const Role role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::Highlight})
    fade.setColor(role, QColor(140, 140, 140, 100));
  return {{"clair", fusion->standardPalette()},
          {"sombre", PaletteSombre()},
          {"nuit", QPalette(QColor(20, 20, 40))},
          {"fade", fade}};
}

class PaletteTest : public testing::Test {
 protected:
  ~PaletteTest() override { QApplication::setPalette(m_avant); }

 private:
  const QPalette m_avant = QApplication::palette();
};

TEST_F(PaletteTest, ToutTexteSeLit) {
  const std::pair<Role, Role> paires[] = {{QPalette::WindowText, QPalette::Window},
                                          {QPalette::Text, QPalette::Base},
                                          {QPalette::Text, QPalette::AlternateBase},
                                          {QPalette::ButtonText, QPalette::Button},
                                          {QPalette::ToolTipText, QPalette::ToolTipBase},
                                          {QPalette::PlaceholderText, QPalette::Base},
                                          {QPalette::Link, QPalette::Base},
                                          {QPalette::LinkVisited, QPalette::Base},
                                          {QPalette::HighlightedText, QPalette::Highlight}};
  const CouleursJournaux autres{Noir(), Noir(), TeintesFonds()[6].valeur, TeintesTextes()[2].valeur};
  for (const auto& [nom, bureau] : Bureaux()) {
    for (const JeuCouleurs jeu : {JeuCouleurs::Classique, JeuCouleurs::Bureau, JeuCouleurs::Contraste}) {
      SCOPED_TRACE(nom + " " + std::to_string(static_cast<int>(jeu)));
      QApplication::setPalette(bureau);
      PaletteProgramme programme;
      programme.Pose(jeu);
      const QPalette palette = QApplication::palette();
      for (const auto groupe : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        for (const auto& [texte, fond] : paires) {
          EXPECT_EQ(palette.color(groupe, texte).alpha(), 255);
          EXPECT_GE(Contraste(palette.color(groupe, texte), palette.color(groupe, fond)), contrasteTexte)
              << groupe << " " << texte << " on " << fond;
        }
      EXPECT_GE(Contraste(CouleurFaute(palette), palette.color(QPalette::Base)),
                nom == "fade" ? contrasteTrait : contrasteTexte);
      EXPECT_GE(Contraste(CouleurLien(palette), palette.color(QPalette::Base)), contrasteTexte);
      for (const CouleursJournaux& reglees : {JournauxParDefaut(), autres}) {
        const auto [bordure, impaire, paire, fond] = JournauxDe(jeu, reglees, palette);
        const QColor texte = LisibleSur(Noir(), impaire, paire, palette.color(QPalette::Text));
        if (reglees == autres && jeu == JeuCouleurs::Classique) continue;  // nothing can be read on both rows
        EXPECT_GE(Contraste(texte, impaire), contrasteTexte);
        EXPECT_GE(Contraste(texte, paire), contrasteTexte);
        EXPECT_GE(Contraste(Lisible(palette.color(QPalette::WindowText), fond), fond), contrasteTexte);
      }
    }
  }
  for (const bool sombre : {false, true}) {  // much more than enough
    const QPalette palette = PaletteContraste(sombre);
    for (const auto& [texte, fond] : paires)
      EXPECT_GE(Contraste(palette.color(texte), palette.color(fond)), 7) << sombre << texte;
  }
  for (const bool tessamaris : {false, true})
    for (const auto [fonce, clair, accent] = AccueilDe(tessamaris); const QColor& texte : {accent, Blanc()})
      EXPECT_GE(std::min(Contraste(texte, fonce), Contraste(texte, clair)), contrasteTexte);
}

TEST_F(PaletteTest, LesJournauxSuiventUnBureauSombre) {
  const QPalette sombre = PaletteSombre(), clair = Bureaux()["clair"];
  const CouleursJournaux defaut = JournauxParDefaut();
  CouleursJournaux choisies = defaut;
  choisies.fond = TeintesFonds()[7].valeur;
  EXPECT_EQ(JournauxDe(JeuCouleurs::Classique, defaut, clair), defaut);
  EXPECT_EQ(JournauxDe(JeuCouleurs::Classique, choisies, sombre), choisies) << "who chose keeps it";
  const CouleursJournaux suivies = JournauxDe(JeuCouleurs::Classique, defaut, sombre);
  EXPECT_EQ(suivies.paire, sombre.color(QPalette::Base));
  EXPECT_EQ(suivies.impaire, sombre.color(QPalette::AlternateBase));
}

/// The most that any dot of a picture stands out from the one in its corner.
double Relief(const QWidget& dessin) {
  const QImage image = const_cast<QWidget&>(dessin).grab().toImage();
  double relief = 1;
  for (int x = 0; x < image.width(); ++x)
    for (int y = 0; y < image.height(); ++y)
      relief = std::max(relief, Contraste(image.pixelColor(x, y), image.pixelColor(0, 0)));
  return relief;
}

TEST_F(PaletteTest, CeQuiEstEteintOuVideSeVoit) {
  for (const auto& [nom, bureau] : Bureaux()) {
    SCOPED_TRACE(nom);
    QApplication::setPalette(bureau);
    PaletteProgramme programme;
    programme.Pose(JeuCouleurs::Classique);
    Voyant lampe;
    lampe.resize(lampe.sizeHint());
    EXPECT_GE(Relief(lampe), contrasteTrait);
    QListWidget liste;
    liste.resize(60, 60);
    liste.setFrameShape(QFrame::NoFrame);
    liste.setItemDelegate(new CasesVisibles(&liste));
    (new QListWidgetItem(&liste))->setCheckState(Qt::Unchecked);
    EXPECT_GE(Relief(liste), contrasteTrait);
  }
}

TEST_F(PaletteTest, SuitLeBureauEtLeRend) {
  PaletteProgramme programme;
  programme.Pose(JeuCouleurs::Classique);
  const QColor fond = QApplication::palette().color(QPalette::Base);
  QApplication::setPalette(PaletteSombre());  // the desktop went dark
  programme.Pose(JeuCouleurs::Contraste);
  EXPECT_EQ(QApplication::palette().color(QPalette::Base), Noir());
  programme.Pose(JeuCouleurs::Bureau);
  EXPECT_EQ(QApplication::palette().color(QPalette::Base), PaletteSombre().color(QPalette::Base));
  QApplication::setPalette(QPalette());  // and light again
  programme.Pose(JeuCouleurs::Bureau);
  EXPECT_EQ(QApplication::palette().color(QPalette::Base), fond);
}

}  // namespace
}  // namespace fenlor::test
