#include "platform/SetIdentity.h"

#include <algorithm>

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::size_t DateBytes = 14;
constexpr std::size_t HeadBytes = 17;  ///< "20261123141502-F "

bool isDate(std::string_view text) {
  return text.size() == DateBytes && Dates::fromDigits(text).has_value();
}

/// A volume descriptor has blanks where the text ends, and nothing below them within it.
std::string plainName(std::string_view name) {
  std::string plain(Text::trim(Text::firstBytes(name, SetIdentity::MaxBytes - HeadBytes)));
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return plain;
}

}  // namespace

SetIdentity SetIdentity::ofRun(UnixTime moment, bool differential, std::string_view jobName) {
  return of(Dates::digits(moment), differential ? 'D' : 'F', jobName);
}

SetIdentity SetIdentity::of(std::string_view date, char type, std::string_view jobName) {
  if (!isDate(date)) return {};
  return {std::string(date), type, plainName(jobName)};
}

SetIdentity SetIdentity::parse(std::string_view text) {
  SetIdentity identity;
  const std::string_view date = text.substr(0, DateBytes);
  text.remove_prefix(date.size());
  const bool typed = text.starts_with("-F") || text.starts_with("-D");
  if (typed) identity.type = text[1];
  if (typed) text.remove_prefix(2);
  if (!isDate(date) || !(text.empty() || text.front() == ' ')) return {};
  identity.date = date;
  identity.job = plainName(text);
  return identity;
}

bool SetIdentity::isSame(const SetIdentity& other) const {
  const bool typesAgree = type == 0 || other.type == 0 || type == other.type;
  return isKnown() && date == other.date && typesAgree;
}

std::string SetIdentity::text() const {
  if (!isKnown()) return {};
  const std::string head = type == 0 ? date : date + "-" + type;
  return job.empty() ? head : head + " " + plainName(job);
}

std::string SetIdentity::shown() const {
  const auto moment = Dates::fromDigits(date);
  const std::string when = moment ? "(" + Dates::displayShort(*moment) + ")" : std::string();
  return job.empty() ? when : job + " " + when;
}

}  // namespace korvenal
