#include "pages/pagination.h"

#include <cassert>
#include <utility>

namespace fenlor {

namespace {

constexpr u32 blocsParLecture = 4096;

/// The headings that a page ends with so far.
struct Titres {
  u32 debut = 0;         ///< end of what stands before them
  bool section = false;  ///< before them
  u64 lignes = 0;
};

}  // namespace

std::optional<TablePages> PagineEtat(LecteurBlocs& index, const MesuresEtat& mesures, u32 lignesParPage,
                                     bool titresSuivis) {
  std::vector<BlocEtat> tampon(blocsParLecture);
  TablePages pages{PageEtat{}};
  u64 utilisees = u64{mesures.lignesPied} + mesures.lignesTitre;
  bool section = false, enteteCourant = false, sautForce = false;
  u32 finPrecedente = 0;
  Titres titres;
  bool enTitres = false;  ///< `titres` are those that the next block follows

  for (u32 premier = 2;;) {
    const int lus = index.LitBlocs(premier, tampon.data(), blocsParLecture);
    if (lus < 0) return std::nullopt;
    if (lus == 0) break;
    assert(static_cast<u32>(lus) <= blocsParLecture);
    for (int i = 0; i < lus; ++i) {
      const BlocEtat& bloc = tampon[static_cast<std::size_t>(i)];
      if (sautForce || bloc.lignes + utilisees + mesures.lignesPied > lignesParPage) {
        const bool emporte = enTitres && !sautForce && titres.debut > pages.back().fin;
        sautForce = false;
        const Titres tete = emporte ? titres : Titres{finPrecedente, section, 0};
        pages.push_back({tete.debut, enteteCourant, tete.section});
        utilisees = u64{mesures.lignesTitre} + (tete.section ? mesures.lignesEntete : 0) + tete.lignes;
        enteteCourant = tete.section;
        enTitres = false;
      }
      if (!titresSuivis || !(bloc.drapeaux & (BlocTitre | BlocEntete)))
        enTitres = false;
      else if (std::exchange(enTitres, true))
        titres.lignes += bloc.lignes;
      else
        titres = Titres{finPrecedente, section, bloc.lignes};
      utilisees += bloc.lignes;
      if (bloc.drapeaux & BlocEntete) section = true;
      if (bloc.drapeaux & BlocFinEntete) section = false;
      if (bloc.drapeaux & BlocSaut) sautForce = true;
      finPrecedente = bloc.fin;
    }
    premier += static_cast<u32>(lus);
  }
  pages.push_back({finPrecedente, enteteCourant, section});
  assert(pages.front() == PageEtat{} && NombrePages(pages) >= 1);
  return pages;
}

}  // namespace fenlor
