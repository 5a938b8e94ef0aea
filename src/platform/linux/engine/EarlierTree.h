#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/linux/engine/IsoLayout.h"
#include "platform/linux/engine/IsoVolume.h"

namespace korvenal {

/// The earlier sessions as the library keeps them.
struct EarlierImage {
  ImagePtr image;
};

/// The tree of the sessions that are on a disc already, for an image that goes on behind them. All
/// of it is taken over or nothing: what the new tree did not hold would be lost. On any one thread.
class EarlierTree {
 public:
  /// The tree begins at block `start`. As soon as `stop` is set, all work on it ends.
  EarlierTree(const DiscLibraries& libraries, std::unique_ptr<BlockReader> disc,
              std::uint32_t start, const std::atomic<bool>& stop)
      : libraries_(libraries), disc_(std::move(disc)), start_(start), stop_(stop) {}

  /// Once. Null when any folder cannot be read or never ends, or at a stop; `why` tells.
  std::shared_ptr<EarlierImage> take(std::string& why);

 private:
  bool check(std::string& why);
  bool importInto(Iso_Image* image, std::string& why);
  bool walk(std::string& why);

  const DiscLibraries& libraries_;
  std::unique_ptr<BlockReader> disc_;
  std::uint32_t start_;
  const std::atomic<bool>& stop_;
  std::shared_ptr<IsoVolume> volume_;
  std::int64_t entries_ = 0;  ///< in all folders
};

}  // namespace korvenal
