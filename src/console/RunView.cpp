#include "console/RunView.h"

#include <algorithm>
#include <string>

namespace korvenal::console {

void RunView::doPrintNewEvents() {
  for (int page = 0; page < static_cast<int>(seen_.size()); ++page) {
    const auto at = static_cast<std::size_t>(page);
    if (grids_.vsEvent[at].revision() != seen_[at].revision) doPrintPage(page);
  }
}

void RunView::doPrintPage(int page) {
  const Table& events = grids_.vsEvent[static_cast<std::size_t>(page)];
  Seen& seen = seen_[static_cast<std::size_t>(page)];
  seen.rows = std::min(seen.rows, events.Rows());
  for (; seen.rows < events.Rows(); ++seen.rows) {
    const std::string& mark = events.cellData(seen.rows, 1);
    const bool warning = mark == "*";
    screen_.line(events.text(seen.rows, 0) + (warning ? " * " : "   ") + events.text(seen.rows, 1));
  }
  seen.revision = events.revision();
}

void RunView::doPaintProgress() {
  const Progress& progress = grids_.etProgress[static_cast<std::size_t>(state_.ActionPage)];
  if (progress.text.empty() && progress.bar == 0) return;
  screen_.progress(std::to_string(progress.bar) + "% " + progress.text);
}

}  // namespace korvenal::console
