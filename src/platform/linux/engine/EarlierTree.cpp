#include "platform/linux/engine/EarlierTree.h"

#include <libisofs/libisofs.h>

#include <algorithm>
#include <cstdlib>
#include <unordered_set>
#include <vector>

#include "platform/Paths.h"
#include "platform/linux/engine/MemoryRoom.h"

namespace korvenal {

namespace {

constexpr std::int64_t MostEarlierEntries = 2'000'000;
constexpr int MostLevels = 1000;  ///< as many as are read of any disc
constexpr const char* OutOfMemory = "Out of memory";

struct Waiting {
  SourcePtr folder;
  int level = 0;
};

std::string pathText(iso_file_source* folder) {
  char* path = iso_file_source_get_path(folder);
  std::string text = path == nullptr || *path == '\0' ? "/" : path;
  std::free(path);
  std::replace(text.begin(), text.end(), '/', Paths::DiscSeparator);
  return text;
}

/// All that is below the root of an image.
std::int64_t nodesIn(Iso_Image* image) {
  std::int64_t count = 0;
  std::vector<IsoDir*> waiting = {iso_image_get_root(image)};
  while (!waiting.empty()) {
    IsoDir* folder = waiting.back();
    waiting.pop_back();
    IsoDirIter* nodes = nullptr;
    if (iso_dir_get_children(folder, &nodes) < 0) return -1;
    IsoNode* node = nullptr;
    while (iso_dir_iter_next(nodes, &node) == 1) {
      ++count;
      if (iso_node_get_type(node) == LIBISO_DIR) waiting.push_back(reinterpret_cast<IsoDir*>(node));
    }
    iso_dir_iter_free(nodes);
  }
  return count;
}

}  // namespace

std::shared_ptr<EarlierImage> EarlierTree::take(std::string& why) {
  auto earlier = std::make_shared<EarlierImage>();
  bool taken = false;
  if (check(why)) {
    IsoImage* image = nullptr;
    if (iso_image_new("", &image) >= 0) earlier->image.reset(image);
    taken = earlier->image && importInto(image, why);
  }
  volume_.reset();
  if (stop_) why = "Operation canceled";
  return taken && !stop_ ? earlier : nullptr;
}

bool EarlierTree::check(std::string& why) {
  if (!libraries_.isReady() || !disc_) {
    why = "The earlier sessions cannot be read";
    return false;
  }
  volume_ = IsoVolume::open(std::move(disc_), start_, &stop_);
  if (volume_ && volume_->blocks().isBootable()) {
    // The new tree would lead past its boot images.
    why = "The disc starts computers, which an added session would end";
    return false;
  }
  if (!volume_) why = "The earlier sessions cannot be read";
  return volume_ && walk(why);
}

bool EarlierTree::walk(std::string& why) {
  std::vector<Waiting> waiting;
  waiting.push_back({sharedSource(volume_->root()), 0});
  std::unordered_set<std::uint32_t> seen;
  while (!waiting.empty()) {
    const Waiting here = std::move(waiting.back());
    waiting.pop_back();
    std::vector<IsoVolume::Entry> entries;
    if (!volume_->list(here.folder.get(), entries)) {
      why = volume_->blocks().lackedMemory() ? OutOfMemory
                                             : "The folder " + pathText(here.folder.get()) +
                                                   " of the earlier sessions cannot be read";
      return false;
    }
    if (!seen.insert(volume_->blocks().folderBlock().value_or(0)).second) {
      why = "The folder " + pathText(here.folder.get()) +
            " of the earlier sessions contains itself or stands there twice";
      return false;
    }
    entries_ += static_cast<std::int64_t>(entries.size());
    if (entries_ > MostEarlierEntries) {
      why = "There are too many files in the earlier sessions";
      return false;
    }
    for (IsoVolume::Entry& entry : entries) {
      if (!S_ISDIR(entry.status.st_mode)) continue;
      if (here.level == MostLevels) {
        why = "The folders of the earlier sessions lie too deep";
        return false;
      }
      waiting.push_back({std::move(entry.source), here.level + 1});
    }
    if (stop_) return false;
  }
  return true;
}

bool EarlierTree::importInto(Iso_Image* image, std::string& why) {
  if (!hasMemoryRoom(entries_ * LibraryBytesPerEntry)) {
    why = OutOfMemory;
    return false;
  }
  if (volume_->importInto(image, why) && nodesIn(image) == entries_) return true;
  if (why.empty()) why = "The earlier sessions cannot be taken over";
  return false;
}

}  // namespace korvenal
