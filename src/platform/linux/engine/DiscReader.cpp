#include "platform/linux/engine/DiscReader.h"

#include <libisofs/libisofs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

#include "platform/BurnEngine.h"
#include "platform/Paths.h"
#include "platform/linux/engine/IsoSource.h"
#include "platform/linux/engine/VolumeLabel.h"

namespace korvenal {

namespace {

constexpr std::size_t MaxEntriesKept =
    50'000;  ///< over all folders kept; the last and those above it stay
constexpr std::size_t MaxDepth = 1000;
constexpr std::size_t LongFolder = 5000;           ///< entries: some ten milliseconds
constexpr std::int64_t LongFolderBytes = 500'000;  ///< of their records

FileInfo infoOf(const struct stat& status, std::string_view name) {
  FileInfo info;
  info.kind = S_ISDIR(status.st_mode)   ? FileInfo::Kind::Folder
              : S_ISREG(status.st_mode) ? FileInfo::Kind::File
                                        : FileInfo::Kind::Other;
  if (info.kind == FileInfo::Kind::File) info.size = static_cast<std::int64_t>(status.st_size);
  info.modified = status.st_mtime;
  info.inode = status.st_ino;
  info.permissions = status.st_mode & 0777;
  info.owner = status.st_uid;
  info.group = status.st_gid;
  if ((status.st_mode & 0222) == 0) info.attributes |= AttributeReadOnly;
  if (!name.empty() && name[0] == '.') info.attributes |= AttributeHidden;
  if (info.kind == FileInfo::Kind::Folder) info.attributes |= AttributeFolder;
  if (info.kind == FileInfo::Kind::Other) info.attributes |= AttributeDevice;
  return info;
}

}  // namespace

/// The entries of a folder, sorted by the bytes of their names.
struct DiscReader::Folder {
  struct Entry {
    std::string name;
    FileInfo info;
    SourcePtr source;
  };
  std::vector<Entry> entries;

  const Entry* find(std::string_view name) const;
};

DiscReader::FolderPtr DiscReader::readFolder(IsoFileSource* source) const {
  std::vector<IsoVolume::Entry> entries;
  if (!volume_->list(source, entries)) return nullptr;
  auto folder = std::make_shared<Folder>();
  folder->entries.reserve(entries.size());
  for (IsoVolume::Entry& entry : entries) {
    FileInfo info = infoOf(entry.status, entry.name);
    folder->entries.push_back({std::move(entry.name), std::move(info), std::move(entry.source)});
  }
  std::stable_sort(folder->entries.begin(), folder->entries.end(),
                   [](const Folder::Entry& a, const Folder::Entry& b) { return a.name < b.name; });
  return folder;
}

const DiscReader::Folder::Entry* DiscReader::Folder::find(std::string_view name) const {
  const auto place =
      std::lower_bound(entries.begin(), entries.end(), name,
                       [](const Entry& entry, std::string_view key) { return entry.name < key; });
  return place != entries.end() && place->name == name ? &*place : nullptr;
}

namespace {

class DiscStream : public FileStream {
 public:
  DiscStream(std::shared_ptr<void> volume, BlockCache& cache, SourcePtr source,
             const FileInfo& info)
      : volume_(std::move(volume)), cache_(cache), source_(std::move(source)), info_(info) {}
  ~DiscStream() override { iso_file_source_close(source_.get()); }

  const FileInfo& info() const override { return info_; }
  std::int64_t read(std::int64_t offset, char* buffer, std::size_t bytes) override;
  std::int64_t copyTo(int target, std::int64_t offset, std::size_t bytes) override;

 private:
  static constexpr std::size_t LargeBytes = 131072;  ///< from here on a read goes past the library

  bool seek(std::int64_t offset);
  std::int64_t readSmall(std::int64_t offset, char* buffer, std::size_t bytes);
  std::int64_t readLarge(std::int64_t offset, char* buffer, std::size_t bytes);
  bool findBlocks(std::int64_t offset, std::size_t bytes);
  template <typename Run>
  std::int64_t eachRun(const Run& run);

  std::shared_ptr<void> volume_;  ///< keeps what the source reads from
  BlockCache& cache_;
  SourcePtr source_;
  FileInfo info_;
  std::int64_t position_ = 0;          ///< where the library stands; -1: somewhere
  std::vector<std::uint32_t> blocks_;  ///< of the large read under way
};

bool DiscStream::seek(std::int64_t offset) {
  return offset == position_ || iso_file_source_lseek(source_.get(), offset, 0) == offset;
}

std::int64_t DiscStream::read(std::int64_t offset, char* buffer, std::size_t bytes) {
  if (cache_.isDetached()) return -ENXIO;
  const std::int64_t size = info_.size.whole();
  if (offset < 0) return -EINVAL;
  if (offset >= size) return 0;
  // Asking for exactly what is there spares the library's look at the block behind the end.
  bytes = static_cast<std::size_t>(
      std::min<std::int64_t>(size - offset, static_cast<std::int64_t>(bytes)));
  const std::int64_t large = readLarge(offset, buffer, bytes);
  if (large < 0) return large;
  const auto done = static_cast<std::size_t>(large);
  if (done == bytes) return static_cast<std::int64_t>(bytes);
  const std::int64_t got =
      readSmall(offset + static_cast<std::int64_t>(done), buffer + done, bytes - done);
  return got < 0 ? got : static_cast<std::int64_t>(bytes);
}

std::int64_t DiscStream::readSmall(std::int64_t offset, char* buffer, std::size_t bytes) {
  if (!seek(offset)) return -EIO;
  position_ = -1;
  std::size_t done = 0;
  while (done < bytes) {
    const int got = iso_file_source_read(source_.get(), buffer + done, bytes - done);
    if (got <= 0) return -EIO;
    done += static_cast<std::size_t>(got);
  }
  position_ = offset + static_cast<std::int64_t>(bytes);
  return static_cast<std::int64_t>(bytes);
}

/// The blocks in the order of the file, as runs of neighbours.
template <typename Run>
std::int64_t DiscStream::eachRun(const Run& run) {
  std::int64_t done = 0;
  for (std::size_t begin = 0, end = 0; begin < blocks_.size(); begin = end) {
    for (end = begin + 1; end < blocks_.size() && blocks_[end] == blocks_[end - 1] + 1;) ++end;
    const auto count = static_cast<std::uint32_t>(end - begin);
    const std::int64_t got = run(blocks_[begin], count);
    if (got < 0) return done > 0 ? done : got;
    done += got;
    if (got != std::int64_t{count} * BlockBytes) break;
  }
  return done;
}

/// Reads whole blocks straight into the buffer, in as few pieces as they lie in. The bytes read, 0
/// when the library has to read them.
std::int64_t DiscStream::readLarge(std::int64_t offset, char* buffer, std::size_t bytes) {
  if (!findBlocks(offset, bytes)) return 0;
  auto* to = reinterpret_cast<std::uint8_t*>(buffer);
  return eachRun([&](std::uint32_t first, std::uint32_t count) {
    const int error = cache_.readAround(first, count, to);
    to += std::size_t{count} * BlockBytes;
    return error != 0 ? error : std::int64_t{count} * BlockBytes;
  });
}

std::int64_t DiscStream::copyTo(int target, std::int64_t offset, std::size_t bytes) {
  if (cache_.isDetached()) return -ENXIO;
  const std::int64_t rest = info_.size.whole() - offset;
  bytes =
      static_cast<std::size_t>(std::clamp<std::int64_t>(rest, 0, static_cast<std::int64_t>(bytes)));
  if (!findBlocks(offset, bytes)) return 0;
  return eachRun([&](std::uint32_t first, std::uint32_t count) {
    return cache_.disc()->copyTo(target, first, count);
  });
}

/// Lets the library walk over the bytes without reading them, to learn where they lie. It seeks
/// first, so that a place in the middle of a block shows as one block more.
bool DiscStream::findBlocks(std::int64_t offset, std::size_t bytes) {
  const std::size_t blocks = bytes / BlockBytes;
  if (bytes < LargeBytes || offset % BlockBytes != 0) return false;
  std::array<char, 16 * BlockBytes> scratch;
  const BlockCache::Noting noting(cache_, blocks_);
  position_ = -1;
  if (!seek(offset)) return false;
  for (std::size_t left = blocks * BlockBytes; left > 0;) {
    const int got =
        iso_file_source_read(source_.get(), scratch.data(), std::min(left, scratch.size()));
    if (got <= 0) return false;
    left -= static_cast<std::size_t>(got);
  }
  return blocks_.size() == blocks;
}

}  // namespace

std::shared_ptr<DiscReader> DiscReader::open(const DiscLibraries& libraries,
                                             std::unique_ptr<BlockReader> disc, std::uint32_t start,
                                             ReaderAid aid) {
  if (!libraries.isReady() || !disc) return nullptr;
  const auto head = readVolumeHead(*disc, start);
  if (!head) return nullptr;
  auto volume = IsoVolume::open(std::move(disc), start);
  if (!volume) return nullptr;
  std::shared_ptr<DiscReader> reader(new DiscReader(std::move(volume), aid));
  reader->label_ = head->label;
  return reader;
}

DiscReader::~DiscReader() = default;

bool DiscReader::isAway() const {
  return atWork_ || !volume_ || volume_->cache().isDetached();
}

void DiscReader::detach() {
  detachWanted_ = atWork_;
  if (isAway()) return;
  volume_->cache().detach();
  struct Kept {
    std::shared_ptr<IsoVolume> volume;
    std::map<std::string, FolderPtr, std::less<>> folders;
    FolderPtr last;
  };
  auto kept = std::make_shared<Kept>();
  kept->volume = std::move(volume_);
  kept->folders = std::move(folders_);
  kept->last = std::move(last_);
  order_.clear();
  entriesKept_ = 0;
  // The library counts shares in a way that is not safe among threads.
  const bool sharedWithStreams = kept->volume.use_count() > 1;
  if (aid_.release != nullptr && !sharedWithStreams) aid_.release->take(std::move(kept));
}

/// The first to make room for the folder. Those above it stay: the next of their folders would have
/// them read again.
std::deque<std::string>::const_iterator DiscReader::oldestBeside(std::string_view path) const {
  return std::find_if(order_.begin(), order_.end(), [path](const std::string& key) {
    const bool above = key.empty() || (path.size() > key.size() && path.starts_with(key) &&
                                       path[key.size()] == Paths::DiscSeparator);
    return !above;
  });
}

void DiscReader::keep(std::string_view path, const FolderPtr& folder) {
  entriesKept_ += folder->entries.size() + 1;
  for (auto oldest = oldestBeside(path); entriesKept_ > MaxEntriesKept && oldest != order_.end();
       oldest = oldestBeside(path)) {
    const auto known = folders_.find(*oldest);
    entriesKept_ -= known->second->entries.size() + 1;
    folders_.erase(known);
    order_.erase(oldest);
  }
  order_.emplace_back(path);
  folders_.emplace(path, folder);
}

DiscReader::FolderPtr DiscReader::folderAt(std::string_view path) {
  if (isAway() || path.starts_with(Paths::DiscSeparator)) return nullptr;
  if (last_ && lastPath_ == path) return last_;
  FolderPtr folder = findFolder(path);
  if (detachWanted_) {
    folder.reset();
    detach();
    return nullptr;
  }
  if (folder) {
    lastPath_ = path;
    last_ = folder;
  }
  return folder;
}

DiscReader::FolderPtr DiscReader::findFolder(std::string_view path) {
  FolderPtr folder;
  std::size_t depth = 0;
  for (std::size_t end = 0;; ++depth) {
    // Each round: the folder at the first `end` bytes of the path.
    const std::string_view prefix = path.substr(0, end);
    const auto known = folders_.find(prefix);
    folder = known != folders_.end() ? known->second : fetch(prefix, folder);
    if (!folder || end == path.size()) return folder;
    if (depth >= MaxDepth) return nullptr;
    const std::size_t next = path.find(Paths::DiscSeparator, end == 0 ? 0 : end + 1);
    end = next == std::string_view::npos ? path.size() : next;
  }
}

/// What the library knows of a folder in the folder above; null when it is none.
IsoFileSource* DiscReader::sourceOf(std::string_view path, const FolderPtr& above) const {
  if (path.empty()) return volume_->root();
  const std::size_t cut = path.rfind(Paths::DiscSeparator);
  const auto name = cut == std::string_view::npos ? path : path.substr(cut + 1);
  const Folder::Entry* entry = above->find(name);
  const bool isFolder = entry != nullptr && entry->info.kind == FileInfo::Kind::Folder;
  return isFolder ? entry->source.get() : nullptr;
}

/// Reads a folder that is not kept yet.
DiscReader::FolderPtr DiscReader::fetch(std::string_view path, const FolderPtr& above) {
  IsoFileSource* source = sourceOf(path, above);
  if (source == nullptr) return nullptr;
  FolderPtr folder;
  const auto work = [&] {
    last_.reset();  // not to be the last share in a folder that makes room
    folder = readFolder(source);
    if (folder) keep(path, folder);
  };
  if (aid_.calls == nullptr || aid_.calls->isAtWork() || !isLong(source, path)) {
    work();
  } else {
    atWork_ = true;
    aid_.calls->run(work);
    atWork_ = false;
  }
  return detachWanted_ ? nullptr : folder;
}

/// Whether the folder, or the one that makes room for it, is so large that it takes its time.
bool DiscReader::isLong(IsoFileSource* source, std::string_view path) const {
  struct stat status {};
  if (iso_file_source_lstat(source, &status) >= 0 && status.st_size >= LongFolderBytes) return true;
  if (entriesKept_ + LongFolder <= MaxEntriesKept) return false;
  const auto oldest = oldestBeside(path);
  return oldest != order_.end() && folders_.find(*oldest)->second->entries.size() >= LongFolder;
}

namespace {

struct PathParts {
  std::string_view folder;
  std::string_view name;
};

PathParts partsOf(std::string_view discPath) {
  const std::size_t cut = discPath.rfind(Paths::DiscSeparator);
  if (cut == std::string_view::npos) return {{}, discPath};
  return {discPath.substr(0, cut), discPath.substr(cut + 1)};
}

std::string_view withoutSeparators(std::string_view discPath) {
  while (!discPath.empty() && discPath.back() == Paths::DiscSeparator) discPath.remove_suffix(1);
  return discPath;
}

}  // namespace

FileInfo DiscReader::info(std::string_view discPath) {
  discPath = withoutSeparators(discPath);
  if (isAway()) return {};
  if (discPath.empty()) {
    struct stat status {};
    if (iso_file_source_lstat(volume_->root(), &status) < 0) return {};
    return infoOf(status, {});
  }
  const PathParts parts = partsOf(discPath);
  const FolderPtr folder = folderAt(parts.folder);
  const Folder::Entry* entry = folder ? folder->find(parts.name) : nullptr;
  return entry != nullptr ? entry->info : FileInfo();
}

std::vector<std::string> DiscReader::list(std::string_view discPath) {
  std::vector<std::string> names;
  const FolderPtr folder = folderAt(withoutSeparators(discPath));
  if (!folder) return names;
  names.reserve(folder->entries.size());
  for (const Folder::Entry& entry : folder->entries) names.push_back(entry.name);
  return names;
}

std::unique_ptr<FileStream> DiscReader::openFile(std::string_view discPath) {
  const PathParts parts = partsOf(discPath);
  FolderPtr folder = folderAt(parts.folder);
  const Folder::Entry* entry = folder ? folder->find(parts.name) : nullptr;
  if (entry == nullptr || entry->info.kind != FileInfo::Kind::File) return nullptr;
  SourcePtr source = sharedSource(entry->source.get());
  if (iso_file_source_open(source.get()) < 0) {
    // Open already: a file that is read twice at once needs a second object of the library. Nothing
    // is held meanwhile, because the disc may leave and be let go on another thread.
    source.reset();
    folder.reset();
    folder = freshFolderAt(parts.folder);
    entry = folder ? folder->find(parts.name) : nullptr;
    if (entry == nullptr || entry->info.kind != FileInfo::Kind::File) return nullptr;
    source = sharedSource(entry->source.get());
    if (iso_file_source_open(source.get()) < 0) return nullptr;
  }
  return std::make_unique<DiscStream>(volume_, volume_->cache(), std::move(source), entry->info);
}

DiscReader::FolderPtr DiscReader::freshFolderAt(std::string_view path) {
  if (path.empty()) return readFolder(volume_->root());
  const PathParts parts = partsOf(path);
  const FolderPtr above = folderAt(parts.folder);
  const Folder::Entry* entry = above ? above->find(parts.name) : nullptr;
  return entry != nullptr ? readFolder(entry->source.get()) : nullptr;
}

}  // namespace korvenal
