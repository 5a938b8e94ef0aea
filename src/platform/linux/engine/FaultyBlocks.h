#pragma once

#include <cstdint>
#include <memory>

#include "platform/linux/engine/BlockReader.h"

namespace korvenal {

/// A disc that cannot be read everywhere, or that leaves the drive while it is read.
class FaultyBlocks : public BlockReader {
 public:
  /// `badBlock` and those behind it cannot be read; when `pullAfter` blocks have been read,
  /// `pulled` becomes true and nothing can be read any more. Negative numbers: never.
  FaultyBlocks(std::unique_ptr<BlockReader> disc, std::int64_t badBlock, std::int64_t pullAfter,
               std::shared_ptr<bool> pulled)
      : disc_(std::move(disc)),
        badBlock_(badBlock),
        pullAfter_(pullAfter),
        pulled_(std::move(pulled)) {}

  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override;

 private:
  std::unique_ptr<BlockReader> disc_;
  std::int64_t badBlock_;
  std::int64_t pullAfter_;
  std::int64_t blocksRead_ = 0;
  std::shared_ptr<bool> pulled_;
};

}  // namespace korvenal
