#include "platform/Text.h"

#include <unicode/ucasemap.h>
#include <unicode/uchar.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <memory>

namespace korvenal::Text {

namespace {

using CaseMapFunction = int32_t (*)(const UCaseMap*, char*, int32_t, const char*, int32_t,
                                    UErrorCode*);

bool isAscii(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

std::string mapped(std::string_view text, CaseMapFunction function) {
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<UCaseMap, void (*)(UCaseMap*)> map(ucasemap_open("", 0, &error),
                                                           ucasemap_close);
  if (U_FAILURE(error)) return std::string(text);
  std::string result(text.size() + text.size() / 2 + 8, '\0');
  const auto length = static_cast<int32_t>(text.size());
  for (int attempt = 0; attempt < 2; ++attempt) {
    error = U_ZERO_ERROR;
    const int32_t needed = function(map.get(), result.data(), static_cast<int32_t>(result.size()),
                                    text.data(), length, &error);
    if (U_SUCCESS(error)) {
      result.resize(static_cast<std::size_t>(needed));
      return result;
    }
    if (error != U_BUFFER_OVERFLOW_ERROR) break;
    result.resize(static_cast<std::size_t>(needed) + 1);
  }
  return std::string(text);
}

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Length in bytes of the well-formed UTF-8 character at the start of `rest`; 0 when malformed.
/// The ranges are those of the Unicode Standard, table 3-7.
std::size_t characterLength(std::string_view rest) {
  const auto byte = [&](std::size_t i) {
    return i < rest.size() ? static_cast<unsigned char>(rest[i]) : 0U;
  };
  const auto within = [&](std::size_t i, unsigned low, unsigned high) {
    return byte(i) >= low && byte(i) <= high;
  };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return within(1, 0x80, 0xBF) ? 2 : 0;
  if (lead >= 0xE0 && lead <= 0xEF) {
    const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
    const unsigned high = lead == 0xED ? 0x9F : 0xBF;
    return within(1, low, high) && within(2, 0x80, 0xBF) ? 3 : 0;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
    return within(1, low, high) && within(2, 0x80, 0xBF) && within(3, 0x80, 0xBF) ? 4 : 0;
  }
  return 0;
}

}  // namespace

std::string_view trim(std::string_view text) {
  const auto blank = [](char c) { return static_cast<unsigned char>(c) <= 0x20; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::string toUpper(std::string_view text) {
  if (!isAscii(text)) return mapped(text, ucasemap_utf8ToUpper);
  std::string result(text);
  for (char& c : result)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return result;
}

std::string toLower(std::string_view text) {
  if (!isAscii(text)) return mapped(text, ucasemap_utf8ToLower);
  std::string result(text);
  for (char& c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
  return a == b || toUpper(a) == toUpper(b);
}

std::u32string foldedCharacters(std::string_view text) {
  constexpr char32_t MalformedByte = 0x110000;
  std::u32string characters;
  characters.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    const auto lead = static_cast<unsigned char>(text.front());
    if (length == 0) {
      characters += static_cast<char32_t>(MalformedByte + lead);
    } else {
      // Of the lead byte of n bytes, the lowest 7 - n bits belong to the character.
      char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
      for (std::size_t i = 1; i < length; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
      characters +=
          static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return characters;
}

bool startsWith(std::string_view text, std::string_view prefix) {
  return text.starts_with(prefix);
}
bool endsWith(std::string_view text, std::string_view suffix) {
  return text.ends_with(suffix);
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t at = 0;
  for (;;) {
    const std::size_t hit = from.empty() ? std::string_view::npos : text.find(from, at);
    if (hit == std::string_view::npos) break;
    result.append(text, at, hit - at).append(to);
    at = hit + from.size();
  }
  return result.append(text.substr(at));
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  std::size_t at = 0;
  for (;;) {
    const std::size_t end = text.find(separator, at);
    pieces.emplace_back(text.substr(at, end == std::string_view::npos ? end : end - at));
    if (end == std::string_view::npos) return pieces;
    at = end + 1;
  }
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = characterLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string_view withoutByteOrderMark(std::string_view text) {
  constexpr std::string_view Mark = "\xEF\xBB\xBF";
  while (text.starts_with(Mark)) text.remove_prefix(Mark.size());
  return text;
}

std::string fromLatin1(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | (byte >> 6));
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

std::string_view firstBytes(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && isContinuation(text[bytes])) --bytes;
  return text.substr(0, bytes);
}

std::string_view lastBytes(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  std::size_t at = text.size() - bytes;
  while (at < text.size() && isContinuation(text[at])) ++at;
  return text.substr(at);
}

std::string doMidBytes(std::string_view text, std::size_t start, std::size_t length) {
  if (start < 1 || start > text.size()) return {};
  const std::string_view cut = firstBytes(text.substr(start - 1), length);
  return cut.size() <= 1 ? std::string() : std::string(cut);
}

std::int64_t toInteger(std::string_view text) {
  text = trim(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range)
    return text.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                               : std::numeric_limits<std::int64_t>::max();
  return error == std::errc() && end != text.data() ? value : 0;
}

std::string zeroPadded(std::int64_t number, int width) {
  std::string digits = std::to_string(number);
  if (digits.size() < static_cast<std::size_t>(width))
    digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
  return digits;
}

std::string grouped(std::int64_t number) {
  std::string digits = std::to_string(number);
  const std::size_t first = digits.front() == '-' ? 1 : 0;
  for (std::size_t at = digits.size(); at > first + 3;) digits.insert(at -= 3, 1, ',');
  return digits;
}

std::string groupedOneDecimal(double number) {
  const auto tenths = static_cast<std::int64_t>(std::llround(number * 10.0));
  // The whole part 0 has no sign of its own.
  const char* sign = tenths < 0 && tenths > -10 ? "-" : "";
  return sign + grouped(tenths / 10) + "." + std::to_string(std::abs(tenths % 10));
}

std::string counted(std::int64_t count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count > 1 ? "s" : "");
}

std::string escaped(std::string_view text) {
  static constexpr char Hex[] = "0123456789ABCDEF";
  std::string result;
  const auto appendHex = [&](unsigned char byte) {
    result.append("\\x").append(1, Hex[byte >> 4]).append(1, Hex[byte & 15]);
  };
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    const auto lead = static_cast<unsigned char>(text.front());
    const bool c1Control =
        length == 2 && lead == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0;
    if (lead == '\t') {
      result += "\\t";
    } else if (lead == '\n') {
      result += "\\n";
    } else if (length == 0 || lead < 0x20 || lead == 0x7F) {
      appendHex(lead);
    } else if (c1Control) {
      appendHex(lead);
      appendHex(static_cast<unsigned char>(text[1]));
    } else {
      result.append(text.substr(0, length));
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return result;
}

}  // namespace korvenal::Text
