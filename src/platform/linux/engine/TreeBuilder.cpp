#include "platform/linux/engine/TreeBuilder.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include "platform/FaultList.h"
#include "platform/Text.h"
#include "platform/linux/engine/SlowCalls.h"
#include "platform/linux/engine/TrackFeed.h"

namespace korvenal {

namespace {

constexpr std::size_t MaxNameBytes = 255;
constexpr mode_t FolderMode = 0755;
constexpr mode_t FileMode = 0644;
constexpr const char* NotAsPlannedText = "The file has changed";
constexpr const char* StoppedText = "Operation canceled";

bool isNameForDisc(std::string_view name) {
  return !name.empty() && name.size() <= MaxNameBytes && name != "." && name != ".." &&
         name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

/// A second file of a name that is taken: "name (2)".
std::string alternative(const std::string& name, int number) {
  const std::string end = " (" + std::to_string(number) + ")";
  return std::string(Text::firstBytes(name, MaxNameBytes - end.size())) + end;
}

}  // namespace

void ImageRelease::operator()(Iso_Image* image) const {
  iso_image_unref(image);
}
void WriteOptionsRelease::operator()(iso_write_opts* options) const {
  iso_write_opts_free(options);
}

WriteOptionsPtr PreparedTrack::writeOptions() {
  IsoWriteOpts* plain = nullptr;
  if (iso_write_opts_new(&plain, 0) < 0) return nullptr;
  WriteOptionsPtr options(plain);
  iso_write_opts_set_iso_level(plain, 3);
  iso_write_opts_set_rockridge(plain, 1);
  iso_write_opts_set_joliet(plain, joliet ? 1 : 0);
  // Without these, other readers lose files in deep folders and with long names.
  iso_write_opts_set_allow_deep_paths(plain, 1);
  iso_write_opts_set_allow_longer_paths(plain, 1);
  iso_write_opts_set_joliet_longer_paths(plain, 1);
  iso_write_opts_set_joliet_long_names(plain, 1);
  iso_write_opts_set_output_charset(plain, "UTF-8");
  // Plain readers and those of Joliet know no other date of a file than that of its record.
  constexpr int AllTrees = 7;
  iso_write_opts_set_dir_rec_mtime(plain, AllTrees);
  // Labels hold blanks and '#', which the strict rules would turn into '_'.
  iso_write_opts_set_relaxed_vol_atts(plain, 1);
  iso_write_opts_set_ms_block(plain, startBlock);
  iso_write_opts_set_appendable(plain, appended ? 1 : 0);
  iso_write_opts_set_overwrite_buf(plain, head.data());
  return options;
}

bool TreeBuilder::stopped() {
  if (stop_) why_ = StoppedText;
  return stop_;
}

std::shared_ptr<PreparedTrack> TreeBuilder::build(std::string& why) {
  const auto pump = [this] { stop_ = (request_.pump && request_.pump()) || stop_; };
  now_ = layout_.clock_.now();
  if (!request_.earlier && request_.openEarlier) earlierDisc_ = request_.openEarlier();
  bool built = false;
  pump();  // quick work is over before the next
  runAside([&] { built = doBuild(); }, pump);
  if (built && !stopped()) return track_;
  why = why_;
  if (request_.release != nullptr) request_.release->take(std::move(track_));
  return nullptr;
}

bool TreeBuilder::doBuild() {
  track_->startBlock = request_.startBlock;
  track_->gap = request_.gap;
  track_->joliet = request_.joliet;
  track_->context.skipFaults = request_.skipFaults;
  if (request_.release != nullptr) request_.release->wait();
  IsoImage* image = nullptr;
  const bool made = iso_image_new("", &image) >= 0;
  track_->image.reset(image);
  if (!made) why_ = "Out of memory";
  return made && inspectSources() && importEarlier() && addChildren() && addFaultList() &&
         measure() && fitFaultList();
}

bool TreeBuilder::inspectSources() {
  looks_.resize(layout_.files_.size());
  // Streams point into this: it must not move any more.
  track_->sources.resize(layout_.files_.size());
  for (std::uint32_t i = 0; i < layout_.files_.size(); ++i)
    if (stopped() || !inspect(i)) return false;
  return true;
}

bool TreeBuilder::leaveOut(std::uint32_t index, const std::string& reason) {
  const auto& file = layout_.files_[index];
  looks_[index].leftOut = true;
  const std::string source(file.source);
  track_->leftOut.push_back({layout_.pathOf(file.parent, file.name), source, reason});
  if (request_.skipFaults) return true;
  why_ = source + ": " + reason;
  return false;
}

bool TreeBuilder::inspect(std::uint32_t index) {
  const auto& file = layout_.files_[index];
  if (file.leftOut || file.unsaved) {
    looks_[index].leftOut = true;
    return true;
  }
  if (!isNameForDisc(file.name)) return leaveOut(index, "The name is not possible on a disc");
  StreamSource& source = track_->sources[index];
  source.path = file.source;
  std::string fault;
  if (file.found) {
    source.state = *file.found;
  } else if (int error = 0; !openSourceFile(source.path, source.state, error)) {
    fault = std::system_category().message(error);
  } else {
    fault = IsoLayout::findFault(file, source.state);
    const auto& planned = file.planned;
    const std::int64_t modified = source.state.modified.seconds;
    if (planned &&
        (planned->size != source.state.size || planned->modified.value_or(modified) != modified))
      fault = NotAsPlannedText;
  }
  if (!fault.empty()) return leaveOut(index, fault);
  const SourceState& state = source.state;
  looks_[index] = {state.keeping.mode & 0777, state.keeping.owner, state.keeping.group,
                   state.modified.seconds, false};
  source.discPath = layout_.pathOf(file.parent, file.name);
  source.offset = file.range.offset;
  source.length = file.range.length < 0 ? state.size : file.range.length;
  return true;
}

bool TreeBuilder::importEarlier() {
  if (!request_.earlier && request_.openEarlier) {
    EarlierTree tree(request_.libraries, std::move(earlierDisc_), request_.earlierStart, stop_);
    request_.earlier = tree.take(why_);
    if (!request_.earlier) return false;
  }
  if (request_.earlier) {
    track_->image = std::move(request_.earlier->image);
    track_->appended = true;
  }
  IsoImage* image = track_->image.get();
  return iso_image_set_truncate_mode(image, 0, MaxNameBytes) >= 0;
}

std::string_view TreeBuilder::nameOf(const Child& child) const {
  return child.isFolder ? layout_.folders_[child.index].name : layout_.files_[child.index].name;
}

/// By parent; in a folder by descending names, because the library searches its sorted lists from
/// the front; of one name the folder first.
std::vector<TreeBuilder::Child> TreeBuilder::sortedChildren() const {
  std::vector<Child> children;
  children.reserve(layout_.folders_.size() + layout_.files_.size());
  for (std::uint32_t i = 1; i < layout_.folders_.size(); ++i)
    children.push_back({layout_.folders_[i].parent, true, i});
  for (std::uint32_t i = 0; i < layout_.files_.size(); ++i)
    if (!looks_[i].leftOut) children.push_back({layout_.files_[i].parent, false, i});
  std::sort(children.begin(), children.end(), [this](const Child& a, const Child& b) {
    if (a.parent != b.parent) return a.parent < b.parent;
    const int order = nameOf(a).compare(nameOf(b));
    if (order != 0) return order > 0;
    return a.isFolder != b.isFolder ? a.isFolder : a.index < b.index;
  });
  return children;
}

bool TreeBuilder::addChildren() {
  folders_.resize(layout_.folders_.size());
  IsoDir* root = iso_image_get_root(track_->image.get());
  folders_[0] = root;
  const Look look{FolderMode, 0, 0, now_, false};
  dress(reinterpret_cast<IsoNode*>(root), look);
  // Parents have smaller indices than their children, so they are there first.
  for (const Child& child : sortedChildren()) {
    if (stopped()) return false;
    if (!(child.isFolder ? addFolder(child) : addFile(child))) return false;
  }
  return true;
}

void TreeBuilder::dress(IsoNode* node, const Look& look) const {
  iso_node_set_permissions(node, look.mode);
  iso_node_set_uid(node, look.owner);
  iso_node_set_gid(node, look.group);
  iso_node_set_mtime(node, look.modified);
  iso_node_set_atime(node, look.modified);
  iso_node_set_ctime(node, look.modified);
}

TreeBuilder::Look TreeBuilder::lookOfFolder(std::uint32_t index) const {
  const std::string source(layout_.folders_[index].source);
  struct stat status {};
  if (source.empty() || ::stat(source.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
    return {FolderMode, 0, 0, now_, false};
  return {status.st_mode & 0777, status.st_uid, status.st_gid, status.st_mtime, false};
}

bool TreeBuilder::addFolder(const Child& child) {
  IsoDir* parent = folders_[child.parent];
  const std::string name(nameOf(child));
  if (parent == nullptr || !isNameForDisc(name)) return true;  // its files are told one by one
  IsoDir* folder = nullptr;
  int result = iso_image_add_new_dir(track_->image.get(), parent, name.c_str(), &folder);
  if (result == static_cast<int>(ISO_NODE_NAME_NOT_UNIQUE) && makeRoom(parent, name, true))
    result = iso_image_add_new_dir(track_->image.get(), parent, name.c_str(), &folder);
  if (result == static_cast<int>(ISO_NODE_NAME_NOT_UNIQUE)) {
    // An earlier session has it.
    IsoNode* node = nullptr;
    if (iso_image_dir_get_node(track_->image.get(), parent, name.c_str(), &node, 0) == 1 &&
        iso_node_get_type(node) == LIBISO_DIR)
      folder = reinterpret_cast<IsoDir*>(node);
  } else if (result < 0) {
    why_ = iso_error_to_msg(result);
    return false;
  }
  if (folder != nullptr) dress(reinterpret_cast<IsoNode*>(folder), lookOfFolder(child.index));
  folders_[child.index] = folder;
  return true;
}

/// Takes away what an earlier session has under the name, of whatever kind; a folder stays for
/// another of its name.
bool TreeBuilder::makeRoom(IsoDir* parent, const std::string& name, bool forFolder) {
  IsoNode* old = nullptr;
  if (!request_.replace ||
      iso_image_dir_get_node(track_->image.get(), parent, name.c_str(), &old, 0) != 1)
    return false;
  const bool isFolder = iso_node_get_type(old) == LIBISO_DIR;
  if (isFolder && forFolder) return false;
  const bool isOurs = isFolder && std::find(folders_.begin(), folders_.end(),
                                            reinterpret_cast<IsoDir*>(old)) != folders_.end();
  return !isOurs && iso_node_remove(old) >= 0;
}

bool TreeBuilder::insertFile(IsoDir* parent, std::uint32_t index, const std::string& name,
                             int& result) {
  IsoStream* stream = newSourceStream(track_->sources[index], track_->context, index + 1);
  IsoFile* file = nullptr;
  result = stream == nullptr
               ? static_cast<int>(ISO_OUT_OF_MEM)
               : iso_image_add_new_file(track_->image.get(), parent, name.c_str(), stream, &file);
  if (result < 0) {
    if (stream != nullptr) iso_stream_unref(stream);
    return false;
  }
  dress(reinterpret_cast<IsoNode*>(file), looks_[index]);
  return true;
}

bool TreeBuilder::addFile(const Child& child) {
  IsoDir* parent = folders_[child.parent];
  const std::string name(nameOf(child));
  if (parent == nullptr) return leaveOut(child.index, "The folder is not possible on the disc");
  int result = 0;
  if (insertFile(parent, child.index, name, result)) return true;
  if (result == static_cast<int>(ISO_NODE_NAME_NOT_UNIQUE) && makeRoom(parent, name, false) &&
      insertFile(parent, child.index, name, result))
    return true;
  for (int number = 2; result == static_cast<int>(ISO_NODE_NAME_NOT_UNIQUE); ++number)
    if (insertFile(parent, child.index, alternative(name, number), result)) return true;
  why_ = iso_error_to_msg(result);
  return false;
}

/// The list has the highest number of all streams, so it lies behind them and is read when all that
/// can fail has failed.
bool TreeBuilder::addFaultList() {
  const std::string& name = request_.faultListName;
  if (name.empty() || request_.faultListBytes < FaultList::FewestBytes) return true;
  IsoImage* image = track_->image.get();
  IsoDir* root = iso_image_get_root(image);
  IsoNode* old = nullptr;
  if (iso_image_dir_get_node(image, root, name.c_str(), &old, 0) == 1) iso_node_remove(old);
  track_->context.listBytes = request_.faultListBytes;
  IsoStream* stream = newFaultListStream(track_->context, layout_.files_.size() + 1);
  IsoFile* file = nullptr;
  const int result = stream == nullptr
                         ? static_cast<int>(ISO_OUT_OF_MEM)
                         : iso_image_add_new_file(image, root, name.c_str(), stream, &file);
  if (result < 0) {
    if (stream != nullptr) iso_stream_unref(stream);
    why_ = iso_error_to_msg(result);
    return false;
  }
  faultList_ = reinterpret_cast<IsoNode*>(file);
  dress(faultList_, {FileMode, 0, 0, now_, false});
  return true;
}

/// Gives the list the room that the rest of the track leaves.
bool TreeBuilder::fitFaultList() {
  if (faultList_ == nullptr) return true;
  const std::int64_t excess = track_->imageBlocks() - request_.roomBlocks + 1;
  if (excess <= 0) return true;
  std::int64_t& bytes = track_->context.listBytes;
  bytes -= excess * BlockBytes;
  if (bytes < FaultList::FewestBytes) {
    bytes = 0;
    iso_node_remove(std::exchange(faultList_, nullptr));
  }
  return measure();
}

bool TreeBuilder::measure() {
  const WriteOptionsPtr options = track_->writeOptions();
  if (!options) return false;
  iso_write_opts_set_will_cancel(options.get(), 1);
  ::burn_source* source = nullptr;
  const int result = iso_image_create_burn_source(track_->image.get(), options.get(), &source);
  if (result < 0) {
    why_ = iso_error_to_msg(result);
    return false;
  }
  track_->blocks = TrackFeed(reinterpret_cast<burn::burn_source*>(source)).bytes() / BlockBytes;
  return true;
}

}  // namespace korvenal
