#include "core/dialogue.h"

#include <algorithm>

namespace fenlor {

unsigned PourcentProgress(u32 position, u32 maximum) {
  if (maximum == 0) return 0;
  return static_cast<unsigned>(u64{std::min(position, maximum)} * 100 / maximum);
}

}  // namespace fenlor
