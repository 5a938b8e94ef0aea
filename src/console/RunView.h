#pragma once

#include <array>
#include <cstdint>

#include "console/Screen.h"
#include "core/ActionState.h"
#include "core/RunGrids.h"

namespace korvenal::console {

/// Follows the event grids and the progress of runs on the screen.
class RunView {
 public:
  RunView(Screen& screen, const RunGrids& grids, const ActionState& state)
      : screen_(screen), grids_(grids), state_(state) {}

  /// Prints the event lines that came since the last call. Costs next to nothing without any.
  void doPrintNewEvents();
  /// Paints the progress of the page in action.
  void doPaintProgress();

 private:
  struct Seen {
    std::uint64_t revision = 0;
    int rows = 1;
  };
  void doPrintPage(int page);

  Screen& screen_;
  const RunGrids& grids_;
  const ActionState& state_;
  std::array<Seen, 3> seen_;
};

}  // namespace korvenal::console
