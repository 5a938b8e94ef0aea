#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Desktop.h"
#include "platform/TargetFolder.h"

namespace korvenal {

/// The folders that a restore has made. They are the user's alone while it lasts, so that nothing
/// private lies open meanwhile and files can be written into those that will be read-only; when it
/// ends they look as on the disc. Folders that stood there before are left as they are.
class MadeFolders {
 public:
  /// Tells what lies at a disc path of the disc in hand.
  using Look = std::function<FileInfo(const std::string& discPath)>;

  void clear() { folders_.clear(); }
  /// Takes the folders that the target has just made for the item at `path`, which stands on the
  /// disc at `discPath`.
  void note(TargetFolder& target, const std::string& path, const std::string& discPath,
            const Look& look);
  /// Dresses all of them, the deepest first. Yields.
  void dress(TargetFolder& target, Desktop& desktop) const;
  /// Makes them the user's again for a restore that goes on. Yields.
  void open(TargetFolder& target, Desktop& desktop) const;

 private:
  struct Folder {
    std::string path;
    FileInfo look;  ///< kind Missing when the disc does not tell
  };
  std::vector<Folder> folders_;  ///< each behind the one above it
};

}  // namespace korvenal
