#pragma once

#include "platform/Clock.h"

namespace korvenal {

/// The machine's clocks.
class SystemClock : public Clock {
 public:
  UnixTime now() const override;
  std::int64_t steadyMilliseconds() const override;
};

}  // namespace korvenal
