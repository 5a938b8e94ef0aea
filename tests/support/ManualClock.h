#pragma once

#include "platform/Clock.h"

namespace korvenal::test {

/// A clock that a test sets; it stands still otherwise.
class ManualClock : public Clock {
 public:
  UnixTime time = 1'700'000'000;
  std::int64_t milliseconds = 0;

  UnixTime now() const override { return time; }
  std::int64_t steadyMilliseconds() const override { return milliseconds; }
};

}  // namespace korvenal::test
