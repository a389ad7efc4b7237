#include "ctl/sortieetat.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "core/cles.h"
#include "core/erreurs.h"
#include "ctl/json.h"
#include "pages/enregistreur.h"
#include "pages/page.h"
#include "pages/textes.h"
#include "store/partage.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 PagesEnsemble = 128;  ///< read, drawn and written at a time
constexpr u32 PagesParAide = 16;    ///< fewer are drawn before a helper has started

std::string Drapeaux(u8 drapeaux) {
  std::string texte;
  if (drapeaux & BlocEntete) texte += " H";
  if (drapeaux & BlocFinEntete) texte += " X";
  if (drapeaux & BlocSaut) texte += " P";
  return texte;
}

std::string Bloc(bool json, u32 numero, const BlocEtat& bloc, const std::string& texte) {
  if (json)
    return LigneJson()
        .Entier("bloc", numero)
        .Entier("lignes", bloc.lignes)
        .Booleen("debutTable", bloc.drapeaux & BlocEntete)
        .Booleen("finTable", bloc.drapeaux & BlocFinEntete)
        .Booleen("saut", bloc.drapeaux & BlocSaut)
        .Texte("texte", texte)
        .Fin();
  const bool finie = texte.empty() || texte.back() == '\n';
  return VersUtf8(texte) + (finie ? "" : "\n") + "== " + std::to_string(bloc.lignes) +
         Drapeaux(bloc.drapeaux) + "\n";
}

const char* Nom(Alignement alignement) {
  if (alignement == Alignement::Gauche) return "gauche";
  return alignement == Alignement::Centre ? "centre" : "droite";
}

std::string Style(unsigned style) {
  std::string texte;
  if (style & StyleGras) texte += 'g';
  if (style & StyleItalique) texte += 'i';
  if (style & StyleSouligne) texte += 's';
  return texte;
}

/// What is printed, told as text line by line while it is drawn.
class FeuilleTexte : public Enregistreur {
 public:
  /// `interligne`: of the page, which was prepared on `modele`.
  FeuilleTexte(const Enregistreur& modele, i32 interligne, bool json)
      : Enregistreur(modele), m_interligne(interligne), m_json(json) {
    assert(interligne > 0);
  }
  /// Of the page `Page`, as UTF-8.
  std::string Texte() {
    if (m_json) return std::exchange(m_texte, {});
    const std::string texte = VersUtf8(m_texte);
    m_texte.clear();
    return texte;
  }

  void DessineTexte(unsigned style, const Rectangle& cadre, Alignement alignement,
                    std::string_view texte) override {
    Ajoute(cadre, Nom(alignement), StyleDessine(style), texte);
  }
  void DessineTrait(i32 gauche, i32 droite, i32 y, i32) override {
    Ajoute({gauche, y, droite, y}, "trait", 0, {});
  }
  void Remplit(const Rectangle& cadre, Ton ton) override {
    Ajoute(cadre, ton == Ton::Bande ? "bande" : "filet", 0, {});
  }

 private:
  void Ajoute(const Rectangle& cadre, std::string_view genre, unsigned style, std::string_view texte) {
    const i32 ligne = cadre.haut / m_interligne + 1;
    m_json ? AjouteJson(cadre, ligne, genre, style, texte) : AjouteLigne(cadre, ligne, genre, style, texte);
  }
  void AjouteJson(const Rectangle& cadre, i32 ligne, std::string_view genre, unsigned style,
                  std::string_view texte) {
    std::string imprime;
    AjouteImprime(imprime, texte);
    m_texte += LigneJson()
                   .Entier("page", Page)
                   .Entier("gauche", cadre.gauche)
                   .Entier("droite", cadre.droite)
                   .Entier("ligne", ligne)
                   .Texte("alignement", std::string(genre))
                   .Texte("style", Style(style))
                   .Texte("texte", imprime)
                   .Fin();
  }
  /// Windows-1252: a page becomes UTF-8 as a whole.
  void AjouteLigne(const Rectangle& cadre, i32 ligne, std::string_view genre, unsigned style,
                   std::string_view texte) {
    char tete[64];
    char* place = tete;
    for (const i32 nombre : {static_cast<i32>(Page), cadre.gauche, cadre.droite, ligne}) {
      place = std::to_chars(place, std::end(tete), nombre).ptr;
      *place++ = '\t';
    }
    m_texte.append(tete, place).append(genre) += '\t';
    if (style)
      m_texte += Style(style);
    else
      m_texte += '-';
    AjouteImprime(m_texte += '\t', texte);
    m_texte += '\n';
  }
  static void AjouteImprime(std::string& sortie, std::string_view texte) {
    std::size_t place = sortie.size();
    sortie += texte;
    while ((place = sortie.find(BlancFin, place)) != std::string::npos) sortie[place] = '\xA0';
  }

  i32 m_interligne;
  bool m_json;
  std::string m_texte;
};

/// What the pages from `premiere` on print, whose text is at hand, drawn by as many helpers as are worth it.
std::vector<std::string> DessinePages(bool json, const ImpressionEtat& impression, u32 premiere,
                                      std::string_view texte, const Enregistreur& modele) {
  const TablePages& pages = impression.pages;
  const u32 nombre = std::min(PagesEnsemble, NombrePages(pages) - premiere + 1);
  const unsigned parts = std::clamp(nombre / PagesParAide, 1u, NombreParts(~0ull));
  std::vector<std::string> textes(nombre);
  Partage(parts, [&](unsigned part) {
    FeuilleTexte feuille(modele, impression.page.interligne, json);
    const Tranche tranche = TrancheDe(part, parts, nombre, 1);
    for (u64 i = tranche.debut; i < tranche.fin; ++i) {
      const u32 n = premiere + static_cast<u32>(i);
      const u32 debut = pages[n - 1].fin - pages[premiere - 1].fin;
      feuille.Page = n;
      // What could not be read was told, and is missing at the end.
      DessinePage(impression, n,
                  texte.substr(std::min<std::size_t>(debut, texte.size()), pages[n].fin - pages[n - 1].fin),
                  feuille);
      textes[i] = feuille.Texte();
    }
  });
  return textes;
}

}  // namespace

bool EcritMarquage(Contexte& contexte, CEtatComptable& etat) {
  const bool json = contexte.Globales.json;
  std::string tete;
  if (json) {
    tete = LigneJson()
               .Texte("titre", etat.Titre())
               .Texte("entete", etat.Entete())
               .Texte("pied", etat.Pied())
               .Booleen("paysage", etat.Paysage())
               .Fin();
  } else {
    tete =
        VersUtf8("titre: " + etat.Titre() + "\nentete: " + etat.Entete() + "\npied: " + etat.Pied() + "\n");
    if (etat.Paysage()) tete += "paysage\n";
  }
  if (!contexte.Ecrit(tete)) return false;
  u32 debut = 0;
  for (u32 numero = 1; numero <= etat.NombreBlocs(); ++numero) {
    const BlocEtat bloc = etat.LitBloc(numero + 1);
    const std::string texte = etat.LitTexte(debut, bloc.fin);
    if (contexte.Dialogue.Numero() != 0) {
      contexte.RefuseMagasin();
      return false;
    }
    if (!contexte.Ecrit(Bloc(json, numero, bloc, texte))) return false;
    debut = bloc.fin;
  }
  return true;
}

bool EcritRuns(Contexte& contexte, CEtatComptable& etat) {
  const Parametres& reglages = contexte.App.Reglages;
  Enregistreur feuille = Enregistreur::A4(UnitesPeripherique, etat.Paysage());
  const StylePapier style = etat.Style();
  const ReglagePolice police =
      LitPoliceImpressions(reglages.LitIni(Texte(SecPreferences), Texte(ClePoliceImpressions)), style);
  const MiseEnPage page = PreparePage(feuille, police, reglages.IsBrouillon(), true, style);
  const auto pages =
      PagineEtat(etat, etat.Mesures(), static_cast<u32>(page.lignesParPage), DessinDe(style).titresSuivis);
  if (!pages) {
    contexte.Refuse(ErrEtatLecture, {});
    return false;
  }
  const ImpressionEtat impression{etat, *pages, page, LitIdentiteEtat(contexte.App),
                                  contexte.Magasin.Today()};
  for (u32 n = 1; n <= NombrePages(*pages); n += PagesEnsemble) {
    const u32 derniere = std::min(n + PagesEnsemble - 1, NombrePages(*pages));
    const std::string texte = etat.LitTexte((*pages)[n - 1].fin, (*pages)[derniere].fin);
    if (contexte.Dialogue.Numero() != 0) {
      contexte.RefuseMagasin();
      return false;
    }
    for (const std::string& dessinee : DessinePages(contexte.Globales.json, impression, n, texte, feuille))
      if (!contexte.Ecrit(dessinee)) return false;
  }
  return true;
}

bool DonneParFichier(Contexte& contexte, const std::function<bool(int descripteur)>& ecrit) {
  std::string chemin = (std::filesystem::temp_directory_path() / "FNLXXXXXX").string();
  const int descripteur = mkostemp(chemin.data(), O_CLOEXEC);
  if (descripteur < 0) {
    contexte.Refuse(ErrCreationFichier, {chemin + " : " + TexteErreurSysteme(errno)});
    return false;
  }
  // It has no name: however the program ends, nothing of the books is left.
  unlink(chemin.c_str());
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> fichier(fdopen(descripteur, "r"), std::fclose);
  if (!ecrit(descripteur)) {
    contexte.RefuseMagasin();
    return false;
  }
  std::rewind(fichier.get());
  std::string morceau(64u << 10, '\0');
  while (const std::size_t lus = std::fread(morceau.data(), 1, morceau.size(), fichier.get()))
    if (!contexte.Ecrit(morceau.substr(0, lus))) return false;
  return std::ferror(fichier.get()) == 0 || contexte.RefuseLecture(EIO, "-") == StatutFait;
}

}  // namespace fenlor
