#include "store/images.h"

#include <algorithm>
#include <cassert>
#include <tuple>

namespace fenlor {

namespace {

/// The first piece is kept from unit to unit; large units take large ones.
constexpr std::size_t PremierMorceau = 256u << 10, GrandMorceau = TailleGrandePage;
/// Of more images than these nothing but the first piece is kept.
constexpr std::size_t GardeesMax = 128;

bool Avant(const ImagesUnite::Image* a, const ImagesUnite::Image* b) {
  return std::tie(a->fichier, a->position) < std::tie(b->fichier, b->position);
}

}  // namespace

u32& ImagesUnite::PlaceDuRang(u16 fichier, Position position) {
  std::vector<u32>& repertoire = m_repertoires[fichier];
  const u32 numero = position / Large;
  if (numero >= repertoire.size()) repertoire.resize(numero + 1);
  if (repertoire[numero] == 0) {
    m_blocs.push_back({fichier, numero, {}});
    repertoire[numero] = static_cast<u32>(m_blocs.size());
  }
  return m_blocs[repertoire[numero] - 1].rangs[position % Large];
}

u8* ImagesUnite::Pose(u16 fichier, Position position, u16 pas) {
  assert(position > 0 && pas > 0 && pas <= PremierMorceau);
  u32& rang = PlaceDuRang(fichier, position);
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
  const u32 rang = Rang(fichier, position);
  if (rang == 0 || m_images[rang - 1].retiree) return;
  m_images[rang - 1].retiree = true;
  --m_vivantes;
  m_octets -= m_images[rang - 1].pas;
}

void ImagesUnite::Efface() {
  // What a save needs is kept for the next one.
  for (const Bloc& bloc : m_blocs) m_repertoires[bloc.fichier][bloc.numero] = 0;
  if (m_images.size() > GardeesMax) {
    std::vector<Bloc>().swap(m_blocs);
    std::vector<Image>().swap(m_images);
  }
  m_blocs.clear();
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
