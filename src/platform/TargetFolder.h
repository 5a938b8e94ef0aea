#pragma once

#include <memory>
#include <string>

#include "platform/Files.h"

namespace korvenal {

/// The folder that a restore writes into, and the only way to write there. Paths are relative
/// disc paths ('\' between components) and are resolved below the folder without following any
/// link; a component that is empty, "." or "..", or holds '/', is refused. Only regular files are
/// ever opened, overwritten or deleted.
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
  virtual FileOutcome doDeleteFile(const std::string& path) = 0;
  /// Copies a file of a disc (`source` is a path on a drive) over the target in pieces of
  /// FileView::PieceBytes, with the source's date and permission bits. Missing folders above the
  /// target are made. On failure or a stop the partial target stays.
  virtual FileOutcome doCopyFileProgress(const std::string& source, const std::string& path,
                                         const CopyProgress& progress) = 0;
  /// Appends a file of a disc to the target, which is made when absent, in the same pieces.
  virtual FileOutcome doAppendFileProgress(const std::string& source, const std::string& path,
                                           const CopyProgress& progress) = 0;
};

/// Opens target folders.
class TargetFolders {
 public:
  virtual ~TargetFolders() = default;
  /// The folder at an absolute native path; null when it is no folder.
  virtual std::unique_ptr<TargetFolder> open(const std::string& path) = 0;
};

}  // namespace korvenal
