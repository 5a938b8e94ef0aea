#pragma once

#include <string>
#include <vector>

#include "platform/Clock.h"

namespace korvenal {

/// Makes the 14 digits of local dates, many in a row, without asking the system's time zone for
/// each: the distance to UTC is remembered by the day.
class DateDigits {
 public:
  /// Appends "yyyymmddhhmmss".
  void append(std::string& out, UnixTime time);

 private:
  struct Day {
    std::int64_t number = -1;  ///< days since 1970 UTC; -1: nothing remembered
    std::int64_t offset = 0;   ///< seconds of local time ahead of UTC
    bool wholeDay = false;     ///< the offset holds from the day's start to its end
  };

  std::vector<Day> days_ = std::vector<Day>(4096);
};

}  // namespace korvenal
