#include "platform/linux/SystemClock.h"

#include <time.h>

namespace korvenal {

UnixTime SystemClock::now() const {
  return ::time(nullptr);
}

std::int64_t SystemClock::steadyMilliseconds() const {
  // The coarse clock is exact to some milliseconds and costs a tenth: loops ask it at every row.
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

}  // namespace korvenal
