#include "core/DateText.h"

#include <algorithm>

#include "platform/Text.h"

namespace korvenal {

namespace {

bool isBetween(std::string_view digits, int low, int high) {
  const auto number = Text::toInteger(digits);
  return number >= low && number <= high;
}

}  // namespace

std::string doGetFileDateString(std::string_view digits) {
  const bool allDigits =
      std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (digits.size() != 14 || !allDigits) return {};
  const auto year = digits.substr(0, 4), month = digits.substr(4, 2), day = digits.substr(6, 2);
  const auto hour = digits.substr(8, 2), minute = digits.substr(10, 2);
  if (!isBetween(month, 1, 12) || !isBetween(day, 1, 31) || !isBetween(hour, 0, 23) ||
      !isBetween(minute, 0, 59))
    return {};
  std::string text;
  text.append(year).append("-").append(month).append("-").append(day);
  return text.append(" ").append(hour).append(":").append(minute);
}

}  // namespace korvenal
