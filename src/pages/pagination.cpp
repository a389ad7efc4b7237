#include "pages/pagination.h"

#include <cassert>

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
  std::optional<Titres> titres;

  for (u32 premier = 2;;) {
    const int lus = index.LitBlocs(premier, tampon.data(), blocsParLecture);
    if (lus < 0) return std::nullopt;
    if (lus == 0) break;
    assert(static_cast<u32>(lus) <= blocsParLecture);
    for (int i = 0; i < lus; ++i) {
      const BlocEtat& bloc = tampon[static_cast<std::size_t>(i)];
      if (sautForce || bloc.lignes + utilisees + mesures.lignesPied > lignesParPage) {
        const bool emporte = titres && !sautForce && titres->debut > pages.back().fin;
        sautForce = false;
        if (!emporte) titres = Titres{finPrecedente, section, 0};
        pages.push_back({titres->debut, enteteCourant, titres->section});
        utilisees = u64{mesures.lignesTitre} + (titres->section ? mesures.lignesEntete : 0) + titres->lignes;
        enteteCourant = titres->section;
        titres.reset();
      }
      if (!titresSuivis || !(bloc.drapeaux & (BlocTitre | BlocEntete)))
        titres.reset();
      else if (!titres)
        titres = Titres{finPrecedente, section, bloc.lignes};
      else
        titres->lignes += bloc.lignes;
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
