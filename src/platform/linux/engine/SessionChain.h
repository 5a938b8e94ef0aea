#pragma once

#include <cstdint>
#include <vector>

#include "platform/linux/engine/BlockReader.h"

namespace korvenal {

/// The sessions on a disc whose blocks can be written at any time. Nothing but the trees tells of
/// them: block 0 leads to the newest; the first begins at block 32, each later one at the next
/// multiple of 32.
struct SessionChain {
  static constexpr std::int64_t HeadBlocks = 32;

  std::vector<std::uint32_t> starts;
  std::int64_t end = 0;  ///< first block behind the last; 0 for none
  /// Without a session: there is something else, or what there is cannot be read.
  bool holdsOther = false;

  /// Where the next session would begin.
  std::int64_t next() const {
    return end == 0 ? HeadBlocks : (end + HeadBlocks - 1) / HeadBlocks * HeadBlocks;
  }
};

/// Is there nothing but zeros where a disc begins? Blocks that cannot be read are not empty, those
/// behind the end of the disc are.
bool isHeadEmpty(BlockReader& disc);

/// A tree that was written to block 0, by others, counts as one session.
SessionChain readSessionChain(BlockReader& disc);

}  // namespace korvenal
