#include "platform/linux/engine/IsoLayout.h"

#include <atomic>
#include <system_error>

#include "platform/Paths.h"
#include "platform/linux/engine/SlowCalls.h"
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
    auto place = ids_.find(path.substr(0, end));
    if (place == ids_.end()) {
      const std::string_view known = keep(path.substr(0, end));
      place = ids_.emplace(known, static_cast<std::uint32_t>(folders_.size())).first;
      folders_.push_back({known.substr(start), id});
    }
    id = place->second;
  }
  lastPath_ = path;
  lastId_ = id;
  return id;
}

std::string_view IsoLayout::keep(std::string_view text) {
  auto* place = static_cast<char*>(memory_.allocate(text.size() + 1, 1));
  text.copy(place, text.size());
  return {place, text.size()};
}

std::string IsoLayout::pathOf(std::uint32_t folder, std::string_view name) const {
  std::string path(name);
  for (std::uint32_t id = folder; id != 0; id = folders_[id].parent) {
    path.insert(0, 1, Paths::DiscSeparator);
    path.insert(0, folders_[id].name);
  }
  return path;
}

void IsoLayout::createDir(std::string_view parent, std::string_view name, std::string_view source) {
  std::string path(bare(parent));
  if (!path.empty()) path += Paths::DiscSeparator;
  const std::uint32_t id = folderId(path.append(name));
  if (!source.empty() && id != 0) folders_[id].source = keep(source);
}

void IsoLayout::insert(NewFile file) {
  files_.push_back(
      {keep(file.name), folderId(file.parent), keep(file.source), file.range, file.planned});
}

std::string IsoLayout::findFault(const File& file, const SourceState& state) {
  const std::int64_t length = file.range.length < 0 ? state.size : file.range.length;
  // Written so that no sum of what was given can overflow.
  const bool fits = file.range.offset >= 0 && file.range.offset <= state.size &&
                    length <= state.size - file.range.offset;
  return fits ? "" : "The file has changed";
}

std::optional<SourceFinding> IsoLayout::measureFile(std::size_t index) {
  File& file = files_[index];
  SourceFinding finding{static_cast<std::int32_t>(index), {}, {}};
  SourceState state;
  int error = 0;
  if (openSourceFile(std::string(file.source), state, error)) {
    finding.now = state.toInfo();
    finding.reason = findFault(file, state);
  } else {
    finding.reason = std::system_category().message(error);
  }
  file.unsaved = !finding.reason.empty();
  if (file.unsaved) return finding;
  file.found = state;
  const bool asPlanned =
      !file.planned ||
      (file.planned->size == state.size &&
       file.planned->modified.value_or(state.modified.seconds) == state.modified.seconds);
  return asPlanned ? std::nullopt : std::optional(finding);
}

std::vector<SourceFinding> IsoLayout::measure(const std::function<bool()>& pump) {
  std::vector<SourceFinding> findings;
  std::atomic<bool> stop = pump();
  runAside(
      [&] {
        for (std::size_t i = 0; i < files_.size() && !stop; ++i) {
          if (files_[i].found || files_[i].leftOut) continue;
          if (auto finding = measureFile(i)) findings.push_back(std::move(*finding));
        }
      },
      [&] { stop = pump() || stop; });
  return findings;
}

const SourceState* IsoLayout::measured(std::size_t file) const {
  return file < files_.size() && files_[file].found ? &*files_[file].found : nullptr;
}

void IsoLayout::leaveOut(std::size_t file) {
  if (file < files_.size()) files_[file].leftOut = true;
}

std::shared_ptr<PreparedTrack> IsoLayout::prepare(Request request, std::string& why) const {
  TreeBuilder builder(*this, std::move(request));
  return builder.build(why);
}

}  // namespace korvenal
