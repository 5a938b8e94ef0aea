#include "platform/linux/engine/IsoLayout.h"

#include "platform/Paths.h"
#include "platform/linux/engine/TreeBuilder.h"

namespace korvenal {

namespace {

/// Without separators at both ends.
std::string_view bare(std::string_view path) {
  while (path.starts_with(Paths::DiscSeparator)) path.remove_prefix(1);
  while (path.ends_with(Paths::DiscSeparator)) path.remove_suffix(1);
  return path;
}

}  // namespace

std::uint32_t IsoLayout::folderId(std::string_view path) {
  path = bare(path);
  if (path == lastPath_) return lastId_;
  std::uint32_t id = 0;
  for (std::size_t end = 0; end < path.size();) {
    const std::size_t start = end == 0 ? 0 : end + 1;
    const std::size_t next = path.find(Paths::DiscSeparator, start);
    end = next == std::string_view::npos ? path.size() : next;
    const auto [place, isNew] = ids_.try_emplace(std::string(path.substr(0, end)),
                                                 static_cast<std::uint32_t>(folders_.size()));
    if (isNew) folders_.push_back({std::string(path.substr(start, end - start)), id});
    id = place->second;
  }
  lastPath_ = path;
  lastId_ = id;
  return id;
}

std::string IsoLayout::pathOf(std::uint32_t folder, const std::string& name) const {
  std::string path = name;
  for (std::uint32_t id = folder; id != 0; id = folders_[id].parent) {
    path.insert(0, 1, Paths::DiscSeparator);
    path.insert(0, folders_[id].name);
  }
  return path;
}

void IsoLayout::createDir(std::string_view parent, std::string_view name) {
  std::string path(bare(parent));
  if (!path.empty()) path += Paths::DiscSeparator;
  folderId(path.append(name));
}

void IsoLayout::insert(NewFile file) {
  files_.push_back({std::string(file.name), folderId(file.parent), std::move(file.source),
                    file.range, file.planned});
}

std::shared_ptr<PreparedTrack> IsoLayout::prepare(Request request, std::string& why) const {
  TreeBuilder builder(*this, std::move(request));
  return builder.build(why);
}

}  // namespace korvenal
