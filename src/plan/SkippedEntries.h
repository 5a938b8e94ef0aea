#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/Walker.h"

namespace korvenal {

/// Collects what walks pass over, so that nothing is left out in silence.
class SkippedEntries {
 public:
  void add(WalkSkip reason, const std::string& path);
  /// One line with the numbers of each kind, and one for every folder that cannot be read.
  std::vector<std::string> notes() const;

 private:
  std::array<int, 6> counts_{};  ///< by WalkSkip
  std::vector<std::string> unreadable_;
};

}  // namespace korvenal
