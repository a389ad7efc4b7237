// The index of a report: where its unbreakable blocks end in the text, and how many
// printed lines each of them takes.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

/// What a block holds, bit by bit.
enum DrapeauBloc : u8 {
  BlocEntete = 1,     ///< "\H": the repeated header begins
  BlocFinEntete = 2,  ///< "\X": it ends
  BlocSaut = 4,       ///< the block ends with "\P"
  BlocTitre = 8,      ///< `CommenceEnTitre`
};

/// A record of the index file. Record 1 is all zeros and gives the start of the text;
/// block k is record k + 1.
struct BlocEtat {
  u32 lignes = 0;   ///< printed lines
  u32 fin = 0;      ///< offset in the text just behind the block
  u8 drapeaux = 0;  ///< DrapeauBloc
  u8 reserve[3]{};  ///< no meaning
};
static_assert(sizeof(BlocEtat) == 12 && offsetof(BlocEtat, fin) == 4 && offsetof(BlocEtat, drapeaux) == 8);

/// The first text of a block is bold and no rule stands before it: a heading, which belongs to what follows.
bool CommenceEnTitre(std::string_view bloc);

/// Counts lines and closes blocks while a report's text goes by. Of the markup it
/// knows "\F", "\H", "\X", "\G" and "\P"; a backslash always takes the next byte
/// along, so that a doubled one hides the letter behind it.
class CompteurBlocs {
 public:
  /// Counts one write, which closes a block at its end if nothing else did, and
  /// appends the blocks that it closed. An empty text closes none. `lignesEntete` and
  /// `lignesPied` are what "\H" and "\F" count for.
  void Compte(std::string_view texte, u32 lignesEntete, u32 lignesPied, std::vector<BlocEtat>& fermes);

  /// The same for one write that is known to be one block, and whether it is a heading.
  void CompteBloc(std::size_t taille, u32 lignes, bool titre, std::vector<BlocEtat>& fermes);

  u32 Offset() const { return m_offset; }      ///< of the next byte of the text
  u32 NbLignes() const { return m_nbLignes; }  ///< of all closed blocks

 private:
  void Ferme(std::vector<BlocEtat>& fermes);

  BlocEtat m_ouvert;
  u32 m_offset = 0;
  u32 m_nbLignes = 0;
};

}  // namespace fenlor
