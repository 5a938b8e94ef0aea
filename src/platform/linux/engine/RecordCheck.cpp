#include "platform/linux/engine/RecordCheck.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/BurnEngine.h"

namespace korvenal {

namespace {

using RecordBlock = std::array<std::uint8_t, BlockBytes>;

constexpr std::uint32_t FirstDescriptorAt = 16;
constexpr std::uint32_t MostDescriptors = 16;
constexpr std::size_t RootRecordAt = 156;
constexpr std::uint8_t BootRecord = 0;
constexpr std::uint8_t PrimaryVolume = 1;
constexpr std::uint8_t OtherVolume = 2;
constexpr std::uint8_t LastDescriptor = 255;

constexpr std::size_t RecordHead = 33;  ///< bytes of a record in front of its name
constexpr std::uint8_t FolderFlag = 0x02;
constexpr std::uint8_t MoreFollows = 0x80;  ///< the file goes on in the next record
constexpr std::uint8_t OwnName = 0;
constexpr std::uint8_t NameOfAbove = 1;
constexpr std::string_view RelocationFolder = "RR_MOVED";  ///< the library passes over it

constexpr std::int64_t MostFolderBytes = std::int64_t{1} << 30;
constexpr std::int64_t MostEntries = 4'000'000;
constexpr int MostEmptyBlocks = 64;
constexpr int MostContinuations = 64;
constexpr std::uint64_t MostContinuationBytes = std::uint64_t{32} * BlockBytes;

bool isDescriptor(const RecordBlock& block) {
  return std::memcmp(block.data() + 1, "CD001", 5) == 0;
}

/// A number that stands there in both orders of its bytes. A file that is not where the disc says
/// would be read as something else, so both must agree.
std::optional<std::uint32_t> numberAt(const std::uint8_t* bytes) {
  const std::uint32_t little = littleEndian32(bytes);
  const std::uint32_t big = std::uint32_t{bytes[4]} << 24U | std::uint32_t{bytes[5]} << 16U |
                            std::uint32_t{bytes[6]} << 8U | bytes[7];
  return little == big ? std::optional(little) : std::nullopt;
}

}  // namespace

/// A record within its block.
struct RecordCheck::Record {
  std::uint32_t block = 0;  ///< of what it names
  std::uint32_t bytes = 0;
  std::uint8_t flags = 0;
  std::string_view name;
  ByteArea use;  ///< behind the name

  /// `room` bytes are left of the block.
  static std::optional<Record> read(const std::uint8_t* bytes, std::size_t room);
  bool isFolder() const { return (flags & FolderFlag) != 0; }
  bool isNamed(std::uint8_t byte) const {
    return name.size() == 1 && static_cast<std::uint8_t>(name[0]) == byte;
  }
};

std::optional<RecordCheck::Record> RecordCheck::Record::read(const std::uint8_t* bytes,
                                                             std::size_t room) {
  const std::size_t length = bytes[0];
  if (room <= RecordHead || length <= RecordHead || length > room) return std::nullopt;
  const std::size_t nameBytes = bytes[32];
  const bool simple = bytes[1] == 0 && bytes[26] == 0 && bytes[27] == 0;
  if (nameBytes == 0 || RecordHead + nameBytes > length || !simple) return std::nullopt;
  const auto block = numberAt(bytes + 2);
  const auto size = numberAt(bytes + 10);
  if (!block || !size) return std::nullopt;
  Record record{*block, *size, bytes[25], {}, {}};
  record.name = {reinterpret_cast<const char*>(bytes) + RecordHead, nameBytes};
  const std::size_t end = RecordHead + nameBytes + (nameBytes % 2 == 0 ? 1 : 0);
  if (end < length) record.use = {bytes + end, length - end};
  return record;
}

/// A folder while its records are counted.
struct RecordCheck::Folder {
  bool isRoot = false;
  FolderCount count;
  std::string unfinished;  ///< a file that goes on in the next record
};

bool RecordCheck::lookAtHead(std::uint32_t start) {
  RecordBlock block{};
  std::vector<Root> roots;
  for (std::uint32_t i = 0; i < MostDescriptors; ++i) {
    if (disc_.read(start + FirstDescriptorAt + i, block.data()) != 0 || !isDescriptor(block)) break;
    if (i == 0 && block[0] != PrimaryVolume) return false;
    if (block[0] == LastDescriptor) break;
    if (block[0] == BootRecord) bootable_ = true;
    if (i > 0 && block[0] != OtherVolume) continue;
    const std::uint8_t* record = block.data() + RootRecordAt;
    const auto at = numberAt(record + 2);
    const auto bytes = numberAt(record + 10);
    if (!at || !bytes) return false;
    roots.push_back({*at, *bytes});
  }
  for (std::size_t i = 0; i < roots.size(); ++i)
    if ((i == 0 || !rockRidge_) && !isRootSound(roots[i], i == 0)) return false;
  return !roots.empty();
}

bool RecordCheck::isRootSound(const Root& root, bool isPrimary) {
  roots_.push_back(root.block);
  RecordBlock block{};
  if (disc_.read(root.block, block.data()) != 0) return false;
  const auto own = Record::read(block.data(), block.size());
  if (!own || !isOwnRecord(*own, OwnName) || own->block != root.block || own->bytes != root.bytes)
    return false;
  return !isPrimary || findRockRidge(*own);
}

bool RecordCheck::isOwnRecord(const Record& record, std::uint8_t name) const {
  return record.isNamed(name) && record.isFolder() && (record.flags & MoreFollows) == 0;
}

/// The record of a root tells whether there are extensions, and where in all other records.
bool RecordCheck::findRockRidge(const Record& own) {
  SystemUse use;
  if (!SystemUse::announcesItself(own.use)) return true;
  if (!readSystemUse(own, use)) return false;
  skip_ = use.skip;
  rockRidge_ = use.rockRidge;
  // The library looks at this record once more, as at all others.
  SystemUse again;
  return !rockRidge_ || (readSystemUse(own, again) && S_ISDIR(again.mode) &&
                         again.childBlock == 0 && !again.moved);
}

bool RecordCheck::readContinuation(const SystemUseContinuation& where,
                                   std::vector<std::uint8_t>& area) {
  if (std::uint64_t{where.offset} + where.bytes > MostContinuationBytes || where.bytes < 4)
    return false;
  std::vector<std::uint8_t> blocks;
  for (std::uint32_t i = 0; i * BlockBytes < std::int64_t{where.offset} + where.bytes; ++i) {
    blocks.resize(blocks.size() + BlockBytes);
    if (disc_.read(where.block + i, blocks.data() + std::size_t{i} * BlockBytes) != 0) return false;
  }
  area.assign(blocks.begin() + where.offset, blocks.begin() + where.offset + where.bytes);
  // The library takes the first entry of such an area as it is.
  return !SystemUse::endsAt({area.data(), area.size()});
}

bool RecordCheck::readSystemUse(const Record& record, SystemUse& use) {
  ByteArea area = record.use.behind(skip_);
  std::vector<std::uint8_t> continued;
  for (int count = 0; count < MostContinuations; ++count) {
    SystemUseContinuation next;
    if (!use.read(area, next)) return false;
    if (next.bytes == 0) return true;
    if (!readContinuation(next, continued)) return false;
    area = {continued.data(), continued.size()};
  }
  return false;
}

std::optional<FolderCount> RecordCheck::lookAtFolder(std::uint32_t block, std::int64_t bytes) {
  if (bytes <= 0 || bytes > MostFolderBytes) return std::nullopt;
  Folder folder;
  for (const std::uint32_t root : roots_) folder.isRoot = folder.isRoot || root == block;
  RecordBlock records{};
  int emptyBlocks = 0;
  for (std::int64_t done = 0; done < bytes; done += BlockBytes, ++block) {
    if (disc_.read(block, records.data()) != 0) return std::nullopt;
    if (records[0] == 0 && ++emptyBlocks > MostEmptyBlocks) return std::nullopt;
    int number = done == 0 ? 0 : 2;  // the first two are the folder's own
    for (std::size_t at = 0; at < records.size() && done + static_cast<std::int64_t>(at) < bytes;
         ++number) {
      if (records[at] == 0 && number >= 2) {
        // No record begins behind the last one of a block.
        if (std::any_of(records.begin() + static_cast<std::ptrdiff_t>(at), records.end(),
                        [](std::uint8_t byte) { return byte != 0; }))
          return std::nullopt;
        break;
      }
      const auto record = Record::read(records.data() + at, records.size() - at);
      if (!record) return std::nullopt;
      if (number == 0 &&
          (!isOwnRecord(*record, OwnName) || record->block != block || record->bytes != bytes))
        return std::nullopt;
      if (number == 1 && !isOwnRecord(*record, NameOfAbove)) return std::nullopt;
      if (number >= 2 && !countRecord(*record, folder)) return std::nullopt;
      at += records[at];
    }
  }
  if (!folder.unfinished.empty()) return std::nullopt;
  return folder.count;
}

bool RecordCheck::countRecord(const Record& record, Folder& folder) {
  if (record.isNamed(OwnName) || record.isNamed(NameOfAbove)) return false;
  if (folder.isRoot && record.name == RelocationFolder && folder.unfinished.empty()) return true;
  if (!folder.unfinished.empty() && (record.name != folder.unfinished || record.isFolder()))
    return false;
  if ((record.flags & MoreFollows) != 0) {
    folder.unfinished = record.name;
    return !record.isFolder();
  }
  if (rockRidge_) {
    if (!countRockRidge(record, folder)) return false;
  } else {
    // So much behind the name is another record that a wrong length has hidden.
    if (record.use.size > RecordHead) return false;
    ++folder.count.entries;
    if (record.isFolder()) ++folder.count.folders;
  }
  folder.unfinished.clear();
  return folder.count.entries <= MostEntries;
}

bool RecordCheck::countRockRidge(const Record& record, Folder& folder) {
  SystemUse use;
  if (!readSystemUse(record, use)) return false;
  const bool isPlain = use.childBlock == 0 && !use.moved;
  if (!folder.unfinished.empty() && (!isPlain || !S_ISREG(use.mode))) return false;
  // It is found at the place that it was moved from.
  if (use.moved) return true;
  ++folder.count.entries;
  if (!isPlain) {
    ++folder.count.folders;
    return isRelocated(use.childBlock);
  }
  if (S_ISDIR(use.mode)) ++folder.count.folders;
  return use.isKindKnown() && S_ISDIR(use.mode) == record.isFolder() &&
         (!S_ISLNK(use.mode) || use.hasTarget);
}

/// Does a folder begin there that was moved because it lay too deep?
bool RecordCheck::isRelocated(std::uint32_t block) {
  RecordBlock records{};
  if (disc_.read(block, records.data()) != 0) return false;
  const auto own = Record::read(records.data(), records.size());
  SystemUse use;
  return own && isOwnRecord(*own, OwnName) && readSystemUse(*own, use) && S_ISDIR(use.mode) &&
         use.childBlock == 0 && !use.moved;
}

}  // namespace korvenal
