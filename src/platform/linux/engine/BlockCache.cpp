#include "platform/linux/engine/BlockCache.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/BurnEngine.h"

namespace korvenal {

int BlockCache::read(std::uint32_t block, std::uint8_t* buffer) {
  if (!disc_) return -ENXIO;
  if (noted_ != nullptr) {
    noted_->push_back(block);
    return 0;
  }
  if (block < first_ || block - first_ >= count_) {
    const int error = fill(block);
    if (error != 0) return error;
  }
  std::memcpy(buffer, window_.data() + std::size_t{block - first_} * BlockBytes, BlockBytes);
  return 0;
}

int BlockCache::readAround(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) {
  if (!disc_) return -ENXIO;
  while (count > 0) {
    std::int64_t got = disc_->read(first, count, buffer);
    // A drive may refuse so many for one bad block among them.
    if (got < 0 && count > 1) got = disc_->read(first, 1, buffer);
    if (got <= 0) return got < 0 ? static_cast<int>(got) : -EIO;
    first += static_cast<std::uint32_t>(got);
    count -= static_cast<std::uint32_t>(got);
    buffer += got * BlockBytes;
  }
  return 0;
}

int BlockCache::fill(std::uint32_t block) {
  const std::uint32_t end = first_ + count_;
  const bool inOrder = count_ > 0 && block >= end && block - end < SmallestWindow;
  size_ = inOrder ? std::min(size_ * 2, LargestWindow) : SmallestWindow;
  window_.resize(std::size_t{LargestWindow} * BlockBytes);
  std::int64_t got = disc_->read(block, size_, window_.data());
  // A bad neighbour must not take a good block with it.
  if (got < 0) got = disc_->read(block, 1, window_.data());
  first_ = block;
  count_ = got > 0 ? static_cast<std::uint32_t>(got) : 0;
  if (got < 0) return static_cast<int>(got);
  return got == 0 ? -EIO : 0;
}

}  // namespace korvenal
