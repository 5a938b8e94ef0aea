#pragma once

#include <cstdint>
#include <vector>

#include "restore/RestorePage.h"

namespace korvenal {

/// What has become of the files that were selected for a restore.
struct RestoreSum {
  int selected = 0;
  int restored = 0;
  int skipped = 0;  ///< left as they stood in the target
  int failed = 0;

  bool addsUp() const { return selected == restored + skipped + failed; }
  bool isAllWell() const { return addsUp() && failed == 0; }
};

/// Remembers what became of each row of a restore, from its begin to its end: a disc that comes a
/// second time, and a run that goes on after a stop, bring only what is missing.
class RestoredRows {
 public:
  enum class Outcome : std::uint8_t {
    Open,    ///< not tried yet, or interrupted
    Unsafe,  ///< written, but the medium did not take it: to be written again
    Restored,
    Skipped,
    Failed,
  };

  explicit RestoredRows(const RestorePage& page) : page_(page) {}

  /// A new restore: all rows are open.
  void clear();
  Outcome outcome(int row) const { return outcomes_[static_cast<std::size_t>(row)]; }
  void set(int row, Outcome outcome) { outcomes_[static_cast<std::size_t>(row)] = outcome; }

  bool isSelected(int row) const;
  /// True for a selected row that is still to be brought back.
  bool isWanted(int row) const;
  /// True for a selected row of a file of either kind.
  bool isSelectedFile(int row) const;
  /// True when a part, from this number on, of the split file at the row may lie on the disc.
  bool hasPartOn(int row, int disc, int fromPart = 1) const;
  RestoreSum sum() const;

 private:
  const RestorePage& page_;
  std::vector<Outcome> outcomes_;
};

}  // namespace korvenal
