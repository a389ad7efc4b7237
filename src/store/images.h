// After-images of the unit in progress: one for each slot that it touches, in memory that is taken in
// large pieces and given back when the unit ends.
#pragma once

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
  };

  bool Vide() const { return m_vivantes == 0; }
  /// Bytes of the images that count.
  std::size_t Octets() const { return m_octets; }

  /// The bytes of an image, null when the unit has none of that slot.
  u8* Trouve(u16 fichier, Position position) const {
    if (m_vivantes == 0) return nullptr;
    const u32 rang = m_table[Place(fichier, position)];
    return rang == 0 || m_images[rang - 1].retiree ? nullptr : m_images[rang - 1].octets;
  }
  /// Room for the image of a slot of `pas` bytes: its own when there is one, else of any content.
  u8* Pose(u16 fichier, Position position, u16 pas);
  void Retire(u16 fichier, Position position);
  void Efface();

  /// Images that count, by file and position. Valid until the next `Pose`.
  std::vector<Image*> EnOrdre();

 private:
  std::size_t Place(u16 fichier, Position position) const;
  void Agrandit();

  std::vector<Image> m_images;
  std::vector<u32> m_table;  ///< open addressing: rank in `m_images` plus 1, 0 where nothing stands
  std::vector<GrandVecteur<u8>> m_morceaux;
  std::size_t m_reste = 0;  ///< bytes that are free at the end of the last piece
  std::size_t m_vivantes = 0, m_octets = 0;
};

using OrdreImages = std::vector<ImagesUnite::Image*>;

}  // namespace fenlor
