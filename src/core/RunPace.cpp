#include "core/RunPace.h"

#include <algorithm>
#include <cmath>

#include "platform/Text.h"

namespace korvenal {

namespace {

/// Amounts come in jumps; shorter steps would be read as speeds that no drive has.
constexpr std::int64_t ShortestStep = 400;
/// No word before that: drives begin with buffers that fill at once.
constexpr std::int64_t WarmUp = 3000;
/// The weight of what is past falls to a third in this time.
constexpr double Memory = 8000;

}  // namespace

void RunPace::update(std::int64_t milliseconds, std::int64_t done, std::int64_t total) {
  if (total != total_ || done < done_) {
    *this = RunPace();
    firstTime_ = lastTime_ = milliseconds;
    done_ = done;
    total_ = total;
    return;
  }
  const std::int64_t step = milliseconds - lastTime_;
  if (step < ShortestStep) return;
  const double now = static_cast<double>(done - done_) / static_cast<double>(step);
  const double weight = moved_ ? 1 - std::exp(-static_cast<double>(step) / Memory) : 1;
  rate_ += weight * (now - rate_);
  moved_ = moved_ || done > done_;
  // The time before anything moves is set-up, not slowness.
  if (!moved_) firstTime_ = milliseconds;
  lastTime_ = milliseconds;
  done_ = done;
}

std::optional<double> RunPace::perSecond() const {
  if (!moved_ || lastTime_ - firstTime_ < WarmUp) return {};
  return rate_ * 1000;
}

std::optional<std::int64_t> RunPace::secondsLeft() const {
  constexpr double Forever = 100.0 * 3600;
  const auto speed = perSecond();
  if (!speed || *speed <= 0) return {};
  const double left = static_cast<double>(total_ - done_) / *speed;
  if (left > Forever) return {};
  return static_cast<std::int64_t>(std::ceil(std::max(left, 0.0)));
}

std::string aboutTime(std::int64_t seconds) {
  constexpr std::int64_t Minute = 60, Hour = 3600;
  if (seconds <= 10) return "a few seconds";
  if (seconds <= 50) return "about " + std::to_string((seconds + 9) / 10 * 10) + " seconds";
  if (seconds < Hour - Minute / 2)
    return "about " + Text::counted(static_cast<int>((seconds + Minute / 2) / Minute), "minute");
  const std::int64_t tens = (seconds + 5 * Minute) / (10 * Minute);
  std::string text = "about " + Text::counted(static_cast<int>(tens / 6), "hour");
  if (tens % 6 != 0) text += " " + std::to_string(tens % 6 * 10) + " minutes";
  return text;
}

}  // namespace korvenal
