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
  return Paths::withEnd(folder_).append(entry.name);
}

frmBrowse::Ticks frmBrowse::SelectAll() const {
  if (ticked_ == 0) return Ticks::None;
  return ticked_ == entries().size() ? Ticks::All : Ticks::Some;
}

bool frmBrowse::opensMaximized(int screenWidth) const {
  constexpr int Margin = 350;
  return services_.size.width > screenWidth - Margin;
}

/// The names in a folder, with nothing known of them yet.
std::unique_ptr<frmBrowse::Listing> frmBrowse::listed(const std::string& folder) const {
  auto listing = std::make_unique<Listing>();
  services_.desktop.doAside([&] {
    const std::vector<std::string> names = services_.files.listFolder(folder);
    listing->entries.reserve(names.size());
    for (const std::string& name : names) {
      auto* place = static_cast<char*>(listing->names.allocate(name.size() + 1, 1));
      name.copy(place, name.size());
      listing->entries.push_back({.name = {place, name.size()}, .info = {}});
    }
  });
  return listing;
}

bool frmBrowse::doShowFolder(const std::string& path) {
  if (adding_ || !Paths::isNative(path) || !services_.files.doFolderExists(path)) return false;
  const int number = ++listings_;
  const std::string shown(Paths::withoutEnd(path));
  const auto isOvertaken = [&] { return number != listings_ || isClosed(); };
  auto listing = listed(shown);
  for (Entry& entry : listing->entries) {
    if (isOvertaken()) return true;
    entry.info = services_.files.doGetInfo(Paths::withEnd(shown).append(entry.name));
    services_.desktop.doYield();
  }
  services_.desktop.doAside([&] {
    std::stable_partition(listing->entries.begin(), listing->entries.end(),
                          [](const Entry& entry) { return entry.isFolder(); });
  });
  if (isOvertaken()) return true;
  folder_ = shown;
  listing_ = std::move(listing);
  doCount();
  return true;
}

void frmBrowse::doShowParent() {
  doShowFolder(std::string(Paths::doGetFolderPart(folder_)));
}

void frmBrowse::doTick(std::size_t entry, bool on) {
  if (adding_ || entry >= entries().size() || entries()[entry].ticked == on) return;
  listing_->entries[entry].ticked = on;
  if (on)
    ++ticked_;
  else
    --ticked_;
  doRepaint();
}

void frmBrowse::doSelectAll(bool on) {
  if (adding_) return;
  for (Entry& entry : listing_->entries) entry.ticked = on;
  doCount();
}

void frmBrowse::doCount() {
  ticked_ = static_cast<std::size_t>(
      std::count_if(entries().begin(), entries().end(), [](const Entry& e) { return e.ticked; }));
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
  for (std::size_t i = 0; i < entries().size(); ++i) {
    if (!entries()[i].ticked) continue;
    wanted.push_back(i);
    paths.push_back(pathOf(entries()[i]));
  }
  adding_ = true;
  doRepaint();
  const std::size_t handled = services_.items.doPickItems(paths);
  adding_ = false;
  // What a stop left over stays ticked.
  for (std::size_t i = 0; i < handled; ++i) {
    Entry& entry = listing_->entries[wanted[i]];
    entry.ticked = false;
    entry.handled = true;
  }
  doCount();
}

void frmBrowse::doCloseBox() {
  services_.profile.doWriteProfile(Section, Key, folder_);
  doClose();
}

}  // namespace korvenal
