#include "platform/Profile.h"

#include <algorithm>
#include <optional>

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::int64_t MaxProfileBytes = 4 << 20;

/// Where a key stands, or where it has to go, as byte positions in the file's text.
struct Place {
  std::optional<std::string_view> value;  ///< as it stands in the file; nothing for a missing key
  bool sectionFound = false;
  std::size_t lineStart = 0;  ///< of the key's line; a missing key's line is to be inserted here
  std::size_t lineEnd = 0;    ///< behind the line's end; lineStart for a missing key
};

std::string_view upToNul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

/// The name of a section's head line; nothing for any other line.
std::optional<std::string_view> sectionName(std::string_view line) {
  if (line.size() < 2 || line.front() != '[') return std::nullopt;
  const std::size_t end = line.find(']');
  if (end == std::string_view::npos) return std::nullopt;
  return Text::trim(line.substr(1, end - 1));
}

Place findKey(std::string_view text, std::string_view section, std::string_view key) {
  Place place;
  place.lineStart = place.lineEnd = text.size();
  std::size_t at = text.size() - Text::withoutByteOrderMark(text).size();
  while (at < text.size()) {
    const std::size_t lineFeed = text.find('\n', at);
    const std::size_t next = lineFeed == std::string_view::npos ? text.size() : lineFeed + 1;
    const std::string_view line = Text::trim(text.substr(at, next - at));
    if (const auto name = sectionName(line)) {
      if (place.sectionFound) break;
      place.sectionFound = Text::equalsIgnoreCase(*name, section);
      if (place.sectionFound) place.lineStart = place.lineEnd = next;
    } else if (place.sectionFound && !line.empty()) {
      const std::size_t equals = line.find('=');
      if (equals != std::string_view::npos &&
          Text::equalsIgnoreCase(Text::trim(line.substr(0, equals)), key))
        return {Text::trim(upToNul(line.substr(equals + 1))), true, at, next};
      place.lineStart = place.lineEnd = next;
    }
    at = next;
  }
  return place;
}

bool isQuoted(std::string_view value) {
  return value.size() >= 2 && value.front() == '"' && value.back() == '"';
}

/// The value as it stands in the file: quoted when its ends would not survive otherwise.
std::string storedForm(std::string_view value) {
  std::string stored(upToNul(value));
  std::replace_if(
      stored.begin(), stored.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  const bool endsSurvive = Text::trim(stored).size() == stored.size() && !isQuoted(stored);
  return endsSurvive ? stored : '"' + stored + '"';
}

void setKey(std::string& text, const ProfileEntry& entry) {
  const std::string stored = storedForm(entry.value);
  const Place place = findKey(text, entry.section, entry.key);
  if (place.value && *place.value == stored) return;

  std::string lines;
  if (place.lineStart == place.lineEnd && place.lineStart > 0 && text[place.lineStart - 1] != '\n')
    lines += '\n';
  if (!place.sectionFound) lines += "[" + entry.section + "]\n";
  lines += entry.key + "=" + stored + "\n";
  text.replace(place.lineStart, place.lineEnd - place.lineStart, lines);
}

}  // namespace

std::string Profile::doReadProfile(std::string_view section, std::string_view key,
                                   std::string_view defaultValue) const {
  std::string text = fileText().value_or(std::string());
  for (const ProfileEntry& entry : unwritten_) setKey(text, entry);
  std::string_view value = findKey(text, section, key).value.value_or(std::string_view());
  if (isQuoted(value)) value = value.substr(1, value.size() - 2);
  if (value.empty() || value.size() >= BufferChars) return std::string(defaultValue);
  return std::string(value);
}

std::int64_t Profile::doReadProfile(std::string_view section, std::string_view key,
                                    std::string_view defaultValue, int digits) const {
  const std::string value = doReadProfile(section, key, defaultValue);
  return Text::toInteger(
      std::string_view(value).substr(0, static_cast<std::size_t>(std::max(digits, 0))));
}

void Profile::doWriteProfile(std::string_view section, std::string_view key,
                             std::string_view value) {
  doWriteProfiles({{std::string(section), std::string(key), std::string(value)}});
}

void Profile::doWriteProfiles(const std::vector<ProfileEntry>& entries) {
  unwritten_.insert(unwritten_.end(), entries.begin(), entries.end());
  const auto before = fileText();
  if (!before) return;
  std::string text = *before;
  for (const ProfileEntry& entry : unwritten_) setKey(text, entry);
  if (text != *before) {
    if (const FileOutcome written = files_.writeAll(file_, text); !written)
      return doTellFault(" cannot be written: " + written.text + ".");
  }
  unwritten_.clear();
}

std::optional<std::string> Profile::fileText() const {
  auto text = files_.readAll(file_, MaxProfileBytes);
  if (text) return text;
  if (!files_.doFileExists(file_)) return std::string();
  doTellFault(" cannot be read.");
  return std::nullopt;
}

void Profile::doTellFault(const std::string& text) const {
  if (onFault) onFault(file_, "The settings in " + file_ + text);
}

}  // namespace korvenal
