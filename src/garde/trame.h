// The zstd frames that an archive is a chain of. Every reader of zstd goes through a chain as through one
// frame, so blocks of a file may be compressed apart, by several helpers at once.
#pragma once

#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

/// Bytes of a file that become one frame: the level below finds little more in larger ones.
constexpr std::size_t TailleBlocTrame = std::size_t{4} << 20;

/// Where a frame stands in the file that holds it.
struct Trame {
  u64 place = 0, taille = 0;
};

/// Compresses bytes into one frame. False: no memory.
bool Comprime(const void* octets, std::size_t taille, std::vector<u8>& trame);

}  // namespace fenlor
