#include "platform/linux/engine/FaultyBlocks.h"

#include <algorithm>
#include <cerrno>

namespace korvenal {

std::int64_t FaultyBlocks::read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) {
  if (pullAfter_ >= 0 && blocksRead_ >= pullAfter_) *pulled_ = true;
  if (*pulled_) return -ENXIO;
  if (badBlock_ >= 0) {
    if (first >= badBlock_) return -EIO;
    count = static_cast<std::uint32_t>(std::min<std::int64_t>(count, badBlock_ - first));
  }
  const std::int64_t got = disc_->read(first, count, buffer);
  blocksRead_ += std::max<std::int64_t>(got, 0);
  return got;
}

}  // namespace korvenal
