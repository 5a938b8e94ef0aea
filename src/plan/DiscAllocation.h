#pragma once

#include <cstdint>
#include <vector>

#include "core/ActionState.h"
#include "core/Settings.h"
#include "plan/Plan.h"
#include "platform/Desktop.h"

namespace korvenal {

/// What decides whether a row goes on the disc in hand, is cut there, or begins the next.
struct AllocationRules {
  std::int64_t capacity = 0;      ///< usable bytes of a disc
  std::int64_t minSplitFile = 0;  ///< bytes: no smaller file is cut
  std::int64_t minDiscRest = 0;   ///< bytes: no file is cut for a smaller rest of a disc
  bool splitAndSpan = true;       ///< false: no file is cut that an empty disc takes whole
};

/// The thresholds of the settings; an index outside of the lists counts as the default one.
AllocationRules allocationRules(const Settings& settings, int comboDiscType, bool splitAndSpan);

/// Gives every row a disc, first come first served in the order of the rows, with one disc in hand.
/// Rows flow from the plan's table, through a small stack of rows that were made or put back, into
/// the table again.
class DiscAllocation {
 public:
  enum class Outcome { Done, Stopped, TooManyDiscs };

  DiscAllocation(const ActionState& state, Desktop& desktop, Plan& plan,
                 const AllocationRules& rules);

  /// Sets disc and used size of every row, `DiscUsed`, and when done `TotalDiscs`.
  Outcome run();

 private:
  using Row = PlanTable::Row;

  bool hasCurrent() const { return !pending_.empty() || next_ < input_.size(); }
  Row& current() { return pending_.empty() ? input_[next_] : pending_.back(); }
  Row takeCurrent();

  bool place();
  bool mayCut();
  std::int64_t bytesToFill() const;
  bool holdsOnlyRepeatedFolders(const Row& row) const;
  void cut();
  void cutFile();
  void cutPiece();
  void renumberBehind(std::int32_t number);
  bool goToNextDisc();
  void repeatFolders();

  const ActionState& state_;
  Desktop& desktop_;
  Plan& plan_;
  PlanTable& table_;
  const AllocationRules rules_;

  std::vector<Row> input_;
  std::size_t next_ = 0;
  std::vector<Row> pending_;  ///< come before the input; the last one first
  int disc_ = 1;
  std::int64_t used_;    ///< bytes of the disc in hand
  int contentRows_ = 0;  ///< rows on the disc in hand that are no repeated folders
};

}  // namespace korvenal
