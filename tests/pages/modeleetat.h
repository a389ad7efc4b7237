// A second, plain implementation of the report engine, for tests alone: the whole
// markup is cut into tokens, blocks and pages are lists of tokens.
#pragma once

#include <string>
#include <vector>

#include "pages/enregistreur.h"

namespace fenlor::test {

struct Jeton {
  enum Genre { Lettre, Retour, Code } genre;
  char c = 0;
  int argument = 0;
  unsigned octets = 1;
};

inline std::vector<Jeton> Jetons(const std::string& texte) {
  std::vector<Jeton> jetons;
  for (unsigned i = 0; i < texte.size();) {
    const char c = texte[i];
    if (c == '\n') {
      jetons.push_back({Jeton::Retour, c, 0, 1});
      i += 1;
    } else if (c != '\\') {
      jetons.push_back({Jeton::Lettre, c, 0, 1});
      i += 1;
    } else if (std::string("LCRTMNSFHXGPBIU0123").find(texte.at(i + 1)) == std::string::npos) {
      jetons.push_back({Jeton::Lettre, texte.at(i + 1), 0, 2});
      i += 2;
    } else if (std::string("CRTMNS").find(texte.at(i + 1)) != std::string::npos) {
      jetons.push_back({Jeton::Code, texte.at(i + 1), std::stoi(texte.substr(i + 2, 3)), 5});
      i += 5;
    } else {
      jetons.push_back({Jeton::Code, texte.at(i + 1), 0, 2});
      i += 2;
    }
  }
  return jetons;
}

inline unsigned Retours(const std::string& texte) {
  unsigned n = 0;
  for (const Jeton& j : Jetons(texte)) n += j.genre == Jeton::Retour;
  return n;
}

class ModeleEtat {
 public:
  struct Bloc {
    std::vector<Jeton> jetons;
    unsigned lignes = 0;
    unsigned fin = 0;
    bool h = false, x = false, p = false;
  };
  struct Page {
    std::vector<Jeton> jetons;
    bool entete = false, pied = false;
  };

  /// What the rule of the neighbours looks at, one for each element.
  struct Voisinage {
    int groupe = 0;  ///< runs that differ in their style alone; 0: a rule
    int marge = 0, limite = 0;
    int borne = 0;  ///< a text on the left ends here at the latest
  };

  std::string titre, entete, pied;
  std::vector<Voisinage> voisinages;
  std::vector<Bloc> blocs;
  std::vector<Page> pages;

  void Ecrit(const std::string& texte) {
    Bloc bloc;
    bool debut = true, vide = true;
    unsigned fin = blocs.empty() ? 0 : blocs.back().fin;
    for (const Jeton& j : Jetons(texte)) {
      bloc.jetons.push_back(j);
      fin += j.octets;
      vide = false;
      if (j.genre == Jeton::Retour) bloc.lignes += 1;
      if (j.genre == Jeton::Code) {
        if (j.c == 'F') bloc.lignes += Retours(pied);
        if (j.c == 'H') bloc.lignes += std::max(1u, Retours(entete)), bloc.h = true;
        if (j.c == 'X') bloc.x = true;
        if (j.c == 'P') bloc.p = true;
        if (j.c == 'P' && !debut) bloc.lignes += 1;
        if (j.c == 'P' || j.c == 'G') {
          bloc.fin = fin;
          blocs.push_back(bloc);
          bloc = {};
          vide = true;
        }
      }
      debut = j.genre == Jeton::Retour;
    }
    if (vide) return;
    bloc.fin = fin;
    blocs.push_back(bloc);
  }

  void Pagine(unsigned lignesParPage) {
    const unsigned t = 4, e = std::max(1u, Retours(entete)), f = Retours(pied);
    pages = {Page{}};
    long reste = static_cast<long>(lignesParPage) - t - f - f;
    bool section = false, saut = false;
    for (const Bloc& bloc : blocs) {
      if (saut || static_cast<long>(bloc.lignes) > reste) {
        pages.back().pied = section;
        pages.push_back({{}, section, false});
        reste = static_cast<long>(lignesParPage) - t - f - (section ? e : 0);
      }
      pages.back().jetons.insert(pages.back().jetons.end(), bloc.jetons.begin(), bloc.jetons.end());
      reste -= bloc.lignes;
      section = (section || bloc.h) && !bloc.x;
      saut = bloc.p;
    }
    pages.back().pied = section;
  }

  /// All pages on a sheet of the recorder's fixed font.
  std::vector<ElementPage> Dessine(int largeurPage, int hauteurPolice, int lignesParPage,
                                   const std::string& premier, const std::string& date) {
    largeur = largeurPage;
    police = hauteurPolice;
    unite = largeur / 144;
    lignesPage = lignesParPage;
    elements.clear();
    voisinages.clear();
    for (numero = 1; numero <= pages.size(); ++numero) {
      const Page& page = pages[numero - 1];
      etat = {};
      const Etat garde = etat;
      int y = Interprete(0, Jetons(premier));
      y += Interprete(y, Jetons("\\L\\0\\1" + date + "\\2\\B\\U " + titre + " \\3\\0Page " +
                                std::to_string(numero) + " / " + std::to_string(pages.size()) + "\n\n"));
      etat = garde;
      if (page.entete) y += Cadre(y, true);
      y += Interprete(y, page.jetons);
      if (page.pied) Cadre(y, false);
    }
    return elements;
  }

 private:
  struct Etat {
    int gauche = 0, droite = 0;
    char ligne = '1';
    char run = 'L';
    bool u = false, b = false, i = false;
  };

  int Cadre(int depart, bool estEntete) {
    const Etat garde = etat;
    etat.gauche = etat.droite = 0;
    etat.ligne = '1';
    etat.run = 'L';
    int y = 0;
    if (estEntete) {
      y = Interprete(depart, Jetons(entete));
    } else {
      std::string morceau;
      for (const char c : pied) {
        if (c != '\n') morceau += c;
        if (c == '\n') {
          Interprete(depart, Jetons(morceau));
          morceau.clear();
        }
      }
      Interprete(depart, Jetons(morceau));
    }
    etat = garde;
    return y;
  }

  int Interprete(int depart, const std::vector<Jeton>& jetons) {
    int x = etat.gauche, y = 0;
    std::string run;
    Suite suite;
    for (unsigned k = 0; k < jetons.size(); ++k) {
      const Jeton& j = jetons[k];
      if (j.genre == Jeton::Lettre) {
        if (j.c != '\r' || j.octets == 2) run += j.c;
        continue;
      }
      if (j.genre == Jeton::Retour) {
        Trace(run, x, depart + y, jetons, k, suite);
        suite.y = -1;
        x = etat.gauche;
        y += police + 1;
        etat.ligne = '1';
        etat.run = 'L';
        continue;
      }
      const int colonne = j.argument * unite, avant = x;
      if (std::string("FHGXPS").find(j.c) == std::string::npos)
        x += Trace(run, x, depart + y, jetons, k, suite);
      if (std::string("123LTMNCR").find(j.c) != std::string::npos) suite.y = -1;
      if (j.c == '0') etat.u = etat.b = etat.i = false;
      if (j.c == '1' || j.c == '2' || j.c == '3') etat.ligne = j.c;
      if (j.c == 'B') etat.b = true;
      if (j.c == 'I') etat.i = true;
      if (j.c == 'U') etat.u = true;
      if (j.c == 'L' || j.c == 'C' || j.c == 'R') etat.run = j.c;
      if (j.c == 'C' || j.c == 'R') ancre = colonne;
      if (j.c == 'T') x = colonne;
      if (j.c == 'M') {
        if (avant == etat.gauche) x = colonne;
        etat.gauche = colonne;
      }
      if (j.c == 'N') {
        if (avant == etat.droite) x = colonne;
        etat.droite = colonne;
      }
      if (j.c == 'S') {
        const int haut = depart + y + 1;
        elements.push_back({numero,
                            true,
                            {etat.gauche, haut, largeur - etat.droite, haut + std::max(1, j.argument)},
                            Alignement::Gauche,
                            0,
                            ""});
        voisinages.push_back({});
      }
      if (j.c == 'F') y += Cadre(depart + y, false);
      if (j.c == 'H') y += Cadre(depart + y, true);
      if (j.c == 'P') y = lignesPage * (police + 1) - depart;
    }
    Trace(run, x, depart + y, jetons, static_cast<unsigned>(jetons.size()), suite);
    return y;
  }

  struct Suite {
    int y = -1, groupe = 0;
  };

  /// Where the strings put the run, as if it had the line for itself.
  int Trace(std::string& run, int x, int y, const std::vector<Jeton>& jetons, unsigned k, Suite& suite) {
    if (run.empty()) return 0;
    const int w = std::min(static_cast<int>(run.size()) * police * 3 / 5,
                           static_cast<int>(run.size()) * (largeur / 144));
    const int limite = largeur - etat.droite;
    int g = std::max(x, etat.gauche), borne = limite;
    Alignement a = Alignement::Gauche;
    const auto droite = [&](int d) {
      a = Alignement::Droite;
      g = d - w;
    };
    if (etat.ligne == '3') {
      droite(limite);
    } else if (etat.ligne == '2') {
      a = Alignement::Centre;
      g = (etat.gauche + limite - w) / 2;
    } else if (etat.run == 'C') {
      a = Alignement::Centre;
      g = (g + std::min(std::max(ancre, x + w), limite) - w) / 2;
    } else if (etat.run == 'R' && std::min(ancre, limite) > g) {
      droite(std::min(ancre, limite));
    } else {
      if (etat.run == 'R') a = Alignement::Droite;
      for (; k < jetons.size() && jetons[k].genre != Jeton::Retour; ++k) {
        if (jetons[k].genre != Jeton::Code || jetons[k].c != 'T') continue;
        borne = std::min(
            limite, jetons[k].argument * unite - (jetons[k].argument * unite <= limite ? unite * 3 / 4 : 0));
        break;
      }
    }
    if (suite.y != y) suite.groupe = ++groupes;
    suite.y = y;
    elements.push_back({numero,
                        false,
                        {g, y, g + w, y + police},
                        a,
                        (etat.u ? 1u : 0u) + (etat.i ? 2u : 0u) + (etat.b ? 4u : 0u),
                        run});
    voisinages.push_back({suite.groupe, etat.gauche, limite, borne});
    run.clear();
    return w;
  }

  int groupes = 0;
  int largeur = 0, police = 0, unite = 0, lignesPage = 0, ancre = 0;
  unsigned numero = 0;
  Etat etat;
  std::vector<ElementPage> elements;
};

}  // namespace fenlor::test
