// The shapes of every kind of chart: what must hold whatever the values, and a small list by heart.
#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "graphiques/axe.h"
#include "graphiques/dessin.h"
#include "graphiques/ecriture.h"
#include "outils/attendu.h"
#include "store/texte1252.h"

namespace fenlor::test {
namespace {

const MesureTable Mesure;
constexpr const char* Noms[] = {"aires",    "aires-3d",    "barres-h", "barres-h-3d",
                                "barres-v", "barres-v-3d", "courbes",  "courbes-3d",
                                "nuage",    "surface",     "secteurs", "secteurs-3d"};

SerieGraphique Serie(const std::vector<f64>& valeurs) {
  SerieGraphique serie;
  serie.titre = "Essai";
  for (std::size_t i = 0; i < valeurs.size(); ++i)
    serie.points.push_back({"C" + std::to_string(i * 37 % 1000000), valeurs[i]});
  return serie;
}

struct Cas {
  SerieGraphique serie;
  PlaceGraphique place;
  std::string quoi;
};
/// Series of every make on rectangles of every size.
std::vector<Cas> Hasards() {
  std::mt19937 hasard(1974);
  const auto tire = [&](int de, int a) { return std::uniform_int_distribution<int>(de, a)(hasard); };
  std::vector<Cas> cas;
  for (int n = 0; n < 600; ++n) {
    std::vector<f64> valeurs(static_cast<std::size_t>(tire(0, 3) ? tire(1, 14) : tire(15, 90)));
    const int sorte = n % 6;
    for (f64& v : valeurs) {
      v = tire(-100000, 100000) / 100.0;
      if (sorte == 0) v = std::abs(v);
      if (sorte == 1) v = -std::abs(v);
      if (sorte == 2) v = 0;
      if (sorte == 3 && tire(0, 2)) v = 0;
    }
    if (sorte == 4) valeurs.back() = 2e13;
    if (sorte == 5 && valeurs.size() > 1) valeurs[1] = valeurs[0];
    Cas c{Serie(valeurs), {}, std::to_string(n)};
    const f64 largeur = tire(60, 1600), hauteur = tire(60, 1200);
    c.place = n % 5 ? PlaceEcran(largeur, hauteur, tire(9, 26))
                    : PlaceFeuille(9000, tire(6000, 13000), static_cast<TaillePapier>(n / 5 % 4));
    cas.push_back(std::move(c));
  }
  return cas;
}

bool Dans(const CadreForme& dedans, const CadreForme& cadre) {
  constexpr f64 jeu = 1e-6;
  return dedans.gauche >= cadre.gauche - jeu && dedans.droite <= cadre.droite + jeu &&
         dedans.haut >= cadre.haut - jeu && dedans.bas <= cadre.bas + jeu;
}
CadreForme Etendue(const Forme& forme) {
  if (forme.sorte == SorteForme::Texte) {
    const f64 largeur = Mesure.Largeur(forme.texte, forme.hauteur, forme.gras);
    const f64 montee = MonteeTexte * forme.hauteur, descente = DescenteTexte * forme.hauteur;
    const f64 avant = forme.cote == Cote::Gauche ? 0 : forme.cote == Cote::Droite ? largeur : largeur / 2;
    const PointForme p = forme.points.at(0);
    if (forme.debout) return {p.x - montee, p.y - (largeur - avant), p.x + descente, p.y + avant};
    return {p.x - avant, p.y - montee, p.x - avant + largeur, p.y + descente};
  }
  CadreForme c{1e9, 1e9, -1e9, -1e9};
  for (const PointForme p : forme.points)
    c = {std::min(c.gauche, p.x), std::min(c.haut, p.y), std::max(c.droite, p.x), std::max(c.bas, p.y)};
  return c;
}
/// Of the surface, whatever its sense of rotation.
f64 Aire(const std::vector<PointForme>& polygone) {
  f64 aire = 0;
  for (std::size_t i = 0, j = polygone.size() - 1; i < polygone.size(); j = i++)
    aire += (polygone[j].x * polygone[i].y - polygone[i].x * polygone[j].y) / 2;
  return std::abs(aire);
}
bool SeTouchent(const CadreForme& a, const CadreForme& b) {
  return a.gauche < b.droite - 1e-6 && b.gauche < a.droite - 1e-6 && a.haut < b.bas - 1e-6 &&
         b.haut < a.bas - 1e-6;
}

class ParGenre : public testing::TestWithParam<int> {
 protected:
  GenreGraphique Genre() const { return static_cast<GenreGraphique>(GetParam()); }
  DessinGraphique Dessine(const Cas& cas) { return DessineGraphique(cas.serie, Genre(), cas.place, Mesure); }
};

TEST_P(ParGenre, RienNeDepasseNiNeSeChevauche) {
  for (const Cas& cas : Hasards()) {
    SCOPED_TRACE(cas.quoi);
    std::vector<CadreForme> textes;
    for (const Forme& forme : Dessine(cas).formes) {
      const CadreForme c = Etendue(forme);
      ASSERT_TRUE(std::isfinite(c.gauche + c.droite + c.haut + c.bas));
      ASSERT_TRUE(Dans(c, forme.gras ? cas.place.titre : cas.place.graphique))
          << VersUtf8(forme.texte) << ' ' << c.gauche << ' ' << c.haut << ' ' << c.droite << ' ' << c.bas;
      if (forme.sorte != SorteForme::Texte) continue;
      for (const CadreForme& autre : textes) ASSERT_FALSE(SeTouchent(c, autre)) << VersUtf8(forme.texte);
      textes.push_back(c);
    }
  }
}

/// The front of each point's body: the last polygon that stands for it.
std::vector<const Forme*> Faces(const DessinGraphique& dessin, std::size_t nombre) {
  std::vector<const Forme*> faces(nombre);
  for (const Forme& forme : dessin.formes)
    if (forme.point >= 0) faces[static_cast<std::size_t>(forme.point)] = &forme;
  return faces;
}

TEST(Graphiques, LesAiresSontDansLeRapportDesValeurs) {
  using G = GenreGraphique;
  for (const G genre : {G::BarresH, G::BarresH3D, G::BarresV, G::BarresV3D, G::Secteurs, G::Secteurs3D})
    for (const Cas& cas : Hasards()) {
      SCOPED_TRACE(cas.quoi);
      const DessinGraphique dessin = DessineGraphique(cas.serie, genre, cas.place, Mesure);
      const auto faces = Faces(dessin, cas.serie.points.size());
      f64 aires = 0, valeurs = 0;
      for (std::size_t i = 0; i < faces.size(); ++i) {
        valeurs += std::abs(cas.serie.points[i].valeur);
        if (faces[i]) aires += Aire(faces[i]->points);
      }
      for (std::size_t i = 0; aires > 0 && i < faces.size(); ++i) {
        const f64 part = std::abs(cas.serie.points[i].valeur) / valeurs;
        // Arcs are made of short straight pieces.
        EXPECT_NEAR((faces[i] ? Aire(faces[i]->points) : 0) / aires, part,
                    genre >= G::Secteurs ? 4e-4 : 1e-9);
      }
      EXPECT_EQ(aires > 0, valeurs > 0 && dessin.formes.size() > 1) << "more than a title";
    }
}

/// A line a shape, in whole units.
std::string Ecrit(const DessinGraphique& dessin) {
  std::string texte;
  for (const Forme& f : dessin.formes) {
    texte += f.sorte == SorteForme::Texte ? 'T' : f.sorte == SorteForme::Ligne ? 'L' : 'P';
    texte += ' ' + std::to_string(f.encre.teinte) + '/' + std::to_string(f.encre.lumiere);
    if (f.point >= 0) texte += " #" + std::to_string(f.point);
    for (std::size_t i = 0; i<f.points.size(); i += f.points.size()> 12 ? 20 : 1)
      texte +=
          ' ' + std::to_string(std::lround(f.points[i].x)) + ',' + std::to_string(std::lround(f.points[i].y));
    if (!f.texte.empty()) texte += (f.debout ? " ^" : " ") + VersUtf8(f.texte);
    texte += '\n';
  }
  return texte;
}

TEST_P(ParGenre, ListeDesFormes) {
  SerieGraphique serie = Serie({100, -40, 60.5});
  VerifieAttendu(__FILE__, Noms[GetParam()],
                 Ecrit(DessineGraphique(serie, Genre(), PlaceEcran(240, 200, 10), Mesure)));
}

INSTANTIATE_TEST_SUITE_P(Genres, ParGenre, testing::Range(0, NbGenresGraphique), [](const auto& cas) {
  std::string nom = Noms[cas.param];
  std::erase(nom, '-');
  return nom;
});

TEST(Graphiques, EchelleRonde) {
  const struct {
    f64 minimum, maximum;
    unsigned intervalles;
    const char* attendu;
  } cas[] = {{0, 97, 5, "0 20 100"},
             {-40, 100, 7, "-40 20 100"},
             {3, 3.1, 4, "0 1 4"},
             {-0.02, 0, 9, "-0.02 0.01 0"},
             {0, 2e13, 4, "0 5e+12 2e+13"},
             {0, 0, 5, "0 1 1"},
             {-1, 999999, 10, "-100000 100000 1e+06"}};
  for (const auto& c : cas) {
    const EchelleAxe e = FaitEchelle(c.minimum, c.maximum, c.intervalles);
    char texte[60];
    std::snprintf(texte, sizeof texte, "%g %g %g", e.Minimum(), e.pas, e.Maximum());
    EXPECT_STREQ(texte, c.attendu);
  }
  EXPECT_EQ(VersUtf8(TexteGraduation(-1234567, 1, true)), "-1\u00A0234\u00A0567 €");
  EXPECT_EQ(TexteGraduation(0.5, 0.25, false), "0,50 F");
  EXPECT_EQ(VersUtf8(TexteValeur(-1e-12, true)), "0,00 €");
  EXPECT_EQ(TexteValeur(-1234.5, false), "-1234,50 F");
}

TEST(Graphiques, PlaceSurLaFeuille) {
  const auto texte = [](f64 l, f64 h, int taille) {
    const PlaceGraphique p = PlaceFeuille(l, h, static_cast<TaillePapier>(taille));
    const CadreForme& c = p.graphique;
    char t[99];
    std::snprintf(t, sizeof t, "%g,%g %g,%g bande %g police %g", c.gauche, c.haut, c.droite, c.bas,
                  p.titre.bas, p.hauteurTitre);
    return std::string(t);
  };
  EXPECT_EQ(texte(1000, 2000, 0), "0,100 1000,2000 bande 100 police 40");
  EXPECT_EQ(texte(1000, 2000, 1), "0,100 1000,1050 bande 100 police 40");
  EXPECT_EQ(texte(1000, 2000, 2), "0,100 1000,575 bande 100 police 40");
  EXPECT_EQ(texte(1000, 2000, 3), "0,100 1000,1100 bande 100 police 40");
  EXPECT_EQ(texte(2000, 1000, 3), "525,50 1475,1000 bande 50 police 20");
}

TEST(Graphiques, LesCouleursVoisinesDifferentEnGris) {
  const auto gris = [](Rvb c) { return (0.2126 * c.rouge + 0.7152 * c.vert + 0.0722 * c.bleu) / 2.55; };
  for (std::size_t i = 0; i < CouleursSerie.size(); ++i) {
    const f64 ecart = gris(CouleursSerie[i]) - gris(CouleursSerie[(i + 1) % CouleursSerie.size()]);
    EXPECT_GT(std::abs(ecart), 25) << i;
  }
  // A dark desktop has walls of its own, and the colours of the points.
  const ThemeGraphique sombre{{30, 30, 30}, {240, 240, 240}};
  EXPECT_LT(gris(Couleur(sombre, {TeinteParoi})), 25);
  EXPECT_EQ(Couleur(sombre, {TeinteSerie + 1}), CouleursSerie[1]);
}

TEST(Graphiques, DansUnePlaceBasseLeTitreCede) {
  const CadreForme reste = PlaceEcran(200, 40, 10).graphique;
  EXPECT_GE(reste.bas - reste.haut, 20);
  EXPECT_LE(reste.bas, 40);
}

TEST(Graphiques, PointSousLePointeur) {
  const SerieGraphique serie = Serie({100, 0, -100});
  const PlaceGraphique place = PlaceEcran(300, 300, 10);
  const DessinGraphique barres = DessineGraphique(serie, GenreGraphique::BarresV, place, Mesure);
  const CadreForme& c = place.graphique;
  const f64 y = (c.haut + c.bas) / 2;
  EXPECT_EQ(PointSous(barres, {c.droite - 10, y}), 2);
  EXPECT_EQ(PointSous(barres, {c.droite - c.Largeur() * 0.4, y}), 1) << "nothing of it can be hit";
  EXPECT_EQ(PointSous(barres, {c.gauche + 1, c.haut - 5}), -1);
  const DessinGraphique secteurs = DessineGraphique(serie, GenreGraphique::Secteurs, place, Mesure);
  EXPECT_EQ(PointSous(secteurs, {150 + 20, y}), 0);
  EXPECT_EQ(PointSous(secteurs, {150 - 20, y}), 2);
}

TEST(Graphiques, SvgEstBienForme) {
  SerieGraphique serie = Serie({10, -3});
  serie.titre = "Loyers <bureaux> & \"locaux\" \xE9t\xE9";
  const std::string svg =
      EcritSvg(DessineGraphique(serie, GenreGraphique::BarresV, PlaceEcran(400, 300, 12), Mesure), 400, 300);
  EXPECT_NE(svg.find(">Loyers &lt;bureaux&gt; &amp; \"locaux\" été</text>"), std::string::npos);
  EXPECT_NE(svg.find("<polygon points="), std::string::npos);
  EXPECT_NE(svg.find("width=\"400.00\" height=\"300.00\""), std::string::npos);
  EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

}  // namespace
}  // namespace fenlor::test
