#include "core/RunPace.h"

#include <algorithm>

namespace korvenal {

namespace {

/// Nothing is foretold from less than this.
constexpr std::int64_t LeastMilliseconds = 2000;
constexpr int LeastPercents = 2;

}  // namespace

void RunPace::feed(int percent, std::int64_t milliseconds) {
  // What happens before the first percent (a laser that settles, a disc that spins up) is no pace.
  if (percent < percent_ || percent_ == 0) {
    first_ = percent;
    begun_ = milliseconds;
  }
  percent_ = percent;
  now_ = milliseconds;
}

double RunPace::percentsPerSecond() const {
  const std::int64_t elapsed = now_ - begun_;
  const int done = percent_ - first_;
  if (elapsed < LeastMilliseconds || done < LeastPercents) return 0;
  return done * 1000.0 / static_cast<double>(elapsed);
}

std::optional<std::int64_t> RunPace::secondsLeft() const {
  const double pace = percentsPerSecond();
  if (pace <= 0) return {};
  return static_cast<std::int64_t>((100 - percent_) / pace);
}

std::string aboutTime(std::int64_t seconds) {
  constexpr std::int64_t Few = 10;
  constexpr std::int64_t Minute = 60;
  if (seconds < Few) return "a few seconds";
  if (seconds < Minute + Minute / 2)
    return "about " + std::to_string((seconds + Few / 2) / Few * Few) + " seconds";
  const std::int64_t minutes = (seconds + Minute / 2) / Minute;
  if (minutes < Minute)
    return "about " + std::to_string(std::max<std::int64_t>(minutes, 2)) + " minutes";
  const std::int64_t hours = (minutes + Minute / 2) / Minute;
  return "about " + std::to_string(hours) + (hours > 1 ? " hours" : " hour");
}

}  // namespace korvenal
