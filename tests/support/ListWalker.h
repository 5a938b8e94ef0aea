#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Walker.h"
#include "support/ListFiles.h"

namespace korvenal::test {

/// An entry of a scripted tree.
struct ListEntry {
  std::string name;
  bool isFolder = false;
  std::int64_t size = 0;
  UnixTime modified = 0;
  bool holdable = true;
  std::vector<ListEntry> entries{};  ///< in the order in which they are reported
};

/// Walks scripted trees, each at a native path, in memory. It applies no filters.
class ListWalker : public Walker {
 public:
  /// Makes the tree known under `path`, to the walk and as something to look at.
  void add(const std::string& path, const ListEntry& entry, ListFiles& files);

  std::map<std::string, ListEntry> trees;
  std::vector<std::pair<WalkSkip, std::string>> skips;  ///< told at the start of each walk

  void walk(const std::string& folder, bool descend, const WalkFilters& filters,
            WalkSink& sink) override;
  void walkFile(const std::string& path, const WalkFilters& filters, WalkSink& sink) override;
};

}  // namespace korvenal::test
