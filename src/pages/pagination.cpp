#include "pages/pagination.h"

#include <cassert>

namespace fenlor {

namespace {

constexpr u32 blocsParLecture = 4096;

}  // namespace

std::optional<TablePages> PagineEtat(LecteurBlocs& index, const MesuresEtat& mesures, u32 lignesParPage) {
  std::vector<BlocEtat> tampon(blocsParLecture);
  TablePages pages{PageEtat{}};
  u64 utilisees = u64{mesures.lignesPied} + mesures.lignesTitre;
  bool section = false, enteteCourant = false, sautForce = false;
  u32 finPrecedente = 0;

  for (u32 premier = 2;;) {
    const int lus = index.LitBlocs(premier, tampon.data(), blocsParLecture);
    if (lus < 0) return std::nullopt;
    if (lus == 0) break;
    assert(static_cast<u32>(lus) <= blocsParLecture);
    for (int i = 0; i < lus; ++i) {
      const BlocEtat& bloc = tampon[static_cast<std::size_t>(i)];
      if (sautForce || bloc.lignes + utilisees + mesures.lignesPied > lignesParPage) {
        sautForce = false;
        pages.push_back({finPrecedente, enteteCourant, section});
        utilisees = u64{mesures.lignesTitre} + (section ? mesures.lignesEntete : 0);
        enteteCourant = section;
      }
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
