#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace korvenal {

/// How fast work goes and how long it will go on, from amounts done at points in time. The speed is
/// that of the last seconds: it follows a drive that gets faster or slower, and falls when nothing
/// moves. Nothing is told before enough was seen.
class RunPace {
 public:
  /// Takes what is done now. Work that is another one (its total differs, or less is done than
  /// before) begins anew. Any unit will do; points in time come from a steady clock.
  void update(std::int64_t milliseconds, std::int64_t done, std::int64_t total);
  void clear() { *this = RunPace(); }

  /// Units a second.
  std::optional<double> perSecond() const;
  std::optional<std::int64_t> secondsLeft() const;

 private:
  std::int64_t firstTime_ = 0;
  std::int64_t lastTime_ = 0;
  std::int64_t done_ = 0;
  std::int64_t total_ = 0;  ///< 0: no work yet
  bool moved_ = false;      ///< something was done since the beginning
  double rate_ = 0;         ///< units a millisecond
};

/// A time that is an estimate: "about 4 minutes". No finer than anyone can know.
std::string aboutTime(std::int64_t seconds);

}  // namespace korvenal
