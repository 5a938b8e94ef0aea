#include "platform/Clock.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <ctime>

namespace korvenal::Dates {

namespace {

template <typename... Values>
std::string formatted(const char* format, Values... values) {
  std::array<char, 64> buffer{};
  const int length = std::snprintf(buffer.data(), buffer.size(), format, values...);
  return {buffer.data(), static_cast<std::size_t>(length > 0 ? length : 0)};
}

bool allDigits(std::string_view text) {
  for (const char c : text)
    if (c < '0' || c > '9') return false;
  return true;
}

int numberIn(std::string_view digits, std::size_t at, std::size_t length) {
  int value = 0;
  std::from_chars(digits.data() + at, digits.data() + at + length, value);
  return value;
}

}  // namespace

Fields fieldsOf(UnixTime time) {
  const auto seconds = static_cast<std::time_t>(time);
  std::tm local{};
  if (localtime_r(&seconds, &local) == nullptr) return {};
  // A year that four digits cannot hold has no text of the given form.
  if (local.tm_year + 1900 > 9999 || local.tm_year + 1900 < 0) return {};
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::string digits(UnixTime time) {
  const Fields f = fieldsOf(time);
  std::array<char, 14> text{};
  const auto put = [&](std::size_t at, int width, int value) {
    for (int i = width - 1; i >= 0; --i, value /= 10)
      text[at + static_cast<std::size_t>(i)] = static_cast<char>('0' + value % 10);
  };
  put(0, 4, f.year);
  put(4, 2, f.month);
  put(6, 2, f.day);
  put(8, 2, f.hour);
  put(10, 2, f.minute);
  put(12, 2, f.second);
  return {text.data(), text.size()};
}

std::optional<UnixTime> fromDigits(std::string_view digits) {
  if (digits.size() != 14 || !allDigits(digits)) return std::nullopt;
  std::tm local{};
  local.tm_year = numberIn(digits, 0, 4) - 1900;
  local.tm_mon = numberIn(digits, 4, 2) - 1;
  local.tm_mday = numberIn(digits, 6, 2);
  local.tm_hour = numberIn(digits, 8, 2);
  local.tm_min = numberIn(digits, 10, 2);
  local.tm_sec = numberIn(digits, 12, 2);
  local.tm_isdst = -1;
  if (local.tm_mon < 0 || local.tm_mon > 11 || local.tm_mday < 1 || local.tm_mday > 31 ||
      local.tm_hour > 23 || local.tm_min > 59 || local.tm_sec > 60)
    return std::nullopt;
  return static_cast<UnixTime>(std::mktime(&local));
}

std::string display(UnixTime time) {
  const Fields f = fieldsOf(time);
  return formatted("%04d-%02d-%02d %02d:%02d:%02d", f.year, f.month, f.day, f.hour, f.minute,
                   f.second);
}

std::string displayShort(UnixTime time) {
  std::string text = display(time);
  text.resize(text.size() - 3);
  return text;
}

std::string timeOfDay(UnixTime time) {
  return display(time).substr(11);
}

}  // namespace korvenal::Dates
