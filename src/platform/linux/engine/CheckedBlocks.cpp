#include "platform/linux/engine/CheckedBlocks.h"

#include <cstring>

#include "platform/linux/engine/MemoryRoom.h"

namespace korvenal {

namespace {

constexpr std::uint32_t SecondDescriptorAt = 17;
constexpr std::uint32_t MostBlocksOfDescriptors = 16;
constexpr std::uint8_t TypeBoot = 0;
constexpr std::uint8_t TypePartition = 3;
constexpr std::uint8_t TypeLast = 255;

}  // namespace

bool CheckedBlocks::lookAtHead(std::uint32_t start) {
  nextDescriptor_ = start + SecondDescriptorAt;
  endOfDescriptors_ = start + MostBlocksOfDescriptors + SecondDescriptorAt - 1;
  return check_.lookAtHead(start);
}

void CheckedBlocks::expectFolder(std::int64_t bytes) {
  nextDescriptor_.reset();
  folderBytes_ = bytes;
  folder_.reset();
  folderBlock_.reset();
}

bool CheckedBlocks::read(std::uint32_t block, std::uint8_t* buffer) {
  const bool well = (stop_ == nullptr || !*stop_) && readAny(block, buffer);
  failed_ = failed_ || !well;
  return well;
}

bool CheckedBlocks::readAny(std::uint32_t block, std::uint8_t* buffer) {
  if (folderBytes_) {
    folderBlock_ = block;
    folder_ = check_.lookAtFolder(block, *folderBytes_);
    folderBytes_.reset();
    lackedMemory_ = folder_ && !hasMemoryRoom(folder_->entries * LibraryBytesPerEntry);
    if (!folder_ || lackedMemory_) return false;
  }
  if (block == nextDescriptor_) return readDescriptor(block, buffer);
  return cache_->read(block, buffer) == 0;
}

/// The library looks for the end of the descriptors as far as the disc goes, and trusts a table of
/// boot images.
bool CheckedBlocks::readDescriptor(std::uint32_t block, std::uint8_t* buffer) {
  const bool inTable = block < endOfDescriptors_ && cache_->read(block, buffer) == 0 &&
                       std::memcmp(buffer + 1, "CD001", 5) == 0;
  if (!inTable) buffer[0] = TypeLast;
  if (buffer[0] == TypeBoot) buffer[0] = TypePartition;
  if (buffer[0] == TypeLast)
    nextDescriptor_.reset();
  else
    nextDescriptor_ = block + 1;
  return true;
}

}  // namespace korvenal
