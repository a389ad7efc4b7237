#include "pages/interprete.h"

#include <map>

#include "core/cles.h"
#include "outils/cabinetdetest.h"
#include "pages/etatdetest.h"

namespace fenlor::test {
namespace {

constexpr Alignement Gauche = Alignement::Gauche, Centre = Alignement::Centre, Droite = Alignement::Droite;

/// Ten units to a column, ten to a character, a line is 17 high.
class InterpreteTest : public testing::Test {
 protected:
  std::vector<ElementPage> Dessine(std::string_view marquage, i32 depart = 0,
                                   StylePapier style = StylePapier::Classique) {
    Enregistreur appareil(1440, 170, 120);
    MiseEnPage page = PreparePage(appareil, {"Courier", 10}, false);
    page.style = style;
    EXPECT_EQ(page.unite, 10);
    EXPECT_EQ(page.interligne, 17);
    EXPECT_EQ(page.lignesParPage, 10);
    InterpreteEtat interprete(page, entete, pied, appareil);
    hauteur = interprete.InterpreteTexte(depart, marquage);
    interprete.FinitPage();
    return appareil.Elements;
  }
  i32 Largeur(std::size_t caracteres) { return static_cast<i32>(caracteres) * 16 * 3 / 5; }

  std::string entete = "ENTETE\n\n";
  std::string pied = "PIED";
  i32 hauteur = 0;
};

TEST_F(InterpreteTest, PlacesARun) {
  const i32 w2 = Largeur(2), w3 = Largeur(3), w5 = Largeur(5);
  struct Cas {
    const char* marquage;
    std::size_t element;
    Alignement alignement;
    i32 gauche, droite;
    const char* texte;
  };
  const Cas cas[] = {
      {"\\M010total", 0, Gauche, 100, 100 + w5, "total"},
      {"\\M005total\\T004suite", 0, Gauche, 50, 50, "total"},  // a column behind the pen: not drawn
      {"\\M005total\\T002suite", 1, Gauche, 50, 50 + w5, "suite"},
      {"total\n\\T004suite", 0, Gauche, 0, w5, "total"},     // the column of another line
      {"a\\\\T004b", 0, Gauche, 0, Largeur(7), "a\\T004b"},  // no column at all
      {"\\T020\\R040total", 0, Droite, 400 - w5, 400, "total"},
      {"\\T020\\C060total", 0, Centre, 400 - w5 / 2, 400 + w5 / 2, "total"},
      {"\\T020\\R040to\\Btal", 0, Droite, 400 - w2 - w3, 400 - w3, "to"},  // one text
      {"\\T020\\R040to\\Btal", 1, Droite, 400 - w3, 400, "tal"},
      {"\\T020\\R040to\\Ltal", 1, Gauche, 200 + w2, 200 + w2 + w3, "tal"},
      {"\\R040to\ntal", 1, Gauche, 0, w3, "tal"},  // up to the line's end
      {"\\M010\\N020\\2total", 0, Centre, 670 - w5 / 2, 670 + w5 / 2, "total"},
      {"\\M010\\N020\\3total\\1x", 0, Droite, 1240 - w5, 1240, "total"},
      {"\\N020total", 0, Gauche, 200, 200 + w5, "total"},  // the pen of a fresh line moves
      {"\\M010\\N020total", 0, Gauche, 100, 100 + w5, "total"},
      {"\\N140\\T060total", 0, Gauche, 600, 600, "total"},       // beyond the right margin: not drawn
      {"\\M010\\T005total", 0, Gauche, 100, 100 + w5, "total"},  // before the left one
      {"to\\M010tal", 1, Gauche, 100, 100 + w3, "tal"},          // a margin forgets the run before it
      // A text is narrower down to 85 %, then shortened; three characters and numbers stay whole.
      {"libelle\\T007x", 0, Gauche, 0, 63, "libelle"},
      {"libelle long\\T004suite", 0, Gauche, 0, 32, "lib\x85"},
      {"\\Blong\\0 libelle\\T007suite", 1, Gauche, 32, 56, " l\x85"},
      {"149\\T002x", 0, Gauche, 0, 16, "149"},
      {"01/02/2003\\T005x", 0, Gauche, 0, 46, "01/02/2003"},
      {"abc\\T002x", 0, Gauche, 0, 16, "abc"},
      {"court\\T001x", 0, Gauche, 0, 3, "\x85"},
      // A figure takes what is free on its left, then it is narrower; its column's end stays.
      {"\\T020\\R024total", 0, Droite, 240 - w5, 240, "total"},
      {"ab\\T020\\R023total", 1, Droite, 230 - w5, 230, "total"},
      {"\\T018ab\\T020\\R023total", 1, Droite, 180 + 16 + 4, 230, "total"},
      {"\\T012abcdefghij\\T020\\R022total", 1, Droite, 191, 220, "total"},
      {"\\R140\\T143123456789012", 0, Droite, 1430, 1440, "123456789012"},
      {"\\T050\\R040total\\T060x", 0, Droite, 500, 500 + w5, "total"},  // an end before its begin
      {"\\T050\\R040D 1,5\\T054\\R040x", 0, Droite, 500, 536, "D 1,5"},
      {"\\T050\\R040total\\T054\\R040x", 0, Droite, 500, 532, "tot\x85"},
      {"\\N005\\T130\\R144123456789012", 0, Droite, 1390 - Largeur(12), 1390, "123456789012"},
      {"\\N005\\T120\\R129123456789\\T130\\R1441234567890", 1, Droite, 1297, 1390, "1234567890"},
      {"\\Qto\\", 0, Gauche, 0, Largeur(3), "Qto"},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.marquage);
    const auto elements = Dessine(c.marquage);
    ASSERT_GT(elements.size(), c.element);
    const ElementPage& e = elements[c.element];
    EXPECT_EQ(e.texte, c.texte);
    EXPECT_EQ(e.alignement, c.alignement);
    EXPECT_EQ(e.cadre.gauche, c.gauche);
    EXPECT_EQ(e.cadre.droite, c.droite);
  }
}

TEST_F(InterpreteTest, CarefulColumnsMakeRoomForTheirFigures) {
  const auto elements = Dessine(
      "\\BLg\\T008Libelle\\T040\\R050Debit\\T051\\R060Credit\n\\0"
      "1\\T010Un libelle bien plus long que sa colonne\\T040\\R0501,00\\T051\\R060106854,75 F\n"
      "2\\T010court\\T040\\R05012739,52 F\n",
      0, StylePapier::Soignee);
  std::map<std::string, Rectangle> places;
  for (const ElementPage& e : elements)
    if (!e.trait) places[e.texte.substr(0, 3)] = e.cadre;
  const i32 ecart = 7;
  const auto naturelle = [this](const std::string& texte) {
    const Rectangle seul = Dessine("\\T010\\R100" + texte, 0, StylePapier::Soignee)[0].cadre;
    return seul.droite - seul.gauche;
  };
  for (const auto& [debut, texte] : {std::pair{"106", "106854,75 F"}, {"12\x1F", "12739,52 F"}})
    EXPECT_EQ(places[debut].droite - places[debut].gauche, naturelle(texte)) << debut;
  // The whole column moves, as far as its neighbour asks for it.
  EXPECT_EQ(places["106"].droite, 600);
  for (const char* debut : {"12\x1F", "1,0", "Deb"})
    EXPECT_EQ(places[debut].droite, places["106"].gauche - ecart) << debut;
  EXPECT_EQ(places["Lib"].gauche, places["cou"].gauche) << "the title over its texts";
  // A label ends before the widest figure of the page, not before the column's begin.
  EXPECT_LE(places["Un "].droite, places["12\x1F"].gauche - ecart);
  EXPECT_GT(places["Un "].droite + 2 * Largeur(1), places["12\x1F"].gauche - ecart);
  // Where a label would lose too much all stays as it is written.
  const auto serre =
      Dessine("\\T010libelle long\\T020\\R024106854,75 F\\T025\\R030106854,75 F\n", 0, StylePapier::Soignee);
  EXPECT_EQ(serre[1].cadre.droite, 240);
}

TEST_F(InterpreteTest, AFooterTakesNoHeightAndAHeaderCannotCallItself) {
  pied = "un\n\\T050deux\n" + std::string(300, 'x');
  auto e = Dessine("\\F\n");
  ASSERT_EQ(e.size(), 4u);
  for (const ElementPage& element : e) EXPECT_EQ(element.cadre.haut, 0);
  EXPECT_EQ(e[1].cadre.gauche, 500);
  EXPECT_EQ(e[2].texte.size(), 256u);
  EXPECT_EQ(e[3].texte.size(), 44u);
  EXPECT_EQ(hauteur, 17);

  entete = "a\\Hb\\F\n";
  pied = "c\\F";
  e = Dessine("\\H");
  ASSERT_EQ(e.size(), 2u);
  EXPECT_EQ(e[0].texte, "c");
  EXPECT_EQ(e[1].texte, "ab");
}

TEST_F(InterpreteTest, StrangeTextDoesNoHarm) {
  for (const char* marquage :
       {"\\", "\\M", "\\T1", "\\R-05x", "\\S", "a\\T", "\\M999\\N999x\\T999y", "\\C   x"})
    EXPECT_LE(Dessine(marquage).size(), 2u) << marquage;
  EXPECT_EQ(Dessine(std::string_view("ab\0cd", 5))[0].texte, "ab");
  EXPECT_LE(Dessine(std::string(100000, 'x'))[0].cadre.droite, 1440);
}

TEST_F(InterpreteTest, FontOfTheSettings) {
  struct Cas {
    const char* reglage;
    const char* face;
    i32 points;
  };
  for (const Cas& c : {Cas{"", "Courier", 10},
                       {"Courier", "Courier", 10},
                       {" , 12", "Courier", 12},
                       {"DejaVu Sans Mono, 9, 0, 0, 0", "DejaVu Sans Mono", 9},
                       {"Arial, 0", "Arial", 10},
                       {"Arial, gros", "Arial", 10},
                       {"Arial, -13", "Arial", 10},
                       {"Arial, 99999999", "Arial", 400}}) {
    EXPECT_EQ(LitPoliceImpressions(c.reglage).face, c.face) << c.reglage;
    EXPECT_EQ(LitPoliceImpressions(c.reglage).points, c.points) << c.reglage;
  }
}

TEST_F(InterpreteTest, PageSetup) {
  Enregistreur portrait = Enregistreur::A4(1200), paysage = Enregistreur::A4(1200, true);
  const MiseEnPage droite = PreparePage(portrait, {}, false), tournee = PreparePage(paysage, {}, false);
  EXPECT_EQ(droite.interligne, 166 + 1) << "10 points of 1200 units per inch, cut, and one";
  EXPECT_EQ(droite.unite, droite.largeur / 144);
  EXPECT_EQ(tournee.largeur, droite.hauteur);
  EXPECT_LT(tournee.lignesParPage, droite.lignesParPage);
  const MiseEnPage aTourner = PreparePage(portrait, {}, false, false);
  EXPECT_EQ(aTourner.lignesParPage, tournee.lignesParPage);
  EXPECT_EQ(aTourner.unite, tournee.unite);
}

class PageTest : public CabinetDeTest {
 protected:
  std::vector<std::string> Textes(const test::Dessin& dessin, u32 page) {
    std::vector<std::string> textes;
    for (const ElementPage& e : dessin.elements)
      if (e.page == page && !e.trait) textes.push_back(e.texte);
    return textes;
  }
};

TEST_F(PageTest, AReportThatWritesNothingIsOnePageOfTitle) {
  EtatDeTest doc(App());
  doc.ecrit = [](EtatDeTest& d) { d.SetEtatTitre("Balance %s", {"2003"}); };
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  const test::Dessin dessin = test::Dessine(doc, Enregistreur::A4());
  EXPECT_EQ(Textes(dessin, 1), (std::vector<std::string>{"Docteur A\\HENRI    ", "Cabinet", "15/03/2003",
                                                         " Balance 2003 ", "Page 1 / 1"}));
  EXPECT_EQ(dessin.pages.size(), 2u);
}

TEST_F(PageTest, DraftHasNoStylesAndKeepsTheColumns) {
  EtatDeTest doc(App());
  doc.ecrit = [](EtatDeTest& d) { d.EcritEtat("\\Bgras\\T050\\Iitalique\n"); };
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  const auto fin = test::Dessine(doc, Enregistreur::A4(), {"Courier", 10}).elements;
  const auto brouillon = test::Dessine(doc, Enregistreur::A4(), {"Courier", 24}, true).elements;
  ASSERT_EQ(fin.size(), brouillon.size());
  for (std::size_t i = 0; i < fin.size(); ++i) {
    EXPECT_EQ(brouillon[i].style, 0u);
    EXPECT_EQ(brouillon[i].cadre, fin[i].cadre);
  }
}

TEST_F(PageTest, TheIdentificationGivesItsFirstTwoLines) {
  const std::string activite = Texte(SecActivite), cle = Texte(CleIdentification);
  ASSERT_TRUE(App().Reglages.EcritIni(activite, cle, "\r\n  Dr HENRI \r\n\r\nCabinet du Port\r\nLe Havre"));
  EXPECT_EQ(LitIdentiteEtat(App()).nom, "Dr HENRI");
  EXPECT_EQ(LitIdentiteEtat(App()).societe, "Cabinet du Port");
  ASSERT_TRUE(App().Reglages.EcritIni(activite, cle, ""));
  EXPECT_EQ(LitIdentiteEtat(App()).nom, "");
}

TEST(Milliers, MontantsSeuls) {
  const struct {
    const char *texte, *gauche, *colonne;
  } cas[] = {{"1234567,89 F", "1_234_567,89 F", "1_234_567,89 F"},
             {"-1000,00", "-1_000,00", "-1_000,00"},
             {"D 12345,00", "D 12_345,00", "D 12_345,00"},
             {"999,00", "999,00", "999,00"},
             {"113528", "113528", "113_528"},
             {"12/03/2003", "12/03/2003", "12/03/2003"},
             {"1234,5", "1234,5", "1234,5"},
             {"Loyer 1234,00", "Loyer 1234,00", "Loyer 1234,00"},
             {"1998 :", "1998 :", "1998 :"},
             {"", "", ""}};
  for (const auto& c : cas)
    for (const bool colonne : {false, true}) {
      std::string run = c.texte;
      GroupeMilliers(run, colonne);
      std::replace(run.begin(), run.end(), BlancFin, '_');
      EXPECT_EQ(run, colonne ? c.colonne : c.gauche);
    }
}

}  // namespace
}  // namespace fenlor::test
