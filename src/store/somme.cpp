#include "store/somme.h"

#include <array>
#include <cstring>

#if defined(__x86_64__)
#include <nmmintrin.h>
#endif

namespace fenlor {

namespace {

constexpr std::array<u32, 256> Table = [] {
  std::array<u32, 256> table{};
  for (u32 n = 0; n < 256; ++n) {
    u32 c = n;
    for (int bit = 0; bit < 8; ++bit) c = c & 1 ? c >> 1 ^ 0x82F63B78u : c >> 1;
    table[n] = c;
  }
  return table;
}();

#if defined(__x86_64__)
__attribute__((target("sse4.2"))) u32 ParInstruction(const void* octets, std::size_t taille, u32 somme) {
  const u8* o = static_cast<const u8*>(octets);
  u64 c = ~somme;
  for (; taille >= 8; taille -= 8, o += 8) {
    u64 mot;
    std::memcpy(&mot, o, sizeof mot);
    c = _mm_crc32_u64(c, mot);
  }
  u32 reste = static_cast<u32>(c);
  for (; taille > 0; --taille) reste = _mm_crc32_u8(reste, *o++);
  return ~reste;
}
#endif

}  // namespace

u32 Crc32cParTable(const void* octets, std::size_t taille, u32 somme) {
  const u8* o = static_cast<const u8*>(octets);
  u32 c = ~somme;
  for (; taille > 0; --taille) c = c >> 8 ^ Table[(c ^ *o++) & 0xFF];
  return ~c;
}

u32 Crc32c(const void* octets, std::size_t taille, u32 somme) {
#if defined(__x86_64__)
  static const bool instruction = __builtin_cpu_supports("sse4.2");
  if (instruction) return ParInstruction(octets, taille, somme);
#endif
  return Crc32cParTable(octets, taille, somme);
}

u32 SommeEmplacement(const u8* rec, u32 taille, Position position) {
  return Crc32c(&position, sizeof position, Crc32c(rec, taille));
}

bool SommeJuste(const u8* emplacement, u32 taille, Position position) {
  u32 somme;
  std::memcpy(&somme, emplacement + taille, sizeof somme);
  return somme == SommeEmplacement(emplacement, taille, position);
}

bool RepareBit(u8* emplacement, u32 taille, Position position) {
  for (u32 bit = 0; bit < (taille + TailleSomme) * 8; ++bit) {
    const u8 masque = static_cast<u8>(1u << bit % 8);
    emplacement[bit / 8] ^= masque;
    if (SommeJuste(emplacement, taille, position)) return true;
    emplacement[bit / 8] ^= masque;
  }
  return false;
}

}  // namespace fenlor
