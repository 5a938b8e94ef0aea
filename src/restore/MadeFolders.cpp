#include "restore/MadeFolders.h"

#include <algorithm>

#include "platform/Paths.h"

namespace korvenal {

namespace {

constexpr std::uint32_t UserAlone = 0700;

std::ptrdiff_t levelsOf(std::string_view path) {
  return std::count(path.begin(), path.end(), Paths::DiscSeparator) + 1;
}

/// The first so many components.
std::string_view firstLevels(std::string_view path, std::ptrdiff_t levels) {
  std::size_t end = 0;
  for (; levels > 0 && end != std::string_view::npos; --levels)
    end = path.find(Paths::DiscSeparator, end == 0 ? 0 : end + 1);
  return path.substr(0, end);
}

}  // namespace

void MadeFolders::note(TargetFolder& target, const std::string& path, const std::string& discPath,
                       const Look& look) {
  const std::vector<std::string> made = target.takeMadeFolders();
  if (made.empty()) return;
  const std::string_view onDisc = Paths::withoutEnd(discPath);
  // A shortened name stands in the place of the long one.
  const bool alike = levelsOf(path) == levelsOf(onDisc);
  for (const std::string& folder : made)
    folders_.push_back(
        {folder, alike ? look(std::string(firstLevels(onDisc, levelsOf(folder)))) : FileInfo()});
}

void MadeFolders::dress(TargetFolder& target, Desktop& desktop) const {
  for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder) {
    desktop.doYield();
    if (folder->look.kind == FileInfo::Kind::Folder)
      target.doDressFolder(folder->path, folder->look);
  }
}

void MadeFolders::open(TargetFolder& target, Desktop& desktop) const {
  for (const Folder& folder : folders_) {
    desktop.doYield();
    FileInfo look = target.doGetInfo(folder.path);
    if (look.kind != FileInfo::Kind::Folder) continue;
    look.permissions = UserAlone;
    target.doDressFolder(folder.path, look);
  }
}

}  // namespace korvenal
