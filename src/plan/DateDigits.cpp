#include "plan/DateDigits.h"

#include <chrono>

namespace korvenal {

namespace {

constexpr std::int64_t DaySeconds = 86400;
/// Only times whose local year has four digits wherever one lives: 1971 to 9998.
constexpr UnixTime FirstCached = 365 * DaySeconds;
constexpr UnixTime EndOfCached = 253370764800 - DaySeconds;

std::int64_t offsetAt(UnixTime time) {
  using namespace std::chrono;
  const Dates::Fields f = Dates::fieldsOf(time);
  const sys_days day = year{f.year} / month{static_cast<unsigned>(f.month)} /
                       std::chrono::day{static_cast<unsigned>(f.day)};
  const std::int64_t minutes = std::int64_t{f.hour} * 60 + f.minute;
  return day.time_since_epoch().count() * DaySeconds + minutes * 60 + f.second - time;
}

void appendPadded(std::string& out, unsigned value, int width) {
  const std::size_t start = out.size();
  out.append(static_cast<std::size_t>(width), '0');
  for (std::size_t at = out.size(); at > start && value > 0; value /= 10)
    out[--at] = static_cast<char>('0' + value % 10);
}

}  // namespace

void DateDigits::append(std::string& out, UnixTime time) {
  if (time < FirstCached || time >= EndOfCached) {
    out += Dates::digits(time);
    return;
  }
  const std::int64_t number = time / DaySeconds;
  Day& day = days_[static_cast<std::size_t>(number) % days_.size()];
  if (day.number != number) {
    const std::int64_t offset = offsetAt(number * DaySeconds);
    day = {number, offset, offset == offsetAt((number + 1) * DaySeconds - 1)};
  }
  if (!day.wholeDay) {
    out += Dates::digits(time);
    return;
  }
  using namespace std::chrono;
  const std::int64_t local = time + day.offset;
  const year_month_day date{sys_days{days{local / DaySeconds}}};
  const auto second = static_cast<unsigned>(local % DaySeconds);
  appendPadded(out, static_cast<unsigned>(static_cast<int>(date.year())), 4);
  appendPadded(out, static_cast<unsigned>(date.month()), 2);
  appendPadded(out, static_cast<unsigned>(date.day()), 2);
  appendPadded(out, second / 3600, 2);
  appendPadded(out, second / 60 % 60, 2);
  appendPadded(out, second % 60, 2);
}

}  // namespace korvenal
