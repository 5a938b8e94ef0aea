#include "platform/linux/LinuxWalker.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cerrno>
#include <compare>
#include <deque>

#include "platform/Paths.h"
#include "platform/Pattern.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/FolderListing.h"
#include "platform/linux/SystemFiles.h"

namespace korvenal {

namespace {

/// Of the levels above the folder in hand only so many stay open; those above are opened again
/// from below when the walk comes back to them.
constexpr std::size_t MaxOpenLevels = 128;
constexpr int EntriesBetweenPauses = 256;
constexpr int WalkFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

/// A folder's own number on this system, to know it again.
struct Identity {
  dev_t device = 0;
  std::uint64_t inode = 0;
  auto operator<=>(const Identity&) const = default;
};

/// What an entry is: `error` is an errno, and only 0 makes the rest good.
struct Look {
  int error = 0;
  unsigned mode = 0;
  bool isLink = false;
  Identity identity;
  FileInfo info;  ///< of what a link leads to
};

Look lookAt(int folder, const char* name, bool isLink) {
  Look look;
  look.isLink = isLink;
  struct statx status {};
  const int flags = AT_NO_AUTOMOUNT | (isLink ? 0 : AT_SYMLINK_NOFOLLOW);
  if (::statx(folder, name, flags, SystemFiles::InfoFields, &status) != 0) {
    look.error = errno;
    return look;
  }
  if (S_ISLNK(status.stx_mode)) return lookAt(folder, name, true);
  look.mode = status.stx_mode;
  look.identity = {makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino};
  look.info = SystemFiles::infoOf(status, name);
  return look;
}

WalkSkip skipOf(unsigned mode) {
  if (S_ISSOCK(mode)) return WalkSkip::Socket;
  return S_ISFIFO(mode) ? WalkSkip::Pipe : WalkSkip::Device;
}

/// The filters made ready for many entries.
struct ReadyFilters {
  explicit ReadyFilters(const WalkFilters& filters)
      : include(filters.include),
        exclude(filters.exclude),
        earliest(filters.earliest),
        excludeAttributes(filters.excludeAttributes) {
    for (const std::string& path : filters.leaveOut)
      if (const Look look = lookAt(AT_FDCWD, path.c_str(), true); look.error == 0)
        leaveOut.push_back(look.identity);
    std::sort(leaveOut.begin(), leaveOut.end());
  }

  bool includes(std::string_view name) const {
    return include.isEmpty() || include.matchesAny(name);
  }
  bool excludes(const FileInfo& info) const { return (info.attributes & excludeAttributes) != 0; }
  /// Devices and their like are told, so their own attribute does not hide them.
  bool excludesSpecial(const FileInfo& info) const {
    return (info.attributes & excludeAttributes & ~static_cast<unsigned>(AttributeDevice)) != 0;
  }
  bool leavesOut(const Identity& identity) const {
    return std::binary_search(leaveOut.begin(), leaveOut.end(), identity);
  }
  bool tooOld(const FileInfo& info) const { return earliest && info.modified < *earliest; }

  PatternList include;
  PatternList exclude;
  std::optional<UnixTime> earliest;
  std::uint32_t excludeAttributes;
  std::vector<Identity> leaveOut;  ///< in order
};

WalkEntry entryOf(std::string_view name, std::string_view folder, const FileInfo& info) {
  WalkEntry entry;
  entry.name = name;
  entry.folder = folder;
  entry.isFolder = info.kind == FileInfo::Kind::Folder;
  entry.holdable = Paths::isHoldable(name);
  entry.size = info.size.whole();
  entry.modified = info.modified;
  entry.modifiedNanoseconds = info.modifiedNanoseconds;
  entry.changed = info.changed;
  entry.changedNanoseconds = info.changedNanoseconds;
  entry.inode = info.inode;
  return entry;
}

/// One walk. The folders from the start down to the one in hand are its levels.
class Walk {
 public:
  Walk(const std::string& folder, bool descend, const WalkFilters& filters, WalkSink& sink)
      : path_(Paths::withEnd(folder)), descend_(descend), filters_(filters), sink_(sink) {}

  void run() {
    Level& start = nextLevel();
    start.folder.reset(::open(path_.c_str(), WalkFlags));
    if (!start.folder) {
      sink_.skipped(WalkSkip::UnreadableFolder, path_);
      return;
    }
    start.identity = lookAt(start.folder.get(), ".", false).identity;
    bool goOn = list(start);
    while (goOn && depth_ > 0) {
      Level& level = levels_[depth_ - 1];
      if (level.next < level.listing.size())
        goOn = takesPause() && visit(level, level.listing[level.next++]);
      else
        goOn = leave(level);
    }
  }

 private:
  struct Level {
    Descriptor folder;
    Identity identity;
    FolderListing listing;
    std::size_t next = 0;  ///< the next of the listing
    bool toldUnreadable = false;
    std::string_view name;  ///< in the listing of the level above; empty for the start
    FileInfo info;
  };

  /// The level below the one in hand, ready to be filled; it becomes the one in hand.
  Level& nextLevel() {
    if (levels_.size() == depth_) levels_.emplace_back();
    Level& level = levels_[depth_++];
    level.next = 0;
    level.toldUnreadable = false;
    if (depth_ > MaxOpenLevels) levels_[depth_ - MaxOpenLevels - 1].folder.reset();
    return level;
  }

  bool takesPause() {
    if (++sincePause_ < EntriesBetweenPauses) return true;
    sincePause_ = 0;
    return sink_.pause();
  }

  bool list(Level& level) {
    bool stopped = false;
    const bool complete = level.listing.read(level.folder.get(), [&] {
      stopped = !sink_.pause();
      return stopped;
    });
    return !stopped && (complete || tellUnreadable(level));
  }

  /// Tells once a folder that something in the level's folder could not be read.
  bool tellUnreadable(Level& level) {
    if (level.toldUnreadable) return true;
    level.toldUnreadable = true;
    return sink_.skipped(WalkSkip::UnreadableFolder, path_);
  }

  bool visit(Level& level, const FolderListing::Entry& listed) {
    const std::string_view name = level.listing.name(listed);
    if (filters_.exclude.matchesAny(name)) return true;
    if (listed.type == DT_DIR && !descend_) return true;
    const bool maybeFolder =
        listed.type == DT_DIR || listed.type == DT_LNK || listed.type == DT_UNKNOWN;
    const bool included = filters_.includes(name);
    if (!included && !maybeFolder) return true;

    const Look look = lookAt(level.folder.get(), name.data(), listed.type == DT_LNK);
    if (look.error != 0) return visitFailed(level, name, look, included);
    if (look.info.kind == FileInfo::Kind::Folder) {
      if (!descend_ || filters_.excludes(look.info)) return true;
      if (look.isLink) return skip(WalkSkip::LinkToFolder, name);
      if (filters_.leavesOut(look.identity)) return skip(WalkSkip::LeftOut, name, true);
      return visitFolder(level, name, look);
    }
    if (!included) return true;
    if (look.info.kind == FileInfo::Kind::Other)
      return filters_.excludesSpecial(look.info) || skip(skipOf(look.mode), name);
    if (filters_.excludes(look.info) || filters_.tooOld(look.info)) return true;
    if (filters_.leavesOut(look.identity)) return skip(WalkSkip::LeftOut, name);
    return sink_.report(entryOf(name, path_, look.info));
  }

  bool visitFailed(Level& level, std::string_view name, const Look& look, bool included) {
    if (look.isLink) return !included || skip(WalkSkip::BrokenLink, name);
    // What is gone by now is as if it had never been there.
    return look.error == ENOENT || tellUnreadable(level);
  }

  bool skip(WalkSkip reason, std::string_view name, bool isFolder = false) {
    std::string path = path_ + std::string(name);
    if (isFolder) path += '/';
    return sink_.skipped(reason, path);
  }

  bool visitFolder(const Level& level, std::string_view name, const Look& look) {
    const WalkEntry entry = entryOf(name, path_, look.info);
    if (!entry.holdable) return sink_.report(entry);
    // A link put in the folder's place since it was looked at is not followed.
    Descriptor folder(::openat(level.folder.get(), name.data(), WalkFlags | O_NOFOLLOW));
    if (!folder) return errno == ENOENT || skip(WalkSkip::UnreadableFolder, name, true);
    sink_.enterFolder(entry);
    path_.append(name) += '/';
    Level& below = nextLevel();
    below.folder = std::move(folder);
    below.identity = look.identity;
    below.name = name;
    below.info = look.info;
    return list(below);
  }

  /// Goes up to the level above and reports the folder just left.
  bool leave(Level& level) {
    --depth_;
    if (depth_ == 0) return true;
    path_.resize(path_.size() - level.name.size() - 1);
    Level& above = levels_[depth_ - 1];
    const bool reopened = above.folder || reopen(above, level);
    level.folder.reset();
    return sink_.report(entryOf(level.name, path_, level.info)) && (reopened || giveUp(above));
  }

  /// Opens a level again through the folder below it, when that still lies there.
  static bool reopen(Level& level, const Level& below) {
    if (!below.folder) return false;
    Descriptor folder(::openat(below.folder.get(), "..", WalkFlags));
    if (!folder || lookAt(folder.get(), ".", false).identity != level.identity) return false;
    level.folder = std::move(folder);
    return true;
  }

  bool giveUp(Level& level) {
    const bool entriesLeft = level.next < level.listing.size();
    level.next = level.listing.size();
    return !entriesLeft || tellUnreadable(level);
  }

  std::string path_;  ///< of the folder in hand, with '/' at the end
  bool descend_;
  ReadyFilters filters_;
  WalkSink& sink_;
  std::deque<Level> levels_;  ///< those behind `depth_` wait for their next use
  std::size_t depth_ = 0;
  int sincePause_ = 0;
};

}  // namespace

void LinuxWalker::walk(const std::string& folder, bool descend, const WalkFilters& filters,
                       WalkSink& sink) {
  if (SystemFiles::isUsable(folder)) Walk(folder, descend, filters, sink).run();
}

void LinuxWalker::walkFile(const std::string& path, const WalkFilters& filters, WalkSink& sink) {
  if (!SystemFiles::isUsable(path)) return;
  const ReadyFilters ready(filters);
  const std::string_view name = Paths::doGetFilePart(path);
  const Look look = lookAt(AT_FDCWD, path.c_str(), false);
  if (ready.exclude.matchesAny(name)) return;
  if (look.error != 0) {
    sink.skipped(look.isLink ? WalkSkip::BrokenLink : WalkSkip::Gone, path);
  } else if (look.info.kind == FileInfo::Kind::Other) {
    if (!ready.excludesSpecial(look.info)) sink.skipped(skipOf(look.mode), path);
  } else if (look.info.kind == FileInfo::Kind::File && !ready.excludes(look.info) &&
             !ready.tooOld(look.info)) {
    if (ready.leavesOut(look.identity)) {
      sink.skipped(WalkSkip::LeftOut, path);
      return;
    }
    const std::string folder = Paths::withEnd(Paths::doGetFolderPart(path));
    sink.report(entryOf(name, folder, look.info));
  }
}

}  // namespace korvenal
