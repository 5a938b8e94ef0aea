#include "platform/linux/engine/EarlierTree.h"

#include <libisofs/libisofs.h>

#include <vector>

#include "platform/Paths.h"
#include "platform/linux/engine/DiscReader.h"
#include "platform/linux/engine/IsoSource.h"

namespace korvenal {

namespace {

constexpr std::int64_t MaxEarlierEntries = 4'000'000;

}  // namespace

/// Goes through the earlier tree once, because the library would follow a crafted loop of folders
/// for ever.
bool EarlierTree::isSane() {
  const auto reader = DiscReader::open(libraries_, std::move(toCheck_), start_);
  if (!reader) return false;
  std::vector<std::string> waiting = {""};
  std::int64_t entries = 0;
  while (!waiting.empty()) {
    const std::string folder = std::move(waiting.back());
    waiting.pop_back();
    for (const std::string& name : reader->list(folder)) {
      if (stop_ || ++entries > MaxEarlierEntries) return false;
      std::string path = folder;
      if (!path.empty()) path += Paths::DiscSeparator;
      path += name;
      if (reader->info(path).kind == FileInfo::Kind::Folder) waiting.push_back(std::move(path));
    }
  }
  return true;
}

bool EarlierTree::importInto(Iso_Image* image) {
  const auto cache = std::make_shared<BlockCache>(std::move(toImport_));
  const DataSourcePtr source = newDataSource(cache);
  const ReadOptionsPtr options = newReadOptions(start_);
  return source && options && isSane() &&
         iso_image_import(image, source.get(), options.get(), nullptr) >= 0;
}

}  // namespace korvenal
