#pragma once

#include <set>
#include <string>

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "platform/Desktop.h"

namespace korvenal {

/// Tells the person what goes wrong with the program's own files, once a file: in the events of a
/// run at work, which must not wait for anybody, else in a message.
class OwnFileFaults {
 public:
  OwnFileFaults(ActionState& state, Desktop& desktop, RunGrids& grids)
      : state_(state), desktop_(desktop), grids_(grids) {}

  void doTell(const std::string& path, const std::string& text);
  /// Something went wrong since the start.
  bool any() const { return !told_.empty(); }

  bool quiet = false;  ///< nobody can be told any more: the person's session ends

 private:
  ActionState& state_;
  Desktop& desktop_;
  RunGrids& grids_;
  std::set<std::string> told_;  ///< the files
};

}  // namespace korvenal
