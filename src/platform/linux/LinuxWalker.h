#pragma once

#include "platform/Walker.h"

namespace korvenal {

/// Walks native folders: one look at each entry, relative to its open folder. Depth is bounded
/// neither by descriptors nor by the stack.
class LinuxWalker : public Walker {
 public:
  void walk(const std::string& folder, bool descend, const WalkFilters& filters,
            WalkSink& sink) override;
  void walkFile(const std::string& path, const WalkFilters& filters, WalkSink& sink) override;
};

}  // namespace korvenal
