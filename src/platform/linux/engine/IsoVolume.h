#pragma once

#include <sys/stat.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/engine/IsoSource.h"

struct iso_filesystem;
struct Iso_Image;

namespace korvenal {

/// A tree of a disc, read by the library folder by folder. The libraries must be up.
class IsoVolume {
 public:
  struct Entry {
    std::string name;
    struct stat status {};
    SourcePtr source;
  };

  /// The tree at block `start`; null when there is none that can be read. As soon as `stop` is set,
  /// where there is one, nothing more is read; it outlives the volume.
  static std::shared_ptr<IsoVolume> open(std::unique_ptr<BlockReader> disc, std::uint32_t start,
                                         const std::atomic<bool>* stop = nullptr);
  ~IsoVolume();
  IsoVolume(const IsoVolume&) = delete;
  IsoVolume& operator=(const IsoVolume&) = delete;

  iso_file_source* root() const { return root_.get(); }
  /// The entries of a folder, in no order. False when any part of it cannot be read, is malformed,
  /// or is not all told by the library.
  bool list(iso_file_source* folder, std::vector<Entry>& entries);
  BlockCache& cache() { return *cache_; }
  const CheckedBlocks& blocks() const { return *blocks_; }
  /// Takes the whole tree over into an image of the library. False when any of it cannot be read.
  bool importInto(Iso_Image* image, std::string& why);

 private:
  IsoVolume(std::unique_ptr<BlockReader> disc, std::uint32_t start, const std::atomic<bool>* stop);
  std::shared_ptr<CheckedBlocks> newBlocks() const;
  bool mount();
  bool readEntries(iso_file_source* folder, std::vector<Entry>& entries);
  bool isAsTold(const std::vector<Entry>& entries) const;

  std::shared_ptr<BlockCache> cache_;
  std::uint32_t start_ = 0;
  const std::atomic<bool>* stop_ = nullptr;
  std::shared_ptr<CheckedBlocks> blocks_;
  iso_filesystem* files_ = nullptr;
  SourcePtr root_;
  std::vector<SourcePtr> broken_;  ///< folders that the library must not open again
};

}  // namespace korvenal
