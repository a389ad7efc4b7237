// After-images of the unit in progress: one for each slot that it touches, in memory that is taken in
// large pieces and given back when the unit ends.
#pragma once

#include <array>
#include <vector>

#include "store/definitions.h"
#include "store/pagesgrandes.h"

namespace fenlor {

class ImagesUnite {
 public:
  struct Image {
    u16 fichier = 0;
    u16 pas = 0;
    Position position = 0;
    u8* octets = nullptr;
    bool retiree = false;  ///< a part of the unit that was undone had made it
    /// Of its record, what differs from what stands in its place (`Scelle`), zeroes at the end left out.
    u16 debut = 0, fin = 0, zeros = 0;
    bool Change() const { return fin - debut + zeros > 0; }
  };

  bool Vide() const { return m_vivantes == 0; }
  /// Bytes of the images that count.
  std::size_t Octets() const { return m_octets; }

  /// The bytes of an image, null when the unit has none of that slot.
  u8* Trouve(u16 fichier, Position position) const {
    if (m_vivantes == 0) return nullptr;
    const u32 rang = Rang(fichier, position);
    return rang == 0 || m_images[rang - 1].retiree ? nullptr : m_images[rang - 1].octets;
  }
  /// Room for the image of a slot of `pas` bytes: its own when there is one, else of any content.
  u8* Pose(u16 fichier, Position position, u16 pas);
  void Retire(u16 fichier, Position position);
  void Efface();

  /// Images that count, by file and position. Valid until the next `Pose`.
  std::vector<Image*> EnOrdre();

 private:
  static constexpr u32 Large = 64;
  /// Ranks in `m_images` plus 1 of slots in a row, 0 where a slot has none. Units touch slots beside each
  /// other: their ranks stand beside each other as well.
  struct Bloc {
    u16 fichier = 0;
    u32 numero = 0;
    std::array<u32, Large> rangs{};
  };

  u32 Rang(u16 fichier, Position position) const {
    const std::vector<u32>& repertoire = m_repertoires[fichier];
    const u32 numero = position / Large;
    if (numero >= repertoire.size() || repertoire[numero] == 0) return 0;
    return m_blocs[repertoire[numero] - 1].rangs[position % Large];
  }
  u32& PlaceDuRang(u16 fichier, Position position);

  std::vector<Image> m_images;
  std::array<std::vector<u32>, 256> m_repertoires;  ///< of a file, by number: place in `m_blocs` plus 1, or 0
  std::vector<Bloc> m_blocs;
  std::vector<GrandVecteur<u8>> m_morceaux;
  std::size_t m_reste = 0;  ///< bytes that are free at the end of the last piece
  std::size_t m_vivantes = 0, m_octets = 0;
};

using OrdreImages = std::vector<ImagesUnite::Image*>;

}  // namespace fenlor
