#include "store/images.h"

#include <algorithm>
#include <cassert>
#include <tuple>

namespace fenlor {

namespace {

/// The first piece is kept from unit to unit; large units take large ones.
constexpr std::size_t PremierMorceau = 256u << 10, GrandMorceau = TailleGrandePage;
constexpr std::size_t TableMin = 64;

bool Avant(const ImagesUnite::Image* a, const ImagesUnite::Image* b) {
  return std::tie(a->fichier, a->position) < std::tie(b->fichier, b->position);
}

}  // namespace

/// Where a slot stands in the table, or would.
std::size_t ImagesUnite::Place(u16 fichier, Position position) const {
  const std::size_t masque = m_table.size() - 1;
  u64 h = (u64{fichier} << 32 | position) * 0x9E3779B97F4A7C15u;
  std::size_t place = (h ^ h >> 32) & masque;
  for (; m_table[place] != 0; place = (place + 1) & masque) {
    const Image& image = m_images[m_table[place] - 1];
    if (image.position == position && image.fichier == fichier) break;
  }
  return place;
}

void ImagesUnite::Agrandit() {
  m_table.assign(std::max(TableMin, m_table.size() * 4), 0);
  assert(m_images.size() < m_table.size());
  for (u32 rang = 0; rang < m_images.size(); ++rang)
    m_table[Place(m_images[rang].fichier, m_images[rang].position)] = rang + 1;
}

u8* ImagesUnite::Pose(u16 fichier, Position position, u16 pas) {
  assert(position > 0 && pas > 0 && pas <= PremierMorceau);
  if (m_images.size() * 2 >= m_table.size()) Agrandit();
  u32& rang = m_table[Place(fichier, position)];
  if (rang == 0) {
    if (m_reste < pas) {
      m_reste = m_morceaux.empty() ? PremierMorceau : GrandMorceau;
      m_morceaux.emplace_back(m_reste);
    }
    m_images.push_back({fichier, pas, position,
                        m_morceaux.back().data() + (m_morceaux.back().size() - m_reste), true, 0, 0, 0});
    m_reste -= pas;
    rang = static_cast<u32>(m_images.size());
  }
  Image& image = m_images[rang - 1];
  assert(image.pas == pas);
  if (!image.retiree) return image.octets;
  image.retiree = false;
  ++m_vivantes;
  m_octets += pas;
  return image.octets;
}

void ImagesUnite::Retire(u16 fichier, Position position) {
  if (m_vivantes == 0) return;
  const u32 rang = m_table[Place(fichier, position)];
  if (rang == 0 || m_images[rang - 1].retiree) return;
  m_images[rang - 1].retiree = true;
  --m_vivantes;
  m_octets -= m_images[rang - 1].pas;
}

void ImagesUnite::Efface() {
  // What a save needs is kept for the next one.
  if (m_table.size() > 4 * TableMin) {
    std::vector<u32>().swap(m_table);
    std::vector<Image>().swap(m_images);
  }
  std::fill(m_table.begin(), m_table.end(), 0u);
  m_images.clear();
  if (m_morceaux.size() > 1) m_morceaux.resize(1);
  m_reste = m_morceaux.empty() ? 0 : PremierMorceau;
  m_vivantes = m_octets = 0;
}

std::vector<ImagesUnite::Image*> ImagesUnite::EnOrdre() {
  std::vector<Image*> ordre;
  ordre.reserve(m_vivantes);
  // File by file: within one they mostly stand in order already.
  bool fichiers[256] = {};
  for (const Image& image : m_images) fichiers[image.fichier] = true;
  for (unsigned fichier = 0; fichier < 256; ++fichier) {
    if (!fichiers[fichier]) continue;
    const auto debut = static_cast<std::ptrdiff_t>(ordre.size());
    for (Image& image : m_images)
      if (image.fichier == fichier && !image.retiree) ordre.push_back(&image);
    if (!std::is_sorted(ordre.begin() + debut, ordre.end(), Avant))
      std::sort(ordre.begin() + debut, ordre.end(), Avant);
  }
  assert(ordre.size() == m_vivantes);
  return ordre;
}

}  // namespace fenlor
