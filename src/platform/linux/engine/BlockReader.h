#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace korvenal {

/// Reads the blocks of a disc, wherever they lie.
class BlockReader {
 public:
  virtual ~BlockReader() = default;
  /// Reads up to `count` blocks from block `first` on. The number of whole blocks read, 0 at and
  /// behind the end of what is written; a negative errno when the first one cannot be read.
  virtual std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) = 0;
  /// Copies up to `count` blocks to where the open file `target` stands. The number of bytes
  /// copied, 0 when blocks can only be read; a negative errno.
  virtual std::int64_t copyTo(int /*target*/, std::uint32_t /*first*/, std::uint32_t /*count*/) {
    return 0;
  }
};

/// The blocks of an image file. Null when it cannot be opened or is no regular file.
std::unique_ptr<BlockReader> openImageBlocks(const std::string& file);

}  // namespace korvenal
