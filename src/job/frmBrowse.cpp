#include "job/frmBrowse.h"

#include <algorithm>

#include "platform/Paths.h"

namespace korvenal {

namespace {

constexpr const char* Section = "Browser";
constexpr const char* Key = "Default";

}  // namespace

frmBrowse::frmBrowse(const Services& services, const std::string& homeFolder)
    : services_(services), folder_("/") {
  const std::string last = services_.profile.doReadProfile(Section, Key, homeFolder);
  if (!doShowFolder(last) && !doShowFolder(homeFolder)) doShowFolder(folder_);
}

std::string frmBrowse::pathOf(const Entry& entry) const {
  return Paths::withEnd(folder_) + entry.name;
}

frmBrowse::Ticks frmBrowse::SelectAll() const {
  if (ticked_ == 0) return Ticks::None;
  return ticked_ == entries_.size() ? Ticks::All : Ticks::Some;
}

bool frmBrowse::opensMaximized(int screenWidth) const {
  constexpr int Margin = 350;
  return services_.size.width > screenWidth - Margin;
}

bool frmBrowse::doShowFolder(const std::string& path) {
  if (adding_ || !Paths::isNative(path) || !services_.files.doFolderExists(path)) return false;
  const int listing = ++listings_;
  const std::string shown(Paths::withoutEnd(path));
  std::vector<Entry> found;
  for (std::string& name : services_.files.listFolder(shown)) {
    FileInfo info = services_.files.doGetInfo(Paths::withEnd(shown) + name);
    found.push_back({.name = std::move(name), .info = info});
    services_.desktop.doYield();
    if (listing != listings_ || isClosed()) return true;
  }
  std::stable_partition(found.begin(), found.end(), [](const Entry& e) { return e.isFolder(); });
  folder_ = shown;
  entries_ = std::move(found);
  doCount();
  return true;
}

void frmBrowse::doShowParent() {
  doShowFolder(std::string(Paths::doGetFolderPart(folder_)));
}

void frmBrowse::doTick(std::size_t entry, bool on) {
  if (adding_ || entry >= entries_.size() || entries_[entry].ticked == on) return;
  entries_[entry].ticked = on;
  if (on)
    ++ticked_;
  else
    --ticked_;
  doRepaint();
}

void frmBrowse::doSelectAll(bool on) {
  if (adding_) return;
  for (Entry& entry : entries_) entry.ticked = on;
  doCount();
}

void frmBrowse::doCount() {
  ticked_ = static_cast<std::size_t>(
      std::count_if(entries_.begin(), entries_.end(), [](const Entry& e) { return e.ticked; }));
  doRepaint();
}

void frmBrowse::CMD(int command) {
  if (adding_) return;
  if (command == CloseCommand)
    doCloseBox();
  else if (isAddEnabled())
    doAdd();
}

void frmBrowse::doAdd() {
  std::vector<std::size_t> wanted;
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].ticked) continue;
    wanted.push_back(i);
    paths.push_back(pathOf(entries_[i]));
  }
  adding_ = true;
  doRepaint();
  const std::size_t handled = services_.items.doPickItems(paths);
  adding_ = false;
  // What a stop left over stays ticked.
  for (std::size_t i = 0; i < handled; ++i) {
    entries_[wanted[i]].ticked = false;
    entries_[wanted[i]].handled = true;
  }
  doCount();
}

void frmBrowse::doCloseBox() {
  services_.profile.doWriteProfile(Section, Key, folder_);
  doClose();
}

}  // namespace korvenal
