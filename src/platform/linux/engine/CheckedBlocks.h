#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/linux/engine/RecordCheck.h"

namespace korvenal {

/// The blocks of a disc on their way to the library: it gets no folder that was not looked at.
class CheckedBlocks {
 public:
  explicit CheckedBlocks(std::shared_ptr<BlockCache> cache)
      : cache_(std::move(cache)), check_(*cache_) {}

  /// To be asked before the library reads anything. False when there is no tree that it may see.
  bool lookAtHead(std::uint32_t start);
  bool isBootable() const { return check_.isBootable(); }

  /// The library's next read is the first block of a folder of so many bytes.
  void expectFolder(std::int64_t bytes);
  /// What was found of the folder; nothing when the library was not given it.
  const std::optional<FolderCount>& folder() const { return folder_; }
  /// Where the folder expected last begins; nothing when it was not read.
  const std::optional<std::uint32_t>& folderBlock() const { return folderBlock_; }

  /// Copies one block; false when it cannot be read.
  bool read(std::uint32_t block, std::uint8_t* buffer);
  /// Has a read failed since the beginning?
  bool hasFailed() const { return failed_; }
  /// Was there too little memory for a folder?
  bool lackedMemory() const { return lackedMemory_; }
  /// From here on every read fails as soon as this is set. It outlives the blocks.
  void stopAt(const std::atomic<bool>& stop) { stop_ = &stop; }

  BlockCache& cache() { return *cache_; }

 private:
  bool readDescriptor(std::uint32_t block, std::uint8_t* buffer);
  bool readAny(std::uint32_t block, std::uint8_t* buffer);

  std::shared_ptr<BlockCache> cache_;
  RecordCheck check_;
  std::optional<std::uint32_t> nextDescriptor_;
  std::uint32_t endOfDescriptors_ = 0;
  std::optional<std::int64_t> folderBytes_;  ///< of the folder that is expected
  std::optional<FolderCount> folder_;
  std::optional<std::uint32_t> folderBlock_;
  const std::atomic<bool>* stop_ = nullptr;
  bool failed_ = false;
  bool lackedMemory_ = false;
};

}  // namespace korvenal
