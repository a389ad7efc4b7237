#include "store/somme.h"

#include <array>
#include <cassert>
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

/// An answer of the instruction comes three steps after the question: three stretches at a time.
__attribute__((target("sse4.2"))) void TroisParInstruction(const u8* o, std::size_t taille, std::size_t pas,
                                                           u32* sommes) {
  const u8 *o1 = o + pas, *o2 = o1 + pas;
  u64 c = 0xFFFFFFFF, c1 = c, c2 = c;
  std::size_t place = 0;
  for (; place + 8 <= taille; place += 8) {
    u64 mot, mot1, mot2;
    std::memcpy(&mot, o + place, sizeof mot);
    std::memcpy(&mot1, o1 + place, sizeof mot);
    std::memcpy(&mot2, o2 + place, sizeof mot);
    c = _mm_crc32_u64(c, mot);
    c1 = _mm_crc32_u64(c1, mot1);
    c2 = _mm_crc32_u64(c2, mot2);
  }
  u32 r = static_cast<u32>(c), r1 = static_cast<u32>(c1), r2 = static_cast<u32>(c2);
  for (; place < taille; ++place) {
    r = _mm_crc32_u8(r, o[place]);
    r1 = _mm_crc32_u8(r1, o1[place]);
    r2 = _mm_crc32_u8(r2, o2[place]);
  }
  sommes[0] = ~r;
  sommes[1] = ~r1;
  sommes[2] = ~r2;
}
#endif

bool AInstruction() {
#if defined(__x86_64__)
  static const bool instruction = __builtin_cpu_supports("sse4.2");
  return instruction;
#else
  return false;
#endif
}

}  // namespace

u32 Crc32cParTable(const void* octets, std::size_t taille, u32 somme) {
  const u8* o = static_cast<const u8*>(octets);
  u32 c = ~somme;
  for (; taille > 0; --taille) c = c >> 8 ^ Table[(c ^ *o++) & 0xFF];
  return ~c;
}

u32 Crc32c(const void* octets, std::size_t taille, u32 somme) {
#if defined(__x86_64__)
  if (AInstruction()) return ParInstruction(octets, taille, somme);
#endif
  return Crc32cParTable(octets, taille, somme);
}

void SommesDe(const u8* octets, u32 nombre, std::size_t taille, std::size_t pas, u32* sommes) {
  assert(taille <= pas);
  u32 i = 0;
#if defined(__x86_64__)
  for (; AInstruction() && i + 3 <= nombre; i += 3)
    TroisParInstruction(octets + i * pas, taille, pas, sommes + i);
#endif
  for (; i < nombre; ++i) sommes[i] = Crc32c(octets + i * pas, taille);
}

}  // namespace fenlor
