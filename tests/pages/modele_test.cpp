// The engine against the plain model, on random markup.
#include "pages/modeleetat.h"

#include <gtest/gtest.h>

#include <random>

#include "outils/cabinetdetest.h"
#include "pages/etatdetest.h"

namespace fenlor {
namespace {

using test::EtatDeTest;
using test::ModeleEtat;

class Hasard {
 public:
  explicit Hasard(unsigned graine) : m_suite(graine) {}
  unsigned Jusque(unsigned n) { return static_cast<unsigned>(m_suite() % n); }

  std::string Colonne() {
    // Few columns, so that positions and margins meet.
    static const char* colonnes[] = {"000", "000", "010", "020", "060", "100", "130", "144", "155"};
    return colonnes[Jusque(std::size(colonnes))];
  }

  std::string Element(bool dansLeTexte) {
    static const std::string codes = "0123BIUL", avecColonne = "CRTMN";
    switch (Jusque(dansLeTexte ? 16 : 12)) {
      case 0:
      case 1:
        return std::string("\\") + codes[Jusque(8)];
      case 2:
      case 3:
      case 4:
        return std::string("\\") + avecColonne[Jusque(5)] + Colonne();
      case 5:
        return "\\T" + Colonne();
      case 6:
        return Jusque(3) ? "\\S002" : "\\\\";
      case 7:
        return Jusque(2) ? "\\Z" : "\r";
      case 8:
      case 9:
      case 10:
      case 11:
        return std::string(1 + Jusque(Jusque(4) ? 6 : 40), static_cast<char>('a' + Jusque(26)));
      case 12:
        return std::string("\\") + "FHX"[Jusque(3)];
      case 13:
        return Jusque(3) ? "\\G" : "\\P";
      case 14:
        return Jusque(20) ? "\n" : "\\\n";
      default:
        return "\n";
    }
  }

  std::string Texte(unsigned elements, bool dansLeTexte) {
    std::string texte;
    for (unsigned i = Jusque(elements); i > 0; --i) texte += Element(dansLeTexte);
    return texte;
  }

 private:
  std::mt19937 m_suite;
};

class ModeleEtatTest : public test::CabinetDeTest {};

TEST_F(ModeleEtatTest, RandomReportsAreDrawnAsThePlainModelDrawsThem) {
  std::size_t nbElements = 0, nbPages = 0;
  for (unsigned graine = 1; graine <= 400; ++graine) {
    SCOPED_TRACE(graine);
    Hasard hasard(graine);
    ModeleEtat modele;
    modele.titre = "Etat " + hasard.Texte(3, false);
    for (unsigned i = hasard.Jusque(4); i > 0; --i) modele.entete += hasard.Texte(6, false) + "\n";
    modele.entete += hasard.Texte(4, false);
    for (unsigned i = hasard.Jusque(3); i > 0; --i) modele.pied += hasard.Texte(5, false) + "\n";
    modele.pied += hasard.Texte(5, false);
    std::vector<std::string> ecrits;
    for (unsigned i = hasard.Jusque(120); i > 0; --i) ecrits.push_back(hasard.Texte(14, true));
    for (const std::string& ecrit : ecrits) modele.Ecrit(ecrit);

    EtatDeTest doc(App());
    doc.ecrit = [&](EtatDeTest& d) {
      d.SetEtatTitre("%s", {modele.titre});
      d.SetEtatEntete("%s", {modele.entete});
      d.SetEtatPied("%s", {modele.pied});
      for (const std::string& ecrit : ecrits) {
        if (d.EcritEtat(ecrit) != static_cast<i32>(ecrit.size())) return false;
        if (hasard.Jusque(30) == 0) d.LitBloc(1 + hasard.Jusque(5));  // reading moves the file's position
      }
      return true;
    };
    ASSERT_TRUE(doc.OnNewDocument());
    ASSERT_EQ(doc.NombreBlocs(), modele.blocs.size());
    u32 lignes = 0;
    for (u32 k = 0; k < doc.NombreBlocs(); ++k) {
      const BlocEtat bloc = doc.LitBloc(k + 2);
      const ModeleEtat::Bloc& attendu = modele.blocs[k];
      ASSERT_EQ(bloc.lignes, attendu.lignes) << k;
      ASSERT_EQ(bloc.fin, attendu.fin) << k;
      ASSERT_EQ(bloc.drapeaux, (attendu.h ? 1 : 0) + (attendu.x ? 2 : 0) + (attendu.p ? 4 : 0)) << k;
      lignes += attendu.lignes;
    }
    EXPECT_EQ(doc.NombreLignes(), lignes);

    const i32 largeur = 1440 + static_cast<i32>(hasard.Jusque(200));
    const i32 hauteur = 250 + static_cast<i32>(hasard.Jusque(1000));
    const test::Dessin dessin = test::Dessine(doc, Enregistreur(largeur, hauteur, 144));
    const int lignesParPage = hauteur / 21;
    ASSERT_EQ(dessin.page.lignesParPage, lignesParPage);
    modele.Pagine(static_cast<unsigned>(lignesParPage));
    ASSERT_EQ(NombrePages(dessin.pages), modele.pages.size());
    const auto attendus = modele.Dessine(largeur, 20, lignesParPage,
                                         "\\I\\BDocteur A\\\\HENRI    \\0\\ICabinet\n\\S001\n", "15/03/2003");
    ASSERT_EQ(dessin.elements.size(), attendus.size());
    for (std::size_t i = 0; i < attendus.size(); ++i) {
      const ElementPage &a = dessin.elements[i], &b = attendus[i];
      ASSERT_TRUE(a == b) << "element " << i << " page " << a.page << "/" << b.page << " \"" << a.texte
                          << "\" \"" << b.texte << "\" " << a.cadre.gauche << "," << a.cadre.haut << ","
                          << a.cadre.droite << " " << b.cadre.gauche << "," << b.cadre.haut << ","
                          << b.cadre.droite;
    }
    nbElements += attendus.size();
    nbPages += modele.pages.size();
  }
  EXPECT_GT(nbElements, 50000u);
  EXPECT_GT(nbPages, 2000u);
}

// A page is the same page whatever the resolution, as long as the fonts and the sheet
// scale without a remainder: the one unit of every line's height does not.
TEST_F(ModeleEtatTest, PagesAreTheSameAt1200And300UnitsPerInch) {
  for (unsigned graine = 1; graine <= 50; ++graine) {
    SCOPED_TRACE(graine);
    Hasard hasard(graine);
    EtatDeTest doc(App());
    doc.ecrit = [&](EtatDeTest& d) {
      d.SetEtatTitre("Etat");
      d.SetEtatEntete("\\BDate\\T020\\ULibellé\\R144Montant\n\n");
      d.SetEtatPied("suite");
      for (unsigned i = 0; i < 150; ++i)
        if (d.EcritEtat(hasard.Texte(14, true) + "\n") < 0) return false;
      return true;
    };
    ASSERT_TRUE(doc.OnNewDocument());
    // 8 inches by 60 lines of 12 points and a half; 50 and 200 units of height.
    const test::Dessin grossier = test::Dessine(doc, Enregistreur(2304, 51 * 60 + 25, 300), {"Courier", 12});
    const test::Dessin fin = test::Dessine(doc, Enregistreur(9216, 201 * 60 + 100, 1200), {"Courier", 12});
    ASSERT_EQ(grossier.pages, fin.pages);
    ASSERT_EQ(grossier.elements.size(), fin.elements.size());
    for (std::size_t i = 0; i < fin.elements.size(); ++i) {
      ElementPage a = grossier.elements[i], b = fin.elements[i];
      for (ElementPage* e : {&a, &b}) {  // height as lines, width in the coarse unit
        const i32 echelle = e == &b ? 4 : 1;
        const i32 ligne = e->cadre.haut / (50 * echelle + 1);
        e->cadre = {e->cadre.gauche / echelle, ligne, e->cadre.droite / echelle, 0};
      }
      ASSERT_TRUE(a == b) << i << " " << a.texte << " " << a.cadre.gauche << " " << b.cadre.gauche;
    }
  }
}

}  // namespace
}  // namespace fenlor
