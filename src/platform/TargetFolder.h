#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Files.h"

namespace korvenal {

/// A file that is put together of pieces from several discs, under a temporary name in the folder
/// that it will stand in. What stands at its own name stays until it is whole. Destroyed before it
/// is finished or removed, it is left under its temporary name.
class JoinedFile {
 public:
  virtual ~JoinedFile() = default;
  /// Appends a file of a disc (`source` is a path on a drive) in pieces of FileView::PieceBytes. A
  /// file that fails or is stopped leaves none of its bytes, so it can be appended again.
  virtual FileOutcome doAppendFileProgress(const std::string& source,
                                           const CopyProgress& progress) = 0;
  /// Waits until the file stands on its medium and gives it its name, with the date and permission
  /// bits of what was appended last. Removed when that fails.
  virtual FileOutcome finish() = 0;
  virtual void remove() = 0;
  /// The name that it bears in its folder until then.
  virtual std::string temporaryName() const = 0;
};

/// The folder that a restore writes into, and the only way to write there. Paths are relative
/// disc paths ('\' between components) and are resolved below the folder without following any
/// link; a component that is empty, "." or "..", or holds '/', is refused. Only regular files are
/// ever replaced. No file stands at its name before it is whole: it is written under a temporary
/// name, and what killed restores left under such names is cleared in each folder that is written
/// to. Folders are made for the user alone; see doDressFolder.
class TargetFolder {
 public:
  virtual ~TargetFolder() = default;

  /// What stands at the path; Missing also when the path leads outside.
  virtual FileInfo doGetInfo(const std::string& path) const = 0;
  /// True when another process has the file open for writing or holds a lock on it; unknown
  /// counts as free.
  virtual bool isInUse(const std::string& path) const = 0;
  /// Makes the folder with all missing levels.
  virtual FileOutcome doCreateFolderPath(const std::string& path) = 0;
  /// Copies a file of a disc (`source` is a path on a drive) in pieces of FileView::PieceBytes,
  /// with the source's date and permission bits; when it is whole it replaces the file at the path.
  /// Missing folders above the target are made. On failure or a stop all is as it was.
  virtual FileOutcome doCopyFileProgress(const std::string& source, const std::string& path,
                                         const CopyProgress& progress) = 0;
  /// Begins a file that is joined of pieces; missing folders above it are made. Null on failure,
  /// with the outcome.
  virtual std::unique_ptr<JoinedFile> doBeginJoinedFile(const std::string& path,
                                                        FileOutcome& outcome) = 0;

  /// Waits until all that was written through this stands on its medium. Touches nothing that the
  /// other operations use while no other runs.
  virtual FileOutcome doSync() = 0;
  /// Whether the folder itself takes a new file.
  virtual FileOutcome doTestWriting() = 0;
  /// The folders made since the last call, each behind the one above it.
  virtual std::vector<std::string> takeMadeFolders() = 0;
  /// Gives a folder permission bits and a date; its owner too where the user may do that. What the
  /// file system cannot hold is left off.
  virtual void doDressFolder(const std::string& path, const FileInfo& look) = 0;
};

/// Opens target folders.
class TargetFolders {
 public:
  virtual ~TargetFolders() = default;
  /// The folder at an absolute native path; null when it is no folder.
  virtual std::unique_ptr<TargetFolder> open(const std::string& path) = 0;
};

}  // namespace korvenal
