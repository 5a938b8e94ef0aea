#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/linux/engine/BlockReader.h"
#include "platform/linux/engine/DiscLibraries.h"

struct Iso_Image;

namespace korvenal {

/// The tree of the sessions that are on a disc already, for an image that goes on behind them. Used
/// once, on any one thread.
class EarlierTree {
 public:
  /// Both readers read the same disc; the tree begins at block `start`.
  EarlierTree(const DiscLibraries& libraries, std::unique_ptr<BlockReader> toCheck,
              std::unique_ptr<BlockReader> toImport, std::uint32_t start,
              const std::atomic<bool>& stop)
      : libraries_(libraries),
        toCheck_(std::move(toCheck)),
        toImport_(std::move(toImport)),
        start_(start),
        stop_(stop) {}

  /// Takes the tree over into the image. False when it cannot be read, or at a stop.
  bool importInto(Iso_Image* image);

 private:
  bool isSane();

  const DiscLibraries& libraries_;
  std::unique_ptr<BlockReader> toCheck_;
  std::unique_ptr<BlockReader> toImport_;
  std::uint32_t start_;
  const std::atomic<bool>& stop_;
};

}  // namespace korvenal
