#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/Files.h"

namespace korvenal {

/// What a walk lets through.
struct WalkFilters {
  std::vector<std::string> include;     ///< patterns of file names; empty lets all through
  std::vector<std::string> exclude;     ///< patterns of names; cut off whole sub-folders
  std::optional<UnixTime> earliest;     ///< for files: not modified before this; equal passes
  std::uint32_t excludeAttributes = 0;  ///< FileAttribute bits; cut off whole sub-folders
  /// Native paths of files and folders that are left out wherever the walk meets them, by whatever
  /// name. Where the walk starts is not among what it meets.
  std::vector<std::string> leaveOut = {};
};

/// One entry met by a walk. The views live until the call returns.
struct WalkEntry {
  std::string_view name;    ///< the last component, as its bytes are
  std::string_view folder;  ///< native path of the folder that holds it, with '/' at the end
  bool isFolder = false;
  bool holdable = true;   ///< false: a disc cannot hold the name, or the entry is gone
  std::int64_t size = 0;  ///< bytes; 0 for folders
  UnixTime modified = 0;
  std::int64_t modifiedNanoseconds = 0;
  UnixTime changed = 0;
  std::int64_t changedNanoseconds = 0;
  std::uint64_t inode = 0;

  std::string path() const { return std::string(folder).append(name); }
};

/// Why a walk passed over something that the filters would have let through. An unreadable folder
/// may have been read in part; what was read of it is reported.
enum class WalkSkip {
  LinkToFolder,
  BrokenLink,
  Socket,
  Pipe,
  Device,
  UnreadableFolder,
  LeftOut,  ///< as `WalkFilters::leaveOut` says; a folder's path has '/' at its end
  Gone,     ///< the one file that was asked for is no longer there, or cannot be looked at
};

/// Receives a walk. A folder's contents come between its `enterFolder` and its `report`; entries
/// of a folder come in the order of the bytes of their names, files and folders together.
class WalkSink {
 public:
  virtual ~WalkSink() = default;
  /// A sub-folder is about to be walked. Its `report` follows after its contents.
  virtual void enterFolder(const WalkEntry& folder) = 0;
  /// An entry that passed the filters. False ends the walk.
  virtual bool report(const WalkEntry& entry) = 0;
  /// Something that is not backed up, by its native path. False ends the walk.
  virtual bool skipped(WalkSkip reason, const std::string& path) = 0;
  /// Comes now and then while nothing passes the filters, so that a long walk can yield. False ends
  /// the walk.
  virtual bool pause() { return true; }
};

/// Walks folders with filters; it reads nothing but the folders themselves, and never follows a
/// link to a folder below the start. Entries that the filters exclude are not reported, nor those
/// that are gone when the walk comes to them.
class Walker {
 public:
  virtual ~Walker() = default;
  /// Walks what lies in the folder, which may itself be a link. Without `descend` only files are
  /// reported. A folder whose name a disc cannot hold is reported once, without `enterFolder`,
  /// and not walked.
  virtual void walk(const std::string& folder, bool descend, const WalkFilters& filters,
                    WalkSink& sink) = 0;
  /// Reports the one file at the path, when it passes all filters but the include patterns.
  virtual void walkFile(const std::string& path, const WalkFilters& filters, WalkSink& sink) = 0;
};

/// True when the name matches the pattern: '*' is any run of characters, '?' one character, case
/// is ignored.
bool matchesPattern(std::string_view name, std::string_view pattern);

}  // namespace korvenal
