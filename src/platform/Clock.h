#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvenal {

/// Seconds since 1970-01-01 00:00:00 UTC.
using UnixTime = std::int64_t;

/// The time of day and a steady count for intervals.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual UnixTime now() const = 0;
  /// Milliseconds of a clock that never goes back; only differences have a meaning.
  virtual std::int64_t steadyMilliseconds() const = 0;
};

/// Texts of points in time, all in local time.
namespace Dates {

struct Fields {
  int year = 1970, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};
Fields fieldsOf(UnixTime time);

/// "yyyymmddhhmmss", the form of plans and indexes.
std::string digits(UnixTime time);
/// The time of 14 digits; nothing when they are no date.
std::optional<UnixTime> fromDigits(std::string_view digits);
/// "yyyy-mm-dd hh:mm:ss".
std::string display(UnixTime time);
/// "yyyy-mm-dd hh:mm": the display text without its last three characters.
std::string displayShort(UnixTime time);
/// "hh:mm:ss".
std::string timeOfDay(UnixTime time);

}  // namespace Dates

}  // namespace korvenal
