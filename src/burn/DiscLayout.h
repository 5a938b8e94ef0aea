#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"

namespace korvenal {

/// Where an entry goes in the tree of a disc.
struct DiscPlace {
  std::string parent;  ///< folder on disc without '\' at its end; "\" is the root
  std::string name;
};

/// The place of a disc path; a '\' at its end is dropped.
DiscPlace placeOnDisc(std::string_view discPath);

/// Hands the rows of one disc, without that of the index, to the engine. The layout holds
/// references only: of a split file, the range of its source is named, and nothing is copied.
class DiscLayout {
 public:
  explicit DiscLayout(BurnServices& services) : services_(services) {}

  /// Shows percent as it goes. Files that are lost stay out. False when it was stopped.
  bool doBuild(DiscAttempt& attempt);
  /// The rows of the files that went into the layout, in their order.
  const std::vector<int>& files() const { return files_; }

 private:
  void doAddFolder(int row) const;
  void doAddFile(int row, int splitRow);
  PlannedSource plannedSource(int row, int splitRow, const std::string& source) const;
  void doShowPercent(int done, int all) const;

  BurnServices& services_;
  std::vector<int> files_;
};

}  // namespace korvenal
