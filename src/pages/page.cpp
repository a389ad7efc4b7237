#include "pages/page.h"

#include <cassert>

#include "core/cles.h"
#include "core/valeurs.h"
#include "pages/interprete.h"
#include "pages/textes.h"

namespace fenlor {

IdentiteEtat LitIdentiteEtat(const CFenlorApp& app) {
  const std::string identification = app.Reglages.LitIni(Texte(SecActivite), Texte(CleIdentification));
  std::string lignes[2];
  std::size_t trouvees = 0;
  for (unsigned i = 0; i < ComptePartie(identification, '\n') && trouvees < std::size(lignes); ++i) {
    std::string ligne = ChampTexte(i, identification, '\n');
    while (!ligne.empty() && (ligne.back() == '\r' || ligne.back() == ' ')) ligne.pop_back();
    if (!EstVide(ligne)) lignes[trouvees++] = ligne;
  }
  return {lignes[0], lignes[1]};
}

bool DessinePage(const ImpressionEtat& impression, u32 n, Peripherique& peripherique) {
  if (n < 1 || n > NombrePages(impression.pages)) return false;
  const std::string texte = impression.doc.LitTexte(impression.pages[n - 1].fin, impression.pages[n].fin);
  DessinePage(impression, n, texte, peripherique);
  return true;
}

void DessinePage(const ImpressionEtat& impression, u32 n, std::string_view texte,
                 Peripherique& peripherique) {
  assert(n >= 1 && n <= NombrePages(impression.pages));
  InterpreteEtat interprete(impression.page, impression.doc.Entete(), impression.doc.Pied(), peripherique);
  const PageEtat& page = impression.pages[n];
  std::string premier, second;
  RemplitEtat(premier, Texte(EtatTitreIdentite),
              {EchappeEtat(impression.qui.nom), EchappeEtat(impression.qui.societe)});
  RemplitEtat(second, Texte(EtatTitrePage),
              {StrDate(impression.aujourdhui), impression.doc.Titre(), n, NombrePages(impression.pages)});
  interprete.CommencePage();
  i32 y = interprete.DessineTitre(0, premier, second);
  if (page.avecEntete) y += interprete.DessineEntete(y);
  y += interprete.InterpreteTexte(y, texte);
  if (page.avecPied) interprete.DessinePied(y);
  interprete.FinitPage();
}

}  // namespace fenlor
