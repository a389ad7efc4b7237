// The engine against the plain model, on random markup.
#include "pages/modeleetat.h"

#include <map>
#include <random>
#include <sstream>

#include "outils/cabinetdetest.h"
#include "outils/textessources.h"
#include "pages/etatdetest.h"
#include "pages/interprete.h"

namespace fenlor::test {
namespace {

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

std::string Dit(std::size_t i, const ElementPage& a, const ElementPage& b) {
  std::ostringstream sortie;
  sortie << "element " << i << " page " << a.page << "/" << b.page;
  for (const ElementPage* e : {&a, &b})
    sortie << " \"" << e->texte << "\" " << e->cadre.gauche << "," << e->cadre.haut << "," << e->cadre.droite;
  return sortie.str();
}

/// All but the place on the line, and what was shortened.
bool MemeElement(const ElementPage& a, ElementPage b) {
  if (a.trait) return a == b;
  if (a.texte != b.texte && a.texte.back() == '\x85' &&
      b.texte.starts_with(a.texte.substr(0, a.texte.size() - 1)))
    b.texte = a.texte;
  b.cadre.gauche = a.cadre.gauche;
  b.cadre.droite = a.cadre.droite;
  return a == b;
}

/// No two texts of a line overlap or touch, but the runs of one text, and none passes the margins. A line
/// on which the strings leave everything room is as they say. Number of texts on such lines.
std::size_t VerifieLignes(const std::vector<ElementPage>& dessines, const std::vector<ElementPage>& attendus,
                          const std::vector<ModeleEtat::Voisinage>& voisinages, i32 ecart) {
  std::map<std::pair<u32, i32>, std::vector<std::size_t>> lignes;
  for (std::size_t i = 0; i < dessines.size(); ++i)
    if (!dessines[i].trait) lignes[{dessines[i].page, dessines[i].cadre.haut}].push_back(i);
  std::size_t places = 0;
  for (const auto& [ou, ligne] : lignes) {
    bool libre = true;
    const auto separes = [&](const std::vector<ElementPage>& elements, std::size_t i, std::size_t j) {
      const Rectangle &a = elements[i].cadre, &b = elements[j].cadre;
      const i32 entre = voisinages[i].groupe == voisinages[j].groupe ? 0
                        : &elements == &dessines                     ? ecart / 2
                                                                     : ecart;
      return a.droite + entre <= b.gauche || b.droite + entre <= a.gauche;
    };
    for (const std::size_t i : ligne) {
      const auto& v = voisinages[i];
      const Rectangle &d = dessines[i].cadre, &a = attendus[i].cadre;
      libre = libre && a.gauche >= v.marge && a.droite <= v.limite && a.droite <= v.borne;
      const bool vu = d.droite > d.gauche;
      if (vu && (d.gauche < v.marge || d.droite > v.limite))
        ADD_FAILURE() << "beyond the margins: " << Dit(i, dessines[i], attendus[i]);
      for (const std::size_t j : ligne) {
        if (j >= i) break;
        libre = libre && separes(attendus, i, j) &&
                (v.groupe != voisinages[j].groupe || attendus[i].alignement == Alignement::Gauche);
        if (vu && dessines[j].cadre.droite > dessines[j].cadre.gauche && !separes(dessines, i, j))
          ADD_FAILURE() << Dit(i, dessines[i], attendus[i]) << " covers " << Dit(j, dessines[j], attendus[j]);
      }
    }
    for (const std::size_t i : ligne)
      if (libre && !(dessines[i] == attendus[i]))
        ADD_FAILURE() << "moved: " << Dit(i, dessines[i], attendus[i]);
    places += libre ? ligne.size() : 0;
  }
  return places;
}

class ModeleEtatTest : public CabinetDeTest {};

TEST_F(ModeleEtatTest, RandomReportsAreDrawnAsThePlainModelDrawsThem) {
  std::size_t nbElements = 0, nbPlaces = 0, nbPages = 0;
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
        d.EcritEtat(ecrit);
        if (hasard.Jusque(30) == 0) d.LitBloc(1 + hasard.Jusque(5));  // reading moves the file's position
      }
    };
    ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
    ASSERT_EQ(doc.NombreBlocs(), modele.blocs.size());
    u32 lignes = 0;
    for (u32 k = 0; k < doc.NombreBlocs(); ++k) {
      const BlocEtat bloc = doc.LitBloc(k + 2);
      const ModeleEtat::Bloc& attendu = modele.blocs[k];
      ASSERT_EQ(bloc.lignes, attendu.lignes) << k;
      ASSERT_EQ(bloc.fin, attendu.fin) << k;
      ASSERT_EQ(bloc.drapeaux & ~BlocTitre, (attendu.h ? 1 : 0) + (attendu.x ? 2 : 0) + (attendu.p ? 4 : 0))
          << k;
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
    for (std::size_t i = 0; i < attendus.size(); ++i)
      ASSERT_TRUE(MemeElement(dessin.elements[i], attendus[i])) << Dit(i, dessin.elements[i], attendus[i]);
    nbPlaces += VerifieLignes(dessin.elements, attendus, modele.voisinages, dessin.page.unite * 3 / 4);
    if (HasFailure()) return;
    nbElements += attendus.size();
    nbPages += modele.pages.size();
  }
  EXPECT_GT(nbElements, 50000u);
  EXPECT_GT(nbPlaces, 10000u);
  EXPECT_GT(nbPages, 2000u);
}

/// A text of a report with what somebody may type in its places: labels of 80 characters, amounts beyond
/// all bounds, numbers of many digits.
std::string Remplie(Hasard& hasard, std::string_view format) {
  static const char* valeurs[] = {"",
                                  "Honoraires",
                                  "149",
                                  "D 20 000 000 000 000,00 F",
                                  "-1 234 567,89",
                                  "P",
                                  "31/12/2003",
                                  "512",
                                  "Achat de petit matériel médical et dentaire"};
  std::string texte;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      texte += format[i];
      continue;
    }
    while (std::string_view("sducl").find(format[i]) == std::string_view::npos) ++i;
    if (format[i] == 'l') ++i;
    if (format[i] == 's')
      texte += DepuisUtf8(valeurs[hasard.Jusque(std::size(valeurs))]).value();
    else
      texte += format[i] == 'c' ? "R" : std::to_string(hasard.Jusque(2) ? hasard.Jusque(100) : 149000);
  }
  return texte;
}

TEST_F(ModeleEtatTest, NoRowOfTheReportsCoversItself) {
  constexpr unsigned entetes[] = {7101, 7102};
  Hasard hasard(7);
  for (const auto& [numero, utf8, detruit, fichier] : fenlor::test::TextesDesSources()) {
    const std::string format = DepuisUtf8(utf8).value();
    if (format.find("\\M") == std::string::npos) continue;
    for (unsigned essai = 0; essai < 20; ++essai) {
      const std::string texte = Remplie(hasard, format);
      SCOPED_TRACE(texte);
      Enregistreur appareil = Enregistreur::A4(UnitesPeripherique, essai % 2);
      InterpreteEtat interprete(PreparePage(appareil, {"Courier", 8}, false), {}, {}, appareil);
      interprete.InterpreteTexte(0, texte);
      interprete.FinitPage();
      std::map<i32, std::vector<Rectangle>> lignes;
      for (const ElementPage& e : appareil.Elements) {
        if (e.trait) continue;
        const Rectangle& a = e.cadre;
        // "V" of the journal's heading stands where another one does.
        EXPECT_TRUE(a.droite > a.gauche || (e.texte == "V" && std::ranges::count(entetes, numero)))
            << e.texte;
        for (const Rectangle& b : lignes[a.haut]) EXPECT_TRUE(a.droite <= b.gauche || b.droite <= a.gauche);
        lignes[a.haut].push_back(a);
      }
    }
  }
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
      for (unsigned i = 0; i < 150; ++i) d.EcritEtat(hasard.Texte(14, true) + "\n");
    };
    ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
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
      for (i32 Rectangle::*bord :
           {&Rectangle::gauche, &Rectangle::droite})  // what is narrower is cut to units
        if (std::abs(a.cadre.*bord - b.cadre.*bord) == 1) a.cadre.*bord = b.cadre.*bord;
      ASSERT_TRUE(a == b) << Dit(i, a, b);
    }
  }
}

}  // namespace
}  // namespace fenlor::test
