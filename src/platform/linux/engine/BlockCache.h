#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/linux/engine/BlockReader.h"

namespace korvenal {

/// One window of blocks over a disc. It grows while reading goes on in order, so that large and
/// neighbouring small files come in large pieces, and a look at one block costs little.
class BlockCache {
 public:
  explicit BlockCache(std::unique_ptr<BlockReader> disc) : disc_(std::move(disc)) {}

  /// Copies one block. 0, or a negative errno; a block behind the end is an error.
  int read(std::uint32_t block, std::uint8_t* buffer);
  /// Reads all these blocks past the window. 0, or a negative errno.
  int readAround(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer);
  /// From here on every read fails: the disc is gone.
  void detach() { disc_.reset(); }
  bool isDetached() const { return !disc_; }
  BlockReader* disc() { return disc_.get(); }

  /// While this lives, `read` notes which block is asked for and leaves the buffer as it is.
  class Noting {
   public:
    Noting(BlockCache& cache, std::vector<std::uint32_t>& blocks) : cache_(cache) {
      blocks.clear();
      cache_.noted_ = &blocks;
    }
    ~Noting() { cache_.noted_ = nullptr; }
    Noting(const Noting&) = delete;
    Noting& operator=(const Noting&) = delete;

   private:
    BlockCache& cache_;
  };

 private:
  static constexpr std::uint32_t SmallestWindow = 16;
  static constexpr std::uint32_t LargestWindow = 512;  ///< blocks: 1 MiB

  int fill(std::uint32_t block);

  std::unique_ptr<BlockReader> disc_;
  std::vector<std::uint8_t> window_;
  std::uint32_t first_ = 0;
  std::uint32_t count_ = 0;
  std::uint32_t size_ = SmallestWindow;          ///< blocks to ask for next
  std::vector<std::uint32_t>* noted_ = nullptr;  ///< blocks asked for, instead of reading them
};

}  // namespace korvenal
