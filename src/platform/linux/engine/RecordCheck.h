#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/engine/BlockCache.h"
#include "platform/linux/engine/SystemUse.h"

namespace korvenal {

/// What a folder holds by its records.
struct FolderCount {
  std::int64_t entries = 0;
  std::int64_t folders = 0;  ///< among the entries

  bool operator==(const FolderCount&) const = default;
};

/// Looks at the directory records of a tree before the library does. The library believes every
/// length in them; a scratch would lead it past the ends of its buffers, or round in a circle.
class RecordCheck {
 public:
  explicit RecordCheck(BlockCache& disc) : disc_(disc) {}

  /// Looks at what leads to the tree at block `start`: the descriptors and the roots they name. It
  /// comes first; false when there is no tree that can be read.
  bool lookAtHead(std::uint32_t start);
  /// The disc starts computers: it has a table of its own outside of the tree.
  bool isBootable() const { return bootable_; }

  /// Looks at all records of the folder that begins at `block` and has `bytes` by the folder above.
  /// Nothing when one is not as it must be, or cannot be read.
  std::optional<FolderCount> lookAtFolder(std::uint32_t block, std::int64_t bytes);

 private:
  struct Record;

  struct Folder;
  struct Root {
    std::uint32_t block = 0;
    std::uint32_t bytes = 0;
  };

  bool isRootSound(const Root& root, bool isPrimary);
  bool findRockRidge(const Record& own);
  bool isOwnRecord(const Record& record, std::uint8_t name) const;
  bool readSystemUse(const Record& record, SystemUse& use);
  bool readContinuation(const SystemUseContinuation& where, std::vector<std::uint8_t>& area);
  bool countRecord(const Record& record, Folder& folder);
  bool countRockRidge(const Record& record, Folder& folder);
  bool isRelocated(std::uint32_t block);

  BlockCache& disc_;
  std::vector<std::uint32_t> roots_;
  bool rockRidge_ = false;
  bool bootable_ = false;
  std::size_t skip_ = 0;  ///< bytes in front of the extensions of each record
};

}  // namespace korvenal
