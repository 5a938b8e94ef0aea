#pragma once

#include <string>
#include <vector>

namespace korvenal {

/// The program's own files among what a person may back up. A backup that took them would hold
/// itself, and with image drives grow to twice its size with every run.
struct OwnFiles {
  std::vector<std::string> folders;  ///< native paths, '/' at their ends: left out with all in them
  std::string shelf;                 ///< the folder of the image discs, '/' at its end
  std::vector<std::string> discs;    ///< the files that stand for discs, wherever they lie
  std::vector<std::string> written;  ///< those of them that a run may write to

  /// What a walk that starts at the path leaves out. Who names the shelf, or a folder or file on
  /// it, wants discs, and gets all that are not written to. `isShelf`: the path is the shelf by
  /// another name.
  std::vector<std::string> leftOutBelow(const std::string& path, bool isShelf) const;
};

}  // namespace korvenal
