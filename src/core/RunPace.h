#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace korvenal {

/// How long a piece of work will take yet, told from its percentage. It starts anew whenever the
/// percentage falls: each phase of a run has a pace of its own.
class RunPace {
 public:
  /// Call as often as you like; `milliseconds` is of a steady clock.
  void feed(int percent, std::int64_t milliseconds);
  /// Seconds left at the average pace so far; nothing before that can be told.
  std::optional<std::int64_t> secondsLeft() const;
  /// Percents in a second; 0 while that is unknown.
  double percentsPerSecond() const;

 private:
  int first_ = 0;  ///< percent at which the pace began to be taken
  int percent_ = 0;
  std::int64_t begun_ = 0;  ///< when `first_` was reached
  std::int64_t now_ = 0;
};

/// "about 4 minutes", "about 20 seconds", "a few seconds".
std::string aboutTime(std::int64_t seconds);

}  // namespace korvenal
