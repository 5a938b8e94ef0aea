#pragma once

#include <string>
#include <vector>

#include "core/ActionState.h"
#include "plan/Plan.h"
#include "platform/Desktop.h"

namespace korvenal {

/// Shortens components that a disc cannot hold. The limit is on one component, in bytes; a file
/// item keeps its name whatever its length. All rows below a shortened folder follow by their link
/// to it.
class NameShortening {
 public:
  static constexpr std::size_t MaxComponentBytes = 107;

  NameShortening(const ActionState& state, Desktop& desktop, Plan& plan)
      : state_(state), desktop_(desktop), plan_(plan), table_(plan.vsBuffer) {}

  /// The rows are in the order of a tree, every folder above its contents. False on a stop.
  bool run();

 private:
  std::string shortened(const std::string& component);
  void rename(int row, const std::string& component);
  void renameFollowing(int folderRow, const std::string& base, const std::string& component);
  int rowBehind(int row);
  void findRowsBehind();

  const ActionState& state_;
  Desktop& desktop_;
  Plan& plan_;
  PlanTable& table_;
  int counter_ = 0;
  std::vector<int> rowBehind_;  ///< by row; filled when the first folder is shortened
};

}  // namespace korvenal
