// Cutting a report into pages, from its index alone.
#pragma once

#include <optional>
#include <vector>

#include "pages/indexetat.h"

namespace fenlor {

/// Heights that a report declares, in lines.
struct MesuresEtat {
  u32 lignesTitre = 0;
  u32 lignesEntete = 0;
  u32 lignesPied = 0;
};

/// End of a page. Entry 0 of a table is {0, false, false}; the text of page n runs from
/// `fin` of entry n - 1 to `fin` of entry n.
struct PageEtat {
  u32 fin = 0;              ///< offset in the text file
  bool avecEntete = false;  ///< begins with the repeated header
  bool avecPied = false;    ///< ends with the footer
  bool operator==(const PageEtat&) const = default;
};
using TablePages = std::vector<PageEtat>;

inline u32 NombrePages(const TablePages& pages) {
  return pages.empty() ? 0 : static_cast<u32>(pages.size() - 1);
}

/// Where the records of an index come from.
class LecteurBlocs {
 public:
  virtual ~LecteurBlocs() = default;
  /// Records from number `premier` (from 1) on, at most `nombre`: how many were read, 0
  /// behind the last one, -1 on failure.
  virtual int LitBlocs(u32 premier, BlocEtat* blocs, u32 nombre) = 0;
};

/// The pages, at least one; nothing when the index could not be read. A block is never
/// split: one that is taller than a page stands alone on it and runs off its end. The
/// first page holds `lignesPied` lines fewer than the others. Takes the memory of the
/// table and of one block of records.
///
/// `titresSuivis`: headings that a page would end with begin the next one, with what follows them, unless
/// nothing else stands on the page.
std::optional<TablePages> PagineEtat(LecteurBlocs& index, const MesuresEtat& mesures, u32 lignesParPage,
                                     bool titresSuivis = false);

}  // namespace fenlor
