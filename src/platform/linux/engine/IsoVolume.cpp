#include "platform/linux/engine/IsoVolume.h"

#include <libisofs/libisofs.h>

#include <algorithm>
#include <cstdlib>

namespace korvenal {

namespace {

bool isEntryName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos;
}

/// Kinds that the library can make something of.
bool isEntryKind(mode_t mode) {
  return S_ISDIR(mode) || S_ISREG(mode) || S_ISLNK(mode) || S_ISCHR(mode) || S_ISBLK(mode) ||
         S_ISFIFO(mode) || S_ISSOCK(mode);
}

}  // namespace

IsoVolume::IsoVolume(std::unique_ptr<BlockReader> disc, std::uint32_t start,
                     const std::atomic<bool>* stop)
    : cache_(std::make_shared<BlockCache>(std::move(disc))),
      start_(start),
      stop_(stop),
      blocks_(newBlocks()) {}

IsoVolume::~IsoVolume() {
  broken_.clear();
  root_.reset();
  if (files_ != nullptr) iso_filesystem_unref(files_);
}

std::shared_ptr<CheckedBlocks> IsoVolume::newBlocks() const {
  auto blocks = std::make_shared<CheckedBlocks>(cache_);
  if (stop_ != nullptr) blocks->stopAt(*stop_);
  return blocks;
}

std::shared_ptr<IsoVolume> IsoVolume::open(std::unique_ptr<BlockReader> disc, std::uint32_t start,
                                           const std::atomic<bool>* stop) {
  std::shared_ptr<IsoVolume> volume(new IsoVolume(std::move(disc), start, stop));
  return volume->mount() ? volume : nullptr;
}

bool IsoVolume::mount() {
  const DataSourcePtr source = newDataSource(blocks_);
  const ReadOptionsPtr options = newReadOptions(start_);
  if (!source || !options || !blocks_->lookAtHead(start_)) return false;
  if (iso_image_filesystem_new(source.get(), options.get(), 0, &files_) < 0) {
    files_ = nullptr;
    return false;
  }
  IsoFileSource* top = nullptr;
  if (files_->get_root(files_, &top) != 1 || top == nullptr) return false;
  root_.reset(top);
  return true;
}

bool IsoVolume::list(iso_file_source* folder, std::vector<Entry>& entries) {
  const auto isFolder = [folder](const SourcePtr& one) { return one.get() == folder; };
  struct stat status {};
  if (std::any_of(broken_.begin(), broken_.end(), isFolder) ||
      iso_file_source_lstat(folder, &status) < 0 || !S_ISDIR(status.st_mode))
    return false;
  blocks_->expectFolder(status.st_size);
  if (iso_file_source_open(folder) < 0) {
    // What the library had read so far it let go, but it remembers where that was.
    if (blocks_->folder()) broken_.push_back(sharedSource(folder));
    return false;
  }
  const bool well = readEntries(folder, entries);
  iso_file_source_close(folder);
  return well && isAsTold(entries);
}

bool IsoVolume::readEntries(iso_file_source* folder, std::vector<Entry>& entries) {
  entries.reserve(static_cast<std::size_t>(blocks_->folder()->entries));
  IsoFileSource* child = nullptr;
  int more = 0;
  while ((more = iso_file_source_readdir(folder, &child)) == 1) {
    Entry entry;
    entry.source.reset(child);
    char* name = iso_file_source_get_name(child);
    if (name != nullptr) entry.name = name;
    std::free(name);
    if (iso_file_source_lstat(child, &entry.status) < 0) return false;
    entries.push_back(std::move(entry));
  }
  return more == 0;
}

bool IsoVolume::isAsTold(const std::vector<Entry>& entries) const {
  FolderCount count;
  for (const Entry& entry : entries) {
    if (!isEntryName(entry.name) || !isEntryKind(entry.status.st_mode)) return false;
    ++count.entries;
    if (S_ISDIR(entry.status.st_mode)) ++count.folders;
  }
  return count == blocks_->folder();
}

bool IsoVolume::importInto(Iso_Image* image, std::string& why) {
  const auto blocks = newBlocks();
  const DataSourcePtr source = newDataSource(blocks);
  const ReadOptionsPtr options = newReadOptions(start_);
  if (!source || !options || !blocks->lookAtHead(start_)) return false;
  const int result = iso_image_import(image, source.get(), options.get(), nullptr);
  if (result < 0) why = iso_error_to_msg(result);
  return result >= 0 && !blocks->hasFailed();
}

}  // namespace korvenal
